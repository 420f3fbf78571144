"""Annotation entities between the host and ezdxf. A drawing made from
AutoLISP with multiline text (Chinese, and longer than one 250-character
chunk), a rotated and an aligned dimension and a shape saves to DXF that
ezdxf reads and audits without errors, with that content; a drawing ezdxf
writes with multiline text and linear, aligned, angular and radius
dimensions reads into the host and writes back with every entity intact."""
import math
import os
import sys

import ezdxf

from ezdxf_to_host import compare_entities, unescaped
from interop_common import check, finish, run_console

LONG = "".join(chr(0x4E00 + i) for i in range(260)) + "\\P第二段 with ASCII"

SCRIPT = r'''
(entmake (list '(0 . "MTEXT") '(100 . "AcDbEntity") '(8 . "注释") '(100 . "AcDbMText") '(10 1.0 2.0 0.0)
               '(40 . 2.5) '(41 . 40.0) '(71 . 5) (cons 3 (substr LONGTEXT 1 250)) (cons 1 (substr LONGTEXT 251))
               '(11 0.0 1.0 0.0)))
(entmake '((0 . "MTEXT") (10 0.0 -10.0 0.0) (40 . 1.5) (1 . "{\\fSimSun|b1;标题}\\P%%c20")))
(entmake '((0 . "DIMENSION") (100 . "AcDbEntity") (100 . "AcDbDimension") (10 0.0 5.0 0.0) (70 . 0) (1 . "")
           (100 . "AcDbAlignedDimension") (13 0.0 0.0 0.0) (14 10.0 0.0 0.0) (50 . 0.0)
           (100 . "AcDbRotatedDimension")))
(entmake '((0 . "DIMENSION") (10 -2.0 2.0 0.0) (70 . 1) (1 . "<> 米") (13 0.0 0.0 0.0) (14 30.0 40.0 0.0)))
(entmake '((0 . "SHAPE") (10 7.0 8.0 0.0) (40 . 2.0) (2 . "ARROW") (50 . 0.5)))
'''


def host_to_ezdxf(console, workdir, failures):
    os.makedirs(workdir, exist_ok=True)
    # Beside the work directory, which the console run starts afresh.
    script = os.path.abspath(os.path.join(workdir, "..", os.path.basename(workdir) + "-make.lsp"))
    with open(script, "w", encoding="utf-8") as f:
        text = LONG.replace("\\", "\\\\")
        f.write('(setq LONGTEXT "%s")\n' % text + SCRIPT)
    out = os.path.join(workdir, "annotations.dxf")
    proc = run_console(console, workdir, [script, "--save", out])
    if proc.returncode != 0:
        failures.append("console exit status %d: %s %s" % (proc.returncode, proc.stdout, proc.stderr))
        return
    doc = ezdxf.readfile(out)
    for e in doc.audit().errors:
        failures.append("audit error: %s" % (e.message,))
    msp = doc.modelspace()
    types = [e.dxftype() for e in msp]
    check(types == ["MTEXT", "MTEXT", "DIMENSION", "DIMENSION", "SHAPE"], "entities %s" % types, failures)
    if types != ["MTEXT", "MTEXT", "DIMENSION", "DIMENSION", "SHAPE"]:
        return
    long_text, short_text, rotated, aligned, shape = list(msp)
    check(long_text.text == LONG, "long MTEXT text %r" % long_text.text[:40], failures)
    check(long_text.dxf.layer == "注释" and long_text.dxf.width == 40.0 and long_text.dxf.attachment_point == 5,
          "long MTEXT attributes", failures)
    check(abs(long_text.get_rotation() - 90.0) < 1e-9, "long MTEXT rotation %r" % long_text.get_rotation(), failures)
    check(short_text.text == "{\\fSimSun|b1;标题}\\P%%c20", "short MTEXT %r" % short_text.text, failures)

    for dim, kind, measured, shown in ((rotated, 0, 10.0, "10"), (aligned, 1, 50.0, "50 米")):
        where = "dimension #%s" % dim.dxf.handle
        check(dim.dimtype == kind and dim.dxf.dimtype & 32, where + " type %d" % dim.dxf.dimtype, failures)
        check(math.isclose(dim.dxf.actual_measurement, measured), where + " measurement", failures)
        block = doc.blocks.get(dim.dxf.geometry)
        check(block is not None and dim.dxf.geometry.startswith("*D"), where + " block", failures)
        if block is None:
            continue
        kinds = sorted(e.dxftype() for e in block)
        check(kinds == ["LINE"] * 3 + ["LWPOLYLINE"] * 2 + ["MTEXT"] + ["POINT"] * 3, where + " %s" % kinds, failures)
        texts = [e.text for e in block if e.dxftype() == "MTEXT"]
        check(texts == [shown], where + " text %r" % texts, failures)
    check(tuple(aligned.dxf.defpoint3) == (30, 40, 0), "aligned dimension points", failures)
    check("Defpoints" in doc.layers, "Defpoints layer", failures)

    check(shape.dxf.name == "ARROW" and shape.dxf.size == 2.0 and tuple(shape.dxf.insert) == (7, 8, 0),
          "shape %r" % shape.dxfattribs(), failures)
    check(abs(shape.dxf.rotation - math.degrees(0.5)) < 1e-9, "shape rotation in degrees", failures)


def make_ezdxf_drawing(version, path):
    doc = ezdxf.new(version, setup=True)
    msp = doc.modelspace()
    msp.add_mtext("多行\\P文字 " + "长" * 300, dxfattribs={"char_height": 1.5, "width": 20, "attachment_point": 5})
    rotated = msp.add_mtext("转角", dxfattribs={"char_height": 2.0})
    rotated.dxf.rotation = 30
    msp.add_linear_dim(base=(0, 5), p1=(0, 0), p2=(10, 0)).render()
    msp.add_linear_dim(base=(20, 5), p1=(20, 0), p2=(25, 8), angle=90).render()
    msp.add_aligned_dim(p1=(0, 0), p2=(10, 10), distance=2).render()
    msp.add_angular_dim_2l(base=(5, 5), line1=((0, 0), (10, 0)), line2=((0, 0), (10, 10))).render()
    msp.add_radius_dim(center=(30, 30), radius=5, angle=45).render()
    msp.add_diameter_dim(center=(50, 30), radius=4, angle=30).render()
    doc.saveas(path)


def ezdxf_to_host(console, workdir, failures):
    for version in ("R2000", "R2018"):
        work = os.path.join(workdir, version)
        os.makedirs(work, exist_ok=True)
        src = os.path.join(workdir, version + "-ezdxf.dxf")
        out = os.path.join(workdir, version + "-host.dxf")
        make_ezdxf_drawing(version, src)
        proc = run_console(console, work, ["--drawing", src, "--eval", "(princ)", "--save", out])
        if proc.returncode != 0:
            failures.append("%s: console exit status %d: %s" % (version, proc.returncode, proc.stderr))
            continue
        a, b = ezdxf.readfile(src), ezdxf.readfile(out)
        for e in b.audit().errors:
            failures.append("%s: audit error: %s" % (version, e.message))
        compare_entities(version + " model", list(a.modelspace()), list(b.modelspace()), failures)
        blocks_a = {blk.name: blk for blk in a.blocks}
        for blk in b.blocks:
            if blk.name.startswith("*D"):
                compare_entities("%s block %s" % (version, blk.name), list(blocks_a[blk.name]), list(blk), failures)
        texts_a = [unescaped(e.text) for e in a.modelspace().query("MTEXT")]
        texts_b = [e.text for e in b.modelspace().query("MTEXT")]
        check(texts_a == texts_b, "%s: MTEXT contents" % version, failures)
        dims = list(b.modelspace().query("DIMENSION"))
        check([d.dimtype for d in dims] == [0, 0, 0, 2, 4, 3], "%s: dimension kinds %s" % (
            version, [d.dimtype for d in dims]), failures)


def main(console, workdir):
    failures = []
    host_to_ezdxf(console, os.path.join(workdir, "host"), failures)
    ezdxf_to_host(console, os.path.join(workdir, "ezdxf"), failures)
    finish(failures)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
