// Steps shared by the tangent-circle constructions.
#include "kelcad/geom/tangent_steps.h"

#include <cmath>

#include "kelcad/geom/plane.h"

namespace KEL::Geom {

double Distance2d(const double a[3], const double b[3]) { return std::hypot(a[0] - b[0], a[1] - b[1]); }

double SignedRadius(const circ& c, const double side[3]) {
  return Distance2d(side, c.center) > c.radius ? c.radius : -c.radius;
}

bool SideOfCircle(const circ& c, const double p0[3], const double p1[3], double onTolerance,
                  double& signedRadius) {
  const double r = c.radius;
  double d0 = Distance2d(p0, c.center);
  const double d1 = Distance2d(p1, c.center);
  if (std::fabs(d0 - r) < onTolerance) d0 = d1;
  if (d0 > r && d1 > r) {
    signedRadius = r;
    return true;
  }
  if (r > d0 && r > d1) {
    signedRadius = -r;
    return true;
  }
  return false;
}

bool RaisedRoots(double q, double b, double g, double roots[2]) {
  // The constant lets configurations that are tangent up to rounding
  // still produce a circle.
  const double disc = b * b - 4.0 * q * g + 0.0001;
  if (q == 0.0 || !(disc >= 0.0)) return false;
  const double s = std::sqrt(disc);
  roots[0] = (s - b) / (2.0 * q);
  roots[1] = (-b - s) / (2.0 * q);
  return std::isfinite(roots[0]) && std::isfinite(roots[1]);
}

double LargerRoot(const double roots[2]) { return roots[1] > roots[0] ? roots[1] : roots[0]; }

bool TangentPointOnCircle(const double centre[3], double radius, const circ& c, double out[3]) {
  linfo line{};
  const double from[3] = {centre[0], centre[1], 0.0}, to[3] = {c.center[0], c.center[1], 0.0};
  if (!gl_line(&line, from, to)) return false;
  line.a = line.pt2[1] - line.pt1[1];
  line.b = line.pt1[0] - line.pt2[0];
  if (line.a == 0.0 && line.b == 0.0) return false;
  line.c = -(line.a * line.pt1[0] + line.b * line.pt1[1]);
  double hits[2][3];
  const int count = gl_intlc_pln(hits, &line, &c);
  if (count < 1) return false;
  // The nearer intersection, as the family has always taken it; when the new
  // circle encloses the given one this is not the touching point.
  const bool second = count == 2 && Distance2d(hits[0], centre) > Distance2d(hits[1], centre);
  CopyPoint(out, hits[second ? 1 : 0]);
  return true;
}

bool TangentPointOnLine(const double centre[3], const linfo& l, double out[3]) {
  return gl_pt_pq2l2d(out, centre, &l) == 1;
}

void SetPlanePoint(double out[3], double x, double y) {
  out[0] = x;
  out[1] = y;
  out[2] = 0.0;
}

void CopyPoint(double out[3], const double in[3]) {
  out[0] = in[0];
  out[1] = in[1];
  out[2] = in[2];
}

}  // namespace KEL::Geom
