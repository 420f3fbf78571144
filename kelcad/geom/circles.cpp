// Circles in the plane: intersections with lines and circles, points at an
// angle and angles of points.
#include <algorithm>
#include <cmath>

#include "kelcad/geom/plane.h"
#include "kelcad/platform.h"

namespace {

void Zero(double p[3]) { p[0] = p[1] = p[2] = 0.0; }

}  // namespace

int gl_intlc_pln(double res[2][3], const linfo* line, const circ* c) {
  if (res == nullptr || line == nullptr || c == nullptr) return 0;
  Zero(res[0]);
  Zero(res[1]);
  const double a = line->a, b = line->b, k = line->c;
  if (a == 0.0 && b == 0.0) return 0;  // no line to meet
  const double cx = c->center[0], cy = c->center[1], r = c->radius;
  // The circle as x^2 + y^2 + D*x + E*y + F = 0.
  const double D = -2.0 * cx, E = -2.0 * cy, F = cx * cx + cy * cy - r * r;
  // Eliminate the coordinate with the larger coefficient, for stability,
  // and solve A*t^2 + B*t + G = 0 for the other one.
  const bool solveForY = std::fabs(a) > std::fabs(b);
  double A, B, G;
  if (solveForY) {
    A = b * b / (a * a) + 1.0;
    B = 2.0 * k * b / (a * a) - D * b / a + E;
    G = k * k / (a * a) - D * k / a + F;
  } else {
    A = a * a / (b * b) + 1.0;
    B = 2.0 * a * k / (b * b) - E * a / b + D;
    G = k * k / (b * b) - E * k / b + F;
  }
  auto store = [&](double t, double* p) {
    if (solveForY) {
      p[0] = -(b * t + k) / a;
      p[1] = t;
    } else {
      p[0] = t;
      p[1] = -(a * t + k) / b;
    }
  };
  const double disc = B * B - 4.0 * A * G;
  // Tangent when the discriminant vanishes next to its terms (an exact
  // zero counts even when the terms vanish too).
  if (std::fabs(disc) <= 1e-10 * std::max(std::fabs(B * B), std::fabs(4.0 * A * G))) {
    store(-B / (2.0 * A), res[0]);
    return 1;
  }
  if (!(disc >= 0.0)) return 0;
  const double s = std::sqrt(disc);
  const double t1 = -(s + B) / (2.0 * A);
  store(t1, res[0]);
  store(t1 + s / A, res[1]);
  return 2;
}

int gl_intcc_pln(double res[2][3], const circ* c1, const circ* c2) {
  if (res == nullptr || c1 == nullptr || c2 == nullptr) return 0;
  const double x1 = c1->center[0], y1 = c1->center[1], r1 = c1->radius;
  const double x2 = c2->center[0], y2 = c2->center[1], r2 = c2->radius;
  // The radical axis: the difference of the two circle equations.
  linfo axis{};
  axis.a = 2.0 * (x2 - x1);
  axis.b = 2.0 * (y2 - y1);
  axis.c = (x1 * x1 + y1 * y1 - r1 * r1) - (x2 * x2 + y2 * y2 - r2 * r2);
  if (axis.a == 0.0 && axis.b == 0.0) return -1;
  return gl_intlc_pln(res, &axis, c1);
}

void gl_pt_oncirc(double res[3], const circ* c, double angle) {
  if (res == nullptr || c == nullptr) return;
  res[0] = c->center[0] + c->radius * std::cos(angle);
  res[1] = c->center[1] + c->radius * std::sin(angle);
  res[2] = 0.0;
}

double gl_ang_ptcirc(const double pt[3], const circ* c) {
  if (pt == nullptr || c == nullptr) return 0.0;
  return acutAngle(c->center, pt);
}

double gl_fixang(double angle) {
  const double turn = 6.283185307179586;
  const double q = angle / turn;
  if (angle >= 0.0) return angle - std::floor(q) * turn;
  return angle - std::ceil(q - 1.0) * turn;
}

int gl_ptarc(double start, double end, const double pt[3], const circ* c) {
  if (pt == nullptr || c == nullptr) return 0;
  const double a = gl_fixang(gl_ang_ptcirc(pt, c));
  const double eps = 1e-6;
  if (end > start) return a >= start - eps && a <= end + eps ? 1 : 0;
  // The arc crosses angle 0.
  return a >= start - eps || a <= end + eps ? 1 : 0;
}
