"""A drawing made by the module's entity-making AutoLISP functions and by a
sibling module's KEL::Create* calls, saved by the console: ezdxf reads and
audits it without errors, and it holds exactly what was made.

    entity_makers_ezdxf.py CONSOLE KELSIB.arx WORKDIR"""
import math
import os
import sys

import ezdxf

from interop_common import check, finish, follower_problems, run_console

SCRIPT = r'''
(kel_entmakeline "WALL" '(0 0) '(10 0) '(10 10))
(kel_entmakepoint "PT" '(1 2 3))
(kel_entmakenut "NUT" '(20 0 0) 10 6)
(kel_entmakecircle "CIR" '(30 0 0) 5)
(kel_entmaketext "TXT" "编号A" '(40 0) 2.5 0.0)
(kel_entmakearc "ARC" '(50 0) '(55 5) '(60 0))
(kel_entmakepline "PL" '(0 20) '(10 20) '(10 30))
(kel_mktop "0" '(0 0))
(entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.0)))
(setq blk (entmake '((0 . "ENDBLK"))))
(regapp "TFGXPJ")
(mkins "INS" blk '(70 0 0) "P-1")
(kel_mkins "INS" blk '(80 0 0))
(kelsib_draw)
'''


def rounded(v):
    return tuple(round(c, 6) + 0.0 for c in v)


def main(console, sibling, workdir):
    failures = []
    os.makedirs(workdir, exist_ok=True)
    script = os.path.abspath(os.path.join(workdir, "..", os.path.basename(workdir) + "-make.lsp"))
    with open(script, "w", encoding="utf-8") as f:
        f.write(SCRIPT)
    out = os.path.join(workdir, "made.dxf")
    proc = run_console(console, workdir, ["--arx", sibling, script, "--save", out])
    if proc.returncode != 0:
        failures.append("console exit status %d: %s %s" % (proc.returncode, proc.stdout, proc.stderr))
        return finish(failures)
    for p in follower_problems(out):
        failures.append(p)
    doc = ezdxf.readfile(out)
    for e in doc.audit().errors:
        failures.append("audit error: %s" % (e.message,))

    made = []
    for e in doc.modelspace():
        kind, layer = e.dxftype(), e.dxf.layer
        if kind == "LINE":
            made.append((kind, layer, rounded(e.dxf.start), rounded(e.dxf.end)))
        elif kind == "POINT":
            made.append((kind, layer, rounded(e.dxf.location)))
        elif kind == "CIRCLE":
            made.append((kind, layer, rounded(e.dxf.center), e.dxf.radius, e.dxf.color))
        elif kind == "ARC":
            made.append((kind, layer, rounded(e.dxf.center), e.dxf.radius, round(e.dxf.start_angle, 6),
                         round(e.dxf.end_angle, 6)))
        elif kind == "TEXT":
            made.append((kind, layer, e.dxf.text, rounded(e.dxf.insert), e.dxf.height, e.dxf.halign, e.dxf.valign,
                         round(e.dxf.width, 6)))
        elif kind == "POLYLINE":
            made.append((kind, layer, e.dxf.flags & 1, e.dxf.flags & 8,
                         [(rounded(v.dxf.location), v.dxf.bulge, v.dxf.start_width) for v in e.vertices]))
        elif kind == "LWPOLYLINE":
            made.append((kind, layer, [rounded(p[:2]) for p in e.get_points()]))
        elif kind == "INSERT":
            xdata = e.get_xdata("TFGXPJ") if e.has_xdata("TFGXPJ") else None
            made.append((kind, layer, e.dxf.name[:2], rounded(e.dxf.insert),
                         [tuple(t) for t in xdata] if xdata else None))
        else:
            made.append((kind, layer))
    expected = [
        ("LINE", "WALL", (0.0, 0.0, 0.0), (10.0, 0.0, 0.0)),
        ("LINE", "WALL", (10.0, 0.0, 0.0), (10.0, 10.0, 0.0)),
        ("POINT", "PT", (1.0, 2.0, 3.0)),
        ("POLYLINE", "NUT", 1, 0, [((16.0, 0.0, 0.0), 1.0, 2.0), ((24.0, 0.0, 0.0), 1.0, 2.0)]),
        ("CIRCLE", "CIR", (30.0, 0.0, 0.0), 5.0, 256),
        ("TEXT", "TXT", "编号A", (40.0, 0.0, 0.0), 2.5, 1, 2, 1.0),
        ("ARC", "ARC", (55.0, 0.0, 0.0), 5.0, 0.0, 180.0),
        ("POLYLINE", "PL", 0, 0, [((0.0, 20.0, 0.0), 0, 0), ((10.0, 20.0, 0.0), 0, 0), ((10.0, 30.0, 0.0), 0, 0)]),
        ("INSERT", "INS", "*U", (70.0, 0.0, 0.0), [(1002, "{"), (1000, "P-1"), (1002, "}")]),
        ("INSERT", "INS", "*U", (80.0, 0.0, 0.0), None),
        ("LINE", "SIB", (0.0, 0.0, 0.0), (100.0, 0.0, 0.0)),
        ("LWPOLYLINE", "SIB", [(0.0, 10.0), (100.0, 10.0)]),
        ("CIRCLE", "SIB", (50.0, 50.0, 0.0), 25.0, 1),
        ("TEXT", "SIB", "KELSIB 零件", (0.0, 80.0, 0.0), 0.0, 0, 0, 0.8),
        ("POLYLINE", "SIB", 1, 8, [((0.0, 0.0, 0.0), 0, 0), ((10.0, 0.0, 5.0), 0, 0), ((10.0, 10.0, 5.0), 0, 0)]),
    ]
    check(len(made) == len(expected), "entities: %d made, %d expected" % (len(made), len(expected)), failures)
    for i, (got, want) in enumerate(zip(made, expected)):
        check(got == want, "entity %d: %r, expected %r" % (i, got, want), failures)

    blocks = [b for b in doc.blocks if b.name.startswith("*U")]
    check(len(blocks) == 1 and [e.dxftype() for e in blocks[0]] == ["CIRCLE"], "the anonymous block", failures)
    layer = doc.layers.get("SIB")
    check(layer is not None and layer.dxf.color == 5, "layer SIB and its colour", failures)
    check(doc.header.get("$CLAYER") == "SIB", "current layer %r" % doc.header.get("$CLAYER"), failures)
    finish(failures)


if __name__ == "__main__":
    main(*sys.argv[1:4])
