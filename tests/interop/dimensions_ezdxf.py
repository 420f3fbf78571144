"""Dimensions between the host and ezdxf.

A drawing made by the module's dimension functions from AutoLISP (a
continuous and a baseline chain, a merged chain, a split dimension and
dimensions with settings of their own) saves to DXF that ezdxf reads and
audits clean; each dimension has the measurement and the overrides the host
reported, its *D block holds what they say (extension lines, the dimension
line run on past ticks, arrowheads or tick inserts of the arrow size, the
text written with its decimals and rounding), and ezdxf's drawing add-on
draws those entities for it. A drawing ezdxf makes with overrides reads into
the host with them, and the host's redrawn blocks go back to ezdxf intact.

    dimensions_ezdxf.py CONSOLE WORKDIR"""
import logging
import os
import sys

import ezdxf
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
from ezdxf.addons.drawing import Frontend, RenderContext  # noqa: E402
from ezdxf.addons.drawing.matplotlib import MatplotlibBackend  # noqa: E402

from interop_common import check, finish, run_console  # noqa: E402

# The drawing add-on looks for the text styles' fonts among matplotlib's.
logging.getLogger("matplotlib.font_manager").setLevel(logging.ERROR)

REPORT = r'''
(defun value-text (v)
  (cond ((= (type v) 'REAL) (rtos v 2 8)) ((= (type v) 'INT) (itoa v)) (T v)))
(defun report (e / x)
  (princ (strcat "\nDIM " (cdr (assoc 5 (entget e))) " " (rtos (cdr (assoc 42 (entget e))) 2 8)))
  (setq x (cdddr (cadr (assoc -3 (entget e '("ACAD"))))))
  (while (and x (/= (cdar x) "}"))
    (princ (strcat " " (itoa (cdar x)) "=" (value-text (cdadr x))))
    (setq x (cddr x))))
(defun report-all (/ ss i)
  (setq ss (ssget "X" '((0 . "DIMENSION"))) i 0)
  (repeat (sslength ss) (report (ssname ss i)) (setq i (1+ i))))
'''

MAKE = r'''
(setq chain (kel_createmrotateddim 0.0 '((0 0) (12.345 0) (30 0) (47.5 0)) '(0 -10)))
(setq base (kel_creatembaligneddim '((0 30) (30 70) (60 110)) '(-10 40)))
(setq tomerge (kel_createmaligneddim '((100 0) (110 10) (130 30)) '(95 10)))
(setq merged (kel_manydimenttoone tomerge))
(setq whole (kel_createrotateddim 0.0 '(0 150) '(60 150) '(0 160)))
(setq parts (kel_onedimenttomany whole '((20 140) (45 145))))
(kel_setentdimdec (ssname chain 0) 3)
(kel_setentdimrnd (ssname chain 1) 0.5)
(kel_setdimentproperty (ssname chain 2) 1.0 2.0 1.5 2.5)
(kel_setentdimtext (ssname base 0) "L=<>")
(kel_setdimenttxthigh (ssname base 1) 5.0)
(kel_setentdimdec merged 1)
(kel_setdimentproperty (ssname parts 1) 0.5 3.0 0.0 1.0 "_Dot")
(report-all)
'''


def host_report(stdout):
    """{handle: (measurement, {code: text})} from the host's DIM lines."""
    dims = {}
    for line in stdout.splitlines():
        if not line.startswith("DIM "):
            continue
        words = line.split()
        own = dict(w.split("=", 1) for w in words[3:])
        dims[words[1]] = (float(words[2]), {int(k): v for k, v in own.items()})
    return dims


def dstyle_pairs(dim):
    """The DSTYLE pairs of the file: {code: value}."""
    try:
        tags = dim.get_xdata_list("ACAD", "DSTYLE")
    except Exception:  # no DSTYLE list
        return {}
    pairs = [t for t in tags if t.code not in (1000, 1002) or t.value not in ("DSTYLE", "{", "}")]
    return {pairs[i].value: pairs[i + 1].value for i in range(0, len(pairs) - 1, 2)}


def same_value(text, value):
    if isinstance(value, float):
        return abs(float(text) - value) < 1e-6
    return str(value).upper() == text.upper()


def measured(dim):
    """What the dimension measures: ezdxf measures an aligned one along its
    group 50, which aligned dimensions do not have."""
    if dim.dimtype == 1:
        return dim.dxf.defpoint2.distance(dim.dxf.defpoint3)
    return dim.get_measurement()


def shown_number(value, own, style):
    """The measurement written as the host and the platform write it."""
    value *= float(own.get(144, style.dxf.dimlfac))
    dec = int(own.get(271, style.dxf.dimdec))
    rnd = float(own.get(45, style.dxf.dimrnd))
    if rnd > 0:
        value = round(value / rnd) * rnd
    text = "%.*f" % (dec, value)
    if int(style.dxf.dimzin) & 8 and "." in text:
        text = text.rstrip("0").rstrip(".")
    return text.replace(".", chr(int(style.dxf.dimdsep)))


class Recorder(Frontend):
    """The drawing add-on's frontend, noting what it draws for each dimension."""

    def __init__(self, *args, **kwargs):
        super().__init__(*args, **kwargs)
        self.drawn, self.skipped, self.current = {}, [], None

    def skip_entity(self, entity, msg):
        self.skipped.append("%s: %s" % (entity.dxftype(), msg))

    def draw_entity(self, entity, properties):
        if entity.dxftype() == "DIMENSION":
            self.current = entity.dxf.handle
            super().draw_entity(entity, properties)
            self.current = None
            return
        if self.current:
            self.drawn.setdefault(self.current, []).append(entity.dxftype())
        super().draw_entity(entity, properties)


def check_block(doc, dim, own, failures):
    """The *D block against the dimension's points and settings."""
    name = dim.dxf.handle
    style = doc.dimstyles.get(dim.dxf.dimstyle)
    block = doc.blocks.get(dim.dxf.geometry)
    if block is None:
        failures.append("#%s: no block %s" % (name, dim.dxf.geometry))
        return
    lines = [e for e in block if e.dxftype() == "LINE"]
    texts = [e for e in block if e.dxftype() == "MTEXT"]
    inserts = [e for e in block if e.dxftype() == "INSERT"]
    plines = [e for e in block if e.dxftype() == "LWPOLYLINE"]
    check(len(lines) == 3, "#%s: %d lines" % (name, len(lines)), failures)
    check(len(texts) == 1, "#%s: %d texts" % (name, len(texts)), failures)
    scale = float(own.get(40, style.dxf.dimscale)) or 1.0
    asz = float(own.get(41, style.dxf.dimasz)) * scale
    # The arrowhead: the dimension's own block, else its style's (which ezdxf
    # gives by name).
    arrow = doc.entitydb[own[342]].dxf.name if own.get(342, "0") != "0" else style.dxf.get("dimblk", "")
    arrow = arrow.upper().lstrip("_")
    if arrow:
        names = [i.dxf.name.upper().lstrip("_") for i in inserts]
        check(names == [arrow, arrow], "#%s: arrowheads %s, not two %s" % (name, names, arrow), failures)
        check(all(abs(i.dxf.xscale - asz) < 1e-9 for i in inserts), "#%s: arrow size" % name, failures)
    else:
        check(len(plines) == 2 and not inserts, "#%s: closed filled arrowheads" % name, failures)
    if texts:
        own_text = dim.dxf.get("text", "")
        number = shown_number(measured(dim), own, style)
        want = own_text.replace("<>", number) if "<>" in own_text else (own_text or number)
        check(texts[0].text == want, "#%s: text %r, not %r" % (name, texts[0].text, want), failures)
        height = float(own.get(140, style.dxf.dimtxt)) * scale
        check(abs(texts[0].dxf.char_height - height) < 1e-9, "#%s: text height" % name, failures)
    # Extension lines end DIMEXE past the dimension line; the dimension
    # line runs on DIMDLE past ticks.
    p1, p2 = dim.dxf.defpoint2, dim.dxf.defpoint3
    exe = float(own.get(44, style.dxf.dimexe)) * scale
    dle = float(own.get(46, style.dxf.dimdle)) * scale
    tick = arrow in ("ARCHTICK", "OBLIQUE", "INTEGRAL", "NONE")
    dimline = max(lines, key=lambda l: l.dxf.start.distance(l.dxf.end)) if lines else None
    if dimline is not None and dim.dimtype in (0, 1):
        span = abs(measured(dim))
        want = span + (2 * dle if tick else 0)
        got = dimline.dxf.start.distance(dimline.dxf.end)
        check(abs(got - want) < 1e-6, "#%s: dimension line %.6f, not %.6f" % (name, got, want), failures)
    exo = float(own.get(42, style.dxf.dimexo)) * scale
    for line in lines:
        if line is dimline:
            continue
        start = line.dxf.start
        near = min(start.distance(p1), start.distance(p2))
        check(abs(near - exo) < 1e-6, "#%s: extension line starts %.6f off" % (name, near), failures)
    for line in lines:
        if line is not dimline and dimline is not None:
            # How far the extension line runs past the dimension line.
            d = dimline.dxf.end - dimline.dxf.start
            past = abs((line.dxf.end - dimline.dxf.start).cross(d).magnitude / d.magnitude)
            check(abs(past - exe) < 1e-6, "#%s: extension line runs %.6f past, not %.6f" % (name, past, exe),
                  failures)


def host_to_ezdxf(console, workdir, failures):
    os.makedirs(workdir, exist_ok=True)
    script = os.path.abspath(os.path.join(workdir, "..", os.path.basename(workdir) + "-make.lsp"))
    with open(script, "w", encoding="utf-8") as f:
        f.write(REPORT + MAKE)
    out = os.path.join(workdir, "dims.dxf")
    proc = run_console(console, workdir, [script, "--save", out])
    if proc.returncode != 0:
        failures.append("console exit status %d: %s %s" % (proc.returncode, proc.stdout, proc.stderr))
        return
    reported = host_report(proc.stdout)
    check(len(reported) == 3 + 2 + 1 + 3, "host reports %d dimensions" % len(reported), failures)
    doc = ezdxf.readfile(out)
    for e in doc.audit().errors:
        failures.append("audit error: %s" % (e.message,))
    dims = [e for e in doc.modelspace() if e.dxftype() == "DIMENSION"]
    check(sorted(d.dxf.handle for d in dims) == sorted(reported), "dimensions %s" % [d.dxf.handle for d in dims],
          failures)
    owns = {}
    for dim in dims:
        measurement, own = reported.get(dim.dxf.handle, (None, {}))
        if measurement is None:
            continue
        check(abs(measured(dim) - measurement) < 1e-6,
              "#%s: ezdxf measures %s, the host %s" % (dim.dxf.handle, measured(dim), measurement), failures)
        pairs = dstyle_pairs(dim)
        check(set(pairs) == set(own), "#%s: overrides %s, host %s" % (dim.dxf.handle, pairs, own), failures)
        for code, text in own.items():
            check(code in pairs and same_value(text, pairs[code]),
                  "#%s: override %d is %r, host %r" % (dim.dxf.handle, code, pairs.get(code), text), failures)
        owns[dim.dxf.handle] = own
        check_block(doc, dim, own, failures)
    # What ezdxf's own reading of the overrides says.
    attribs = [d.get_acad_dstyle(d.get_dim_style()) for d in dims]
    check(any(a.get("dimdec") == 3 for a in attribs), "ezdxf sees no DIMDEC 3", failures)
    check(any(str(a.get("dimblk", "")).upper() == "ARCHTICK" for a in attribs), "ezdxf sees no ARCHTICK", failures)
    check(any(abs(a.get("dimrnd", 0) - 0.5) < 1e-12 for a in attribs), "ezdxf sees no DIMRND 0.5", failures)

    # The drawing add-on draws each dimension's lines, arrowheads and text.
    fig = plt.figure()
    ax = fig.add_axes([0, 0, 1, 1])
    frontend = Recorder(RenderContext(doc), MatplotlibBackend(ax))
    frontend.draw_layout(doc.modelspace(), finalize=True)
    plt.close(fig)
    for s in frontend.skipped:
        failures.append("drawing add-on skipped %s" % s)
    for dim in dims:
        drawn = frontend.drawn.get(dim.dxf.handle, [])
        check(drawn.count("LINE") >= 3, "#%s: drawn %s" % (dim.dxf.handle, drawn), failures)
        check("MTEXT" in drawn, "#%s: no text drawn" % dim.dxf.handle, failures)
        arrows = drawn.count("LWPOLYLINE") + drawn.count("INSERT")
        check(arrows >= 2, "#%s: %d arrowheads drawn" % (dim.dxf.handle, arrows), failures)


def ezdxf_to_host(console, workdir, failures):
    os.makedirs(workdir, exist_ok=True)
    source = os.path.abspath(os.path.join(workdir, "..", os.path.basename(workdir) + "-source.dxf"))
    doc = ezdxf.new("R2013", setup=True)
    msp = doc.modelspace()
    linear = msp.add_linear_dim(base=(0, 10), p1=(0, 0), p2=(23.4567, 0), dimstyle="EZDXF",
                                override={"dimdec": 3, "dimasz": 1.5, "dimblk": "ARCHTICK", "dimdle": 0.75,
                                          "dimexe": 2.0, "dimrnd": 0.0, "dimtxt": 3.0})
    linear.render()
    aligned = msp.add_aligned_dim(p1=(0, 20), p2=(30, 60), distance=5, dimstyle="EZDXF",
                                  override={"dimdec": 1, "dimgap": 0.8})
    aligned.render()
    doc.saveas(source)
    wanted = {}
    for dim in (linear.dimension, aligned.dimension):
        wanted[dim.dxf.handle] = dstyle_pairs(dim)

    out = os.path.join(workdir, "back.dxf")
    script = os.path.abspath(os.path.join(workdir, "..", os.path.basename(workdir) + "-read.lsp"))
    with open(script, "w", encoding="utf-8") as f:
        # The host draws each block anew (an empty text is the measurement).
        f.write(REPORT + '''
(setq ss (ssget "X" '((0 . "DIMENSION"))) i 0)
(repeat (sslength ss) (kel_setentdimtext (ssname ss i) "") (setq i (1+ i)))
(report-all)
''')
    proc = run_console(console, workdir, ["--drawing", source, script, "--save", out])
    if proc.returncode != 0:
        failures.append("console exit status %d: %s %s" % (proc.returncode, proc.stdout, proc.stderr))
        return
    reported = host_report(proc.stdout)
    check(sorted(reported) == sorted(wanted), "host read %s" % sorted(reported), failures)
    src = ezdxf.readfile(source)
    for handle, pairs in wanted.items():
        measurement, own = reported.get(handle, (None, {}))
        if measurement is None:
            continue
        check(abs(measured(src.entitydb[handle]) - measurement) < 1e-6, "#%s: host measures %s"
              % (handle, measurement), failures)
        check(set(own) == set(pairs), "#%s: host overrides %s, ezdxf %s" % (handle, own, pairs), failures)
        for code, value in pairs.items():
            check(code in own and same_value(own[code], value),
                  "#%s: host override %d %r, ezdxf %r" % (handle, code, own.get(code), value), failures)
    back = ezdxf.readfile(out)
    for e in back.audit().errors:
        failures.append("audit error (back): %s" % (e.message,))
    for handle, pairs in wanted.items():
        dim = back.entitydb.get(handle)
        if dim is None:
            failures.append("#%s lost" % handle)
            continue
        check(dstyle_pairs(dim) == pairs, "#%s back with %s" % (handle, dstyle_pairs(dim)), failures)
        check_block(back, dim, {k: str(v) for k, v in pairs.items()}, failures)


def main(console, workdir):
    failures = []
    host_to_ezdxf(console, os.path.join(workdir, "host"), failures)
    ezdxf_to_host(console, os.path.join(workdir, "ezdxf"), failures)
    finish(failures)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
