// Plane geometry on points, lines and circles, and 4x4 matrices.
//
// Points are double[3]; intersections and projections work on x and y only
// and write z = 0 into their results. Angles are radians, counter-clockwise
// from +X. Results are plain codes (1 done, 0 not) and nothing is printed;
// a null pointer argument gives the failure code and writes nothing.
#pragma once

#include <type_traits>

#include "kelcad/geom/records.h"

// Fills pt1, pt2 and the unit direction of out (a, b, c are left alone).
// 0, with nothing written, when the points coincide in 3D.
int gl_line(linfo* out, const double p1[3], const double p2[3]);
// Fills a and b of out, then c and returns 1; 0 when a and b are both zero
// (the points coincide in XY), c then not written.
int gl_line_coef(linfo* out, const double p1[3], const double p2[3]);

// The intersection of the two coefficient lines: 1; 0 when they are
// parallel (res untouched).
int gl_intll_coef(double res[3], const linfo* l1, const linfo* l2);
// Intersections of the coefficient line with the circle: 0, 1 (tangent,
// in res[0]) or 2. Both result points are zeroed first.
int gl_intlc_pln(double res[2][3], const linfo* line, const circ* c);
// Intersections of two circles, as gl_intlc_pln; -1 for concentric ones.
int gl_intcc_pln(double res[2][3], const circ* c1, const circ* c2);
// The foot of the perpendicular from pt to the line through the two points
// of line: 1; 0 when those points coincide in XY.
int gl_pt_pq2l2d(double res[3], const double pt[3], const linfo* line);

// The point of the circle at that angle.
void gl_pt_oncirc(double res[3], const circ* c, double angle);
// The angle of pt seen from the centre, in [0, 2pi).
double gl_ang_ptcirc(const double pt[3], const circ* c);
// The angle reduced to one turn, [0, 2pi), except that a negative exact
// multiple of 2pi gives 2pi itself (-2pi -> 2pi): callers depend on it.
double gl_fixang(double angle);
// 1 when pt, seen from the centre, lies on the counter-clockwise arc from
// start to end (1e-6 rad allowance at both ends), else 0.
int gl_ptarc(double start, double end, const double pt[3], const circ* c);

// An arc where a circle is read: its centre and radius. A template so that
// a null pointer literal still picks the circ* form.
template <class Arc, class = std::enable_if_t<std::is_same_v<std::remove_cv_t<Arc>, atype>>>
const circ* gl_arc_as_circ(Arc* arc, circ& scratch) {
  if (!arc) return nullptr;
  scratch = *arc;
  return &scratch;
}
inline const circ* gl_arc_as_circ(const circ* c, circ&) { return c; }
template <class Arc, class = std::enable_if_t<std::is_same_v<std::remove_cv_t<Arc>, atype>>>
int gl_intlc_pln(double res[2][3], const linfo* line, Arc* c) {
  circ s;
  return gl_intlc_pln(res, line, gl_arc_as_circ(c, s));
}
template <class C1, class C2,
          class = std::enable_if_t<std::is_same_v<std::remove_cv_t<C1>, atype> || std::is_same_v<std::remove_cv_t<C2>, atype>>>
int gl_intcc_pln(double res[2][3], C1* c1, C2* c2) {
  circ s1, s2;
  return gl_intcc_pln(res, gl_arc_as_circ(c1, s1), gl_arc_as_circ(c2, s2));
}
template <class Arc, class = std::enable_if_t<std::is_same_v<std::remove_cv_t<Arc>, atype>>>
void gl_pt_oncirc(double res[3], Arc* c, double angle) {
  circ s;
  gl_pt_oncirc(res, gl_arc_as_circ(c, s), angle);
}
template <class Arc, class = std::enable_if_t<std::is_same_v<std::remove_cv_t<Arc>, atype>>>
double gl_ang_ptcirc(const double pt[3], Arc* c) {
  circ s;
  return gl_ang_ptcirc(pt, gl_arc_as_circ(c, s));
}
template <class Arc, class = std::enable_if_t<std::is_same_v<std::remove_cv_t<Arc>, atype>>>
int gl_ptarc(double start, double end, const double pt[3], Arc* c) {
  circ s;
  return gl_ptarc(start, end, pt, gl_arc_as_circ(c, s));
}

// Matrices are [row][column]; points are column vectors, so a translation
// lives in column 3.
void gl_mat_ident(double m[4][4]);
void gl_mat_trans(double m[4][4], double dx, double dy, double dz);
// r = s * m; r may be m.
void gl_mat_scal(double r[4][4], double s, const double m[4][4]);
// r = a * b; r may be a or b.
void gl_matXmat(double r[4][4], const double a[4][4], const double b[4][4]);
