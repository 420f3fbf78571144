// Lengths of curves, points at even distances along them, and the point a
// distance further along a curve towards the right of the screen.
#include <cmath>

#include "kelcad/api/curves.h"
#include "kelcad/api/opened.h"
#include "kelcad/api/readable_angle.h"

namespace KEL {

namespace {

// Appends the points at 0, step, 2 step, ... while the running sum stays
// within length. The sum is kept as a sum, not as i * step, so the last
// point is there only when the additions do not overshoot the length.
void PointsEvery(const AcDbCurve& curve, double length, double step, AcArray<AcGePoint3d>& points) {
  const double expected = length / step + 1;
  if (expected < 1e7) points.setPhysicalLength(points.length() + static_cast<int>(expected) + 1);
  for (double d = 0.0; d <= length; d += step) {
    AcGePoint3d p;
    if (curve.getPointAtDist(d, p) == Acad::eOk) points.append(p);
    if (d + step == d) break;  // a step too small to move the sum
  }
}

bool PointsAlong(AcArray<AcGePoint3d>& points, AcDbObjectId id, double count, bool byCount) {
  Opened<AcDbCurve> curve(id, AcDb::kForRead);
  if (!curve) return false;
  double length = 0.0;
  if (!GetCurveLength(id, length)) return false;
  if (!(count > 0.0) || !std::isfinite(count)) return false;
  const double step = byCount ? length / count : count;
  if (step > 0.0) {
    PointsEvery(*curve.get(), length, step, points);
  } else {
    // A curve of no length is one point.
    AcGePoint3d p;
    if (curve->getPointAtDist(0.0, p) == Acad::eOk) points.append(p);
  }
  return true;
}

}  // namespace

bool GetCurveLength(AcDbObjectId id, double& length) {
  Opened<AcDbCurve> curve(id, AcDb::kForRead);
  if (!curve) return false;
  double end = 0.0;
  if (curve->getEndParam(end) != Acad::eOk) return false;
  return curve->getDistAtParam(end, length) == Acad::eOk;
}

bool DivideCurve(AcArray<AcGePoint3d>& points, AcDbObjectId curve, double count) {
  return PointsAlong(points, curve, count, true);
}

bool MeasureCurve(AcArray<AcGePoint3d>& points, AcDbObjectId curve, double step) {
  return PointsAlong(points, curve, step, false);
}

bool GetRightPointAtDist(AcDbObjectId id, const AcGePoint3d& pt, double dist, AcGePoint3d& out) {
  Opened<AcDbCurve> curve(id, AcDb::kForRead);
  if (!curve || !std::isfinite(dist)) return false;
  AcGePoint3d on;
  double at = 0.0;
  AcGeVector3d direction;
  if (curve->getClosestPointTo(pt, on) != Acad::eOk || curve->getDistAtPoint(on, at) != Acad::eOk ||
      curve->getFirstDeriv(on, direction) != Acad::eOk)
    return false;
  // The direction in plan as text would read it: a curve running leftwards
  // is gone along backwards.
  const bool leftwards = ReadsBackwards(std::atan2(direction.y, direction.x));
  return curve->getPointAtDist(leftwards ? at - dist : at + dist, out) == Acad::eOk;
}

}  // namespace KEL
