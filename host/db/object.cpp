// AcDbObject: identity, open state, erase, owner, extension dictionary.
#include <vector>

#include "arx/acutads.h"
#include "arx/dbdict.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/object_copier.h"
#include "db/sequences.h"
#include "db/rx_define.h"
#include "dxf/access.h"

KELHOST_RX_DEFINE(AcDbObject, AcRxObject, L"")

AcDbObject::AcDbObject() = default;
AcDbObject::~AcDbObject() {
  acutRelRb(mXData);
  if (!mStub) kelhost::db::ForgetForeignClone(this);
}

AcDbObjectId AcDbObject::objectId() const { return AcDbObjectId(mStub); }
AcDbHandle AcDbObject::objectHandle() const { return mStub ? AcDbHandle(mStub->handle) : AcDbHandle(); }
AcDbDatabase* AcDbObject::database() const { return mStub ? mStub->db : nullptr; }

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId owner) {
  if (!writable()) return Acad::eNotOpenForWrite;
  mOwner = owner;
  return Acad::eOk;
}

bool AcDbObject::isReadEnabled() const { return !mStub || mStub->readers || mStub->writer || mStub->notifiers; }
bool AcDbObject::isWriteEnabled() const { return !mStub || mStub->writer; }
bool AcDbObject::isNotifyEnabled() const { return mStub && mStub->notifiers; }
bool AcDbObject::isErased() const { return mStub && mStub->erased; }

Acad::ErrorStatus AcDbObject::close() {
  if (!mStub) return Acad::eNotApplicable;
  if (mStub->writer) {
    subClose();
    mStub->writer = false;
  } else if (mStub->readers) {
    --mStub->readers;
  } else if (mStub->notifiers) {
    --mStub->notifiers;
  } else {
    return Acad::eNotApplicable;
  }
  kelhost::db::AdjustOpenCount(-1);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
  if (!mStub || mStub->writer) return Acad::eWasOpenForWrite;
  if (mStub->readers == 0) return Acad::eNotOpenForRead;
  if (mStub->readers > 1) return Acad::eHadMultipleReaders;
  kelhost::db::NotifyBeforeWrite(this);
  mStub->readers = 0;
  mStub->writer = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
  if (!mStub || !mStub->writer) return Acad::eNotOpenForWrite;
  mStub->writer = false;
  mStub->readers = 1;
  return Acad::eOk;
}

namespace {
// The drawing's own structure cannot be erased: the tables, the named-object
// dictionary and the records every drawing has.
bool IsStandardObject(const AcDbObject* o) {
  AcDbDatabase* db = o->database();
  if (!db) return false;
  const kelhost::db::DatabaseState& s = db->state();
  AcDbObjectId id = o->objectId();
  for (const AcDbObjectId& t : s.tables)
    if (t == id) return true;
  return id == s.namedObjects || id == s.byLayer || id == s.byBlock || id == s.continuous || id == s.layerZero ||
         id == s.modelSpace || id == s.paperSpace;
}
}  // namespace

namespace {
// What an object owns outright goes with it: a complex entity's
// sub-entities and SEQEND, a block's entities, a hard-owning dictionary's
// entries (an extension dictionary's), and every object's extension
// dictionary.
std::vector<AcDbObjectId> HardOwned(AcDbObject* o) {
  std::vector<AcDbObjectId> ids;
  if (AcDbSubentSequence* seq = kelhost::db::SequenceOf(o)) {
    ids = seq->items;
    ids.push_back(seq->end);
  } else if (auto* block = AcDbBlockTableRecord::cast(o)) {
    ids = block->entityIds();
  } else if (auto* dict = AcDbDictionary::cast(o); dict && dict->isTreatElementsAsHard()) {
    ids = kelhost::dxf::Access::entryIds(dict);
  }
  ids.push_back(o->extensionDictionary());
  return ids;
}

// Erases what o owns, marking each as erased with its owner; unerasing
// brings back only those, so that one erased on its own stays erased.
void FollowOwner(AcDbObject* o, bool erasing) {
  for (const AcDbObjectId& id : HardOwned(o)) {
    if (!id.isValid()) continue;
    AcDbStub* s = id;
    if (!s->object) continue;
    if (erasing ? s->erased : !s->erasedWithOwner) continue;
    // Changed as if opened for write, so that an undo journal sees it.
    kelhost::db::NotifyBeforeWrite(s->object.get());
    s->erased = s->erasedWithOwner = erasing;
    FollowOwner(s->object.get(), erasing);
  }
}
}  // namespace

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
  if (!mStub) return Acad::eNotInDatabase;
  if (!mStub->writer) return Acad::eNotOpenForWrite;
  if (erasing == mStub->erased) return erasing ? Acad::eWasErased : Acad::eWasNotErased;
  if (erasing && IsStandardObject(this)) return Acad::eCannotBeErasedByCaller;
  mStub->erased = erasing;
  mStub->erasedWithOwner = false;
  FollowOwner(this, erasing);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
  if (!mStub) return Acad::eNotInDatabase;
  if (!mStub->writer) return Acad::eNotOpenForWrite;
  if (!mExtensionDictionary.isNull() && !mExtensionDictionary.isErased()) return Acad::eAlreadyInDb;
  auto* dict = new AcDbDictionary;
  dict->setTreatElementsAsHard(true);
  AcDbObjectId id;
  Acad::ErrorStatus es = mStub->db->addAcDbObject(id, dict);
  if (es != Acad::eOk) {
    delete dict;
    return es;
  }
  kelhost::dxf::Access::setOwner(dict, objectId());
  dict->close();
  mExtensionDictionary = id;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
  if (!mStub) return Acad::eNotInDatabase;
  if (!mStub->writer) return Acad::eNotOpenForWrite;
  if (mExtensionDictionary.isNull()) return Acad::eOk;
  AcDbDictionary* dict = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dict, mExtensionDictionary, AcDb::kForWrite, true);
  if (es != Acad::eOk) return es;
  if (dict->numEntries() != 0) {
    dict->close();
    return Acad::eContainerNotEmpty;
  }
  if (!dict->isErased()) dict->erase();
  dict->close();
  mExtensionDictionary.setNull();
  return Acad::eOk;
}

// Opening by id.
Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  pObj = nullptr;
  if (id.isNull()) return Acad::eNullObjectId;
  if (!id.isValid()) return Acad::eInvalidObjectId;
  AcDbStub* s = id;
  if (s->erased && !openErased) return Acad::eWasErased;
  switch (mode) {
    case AcDb::kForRead:
      if (s->writer) return Acad::eWasOpenForWrite;
      if (s->readers >= 255) return Acad::eAtMaxReaders;
      ++s->readers;
      break;
    case AcDb::kForWrite:
      if (s->writer) return Acad::eWasOpenForWrite;
      if (s->readers) return Acad::eWasOpenForRead;
      kelhost::db::NotifyBeforeWrite(s->object.get());
      s->writer = true;
      break;
    case AcDb::kForNotify:
      ++s->notifiers;
      break;
    default:
      return Acad::eInvalidInput;
  }
  kelhost::db::AdjustOpenCount(1);
  pObj = s->object.get();
  return Acad::eOk;
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  return acdbOpenObject(pObj, id, mode, openErased);
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& pEnt, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  return acdbOpenObject<AcDbEntity>(pEnt, id, mode, openErased);
}

// Objects of no particular class have no groups of their own, and nothing
// to bring up to date as they close.
void AcDbObject::dxfFields(kelhost::dxf::GroupFiler&) {}
Acad::ErrorStatus AcDbObject::subClose() { return Acad::eOk; }
