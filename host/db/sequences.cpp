#include "db/sequences.h"

#include "arx/dbblkref.h"
#include "arx/dbdatabase.h"
#include "db/stub.h"
#include "dxf/access.h"

namespace kelhost::db {

Acad::ErrorStatus AppendToSequence(AcDbEntity* owner, AcDbSubentSequence& seq, AcDbEntity* item, AcDbObjectId& id) {
  id.setNull();
  if (!item) return Acad::eNullEntityPointer;
  if (item->isDatabaseResident()) return Acad::eAlreadyInDb;
  if (!owner->isDatabaseResident()) {
    for (const auto& held : seq.pending)
      if (held.get() == item) return Acad::eAlreadyInDb;
    seq.pending.emplace_back(item);
    return Acad::eOk;
  }
  if (!owner->isWriteEnabled()) return Acad::eNotOpenForWrite;
  AcDbDatabase* db = owner->database();
  if (item->layerId().isNull()) item->setPropertiesFrom(owner);
  Acad::ErrorStatus es = db->addAcDbObject(id, item);
  if (es != Acad::eOk) return es;
  dxf::Access::setOwner(item, owner->objectId());
  seq.items.push_back(id);
  if (seq.end.isNull()) {
    auto* end = new AcDbSequenceEnd;
    end->setPropertiesFrom(owner);
    if (db->addAcDbObject(seq.end, end) != Acad::eOk) {
      delete end;
      return Acad::eOk;
    }
    dxf::Access::setOwner(end, owner->objectId());
    end->close();
  }
  return Acad::eOk;
}

void CommitPendingSubentities(AcDbObject* owner) {
  auto* entity = AcDbEntity::cast(owner);
  AcDbSubentSequence* seq = SequenceOf(owner);
  if (!entity || !seq || seq->pending.empty()) return;
  std::vector<std::unique_ptr<AcDbEntity>> pending = std::move(seq->pending);
  seq->pending.clear();
  for (auto& item : pending) {
    AcDbObjectId id;
    if (AppendToSequence(entity, *seq, item.get(), id) == Acad::eOk) item.release()->close();
  }
}

std::vector<AcDbEntity*> LiveSubentities(const AcDbSubentSequence& seq) {
  std::vector<AcDbEntity*> out;
  for (const AcDbObjectId& id : seq.items)
    if (!id.isErased())
      if (auto* e = PeekAs<AcDbEntity>(id)) out.push_back(e);
  for (const auto& e : seq.pending) out.push_back(e.get());
  return out;
}

AcDbSubentSequence* SequenceOf(AcDbObject* object) {
  if (auto* p = AcDb2dPolyline::cast(object)) return &p->sequence();
  if (auto* p = AcDb3dPolyline::cast(object)) return &p->sequence();
  if (auto* r = AcDbBlockReference::cast(object)) return &r->sequence();
  return nullptr;
}

}  // namespace kelhost::db
