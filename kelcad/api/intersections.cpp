// Where two entities meet, each point once.
#include "kelcad/api/curves.h"
#include "kelcad/api/opened.h"
#include "kelcad/entry/tolerance.h"

namespace KEL {

namespace {

bool AlreadyThere(const AcArray<AcGePoint3d>& points, int from, const AcGePoint3d& p) {
  ads_point q = {p.x, p.y, p.z};
  for (int i = from; i < points.length(); ++i) {
    ads_point seen = {points[i].x, points[i].y, points[i].z};
    if (IsPointEQ(seen, q)) return true;
  }
  return false;
}

}  // namespace

int IntersectWith(AcDbObjectId first, AcDbObjectId second, AcDb::Intersect mode, AcArray<AcGePoint3d>& points) {
  Opened<AcDbEntity> a(first, AcDb::kForRead);
  if (!a) return -1;
  // The same entity twice is opened twice for read, as the platform allows.
  Opened<AcDbEntity> b(second, AcDb::kForRead);
  if (!b) return -1;
  AcGePoint3dArray found;
  if (a->intersectWith(b.get(), mode, found) != Acad::eOk) return -1;
  const int before = points.length();
  for (int i = 0; i < found.length(); ++i)
    if (!AlreadyThere(points, before, found[i])) points.append(found[i]);
  return points.length() - before;
}

int GetEntIntersect(const ads_name first, const ads_name second, AcArray<AcGePoint3d>& points) {
  return IntersectWith(IdOfName(first), IdOfName(second), AcDb::kOnBothOperands, points);
}

}  // namespace KEL
