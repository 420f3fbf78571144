// Angle normalisation, the parallel test and the foot of a perpendicular.
#include <cmath>

#include "kelcad/api/curves.h"
#include "kelcad/entry/tolerance.h"

namespace KEL {

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;
}  // namespace

double MakeAngleIn2PI(double angle) {
  if (angle >= 0.0 && angle <= kTwoPi) return angle;
  const double turns = std::trunc(angle / -kTwoPi);
  return angle + (2.0 * turns + 2.0) * kPi;
}

double TransAngleInPI(double angle) {
  if (!std::isfinite(angle)) return angle;
  // Whole half turns at once for angles far out, then step by step so that
  // the value lands exactly as repeated additions would leave it.
  if (std::fabs(angle) > 64.0 * kPi) angle = std::fmod(angle, kPi);
  while (angle < 0.0) angle += kPi;
  while (angle >= kPi) angle -= kPi;
  return angle;
}

bool IsLinesPX(AcGePoint3d a1, AcGePoint3d a2, AcGePoint3d b1, AcGePoint3d b2, double tol) {
  ads_point pa1 = {a1.x, a1.y, a1.z}, pa2 = {a2.x, a2.y, a2.z};
  ads_point pb1 = {b1.x, b1.y, b1.z}, pb2 = {b2.x, b2.y, b2.z};
  const double first = std::fmod(acutAngle(pa1, pa2), kPi);
  const double second = std::fmod(acutAngle(pb1, pb2), kPi);
  return std::fabs(first - second) <= tol;
}

bool Qtyd(const double pt[3], const double lineStart[3], const double lineEnd[3], double foot[3]) {
  const double d[3] = {lineEnd[0] - lineStart[0], lineEnd[1] - lineStart[1], lineEnd[2] - lineStart[2]};
  const double squared = d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
  // The tolerance is compared with the squared length on purpose: lines
  // shorter than the square root of the tolerance count as points.
  if (GetPointEQ() > squared) {
    for (int i = 0; i < 3; ++i) foot[i] = lineStart[i];
    return true;
  }
  const double t =
      ((pt[0] - lineStart[0]) * d[0] + (pt[1] - lineStart[1]) * d[1] + (pt[2] - lineStart[2]) * d[2]) / squared;
  for (int i = 0; i < 3; ++i) foot[i] = lineStart[i] + t * d[i];
  return false;
}

}  // namespace KEL
