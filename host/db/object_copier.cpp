#include "db/object_copier.h"

#include <cstdlib>
#include <unordered_map>

#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "db/database_state.h"
#include "db/explode_copy.h"
#include "db/sequences.h"
#include "db/stub.h"
#include "dxf/access.h"
#include "dxf/codec.h"
#include "kelhost/text.h"

namespace kelhost::db {
namespace {

// Which of a database's tables an id is (its index in the state's list),
// or -1.
int TableIndex(const AcDbDatabase* db, AcDbObjectId table) {
  if (table.isNull()) return -1;
  for (int i = 0; i < static_cast<int>(Table::kCount); ++i)
    if (db->state().tables[i] == table) return i;
  return -1;
}

AcDbObjectId FindByName(AcDbObjectId tableId, const std::wstring& name) {
  auto* table = PeekAs<AcDbSymbolTable>(tableId);
  AcDbObjectId id;
  if (table && table->getAt(name.c_str(), id) == Acad::eOk) return id;
  return AcDbObjectId::kNull;
}

bool IsAnonymousBlock(const AcDbSymbolTableRecord& record) {
  auto* block = AcDbBlockTableRecord::cast(&record);
  return block && (block->isAnonymous() || (block->getName()[0] == L'*' && !block->isLayout()));
}

// Records every drawing has under their own names, which the renaming
// modes leave alone: layer 0, the linetypes ByBlock, ByLayer and
// Continuous, and the applications (xdata names them).
bool KeepsItsName(int kind, const std::wstring& name) {
  switch (static_cast<Table>(kind)) {
    case Table::kLayer: return name == L"0";
    case Table::kLinetype:
      return EqualNoCase(name, L"ByBlock") || EqualNoCase(name, L"ByLayer") || EqualNoCase(name, L"Continuous");
    case Table::kRegApp: return true;
    default: return false;
  }
}

// A name without the $n$ prefix the renaming modes give.
std::wstring Unmangled(const std::wstring& name) {
  if (name.size() < 3 || name[0] != L'$') return name;
  size_t i = 1;
  while (i < name.size() && name[i] >= L'0' && name[i] <= L'9') ++i;
  if (i == 1 || i >= name.size() || name[i] != L'$' || i + 1 == name.size()) return name;
  return name.substr(i + 1);
}

// A free name for an anonymous block in the target: its kind ("*U",
// "*D", ...) with the first number no block of the table has had.
std::wstring FreeAnonymousName(AcDbObjectId tableId, const std::wstring& name) {
  size_t end = 1;
  while (end < name.size() && !(name[end] >= L'0' && name[end] <= L'9')) ++end;
  const std::wstring kind = name.substr(0, end);
  auto* table = PeekAs<AcDbSymbolTable>(tableId);
  for (int n = 1;; ++n) {
    const std::wstring candidate = kind + std::to_wstring(n);
    AcDbObjectId existing;
    if (!table || table->getAt(candidate.c_str(), existing, true) != Acad::eOk) return candidate;
  }
}

// The drawing name the xref form of renaming puts first: the file the
// source was read from, without folder or extension.
std::wstring DrawingName(const AcDbDatabase* db) {
  std::wstring name = db->state().fileName;
  const size_t slash = name.find_last_of(L"/\\");
  if (slash != std::wstring::npos) name.erase(0, slash + 1);
  const size_t dot = name.rfind(L'.');
  if (dot != std::wstring::npos && dot > 0) name.erase(dot);
  return name;
}

// The key a dictionary entry has in its owner; empty when its owner is not
// a dictionary that holds it.
std::wstring KeyInOwner(const AcDbObject& object) {
  auto* owner = PeekAs<AcDbDictionary>(object.ownerId());
  ACHAR* key = nullptr;
  if (!owner || owner->nameAt(object.objectId(), key) != Acad::eOk || !key) return L"";
  std::wstring k = key;
  std::free(key);
  return k;
}

// Opens for write an object that the caller may already hold open for
// write (an owner handed to an object's deepClone): then that one is used
// and left open.
template <class T>
class WriteAccess {
 public:
  WriteAccess(AcDbObjectId id, AcDbObject* alreadyOpen) {
    if (alreadyOpen && alreadyOpen->objectId() == id) {
      mObject = T::cast(alreadyOpen);
      mStatus = mObject ? Acad::eOk : Acad::eWrongObjectType;
      return;
    }
    mStatus = acdbOpenObject(mObject, id, AcDb::kForWrite);
    mOwn = mStatus == Acad::eOk;
  }
  ~WriteAccess() {
    if (mOwn) mObject->close();
  }
  WriteAccess(const WriteAccess&) = delete;
  WriteAccess& operator=(const WriteAccess&) = delete;
  T* operator->() const { return mObject; }
  T* get() const { return mObject; }
  Acad::ErrorStatus status() const { return mStatus; }

 private:
  T* mObject = nullptr;
  Acad::ErrorStatus mStatus;
  bool mOwn = false;
};

// The owner the caller holds open while one object is cloned into it.
thread_local AcDbObject* gOpenOwner = nullptr;

}  // namespace

ObjectCopier::ObjectCopier(AcDbDatabase* source, AcDbDatabase* target, Mode mode, AcDb::DuplicateRecordCloning drc,
                           AcDbIdMapping& map)
    : mSource(source), mTarget(target), mMode(mode), mDrc(drc), mMap(map) {}

ObjectCopier::~ObjectCopier() { takeBack(); }

void ObjectCopier::start(AcDbIdMapping& map, AcDbDatabase* source, AcDbDatabase* target, AcDb::DeepCloneType context,
                         AcDb::DuplicateRecordCloning drc) {
  map.mOrigDb = source;
  map.mDestDb = target;
  map.mContext = context;
  map.mDrc = drc;
}

std::unique_ptr<ObjectCopier> ObjectCopier::takePending(AcDbIdMapping& map) { return std::move(map.mPending); }

void ObjectCopier::keepPending(AcDbIdMapping& map, std::unique_ptr<ObjectCopier> copier) {
  map.mPending = std::move(copier);
}

void ObjectCopier::failWith(Acad::ErrorStatus es) {
  if (mStatus == Acad::eOk) mStatus = es;
}

AcDbObjectId ObjectCopier::lookup(AcDbObjectId source) const { return mMap.lookup(source); }

void ObjectCopier::pair(AcDbObjectId key, AcDbObjectId value, bool cloned, bool primary) {
  mMap.assign(AcDbIdPair(key, value, cloned, primary, true));
  mKeys.push_back(key);
}

void ObjectCopier::made(AcDbObjectId id, bool unresolved) {
  mMade.push_back(id);
  if (unresolved) mPending.push_back(id);
}

// ---------------------------------------------------------------- references

AcDbObjectId ObjectCopier::record(AcDbObjectId targetTable, const wchar_t* name) {
  // Within one drawing, and once the copies are the target's, a name is
  // the target's record of that name.
  if (mTranslating || mMode == Mode::kDeep) return FindByName(targetTable, name);
  const int kind = TableIndex(mTarget, targetTable);
  if (kind < 0) return AcDbObjectId::kNull;
  const AcDbObjectId source = FindByName(mSource->state().tables[kind], name);
  // A name the source's table lacks (a list that named a missing record)
  // can only be the target's own.
  if (source.isNull()) return FindByName(targetTable, name);
  AcDbObjectId found;
  copyRecord(source, found);
  return found;
}

AcDbObjectId ObjectCopier::reference(int, AcDbObjectId source) {
  if (source.isNull()) return source;
  const AcDbObjectId found = lookup(source);
  if (!found.isNull()) return found;
  // What the map does not know stays within the drawing and is dropped
  // from another.
  if (mTranslating || source.database() != mSource) return source.database() == mTarget ? source : AcDbObjectId::kNull;
  // Records are shared by whatever names them: into another drawing they
  // come along.
  if (PeekAs<AcDbSymbolTableRecord>(source)) {
    if (mMode == Mode::kDeep) return source;
    AcDbObjectId copied;
    copyRecord(source, copied);
    return copied;
  }
  // Another object may still be cloned in this operation: the reference
  // waits for the translation at the end.
  mUnresolved = true;
  return source;
}

bool ObjectCopier::application(const wchar_t* name) {
  const AcDbObjectId tableId = mTarget->regAppTableId();
  if (!FindByName(tableId, name).isNull()) return true;
  if (acdbSNValid(name, 0) != RTNORM) return false;
  WriteAccess<AcDbRegAppTable> table(tableId, gOpenOwner);
  if (table.status() != Acad::eOk) return false;
  auto* app = new AcDbRegAppTableRecord;
  app->setName(name);
  AcDbObjectId id;
  if (table->add(id, app) != Acad::eOk) {
    delete app;
    return false;
  }
  app->close();
  mMade.push_back(id);
  return true;
}

// ---------------------------------------------------------------- records

std::wstring ObjectCopier::mangledName(AcDbObjectId targetTable, const std::wstring& name) const {
  const std::wstring prefix = mDrc == AcDb::kDrcXrefMangleName ? DrawingName(mSource) : std::wstring();
  for (int n = 0;; ++n) {
    std::wstring candidate = prefix + L"$" + std::to_wstring(n) + L"$" + name;
    if (FindByName(targetTable, candidate).isNull()) return candidate;
  }
}

Acad::ErrorStatus ObjectCopier::copyRecord(AcDbObjectId sourceId, AcDbObjectId& targetId, bool primary) {
  targetId = lookup(sourceId);
  if (!targetId.isNull()) return Acad::eOk;
  auto* source = PeekAs<AcDbSymbolTableRecord>(sourceId);
  if (!source || sourceId.database() != mSource) return Acad::eInvalidInput;
  const int kind = TableIndex(mSource, source->ownerId());
  if (kind < 0) return Acad::eInvalidInput;
  // A layout's block stands for the target's space of the same kind.
  if (auto* block = AcDbBlockTableRecord::cast(source); block && block->isLayout()) {
    targetId = sourceId == mSource->modelSpaceId() ? mTarget->modelSpaceId() : mTarget->paperSpaceId();
    pair(sourceId, targetId, false, primary);
    return Acad::eOk;
  }
  const AcDbObjectId targetTable = mTarget->state().tables[kind];
  std::wstring name = source->getName();
  AcDb::DuplicateRecordCloning drc = mDrc;
  if (drc == AcDb::kDrcNotApplicable && mMode == Mode::kWblock) drc = AcDb::kDrcIgnore;
  const bool renaming = drc == AcDb::kDrcMangleName || drc == AcDb::kDrcXrefMangleName || drc == AcDb::kDrcUnmangleName;
  if (renaming && KeepsItsName(kind, name)) drc = AcDb::kDrcIgnore;
  if (drc == AcDb::kDrcUnmangleName) {
    name = Unmangled(name);
    drc = AcDb::kDrcIgnore;
  }
  Acad::ErrorStatus es = Acad::eOk;
  if (IsAnonymousBlock(*source)) {
    es = newRecord(*source, targetTable, FreeAnonymousName(targetTable, name), primary, targetId);
  } else if (drc == AcDb::kDrcMangleName || drc == AcDb::kDrcXrefMangleName) {
    es = newRecord(*source, targetTable, mangledName(targetTable, name), primary, targetId);
  } else if (const AcDbObjectId existing = FindByName(targetTable, name); existing.isNull()) {
    es = newRecord(*source, targetTable, name, primary, targetId);
  } else if (drc == AcDb::kDrcNotApplicable) {
    es = Acad::eDuplicateRecordName;
  } else {
    // Mapped first, so that what the record's own state names (a block's
    // references to itself) finds it.
    const bool replacing = drc == AcDb::kDrcReplace && existing != sourceId;
    pair(sourceId, existing, replacing, primary);
    if (replacing) es = takeSourceState(*source, existing);
    if (es == Acad::eOk) targetId = existing;
  }
  if (es != Acad::eOk) {
    mMap.del(sourceId);
    targetId.setNull();
    failWith(es);
  }
  return es;
}

Acad::ErrorStatus ObjectCopier::newRecord(const AcDbSymbolTableRecord& source, AcDbObjectId targetTable,
                                          const std::wstring& name, bool primary, AcDbObjectId& madeId) {
  std::unique_ptr<AcDbObject> copy;
  bool unresolved = false;
  Acad::ErrorStatus es = copyObject(source, copy, unresolved);
  if (es != Acad::eOk) return mStatus != Acad::eOk ? mStatus : es;
  auto* record = AcDbSymbolTableRecord::cast(copy.get());
  if (!record) return Acad::eWrongObjectType;
  if (name != source.getName() && (es = record->setName(name.c_str())) != Acad::eOk) return es;
  {
    WriteAccess<AcDbSymbolTable> table(targetTable, gOpenOwner);
    if ((es = table.status()) != Acad::eOk) return es;
    if ((es = table->add(madeId, record)) != Acad::eOk) return es;
  }
  copy.release();
  made(madeId, unresolved);
  pair(source.objectId(), madeId, true, primary);
  es = cloneOwned(source, *record);
  record->close();
  if (es != Acad::eOk) return es;
  // A block's entities follow it (after it is mapped: they may refer to it).
  if (auto* block = AcDbBlockTableRecord::cast(&source)) return copyEntities(block->entityIds(), madeId);
  return Acad::eOk;
}

Acad::ErrorStatus ObjectCopier::takeSourceState(const AcDbSymbolTableRecord& source, AcDbObjectId existing) {
  if (!keepState(existing)) return Acad::eOutOfMemory;
  auto* block = AcDbBlockTableRecord::cast(&source);
  if (block) {
    Acad::ErrorStatus es = emptyBlock(existing);
    if (es != Acad::eOk) return es;
  }
  // The source's state, read while nothing of the target is open: what it
  // names may have to be copied first.
  std::unique_ptr<AcDbObject> copy;
  bool unresolved = false;
  Acad::ErrorStatus es = copyObject(source, copy, unresolved);
  if (es != Acad::eOk) return mStatus != Acad::eOk ? mStatus : es;
  {
    WriteAccess<AcDbSymbolTableRecord> target(existing, gOpenOwner);
    if ((es = target.status()) != Acad::eOk) return es;
    // The record keeps its own name: only its case may differ.
    const std::wstring name = target->getName();
    es = CopyStateInto(*copy, *target.get(), this);
    if (es == Acad::eOk) target->setName(name.c_str());
  }
  if (es != Acad::eOk) return es;
  if (unresolved) mPending.push_back(existing);
  if (block) return copyEntities(block->entityIds(), existing);
  return Acad::eOk;
}

// ---------------------------------------------------------------- objects

Acad::ErrorStatus ObjectCopier::copyObject(const AcDbObject& source, std::unique_ptr<AcDbObject>& copy,
                                           bool& unresolved) {
  const bool outer = std::exchange(mUnresolved, false);
  Acad::ErrorStatus es = CopyObject(source, copy, this);
  unresolved = mUnresolved;
  mUnresolved = outer;
  if (es != Acad::eOk) return es;
  // A dictionary's entries are cloned into it one by one.
  if (auto* dict = AcDbDictionary::cast(copy.get())) dxf::Access::clearEntries(dict);
  return Acad::eOk;
}

Acad::ErrorStatus ObjectCopier::cloneOwned(const AcDbObject& source, AcDbObject& clone) {
  if (auto* dict = AcDbDictionary::cast(&source)) {
    Acad::ErrorStatus es = cloneEntries(*dict, *AcDbDictionary::cast(&clone));
    if (es != Acad::eOk) return es;
  }
  const AcDbObjectId xdictId = source.extensionDictionary();
  auto* xdict = PeekAs<AcDbDictionary>(xdictId);
  if (!xdict || xdictId.isErased() || !clone.isDatabaseResident()) return Acad::eOk;
  std::unique_ptr<AcDbObject> copy;
  bool unresolved = false;
  Acad::ErrorStatus es = copyObject(*xdict, copy, unresolved);
  if (es != Acad::eOk) return es;
  AcDbObjectId id;
  if ((es = mTarget->addAcDbObject(id, copy.get())) != Acad::eOk) return es;
  auto* dict = static_cast<AcDbDictionary*>(copy.release());
  dxf::Access::setOwner(dict, clone.objectId());
  dxf::Access::setExtensionDictionary(&clone, id);
  made(id, unresolved);
  pair(xdictId, id, true, false);
  es = cloneEntries(*xdict, *dict);
  dict->close();
  return es;
}

Acad::ErrorStatus ObjectCopier::cloneEntries(const AcDbDictionary& source, AcDbDictionary& clone) {
  std::unique_ptr<AcDbDictionaryIterator> it(source.newIterator());
  for (; !it->done(); it->next()) {
    const AcDbObject* entry = Peek(it->objectId());
    if (!entry || AcDbEntity::cast(entry)) continue;
    AcDbObjectId id;
    Acad::ErrorStatus es = cloneIntoDictionary(*entry, clone, it->name(), false, id);
    if (es != Acad::eOk) return es;
  }
  return Acad::eOk;
}

Acad::ErrorStatus ObjectCopier::cloneIntoDictionary(const AcDbObject& source, AcDbDictionary& owner,
                                                    const std::wstring& wanted, bool primary, AcDbObjectId& madeId) {
  std::wstring key = wanted;
  AcDbObjectId existing;
  if (owner.getAt(key.c_str(), existing) == Acad::eOk) {
    switch (mMode == Mode::kDeep ? AcDb::kDrcNotApplicable : mDrc) {
      case AcDb::kDrcNotApplicable:
        if (mMode == Mode::kDeep) return Acad::eDuplicateKey;
        [[fallthrough]];
      case AcDb::kDrcIgnore:
      case AcDb::kDrcUnmangleName:
        madeId = existing;
        pair(source.objectId(), existing, false, primary);
        return Acad::eOk;
      case AcDb::kDrcMangleName:
      case AcDb::kDrcXrefMangleName: {
        const std::wstring prefix = mDrc == AcDb::kDrcXrefMangleName ? DrawingName(mSource) : std::wstring();
        for (int n = 0; owner.has(key.c_str()); ++n) key = prefix + L"$" + std::to_wstring(n) + L"$" + wanted;
        break;
      }
      case AcDb::kDrcReplace:
        // The entry the clone replaces comes back if the operation fails.
        mErased.push_back(existing);
        break;
    }
  }
  std::unique_ptr<AcDbObject> copy;
  bool unresolved = false;
  Acad::ErrorStatus es = copyObject(source, copy, unresolved);
  if (es != Acad::eOk) return mStatus != Acad::eOk ? mStatus : es;
  if (owner.isDatabaseResident() && !keepState(owner.objectId())) return Acad::eOutOfMemory;
  if ((es = owner.setAt(key.c_str(), copy.get(), madeId)) != Acad::eOk) return es;
  AcDbObject* clone = copy.release();
  made(madeId, unresolved);
  pair(source.objectId(), madeId, true, primary);
  es = cloneOwned(source, *clone);
  clone->close();
  return es;
}

// ---------------------------------------------------------------- entities

Acad::ErrorStatus ObjectCopier::makeCopies(const std::vector<AcDbObjectId>& entities, const AcGeMatrix3d& xform,
                                           Copies& copies, std::vector<bool>& unresolved) {
  copies.reserve(entities.size());
  unresolved.reserve(entities.size());
  for (const AcDbObjectId& id : entities) {
    if (id.isNull() || id.database() != mSource) return Acad::eWrongDatabase;
    if (id.isErased()) continue;
    auto* entity = PeekAs<AcDbEntity>(id);
    if (!entity) return Acad::eNotAnEntity;
    std::unique_ptr<AcDbEntity> copy;
    const bool outer = std::exchange(mUnresolved, false);
    Acad::ErrorStatus es = CopyEntity(*entity, copy, this);
    const bool mine = std::exchange(mUnresolved, outer);
    if (mStatus != Acad::eOk) return mStatus;
    if (es == Acad::eOk && !xform.isIdentity()) es = PlaceCopy(copy, xform);
    if (es != Acad::eOk) return es;
    copies.emplace_back(id, std::move(copy));
    unresolved.push_back(mine);
  }
  return Acad::eOk;
}

Acad::ErrorStatus ObjectCopier::appendCopies(Copies& copies, const std::vector<bool>& unresolved,
                                             AcDbBlockTableRecord* block, bool primary) {
  Acad::ErrorStatus es = Acad::eOk;
  for (size_t i = 0; i < copies.size(); ++i) {
    auto& [source, copy] = copies[i];
    AcDbObjectId id;
    if ((es = block->appendAcDbEntity(id, copy.get())) != Acad::eOk) break;
    AcDbEntity* clone = copy.release();
    made(id, unresolved[i]);
    pair(source, id, true, primary);
    es = cloneOwned(*Peek(source), *clone);
    clone->close();
    if (es != Acad::eOk) break;
  }
  return es;
}

Acad::ErrorStatus ObjectCopier::appendCopies(Copies& copies, const std::vector<bool>& unresolved,
                                             AcDbObjectId targetBlock, bool primary) {
  if (copies.empty()) return Acad::eOk;
  WriteAccess<AcDbBlockTableRecord> block(targetBlock, gOpenOwner);
  if (block.status() != Acad::eOk) return block.status();
  return appendCopies(copies, unresolved, block.get(), primary);
}

Acad::ErrorStatus ObjectCopier::copyEntities(const std::vector<AcDbObjectId>& entities, AcDbObjectId targetBlock,
                                             const AcGeMatrix3d& xform) {
  if (!PeekAs<AcDbBlockTableRecord>(targetBlock) || targetBlock.database() != mTarget) return Acad::eInvalidInput;
  Copies copies;
  std::vector<bool> unresolved;
  Acad::ErrorStatus es = makeCopies(entities, xform, copies, unresolved);
  if (es == Acad::eOk) es = appendCopies(copies, unresolved, targetBlock, false);
  failWith(es);
  return es;
}

Acad::ErrorStatus ObjectCopier::copyAsBlock(const std::vector<AcDbObjectId>& entities, const std::wstring& name,
                                            const AcGePoint3d& origin, AcDbObjectId& blockId) {
  blockId.setNull();
  if (acdbSNValid(name.c_str(), 0) != RTNORM) return Acad::eInvalidInput;
  if (!FindByName(mSource->blockTableId(), name).isNull()) return Acad::eSelfReference;
  // The copies first: what they name is copied before the block exists.
  Copies copies;
  std::vector<bool> unresolved;
  Acad::ErrorStatus es = makeCopies(entities, AcGeMatrix3d::kIdentity, copies, unresolved);
  if (es != Acad::eOk) return failWith(es), es;
  AcDbObjectId block = FindByName(mTarget->blockTableId(), name);
  if (!block.isNull()) {
    auto* existing = PeekAs<AcDbBlockTableRecord>(block);
    if (!existing || existing->isLayout()) return failWith(Acad::eInvalidInput), Acad::eInvalidInput;
    if (!keepState(block)) return failWith(Acad::eOutOfMemory), Acad::eOutOfMemory;
    es = emptyBlock(block);
    AcDbBlockTableRecord* record = nullptr;
    if (es == Acad::eOk && (es = acdbOpenObject(record, block, AcDb::kForWrite)) == Acad::eOk) {
      record->setOrigin(origin);
      record->close();
    }
  } else {
    AcDbBlockTable* table = nullptr;
    if ((es = mTarget->getBlockTable(table, AcDb::kForWrite)) == Acad::eOk) {
      auto* record = new AcDbBlockTableRecord;
      record->setName(name.c_str());
      record->setOrigin(origin);
      es = table->add(block, record);
      table->close();
      if (es == Acad::eOk) {
        record->close();
        mMade.push_back(block);
      } else {
        delete record;
      }
    }
  }
  if (es == Acad::eOk) es = appendCopies(copies, unresolved, block, false);
  if (es != Acad::eOk) return failWith(es), es;
  blockId = block;
  return Acad::eOk;
}

// ---------------------------------------------------------------- primaries

Acad::ErrorStatus ObjectCopier::clonePrimaries(const std::vector<AcDbObjectId>& ids, AcDbObjectId ownerId) {
  AcDbObject* owner = Peek(ownerId);
  if (!owner || ownerId.isErased()) return Acad::eInvalidOwnerObject;
  if (ownerId.database() != mTarget) return Acad::eWrongDatabase;
  for (const AcDbObjectId& id : ids) {
    if (id.isNull()) return Acad::eNullObjectId;
    if (!id.isValid()) return Acad::eInvalidInput;
    if (id.database() != mSource) return Acad::eWrongDatabase;
    if (id.isErased()) return Acad::eWasErased;
  }
  Acad::ErrorStatus es = Acad::eOk;
  if (AcDbBlockTableRecord::cast(owner)) {
    for (const AcDbObjectId& id : ids)
      if (!PeekAs<AcDbEntity>(id)) return Acad::eWrongObjectType;
    Copies copies;
    std::vector<bool> unresolved;
    es = makeCopies(ids, AcGeMatrix3d::kIdentity, copies, unresolved);
    if (es == Acad::eOk) es = appendCopies(copies, unresolved, ownerId, true);
  } else if (auto* table = AcDbSymbolTable::cast(owner)) {
    for (const AcDbObjectId& id : ids) {
      auto* record = PeekAs<AcDbSymbolTableRecord>(id);
      if (!record || !record->isKindOf(table->recordClass())) return Acad::eWrongObjectType;
    }
    for (const AcDbObjectId& id : ids) {
      AcDbObjectId record;
      if ((es = copyRecord(id, record, true)) != Acad::eOk) break;
    }
  } else if (AcDbDictionary::cast(owner)) {
    for (const AcDbObjectId& id : ids)
      if (!Peek(id) || PeekAs<AcDbEntity>(id) || KeyInOwner(*Peek(id)).empty()) return Acad::eWrongObjectType;
    WriteAccess<AcDbDictionary> dict(ownerId, gOpenOwner);
    if ((es = dict.status()) != Acad::eOk) return es;
    for (const AcDbObjectId& id : ids) {
      AcDbObjectId entry;
      if ((es = cloneIntoDictionary(*Peek(id), *dict.get(), KeyInOwner(*Peek(id)), true, entry)) != Acad::eOk) break;
    }
  } else {
    return Acad::eInvalidOwnerObject;
  }
  if (es == Acad::eOk) es = mStatus;
  failWith(es);
  return es;
}

Acad::ErrorStatus ObjectCopier::cloneOne(const AcDbObject& source, AcDbObject* owner, bool primary,
                                         AcDbObject*& clone) {
  clone = nullptr;
  const bool container = owner && owner->isDatabaseResident() &&
                         (AcDbBlockTableRecord::cast(owner) || AcDbSymbolTable::cast(owner) || AcDbDictionary::cast(owner));
  auto* block = AcDbBlockTableRecord::cast(&source);
  if (!container) {
    // A clone outside any database, for the caller to add.
    if (block) return Acad::eInvalidOwnerObject;
    std::unique_ptr<AcDbObject> copy;
    Acad::ErrorStatus es;
    if (auto* entity = AcDbEntity::cast(&source)) {
      std::unique_ptr<AcDbEntity> e;
      es = CopyEntity(*entity, e, this);
      copy = std::move(e);
    } else {
      bool unresolved = false;
      es = copyObject(source, copy, unresolved);
    }
    if (es == Acad::eOk) es = mStatus;
    if (es != Acad::eOk) return es;
    pair(source.objectId(), AcDbObjectId::kNull, true, primary);
    RememberForeignClone(copy.get(), mSource);
    clone = copy.release();
    return Acad::eOk;
  }
  if (owner->database() != mTarget) return Acad::eWrongDatabase;
  if (!owner->isWriteEnabled()) return Acad::eNotOpenForWrite;
  // Whatever needs the owner open for write while the clone is made uses
  // the caller's.
  AcDbObject* const previous = std::exchange(gOpenOwner, owner);
  struct Restore {
    AcDbObject* previous;
    ~Restore() { gOpenOwner = previous; }
  } restore{previous};
  const std::vector<AcDbObjectId> one{source.objectId()};
  Acad::ErrorStatus es = clonePrimaries(one, owner->objectId());
  if (es == Acad::eOk) es = translate();
  if (es != Acad::eOk) return es;
  AcDbIdPair result(source.objectId(), AcDbObjectId::kNull, false);
  mMap.compute(result);
  if (!primary) {
    result.setIsPrimary(false);
    mMap.assign(result);
  }
  // A record of that name kept (kDrcIgnore) is no clone to hand back.
  if (!result.isCloned() || result.value().isNull()) return Acad::eOk;
  return acdbOpenObject(clone, result.value(), AcDb::kForWrite);
}

Acad::ErrorStatus ObjectCopier::adopt(AcDbObject& clone) {
  mUnresolved = false;
  Acad::ErrorStatus es = CopyStateInto(clone, clone, this);
  if (es == Acad::eOk) es = mStatus;
  if (es == Acad::eOk && mUnresolved) {
    mTranslating = true;
    es = CopyStateInto(clone, clone, this);
    mTranslating = false;
  }
  if (es != Acad::eOk) return es;
  if (AcDbSubentSequence* parts = SequenceOf(&clone))
    for (AcDbEntity* part : LiveSubentities(*parts))
      if ((es = adopt(*part)) != Acad::eOk) return es;
  return Acad::eOk;
}

// ---------------------------------------------------------------- translation

Acad::ErrorStatus ObjectCopier::translate() {
  mTranslating = true;
  Acad::ErrorStatus es = Acad::eOk;
  for (const AcDbObjectId& id : mPending) {
    AcDbObject* object = nullptr;
    if ((es = acdbOpenObject(object, id, AcDb::kForWrite)) != Acad::eOk) break;
    es = CopyStateInto(*object, *object, this);
    object->close();
    if (es != Acad::eOk) break;
  }
  mTranslating = false;
  if (es == Acad::eOk) mPending.clear();
  failWith(es);
  return es;
}

// ---------------------------------------------------------------- taking back

bool ObjectCopier::keepState(AcDbObjectId id) {
  for (const auto& changed : mChanged)
    if (changed.first == id) return true;
  resbuf* state = dxf::SaveState(Peek(id));
  if (!state) return false;
  mChanged.emplace_back(id, state);
  return true;
}

Acad::ErrorStatus ObjectCopier::emptyBlock(AcDbObjectId blockId) {
  auto* block = PeekAs<AcDbBlockTableRecord>(blockId);
  if (!block) return Acad::eInvalidInput;
  const std::vector<AcDbObjectId> entities = block->entityIds();
  for (const AcDbObjectId& id : entities) {
    if (id.isErased()) continue;
    AcDbEntity* entity = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(entity, id, AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    es = entity->erase();
    entity->close();
    if (es != Acad::eOk) return es;
    mErased.push_back(id);
  }
  return Acad::eOk;
}

void ObjectCopier::commit() {
  for (auto& changed : mChanged) acutRelRb(changed.second);
  mChanged.clear();
  mMade.clear();
  mErased.clear();
  mKeys.clear();
  mPending.clear();
}

void ObjectCopier::takeBack() {
  for (auto it = mMade.rbegin(); it != mMade.rend(); ++it) {
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, *it, AcDb::kForWrite) != Acad::eOk) continue;  // erased with its owner already
    object->erase();
    object->close();
  }
  for (auto it = mChanged.rbegin(); it != mChanged.rend(); ++it) {
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, it->first, AcDb::kForWrite, true) == Acad::eOk) {
      dxf::RestoreState(object, it->second);
      object->close();
    }
    acutRelRb(it->second);
  }
  for (const AcDbObjectId& id : mErased) {
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, id, AcDb::kForWrite, true) != Acad::eOk) continue;
    if (object->isErased()) object->erase(false);
    object->close();
  }
  for (const AcDbObjectId& key : mKeys) mMap.del(key);
  mChanged.clear();
  mMade.clear();
  mErased.clear();
  mKeys.clear();
  mPending.clear();
}

// ---------------------------------------------------------------- clones outside a database

namespace {
std::unordered_map<const AcDbObject*, AcDbDatabase*>& ForeignClones() {
  static std::unordered_map<const AcDbObject*, AcDbDatabase*> clones;
  return clones;
}

// Forgets the drawings that go: their clones can no longer be adopted.
class SourceWatch : public ObjectObserver {
 public:
  void beforeWrite(AcDbObject*) override {}
  void added(AcDbObject*) override {}
  void databaseGoing(AcDbDatabase* db) override {
    for (auto& clone : ForeignClones())
      if (clone.second == db) clone.second = nullptr;
  }
};
}  // namespace

void RememberForeignClone(const AcDbObject* clone, AcDbDatabase* source) {
  static SourceWatch* watch = [] {
    auto* w = new SourceWatch;
    AddObjectObserver(w);
    return w;
  }();
  (void)watch;
  ForeignClones()[clone] = source;
}

void ForgetForeignClone(const AcDbObject* clone) {
  auto& clones = ForeignClones();
  if (!clones.empty()) clones.erase(clone);
}

Acad::ErrorStatus AdoptForeignClone(AcDbObject* object, AcDbDatabase* db) {
  auto& clones = ForeignClones();
  if (clones.empty() || !object || !db) return Acad::eOk;
  auto it = clones.find(object);
  if (it == clones.end()) return Acad::eOk;
  AcDbDatabase* source = it->second;
  // A clone of a drawing that is gone names nothing that can be found.
  if (!source) return Acad::eWrongDatabase;
  if (source == db) {
    clones.erase(it);
    return Acad::eOk;
  }
  try {
    AcDbIdMapping map;
    ObjectCopier copier(source, db, ObjectCopier::Mode::kWblock, AcDb::kDrcIgnore, map);
    const Acad::ErrorStatus es = copier.adopt(*object);
    if (es != Acad::eOk) return es;
    copier.commit();
    clones.erase(object);
    return Acad::eOk;
  } catch (...) {
    return Acad::eOutOfMemory;
  }
}

}  // namespace kelhost::db
