// AcDbDatabase::deepCloneObjects, wblockCloneObjects and abortDeepClone
// over the object copier. An operation whose translation is deferred
// lives in its id map until the call that finishes it; a failure at any
// call takes back the whole operation. No exception leaves them.
#include <memory>
#include <vector>

#include "arx/dbdatabase.h"
#include "arx/dbidmap.h"
#include "db/database_state.h"
#include "db/object_copier.h"
#include "db/stub.h"

using kelhost::db::ObjectCopier;

namespace {

bool HoldsDrawing(const AcDbDatabase* db) {
  return db && !db->blockTableId().isNull() && !db->modelSpaceId().isNull();
}

// The copier of the operation idMap records: the one a deferred call left
// there, or a new one. Null (with the status) when the map belongs to
// another operation.
Acad::ErrorStatus Session(AcDbIdMapping& idMap, AcDbDatabase* source, AcDbDatabase* target, ObjectCopier::Mode mode,
                          AcDb::DuplicateRecordCloning drc, AcDb::DeepCloneType context,
                          std::unique_ptr<ObjectCopier>& copier) {
  AcDbDatabase* orig = nullptr;
  AcDbDatabase* dest = nullptr;
  idMap.origDb(orig);
  idMap.destDb(dest);
  if ((orig && orig != source) || (dest && dest != target)) return Acad::eInvalidIdMap;
  copier = ObjectCopier::takePending(idMap);
  if (copier) {
    if (copier->mode() != mode) return Acad::eInvalidIdMap;
    return Acad::eOk;
  }
  ObjectCopier::start(idMap, source, target, context, drc);
  copier = std::make_unique<ObjectCopier>(source, target, mode, drc, idMap);
  return Acad::eOk;
}

// Runs one call of an operation: clones ids into owner, then either keeps
// the operation in the map for the next call or translates and keeps it.
Acad::ErrorStatus RunClone(std::unique_ptr<ObjectCopier> copier, const AcDbObjectIdArray& objectIds,
                           AcDbObjectId owner, AcDbIdMapping& idMap, bool deferXlation) {
  const std::vector<AcDbObjectId> ids(objectIds.begin(), objectIds.end());
  Acad::ErrorStatus es = copier->clonePrimaries(ids, owner);
  if (es == Acad::eOk && !deferXlation) es = copier->translate();
  if (es != Acad::eOk) return es;  // the copier takes the operation back as it goes
  if (deferXlation) {
    ObjectCopier::keepPending(idMap, std::move(copier));
  } else {
    copier->commit();
  }
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(AcDbObjectIdArray& objectIds, AcDbObjectId& owner,
                                                 AcDbIdMapping& idMap, bool deferXlation) {
  std::unique_ptr<ObjectCopier> copier;
  try {
    if (!HoldsDrawing(this)) return Acad::eNoDatabase;
    if (owner.isNull()) return Acad::eNullObjectId;
    if (owner.database() != this) return Acad::eWrongDatabase;
    for (const AcDbObjectId& id : objectIds)
      if (!id.isNull() && id.database() != this) return Acad::eWrongDatabase;
    Acad::ErrorStatus es = Session(idMap, this, this, ObjectCopier::Mode::kDeep, AcDb::kDrcNotApplicable,
                                   AcDb::kDcCopy, copier);
    if (es != Acad::eOk) {
      if (copier) ObjectCopier::keepPending(idMap, std::move(copier));
      return es;
    }
    return RunClone(std::move(copier), objectIds, owner, idMap, deferXlation);
  } catch (...) {
    return Acad::eOutOfMemory;
  }
}

Acad::ErrorStatus AcDbDatabase::wblockCloneObjects(AcDbObjectIdArray& objectIds, AcDbObjectId& owner,
                                                   AcDbIdMapping& idMap, AcDb::DuplicateRecordCloning drc,
                                                   bool deferXlation) {
  std::unique_ptr<ObjectCopier> copier;
  try {
    if (owner.isNull()) return Acad::eNullObjectId;
    AcDbDatabase* target = owner.database();
    if (!target || !HoldsDrawing(target)) return Acad::eInvalidOwnerObject;
    // The objects' drawing: all of them must share it.
    AcDbDatabase* source = nullptr;
    for (const AcDbObjectId& id : objectIds) {
      if (id.isNull()) return Acad::eNullObjectId;
      if (!id.isValid()) return Acad::eInvalidInput;
      if (source && id.database() != source) return Acad::eWrongDatabase;
      source = id.database();
    }
    if (!source) source = this;
    if (this != source && this != target) return Acad::eWrongDatabase;
    if (drc < AcDb::kDrcNotApplicable || drc > AcDb::kDrcUnmangleName) return Acad::eInvalidInput;
    const ObjectCopier::Mode mode = source == target ? ObjectCopier::Mode::kDeep : ObjectCopier::Mode::kWblock;
    Acad::ErrorStatus es = Session(idMap, source, target, mode, drc, AcDb::kDcWblkObjects, copier);
    if (es != Acad::eOk) {
      if (copier) ObjectCopier::keepPending(idMap, std::move(copier));
      return es;
    }
    return RunClone(std::move(copier), objectIds, owner, idMap, deferXlation);
  } catch (...) {
    return Acad::eOutOfMemory;
  }
}

void AcDbDatabase::abortDeepClone(AcDbIdMapping& idMap) {
  try {
    std::unique_ptr<ObjectCopier> copier = ObjectCopier::takePending(idMap);
    if (copier) copier->takeBack();
  } catch (...) {
  }
}
