#include "db/dimension_picture.h"

#include <cmath>
#include <cstdlib>

#include "arx/dbblkref.h"
#include "arx/dbdatabase.h"
#include "arx/dbdim.h"
#include "db/dimension_arrows.h"
#include "db/dimension_style_data.h"
#include "arx/dbmtext.h"
#include "db/stub.h"

namespace kelhost::db {
namespace {
// The style groups of each part's colour and lineweight.
constexpr int kLineColor = 176, kExtensionColor = 177, kTextColor = 178;
constexpr int kLineWeight = 371, kExtensionWeight = 372;
constexpr double kQuarterTurn = 1.5707963267948966;
}  // namespace

double ReadableAngle(double angle) {
  constexpr double kPi = 2 * kQuarterTurn;
  double a = std::fmod(angle, 2 * kPi);
  if (a < 0) a += 2 * kPi;
  if (a > kPi / 2 + 1e-9 && a <= 3 * kPi / 2 + 1e-9) a -= kPi;
  return a;
}

std::wstring ShownText(const AcDbDimension& dim, double measured) {
  ACHAR* text = nullptr;
  dim.formatMeasurement(text, measured);
  std::wstring shown = text ? text : L"";
  std::free(text);
  return shown;
}

AcDbObjectId DefpointsLayer(AcDbDatabase* db) {
  AcDbObjectId id;
  auto* table = PeekAs<AcDbLayerTable>(db->layerTableId());
  if (table && table->getAt(L"Defpoints", id) == Acad::eOk) return id;
  AcDbLayerTable* writable = nullptr;
  if (acdbOpenObject(writable, db->layerTableId(), AcDb::kForWrite) != Acad::eOk) return AcDbObjectId::kNull;
  auto* layer = new AcDbLayerTableRecord;
  layer->setName(L"Defpoints");
  layer->setIsPlottable(false);
  layer->setLinetypeObjectId(db->continuousLinetype());
  if (writable->add(id, layer) == Acad::eOk) {
    layer->close();
  } else {
    delete layer;
    id.setNull();
  }
  writable->close();
  return id;
}

DimPicture::DimPicture(AcDbDatabase* db, AcDbObjectId style, const AcGeVector3d& normal, const AcDbObject* dimension)
    : mDb(db), mNormal(normal.normal()), mStyle(EffectiveDimStyle(style, dimension)) {
  if (mStyle->dimscale() > 0) mScale = mStyle->dimscale();
}

namespace {
AcDbObjectId ArrowOf(const AcDbDimStyleTableRecord& style, int end) {
  if (!style.dimsah()) return style.dimblk();
  return end == 1 ? style.dimblk1() : style.dimblk2();
}
}  // namespace

double DimPicture::lineExtension() const {
  const bool strokes = mStyle->dimtsz() > 0 || (IsTickArrow(ArrowOf(*mStyle, 1)) && IsTickArrow(ArrowOf(*mStyle, 2)));
  return strokes ? mStyle->dimdle() * mScale : 0.0;
}

void DimPicture::add(AcDbEntity* entity, int colorCode, int weightCode) {
  mEntities.emplace_back(entity);
  entity->setLayer(mDb->layerZero());
  entity->setLinetype(mDb->byBlockLinetype());
  // Without a style colour: BYBLOCK.
  const int color = colorCode ? mStyle->integer(colorCode) : 0;
  entity->setColorIndex(static_cast<Adesk::UInt16>(color >= 0 && color <= 256 ? color : 0));
  if (weightCode) entity->setLineWeight(static_cast<AcDb::LineWeight>(mStyle->integer(weightCode)));
}

void DimPicture::dimensionLine(const AcGePoint3d& from, const AcGePoint3d& to) {
  add(new AcDbLine(from, to), kLineColor, kLineWeight);
}

void DimPicture::extensionLine(const AcGePoint3d& from, const AcGePoint3d& to) {
  add(new AcDbLine(from, to), kExtensionColor, kExtensionWeight);
}

void DimPicture::arrow(int end, const AcGePoint3d& tip, const AcGeVector3d& back) {
  if (back.isZeroLength()) return;
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(mNormal);
  const AcGeVector3d out = toPlane * -back;
  const double outAngle = std::atan2(out.y, out.x);
  if (mStyle->dimtsz() > 0) {
    // An oblique stroke across the end, DIMTSZ long each way.
    const double half = mStyle->dimtsz() * mScale / 2;
    const AcGeVector3d slant =
        AcGeMatrix3d::planeToWorld(mNormal) * AcGeVector3d(std::cos(outAngle + kQuarterTurn / 2), std::sin(outAngle + kQuarterTurn / 2), 0);
    add(new AcDbLine(tip - slant * half * std::sqrt(2.0), tip + slant * half * std::sqrt(2.0)), kLineColor, kLineWeight);
    return;
  }
  const double size = arrowSize();
  if (!(size > 0)) return;
  const AcDbObjectId block = ArrowOf(*mStyle, end);
  if (PeekAs<AcDbBlockTableRecord>(block)) {
    auto* head = new AcDbBlockReference(tip, block);
    head->setNormal(mNormal);
    head->setPosition(tip);
    head->setScaleFactors(AcGeVector3d(size, size, size));
    head->setRotation(outAngle);
    add(head, kLineColor, kLineWeight);
    return;
  }
  // In the plane of the normal, at the tip's elevation.
  const AcGePoint3d t = toPlane * tip, b = toPlane * (tip + back.normal() * size);
  auto* head = new AcDbPolyline(2);
  head->addVertexAt(0, AcGePoint2d(b.x, b.y), 0.0, size / 3.0, 0.0);
  head->addVertexAt(1, AcGePoint2d(t.x, t.y));
  head->setNormal(mNormal);
  head->setElevation(t.z);
  add(head, kLineColor, kLineWeight);
}

void DimPicture::text(const AcGePoint3d& middle, double angle, const std::wstring& contents) {
  if (contents.empty()) return;
  auto* text = new AcDbMText;
  text->setNormal(mNormal);
  text->setLocation(middle);
  text->setRotation(angle);
  text->setAttachment(AcDbMText::kMiddleCenter);
  if (textHeight() > 0) text->setTextHeight(textHeight());
  const AcDbObjectId chosen = mStyle->dimtxsty();
  const AcDbObjectId style = chosen.isNull() ? mDb->textstyle() : chosen;
  if (PeekAs<AcDbTextStyleTableRecord>(style)) text->setTextStyle(style);
  text->setContents(contents.c_str());
  add(text, kTextColor, 0);
}

void DimPicture::definitionPoint(const AcGePoint3d& point) {
  if (mDefpoints.isNull()) mDefpoints = DefpointsLayer(mDb);
  auto* p = new AcDbPoint(point);
  p->setNormal(mNormal);
  add(p, 0, 0);
  if (!mDefpoints.isNull()) p->setLayer(mDefpoints);
}

}  // namespace kelhost::db
