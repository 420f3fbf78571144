// Heavy polylines, their vertices and the SEQEND.
#include <cmath>

#include "arx/dbpoly.h"
#include "db/curve_geometry.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "db/sequences.h"
#include "db/stub.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbSequenceEnd, AcDbEntity, L"SEQEND")
KELHOST_RX_DEFINE(AcDbVertex, AcDbEntity, L"VERTEX")
KELHOST_RX_DEFINE(AcDb2dVertex, AcDbVertex, L"VERTEX")
KELHOST_RX_DEFINE(AcDb3dPolylineVertex, AcDbVertex, L"VERTEX")
KELHOST_RX_DEFINE(AcDb2dPolyline, AcDbCurve, L"POLYLINE")
KELHOST_RX_DEFINE(AcDb3dPolyline, AcDbCurve, L"POLYLINE")

namespace {
// The vertices that are not erased, in order (those of a polyline not yet
// in a database included).
template <class V>
std::vector<const V*> LiveVertices(const AcDbSubentSequence& seq) {
  std::vector<const V*> out;
  for (AcDbEntity* e : kelhost::db::LiveSubentities(seq))
    if (const V* v = V::cast(e)) out.push_back(v);
  return out;
}

}  // namespace

// ---------------------------------------------------------------- 2D vertex
Acad::ErrorStatus AcDb2dVertex::setPosition(const AcGePoint3d& p) { KELHOST_SET(mPosition, p); }
Acad::ErrorStatus AcDb2dVertex::setBulge(double b) { KELHOST_SET(mBulge, b); }
Acad::ErrorStatus AcDb2dVertex::setStartWidth(double w) {
  if (!kelhost::db::Finite(w)) return Acad::eInvalidInput;
  if (w < 0) return Acad::eInvalidInput;
  KELHOST_SET(mStartWidth, w);
}
Acad::ErrorStatus AcDb2dVertex::setEndWidth(double w) {
  if (!kelhost::db::Finite(w)) return Acad::eInvalidInput;
  if (w < 0) return Acad::eInvalidInput;
  KELHOST_SET(mEndWidth, w);
}
AcDb::Vertex2dType AcDb2dVertex::vertexType() const {
  if (mFlags & 16) return AcDb::k2dSplineCtlVertex;
  if (mFlags & 8) return AcDb::k2dSplineFitVertex;
  if (mFlags & 1) return AcDb::k2dCurveFitVertex;
  return AcDb::k2dVertex;
}

void AcDb2dVertex::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  f.subclass(L"AcDbVertex");
  f.subclass(L"AcDb2dVertex");
  f.point(10, mPosition, Presence::kRequired);
  f.real(40, mStartWidth, 0.0, Presence::kUnlessDefault);
  f.real(41, mEndWidth, 0.0, Presence::kUnlessDefault);
  f.real(42, mBulge, 0.0, Presence::kUnlessDefault);
  f.int16(70, mFlags, 0, Presence::kAlways);
  f.real(50, mTangent, 0.0, Presence::kUnlessDefault);
  if (mFlags & 32) f.fail(L"a 3D polyline vertex (70 has 32) in a 2D polyline");
}

Acad::ErrorStatus AcDb2dVertex::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  AcGeVector3d normal = AcGeVector3d::kZAxis;
  double elevation = 0.0;
  if (auto* pl = kelhost::db::PeekAs<AcDb2dPolyline>(ownerId())) {
    normal = pl->normal();
    elevation = pl->elevation();
  }
  const AcGePoint3d p = AcGeMatrix3d::worldToPlane(normal) * (m * (AcGeMatrix3d::planeToWorld(normal) *
                                                                   AcGePoint3d(mPosition.x, mPosition.y, elevation)));
  mPosition.set(p.x, p.y, mPosition.z);
  return Acad::eOk;
}

// ---------------------------------------------------------------- 3D vertex
Acad::ErrorStatus AcDb3dPolylineVertex::setPosition(const AcGePoint3d& p) { KELHOST_SET(mPosition, p); }
Acad::ErrorStatus AcDb3dPolylineVertex::transformBy(const AcGeMatrix3d& m) { KELHOST_SET(mPosition, m * mPosition); }

void AcDb3dPolylineVertex::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  f.subclass(L"AcDbVertex");
  f.subclass(L"AcDb3dPolylineVertex");
  f.point(10, mPosition, Presence::kRequired);
  f.int16(70, mFlags, 32, Presence::kAlways);
  if (!(mFlags & 32)) f.fail(L"a 3D polyline vertex needs flag 32 in group 70");
}

// ---------------------------------------------------------------- 2D polyline
AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation, bool closed,
                               double defStartWidth, double defEndWidth, const AcGeDoubleArray* bulges)
    : mElevation(elevation), mStartWidth(defStartWidth), mEndWidth(defEndWidth) {
  mFlags = closed ? 1 : 0;
  if (type == AcDb::k2dFitCurvePoly) mFlags |= 2;
  if (type == AcDb::k2dQuadSplinePoly || type == AcDb::k2dCubicSplinePoly) {
    mFlags |= 4;
    mCurveType = type == AcDb::k2dQuadSplinePoly ? 5 : 6;
  }
  for (int i = 0; i < vertices.length(); ++i) {
    const double bulge = bulges && i < bulges->length() ? (*bulges)[i] : 0.0;
    const AcGePoint3d& p = vertices[i];
    mSequence.pending.emplace_back(
        new AcDb2dVertex(AcGePoint3d(p.x, p.y, elevation), bulge, defStartWidth, defEndWidth));
  }
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* vertex) {
  AcDbObjectId id;
  return appendVertex(id, vertex);
}
Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex) {
  return kelhost::db::AppendToSequence(this, mSequence, vertex, id);
}
Acad::ErrorStatus AcDb2dPolyline::makeClosed() { KELHOST_SET(mFlags, static_cast<short>(mFlags | 1)); }
Acad::ErrorStatus AcDb2dPolyline::makeOpen() { KELHOST_SET(mFlags, static_cast<short>(mFlags & ~1)); }
Acad::ErrorStatus AcDb2dPolyline::setElevation(double e) { KELHOST_SET(mElevation, e); }
Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& n) {
  if (!kelhost::db::Finite(n)) return Acad::eInvalidInput;
  if (n.isZeroLength()) return Acad::eInvalidInput;
  KELHOST_SET(mNormal, n.normal());
}

bool AcDb2dPolyline::buildPath(kelhost::geom::Path& path) const {
  const auto vertices = LiveVertices<AcDb2dVertex>(mSequence);
  if (vertices.empty()) return false;
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(mNormal);
  auto world = [&](size_t i) {
    const AcGePoint3d p = vertices[i % vertices.size()]->position();
    return toWorld * AcGePoint3d(p.x, p.y, mElevation);
  };
  if (vertices.size() == 1) {
    path.addLine(world(0), world(0), 0.0, 0.0);
    return true;
  }
  const size_t segments = isClosed() ? vertices.size() : vertices.size() - 1;
  for (size_t i = 0; i < segments; ++i)
    kelhost::geom::AddBulgeSegment(path, world(i), world(i + 1), vertices[i]->bulge(), mNormal, double(i), i + 1.0);
  return true;
}

Acad::ErrorStatus AcDb2dPolyline::explode(AcDbVoidPtrArray& entitySet) const {
  const auto vertices = LiveVertices<AcDb2dVertex>(mSequence);
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(mNormal);
  const size_t n = vertices.size();
  const size_t segments = n < 2 ? 0 : isClosed() ? n : n - 1;
  for (size_t i = 0; i < segments; ++i) {
    const AcGePoint3d a = vertices[i]->position(), b = vertices[(i + 1) % n]->position();
    if (AcDbCurve* c = kelhost::geom::SegmentEntity(*this, toWorld * AcGePoint3d(a.x, a.y, mElevation),
                                                    toWorld * AcGePoint3d(b.x, b.y, mElevation),
                                                    vertices[i]->bulge(), mNormal))
      entitySet.append(c);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  AcGeVector3d normal;
  if (!kelhost::geom::TransformPlaneNormal(m, mNormal, normal)) return Acad::eCannotScaleNonUniformly;
  kelhost::db::WritableSubentities<AcDb2dVertex> vertices(mSequence);
  if (vertices.status != Acad::eOk) return vertices.status;
  const bool uniform = m.isUniScaledOrtho();
  if (!uniform) {
    // Arcs would turn elliptical and widths uneven: neither fits a polyline.
    if (mStartWidth != 0 || mEndWidth != 0) return Acad::eCannotScaleNonUniformly;
    for (const AcDb2dVertex* v : vertices.all())
      if (v->bulge() != 0 || v->startWidth() != 0 || v->endWidth() != 0) return Acad::eCannotScaleNonUniformly;
  }
  const AcGeMatrix3d map = AcGeMatrix3d::worldToPlane(normal) * m * AcGeMatrix3d::planeToWorld(mNormal);
  const double scale = uniform ? m.scale() : 1.0;
  const bool mirrored = m.det() < 0;
  const double elevation = (map * AcGePoint3d(0, 0, mElevation)).z;
  for (AcDb2dVertex* v : vertices.all()) {
    // A vertex's Z means nothing to the polyline; one that repeats the
    // elevation keeps doing so.
    const AcGePoint3d old = v->position();
    const AcGePoint3d p = map * AcGePoint3d(old.x, old.y, mElevation);
    v->setPosition(AcGePoint3d(p.x, p.y, old.z == mElevation ? elevation : old.z));
    if (mirrored) v->setBulge(-v->bulge());
    v->setStartWidth(v->startWidth() * scale);
    v->setEndWidth(v->endWidth() * scale);
  }
  mThickness *= (m * mNormal.normal()).dotProduct(normal);
  mStartWidth *= scale;
  mEndWidth *= scale;
  mElevation = elevation;
  mNormal = normal;
  return Acad::eOk;
}

void AcDb2dPolyline::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  short follows = 1;  // vertices follow: always so for a heavy polyline
  f.int16(66, follows, 1, Presence::kAlways);
  f.subclass(L"AcDb2dPolyline");
  AcGePoint3d elevation(0, 0, mElevation);
  f.point(10, elevation, Presence::kAlways);
  mElevation = elevation.z;
  f.real(39, mThickness, 0.0, Presence::kUnlessDefault);
  f.int16(70, mFlags, 0, Presence::kAlways);
  f.real(40, mStartWidth, 0.0, Presence::kUnlessDefault);
  f.real(41, mEndWidth, 0.0, Presence::kUnlessDefault);
  f.int16(75, mCurveType, 0, Presence::kUnlessDefault);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
  if (mFlags & (8 | 16 | 64)) f.fail(L"not a 2D polyline: group 70 has the 3D or mesh bits");
}

// ---------------------------------------------------------------- 3D polyline
AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& vertices, bool closed) {
  mFlags = static_cast<short>(8 | (closed ? 1 : 0) | (type == AcDb::k3dSimplePoly ? 0 : 4));
  for (const AcGePoint3d& p : vertices) mSequence.pending.emplace_back(new AcDb3dPolylineVertex(p));
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDb3dPolylineVertex* vertex) {
  AcDbObjectId id;
  return appendVertex(id, vertex);
}
Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex) {
  return kelhost::db::AppendToSequence(this, mSequence, vertex, id);
}
Acad::ErrorStatus AcDb3dPolyline::makeClosed() { KELHOST_SET(mFlags, static_cast<short>(mFlags | 1)); }
Acad::ErrorStatus AcDb3dPolyline::makeOpen() { KELHOST_SET(mFlags, static_cast<short>(mFlags & ~1)); }

bool AcDb3dPolyline::buildPath(kelhost::geom::Path& path) const {
  const auto vertices = LiveVertices<AcDb3dPolylineVertex>(mSequence);
  const size_t n = vertices.size();
  if (n == 0) return false;
  if (n == 1) {
    path.addLine(vertices[0]->position(), vertices[0]->position(), 0.0, 0.0);
    return true;
  }
  const size_t segments = isClosed() ? n : n - 1;
  for (size_t i = 0; i < segments; ++i)
    path.addLine(vertices[i]->position(), vertices[(i + 1) % n]->position(), double(i), i + 1.0);
  return true;
}

Acad::ErrorStatus AcDb3dPolyline::explode(AcDbVoidPtrArray& entitySet) const {
  kelhost::geom::Path path;
  if (!buildPath(path)) return Acad::eOk;
  for (const auto& piece : path.pieces())
    if (AcDbCurve* c = kelhost::geom::SegmentEntity(*this, piece.a, piece.b, 0.0, AcGeVector3d::kZAxis))
      entitySet.append(c);
  return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  kelhost::db::WritableSubentities<AcDb3dPolylineVertex> vertices(mSequence);
  if (vertices.status != Acad::eOk) return vertices.status;
  for (AcDb3dPolylineVertex* v : vertices.all()) v->setPosition(m * v->position());
  return Acad::eOk;
}

void AcDb3dPolyline::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  short follows = 1;
  f.int16(66, follows, 1, Presence::kAlways);
  f.subclass(L"AcDb3dPolyline");
  AcGePoint3d zero;
  f.point(10, zero, Presence::kAlways);
  f.int16(70, mFlags, 8, Presence::kAlways);
  if (!(mFlags & 8)) f.fail(L"a 3D polyline needs flag 8 in group 70");
  AcGeVector3d normal = AcGeVector3d::kZAxis;
  f.vector(210, normal, AcGeVector3d::kZAxis, Presence::kAlways);
}
