#include "db/curve_geometry.h"

#include <cmath>

namespace kelhost::geom {

AcGeVector3d OcsXAxis(const AcGeVector3d& normal) {
  const AcGeVector3d n = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
  return n.perpVector().normal();
}

double OcsAngle(const AcGeVector3d& normal, const AcGeVector3d& dir) {
  const AcGeVector3d n = normal.normal(), x = OcsXAxis(n), y = n.crossProduct(x);
  double a = std::atan2(dir.dotProduct(y), dir.dotProduct(x));
  if (a < 0) a += 2 * kPi;
  return a;
}

void AddBulgeSegment(Path& path, const AcGePoint3d& a, const AcGePoint3d& b, double bulge, const AcGeVector3d& normal,
                     double t0, double t1) {
  const double chord = a.distanceTo(b);
  if (std::fabs(bulge) < 1e-12 || chord == 0.0) {
    path.addLine(a, b, t0, t1);
    return;
  }
  const AcGeVector3d n = normal.normal();
  const AcGeVector3d left = n.crossProduct((b - a) / chord);
  // The centre lies off the chord's midpoint by L(1 - b^2)/(4b), to the
  // left for a counter-clockwise (positive) bulge.
  const AcGePoint3d center = a + (b - a) * 0.5 + left * (chord * (1 - bulge * bulge) / (4 * bulge));
  const AcGeVector3d u = a - center;
  path.addConic(center, u, n.crossProduct(u), 0.0, 4 * std::atan(bulge), t0, t1);
}

AcDbCurve* SegmentEntity(const AcDbEntity& from, const AcGePoint3d& a, const AcGePoint3d& b, double bulge,
                         const AcGeVector3d& normal) {
  if (a.isEqualTo(b)) return nullptr;
  AcDbCurve* curve = nullptr;
  if (std::fabs(bulge) < 1e-12) {
    auto* line = new AcDbLine(a, b);
    line->setNormal(normal);
    curve = line;
  } else {
    Path path;
    AddBulgeSegment(path, a, b, bulge, normal, 0, 1);
    const Piece& p = path.pieces().front();
    // An arc runs counter-clockwise: a clockwise segment starts at its end.
    const AcGePoint3d s = bulge > 0 ? a : b, e = bulge > 0 ? b : a;
    auto* arc = new AcDbArc;
    arc->setCenter(p.center);
    arc->setRadius(p.radius());
    arc->setNormal(normal);
    arc->setStartAngle(OcsAngle(normal, s - p.center));
    arc->setEndAngle(OcsAngle(normal, e - p.center));
    curve = arc;
  }
  curve->setPropertiesFrom(&from);
  return curve;
}

AcGeVector3d TransformNormal(const AcGeMatrix3d& m, const AcGeVector3d& normal) {
  AcGeVector3d n = m * normal;
  return n.isZeroLength() ? normal : n.normal();
}

bool TransformPlaneNormal(const AcGeMatrix3d& m, const AcGeVector3d& normal, AcGeVector3d& out) {
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal);
  AcGeVector3d n = (m * (toWorld * AcGeVector3d::kXAxis)).crossProduct(m * (toWorld * AcGeVector3d::kYAxis));
  if (n.isZeroLength()) return false;
  n = n.normal();
  if (n.dotProduct(m * normal) < 0) n = -n;
  out = n;
  return true;
}

}  // namespace kelhost::geom
