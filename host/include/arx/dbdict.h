// Dictionaries: named entries that own (or, soft, refer to) objects. Keys
// are unique without regard to case and iterate in sorted order.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "dbidmap.h"
#include "dbmain.h"

class AcDbDictionaryIterator;

class AcDbDictionary : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDictionary);

  // eKeyNotFound when there is no such key (or only an erased entry).
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& entryId) const;
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObject*& entry, AcDb::OpenMode mode) const;
  Acad::ErrorStatus nameAt(AcDbObjectId objId, ACHAR*& name) const;  // a new string
  bool has(const ACHAR* entryName) const;
  bool has(AcDbObjectId objId) const;
  Adesk::UInt32 numEntries() const { return static_cast<Adesk::UInt32>(mEntries.size()); }

  // Adds (or replaces) the entry. A new object joins this dictionary's
  // database and stays open for write; an object already in the database
  // must have no owner (eInvalidOwnerObject otherwise). A replaced entry
  // is erased when the dictionary owns its entries. Needs write access.
  Acad::ErrorStatus setAt(const ACHAR* srchKey, AcDbObject* newValue, AcDbObjectId& retObjId);
  // Removes the entry; the object stays in the database, without owner.
  Acad::ErrorStatus remove(const ACHAR* key);
  Acad::ErrorStatus remove(const ACHAR* key, AcDbObjectId& returnId);
  Acad::ErrorStatus remove(AcDbObjectId objId);
  // eKeyNotFound, eDuplicateKey, eInvalidInput for an empty new name.
  Acad::ErrorStatus setName(const ACHAR* oldName, const ACHAR* newName);

  bool isTreatElementsAsHard() const { return mHardOwner; }
  void setTreatElementsAsHard(bool doIt);
  AcDb::DuplicateRecordCloning mergeStyle() const { return static_cast<AcDb::DuplicateRecordCloning>(mMergeStyle); }
  void setMergeStyle(AcDb::DuplicateRecordCloning style);

  AcDbDictionaryIterator* newIterator() const;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  friend class kelhost::dxf::Access;
  // Upper-case key to (key as given, entry).
  std::map<std::wstring, std::pair<std::wstring, AcDbObjectId>> mEntries;
  short mMergeStyle = AcDb::kDrcIgnore;
  bool mHardOwner = false;
};

class AcDbDictionaryIterator {
 public:
  const ACHAR* name() const;
  AcDbObjectId objectId() const;
  Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode);
  bool done() const { return mIndex >= mItems.size(); }
  bool next() { if (!done()) ++mIndex; return !done(); }

 private:
  friend class AcDbDictionary;
  explicit AcDbDictionaryIterator(std::vector<std::pair<std::wstring, AcDbObjectId>> items)
      : mItems(std::move(items)) {}
  std::vector<std::pair<std::wstring, AcDbObjectId>> mItems;  // a snapshot
  size_t mIndex = 0;
};
