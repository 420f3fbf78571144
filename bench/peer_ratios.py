#!/usr/bin/python3
"""The host's DXF reading and writing against its peers on this machine, in
one run: ezdxf (Debian's python3-ezdxf) reading and saving the same file,
and dxflib's parse-only reader (bench/dxflib_parse) passing over it. Also
the memory a LINE takes in the database and whether walking, handle lookup
and saving stay linear (from kelcad_bench). Prints a table of ratios and
whether each target is met; the exit status is 1 when one is not.

Run with /usr/bin/python3 (it has ezdxf) from a Release build made with
-DKELCAD_BUILD_BENCH=ON:

    /usr/bin/python3 bench/peer_ratios.py --build build/bench [--million]
"""
import argparse
import json
import os
import platform
import shutil
import subprocess
import sys
import tempfile
import time

import ezdxf

READ_WRITE_VS_EZDXF = 30.0   # at least this many times faster than ezdxf
READ_VS_DXFLIB = 1.0         # no slower than dxflib's parse-only pass
BYTES_PER_LINE = 300.0       # at most, in the database
# Linear: the time per entity at the largest size within this factor of the
# time per entity at the smallest (caches and allocators allow some drift).
LINEAR_DRIFT = 2.0


def tool(build, name):
    path = os.path.join(build, "bench", name)
    return path if os.access(path, os.X_OK) else None


def run(args):
    proc = subprocess.run(args, capture_output=True, text=True)
    if proc.returncode != 0:
        sys.exit("failed: %s\n%s" % (" ".join(args), proc.stderr.strip()))
    return proc.stdout


def seconds_of(output):
    for line in output.splitlines():
        key, _, value = line.partition(" ")
        if key == "seconds":
            return float(value)
    sys.exit("no timing in:\n" + output)


def best_of(repeat, action):
    """The least processor time of repeat runs of action."""
    best = None
    for _ in range(repeat):
        start = time.process_time()
        action()
        elapsed = time.process_time() - start
        best = elapsed if best is None else min(best, elapsed)
    return best


def compare(count, work, timer, dxflib, repeat, peer_repeat, rows):
    source = os.path.join(work, "mixed%d.dxf" % count)
    run([timer, "make", str(count), source])
    size_mb = os.path.getsize(source) / 1e6
    print("%d entities: %s (%.1f MB)" % (count, source, size_mb), flush=True)

    # Rounds of host, peer, host: the machine's speed may drift while
    # ezdxf runs, and each side keeps its best.
    best = {}

    def keep(key, seconds):
        best[key] = min(best.get(key, seconds), seconds)

    def host_round():
        keep("host read", seconds_of(run([timer, "read", source, str(repeat)])))
        keep("host write", seconds_of(run([timer, "write", source, os.path.join(work, "host_out.dxf"), str(repeat)])))
        if dxflib:
            keep("dxflib", seconds_of(run([dxflib, source, str(repeat)])))

    for _ in range(peer_repeat):
        host_round()
        docs = []
        keep("ezdxf read", best_of(1, lambda: docs.append(ezdxf.readfile(source))))
        doc = docs.pop()
        if len(doc.modelspace()) != count:
            sys.exit("ezdxf read %d entities, expected %d" % (len(doc.modelspace()), count))
        keep("ezdxf write", best_of(1, lambda: doc.saveas(os.path.join(work, "ezdxf_out.dxf"))))
        del doc
    host_round()

    label = "%dk" % (count // 1000)
    read, write = best["host read"], best["host write"]
    rows.append(("read %s vs ezdxf" % label, read, best["ezdxf read"], best["ezdxf read"] / read,
                 ">= %g" % READ_WRITE_VS_EZDXF, best["ezdxf read"] / read >= READ_WRITE_VS_EZDXF))
    rows.append(("write %s vs ezdxf" % label, write, best["ezdxf write"], best["ezdxf write"] / write,
                 ">= %g" % READ_WRITE_VS_EZDXF, best["ezdxf write"] / write >= READ_WRITE_VS_EZDXF))
    if dxflib:
        parse = best["dxflib"]
        rows.append(("read %s vs dxflib parse" % label, read, parse, parse / read,
                     ">= %g" % READ_VS_DXFLIB, parse / read >= READ_VS_DXFLIB))
    else:
        print("dxflib_parse not built (libdxflib-dev missing): no dxflib comparison")


def bench_json(bench, pattern):
    out = run([bench, "--benchmark_filter=" + pattern, "--benchmark_format=json"])
    return json.loads(out)["benchmarks"]


def memory_and_linearity(bench, rows, linearity):
    for b in bench_json(bench, "BM_MemoryPerLine/100000/"):
        if b.get("run_type") == "iteration":
            per_line = b["bytes_per_line"]
            rows.append(("memory per LINE (bytes)", per_line, None, None, "<= %g" % BYTES_PER_LINE,
                         per_line <= BYTES_PER_LINE))
    if not linearity:
        return
    for name in ("BM_EntNextWalk", "BM_HandEntAll", "BM_DxfWriteComplexity"):
        runs = [b for b in bench_json(bench, "^%s/" % name) if b.get("run_type") == "iteration"]
        sizes = sorted(runs, key=lambda b: int(b["name"].split("/")[1]))
        small, large = sizes[0], sizes[-1]
        n_small, n_large = int(small["name"].split("/")[1]), int(large["name"].split("/")[1])
        drift = (large["cpu_time"] / n_large) / (small["cpu_time"] / n_small)
        rows.append(("%s per entity, %d vs %d" % (name[3:], n_large, n_small), drift, None, None,
                     "<= %g" % LINEAR_DRIFT, drift <= LINEAR_DRIFT))


def show(rows):
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
    print("machine: %s, %s, %d cores, Python %s, ezdxf %s" % (
        platform.machine(), cpu_name(), os.cpu_count() or 0, platform.python_version(), ezdxf.__version__))


def cpu_name():
    try:
        with open("/proc/cpuinfo") as f:
            for line in f:
                if line.startswith("model name"):
                    return line.split(":", 1)[1].strip()
    except OSError:
        pass
    return platform.processor() or "unknown CPU"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--build", default="build/bench", help="the Release build directory (default build/bench)")
    parser.add_argument("--million", action="store_true", help="also compare at 1 000 000 entities (slow in ezdxf)")
    parser.add_argument("--repeat", type=int, default=5, help="runs of the host and dxflib; the best counts")
    parser.add_argument("--peer-repeat", type=int, default=1,
                        help="rounds of ezdxf, each between runs of the host; the best counts")
    parser.add_argument("--no-linearity", action="store_true", help="skip the linearity checks")
    parser.add_argument("--keep", metavar="DIR", help="write the files here and keep them")
    args = parser.parse_args()
    if args.repeat < 1 or args.peer_repeat < 1:
        parser.error("repeats must be at least 1")

    timer, bench = tool(args.build, "kelcad_dxf_timer"), tool(args.build, "kelcad_bench")
    if not timer or not bench:
        sys.exit("%s/bench has no kelcad_dxf_timer or kelcad_bench: configure it with -DKELCAD_BUILD_BENCH=ON"
                 % args.build)
    dxflib = tool(args.build, "dxflib_parse")

    work = args.keep or tempfile.mkdtemp(prefix="kelcad_peers_")
    os.makedirs(work, exist_ok=True)
    rows = []
    try:
        for count in [100000] + ([1000000] if args.million else []):
            compare(count, work, timer, dxflib, args.repeat, args.peer_repeat, rows)
        memory_and_linearity(bench, rows, not args.no_linearity)
    finally:
        if not args.keep:
            shutil.rmtree(work, ignore_errors=True)
    show(rows)
    return 0 if all(row[5] for row in rows) else 1


if __name__ == "__main__":
    sys.exit(main())
