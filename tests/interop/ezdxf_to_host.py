"""A drawing written by ezdxf, with entity kinds the host does not model,
reads into the host (console --drawing) and writes back (--save) with every
entity, table record, block, xdata, extension dictionary and xrecord
intact, compared by ezdxf."""
import math
import re
import os
import sys

import ezdxf

from interop_common import check, finish, follower_problems, run_console


def make_drawing(version, path):
    doc = ezdxf.new(version, setup=True)
    doc.appids.new("KELAPP")
    doc.layers.add("墙体", color=3, linetype="DASHED")
    msp = doc.modelspace()
    line = msp.add_line((0, 0), (10, 5), dxfattribs={"layer": "墙体"})
    line.set_xdata("KELAPP", [(1000, "标记"), (1040, 2.5), (1070, 4), (1010, (1, 2, 3))])
    xdict = line.new_extension_dict()
    xrec = xdict.add_xrecord("KEL_NOTE")
    xrec.reset([(1, "说明"), (40, 1.5), (70, 9)])
    msp.add_circle((3, 4), 2)
    msp.add_arc((1, 1), 5, 10, 200)
    msp.add_point((2, 2))
    msp.add_text("中文 text", dxfattribs={"height": 2.0, "layer": "墙体"})
    msp.add_lwpolyline([(0, 0, 0.5), (5, 0), (5, 5)], format="xyb", close=True)
    msp.add_polyline2d([(0, 0), (1, 1), (2, 0)])
    msp.add_polyline2d([(0, 0, 0.5), (4, 0, 0), (4, 3, -1)], format="xyb", close=True)
    msp.add_polyface().append_face([(0, 0, 0), (1, 0, 0), (1, 1, 1)])
    msp.add_polyline3d([(0, 0, 0), (1, 1, 1), (2, 0, 2)])
    msp.add_ellipse((0, 0), major_axis=(4, 0), ratio=0.5)
    msp.add_spline([(0, 0), (1, 2), (3, 1), (4, 4)])
    msp.add_mtext("多行\\P文字", dxfattribs={"char_height": 1.5})
    msp.add_solid([(0, 0), (1, 0), (0, 1)])
    msp.add_3dface([(0, 0, 0), (1, 0, 0), (1, 1, 1)])
    hatch = msp.add_hatch(color=2)
    hatch.paths.add_polyline_path([(0, 0), (3, 0), (3, 3)], is_closed=True)
    msp.add_ray((0, 0), (1, 1))
    msp.add_xline((0, 0), (1, 0))
    block = doc.blocks.new("KEL_BLOCK", base_point=(1, 1))
    block.add_circle((0, 0), 1)
    block.add_attdef("TAG", (0, 0), dxfattribs={"height": 1})
    ref = msp.add_blockref("KEL_BLOCK", (10, 10))
    ref.add_attrib("TAG", "值", (10, 10))
    msp.add_blockref("KEL_BLOCK", (20, 10), dxfattribs={"xscale": 2, "rotation": 30})
    dim = msp.add_linear_dim(base=(0, 5), p1=(0, 0), p2=(10, 0))
    dim.render()
    msp.add_leader([(0, 0), (2, 2), (4, 2)])
    psp = doc.layout("Layout1")
    psp.add_line((0, 0), (100, 100))
    group = doc.groups.new("KEL_GROUP")
    group.extend([line])
    data = doc.rootdict.add_new_dict("KEL_DATA")
    data.add_xrecord("ROW1").reset([(1, "数据"), (40, 0.25)])
    doc.saveas(path)


def attribs(entity):
    d = dict(entity.dxfattribs())
    d.pop("owner", None)
    return d


def unescaped(text):
    """Text as a 2007+ file holds it: older files escape non-ANSI characters."""
    return re.sub(r"\\U\+([0-9A-Fa-f]{4})", lambda m: chr(int(m.group(1), 16)), text)


def same(a, b):
    if a is None or b is None:
        return a is b
    if isinstance(a, str) and isinstance(b, str):
        return unescaped(a) == unescaped(b)
    if isinstance(a, float) or isinstance(b, float):
        return math.isclose(float(a), float(b), rel_tol=1e-12, abs_tol=1e-12)
    if isinstance(a, (tuple, list)) or hasattr(a, "__iter__") and not isinstance(a, str):
        a, b = list(a), list(b)
        return len(a) == len(b) and all(same(x, y) for x, y in zip(a, b))
    return a == b


def compare_dxf(where, e, f, failures):
    a, b = attribs(e), attribs(f)
    for key in set(a) | set(b):
        # An attribute written with its default value is the same.
        va = a.get(key, e.dxf.get_default(key))
        vb = b.get(key, f.dxf.get_default(key))
        if key == "align_point" and (va is None or vb is None):
            continue  # TEXT: meaningful only with a justification, compared through halign/valign
        if key in ("layer", "linetype", "style", "name", "dimstyle"):  # names ignore case
            va, vb = str(va).upper(), str(vb).upper()
        check(same(va, vb), "%s: %s %r -> %r" % (where, key, a.get(key), b.get(key)), failures)


def compare_entities(label, before, after, failures):
    check(len(before) == len(after), "%s: %d entities, then %d" % (label, len(before), len(after)), failures)
    for e, f in zip(before, after):
        where = "%s %s #%s" % (label, e.dxftype(), e.dxf.handle)
        check(e.dxftype() == f.dxftype() and e.dxf.handle == f.dxf.handle, where + " became " + f.dxftype(), failures)
        compare_dxf(where, e, f, failures)
        xa = {app: [(t.code, t.value) for t in e.get_xdata(app)] for app in (e.xdata.data if e.xdata else {})}
        xb = {app: [(t.code, t.value) for t in f.get_xdata(app)] for app in (f.xdata.data if f.xdata else {})}
        check(same_xdata(xa, xb), "%s: xdata %r -> %r" % (where, xa, xb), failures)
        check(e.has_extension_dict == f.has_extension_dict, where + ": extension dictionary", failures)
        if e.has_extension_dict and f.has_extension_dict:
            da, db = e.get_extension_dict(), f.get_extension_dict()
            check(sorted(da.keys()) == sorted(db.keys()), where + ": extension dictionary keys", failures)
            for key in da.keys():
                ra, rb = da[key], db[key]
                if ra.dxftype() == "XRECORD":
                    check(same([(t.code, t.value) for t in ra.tags], [(t.code, t.value) for t in rb.tags]),
                          where + ": xrecord " + key, failures)
        for attr in ("vertices", "attribs"):
            if isinstance(getattr(e, attr, None), list) and isinstance(getattr(f, attr, None), list):
                va, vb = list(getattr(e, attr)), list(getattr(f, attr))
                check(len(va) == len(vb), where + ": " + attr, failures)
                for x, y in zip(va, vb):
                    if hasattr(x, "dxfattribs") and hasattr(y, "dxfattribs"):
                        compare_dxf("%s %s #%s" % (where, attr, x.dxf.handle), x, y, failures)


def same_xdata(xa, xb):
    if set(xa) != set(xb):
        return False
    return all(same([v for _, v in xa[k]], [v for _, v in xb[k]]) and [c for c, _ in xa[k]] == [c for c, _ in xb[k]]
               for k in xa)


def main(console, workdir):
    failures = []
    for version in ("R2000", "R2013", "R2018"):
        work = os.path.join(workdir, version)
        os.makedirs(work, exist_ok=True)
        src = os.path.join(workdir, version + "-ezdxf.dxf")
        out = os.path.join(workdir, version + "-host.dxf")
        make_drawing(version, src)
        proc = run_console(console, work, ["--drawing", src, "--eval", "(princ)", "--save", out])
        if proc.returncode != 0:
            failures.append("%s: console exit status %d: %s" % (version, proc.returncode, proc.stderr))
            continue
        a, b = ezdxf.readfile(src), ezdxf.readfile(out)
        auditor = b.audit()
        for e in auditor.errors:
            failures.append("%s: audit error: %s" % (version, e.message))
        for problem in follower_problems(out):
            failures.append("%s: %s" % (version, problem))
        compare_entities(version + " model", list(a.modelspace()), list(b.modelspace()), failures)
        compare_entities(version + " paper", list(a.layout("Layout1")), list(b.layout("Layout1")), failures)
        for table in ("layers", "linetypes", "styles", "dimstyles", "appids"):
            na = sorted(r.dxf.name for r in getattr(a, table))
            nb = sorted(r.dxf.name for r in getattr(b, table))
            check(same(na, nb), "%s %s: %s -> %s" % (version, table, na, nb), failures)
        wall = b.layers.get("墙体")
        check(wall.color == 3 and wall.dxf.linetype == "DASHED", version + ": layer 墙体 attributes", failures)
        blocks_a = {blk.name: blk for blk in a.blocks}
        for blk in b.blocks:
            if blk.name in blocks_a and not blk.name.lower().startswith(("*model", "*paper")):
                compare_entities("%s block %s" % (version, blk.name), list(blocks_a[blk.name]), list(blk), failures)
        check(sorted(blocks_a) == sorted(blk.name for blk in b.blocks), version + ": block names", failures)
        check("KEL_GROUP" in b.groups and len(list(b.groups.get("KEL_GROUP"))) == 1, version + ": group", failures)
        row = b.rootdict["KEL_DATA"]["ROW1"]
        check([(t.code, t.value) for t in row.tags] == [(1, "数据"), (40, 0.25)], version + ": KEL_DATA xrecord",
              failures)
        oa = sorted((o.dxftype(), o.dxf.handle) for o in a.objects)
        ob = sorted((o.dxftype(), o.dxf.handle) for o in b.objects)
        check(oa == ob, "%s objects: lost %s, gained %s" % (version, sorted(set(oa) - set(ob)),
                                                          sorted(set(ob) - set(oa))), failures)
    finish(failures)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
