// Aligned and rotated dimensions: their points and groups, what they
// measure, and their picture. Both draw alike: two extension lines from
// the measured points to the dimension line (square to it, or at the
// oblique angle), the dimension line between them with an arrowhead at
// each end inside, and the text in the middle.
//
// Simplifications of the picture: the arrowheads always sit inside (even
// where they do not fit), the dimension line is not broken around a
// centred text, tolerances are not drawn, and a text the style puts above
// the line (DIMTAD not 0) sits a gap plus half its height away on the
// text's upper side.
#include <cmath>
#include <cstdlib>
#include <limits>

#include "arx/dbdim.h"
#include "db/curve_geometry.h"
#include "db/dimension_picture.h"
#include "db/dimension_text.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;
using kelhost::geom::kPi;

KELHOST_RX_DEFINE(AcDbAlignedDimension, AcDbDimension, L"DIMENSION")
KELHOST_RX_DEFINE(AcDbRotatedDimension, AcDbDimension, L"DIMENSION")

namespace {

constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();

// Where the extension lines meet the dimension line, in WCS.
struct LinearLayout {
  AcGePoint3d foot1, foot2;
  AcGeVector3d along;  // the dimension line's direction
  double angle;        // of along, in the plane
};

// The dimension line runs through onLine at angle (in the plane of
// normal); the extension lines leave x1 and x2 square to it, or at the
// oblique angle to it.
LinearLayout LayOutLinear(const AcGePoint3d& x1, const AcGePoint3d& x2, const AcGePoint3d& onLine,
                          const AcGeVector3d& normal, double angle, double oblique) {
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal), toWorld = AcGeMatrix3d::planeToWorld(normal);
  const AcGePoint3d p = toPlane * onLine;
  const AcGeVector2d d(std::cos(angle), std::sin(angle));
  // 0 (or a slant along the line) means square to it.
  const double slant = std::fmod(oblique, kPi);
  const bool square = std::fabs(std::sin(slant)) < 1e-9;
  const AcGeVector2d e = square ? AcGeVector2d(-d.y, d.x) : AcGeVector2d(std::cos(angle + slant), std::sin(angle + slant));
  auto cross = [](const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; };
  auto foot = [&](const AcGePoint3d& x) {
    const AcGePoint3d q = toPlane * x;
    const AcGeVector2d toLine(p.x - q.x, p.y - q.y);
    const double t = cross(toLine, d) / cross(e, d);
    return toWorld * AcGePoint3d(q.x + e.x * t, q.y + e.y * t, p.z);
  };
  return {foot(x1), foot(x2), toWorld * AcGeVector3d(d.x, d.y, 0.0), angle};
}

// Both kinds draw through this (see the file's comment).
void DrawLinear(kelhost::db::DimPicture& pic, const LinearLayout& g, const AcGePoint3d& x1, const AcGePoint3d& x2,
                const AcGePoint3d& defPoint, const std::wstring& text, double ownTextAngle, bool userPosition,
                AcGePoint3d& textPosition) {
  const AcDbDimStyleTableRecord& style = pic.style();
  const AcGePoint3d xs[2] = {x1, x2}, feet[2] = {g.foot1, g.foot2};
  const AcGeVector3d square = pic.normal().crossProduct(g.along);
  for (int i = 0; i < 2; ++i) {
    if (style.integer(75 + i) != 0) continue;  // DIMSE1, DIMSE2
    AcGeVector3d out = feet[i] - xs[i];
    out = out.isZeroLength() ? square : out.normal();
    pic.extensionLine(xs[i] + out * pic.extensionOffset(), feet[i] + out * pic.extensionBeyond());
  }
  if (!g.foot1.isEqualTo(g.foot2)) {
    const AcGeVector3d u = (g.foot2 - g.foot1).normal();
    const double beyond = pic.lineExtension();
    pic.dimensionLine(g.foot1 - u * beyond, g.foot2 + u * beyond);
    pic.arrow(1, g.foot1, u);
    pic.arrow(2, g.foot2, -u);
  } else {
    pic.dimensionLine(g.foot1, g.foot2);
  }
  const double angle = ownTextAngle != 0 ? ownTextAngle : style.dimtih() ? 0.0 : kelhost::db::ReadableAngle(g.angle);
  if (!userPosition) {
    const AcGePoint3d middle = g.foot1 + (g.foot2 - g.foot1) * 0.5;
    const AcGeVector3d up = AcGeMatrix3d::planeToWorld(pic.normal()) * AcGeVector3d(-std::sin(angle), std::cos(angle), 0);
    textPosition = style.dimtad() != 0 ? middle + up * (pic.textGap() + pic.textHeight() / 2) : middle;
  }
  pic.text(textPosition, angle, text);
  pic.definitionPoint(x1);
  pic.definitionPoint(x2);
  pic.definitionPoint(defPoint);
}

// The linear groups after AcDbDimension's: the subclass AcDbAlignedDimension
// (12 13 14, then 50 for a rotated one, 52), and the AcDbRotatedDimension
// marker. 50 and 52 are also taken from after that marker.
void LinearFields(kelhost::dxf::GroupFiler& f, AcGePoint3d& x1, AcGePoint3d& x2, double& oblique, double* rotation) {
  f.point(13, x1, Presence::kRequired);
  f.point(14, x2, Presence::kRequired);
  if (rotation) f.real(50, *rotation, 0.0, Presence::kAlways);
  f.real(52, oblique, 0.0, Presence::kUnlessDefault);
  if (!rotation) return;
  f.subclass(L"AcDbRotatedDimension");
  if (!f.reading()) return;
  for (auto [code, value] : {std::pair<int, double*>{50, rotation}, {52, &oblique}}) {
    double got = kAbsent;
    f.real(code, got, kAbsent, Presence::kAlways);
    if (!std::isnan(got)) *value = got;
  }
}

}  // namespace

// ---------------------------------------------------------------- aligned
AcDbAlignedDimension::AcDbAlignedDimension(const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                                           const AcGePoint3d& dimLinePoint, const ACHAR* dimText,
                                           AcDbObjectId dimStyle)
    : mXLine1(xLine1Point), mXLine2(xLine2Point) {
  mDefinitionPoint = dimLinePoint;
  setDimensionText(dimText);
  if (!dimStyle.isNull()) setDimensionStyle(dimStyle);
}

Acad::ErrorStatus AcDbAlignedDimension::setXLine1Point(const AcGePoint3d& p) {
  KELHOST_SET_REDRAWN(mXLine1, p);
}
Acad::ErrorStatus AcDbAlignedDimension::setXLine2Point(const AcGePoint3d& p) {
  KELHOST_SET_REDRAWN(mXLine2, p);
}
Acad::ErrorStatus AcDbAlignedDimension::setDimLinePoint(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mDefinitionPoint, p);
}
Acad::ErrorStatus AcDbAlignedDimension::setOblique(double angle) {
  if (!kelhost::db::Finite(angle)) return Acad::eInvalidInput;
  if (!std::isfinite(angle)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mOblique, angle);
}

Acad::ErrorStatus AcDbAlignedDimension::measurement(double& value) const {
  value = mXLine1.distanceTo(mXLine2);
  return Acad::eOk;
}

void AcDbAlignedDimension::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbDimension::dxfFields(f);
  f.subclass(L"AcDbAlignedDimension");
  blockPositionField(f);
  LinearFields(f, mXLine1, mXLine2, mOblique, nullptr);
}

void AcDbAlignedDimension::transformPoints(const AcGeMatrix3d& m) {
  mXLine1 = m * mXLine1;
  mXLine2 = m * mXLine2;
  mDefinitionPoint = m * mDefinitionPoint;
  if (m.det() < 0) mOblique = -mOblique;
}

void AcDbAlignedDimension::definingPoints(AcGePoint3dArray& points) const {
  points.append(mXLine1);
  points.append(mXLine2);
  points.append(mDefinitionPoint);
}

void AcDbAlignedDimension::drawPicture(kelhost::db::DimPicture& picture) {
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal());
  const AcGeVector3d span = toPlane * (mXLine2 - mXLine1);
  const double angle = std::hypot(span.x, span.y) > 0 ? std::atan2(span.y, span.x) : 0.0;
  const LinearLayout g = LayOutLinear(mXLine1, mXLine2, mDefinitionPoint, normal(), angle, mOblique);
  double measured = 0.0;
  measurement(measured);
  AcGePoint3d text = textPosition();
  DrawLinear(picture, g, mXLine1, mXLine2, mDefinitionPoint, kelhost::db::ShownText(*this, measured), textRotation(),
                          !isUsingDefaultTextPosition(), text);
  placeText(text);
}

// ---------------------------------------------------------------- rotated
AcDbRotatedDimension::AcDbRotatedDimension(double rotation, const AcGePoint3d& xLine1Point,
                                           const AcGePoint3d& xLine2Point, const AcGePoint3d& dimLinePoint,
                                           const ACHAR* dimText, AcDbObjectId dimStyle)
    : mXLine1(xLine1Point), mXLine2(xLine2Point), mRotation(rotation) {
  mDefinitionPoint = dimLinePoint;
  setDimensionText(dimText);
  if (!dimStyle.isNull()) setDimensionStyle(dimStyle);
}

Acad::ErrorStatus AcDbRotatedDimension::setXLine1Point(const AcGePoint3d& p) {
  KELHOST_SET_REDRAWN(mXLine1, p);
}
Acad::ErrorStatus AcDbRotatedDimension::setXLine2Point(const AcGePoint3d& p) {
  KELHOST_SET_REDRAWN(mXLine2, p);
}
Acad::ErrorStatus AcDbRotatedDimension::setDimLinePoint(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mDefinitionPoint, p);
}
Acad::ErrorStatus AcDbRotatedDimension::setOblique(double angle) {
  if (!kelhost::db::Finite(angle)) return Acad::eInvalidInput;
  if (!std::isfinite(angle)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mOblique, angle);
}
Acad::ErrorStatus AcDbRotatedDimension::setRotation(double angle) {
  if (!kelhost::db::Finite(angle)) return Acad::eInvalidInput;
  if (!std::isfinite(angle)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mRotation, angle);
}

Acad::ErrorStatus AcDbRotatedDimension::measurement(double& value) const {
  const AcGeVector3d along =
      AcGeMatrix3d::planeToWorld(normal()) * AcGeVector3d(std::cos(mRotation), std::sin(mRotation), 0.0);
  value = std::fabs((mXLine2 - mXLine1).dotProduct(along));
  return Acad::eOk;
}

void AcDbRotatedDimension::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbDimension::dxfFields(f);
  f.subclass(L"AcDbAlignedDimension");
  blockPositionField(f);
  LinearFields(f, mXLine1, mXLine2, mOblique, &mRotation);
}

void AcDbRotatedDimension::transformPoints(const AcGeMatrix3d& m) {
  const AcGeVector3d along =
      AcGeMatrix3d::planeToWorld(normal()) * AcGeVector3d(std::cos(mRotation), std::sin(mRotation), 0.0);
  const AcGeVector3d newNormal = kelhost::geom::TransformNormal(m, normal());
  mXLine1 = m * mXLine1;
  mXLine2 = m * mXLine2;
  mDefinitionPoint = m * mDefinitionPoint;
  mRotation = kelhost::geom::OcsAngle(newNormal, m * along);
  if (m.det() < 0) mOblique = -mOblique;
}

void AcDbRotatedDimension::definingPoints(AcGePoint3dArray& points) const {
  points.append(mXLine1);
  points.append(mXLine2);
  points.append(mDefinitionPoint);
}

void AcDbRotatedDimension::drawPicture(kelhost::db::DimPicture& picture) {
  const LinearLayout g = LayOutLinear(mXLine1, mXLine2, mDefinitionPoint, normal(), mRotation, mOblique);
  double measured = 0.0;
  measurement(measured);
  AcGePoint3d text = textPosition();
  DrawLinear(picture, g, mXLine1, mXLine2, mDefinitionPoint, kelhost::db::ShownText(*this, measured), textRotation(),
                          !isUsingDefaultTextPosition(), text);
  placeText(text);
}
