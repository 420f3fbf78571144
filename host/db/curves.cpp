// The curve interface over each curve's path, and the geometry of lines,
// circles, arcs and lightweight polylines.
#include <cmath>

#include "arx/dbents.h"
#include "db/curve_geometry.h"

using kelhost::geom::Path;
using kelhost::geom::Piece;
using kelhost::geom::kPi;

namespace {
// How far a point may lie from a curve and still be on it.
double OnCurveTolerance(const AcGePoint3d& p) { return 1e-8 * std::max(1.0, p.asVector().length()); }
}  // namespace

// ---------------------------------------------------------------- AcDbCurve
bool AcDbCurve::buildPath(Path&) const { return false; }

#define KELHOST_PATH_OR_FAIL(path)                                                 \
  Path path##Scratch;                                                              \
  const Path* path##Found = kelhost::geom::PathOf(*this, path##Scratch);           \
  if (path##Found == nullptr) return Acad::eDegenerateGeometry;                    \
  const Path& path = *path##Found

Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const {
  KELHOST_PATH_OR_FAIL(path);
  param = path.startParam();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getEndParam(double& param) const {
  KELHOST_PATH_OR_FAIL(path);
  param = path.endParam();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
  KELHOST_PATH_OR_FAIL(path);
  path.pointAt(path.startParam(), point);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
  KELHOST_PATH_OR_FAIL(path);
  path.pointAt(path.endParam(), point);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getPointAtParam(double param, AcGePoint3d& point) const {
  KELHOST_PATH_OR_FAIL(path);
  return path.pointAt(param, point) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  KELHOST_PATH_OR_FAIL(path);
  const double t = path.closestParam(point);
  AcGePoint3d on;
  path.pointAt(t, on);
  if (on.distanceTo(point) > OnCurveTolerance(point)) return Acad::eInvalidInput;
  param = t;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtParam(double param, double& dist) const {
  KELHOST_PATH_OR_FAIL(path);
  return path.distAt(param, dist) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbCurve::getParamAtDist(double dist, double& param) const {
  KELHOST_PATH_OR_FAIL(path);
  return path.paramAtDist(dist, param) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
  double param = 0.0;
  Acad::ErrorStatus es = getParamAtPoint(point, param);
  return es == Acad::eOk ? getDistAtParam(param, dist) : es;
}

Acad::ErrorStatus AcDbCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
  double param = 0.0;
  Acad::ErrorStatus es = getParamAtDist(dist, param);
  return es == Acad::eOk ? getPointAtParam(param, point) : es;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& onCurve, bool extend) const {
  KELHOST_PATH_OR_FAIL(path);
  const auto& pieces = path.pieces();
  if (extend && pieces.size() == 1 && pieces[0].kind == Piece::kLine && !pieces[0].a.isEqualTo(pieces[0].b)) {
    const Piece& p = pieces[0];
    const AcGeVector3d d = (p.b - p.a).normal();
    onCurve = p.a + d * (given - p.a).dotProduct(d);
    return Acad::eOk;
  }
  if (extend && pieces.size() == 1 && pieces[0].isCircular()) {
    const Piece& p = pieces[0];
    const AcGeVector3d n = p.planeNormal();
    AcGeVector3d w = given - p.center;
    w -= n * w.dotProduct(n);
    onCurve = p.center + (w.isZeroLength() ? p.u : w.normal() * p.radius());
    return Acad::eOk;
  }
  if (extend && pieces.size() == 1 && pieces[0].kind == Piece::kConic) {
    // An elliptical arc extends to its whole ellipse.
    const Piece& p = pieces[0];
    Path whole;
    whole.addConic(p.center, p.u, p.v, 0.0, 2 * kPi, 0.0, 2 * kPi);
    whole.pointAt(whole.closestParam(given), onCurve);
    return Acad::eOk;
  }
  path.pointAt(path.closestParam(given), onCurve);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(double param, AcGeVector3d& firstDeriv) const {
  KELHOST_PATH_OR_FAIL(path);
  return path.derivAt(param, firstDeriv) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const {
  double param = 0.0;
  Acad::ErrorStatus es = getParamAtPoint(point, param);
  return es == Acad::eOk ? getFirstDeriv(param, firstDeriv) : es;
}

Acad::ErrorStatus AcDbCurve::getGeomExtents(AcDbExtents& extents) const {
  KELHOST_PATH_OR_FAIL(path);
  AcDbExtents ext;
  path.extents(ext);
  extents = ext;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::intersectWith(const AcDbEntity* entity, AcDb::Intersect intType, AcGePoint3dArray& points,
                                           Adesk::GsMarker, Adesk::GsMarker) const {
  if (!entity) return Acad::eNullEntityPointer;
  const auto* other = AcDbCurve::cast(entity);
  if (!other) return entity->intersectWith(this, static_cast<AcDb::Intersect>(
                                                     intType == AcDb::kExtendThis   ? AcDb::kExtendArg
                                                     : intType == AcDb::kExtendArg ? AcDb::kExtendThis
                                                                                   : intType),
                                           points);
  Path mine, theirs;
  if (!buildPath(mine) || !other->buildPath(theirs) || mine.empty() || theirs.empty())
    return Acad::eDegenerateGeometry;
  const bool extendMine = (intType & AcDb::kExtendThis) != 0, extendTheirs = (intType & AcDb::kExtendArg) != 0;
  kelhost::geom::Intersect(mine, extendMine, theirs, extendTheirs, points);
  return Acad::eOk;
}

// ---------------------------------------------------------------- line
bool AcDbLine::buildPath(Path& path) const {
  path.addLine(mStart, mEnd, 0.0, mStart.distanceTo(mEnd));
  return true;
}

Acad::ErrorStatus AcDbLine::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  mStart = m * mStart;
  mEnd = m * mEnd;
  mNormal = kelhost::geom::TransformNormal(m, mNormal);
  return Acad::eOk;
}

// ---------------------------------------------------------------- circle
bool AcDbCircle::buildPath(Path& path) const {
  if (!(mRadius > 0)) return false;
  const AcGeVector3d x = kelhost::geom::OcsXAxis(mNormal), y = mNormal.normal().crossProduct(x);
  path.addConic(mCenter, x * mRadius, y * mRadius, 0.0, 2 * kPi, 0.0, 2 * kPi);
  return true;
}

Acad::ErrorStatus AcDbCircle::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!m.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  mCenter = m * mCenter;
  mRadius *= m.scale();
  mNormal = kelhost::geom::TransformNormal(m, mNormal);
  return Acad::eOk;
}

// ---------------------------------------------------------------- arc
bool AcDbArc::buildPath(Path& path) const {
  if (!(radius() > 0)) return false;
  const AcGeVector3d n = normal().normal(), x = kelhost::geom::OcsXAxis(n), y = n.crossProduct(x);
  // The end parameter follows the start: an arc across angle zero ends
  // past 2pi.
  double sweep = std::fmod(mEndAngle - mStartAngle, 2 * kPi);
  if (sweep <= 0) sweep += 2 * kPi;
  path.addConic(center(), x * radius(), y * radius(), mStartAngle, sweep, mStartAngle, mStartAngle + sweep);
  return true;
}

Acad::ErrorStatus AcDbArc::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!m.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  AcGePoint3d s, e;
  getStartPoint(s);
  getEndPoint(e);
  s = m * s;
  e = m * e;
  // The normal goes with the matrix; a mirroring turns the arc round.
  if (m.det() < 0) std::swap(s, e);
  Acad::ErrorStatus es = AcDbCircle::transformBy(m);
  if (es != Acad::eOk) return es;
  mStartAngle = kelhost::geom::OcsAngle(normal(), s - center());
  mEndAngle = kelhost::geom::OcsAngle(normal(), e - center());
  return Acad::eOk;
}

// ---------------------------------------------------------------- lightweight polyline
bool AcDbPolyline::onSegment(unsigned int index) const {
  return index < mVertices.size() && (index + 1 < mVertices.size() || (isClosed() && mVertices.size() > 1));
}

bool AcDbPolyline::buildPath(Path& path) const {
  if (mVertices.empty()) return false;
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(mNormal);
  auto world = [&](size_t i) {
    const AcGePoint2d& p = mVertices[i % mVertices.size()].point;
    return toWorld * AcGePoint3d(p.x, p.y, mElevation);
  };
  if (mVertices.size() == 1) {
    path.addLine(world(0), world(0), 0.0, 0.0);
    return true;
  }
  for (unsigned int i = 0; onSegment(i); ++i)
    kelhost::geom::AddBulgeSegment(path, world(i), world(i + 1), mVertices[i].bulge, mNormal, i, i + 1.0);
  return true;
}

Acad::ErrorStatus AcDbPolyline::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  AcGeVector3d normal;
  if (!kelhost::geom::TransformPlaneNormal(m, mNormal, normal)) return Acad::eCannotScaleNonUniformly;
  const bool uniform = m.isUniScaledOrtho();
  if (!uniform) {
    // Arcs would turn elliptical and widths uneven: neither fits a polyline.
    for (const Vertex& v : mVertices)
      if (v.bulge != 0 || v.startWidth != 0 || v.endWidth != 0) return Acad::eCannotScaleNonUniformly;
  }
  const AcGeMatrix3d map = AcGeMatrix3d::worldToPlane(normal) * m * AcGeMatrix3d::planeToWorld(mNormal);
  const double scale = uniform ? m.scale() : 1.0;
  const bool mirrored = m.det() < 0;
  for (Vertex& v : mVertices) {
    const AcGePoint3d p = map * AcGePoint3d(v.point.x, v.point.y, mElevation);
    v.point.set(p.x, p.y);
    if (mirrored) v.bulge = -v.bulge;
    v.startWidth *= scale;
    v.endWidth *= scale;
  }
  mElevation = (map * AcGePoint3d(0, 0, mElevation)).z;
  mThickness *= (m * mNormal.normal()).dotProduct(normal);
  mNormal = normal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::explode(AcDbVoidPtrArray& entitySet) const {
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(mNormal);
  for (unsigned int i = 0; onSegment(i); ++i) {
    const AcGePoint2d& a = mVertices[i].point;
    const AcGePoint2d& b = mVertices[(i + 1) % mVertices.size()].point;
    if (AcDbCurve* c = kelhost::geom::SegmentEntity(*this, toWorld * AcGePoint3d(a.x, a.y, mElevation),
                                                    toWorld * AcGePoint3d(b.x, b.y, mElevation),
                                                    mVertices[i].bulge, mNormal))
      entitySet.append(c);
  }
  return Acad::eOk;
}
