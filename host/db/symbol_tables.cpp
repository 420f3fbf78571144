// Symbol tables: records by name (without regard to case) in the order
// added, and their iterators.
#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/object_copier.h"
#include "db/rx_define.h"
#include "dxf/access.h"
#include "dxf/group_filer.h"
#include "kelhost/text.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbSymbolTable, AcDbObject, L"TABLE")

#define KELHOST_DEFINE_TABLE(TABLE, RECORD)                                                          \
  KELHOST_RX_DEFINE(TABLE, AcDbSymbolTable, L"TABLE")                                               \
  Acad::ErrorStatus TABLE::getAt(const ACHAR* name, RECORD*& record, AcDb::OpenMode mode,           \
                                 bool openErased) const {                                           \
    record = nullptr;                                                                               \
    AcDbObjectId id;                                                                                \
    Acad::ErrorStatus es = AcDbSymbolTable::getAt(name, id, openErased);                            \
    return es == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : es;                     \
  }                                                                                                 \
  AcRxClass* TABLE::recordClass() const { return RECORD::desc(); }

KELHOST_DEFINE_TABLE(AcDbBlockTable, AcDbBlockTableRecord)
KELHOST_DEFINE_TABLE(AcDbLayerTable, AcDbLayerTableRecord)
KELHOST_DEFINE_TABLE(AcDbLinetypeTable, AcDbLinetypeTableRecord)
KELHOST_DEFINE_TABLE(AcDbTextStyleTable, AcDbTextStyleTableRecord)
KELHOST_DEFINE_TABLE(AcDbDimStyleTable, AcDbDimStyleTableRecord)
KELHOST_DEFINE_TABLE(AcDbViewTable, AcDbViewTableRecord)
KELHOST_DEFINE_TABLE(AcDbUCSTable, AcDbUCSTableRecord)
KELHOST_DEFINE_TABLE(AcDbViewportTable, AcDbViewportTableRecord)
KELHOST_DEFINE_TABLE(AcDbRegAppTable, AcDbRegAppTableRecord)

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& id, bool getErasedRecord) const {
  id.setNull();
  if (!name) return Acad::eInvalidInput;
  auto it = mByName.find(kelhost::ToUpper(name));
  if (it == mByName.end()) return Acad::eKeyNotFound;
  if (it->second.isErased() && !getErasedRecord) return Acad::eKeyNotFound;
  id = it->second;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                                         bool openErased) const {
  record = nullptr;
  AcDbObjectId id;
  Acad::ErrorStatus es = getAt(name, id, openErased);
  return es == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : es;
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
  AcDbObjectId id;
  return getAt(name, id) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
  for (const AcDbObjectId& r : mRecords)
    if (r == id) return !id.isErased();
  return false;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
  AcDbObjectId id;
  return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
  id.setNull();
  if (!record) return Acad::eNullObjectPointer;
  if (!database()) return Acad::eNoDatabase;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (record->isDatabaseResident()) return Acad::eAlreadyInDb;
  if (!record->isKindOf(recordClass()) || record->mName.empty()) return Acad::eInvalidInput;
  auto it = mByName.find(kelhost::ToUpper(record->mName));
  if (it != mByName.end() && !it->second.isErased()) return Acad::eDuplicateRecordName;
  // A new layer draws Continuous until it is given a linetype.
  if (auto* layer = AcDbLayerTableRecord::cast(record); layer && layer->linetypeObjectId().isNull())
    layer->setLinetypeObjectId(database()->continuousLinetype());
  // A clone of another drawing's record brings what it names.
  Acad::ErrorStatus es = kelhost::db::AdoptForeignClone(record, database());
  if (es != Acad::eOk) return es;
  es = database()->addAcDbObject(id, record);
  if (es != Acad::eOk) return es;
  kelhost::dxf::Access::setOwner(record, objectId());
  kelhost::dxf::Access::index(this, record, id);
  return Acad::eOk;
}

void AcDbSymbolTable::renamed(const std::wstring& oldName, const std::wstring& newName, AcDbObjectId id) {
  auto it = mByName.find(kelhost::ToUpper(oldName));
  if (it != mByName.end() && it->second == id) mByName.erase(it);
  mByName[kelhost::ToUpper(newName)] = id;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
  iterator = new AcDbSymbolTableIterator(mRecords);
  iterator->start(atBeginning, skipDeleted);
  return Acad::eOk;
}

namespace kelhost::dxf {
void Access::index(AcDbSymbolTable* t, AcDbSymbolTableRecord* r, AcDbObjectId id) {
  t->mRecords.push_back(id);
  t->mByName[ToUpper(r->mName)] = id;
}
void Access::unindex(AcDbSymbolTable* t, AcDbSymbolTableRecord* r) {
  AcDbObjectId id = r->objectId();
  auto it = t->mByName.find(ToUpper(r->mName));
  if (it != t->mByName.end() && it->second == id) t->mByName.erase(it);
  for (size_t i = 0; i < t->mRecords.size(); ++i)
    if (t->mRecords[i] == id) {
      t->mRecords.erase(t->mRecords.begin() + static_cast<long>(i));
      break;
    }
}
void Access::reindex(AcDbSymbolTableRecord* r, const std::wstring& previousName) {
  auto* t = db::PeekAs<AcDbSymbolTable>(r->ownerId());
  if (!t) return;
  const AcDbObjectId id = r->objectId();
  const std::wstring key = ToUpper(r->mName);
  if (const std::wstring old = ToUpper(previousName); old != key) {
    auto it = t->mByName.find(old);
    if (it != t->mByName.end() && it->second == id) t->mByName.erase(it);
  }
  auto it = t->mByName.find(key);
  if (it == t->mByName.end() || (!r->isErased() && it->second != id)) t->mByName[key] = id;
}
}  // namespace kelhost::dxf

// ---------------------------------------------------------------- iterator
void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
  mIndex = atBeginning ? 0 : static_cast<long>(mIds.size()) - 1;
  skip(atBeginning, skipDeleted);
}

bool AcDbSymbolTableIterator::done() const { return mIndex < 0 || mIndex >= static_cast<long>(mIds.size()); }

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
  if (done()) return;
  mIndex += forward ? 1 : -1;
  skip(forward, skipDeleted);
}

void AcDbSymbolTableIterator::skip(bool forward, bool skipDeleted) {
  while (skipDeleted && !done() && mIds[static_cast<size_t>(mIndex)].isErased()) mIndex += forward ? 1 : -1;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
  if (done()) return Acad::eIteratorDone;
  id = mIds[static_cast<size_t>(mIndex)];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                                                     bool openErased) const {
  record = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenObject(record, mIds[static_cast<size_t>(mIndex)], mode, openErased);
}

void AcDbSymbolTable::dxfFields(kelhost::dxf::GroupFiler& f) {
  f.subclass(L"AcDbSymbolTable");
  std::int32_t count = static_cast<std::int32_t>(mRecords.size());
  short shortCount = static_cast<short>(count);
  f.int16(70, shortCount, 0, Presence::kAlways);
}
