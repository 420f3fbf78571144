// Readable text angles and the area of a chain of points.
#include "kelcad/api/readable_angles.h"

#include "kelcad/api/curves.h"
#include "kelcad/api/readable_angle.h"
#include "kelcad/geom/polygon_points.h"

namespace KEL {

void GetRightTopAngles(double angle, double& readable, double& perpendicular) {
  constexpr double kPi = 3.14159265358979323846;
  const double a = MakeAngleIn2PI(angle);
  if (ReadsBackwards(a)) {
    readable = a - kPi;
    perpendicular = a - kPi / 2.0;
  } else {
    readable = a;
    perpendicular = a + kPi / 2.0;
  }
  readable = MakeAngleIn2PI(readable);
  perpendicular = MakeAngleIn2PI(perpendicular);
}

double JSPTBArea(resbuf* points) { return Geom::RingArea(points); }

}  // namespace KEL
