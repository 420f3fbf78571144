// Shapes: their properties, DXF groups, approximate extents and
// transformation.
#include <cmath>

#include "arx/acutads.h"
#include "arx/dbshape.h"
#include "db/curve_geometry.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbShape, AcDbEntity, L"SHAPE")

AcDbShape::AcDbShape(const AcGePoint3d& position, double size, double rotation, double widthFactor)
    : mPosition(position), mSize(size > 0 ? size : 1.0), mRotation(rotation), mWidthFactor(widthFactor != 0 ? widthFactor : 1.0) {}

Acad::ErrorStatus AcDbShape::setPosition(const AcGePoint3d& position) { KELHOST_SET(mPosition, position); }
Acad::ErrorStatus AcDbShape::setSize(double size) {
  if (!kelhost::db::Finite(size)) return Acad::eInvalidInput;
  if (!(size > 0)) return Acad::eInvalidInput;
  KELHOST_SET(mSize, size);
}

ACHAR* AcDbShape::name() const {
  ACHAR* out = nullptr;
  acutNewString(mName.c_str(), out);
  return out;
}

Acad::ErrorStatus AcDbShape::setName(const ACHAR* name) {
  if (!name || !*name) return Acad::eInvalidInput;
  KELHOST_SET(mName, name);
}

Acad::ErrorStatus AcDbShape::setRotation(double angle) { KELHOST_SET(mRotation, angle); }
Acad::ErrorStatus AcDbShape::setWidthFactor(double factor) {
  if (!kelhost::db::Finite(factor)) return Acad::eInvalidInput;
  if (factor == 0 || !std::isfinite(factor)) return Acad::eInvalidInput;
  KELHOST_SET(mWidthFactor, factor);
}
Acad::ErrorStatus AcDbShape::setOblique(double angle) { KELHOST_SET(mOblique, angle); }
Acad::ErrorStatus AcDbShape::setThickness(double thickness) { KELHOST_SET(mThickness, thickness); }
Acad::ErrorStatus AcDbShape::setNormal(const AcGeVector3d& normal) {
  if (!kelhost::db::Finite(normal)) return Acad::eInvalidInput;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  KELHOST_SET(mNormal, normal.normal());
}

void AcDbShape::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  f.subclass(L"AcDbShape");
  f.real(39, mThickness, 0.0, Presence::kUnlessDefault);
  f.point(10, mPosition, Presence::kRequired);
  f.real(40, mSize, 1.0, Presence::kAlways);
  if (!(mSize > 0)) f.fail(L"shape size must be positive in group 40");
  f.text(2, mName, L"", Presence::kRequired);
  if (f.reading() && !f.keepsAbsent() && mName.empty()) f.fail(L"a shape needs its name in group 2");
  f.real(50, mRotation, 0.0, Presence::kAlways);
  f.real(41, mWidthFactor, 1.0, Presence::kAlways);
  if (mWidthFactor == 0) f.fail(L"zero width factor in group 41");
  f.real(51, mOblique, 0.0, Presence::kAlways);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
  if (f.reading()) mNormal = mNormal.normal();
}

namespace {
// The shape's axes in WCS: along its rotation, and up in its plane.
void Axes(const AcGeVector3d& normal, double rotation, AcGeVector3d& x, AcGeVector3d& y) {
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal);
  x = toWorld * AcGeVector3d(std::cos(rotation), std::sin(rotation), 0.0);
  y = toWorld * AcGeVector3d(-std::sin(rotation), std::cos(rotation), 0.0);
}
}  // namespace

Acad::ErrorStatus AcDbShape::getGeomExtents(AcDbExtents& extents) const {
  AcGeVector3d x, y;
  Axes(mNormal, mRotation, x, y);
  AcDbExtents box;
  const AcGeVector3d across = x * (mSize * mWidthFactor), up = y * mSize;
  box.addPoint(mPosition);
  box.addPoint(mPosition + across);
  box.addPoint(mPosition + up);
  box.addPoint(mPosition + across + up);
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbShape::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!m.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  AcGeVector3d x, y;
  Axes(mNormal, mRotation, x, y);
  // The axes go with the matrix; the normal follows them, so that a
  // mirrored shape turns over rather than reading backwards.
  const AcGeVector3d mx = m * x, my = m * y;
  const AcGeVector3d normal = mx.crossProduct(my).normal();
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mPosition = m * mPosition;
  mNormal = normal;
  mRotation = kelhost::geom::OcsAngle(normal, mx);
  mSize *= m.scale();
  mThickness *= m.scale();
  return Acad::eOk;
}
