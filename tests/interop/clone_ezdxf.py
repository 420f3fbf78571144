"""A drawing made by cloning from two templates that ezdxf writes: all of
the first (layers with their linetypes, text styles, a dimension style
with its text style, a block with an extension dictionary on one of its
entities, a dimension), then the block PUMP and the model space of a
second whose layers clash with the first's. The host saves it; ezdxf
audits it clean, every handle any object refers to is an object of the
new drawing, every record an entity names is there, and the clashing
layers were treated as the modes say (kept for the block, renamed for the
model space)."""
import os
import shutil
import subprocess
import sys

import ezdxf

from interop_common import check, dxf_items, finish, follower_problems

POINTER_CODES = set(range(330, 370)) | set(range(390, 400))


def make_first(path):
    doc = ezdxf.new("R2013", setup=["linetypes"])
    doc.layers.add("WALL", color=2, linetype="DASHED")
    doc.layers.add("PP-COM", color=1, linetype="CENTER")
    doc.styles.add("ROMANS", font="romans.shx")
    dim = doc.dimstyles.new("KEL-25")
    dim.dxf.dimtxsty = "ROMANS"
    dim.dxf.dimtxt = 3.5
    knob = doc.blocks.new("KNOB")
    circle = knob.add_circle((0, 0), 1.0, dxfattribs={"layer": "WALL"})
    xdict = circle.new_extension_dict()
    xdict.add_xrecord("NOTE").reset([(1, "knob")])
    msp = doc.modelspace()
    msp.add_line((0, 0), (0, 20), dxfattribs={"layer": "PP-COM"})
    msp.add_blockref("KNOB", (8, 10), dxfattribs={"layer": "WALL"})
    msp.add_text("Plan", dxfattribs={"style": "ROMANS", "height": 2.5})
    msp.add_linear_dim(base=(0, -5), p1=(0, 0), p2=(8, 0), dimstyle="KEL-25").render()
    doc.saveas(path)


def make_second(path):
    doc = ezdxf.new("R2013", setup=["linetypes"])
    doc.layers.add("WALL", color=6, linetype="DOT")
    doc.layers.add("PUMPS", color=4, linetype="DASHDOT")
    pump = doc.blocks.new("PUMP")
    pump.add_circle((0, 0), 2.0, dxfattribs={"layer": "WALL"})
    pump.add_line((-2, 0), (2, 0), dxfattribs={"layer": "PUMPS"})
    msp = doc.modelspace()
    msp.add_line((50, 0), (60, 0), dxfattribs={"layer": "WALL"})
    msp.add_blockref("PUMP", (70, 0), dxfattribs={"layer": "PUMPS"})
    doc.saveas(path)


def reference_problems(doc):
    """Every pointer or owner handle of every object names an object of the
    drawing; every layer, linetype, style and block an entity names is
    there."""
    problems = []
    handles = set(doc.entitydb.keys())
    for handle, entity in doc.entitydb.items():
        owner = entity.dxf.get("owner")
        if owner not in (None, "0") and owner not in handles:
            problems.append("%s #%s: owner %s is not in the drawing" % (entity.dxftype(), handle, owner))
        if entity.dxftype() == "XRECORD":
            for code, value in entity.tags:
                if code in POINTER_CODES and value not in handles:
                    problems.append("XRECORD #%s: %d %s is not in the drawing" % (handle, code, value))
    for layout_block in [doc.modelspace()] + [doc.blocks.get(b.name) for b in doc.blocks]:
        for e in layout_block:
            check(e.dxf.layer in doc.layers, "%s on missing layer %s" % (e.dxftype(), e.dxf.layer), problems)
            lt = e.dxf.get("linetype")
            if lt:
                check(lt in doc.linetypes, "%s with missing linetype %s" % (e.dxftype(), lt), problems)
            if e.dxftype() == "INSERT":
                check(e.dxf.name in doc.blocks, "INSERT of missing block %s" % e.dxf.name, problems)
            if e.dxftype() == "TEXT":
                check(e.dxf.style in doc.styles, "TEXT in missing style %s" % e.dxf.style, problems)
            if e.dxftype() == "DIMENSION":
                check(e.dxf.geometry in doc.blocks, "DIMENSION with missing block %s" % e.dxf.geometry, problems)
                check(e.dxf.dimstyle in doc.dimstyles, "DIMENSION in missing style %s" % e.dxf.dimstyle, problems)
    for layer in doc.layers:
        check(layer.dxf.linetype in doc.linetypes, "layer %s: missing linetype %s" % (layer.dxf.name, layer.dxf.linetype),
              problems)
    return problems


def handle_problems(path):
    """Every handle the file's groups refer to (pointers and owners, codes
    330-369 and 390-399) is the handle (5, or 105 for a DIMSTYLE) of an
    item of the file."""
    items = dxf_items(path)
    defined = {v.strip() for _, tags in items for c, v in tags if c in (5, 105)}
    problems = []
    for kind, tags in items:
        for code, value in tags:
            if code in POINTER_CODES and value.strip() not in ("0", "") and value.strip() not in defined:
                problems.append("%s: group %d refers to %s, not in the drawing" % (kind, code, value.strip()))
    return problems


def main():
    tool, workdir = sys.argv[1], sys.argv[2]
    failures = []
    shutil.rmtree(workdir, ignore_errors=True)
    os.makedirs(workdir)
    first = os.path.join(workdir, "family.dxf")
    second = os.path.join(workdir, "plant.dxf")
    out = os.path.join(workdir, "made.dxf")
    make_first(first)
    make_second(second)
    # The templates are named as .dwt: the host reads the .dxf of that name.
    proc = subprocess.run([tool, first[:-4] + ".dwt", second[:-4] + ".dwt", out], capture_output=True, text=True)
    if proc.returncode != 0:
        failures.append("clone_drawing exit status %d: %s %s" % (proc.returncode, proc.stdout, proc.stderr))
        finish(failures)
    for p in follower_problems(out):
        failures.append("made.dxf: %s" % p)
    doc = ezdxf.readfile(out)
    for e in doc.audit().errors:
        failures.append("audit error: %s" % e.message)
    failures.extend(reference_problems(doc))
    failures.extend(handle_problems(out))
    # The first template's layers as they were; the block of the second
    # kept them; its model space brought renamed ones.
    check(doc.layers.get("WALL").dxf.color == 2, "WALL is not the first template's", failures)
    check(doc.layers.get("WALL").dxf.linetype.upper() == "DASHED", "WALL lost its linetype", failures)
    check(doc.layers.get("PP-COM").dxf.linetype.upper() == "CENTER", "PP-COM lost its linetype", failures)
    pump = [e.dxf.layer for e in doc.blocks.get("PUMP")]
    check(pump == ["WALL", "PUMPS"], "PUMP holds %r" % pump, failures)
    check(doc.layers.has_entry("$0$WALL") and doc.layers.get("$0$WALL").dxf.color == 6,
          "no renamed WALL of the second template", failures)
    check(doc.layers.get("$0$WALL").dxf.linetype.upper() == "$0$DOT", "the renamed WALL's linetype", failures)
    second_msp = [(e.dxftype(), e.dxf.layer) for e in doc.modelspace()][-2:]
    check(second_msp == [("LINE", "$0$WALL"), ("INSERT", "$0$PUMPS")], "second model space %r" % second_msp, failures)
    knob = list(doc.blocks.get("KNOB"))
    check(len(knob) == 1 and knob[0].has_extension_dict, "KNOB's circle lost its extension dictionary", failures)
    style = doc.dimstyles.get("KEL-25")
    check(style is not None and style.dxf.dimtxsty == "ROMANS", "KEL-25's text style", failures)
    finish(failures)


if __name__ == "__main__":
    main()
