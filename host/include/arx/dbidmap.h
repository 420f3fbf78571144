// The record of a clone operation: which object became which. Each pair
// holds the source object's id (key) and the clone's or the object the
// source stands for in the receiving drawing (value); whether the value is
// a clone or an existing object (a record of the same name kept); whether
// the source was one of the objects asked for (primary); and whether the
// clone's owner is already the receiving drawing's (owner translated).
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "dbmain.h"

class AcDbDatabase;

namespace kelhost::db {
class ObjectCopier;
}

namespace AcDb {
// What a record whose name the receiving table already has becomes
// (deepCloneObjects, wblockCloneObjects; a dictionary's merge style).
enum DuplicateRecordCloning {
  kDrcNotApplicable = 0,
  kDrcIgnore = 1,          // the receiving drawing's record is kept and used
  kDrcReplace = 2,         // the receiving drawing's record takes the source's state
  kDrcXrefMangleName = 3,  // every incoming name becomes <drawing>$0$<name>
  kDrcMangleName = 4,      // every incoming name becomes $0$<name>
  kDrcUnmangleName = 5     // a $n$ prefix comes off, then as kDrcIgnore
};
// The operation a clone belongs to.
enum DeepCloneType {
  kDcCopy = 0, kDcExplode = 1, kDcBlock = 2, kDcXrefBind = 3, kDcSymTableMerge = 4,
  kDcInsert = 6, kDcWblock = 7, kDcObjects = 8, kDcXrefInsert = 9, kDcInsertCopy = 10, kDcWblkObjects = 11
};
}  // namespace AcDb

class AcDbIdPair {
 public:
  AcDbIdPair() = default;
  AcDbIdPair(AcDbObjectId key, AcDbObjectId value, bool isCloned, bool isPrimary = false, bool isOwnerXlated = true)
      : mKey(key), mValue(value), mCloned(isCloned), mPrimary(isPrimary), mOwnerXlated(isOwnerXlated) {}

  AcDbObjectId key() const { return mKey; }
  AcDbObjectId value() const { return mValue; }
  bool isCloned() const { return mCloned; }
  bool isPrimary() const { return mPrimary; }
  bool isOwnerXlated() const { return mOwnerXlated; }
  void setKey(AcDbObjectId key) { mKey = key; }
  void setValue(AcDbObjectId value) { mValue = value; }
  void setIsCloned(bool cloned) { mCloned = cloned; }
  void setIsPrimary(bool primary) { mPrimary = primary; }
  void setIsOwnerXlated(bool xlated) { mOwnerXlated = xlated; }

 private:
  AcDbObjectId mKey, mValue;
  bool mCloned = false, mPrimary = false, mOwnerXlated = true;
};

// One map per clone operation (there is no way to empty one): a map that
// has served a clone refuses a clone between other drawings
// (eInvalidIdMap). A map whose translation was deferred carries the
// unfinished operation to the next call; dropped before a call finishes
// it, or given to abortDeepClone, it takes back what the operation made.
class AcDbIdMapping : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbIdMapping);
  AcDbIdMapping();
  ~AcDbIdMapping() override;
  AcDbIdMapping(const AcDbIdMapping&) = delete;
  AcDbIdMapping& operator=(const AcDbIdMapping&) = delete;

  // Adds the pair, or replaces the pair of the same key.
  virtual Acad::ErrorStatus assign(const AcDbIdPair& pair);
  // Fills in the pair of pair.key(); false when the map has none.
  virtual bool compute(AcDbIdPair& pair) const;
  // Replaces the pair of the same key; false when there is none.
  virtual bool change(const AcDbIdPair& pair);
  // Removes the pair of that key; false when there is none.
  virtual bool del(AcDbObjectId key);

  Acad::ErrorStatus destDb(AcDbDatabase*& db) const;
  Acad::ErrorStatus setDestDb(AcDbDatabase* db);
  Acad::ErrorStatus origDb(AcDbDatabase*& db) const;
  AcDb::DeepCloneType deepCloneContext() const { return mContext; }
  AcDb::DuplicateRecordCloning duplicateRecordCloning() const { return mDrc; }

  // The host's own: the pairs in the order they were made.
  const std::vector<AcDbIdPair>& pairs() const { return mPairs; }
  // The value of a key, or null.
  AcDbObjectId lookup(AcDbObjectId key) const;

 private:
  friend class AcDbIdMappingIter;
  friend class kelhost::db::ObjectCopier;
  std::vector<AcDbIdPair> mPairs;
  std::vector<bool> mDeleted;  // pairs del() removed (their slots stay for iterators)
  std::unordered_map<AcDbStub*, size_t> mByKey;
  AcDbDatabase* mOrigDb = nullptr;
  AcDbDatabase* mDestDb = nullptr;
  AcDb::DeepCloneType mContext = AcDb::kDcCopy;
  AcDb::DuplicateRecordCloning mDrc = AcDb::kDrcNotApplicable;
  // An operation whose translation was deferred: still able to take back.
  std::unique_ptr<kelhost::db::ObjectCopier> mPending;
};

// Walks a map's pairs in the order they were made.
class AcDbIdMappingIter : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbIdMappingIter);
  explicit AcDbIdMappingIter(const AcDbIdMapping& map);
  virtual Acad::ErrorStatus iterateOn(const AcDbIdMapping& map);
  virtual void start();
  // The current pair; false when done.
  virtual bool getMap(AcDbIdPair& pair);
  virtual bool next();
  virtual bool done();

 private:
  void skipDeleted();
  const AcDbIdMapping* mMap;
  size_t mIndex = 0;
};
