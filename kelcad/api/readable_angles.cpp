// Readable text angles and the area of a chain of points.
#include "kelcad/api/readable_angles.h"

#include <cmath>

#include "kelcad/geom/polygon_points.h"

namespace KEL {

namespace {

constexpr double kPi = 3.14159265358979323846;
// Directions this close past the vertical still count as upright.
constexpr double kUprightSpare = 1e-5;

double IntoTurn(double a) {
  if (a >= 0.0 && a <= 2.0 * kPi) return a;
  const double turns = std::trunc(a / (-2.0 * kPi));
  return a + (2.0 * turns + 2.0) * kPi;
}

}  // namespace

void GetRightTopAngles(double angle, double& readable, double& perpendicular) {
  const double a = IntoTurn(angle);
  if (a > kPi / 2.0 + kUprightSpare && a <= 3.0 * kPi / 2.0 + kUprightSpare) {
    readable = a - kPi;
    perpendicular = a - kPi / 2.0;
  } else {
    readable = a;
    perpendicular = a + kPi / 2.0;
  }
  readable = IntoTurn(readable);
  perpendicular = IntoTurn(perpendicular);
}

double JSPTBArea(resbuf* points) { return Geom::RingArea(points); }

}  // namespace KEL
