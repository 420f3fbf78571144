"""The object data store's values in a DXF file: a drawing made through
OxData and the drawing records is saved by the host; ezdxf audits it and
finds every value where the layout puts it (each application's xdata, the
xrecords along the dictionary paths under the line's extension dictionary
and under the named-object dictionary); the host reads the file back and
every value reads back the same.

    oxdata_ezdxf.py OXDATA_DRAWING WORKDIR"""
import os
import subprocess
import sys

import ezdxf

from interop_common import check, finish


def point(value):
    return tuple(float(c) for c in value)


def entry(dictionary, name, failures):
    if dictionary is None or name not in dictionary:
        failures.append("no entry %r" % name)
        return None
    return dictionary[name]


def main():
    program, workdir = sys.argv[1], sys.argv[2]
    os.makedirs(workdir, exist_ok=True)
    path = os.path.join(workdir, "oxdata.dxf")
    failures = []
    made = subprocess.run([program, "write", path], capture_output=True, text=True)
    if made.returncode != 0:
        finish(["write failed: %s %s" % (made.stdout, made.stderr)])

    doc = ezdxf.readfile(path)
    for e in doc.audit().errors:
        failures.append("audit error: %s" % (e.message,))
    for app in ("KEL_OX", "KEL_B"):
        check(app in doc.appids, "application %s not registered" % app, failures)

    lines = [e for e in doc.modelspace() if e.dxftype() == "LINE"]
    check(len(lines) == 2, "lines %d" % len(lines), failures)
    if len(lines) == 2:
        first, second = lines
        xdata = [(c, point(v) if c == 1010 else v) for c, v in first.get_xdata("KEL_OX")]
        check(xdata == [(1000, "墙体"), (1070, 0), (1070, 0), (1070, 5), (1071, 100000), (1040, 2.5),
                        (1010, (1.0, 2.0, 3.0))], "KEL_OX xdata %r" % (xdata,), failures)
        check(list(first.get_xdata("KEL_B")) == [(1000, "b")], "KEL_B xdata", failures)
        check(first.dxf.thickness == 1.25, "thickness %r" % first.dxf.thickness, failures)
        check(list(second.get_xdata("KEL_OX")) == [(1000, ""), (1000, "second")], "second line's xdata", failures)

        ext = first.get_extension_dict() if first.has_extension_dict else None
        check(ext is not None, "no extension dictionary", failures)
        level2 = entry(entry(ext.dictionary if ext else None, "LVL1", failures), "LVL2", failures)
        record = entry(level2, "REC", failures)
        if record is not None:
            tags = [(c, point(v) if c == 10 else v) for c, v in record.tags]
            check(tags == [(1, "对象"), (70, 7), (40, 0.0), (40, 3.25), (10, (1.0, 2.0, 3.0))],
                  "object record %r" % (tags,), failures)

    root = doc.rootdict
    record = entry(entry(entry(root, "KEL_DWG", failures), "设置", failures), "参数", failures)
    if record is not None:
        tags = [(c, point(v) if c == 10 else v) for c, v in record.tags]
        check(tags == [(1, "图纸"), (90, 123456), (10, (0.0, 0.0, 0.0)), (10, (1.0, 2.0, 3.0))],
              "drawing record %r" % (tags,), failures)
    record = entry(entry(root, "KELSET", failures), "REC1", failures)
    if record is not None:
        check(list(record.tags) == [(1, "fixed"), (70, 2)], "fixed record %r" % (list(record.tags),), failures)

    back = subprocess.run([program, "check", path], capture_output=True, text=True)
    if back.returncode != 0:
        failures.append("read back: %s %s" % (back.stdout, back.stderr))
    finish(failures)


if __name__ == "__main__":
    main()
