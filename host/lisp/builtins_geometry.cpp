// polar, distance, angle and inters on 2D and 3D point lists.
#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

struct Point {
  ads_point p = {0, 0, 0};
  bool is3d = false;
};

Point PointArg(Machine& m, const ValuePtr& v) {
  Args items;
  if (!IsCons(v) || !ListElements(v, items) || items.size() < 2 || items.size() > 3) m.badArgument(L"2D/3D point: ", v);
  Point pt;
  for (size_t k = 0; k < items.size(); ++k) {
    if (!IsNumber(items[k])) m.badArgument(L"2D/3D point: ", v);
    pt.p[k] = NumberOf(items[k]);
  }
  pt.is3d = items.size() == 3;
  return pt;
}

ValuePtr PointValue(const ads_point p, bool is3d) {
  ListBuilder b;
  b.add(MakeReal(p[X]));
  b.add(MakeReal(p[Y]));
  if (is3d) b.add(MakeReal(p[Z]));
  return b.take();
}

ValuePtr Polar(Machine& m, Args& a) {
  Point from = PointArg(m, a[0]);
  ads_point result;
  acutPolar(from.p, NumArg(m, a[1]), NumArg(m, a[2]), result);
  return PointValue(result, from.is3d);
}

// With a 2D point on either side the distance is measured in the plane.
ValuePtr Distance(Machine& m, Args& a) {
  Point p1 = PointArg(m, a[0]), p2 = PointArg(m, a[1]);
  if (!p1.is3d || !p2.is3d) p1.p[Z] = p2.p[Z] = 0;
  return MakeReal(acutDistance(p1.p, p2.p));
}

ValuePtr Angle(Machine& m, Args& a) {
  Point p1 = PointArg(m, a[0]), p2 = PointArg(m, a[1]);
  return MakeReal(acutAngle(p1.p, p2.p));
}

// (inters p1 p2 p3 p4 [onseg]): onseg left out or non-nil keeps the
// intersection on both segments. Any 2D point makes it a 2D question.
ValuePtr Inters(Machine& m, Args& a) {
  Point pts[4];
  bool all3d = true;
  for (int k = 0; k < 4; ++k) {
    pts[k] = PointArg(m, a[k]);
    all3d = all3d && pts[k].is3d;
  }
  if (!all3d)
    for (Point& pt : pts) pt.p[Z] = 0;
  const int onSegments = a.size() < 5 || a[4] ? 1 : 0;
  ads_point result;
  if (acdbInters(pts[0].p, pts[1].p, pts[2].p, pts[3].p, onSegments, result) != RTNORM) return nullptr;
  return PointValue(result, all3d);
}

}  // namespace

void RegisterGeometryBuiltins(Machine& m) {
  m.defineBuiltin(L"POLAR", Polar, 3, 3);
  m.defineBuiltin(L"DISTANCE", Distance, 2, 2);
  m.defineBuiltin(L"ANGLE", Angle, 2, 2);
  m.defineBuiltin(L"INTERS", Inters, 4, 5);
}

}  // namespace kelhost::lisp
