#!/usr/bin/python3
"""Plotting against ezdxf's drawing add-on (Debian's python3-ezdxf with
python3-matplotlib), in one run: the mixed drawing of 100 000 entities
plotted to PDF and to PNG at 150 DPI by the host (kelcad_plot_timer) and by
ezdxf's Frontend with its matplotlib backend, each timed from the drawing
already read to the file written. Also whether the host's memory stays
linear in the number of entities (what plotting adds to the peak resident
size at a quarter, a half and all of the drawing: what the second half adds
per entity against what the second quarter adds). Prints
a table of ratios and whether each target is met; the exit status is 1
when one is not.

Run with /usr/bin/python3 from a Release build made with
-DKELCAD_BUILD_BENCH=ON (the default preset):

    /usr/bin/python3 bench/plot_ratios.py --build build/default [--count 100000]
"""
import argparse
import logging
import os
import platform
import shutil
import subprocess
import sys
import tempfile
import time

import ezdxf
import matplotlib

matplotlib.use("Agg")
# The drawing's shape-font names are not matplotlib's fonts: one complaint per text otherwise.
logging.getLogger("matplotlib.font_manager").setLevel(logging.ERROR)
import matplotlib.pyplot as plt  # noqa: E402
from ezdxf.addons.drawing import Frontend, RenderContext  # noqa: E402
from ezdxf.addons.drawing.matplotlib import MatplotlibBackend  # noqa: E402

VS_EZDXF = 20.0     # at least this many times faster
MEMORY_DRIFT = 2.0  # memory per added entity, second half of the drawing against the first
A3_INCHES = (420 / 25.4, 297 / 25.4)


def tool(build, name):
    path = os.path.join(build, "bench", name)
    return path if os.access(path, os.X_OK) else None


def run(args):
    proc = subprocess.run(args, capture_output=True, text=True)
    if proc.returncode != 0:
        sys.exit("failed: %s\n%s" % (" ".join(args), proc.stderr.strip()))
    values = {}
    for line in proc.stdout.splitlines():
        key, _, value = line.partition(" ")
        values[key] = float(value)
    return values


def ezdxf_plot(doc, out, dpi):
    """Processor seconds ezdxf takes to draw model space and save the figure."""
    start = time.process_time()
    fig = plt.figure(figsize=A3_INCHES)
    ax = fig.add_axes([0, 0, 1, 1])
    Frontend(RenderContext(doc), MatplotlibBackend(ax)).draw_layout(doc.modelspace(), finalize=True)
    fig.savefig(out, dpi=dpi)
    plt.close(fig)
    return time.process_time() - start


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--build", default="build/default", help="the Release build directory")
    parser.add_argument("--count", type=int, default=100000, help="entities in the drawing")
    parser.add_argument("--repeat", type=int, default=3, help="host plots; the best counts")
    parser.add_argument("--keep", metavar="DIR", help="write the files here and keep them")
    parser.add_argument("--no-peer", action="store_true", help="time the host only (ezdxf takes minutes)")
    args = parser.parse_args()
    timer, plotter = tool(args.build, "kelcad_dxf_timer"), tool(args.build, "kelcad_plot_timer")
    if not timer or not plotter:
        sys.exit("%s/bench lacks kelcad_dxf_timer or kelcad_plot_timer: build them with -DKELCAD_BUILD_BENCH=ON"
                 % args.build)
    work = args.keep or tempfile.mkdtemp(prefix="kelcad_plot_")
    os.makedirs(work, exist_ok=True)
    rows = []
    try:
        source = os.path.join(work, "mixed%d.dxf" % args.count)
        subprocess.run([timer, "make", str(args.count), source], check=True, capture_output=True)
        print("%d entities: %s" % (args.count, source), flush=True)
        doc = None if args.no_peer else ezdxf.readfile(source)
        for kind in ("pdf", "png"):
            host = run([plotter, source, os.path.join(work, "host." + kind), "150", str(args.repeat)])
            print("host %s: %.3f s" % (kind, host["seconds"]), flush=True)
            if doc is None:
                continue
            peer = ezdxf_plot(doc, os.path.join(work, "ezdxf." + kind), 150)
            print("ezdxf %s: %.3f s" % (kind, peer), flush=True)
            ratio = peer / host["seconds"]
            rows.append(("%s, %dk entities vs ezdxf" % (kind.upper(), args.count // 1000), host["seconds"], peer,
                         ratio, ">= %g" % VS_EZDXF, ratio >= VS_EZDXF))
        # Memory: what the plot adds at a quarter, a half and all of the drawing.
        peaks = {}
        for part in (4, 2, 1):
            n = args.count // part
            path = source if part == 1 else os.path.join(work, "mixed_%d.dxf" % n)
            if part != 1:
                subprocess.run([timer, "make", str(n), path], check=True, capture_output=True)
            used = run([plotter, path, os.path.join(work, "memory.pdf"), "150", "1"])
            peaks[n] = used["peak_kb"] - used["read_kb"]  # what plotting adds to the drawing read
        quarter, half, whole = args.count // 4, args.count // 2, args.count
        first = (peaks[half] - peaks[quarter]) / (half - quarter)
        second = (peaks[whole] - peaks[half]) / (whole - half)
        drift = second / first if first > 0 else 0.0
        print("memory the plot adds: %s KB" % ", ".join("%dk %d" % (n // 1000, peaks[n]) for n in sorted(peaks)))
        rows.append(("memory added per entity, 2nd half vs 2nd quarter", drift, None, None,
                     "<= %g" % MEMORY_DRIFT, drift <= MEMORY_DRIFT))
    finally:
        if not args.keep:
            shutil.rmtree(work, ignore_errors=True)
    print()
    print("| measure | host | peer | ratio | target | met |")
    print("|---|---|---|---|---|---|")
    for name, host, peer, ratio, target, met in rows:
        if peer is None:
            print("| %s | %.2f | | | %s | %s |" % (name, host, target, "yes" if met else "NO"))
        else:
            print("| %s | %.3f s | %.3f s | %.1fx | %s | %s |" % (name, host, peer, ratio, target,
                                                                 "yes" if met else "NO"))
    print()
    print("machine: %s, %d cores, Python %s, ezdxf %s, matplotlib %s" % (
        platform.machine(), os.cpu_count() or 0, platform.python_version(), ezdxf.__version__,
        matplotlib.__version__))
    return 0 if all(row[5] for row in rows) else 1


if __name__ == "__main__":
    sys.exit(main())
