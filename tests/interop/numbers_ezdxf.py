"""Numbers at the edges of what a double holds, written by the host, read
by ezdxf exactly: subnormal values, the largest and smallest normal ones,
negative zero."""
import os
import sys

import ezdxf

from interop_common import check, finish, run_console

VALUES = [1e-320, 4.9e-324, 2.2250738585072014e-308, 1.7976931348623157e308, -1.7976931348623157e308, 123456.789]

SCRIPT = "(progn %s (setvar \"USERR1\" 1e-320) (princ))" % " ".join(
    "(entmake (list (cons 0 \"CIRCLE\") (list 10 %r 0.0 0.0) (cons 40 %r)))" % (v, abs(v)) for v in VALUES)


def main(console, workdir):
    failures = []
    os.makedirs(workdir, exist_ok=True)
    out = os.path.join(workdir, "..", os.path.basename(workdir) + "-numbers.dxf")
    proc = run_console(console, workdir, ["--eval", SCRIPT, "--save", out])
    if proc.returncode != 0:
        finish(["console status %d: %s" % (proc.returncode, proc.stderr)])
    doc = ezdxf.readfile(out)
    circles = doc.modelspace().query("CIRCLE")
    check([c.dxf.center.x for c in circles] == VALUES, "centres %s" % [c.dxf.center.x for c in circles], failures)
    check([c.dxf.radius for c in circles] == [abs(v) for v in VALUES], "radii", failures)
    check(doc.header.get("$USERR1") == 1e-320, "USERR1 %r" % doc.header.get("$USERR1"), failures)
    again = run_console(console, workdir, ["--drawing", out, "--eval", "(princ (getvar \"USERR1\"))"])
    check(again.returncode == 0, "the host reopens it: %s" % again.stderr, failures)
    finish(failures)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
