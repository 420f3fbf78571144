"""A drawing made from AutoLISP through the console saves to DXF that ezdxf
reads and audits without errors, with the content made."""
import os
import sys

import ezdxf

from interop_common import check, dxf_items, finish, follower_problems, run_console

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
(entmake '((0 . "POLYLINE") (8 . "墙体") (66 . 1) (10 0.0 0.0 0.0) (70 . 1)))
(entmake '((0 . "VERTEX") (10 0.0 0.0 0.0) (42 . 0.5)))
(entmake '((0 . "VERTEX") (10 10.0 0.0 0.0)))
(entmake '((0 . "VERTEX") (10 10.0 5.0 0.0) (42 . -1.0)))
(entmake '((0 . "SEQEND")))
(entmake '((0 . "POLYLINE") (66 . 1) (10 0.0 0.0 0.0) (70 . 8)))
(entmake '((0 . "VERTEX") (10 0.0 0.0 0.0) (70 . 32)))
(entmake '((0 . "VERTEX") (10 1.0 2.0 3.0) (70 . 32)))
(entmake '((0 . "VERTEX") (10 4.0 5.0 6.0) (70 . 32)))
(entmake '((0 . "SEQEND")))
(entmake '((0 . "BLOCK") (2 . "KEL_TAG") (70 . 2) (10 1.0 1.0 0.0)))
(entmake '((0 . "CIRCLE") (10 1.0 1.0 0.0) (40 . 1.0)))
(entmake '((0 . "ATTDEF") (10 0.0 -1.0 0.0) (40 . 1.0) (1 . "默认") (3 . "编号") (2 . "NO") (70 . 0)))
(entmake '((0 . "ENDBLK")))
(entmake '((0 . "INSERT") (2 . "KEL_TAG") (66 . 1) (10 20.0 20.0 0.0)))
(entmake '((0 . "ATTRIB") (10 19.0 18.0 0.0) (40 . 1.0) (1 . "甲-01") (2 . "NO") (70 . 0)))
(entmake '((0 . "SEQEND")))
(setq d (entmakex '((0 . "DICTIONARY") (100 . "AcDbDictionary"))))
(dictadd (namedobjdict) "KEL_DATA" d)
(dictadd d "ROW1" (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "数据") (40 . 0.1) (70 . 3))))
'''


def check_complex_entities(doc, failures):
    msp = doc.modelspace()
    plines = {p.get_mode(): p for p in msp.query("POLYLINE")}
    p2d = plines.get("AcDb2dPolyline")
    check(p2d is not None and p2d.is_closed and p2d.dxf.layer == "墙体", "2D polyline", failures)
    if p2d is not None:
        points = [(tuple(v.dxf.location)[:2], v.dxf.bulge) for v in p2d.vertices]
        check(points == [((0, 0), 0.5), ((10, 0), 0), ((10, 5), -1.0)], "2D vertices %s" % points, failures)
    p3d = plines.get("AcDb3dPolyline")
    check(p3d is not None and [tuple(v.dxf.location) for v in p3d.vertices] == [(0, 0, 0), (1, 2, 3), (4, 5, 6)],
          "3D polyline", failures)
    block = doc.blocks.get("KEL_TAG")
    check(block is not None and [e.dxftype() for e in block] == ["CIRCLE", "ATTDEF"], "block KEL_TAG", failures)
    if block is not None:
        check(block.block.dxf.flags & 2 and tuple(block.block.dxf.base_point) == (1, 1, 0), "block flags/base",
              failures)
        attdef = block.query("ATTDEF")[0]
        check(attdef.dxf.tag == "NO" and attdef.dxf.text == "默认" and attdef.dxf.prompt == "编号", "attdef",
              failures)
    insert = msp.query("INSERT")[0]
    check(insert.dxf.name == "KEL_TAG" and insert.get_attrib_text("NO") == "甲-01", "insert attribute", failures)


def check_structure(path, failures):
    """The file itself (ezdxf makes up what a file lacks when it loads it):
    followers owned by their entity, each layout linked both ways with its
    block, and the standard objects."""
    for problem in follower_problems(path):
        failures.append(problem)
    items = dxf_items(path)
    handles = {next((v for c, v in tags if c == 5), None): (kind, tags) for kind, tags in items}
    layouts = {}
    for kind, tags in items:
        if kind == "LAYOUT":
            name = [v for c, v in tags if c == 1][-1]
            owners = [v for c, v in tags if c == 330]
            layouts[name] = (next(v for c, v in tags if c == 5), owners[0], owners[-1])
    check(sorted(layouts) == ["Layout1", "Model"], "layouts %s" % sorted(layouts), failures)
    for name, space in (("Model", "*Model_Space"), ("Layout1", "*Paper_Space")):
        record = next((t for k, t in items if k == "BLOCK_RECORD" and (2, space) in t), None)
        if name not in layouts or record is None:
            continue
        handle, owner, block = layouts[name]
        check((340, handle) in record and (5, block) in record, "%s and %s not linked" % (name, space), failures)
        check(handles.get(owner, ("",))[0] == "DICTIONARY" and (3, name) in handles[owner][1],
              "%s not in ACAD_LAYOUT" % name, failures)
    kinds = [k for k, _ in items]
    for kind in ("ACDBDICTIONARYWDFLT", "ACDBPLACEHOLDER", "MLINESTYLE"):
        check(kind in kinds, kind + " missing", failures)


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
    check(types == ["LINE", "CIRCLE", "ARC", "TEXT", "LWPOLYLINE", "POINT", "POLYLINE", "POLYLINE", "INSERT"],
          "entities %s" % types, failures)
    check_complex_entities(doc, failures)
    check_structure(out, failures)
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
