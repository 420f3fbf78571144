"""R12 (AC1009) drawings written by ezdxf, plain and with its standard
setup (styles, linetypes, dimension styles), and the same drawings with
every handle taken out ($HANDLING 0, as older programs write them), read
into the host: every entity arrives, the host saves the drawing, and the
saved file opens again in the host and in ezdxf with the same entities."""
import os
import re
import sys

import ezdxf

from interop_common import check, finish, run_console


def make_drawing(setup, path):
    doc = ezdxf.new("R12", setup=setup)
    msp = doc.modelspace()
    doc.layers.add("WALLS", color=3)
    msp.add_line((0, 0), (10, 5), dxfattribs={"layer": "WALLS"})
    msp.add_circle((3, 4), 2)
    msp.add_arc((1, 1), 5, 10, 200)
    msp.add_point((2, 2))
    msp.add_text("R12 text", dxfattribs={"height": 2.0})
    msp.add_polyline2d([(0, 0), (4, 0), (4, 3)], close=True)
    msp.add_polyline3d([(0, 0, 0), (1, 1, 1), (2, 0, 2)])
    msp.add_solid([(0, 0), (1, 0), (0, 1)])
    block = doc.blocks.new("KEL_BLOCK", base_point=(1, 1))
    block.add_circle((0, 0), 1)
    block.add_attdef("TAG", (0, 0), dxfattribs={"height": 1})
    ref = msp.add_blockref("KEL_BLOCK", (10, 10))
    ref.add_attrib("TAG", "value", (10, 10))
    doc.saveas(path)
    return sorted(e.dxftype() for e in msp)


def without_handles(src, dst):
    """The file as a program that writes no handles would: no 5 or 105
    groups (but DIMSTYLE's 5, its DIMBLK) and $HANDLING 0."""
    with open(src, encoding="cp1252") as f:
        lines = f.read().split("\n")
    out, kind, i = [], None, 0
    while i + 1 < len(lines):
        code, value = lines[i].strip(), lines[i + 1]
        if code == "0":
            kind = value.strip()
        drop = code == "105" or (code == "5" and kind != "DIMSTYLE")
        if code == "9" and value.strip() == "$HANDSEED":
            i += 4
            continue
        if not drop:
            out += [lines[i], value]
        i += 2
    text = "\n".join(out) + "\n"
    text = re.sub(r"\$HANDLING\n( *)70\n( *)1\n", r"$HANDLING\n\g<1>70\n\g<2>0\n", text)
    with open(dst, "w", encoding="cp1252") as f:
        f.write(text)


TYPES = '(progn (setq ss (ssget "X") n 0) (repeat (sslength ss) ' \
        '(princ (strcat "\\n<" (cdr (assoc 0 (entget (ssname ss n)))) ">")) (setq n (1+ n))) (princ))'


def types_printed(stdout):
    return sorted(re.findall(r"<([A-Z0-9_]+)>", stdout))


def main(console, workdir):
    failures = []
    os.makedirs(workdir, exist_ok=True)
    for setup in (False, True):
        name = "setup" if setup else "plain"
        source = os.path.join(workdir, "..", os.path.basename(workdir) + "-%s.dxf" % name)
        types = make_drawing(setup, source)
        bare = source.replace(".dxf", "-nohandles.dxf")
        without_handles(source, bare)
        for path in (source, bare):
            label = os.path.basename(path)
            saved = os.path.join(workdir, "..", os.path.basename(workdir) + "-saved-" + label)
            proc = run_console(console, workdir, ["--drawing", path, "--eval", TYPES, "--save", saved])
            if proc.returncode != 0:
                failures.append("%s: status %d: %s" % (label, proc.returncode, proc.stderr.strip()))
                continue
            check(types_printed(proc.stdout) == types, "%s: entities %s, expected %s" %
                  (label, types_printed(proc.stdout), types), failures)
            again = run_console(console, workdir, ["--drawing", saved, "--eval", TYPES])
            check(again.returncode == 0 and types_printed(again.stdout) == types, "%s: saved file read back: %s %s" %
                  (label, types_printed(again.stdout), again.stderr.strip()), failures)
            doc = ezdxf.readfile(saved)
            for e in doc.audit().errors:
                failures.append("%s: audit error: %s" % (label, e.message))
            check(sorted(e.dxftype() for e in doc.modelspace()) == types, "%s: ezdxf reads %s" %
                  (label, sorted(e.dxftype() for e in doc.modelspace())), failures)
            ref = doc.modelspace().query("INSERT")
            check(len(ref) == 1 and ref[0].get_attrib_text("TAG") == "value", "%s: attribute" % label, failures)
            check("KEL_BLOCK" in doc.blocks and "WALLS" in doc.layers, "%s: block and layer" % label, failures)
    finish(failures)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
