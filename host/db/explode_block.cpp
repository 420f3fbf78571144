// Exploding block references: copies of the block's entities placed where
// the reference shows them; an array gives one reference per image.
#include <memory>
#include <vector>

#include "arx/dbblkref.h"
#include "arx/dbsymtb.h"
#include "db/explode_copy.h"
#include "db/sequences.h"
#include "db/stub.h"
#include "dxf/access.h"
#include "ads/rbkind.h"

namespace {
using Made = std::vector<std::unique_ptr<AcDbEntity>>;

void HandOver(Made& made, AcDbVoidPtrArray& entitySet) {
  for (auto& e : made) entitySet.append(e.release());
}
}  // namespace

Acad::ErrorStatus AcDbBlockReference::explode(AcDbVoidPtrArray& entitySet) const {
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(mBlock);
  if (!block || mBlock.isErased()) return Acad::eInvalidInput;
  const AcGeMatrix3d xform = blockTransform();
  Made made;
  for (const AcDbObjectId& id : block->entityIds()) {
    if (id.isErased()) continue;
    auto* entity = kelhost::db::PeekAs<AcDbEntity>(id);
    if (!entity) continue;
    std::unique_ptr<AcDbEntity> copy;
    Acad::ErrorStatus es = kelhost::db::CopyEntity(*entity, copy);
    if (es == Acad::eOk) es = kelhost::db::PlaceCopy(copy, xform);
    if (es != Acad::eOk) return es;  // what was made goes with `made`
    made.push_back(std::move(copy));
  }
  HandOver(made, entitySet);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::explodeToOwnerSpace() const {
  if (!isDatabaseResident()) return Acad::eNotInDatabase;
  AcDbVoidPtrArray parts;
  Acad::ErrorStatus es = explode(parts);
  if (es != Acad::eOk) return es;
  AcDbBlockTableRecord* owner = nullptr;
  es = acdbOpenObject(owner, ownerId(), AcDb::kForWrite);
  for (void* part : parts) {
    auto* entity = static_cast<AcDbEntity*>(part);
    AcDbObjectId id;
    if (es == Acad::eOk) es = owner->appendAcDbEntity(id, entity);
    if (es == Acad::eOk) {
      entity->close();
    } else {
      delete entity;
    }
  }
  if (owner) owner->close();
  return es;
}

Acad::ErrorStatus AcDbMInsertBlock::explode(AcDbVoidPtrArray& entitySet) const {
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(blockTableRecord());
  if (!block || blockTableRecord().isErased()) return Acad::eInvalidInput;
  auto* self = const_cast<AcDbMInsertBlock*>(this);  // only read
  const std::vector<AcDbEntity*> attributes = kelhost::db::LiveSubentities(self->sequence());
  const resbuf* xdata = kelhost::dxf::Access::xdata(this);
  Made made;
  for (int row = 0; row < mRows; ++row)
    for (int column = 0; column < mColumns; ++column) {
      const AcGeVector3d offset = elementOffset(column, row);
      auto ref = std::make_unique<AcDbBlockReference>(position() + offset, blockTableRecord());
      ref->setPropertiesFrom(this);
      ref->setScaleFactors(scaleFactors());
      ref->setRotation(rotation());
      ref->setNormal(normal());
      if (xdata) kelhost::dxf::Access::xdata(ref.get()) = kelhost::rb::CopyChain(xdata);
      for (AcDbEntity* attribute : attributes) {
        std::unique_ptr<AcDbEntity> copy;
        Acad::ErrorStatus es = kelhost::db::CopyEntity(*attribute, copy);
        if (es == Acad::eOk) es = copy->transformBy(AcGeMatrix3d::translation(offset));
        AcDbObjectId none;
        if (es == Acad::eOk) es = kelhost::db::AppendToSequence(ref.get(), ref->sequence(), copy.get(), none);
        if (es != Acad::eOk) return es;
        copy.release();
      }
      made.push_back(std::move(ref));
    }
  HandOver(made, entitySet);
  return Acad::eOk;
}
