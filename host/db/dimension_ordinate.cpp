// Ordinate dimensions: their points and groups, what they measure, and
// their picture (see arx/dbdim.h).
#include <cmath>

#include "arx/dbdim.h"
#include "db/dimension_picture.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbOrdinateDimension, AcDbDimension, L"DIMENSION")

AcDbOrdinateDimension::AcDbOrdinateDimension(bool useXAxis, const AcGePoint3d& definingPoint,
                                             const AcGePoint3d& leaderEndPoint, const ACHAR* dimText,
                                             AcDbObjectId dimStyle)
    : mFeature(definingPoint), mLeaderEnd(leaderEndPoint) {
  setFlags(static_cast<short>(useXAxis ? flags() | kXAxis : flags() & ~kXAxis));
  setDimensionText(dimText);
  if (!dimStyle.isNull()) setDimensionStyle(dimStyle);
}

Acad::ErrorStatus AcDbOrdinateDimension::setAxis(bool x) {
  if (!writable()) return Acad::eNotOpenForWrite;
  setFlags(static_cast<short>(x ? flags() | kXAxis : flags() & ~kXAxis));
  changed();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbOrdinateDimension::useXAxis() { return setAxis(true); }
Acad::ErrorStatus AcDbOrdinateDimension::useYAxis() { return setAxis(false); }

Acad::ErrorStatus AcDbOrdinateDimension::setOrigin(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mDefinitionPoint, p);
}
Acad::ErrorStatus AcDbOrdinateDimension::setDefiningPoint(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mFeature, p);
}
Acad::ErrorStatus AcDbOrdinateDimension::setLeaderEndPoint(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mLeaderEnd, p);
}

Acad::ErrorStatus AcDbOrdinateDimension::measurement(double& value) const {
  const AcGeVector3d offset = AcGeMatrix3d::worldToPlane(normal()) * (mFeature - mDefinitionPoint);
  value = std::fabs(isUsingXAxis() ? offset.x : offset.y);
  return Acad::eOk;
}

void AcDbOrdinateDimension::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbDimension::dxfFields(f);
  f.subclass(L"AcDbOrdinateDimension");
  f.point(13, mFeature, Presence::kRequired);
  f.point(14, mLeaderEnd, Presence::kRequired);
}

void AcDbOrdinateDimension::transformPoints(const AcGeMatrix3d& m) {
  mDefinitionPoint = m * mDefinitionPoint;
  mFeature = m * mFeature;
  mLeaderEnd = m * mLeaderEnd;
}

void AcDbOrdinateDimension::definingPoints(AcGePoint3dArray& points) const {
  points.append(mDefinitionPoint);
  points.append(mFeature);
  points.append(mLeaderEnd);
}

void AcDbOrdinateDimension::drawPicture(kelhost::db::DimPicture& pic) {
  const AcGeVector3d span = mLeaderEnd - mFeature;
  const AcGeVector3d dir = span.isZeroLength() ? AcGeVector3d::kYAxis : span.normal();
  pic.extensionLine(mFeature + dir * pic.extensionOffset(), mLeaderEnd);
  const AcGeVector3d d = AcGeMatrix3d::worldToPlane(pic.normal()) * dir;
  const double angle = textRotation() != 0 ? textRotation()
                       : pic.style().dimtih() ? 0.0
                                              : kelhost::db::ReadableAngle(std::atan2(d.y, d.x));
  double measured = 0.0;
  measurement(measured);
  AcGePoint3d text = textPosition();
  if (isUsingDefaultTextPosition()) text = mLeaderEnd + dir * (pic.textGap() + pic.textHeight());
  pic.text(text, angle, kelhost::db::ShownText(*this, measured));
  placeText(text);
  pic.definitionPoint(mDefinitionPoint);
  pic.definitionPoint(mFeature);
  pic.definitionPoint(mLeaderEnd);
}
