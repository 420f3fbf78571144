"""A drawing made from the family's shipped template through the module's
import functions: everything of the template (kel_importdwtall "*"), then
the block PUMP of a second template, written by ezdxf, whose layers clash
with the first's. The console saves it; ezdxf audits it clean, every
handle any object refers to is an object of the new drawing, every record
an entity names is there, and the clashing layers are the first
template's.

  template_ezdxf.py CONSOLE WORKDIR SHIPPED_TEMPLATE.dxf"""
import os
import shutil
import subprocess
import sys

import ezdxf

from clone_ezdxf import handle_problems, reference_problems
from interop_common import check, finish, follower_problems, private_env


def make_second(path):
    doc = ezdxf.new("R2013", setup=["linetypes"])
    doc.layers.add("U-ANNO-TTLB", color=1, linetype="DASHDOT")
    doc.layers.add("PP-COM", color=5, linetype="DOT")
    doc.layers.add("PUMPS", color=4, linetype="DASHED2")
    doc.styles.add("KEL-HZ", font="arial.ttf")
    pump = doc.blocks.new("PUMP", base_point=(1, 2))
    pump.add_circle((0, 0), 2.0, dxfattribs={"layer": "U-ANNO-TTLB"})
    pump.add_line((-2, 0), (2, 0), dxfattribs={"layer": "PUMPS"})
    pump.add_text("P", dxfattribs={"layer": "PP-COM", "style": "KEL-HZ", "height": 1.0})
    doc.saveas(path)


def main():
    console, workdir, shipped = sys.argv[1], sys.argv[2], sys.argv[3]
    failures = []
    env = private_env(workdir)
    os.makedirs(os.path.join(workdir, "install", "template"))
    shutil.copy(shipped, os.path.join(workdir, "install", "template", "kelstd.dxf"))
    second = os.path.join(workdir, "plant.dxf")
    out = os.path.join(workdir, "made.dxf")
    make_second(second)
    proc = subprocess.run([console,
                           "--eval", '(length (kel_importdwtall nil "*" nil))',
                           "--eval", '(type (kel_importdwt "plant.dwt" "block" "pump" nil))',
                           "--eval", '(command "_.INSERT" "sztq_0" "0,0" "1" "1" "0" "P-1" "Plan" "D-1" "1:50" "2026")',
                           "--eval", '(command "_.INSERT" "PUMP" "50,50" "1" "1" "0")',
                           "--save", out], cwd=workdir, env=env, capture_output=True, text=True)
    check(proc.returncode == 0, "console exit status %d: %s" % (proc.returncode, proc.stderr), failures)
    check("\n27" in proc.stdout and "ENAME" in proc.stdout, "console said %r" % proc.stdout, failures)
    if failures:
        finish(failures)
    for p in follower_problems(out):
        failures.append("made.dxf: %s" % p)
    doc = ezdxf.readfile(out)
    for e in doc.audit().errors:
        failures.append("audit error: %s" % e.message)
    failures.extend(reference_problems(doc))
    failures.extend(handle_problems(out))
    # The shipped template's records, as it holds them.
    for name in ("PP-COM", "U-ANNO-TTLB", "U-ANNO-TEXT", "U-ANNO-DIMS", "U-ANNO-AXIS"):
        check(doc.layers.has_entry(name), "layer %s missing" % name, failures)
    check(doc.layers.get("U-ANNO-AXIS").dxf.linetype.upper() == "CENTER", "U-ANNO-AXIS lost CENTER", failures)
    check(doc.dimstyles.get("KEL-DIM100").dxf.dimtxsty == "KEL-DIM", "KEL-DIM100's text style", failures)
    for block in ("sztq_0", "szhql", "KEL-DZBZ", "KEL-BG"):
        check(block in doc.blocks, "block %s missing" % block, failures)
    # The clashing layers and style stay the shipped template's; the new
    # layer and linetype come from the second.
    check(doc.layers.get("U-ANNO-TTLB").dxf.color == 7, "U-ANNO-TTLB took the second's colour", failures)
    check(doc.layers.get("PP-COM").dxf.linetype == "Continuous", "PP-COM took the second's linetype", failures)
    check(doc.styles.get("KEL-HZ").dxf.font == "gbenor.shx", "KEL-HZ took the second's font", failures)
    check(doc.layers.get("PUMPS").dxf.linetype.upper() == "DASHED2", "PUMPS lost its linetype", failures)
    pump = [(e.dxftype(), e.dxf.layer) for e in doc.blocks.get("PUMP")]
    check(pump == [("CIRCLE", "U-ANNO-TTLB"), ("LINE", "PUMPS"), ("TEXT", "PP-COM")], "PUMP holds %r" % pump, failures)
    check(tuple(doc.blocks.get("PUMP").block.dxf.base_point)[:2] == (1, 2), "PUMP's base point", failures)
    inserts = [e.dxf.name for e in doc.modelspace() if e.dxftype() == "INSERT"]
    check(inserts == ["sztq_0", "PUMP"], "model space inserts %r" % inserts, failures)
    finish(failures)


if __name__ == "__main__":
    main()
