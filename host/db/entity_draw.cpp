// How the database's objects draw themselves: their properties, then their
// geometry as graphics primitives.
#include <cmath>

#include "arx/acgi.h"
#include "arx/dbblkref.h"
#include "arx/dbdim.h"
#include "arx/dbents.h"
#include "arx/dbsymtb.h"
#include "db/curve_path.h"
#include "gi/path_drawing.h"

namespace {

void DrawText(const AcDbText& text, AcGiWorldDraw* wd, const ACHAR* string) {
  const AcGeMatrix3d ocs = AcGeMatrix3d::planeToWorld(text.normal());
  const AcGeVector3d direction = ocs * AcGeVector3d(std::cos(text.rotation()), std::sin(text.rotation()), 0.0);
  wd->geometry().text(text.position(), text.normal(), direction, text.height(), text.widthFactor(), text.oblique(),
                      string);
}

// A block's entities (attribute definitions aside) placed by xform.
void DrawBlock(AcGiWorldDraw* wd, AcDbObjectId blockId, const AcGeMatrix3d& xform) {
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk) return;
  const std::vector<AcDbObjectId> ids = block->entityIds();
  block->close();
  AcGiWorldGeometry& g = wd->geometry();
  g.pushModelTransform(xform);
  for (AcDbObjectId id : ids) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) continue;  // erased, or open for write
    if (!AcDbAttributeDefinition::cast(entity)) g.draw(entity);
    entity->close();
  }
  g.popModelTransform();
}

void DrawAttributes(AcGiWorldDraw* wd, const std::vector<AcDbObjectId>& ids) {
  for (AcDbObjectId id : ids) {
    AcDbEntity* attribute = nullptr;
    if (acdbOpenAcDbEntity(attribute, id, AcDb::kForRead) != Acad::eOk) continue;
    wd->geometry().draw(attribute);
    attribute->close();
  }
}

}  // namespace

Adesk::UInt32 AcDbObject::subSetAttributes(AcGiDrawableTraits*) { return kDrawableNone; }

Adesk::Boolean AcDbObject::subWorldDraw(AcGiWorldDraw*) { return Adesk::kTrue; }

void AcDbObject::subViewportDraw(AcGiViewportDraw*) {}

Adesk::UInt32 AcDbEntity::subSetAttributes(AcGiDrawableTraits* traits) {
  if (traits) {
    traits->setColor(colorIndex());
    traits->setLayer(layerId());
    traits->setLineType(linetypeId());
    traits->setLineWeight(lineWeight());
    traits->setLineTypeScale(linetypeScale());
  }
  return kDrawableIsAnEntity | (visibility() == AcDb::kInvisible ? kDrawableIsInvisible : 0);
}

Adesk::Boolean AcDbEntity::subWorldDraw(AcGiWorldDraw*) { return Adesk::kTrue; }

Adesk::Boolean AcDbCurve::subWorldDraw(AcGiWorldDraw* wd) {
  kelhost::geom::Path path;
  if (wd && buildPath(path)) kelhost::gi::DrawPath(path, wd->geometry());
  return Adesk::kTrue;
}

Adesk::Boolean AcDbPolyline::subWorldDraw(AcGiWorldDraw* wd) {
  if (wd) wd->geometry().pline(*this);
  return Adesk::kTrue;
}

Adesk::Boolean AcDbPoint::subWorldDraw(AcGiWorldDraw* wd) {
  if (wd) wd->geometry().polypoint(1, &mPosition);
  return Adesk::kTrue;
}

Adesk::Boolean AcDbText::subWorldDraw(AcGiWorldDraw* wd) {
  if (wd) DrawText(*this, wd, textStringConst());
  return Adesk::kTrue;
}

Adesk::Boolean AcDbAttributeDefinition::subWorldDraw(AcGiWorldDraw* wd) {
  if (wd) DrawText(*this, wd, tagConst());
  return Adesk::kTrue;
}

Adesk::Boolean AcDbAttribute::subWorldDraw(AcGiWorldDraw* wd) {
  if (wd && !isInvisible()) DrawText(*this, wd, textStringConst());
  return Adesk::kTrue;
}

Adesk::Boolean AcDbBlockReference::subWorldDraw(AcGiWorldDraw* wd) {
  if (!wd) return Adesk::kTrue;
  DrawBlock(wd, blockTableRecord(), blockTransform());
  DrawAttributes(wd, attributeIds());
  return Adesk::kTrue;
}

Adesk::Boolean AcDbMInsertBlock::subWorldDraw(AcGiWorldDraw* wd) {
  if (!wd) return Adesk::kTrue;
  const AcGeMatrix3d placed = blockTransform();
  for (int row = 0; row < rows(); ++row)
    for (int column = 0; column < columns(); ++column)
      DrawBlock(wd, blockTableRecord(), AcGeMatrix3d::translation(elementOffset(column, row)) * placed);
  DrawAttributes(wd, attributeIds());
  return Adesk::kTrue;
}

Adesk::Boolean AcDbDimension::subWorldDraw(AcGiWorldDraw* wd) {
  if (wd) DrawBlock(wd, dimBlockId(), dimBlockTransform());
  return Adesk::kTrue;
}
