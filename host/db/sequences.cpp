#include "db/sequences.h"

#include "arx/dbblkref.h"
#include "arx/dbdatabase.h"
#include "dxf/access.h"

namespace kelhost::db {

Acad::ErrorStatus AppendToSequence(AcDbEntity* owner, AcDbSubentSequence& seq, AcDbEntity* item, AcDbObjectId& id) {
  id.setNull();
  if (!item) return Acad::eNullEntityPointer;
  if (!owner->isDatabaseResident()) return Acad::eNotInDatabase;
  if (!owner->isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (item->isDatabaseResident()) return Acad::eAlreadyInDb;
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

AcDbSubentSequence* SequenceOf(AcDbObject* object) {
  if (auto* p = AcDb2dPolyline::cast(object)) return &p->sequence();
  if (auto* p = AcDb3dPolyline::cast(object)) return &p->sequence();
  if (auto* r = AcDbBlockReference::cast(object)) return &r->sequence();
  return nullptr;
}

}  // namespace kelhost::db
