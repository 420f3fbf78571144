"""Ellipses and splines between the host and ezdxf: made from AutoLISP and
saved, ezdxf reads them back with the same geometry and audits without
errors; made by ezdxf, the host models them (entget shows groups it worked
out) and writes them back as ezdxf wrote them."""
import math
import os
import sys

import ezdxf
from ezdxf.math import BSpline, Vec3

from interop_common import check, finish, run_console

SCRIPT = r'''
(entmake '((0 . "ELLIPSE") (8 . "曲线") (10 1.0 2.0 3.0) (11 0.0 3.0 4.0) (210 1.0 0.0 0.0) (40 . 0.25)))
(entmake '((0 . "ELLIPSE") (10 10.0 0.0 0.0) (11 4.0 0.0 0.0) (40 . 0.5) (41 . 0.5) (42 . 4.0)))
(entmake '((0 . "SPLINE") (100 . "AcDbEntity") (100 . "AcDbSpline") (70 . 12) (71 . 2)
           (40 . 0.0) (40 . 0.0) (40 . 0.0) (40 . 1.0) (40 . 1.0) (40 . 1.0)
           (41 . 1.0) (41 . 0.7071067811865476) (41 . 1.0)
           (10 1.0 0.0 0.0) (10 1.0 1.0 0.0) (10 0.0 1.0 0.0)))
(entmake '((0 . "SPLINE") (70 . 8) (71 . 3) (11 0.0 0.0 0.0) (11 5.0 5.0 0.0) (11 10.0 0.0 0.0)
           (11 15.0 5.0 0.0) (12 0.0 1.0 0.0) (13 1.0 0.0 0.0)))
(entmake '((0 . "SPLINE") (71 . 3) (11 0.0 0.0 0.0) (11 1.0 2.0 1.0) (11 3.0 1.0 2.0) (11 4.0 4.0 0.0)))
'''

FIT = {3: [(0, 0, 0), (5, 5, 0), (10, 0, 0), (15, 5, 0)], 4: [(0, 0, 0), (1, 2, 1), (3, 1, 2), (4, 4, 0)]}


def close(a, b, tol=1e-9):
    return Vec3(a).isclose(Vec3(b), abs_tol=tol)


def curve_of(spline):
    """The curve the file's NURBS data describes (not refitted by ezdxf)."""
    weights = list(spline.weights) if len(spline.weights) else None
    return BSpline(list(spline.control_points), order=spline.dxf.degree + 1, knots=list(spline.knots),
                   weights=weights)


def host_to_ezdxf(console, workdir, failures):
    work = os.path.join(workdir, "from-host")
    os.makedirs(work, exist_ok=True)
    script = os.path.join(workdir, "make-curves.lsp")
    with open(script, "w", encoding="utf-8") as f:
        f.write(SCRIPT)
    out = os.path.join(workdir, "host-curves.dxf")
    proc = run_console(console, work, [script, "--save", out])
    if proc.returncode != 0:
        failures.append("console exit status %d: %s" % (proc.returncode, proc.stderr))
        return
    doc = ezdxf.readfile(out)
    for e in doc.audit().errors:
        failures.append("audit error: %s" % e.message)
    msp = doc.modelspace()
    types = [e.dxftype() for e in msp]
    check(types == ["ELLIPSE", "ELLIPSE", "SPLINE", "SPLINE", "SPLINE"], "entities %s" % types, failures)
    if len(types) != 5:
        return
    full, arc, quarter, fitted, spatial = list(msp)

    check(full.dxf.layer == "曲线" and close(full.dxf.center, (1, 2, 3)) and close(full.dxf.major_axis, (0, 3, 4))
          and close(full.dxf.extrusion, (1, 0, 0)) and full.dxf.ratio == 0.25, "tilted ellipse %r" % full.dxfattribs(),
          failures)
    check(math.isclose(full.dxf.end_param - full.dxf.start_param, 2 * math.pi), "full ellipse params", failures)
    # The minor axis is the normal crossed with the major one, a quarter as long.
    tool = full.construction_tool()
    check(close(tool.minor_axis, (0, -1, 0.75)), "minor axis %r" % (tool.minor_axis,), failures)
    tool = arc.construction_tool()
    check(close(tool.start_point, (10 + 4 * math.cos(0.5), 2 * math.sin(0.5), 0))
          and close(tool.end_point, (10 + 4 * math.cos(4.0), 2 * math.sin(4.0), 0)),
          "elliptical arc ends %r %r" % (tool.start_point, tool.end_point), failures)

    check(quarter.dxf.flags == 12 and quarter.dxf.degree == 2 and list(quarter.weights)[1] == 0.7071067811865476,
          "rational spline %r" % quarter.dxfattribs(), failures)
    curve = curve_of(quarter)
    for t in (0.0, 0.25, 0.5, 0.9, 1.0):
        check(math.isclose(curve.point(t).magnitude, 1.0, abs_tol=1e-12), "quarter circle at %g" % t, failures)

    # The fitted splines carry control points and knots through which the
    # curve meets each fit point at its knot (cumulative chord length).
    for index, spline in ((3, fitted), (4, spatial)):
        fit = FIT[index]
        check([tuple(p) for p in spline.fit_points] == fit, "fit points of #%d" % index, failures)
        check(spline.dxf.degree == 3 and len(spline.control_points) == len(fit) + 2,
              "control points of #%d: %d" % (index, len(spline.control_points)), failures)
        curve = curve_of(spline)
        u = 0.0
        for k, p in enumerate(fit):
            if k:
                u += Vec3(fit[k]).distance(Vec3(fit[k - 1]))
            check(close(curve.point(u), p), "#%d through fit point %d: %r" % (index, k, curve.point(u)), failures)
    check(close(fitted.dxf.start_tangent, (0, 1, 0)) and close(fitted.dxf.end_tangent, (1, 0, 0)), "tangents",
          failures)
    d = curve_of(fitted).derivative(0.0, n=1)[1]
    check(abs(d.x) < 1e-12 and d.y > 0, "start direction %r" % (d,), failures)
    check(not spatial.dxf.hasattr("extrusion") and not (spatial.dxf.flags & 8), "a spatial spline is not planar",
          failures)


def ezdxf_to_host(console, workdir, failures):
    work = os.path.join(workdir, "from-ezdxf")
    os.makedirs(work, exist_ok=True)
    doc = ezdxf.new("R2013")
    msp = doc.modelspace()
    msp.add_ellipse((1, 1), major_axis=(0, 3), ratio=0.5, start_param=1.0, end_param=2.5)
    msp.add_spline([(0, 0), (1, 2), (3, 1), (4, 4)])
    msp.add_rational_spline([(1, 0), (1, 1), (0, 1)], [1, math.sqrt(0.5), 1], degree=2)
    msp.add_open_spline([(0, 0), (1, 3), (2, -3), (3, 0), (4, 2)], degree=3)
    src = os.path.join(workdir, "ezdxf-curves.dxf")
    out = os.path.join(workdir, "ezdxf-curves-host.dxf")
    doc.saveas(src)
    # entget of each entity: the fitted spline shows the control points the
    # host worked out (ezdxf wrote none).
    show = ('(setq e (entnext)) (while e (print (mapcar (quote (lambda (c) (cdr (assoc c (entget e)))))'
            ' (quote (0 73 74 210)))) (setq e (entnext e)))')
    proc = run_console(console, work, ["--drawing", src, "--eval", "(progn %s (princ))" % show, "--save", out])
    if proc.returncode != 0:
        failures.append("console on ezdxf's file: exit status %d: %s" % (proc.returncode, proc.stderr))
        return
    rows = [line.strip() for line in proc.stdout.splitlines() if line.strip().startswith("(")]
    check(rows == ['("ELLIPSE" nil nil (0.0 0.0 1.0))', '("SPLINE" 6 4 nil)', '("SPLINE" 3 0 nil)',
                   '("SPLINE" 5 0 nil)'], "entget rows %r" % rows, failures)

    a, b = ezdxf.readfile(src), ezdxf.readfile(out)
    for e in b.audit().errors:
        failures.append("audit error after the host: %s" % e.message)
    before, after = list(a.modelspace()), list(b.modelspace())
    check([e.dxftype() for e in after] == ["ELLIPSE", "SPLINE", "SPLINE", "SPLINE"], "types after the host", failures)
    if len(after) != 4:
        return
    for key in ("center", "major_axis", "ratio", "start_param", "end_param"):
        check(Vec3(before[0].dxf.get(key) if key in ("center", "major_axis") else (before[0].dxf.get(key), 0, 0))
              .isclose(Vec3(after[0].dxf.get(key) if key in ("center", "major_axis") else (after[0].dxf.get(key), 0, 0)),
                       abs_tol=1e-12), "ellipse %s" % key, failures)
    for e, f in zip(before[1:], after[1:]):
        check([tuple(p) for p in e.fit_points] == [tuple(p) for p in f.fit_points], "spline fit points", failures)
        check(e.dxf.flags == f.dxf.flags and e.dxf.degree == f.dxf.degree, "spline flags and degree", failures)
        if len(e.control_points):
            check([tuple(p) for p in e.control_points] == [tuple(p) for p in f.control_points]
                  and list(e.knots) == list(f.knots) and list(e.weights) == list(f.weights), "spline NURBS data",
                  failures)
    # The host's fit passes through ezdxf's fit points.
    fitted = after[1]
    curve = curve_of(fitted)
    fit = [Vec3(p) for p in fitted.fit_points]
    u = 0.0
    for k, p in enumerate(fit):
        if k:
            u += p.distance(fit[k - 1])
        check(close(curve.point(u), p), "host fit through point %d" % k, failures)


def main(console, workdir):
    failures = []
    os.makedirs(workdir, exist_ok=True)
    host_to_ezdxf(console, workdir, failures)
    ezdxf_to_host(console, workdir, failures)
    finish(failures)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
