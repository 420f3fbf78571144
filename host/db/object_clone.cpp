// AcDbObject::deepClone and wblockClone: one object (with what it owns)
// cloned through the object copier into an owner the caller holds open,
// or outside any database when the owner cannot hold it. No exception
// leaves them.
#include <memory>

#include "arx/dbdatabase.h"
#include "arx/dbidmap.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/object_copier.h"
#include "db/stub.h"

using kelhost::db::ObjectCopier;

namespace {

// Where a clone made for a database itself goes: a record into that
// drawing's table of its kind; an entity into the block its own block
// became (the map says which).
AcDbObjectId OwnerInDatabase(const AcDbObject& object, AcDbDatabase* db, const AcDbIdMapping& map) {
  if (auto* record = AcDbSymbolTableRecord::cast(&object)) {
    const kelhost::db::DatabaseState& from = object.database()->state();
    for (int i = 0; i < static_cast<int>(kelhost::db::Table::kCount); ++i)
      if (from.tables[i] == record->ownerId()) return db->state().tables[i];
    return AcDbObjectId::kNull;
  }
  const AcDbObjectId owner = map.lookup(object.ownerId());
  return owner.database() == db ? owner : AcDbObjectId::kNull;
}

Acad::ErrorStatus CloneOne(const AcDbObject& object, AcRxObject* owner, AcDbObject*& clone, AcDbIdMapping& map,
                           bool primary, bool wblock) {
  clone = nullptr;
  try {
    AcDbDatabase* source = object.database();
    if (!source) return Acad::eNotInDatabase;
    if (!owner) return Acad::eNullObjectPointer;
    auto* ownerObject = AcDbObject::cast(owner);
    AcDbDatabase* target = ownerObject && ownerObject->isDatabaseResident() ? ownerObject->database() : source;
    AcDbObjectId inDatabase;
    if (auto* db = AcDbDatabase::cast(owner)) {
      if (!wblock) return Acad::eInvalidOwnerObject;
      target = db;
      if ((inDatabase = OwnerInDatabase(object, db, map)).isNull()) return Acad::eOwnerNotSet;
    }
    if (!wblock && target != source) return Acad::eWrongDatabase;
    AcDbDatabase* orig = nullptr;
    AcDbDatabase* dest = nullptr;
    map.origDb(orig);
    map.destDb(dest);
    if ((orig && orig != source) || (dest && dest != target)) return Acad::eInvalidIdMap;
    const ObjectCopier::Mode mode = target == source ? ObjectCopier::Mode::kDeep : ObjectCopier::Mode::kWblock;
    const AcDb::DuplicateRecordCloning drc = map.duplicateRecordCloning();
    ObjectCopier::start(map, source, target, wblock ? AcDb::kDcWblkObjects : AcDb::kDcCopy, drc);
    ObjectCopier copier(source, target, mode, drc, map);
    Acad::ErrorStatus es;
    if (!inDatabase.isNull()) {
      AcDbObject* into = nullptr;
      if ((es = acdbOpenObject(into, inDatabase, AcDb::kForWrite)) != Acad::eOk) return es;
      es = copier.cloneOne(object, into, primary, clone);
      into->close();
    } else {
      es = copier.cloneOne(object, ownerObject, primary, clone);
    }
    if (es != Acad::eOk) return es;
    copier.commit();
    return Acad::eOk;
  } catch (...) {
    return Acad::eOutOfMemory;
  }
}

}  // namespace

Acad::ErrorStatus AcDbObject::deepClone(AcDbObject* pOwnerObject, AcDbObject*& pClonedObject, AcDbIdMapping& idMap,
                                        Adesk::Boolean isPrimary) const {
  return CloneOne(*this, pOwnerObject, pClonedObject, idMap, isPrimary, false);
}

Acad::ErrorStatus AcDbObject::wblockClone(AcRxObject* pOwnerObject, AcDbObject*& pClonedObject, AcDbIdMapping& idMap,
                                          Adesk::Boolean isPrimary) const {
  return CloneOne(*this, pOwnerObject, pClonedObject, idMap, isPrimary, true);
}
