// Dictionaries: named entries that own (or, soft, refer to) objects. Keys
// are unique without regard to case and iterate in sorted order.
#pragma once

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
  using Entry = std::pair<std::wstring, AcDbObjectId>;  // (key as given, entry)
  // Entries by upper-case key, found through a hash index (open
  // addressing, each slot keeping its key's hash), iterated in key order:
  // the order is sorted when asked for after a change, so adding to or
  // looking up in a large dictionary walks no tree of keys.
  class Entries {
   public:
    struct Item {
      std::wstring key;  // upper case
      size_t hash;
      Entry entry;
    };
    Entries() = default;
    Entries(const Entries&) = delete;
    Entries& operator=(const Entries&) = delete;
    size_t size() const { return mItems.size(); }
    // Keys are found without regard to case (a null key is empty).
    // The entry of the key, null when there is none.
    Entry* find(const ACHAR* key);
    const Entry* find(const ACHAR* key) const;
    // The entry of the key, added empty when missing.
    Entry& slot(const ACHAR* key);
    void erase(const ACHAR* key);
    void clear();
    // The items in key order, valid until the next change.
    const std::vector<Item*>& ordered() const;
    const std::vector<Item>& unordered() const { return mItems; }

   private:
    struct Slot {
      size_t hash = 0;  // 0: free
      size_t item = 0;  // index in mItems
    };
    // The slot of the key, or the free slot that ends its probe.
    size_t probe(const ACHAR* key, size_t hash) const;
    void grow();
    std::vector<Item> mItems;
    std::vector<Slot> mSlots;  // a power of two of them, at most half used
    mutable std::vector<Item*> mOrder;
    mutable bool mOrderValid = false;
  };
  Entries mEntries;
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
