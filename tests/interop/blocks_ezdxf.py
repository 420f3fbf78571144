"""Block arrays (MINSERT) between the host and ezdxf. An array made from
AutoLISP, with an attribute, saves to DXF that ezdxf reads and audits
without errors, with its counts, spacings and attribute; arrays ezdxf
writes read into the host as arrays (and a one-by-one grid as a plain
block reference) and write back unchanged."""
import os
import sys

import ezdxf

from interop_common import check, finish, follower_problems, run_console

SCRIPT = r'''
(entmake '((0 . "BLOCK") (2 . "TAG") (70 . 2) (10 0.0 0.0 0.0)))
(entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.0)))
(entmake '((0 . "ATTDEF") (10 0.0 0.0 0.0) (40 . 0.5) (1 . "") (3 . "No?") (2 . "NO") (70 . 0)))
(entmake '((0 . "ENDBLK")))
(entmake '((0 . "INSERT") (66 . 1) (2 . "TAG") (10 5.0 5.0 0.0) (50 . 0.5) (70 . 2) (71 . 3) (44 . 4.0) (45 . 3.0)))
(entmake '((0 . "ATTRIB") (10 5.0 5.0 0.0) (40 . 0.5) (1 . "编号1") (2 . "NO") (70 . 0)))
(entmake '((0 . "SEQEND")))
'''


def host_to_ezdxf(console, workdir, failures):
    os.makedirs(workdir, exist_ok=True)
    script = os.path.abspath(os.path.join(workdir, "..", os.path.basename(workdir) + "-make.lsp"))
    with open(script, "w", encoding="utf-8") as f:
        f.write(SCRIPT)
    out = os.path.join(workdir, "array.dxf")
    proc = run_console(console, workdir, [script, "--save", out])
    if proc.returncode != 0:
        failures.append("console exit status %d: %s %s" % (proc.returncode, proc.stdout, proc.stderr))
        return
    for p in follower_problems(out):
        failures.append(p)
    doc = ezdxf.readfile(out)
    for e in doc.audit().errors:
        failures.append("audit error: %s" % (e.message,))
    inserts = [e for e in doc.modelspace() if e.dxftype() == "INSERT"]
    check(len(inserts) == 1, "inserts %d" % len(inserts), failures)
    if len(inserts) != 1:
        return
    array = inserts[0]
    check((array.dxf.column_count, array.dxf.row_count) == (2, 3), "counts", failures)
    check((array.dxf.column_spacing, array.dxf.row_spacing) == (4.0, 3.0), "spacings", failures)
    check(array.mcount == 6, "images %d" % array.mcount, failures)
    check([(a.dxf.tag, a.dxf.text) for a in array.attribs] == [("NO", "编号1")], "attribute", failures)


def ezdxf_to_host(console, workdir, failures):
    os.makedirs(workdir, exist_ok=True)
    source = os.path.join(workdir, "..", os.path.basename(workdir) + "-ezdxf.dxf")
    doc = ezdxf.new("R2013")
    block = doc.blocks.new("CELL")
    block.add_line((0, 0), (1, 0))
    msp = doc.modelspace()
    msp.add_blockref("CELL", (1, 2)).grid(size=(3, 2), spacing=(5.0, 2.5))  # rows, columns
    msp.add_blockref("CELL", (9, 9)).grid(size=(1, 1), spacing=(1.0, 1.0))
    doc.saveas(source)
    out = os.path.join(workdir, "back.dxf")
    proc = run_console(console, workdir, ["--drawing", os.path.abspath(source),
                                          "--eval", '(cdr (assoc 100 (reverse (entget (entnext)))))',
                                          "--eval", '(mapcar (quote (lambda (c) (cdr (assoc c (entget (entnext))))))'
                                                    ' (quote (70 71 44 45)))',
                                          "--eval", '(cdr (assoc 100 (reverse (entget (entlast)))))',
                                          "--save", out])
    if proc.returncode != 0:
        failures.append("console exit status %d: %s %s" % (proc.returncode, proc.stdout, proc.stderr))
        return
    lines = [l for l in proc.stdout.splitlines() if l.strip()]
    check(lines == ['"AcDbMInsertBlock"', "(2 3 2.5 5.0)", '"AcDbBlockReference"'], "host sees %r" % lines, failures)
    back = ezdxf.readfile(out)
    for e in back.audit().errors:
        failures.append("audit error after the host: %s" % (e.message,))
    counts = [(e.dxf.column_count, e.dxf.row_count, e.dxf.column_spacing, e.dxf.row_spacing)
              for e in back.modelspace() if e.dxftype() == "INSERT"]
    check(counts == [(2, 3, 2.5, 5.0), (1, 1, 0.0, 0.0)], "written back %r" % counts, failures)


def main():
    console, workdir = sys.argv[1], sys.argv[2]
    failures = []
    host_to_ezdxf(console, os.path.join(workdir, "host"), failures)
    ezdxf_to_host(console, os.path.join(workdir, "ezdxf"), failures)
    finish(failures)


if __name__ == "__main__":
    main()
