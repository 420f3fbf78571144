"""A drawing made from AutoLISP through the console saves to DXF that ezdxf
reads and audits without errors, with the content made."""
import os
import sys

import ezdxf

from interop_common import check, finish, run_console

SCRIPT = r'''
(regapp "KELAPP")
(entmake '((0 . "LINE") (8 . "墙体") (10 0.0 0.0 0.0) (11 10.5 20.25 0.0) (62 . 1)))
(entmake '((0 . "CIRCLE") (8 . "墙体") (10 5.0 5.0 0.0) (40 . 2.5)))
(entmake '((0 . "ARC") (10 1.0 2.0 0.0) (40 . 3.0) (50 . 0.0) (51 . 1.5707963267948966)))
(entmake '((0 . "TEXT") (8 . "墙体") (10 1.0 1.0 0.0) (40 . 3.5) (1 . "中文标注")
           (-3 ("KELAPP" (1000 . "附加") (1040 . 1.25) (1070 . 7)))))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (100 . "AcDbPolyline") (90 . 3) (70 . 1)
           (10 0.0 0.0) (10 4.0 0.0) (10 4.0 3.0)))
(entmake '((0 . "POINT") (10 7.0 8.0 0.0)))
(setq d (entmakex '((0 . "DICTIONARY") (100 . "AcDbDictionary"))))
(dictadd (namedobjdict) "KEL_DATA" d)
(dictadd d "ROW1" (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "数据") (40 . 0.1) (70 . 3))))
'''


def main(console, workdir):
    failures = []
    os.makedirs(workdir, exist_ok=True)
    script = os.path.join(workdir, "..", os.path.basename(workdir) + "-make.lsp")
    with open(script, "w", encoding="utf-8") as f:
        f.write(SCRIPT)
    out = os.path.join(workdir, "drawing.dxf")
    proc = run_console(console, workdir, [os.path.abspath(script), "--save", out])
    if proc.returncode != 0:
        print(proc.stdout, proc.stderr)
        finish(["console exit status %d" % proc.returncode])

    doc = ezdxf.readfile(out)
    auditor = doc.audit()
    for e in auditor.errors:
        failures.append("audit error: %s" % (e.message,))
    check(doc.dxfversion == "AC1027", "version %s" % doc.dxfversion, failures)

    msp = doc.modelspace()
    types = [e.dxftype() for e in msp]
    check(types == ["LINE", "CIRCLE", "ARC", "TEXT", "LWPOLYLINE", "POINT"], "entities %s" % types, failures)
    check("墙体" in doc.layers, "layer 墙体 missing", failures)
    line = msp.query("LINE")[0]
    check(line.dxf.layer == "墙体" and line.dxf.color == 1, "line layer/colour", failures)
    check(tuple(line.dxf.end) == (10.5, 20.25, 0.0), "line end %s" % (line.dxf.end,), failures)
    circle = msp.query("CIRCLE")[0]
    check(circle.dxf.radius == 2.5 and tuple(circle.dxf.center) == (5, 5, 0), "circle", failures)
    arc = msp.query("ARC")[0]
    check(abs(arc.dxf.end_angle - 90.0) < 1e-9 and arc.dxf.radius == 3.0, "arc angles in degrees", failures)
    text = msp.query("TEXT")[0]
    check(text.dxf.text == "中文标注" and text.dxf.layer == "墙体" and text.dxf.height == 3.5, "text", failures)
    check(text.has_xdata("KELAPP"), "text xdata", failures)
    if text.has_xdata("KELAPP"):
        tags = [(t.code, t.value) for t in text.get_xdata("KELAPP")]
        check(tags == [(1000, "附加"), (1040, 1.25), (1070, 7)], "xdata %s" % tags, failures)
    check("KELAPP" in doc.appids, "regapp KELAPP", failures)
    pline = msp.query("LWPOLYLINE")[0]
    check(pline.closed and [tuple(p[:2]) for p in pline.get_points()] == [(0, 0), (4, 0), (4, 3)],
          "lwpolyline %s" % list(pline.get_points()), failures)

    nod = doc.rootdict
    check("KEL_DATA" in nod, "KEL_DATA in the named-object dictionary", failures)
    if "KEL_DATA" in nod:
        row = nod["KEL_DATA"]["ROW1"]
        check(row.dxftype() == "XRECORD", "ROW1 is an xrecord", failures)
        tags = [(t.code, t.value) for t in row.tags]
        check(tags == [(1, "数据"), (40, 0.1), (70, 3)], "xrecord %s" % tags, failures)

    # A drawing that cannot be read stops the console before anything runs;
    # one that cannot be written gives exit status 2 as well.
    bad = os.path.join(workdir, "..", os.path.basename(workdir) + "-truncated.dxf")
    with open(out, "rb") as f, open(bad, "wb") as g:
        g.write(f.read()[:4000])
    proc = run_console(console, workdir, ["--drawing", os.path.abspath(bad), "--eval", '(princ "ran")'])
    check(proc.returncode == 2 and "line " in proc.stderr and "ran" not in proc.stdout,
          "truncated drawing: status %d, %r" % (proc.returncode, proc.stderr), failures)
    proc = run_console(console, workdir, ["--eval", "(princ)", "--save", "/nonexistent-dir/x.dxf"])
    check(proc.returncode == 2 and "x.dxf" in proc.stderr, "unwritable save: status %d" % proc.returncode, failures)
    finish(failures)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
