// Line, circle, arc, point, text and lightweight polyline: their
// properties and their DXF groups.
#include <cmath>
#include <cstdlib>
#include <cwchar>

#include "arx/dbents.h"
#include "arx/dbdatabase.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbCurve, AcDbEntity, L"")
KELHOST_RX_DEFINE(AcDbLine, AcDbCurve, L"LINE")
KELHOST_RX_DEFINE(AcDbCircle, AcDbCurve, L"CIRCLE")
KELHOST_RX_DEFINE(AcDbArc, AcDbCircle, L"ARC")
KELHOST_RX_DEFINE(AcDbPoint, AcDbEntity, L"POINT")
KELHOST_RX_DEFINE(AcDbText, AcDbEntity, L"TEXT")
KELHOST_RX_DEFINE(AcDbPolyline, AcDbCurve, L"LWPOLYLINE")

namespace {
bool UsableNormal(const AcGeVector3d& n) { return !n.isZeroLength(); }
}  // namespace

// ---------------------------------------------------------------- line
Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& pt) { KELHOST_SET(mStart, pt); }
Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& pt) { KELHOST_SET(mEnd, pt); }
Acad::ErrorStatus AcDbLine::setThickness(double t) { KELHOST_SET(mThickness, t); }
Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& n) {
  if (!kelhost::db::Finite(n)) return Acad::eInvalidInput;
  if (!UsableNormal(n)) return Acad::eInvalidInput;
  KELHOST_SET(mNormal, n.normal());
}

void AcDbLine::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  f.subclass(L"AcDbLine");
  f.real(39, mThickness, 0.0, Presence::kUnlessDefault);
  f.point(10, mStart, Presence::kRequired);
  f.point(11, mEnd, Presence::kRequired);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
}

// ---------------------------------------------------------------- circle
Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& c) { KELHOST_SET(mCenter, c); }
Acad::ErrorStatus AcDbCircle::setRadius(double r) {
  if (!kelhost::db::Finite(r)) return Acad::eInvalidInput;
  if (!(r > 0)) return Acad::eInvalidInput;
  KELHOST_SET(mRadius, r);
}
Acad::ErrorStatus AcDbCircle::setThickness(double t) { KELHOST_SET(mThickness, t); }
Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& n) {
  if (!kelhost::db::Finite(n)) return Acad::eInvalidInput;
  if (!UsableNormal(n)) return Acad::eInvalidInput;
  KELHOST_SET(mNormal, n.normal());
}

void AcDbCircle::circleFields(kelhost::dxf::GroupFiler& f) {
  f.subclass(L"AcDbCircle");
  f.real(39, mThickness, 0.0, Presence::kUnlessDefault);
  f.point(10, mCenter, Presence::kRequired);
  f.real(40, mRadius, 0.0, Presence::kRequired);
  if (f.reading() && !(mRadius > 0)) f.fail(L"radius must be positive in group 40");
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
}

void AcDbCircle::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  circleFields(f);
}

// ---------------------------------------------------------------- arc
AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbCircle(center, AcGeVector3d::kZAxis, radius), mStartAngle(startAngle), mEndAngle(endAngle) {}
Acad::ErrorStatus AcDbArc::setStartAngle(double a) { KELHOST_SET(mStartAngle, a); }
Acad::ErrorStatus AcDbArc::setEndAngle(double a) { KELHOST_SET(mEndAngle, a); }

void AcDbArc::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  circleFields(f);
  f.subclass(L"AcDbArc");
  f.real(50, mStartAngle, 0.0, Presence::kRequired);
  f.real(51, mEndAngle, 0.0, Presence::kRequired);
}

// ---------------------------------------------------------------- point
Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& p) { KELHOST_SET(mPosition, p); }
Acad::ErrorStatus AcDbPoint::setThickness(double t) { KELHOST_SET(mThickness, t); }
Acad::ErrorStatus AcDbPoint::setEcsRotation(double a) { KELHOST_SET(mEcsRotation, a); }
Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& n) {
  if (!kelhost::db::Finite(n)) return Acad::eInvalidInput;
  if (!UsableNormal(n)) return Acad::eInvalidInput;
  KELHOST_SET(mNormal, n.normal());
}

void AcDbPoint::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  f.subclass(L"AcDbPoint");
  f.point(10, mPosition, Presence::kRequired);
  f.real(39, mThickness, 0.0, Presence::kUnlessDefault);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
  f.real(50, mEcsRotation, 0.0, Presence::kAlways);
}

// ---------------------------------------------------------------- text
AcDbText::AcDbText() = default;

AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style, double height,
                   double rotation)
    : mPosition(position), mText(text ? text : L""), mStyle(style), mHeight(height), mRotation(rotation) {}

ACHAR* AcDbText::textString() const {
  size_t n = mText.size() + 1;
  auto* copy = static_cast<ACHAR*>(std::malloc(n * sizeof(ACHAR)));
  if (copy) std::wmemcpy(copy, mText.c_str(), n);
  return copy;
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& p) { KELHOST_SET(mPosition, p); }
Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& p) { KELHOST_SET(mAlignment, p); }
Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
  if (!text) return Acad::eInvalidInput;
  KELHOST_SET(mText, text);
}
Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) { KELHOST_SET(mStyle, style); }
Acad::ErrorStatus AcDbText::setHeight(double h) {
  if (!kelhost::db::Finite(h)) return Acad::eInvalidInput;
  if (!(h > 0)) return Acad::eInvalidInput;
  KELHOST_SET(mHeight, h);
}
Acad::ErrorStatus AcDbText::setRotation(double a) { KELHOST_SET(mRotation, a); }
Acad::ErrorStatus AcDbText::setWidthFactor(double w) {
  if (!kelhost::db::Finite(w)) return Acad::eInvalidInput;
  if (!(w > 0)) return Acad::eInvalidInput;
  KELHOST_SET(mWidthFactor, w);
}
Acad::ErrorStatus AcDbText::setOblique(double a) { KELHOST_SET(mOblique, a); }
Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode m) { KELHOST_SET(mHorzMode, static_cast<short>(m)); }
Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode m) { KELHOST_SET(mVertMode, static_cast<short>(m)); }
Acad::ErrorStatus AcDbText::setThickness(double t) { KELHOST_SET(mThickness, t); }
Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& n) {
  if (!kelhost::db::Finite(n)) return Acad::eInvalidInput;
  if (!UsableNormal(n)) return Acad::eInvalidInput;
  KELHOST_SET(mNormal, n.normal());
}

void AcDbText::dxfFields(kelhost::dxf::GroupFiler& f) {
  textFields(f);
  f.subclass(L"AcDbText");
  verticalModeField(f, 73);
}

void AcDbText::verticalModeField(kelhost::dxf::GroupFiler& f, int code) {
  f.int16(code, mVertMode, 0, Presence::kAlways);
  if (mHorzMode < 0 || mHorzMode > 5 || mVertMode < 0 || mVertMode > 3)
    f.fail(L"bad text justification in group 72/" + std::to_wstring(code));
}

void AcDbText::textFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  AcDbDatabase* db = f.database();
  f.subclass(L"AcDbText");
  f.real(39, mThickness, 0.0, Presence::kUnlessDefault);
  f.point(10, mPosition, Presence::kRequired);
  f.real(40, mHeight, db ? db->textsize() : 2.5, Presence::kAlways);
  if (f.reading() && !(mHeight > 0)) f.fail(L"text height must be positive in group 40");
  f.text(1, mText, L"", Presence::kRequired);
  f.real(50, mRotation, 0.0, Presence::kAlways);
  f.real(41, mWidthFactor, 1.0, Presence::kAlways);
  f.real(51, mOblique, 0.0, Presence::kAlways);
  if (!f.reading() && mStyle.isNull() && db) mStyle = db->textstyle();
  f.record(7, mStyle, db ? db->textStyleTableId() : AcDbObjectId::kNull, L"Standard", Presence::kAlways, false);
  f.int16(71, mGeneration, 0, Presence::kAlways);
  f.int16(72, mHorzMode, 0, Presence::kAlways);
  f.point(11, mAlignment, Presence::kAlways);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
}

// ---------------------------------------------------------------- lightweight polyline
Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge,
                                            double startWidth, double endWidth) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (index > mVertices.size()) return Acad::eInvalidIndex;
  Vertex v;
  v.point = pt;
  v.bulge = bulge;
  v.startWidth = startWidth < 0 ? 0.0 : startWidth;
  v.endWidth = endWidth < 0 ? 0.0 : endWidth;
  mVertices.insert(mVertices.begin() + index, v);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (index >= mVertices.size()) return Acad::eInvalidIndex;
  mVertices.erase(mVertices.begin() + index);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& pt) const {
  if (index >= mVertices.size()) return Acad::eInvalidIndex;
  pt = mVertices[index].point;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& pt) const {
  if (index >= mVertices.size()) return Acad::eInvalidIndex;
  pt.set(mVertices[index].point.x, mVertices[index].point.y, mElevation);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& pt) {
  if (!kelhost::db::Finite(pt)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  if (index >= mVertices.size()) return Acad::eInvalidIndex;
  mVertices[index].point = pt;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
  if (index >= mVertices.size()) return Acad::eInvalidIndex;
  bulge = mVertices[index].bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
  if (!kelhost::db::Finite(bulge)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  if (index >= mVertices.size()) return Acad::eInvalidIndex;
  mVertices[index].bulge = bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const {
  if (index >= mVertices.size()) return Acad::eInvalidIndex;
  startWidth = mVertices[index].startWidth;
  endWidth = mVertices[index].endWidth;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth, double endWidth) {
  if (!kelhost::db::Finite(startWidth) || !kelhost::db::Finite(endWidth)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  if (index >= mVertices.size()) return Acad::eInvalidIndex;
  if (startWidth < 0 || endWidth < 0) return Acad::eInvalidInput;
  mVertices[index].startWidth = startWidth;
  mVertices[index].endWidth = endWidth;
  return Acad::eOk;
}

void AcDbPolyline::setClosed(bool closed) {
  if (writable()) mFlags = static_cast<short>(closed ? (mFlags | 1) : (mFlags & ~1));
}

void AcDbPolyline::setPlinegen(bool on) {
  if (writable()) mFlags = static_cast<short>(on ? (mFlags | 128) : (mFlags & ~128));
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
  double w = mVertices.empty() ? 0.0 : mVertices[0].startWidth;
  for (const Vertex& v : mVertices)
    if (v.startWidth != w || v.endWidth != w) return Acad::eInvalidInput;
  width = w;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
  if (!kelhost::db::Finite(width)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  if (width < 0) return Acad::eInvalidInput;
  for (Vertex& v : mVertices) v.startWidth = v.endWidth = width;
  return Acad::eOk;
}

void AcDbPolyline::setElevation(double e) {
  if (!kelhost::db::Finite(e)) return;
  if (writable()) mElevation = e;
}
Acad::ErrorStatus AcDbPolyline::setThickness(double t) { KELHOST_SET(mThickness, t); }
Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& n) {
  if (!kelhost::db::Finite(n)) return Acad::eInvalidInput;
  if (!UsableNormal(n)) return Acad::eInvalidInput;
  KELHOST_SET(mNormal, n.normal());
}

void AcDbPolyline::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  f.subclass(L"AcDbPolyline");
  std::int32_t count = static_cast<std::int32_t>(mVertices.size());
  f.int32(90, count, 0, Presence::kAlways);
  f.int16(70, mFlags, 0, Presence::kAlways);
  // A constant width is written once (43) and applies to every vertex.
  double constant = 0.0;
  bool hasConstant = getConstantWidth(constant) == Acad::eOk;
  if (f.reading() || hasConstant) f.real(43, constant, 0.0, Presence::kAlways);
  f.real(38, mElevation, 0.0, Presence::kUnlessDefault);
  f.real(39, mThickness, 0.0, Presence::kUnlessDefault);
  size_t n = f.beginRepeat(10, mVertices.size());
  bool fill = !f.reading() || !(n == 0 && f.keepsAbsent());
  if (f.reading() && fill) mVertices.assign(n, Vertex());
  for (size_t i = 0; fill && i < n; ++i) {
    Vertex& v = mVertices[i];
    f.enterRecord(i);
    f.point2d(10, v.point, Presence::kRequired);
    f.real(40, v.startWidth, constant, Presence::kAlways);
    f.real(41, v.endWidth, constant, Presence::kAlways);
    f.real(42, v.bulge, 0.0, Presence::kAlways);
    std::int32_t vertexId = 0;
    f.int32(91, vertexId, 0, Presence::kAlways);
  }
  f.endRepeat();
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
  if (f.reading() && mVertices.size() < 2 && !f.keepsAbsent()) f.fail(L"a polyline needs two vertices");
}
