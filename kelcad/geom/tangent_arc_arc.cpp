// Circles tangent to two circles: of a given radius, or through a point.
#include "kelcad/geom/tangent_circles.h"
#include "kelcad/geom/tangent_steps.h"
#include "kelcad/platform.h"

using namespace KEL::Geom;

namespace {

// The tangent points of the circle (centre, radius) on both circles, and
// all three results written; RTERROR, nothing written, when a tangent
// point does not exist.
int Finish(const double centre[3], double radius, const circ& c1, const circ& c2, double cen[3], double tan1[3],
           double tan2[3]) {
  double t1[3], t2[3];
  if (!TangentPointOnCircle(centre, radius, c1, t1) || !TangentPointOnCircle(centre, radius, c2, t2))
    return RTERROR;
  CopyPoint(tan1, t1);
  CopyPoint(tan2, t2);
  CopyPoint(cen, centre);
  return RTNORM;
}

}  // namespace

int acs_aa_cen(const double p0[3], const double p1[3], double r, atype a1, atype a2, double cen[3],
               double tan1[3], double tan2[3]) {
  if (!p0 || !p1 || !cen || !tan1 || !tan2 || !(r >= 0.0)) return RTERROR;
  // The centre lies on both offset circles (centre ci, radius rho_i).
  const double rho1 = SignedRadius(a1, p1) + r, rho2 = SignedRadius(a2, p1) + r;
  // Worked relative to the first centre, which keeps the squares small.
  const double x2 = a2.center[0] - a1.center[0], y2 = a2.center[1] - a1.center[1];
  // Their radical axis, solved for x as x = m*y + k, needs distinct x.
  if (x2 == 0.0) return RTERROR;
  const double m = -y2 / x2;
  const double k = (rho1 * rho1 - rho2 * rho2 + x2 * x2 + y2 * y2) / (2.0 * x2);
  // Substituted into the first offset circle: a quadratic in y.
  double ys[2];
  if (!RaisedRoots(m * m + 1.0, 2.0 * k * m, k * k - rho1 * rho1, ys)) return RTERROR;
  double candidates[2][3];
  for (int i = 0; i < 2; ++i)
    SetPlanePoint(candidates[i], a1.center[0] + m * ys[i] + k, a1.center[1] + ys[i]);
  const bool second = Distance2d(candidates[0], p0) > Distance2d(candidates[1], p0);
  return Finish(candidates[second ? 1 : 0], r, a1, a2, cen, tan1, tan2);
}

int acs_aa_circle(const double p0[3], const double p1[3], atype a1, atype a2, double cen[3], double tan1[3],
                  double tan2[3], double* radius) {
  if (!p0 || !p1 || !cen || !tan1 || !tan2 || !radius) return RTERROR;
  double r1, r2;  // signed radii
  if (!SideOfCircle(a1, p0, p1, 1e-8, r1) || !SideOfCircle(a2, p0, p1, 1e-8, r2)) return RTERROR;
  // With rho the unknown radius, |M - ci| = rho + ri and |M - p0| = rho.
  // Relative to p0 their differences are linear in M:
  //   2 * M . ci = |ci|^2 - ri^2 - 2 * rho * ri      (i = 1, 2)
  // so by Cramer's rule M = alpha * rho + beta.
  const double u1 = a1.center[0] - p0[0], v1 = a1.center[1] - p0[1];
  const double u2 = a2.center[0] - p0[0], v2 = a2.center[1] - p0[1];
  const double det = u1 * v2 - u2 * v1;
  if (det == 0.0) return RTERROR;  // p0 and both centres collinear
  const double k1 = u1 * u1 + v1 * v1 - r1 * r1, k2 = u2 * u2 + v2 * v2 - r2 * r2;
  const double alphaX = (r2 * v1 - r1 * v2) / det, betaX = (k1 * v2 - k2 * v1) / (2.0 * det);
  const double alphaY = (r1 * u2 - r2 * u1) / det, betaY = (u1 * k2 - u2 * k1) / (2.0 * det);
  // |M - p0|^2 = rho^2 as a quadratic in rho.
  double roots[2];
  if (!RaisedRoots(alphaX * alphaX + alphaY * alphaY - 1.0, 2.0 * (alphaX * betaX + alphaY * betaY),
                   betaX * betaX + betaY * betaY, roots))
    return RTERROR;
  const double rho = LargerRoot(roots);
  if (!(rho > 0.0)) return RTERROR;  // only circles on the other sides
  double centre[3];
  SetPlanePoint(centre, p0[0] + alphaX * rho + betaX, p0[1] + alphaY * rho + betaY);
  const int status = Finish(centre, rho, a1, a2, cen, tan1, tan2);
  if (status == RTNORM) *radius = rho;
  return status;
}
