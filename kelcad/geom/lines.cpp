// Lines through two points: records, coefficient lines, their intersection
// and perpendicular feet.
#include <cmath>

#include "kelcad/geom/pline_segments.h"
#include "kelcad/geom/plane.h"
#include "kelcad/platform.h"

int gl_line(linfo* out, const double p1[3], const double p2[3]) {
  if (out == nullptr || p1 == nullptr || p2 == nullptr) return 0;
  const double d[3] = {p2[0] - p1[0], p2[1] - p1[1], p2[2] - p1[2]};
  const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
  if (length == 0.0) return 0;
  // Read both points before writing: they may be out's own fields.
  const double a[3] = {p1[0], p1[1], p1[2]}, b[3] = {p2[0], p2[1], p2[2]};
  for (int k = 0; k < 3; ++k) {
    out->pt1[k] = a[k];
    out->pt2[k] = b[k];
    out->dir[k] = d[k] / length;
  }
  return 1;
}

int gl_line_coef(linfo* out, const double p1[3], const double p2[3]) {
  if (out == nullptr || p1 == nullptr || p2 == nullptr) return 0;
  const double x1 = p1[0], y1 = p1[1];
  out->a = p2[1] - y1;
  out->b = x1 - p2[0];
  if (out->a == 0.0 && out->b == 0.0) return 0;
  out->c = -(out->a * x1 + out->b * y1);
  return 1;
}

int gl_intll_coef(double res[3], const linfo* l1, const linfo* l2) {
  if (res == nullptr || l1 == nullptr || l2 == nullptr) return 0;
  const double det = l2->b * l1->a - l1->b * l2->a;
  if (!(std::fabs(det) > 1e-10)) return 0;  // parallel (or not a number)
  res[0] = (l1->b * l2->c - l2->b * l1->c) / det;
  res[1] = (l1->c * l2->a - l2->c * l1->a) / det;
  res[2] = 0.0;
  return 1;
}

int gl_pt_pq2l2d(double res[3], const double pt[3], const linfo* line) {
  if (res == nullptr || pt == nullptr || line == nullptr) return 0;
  const double x1 = line->pt1[0], y1 = line->pt1[1];
  const double dx = line->pt2[0] - x1, dy = line->pt2[1] - y1;
  const double d = dx * dx + dy * dy;
  if (!(d > 0.0)) return 0;
  const double px = pt[0], py = pt[1];
  res[0] = (dx * dx * px + dy * dy * x1 + (py - y1) * dx * dy) / d;
  res[1] = (dx * dx * y1 + dy * dy * py + (px - x1) * dx * dy) / d;
  res[2] = 0.0;
  return 1;
}

int gl_intll_pts(double res[3], const linfo* l1, const linfo* l2) {
  if (res == nullptr || l1 == nullptr || l2 == nullptr) return 0;
  return acdbInters(l1->pt1, l1->pt2, l2->pt1, l2->pt2, 0, res) == RTNORM ? 1 : 0;
}
