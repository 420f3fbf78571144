// Circles tangent to a circle and a line: of a given radius, or through a
// point.
#include <cmath>

#include "kelcad/geom/tangent_circles.h"
#include "kelcad/geom/tangent_steps.h"
#include "kelcad/platform.h"

using namespace KEL::Geom;

namespace {

// The tangent points of the circle (centre, radius) on the arc and the
// line, and all three results written; RTERROR, nothing written, when a
// tangent point does not exist.
int Finish(const double centre[3], double radius, const circ& c, const linfo& l, double cen[3],
           double tanArc[3], double tanLine[3]) {
  double onArc[3], onLine[3];
  if (!TangentPointOnCircle(centre, radius, c, onArc) || !TangentPointOnLine(centre, l, onLine)) return RTERROR;
  CopyPoint(tanArc, onArc);
  CopyPoint(tanLine, onLine);
  CopyPoint(cen, centre);
  return RTNORM;
}

}  // namespace

int acs_al_cen(const double p0[3], const double p1[3], double r, atype a, linfo l, double cen[3],
               double tanArc[3], double tanLine[3]) {
  if (!p0 || !p1 || !cen || !tanArc || !tanLine || !(r >= 0.0)) return RTERROR;
  // The centre lies on the parallel at distance r on p1's side:
  // a*x + b*y + c = h.
  const double side = l.a * p1[0] + l.b * p1[1] + l.c;
  const double norm = std::sqrt(l.a * l.a + l.b * l.b);
  const double h = side > 0.0 ? norm * r : -norm * r;
  // and on the offset circle (the arc's centre, radius rho).
  const double rho = SignedRadius(a, p1) + r;
  // Relative to the arc's centre the parallel reads a*x + b*y + c0 = h;
  // eliminating x = s*y + w needs a non-horizontal line.
  if (l.a == 0.0) return RTERROR;
  const double c0 = l.c + l.a * a.center[0] + l.b * a.center[1];
  const double s = -l.b / l.a, w = (h - c0) / l.a;
  double ys[2];
  if (!RaisedRoots(s * s + 1.0, 2.0 * w * s, w * w - rho * rho, ys)) return RTERROR;
  double candidates[2][3];
  for (int i = 0; i < 2; ++i)
    SetPlanePoint(candidates[i], a.center[0] + (h - l.b * ys[i] - c0) / l.a, a.center[1] + ys[i]);
  const bool second = Distance2d(candidates[0], p0) > Distance2d(candidates[1], p0);
  return Finish(candidates[second ? 1 : 0], r, a, l, cen, tanArc, tanLine);
}

int acs_al_circle(const double p0[3], const double p1[3], atype a, linfo l, double cen[3], double tanArc[3],
                  double tanLine[3], double* radius) {
  if (!p0 || !p1 || !cen || !tanArc || !tanLine || !radius) return RTERROR;
  // Side of the line: p0 on it takes p1's side.
  double g0 = l.a * p0[0] + l.b * p0[1] + l.c;
  const double g1 = l.a * p1[0] + l.b * p1[1] + l.c;
  const double lineAtP0 = g0;  // the line relative to p0: a*x + b*y + lineAtP0 = 0
  if (std::fabs(g0) < 1e-5) g0 = g1;
  if (!((g0 > 0.0 && g1 > 0.0) || (g0 < 0.0 && g1 < 0.0))) return RTERROR;
  const double norm = std::sqrt(l.a * l.a + l.b * l.b);
  const double sigma = g0 > 0.0 ? norm : -norm;
  double rs;  // signed radius of the arc
  if (!SideOfCircle(a, p0, p1, 1e-5, rs)) return RTERROR;
  // With rho the unknown radius and M the centre, relative to p0:
  //   a*Mx + b*My = sigma*rho - lineAtP0        (distance rho from the line)
  //   2 * M . C  = |C|^2 - rs^2 - 2 * rho * rs  (|M - C| = rho + rs less |M| = rho)
  // so by Cramer's rule M = alpha * rho + beta.
  const double u = 2.0 * (a.center[0] - p0[0]), v = 2.0 * (a.center[1] - p0[1]);
  const double det = l.a * v - l.b * u;
  if (det == 0.0) return RTERROR;  // the line perpendicular to p0 -> centre
  const double k = (u * u + v * v) / 4.0 - rs * rs;
  const double alphaX = (sigma * v + 2.0 * l.b * rs) / det, betaX = (-lineAtP0 * v - l.b * k) / det;
  const double alphaY = (-2.0 * l.a * rs - u * sigma) / det, betaY = (l.a * k + u * lineAtP0) / det;
  // |M - p0|^2 = rho^2 as a quadratic in rho.
  double roots[2];
  if (!RaisedRoots(alphaX * alphaX + alphaY * alphaY - 1.0, 2.0 * (alphaX * betaX + alphaY * betaY),
                   betaX * betaX + betaY * betaY, roots))
    return RTERROR;
  const double rho = LargerRoot(roots);
  if (!(rho > 0.0)) return RTERROR;
  double centre[3];
  SetPlanePoint(centre, p0[0] + alphaX * rho + betaX, p0[1] + alphaY * rho + betaY);
  const int status = Finish(centre, rho, a, l, cen, tanArc, tanLine);
  if (status == RTNORM) *radius = rho;
  return status;
}
