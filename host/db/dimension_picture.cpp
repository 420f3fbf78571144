#include "db/dimension_picture.h"

#include "arx/dbdatabase.h"
#include "arx/dbmtext.h"
#include "db/dimension_overrides.h"
#include "db/stub.h"

namespace kelhost::db {
namespace {
// The style groups of each part's colour and lineweight.
constexpr int kLineColor = 176, kExtensionColor = 177, kTextColor = 178;
constexpr int kLineWeight = 371, kExtensionWeight = 372;
}  // namespace

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
    : mDb(db), mNormal(normal.normal()), mStyle(PeekAs<AcDbDimStyleTableRecord>(style)) {
  if (dimension) {
    mOwnTextHeight = DimOverrideReal(dimension, 140);
    mOwnTextStyle = DimOverrideRecord(dimension, 340);
  }
  if (!mStyle) {
    mDefaults = std::make_unique<AcDbDimStyleTableRecord>();
    mStyle = mDefaults.get();
  }
  if (mStyle->dimscale() > 0) mScale = mStyle->dimscale();
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

void DimPicture::arrow(const AcGePoint3d& tip, const AcGeVector3d& back) {
  const double size = arrowSize();
  if (!(size > 0) || back.isZeroLength()) return;
  // In the plane of the normal, at the tip's elevation.
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(mNormal);
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
  const AcDbObjectId chosen = mOwnTextStyle ? *mOwnTextStyle : mStyle->dimtxsty();
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
