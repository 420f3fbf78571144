// Radial and diametric dimensions: their points and groups, what they
// measure, and their picture (see arx/dbdim.h).
#include <cmath>

#include "arx/dbdim.h"
#include "db/dimension_picture.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbRadialDimension, AcDbDimension, L"DIMENSION")
KELHOST_RX_DEFINE(AcDbDiametricDimension, AcDbDimension, L"DIMENSION")

namespace {

// The text along a line of direction along (in the plane of the picture),
// unless the style keeps it horizontal or the dimension has its own angle.
double TextAngle(const kelhost::db::DimPicture& pic, const AcGeVector3d& along, double ownAngle) {
  if (ownAngle != 0) return ownAngle;
  if (pic.style().dimtih()) return 0.0;
  const AcGeVector3d d = AcGeMatrix3d::worldToPlane(pic.normal()) * along;
  return kelhost::db::ReadableAngle(std::atan2(d.y, d.x));
}

// A centre mark: a cross of DIMCEN (times DIMSCALE) each way.
void CentreMark(kelhost::db::DimPicture& pic, const AcGePoint3d& centre) {
  const double size = pic.style().dimcen() * pic.scale();
  if (!(size > 0)) return;
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(pic.normal());
  const AcGeVector3d x = toWorld * AcGeVector3d(size, 0, 0), y = toWorld * AcGeVector3d(0, size, 0);
  pic.dimensionLine(centre - x, centre + x);
  pic.dimensionLine(centre - y, centre + y);
}

// Where the default text goes at the end of a leader from tip along dir
// (on the line through middle without one): a gap past the leader's end.
AcGePoint3d TextAt(const kelhost::db::DimPicture& pic, const AcGePoint3d& middle, const AcGePoint3d& tip,
                   const AcGeVector3d& dir, double leader) {
  if (leader > 0) return tip + dir * (leader + pic.textGap() + pic.textHeight());
  return middle;
}

}  // namespace

// ---------------------------------------------------------------- radial
AcDbRadialDimension::AcDbRadialDimension(const AcGePoint3d& center, const AcGePoint3d& chordPoint, double leaderLength,
                                         const ACHAR* dimText, AcDbObjectId dimStyle)
    : mChord(chordPoint), mLeader(leaderLength) {
  mDefinitionPoint = center;
  setDimensionText(dimText);
  if (!dimStyle.isNull()) setDimensionStyle(dimStyle);
}

Acad::ErrorStatus AcDbRadialDimension::setCenter(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mDefinitionPoint, p);
}
Acad::ErrorStatus AcDbRadialDimension::setChordPoint(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mChord, p);
}
Acad::ErrorStatus AcDbRadialDimension::setLeaderLength(double length) {
  if (!std::isfinite(length)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mLeader, length);
}

Acad::ErrorStatus AcDbRadialDimension::measurement(double& value) const {
  value = mDefinitionPoint.distanceTo(mChord);
  return Acad::eOk;
}

void AcDbRadialDimension::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbDimension::dxfFields(f);
  f.subclass(L"AcDbRadialDimension");
  f.point(15, mChord, Presence::kRequired);
  f.real(40, mLeader, 0.0, Presence::kUnlessDefault);
}

void AcDbRadialDimension::transformPoints(const AcGeMatrix3d& m) {
  const double scale = m.scale();
  mDefinitionPoint = m * mDefinitionPoint;
  mChord = m * mChord;
  mLeader *= scale;
}

void AcDbRadialDimension::definingPoints(AcGePoint3dArray& points) const {
  points.append(mDefinitionPoint);
  points.append(mChord);
}

void AcDbRadialDimension::drawPicture(kelhost::db::DimPicture& pic) {
  const AcGeVector3d span = mChord - mDefinitionPoint;
  const AcGeVector3d dir = span.isZeroLength() ? AcGeVector3d::kXAxis : span.normal();
  pic.dimensionLine(mDefinitionPoint, mChord);
  if (mLeader > 0) pic.dimensionLine(mChord, mChord + dir * mLeader);
  pic.arrow(1, mChord, -dir);
  CentreMark(pic, mDefinitionPoint);
  double measured = 0.0;
  measurement(measured);
  AcGePoint3d text = textPosition();
  if (isUsingDefaultTextPosition())
    text = TextAt(pic, mDefinitionPoint + span * 0.5, mChord, dir, mLeader);
  pic.text(text, TextAngle(pic, dir, textRotation()), kelhost::db::ShownText(*this, measured));
  placeText(text);
  pic.definitionPoint(mDefinitionPoint);
  pic.definitionPoint(mChord);
}

// ---------------------------------------------------------------- diametric
AcDbDiametricDimension::AcDbDiametricDimension(const AcGePoint3d& chordPoint, const AcGePoint3d& farChordPoint,
                                               double leaderLength, const ACHAR* dimText, AcDbObjectId dimStyle)
    : mFarChord(farChordPoint), mLeader(leaderLength) {
  mDefinitionPoint = chordPoint;
  setDimensionText(dimText);
  if (!dimStyle.isNull()) setDimensionStyle(dimStyle);
}

Acad::ErrorStatus AcDbDiametricDimension::setChordPoint(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mDefinitionPoint, p);
}
Acad::ErrorStatus AcDbDiametricDimension::setFarChordPoint(const AcGePoint3d& p) {
  if (!kelhost::db::Finite(p)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mFarChord, p);
}
Acad::ErrorStatus AcDbDiametricDimension::setLeaderLength(double length) {
  if (!std::isfinite(length)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mLeader, length);
}

Acad::ErrorStatus AcDbDiametricDimension::measurement(double& value) const {
  value = mDefinitionPoint.distanceTo(mFarChord);
  return Acad::eOk;
}

void AcDbDiametricDimension::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbDimension::dxfFields(f);
  f.subclass(L"AcDbDiametricDimension");
  f.point(15, mFarChord, Presence::kRequired);
  f.real(40, mLeader, 0.0, Presence::kUnlessDefault);
}

void AcDbDiametricDimension::transformPoints(const AcGeMatrix3d& m) {
  const double scale = m.scale();
  mDefinitionPoint = m * mDefinitionPoint;
  mFarChord = m * mFarChord;
  mLeader *= scale;
}

void AcDbDiametricDimension::definingPoints(AcGePoint3dArray& points) const {
  points.append(mDefinitionPoint);
  points.append(mFarChord);
}

void AcDbDiametricDimension::drawPicture(kelhost::db::DimPicture& pic) {
  const AcGeVector3d span = mFarChord - mDefinitionPoint;
  const AcGeVector3d dir = span.isZeroLength() ? AcGeVector3d::kXAxis : span.normal();
  pic.dimensionLine(mDefinitionPoint, mFarChord);
  if (mLeader > 0) pic.dimensionLine(mFarChord, mFarChord + dir * mLeader);
  pic.arrow(1, mDefinitionPoint, dir);
  pic.arrow(2, mFarChord, -dir);
  double measured = 0.0;
  measurement(measured);
  AcGePoint3d text = textPosition();
  if (isUsingDefaultTextPosition()) {
    const double angle = TextAngle(pic, dir, 0.0);
    const AcGeVector3d up = AcGeMatrix3d::planeToWorld(pic.normal()) * AcGeVector3d(-std::sin(angle), std::cos(angle), 0);
    const AcGePoint3d middle = mDefinitionPoint + span * 0.5;
    text = TextAt(pic, pic.style().dimtad() != 0 ? middle + up * (pic.textGap() + pic.textHeight() / 2) : middle,
                  mFarChord, dir, mLeader);
  }
  pic.text(text, TextAngle(pic, dir, textRotation()), kelhost::db::ShownText(*this, measured));
  placeText(text);
  pic.definitionPoint(mDefinitionPoint);
  pic.definitionPoint(mFarChord);
}
