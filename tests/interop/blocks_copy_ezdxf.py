"""Copies between drawings with ezdxf on both sides. A drawing ezdxf writes
(a layer with a linetype, a text style, a nested block, an attribute
definition and a dimension) is inserted by the host's INSERT, and what was
placed is written again by WBLOCK; both drawings the host saves audit
clean in ezdxf, and every block, layer, linetype, style and dimension block
that the copies name is there."""
import os
import shutil
import sys

import ezdxf

from interop_common import check, finish, follower_problems, run_console


def make_source(path):
    doc = ezdxf.new("R2013", setup=["linetypes"])
    doc.layers.add("WALL", color=2, linetype="DASHED")
    doc.styles.add("ROMANS", font="romans.shx")
    knob = doc.blocks.new("KNOB")
    knob.add_circle((0, 0), 1.0, dxfattribs={"layer": "WALL"})
    msp = doc.modelspace()
    msp.add_line((0, 0), (0, 20), dxfattribs={"layer": "WALL", "linetype": "DASHED"})
    msp.add_blockref("KNOB", (8, 10))
    msp.add_text("Door", dxfattribs={"style": "ROMANS", "height": 2.5, "insert": (0, 22)})
    msp.add_attdef("NO", (2, 2), text="D-1", dxfattribs={"height": 2.5, "prompt": "Door number"})
    msp.add_linear_dim(base=(0, -5), p1=(0, 0), p2=(8, 0)).render()
    doc.header["$INSBASE"] = (0, 0, 0)
    doc.saveas(path)


def audit(path, failures):
    for p in follower_problems(path):
        failures.append("%s: %s" % (os.path.basename(path), p))
    doc = ezdxf.readfile(path)
    for e in doc.audit().errors:
        failures.append("%s: audit error: %s" % (os.path.basename(path), e.message))
    return doc


def check_door(doc, where, failures):
    if "door" not in doc.blocks:
        failures.append("%s: no block door" % where)
        return
    kinds = [e.dxftype() for e in doc.blocks.get("door")]
    check(kinds == ["LINE", "INSERT", "TEXT", "ATTDEF", "DIMENSION"], "%s: door holds %r" % (where, kinds), failures)
    for e in doc.blocks.get("door"):
        check(e.dxf.layer in doc.layers, "%s: layer %s missing" % (where, e.dxf.layer), failures)
        if e.dxftype() == "INSERT":
            check(e.dxf.name in doc.blocks, "%s: block %s missing" % (where, e.dxf.name), failures)
        if e.dxftype() == "TEXT":
            check(e.dxf.style in doc.styles, "%s: style %s missing" % (where, e.dxf.style), failures)
        if e.dxftype() == "DIMENSION":
            check(e.dxf.geometry in doc.blocks, "%s: dimension block %s missing" % (where, e.dxf.geometry), failures)
    check(doc.layers.has_entry("WALL") and doc.layers.get("WALL").dxf.linetype.upper() == "DASHED",
          "%s: WALL lost its linetype" % where, failures)
    check(doc.linetypes.has_entry("DASHED"), "%s: no DASHED" % where, failures)


def main():
    console, workdir = sys.argv[1], sys.argv[2]
    failures = []
    os.makedirs(workdir, exist_ok=True)
    files = os.path.abspath(workdir + "-files")
    shutil.rmtree(files, ignore_errors=True)
    os.makedirs(files)
    source = os.path.join(files, "door.dxf")
    make_source(source)
    part = os.path.join(files, "part")
    out = os.path.join(files, "out.dxf")
    proc = run_console(console, workdir, [
        "--eval", '(command "INSERT" "%s" "5,5" "2" "" "0" "D-7")' % source,
        "--eval", '(command "WBLOCK" "%s" "" "0,0" (entlast) "")' % part,
        "--eval", '(command "INSERT" "door" "40,40" "" "" "" "D-8")',
        "--save", out])
    if proc.returncode != 0:
        failures.append("console exit status %d: %s %s" % (proc.returncode, proc.stdout, proc.stderr))
        finish(failures)
    doc = audit(out, failures)
    check_door(doc, "drawing", failures)
    inserts = [e for e in doc.modelspace() if e.dxftype() == "INSERT"]
    check([(e.dxf.name, [a.dxf.text for a in e.attribs]) for e in inserts] == [("door", ["D-8"])],
          "placed %r" % [(e.dxf.name, [a.dxf.text for a in e.attribs]) for e in inserts], failures)
    written = audit(part + ".dxf", failures)
    check_door(written, "wblock", failures)
    placed = [e for e in written.modelspace() if e.dxftype() == "INSERT"]
    check([(e.dxf.name, [a.dxf.text for a in e.attribs], tuple(e.dxf.xscale for _ in [0])) for e in placed]
          == [("door", ["D-7"], (2.0,))], "written %r" % placed, failures)
    finish(failures)


if __name__ == "__main__":
    main()
