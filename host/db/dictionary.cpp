// Dictionaries: entries by key (without regard to case), ownership of the
// entries, and the DXF groups (3 key, 350 hard / 360 soft owned entry).
#include <cstdlib>
#include <cwchar>

#include "arx/dbdict.h"
#include "arx/dbdatabase.h"
#include "db/object_copier.h"
#include "db/stub.h"
#include "db/rx_define.h"
#include "dxf/access.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbDictionary, AcDbObject, L"DICTIONARY")

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObjectId& entryId) const {
  entryId.setNull();
  const Entry* entry = mEntries.find(entryName);
  if (entry == nullptr || entry->second.isErased()) return Acad::eKeyNotFound;
  entryId = entry->second;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObject*& entry, AcDb::OpenMode mode) const {
  entry = nullptr;
  AcDbObjectId id;
  Acad::ErrorStatus es = getAt(entryName, id);
  return es == Acad::eOk ? acdbOpenObject(entry, id, mode) : es;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId objId, ACHAR*& name) const {
  name = nullptr;
  for (const Entries::Item* e : mEntries.ordered()) {
    if (e->entry.second != objId) continue;
    size_t n = e->entry.first.size() + 1;
    name = static_cast<ACHAR*>(std::malloc(n * sizeof(ACHAR)));
    if (!name) return Acad::eOutOfMemory;
    std::wmemcpy(name, e->entry.first.c_str(), n);
    return Acad::eOk;
  }
  return Acad::eKeyNotFound;
}

bool AcDbDictionary::has(const ACHAR* entryName) const {
  AcDbObjectId id;
  return getAt(entryName, id) == Acad::eOk;
}

bool AcDbDictionary::has(AcDbObjectId objId) const {
  for (const Entries::Item& e : mEntries.unordered())
    if (e.entry.second == objId) return !objId.isErased();
  return false;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* srchKey, AcDbObject* newValue, AcDbObjectId& retObjId) {
  retObjId.setNull();
  if (!srchKey || !*srchKey) return Acad::eInvalidKey;
  if (!newValue) return Acad::eNullObjectPointer;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  AcDbDatabase* db = database();
  if (!db) return Acad::eNoDatabase;
  if (newValue->isDatabaseResident()) {
    if (newValue->database() != db) return Acad::eWrongDatabase;
    if (!newValue->ownerId().isNull() && newValue->ownerId() != objectId()) return Acad::eInvalidOwnerObject;
    retObjId = newValue->objectId();
  } else {
    // A clone of another drawing's object brings what it names.
    Acad::ErrorStatus es = kelhost::db::AdoptForeignClone(newValue, db);
    if (es == Acad::eOk) es = db->addAcDbObject(retObjId, newValue);
    if (es != Acad::eOk) return es;
  }
  kelhost::dxf::Access::setOwner(newValue, objectId());
  Entry& slot = mEntries.slot(srchKey);
  AcDbObjectId old = slot.second;
  slot = {srchKey, retObjId};
  if (!old.isNull() && old != retObjId && mHardOwner) {
    AcDbObject* replaced = nullptr;
    if (acdbOpenObject(replaced, old, AcDb::kForWrite) == Acad::eOk) {
      replaced->erase();
      replaced->close();
    }
  } else if (!old.isNull() && old != retObjId) {
    if (AcDbObject* replaced = kelhost::db::Peek(old)) kelhost::dxf::Access::setOwner(replaced, AcDbObjectId::kNull);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key) {
  AcDbObjectId id;
  return remove(key, id);
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key, AcDbObjectId& returnId) {
  returnId.setNull();
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  const Entry* entry = mEntries.find(key);
  if (entry == nullptr) return Acad::eKeyNotFound;
  returnId = entry->second;
  mEntries.erase(key);
  if (AcDbObject* entry = kelhost::db::Peek(returnId))
    if (entry->ownerId() == objectId()) kelhost::dxf::Access::setOwner(entry, AcDbObjectId::kNull);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId objId) {
  for (const Entries::Item* e : mEntries.ordered())
    if (e->entry.second == objId) {
      std::wstring key = e->entry.first;
      return remove(key.c_str());
    }
  return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbDictionary::setName(const ACHAR* oldName, const ACHAR* newName) {
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (!newName || !*newName) return Acad::eInvalidInput;
  const Entry* entry = mEntries.find(oldName);
  if (entry == nullptr) return Acad::eKeyNotFound;
  const Entry* named = mEntries.find(newName);  // the same entry when only the case changes
  if (named != nullptr && named != entry) return Acad::eDuplicateKey;
  const AcDbObjectId id = entry->second;
  mEntries.erase(oldName);
  mEntries.slot(newName) = {newName, id};
  return Acad::eOk;
}

void AcDbDictionary::setTreatElementsAsHard(bool doIt) {
  if (writable()) mHardOwner = doIt;
}

void AcDbDictionary::setMergeStyle(AcDb::DuplicateRecordCloning style) {
  if (writable()) mMergeStyle = static_cast<short>(style);
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const {
  std::vector<std::pair<std::wstring, AcDbObjectId>> items;
  for (const Entries::Item* e : mEntries.ordered())
    if (!e->entry.second.isErased()) items.push_back(e->entry);
  return new AcDbDictionaryIterator(std::move(items));
}

void AcDbDictionary::dxfFields(kelhost::dxf::GroupFiler& f) {
  f.subclass(L"AcDbDictionary");
  short hard = mHardOwner ? 1 : 0;
  f.int16(280, hard, 0, Presence::kUnlessDefault);
  mHardOwner = hard != 0;
  f.int16(281, mMergeStyle, 1, Presence::kAlways);
  const int entryCode = mHardOwner ? 360 : 350;
  size_t n = f.beginRepeat(3, mEntries.size());
  if (f.reading()) {
    if (n == 0 && f.keepsAbsent()) return f.endRepeat();
    mEntries.clear();
    for (size_t i = 0; i < n; ++i) {
      f.enterRecord(i);
      std::wstring key;
      AcDbObjectId id;
      f.text(3, key, L"", Presence::kRequired);
      f.id(entryCode, id, Presence::kAlways);
      if (id.isNull()) f.id(entryCode == 360 ? 350 : 360, id, Presence::kRequired);
      if (!key.empty()) mEntries.slot(key.c_str()) = {key, id};
    }
  } else {
    for (Entries::Item* e : mEntries.ordered()) {
      if (e->entry.second.isErased() && !f.keepsErased()) continue;
      f.text(3, e->entry.first, L"", Presence::kAlways);
      f.id(entryCode, e->entry.second, Presence::kAlways);
    }
  }
  f.endRepeat();
}

const ACHAR* AcDbDictionaryIterator::name() const { return done() ? nullptr : mItems[mIndex].first.c_str(); }
AcDbObjectId AcDbDictionaryIterator::objectId() const { return done() ? AcDbObjectId::kNull : mItems[mIndex].second; }
Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode) {
  object = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenObject(object, mItems[mIndex].second, mode);
}
