#include "db/object_copier.h"

#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "db/database_state.h"
#include "db/explode_copy.h"
#include "db/stub.h"
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

}  // namespace

ObjectCopier::ObjectCopier(AcDbDatabase* source, AcDbDatabase* target, Duplicates duplicates)
    : mSource(source), mTarget(target), mDuplicates(duplicates) {}

ObjectCopier::~ObjectCopier() { takeBack(); }

void ObjectCopier::failWith(Acad::ErrorStatus es) {
  if (mStatus == Acad::eOk) mStatus = es;
}

AcDbObjectId ObjectCopier::lookup(AcDbObjectId source) const {
  auto it = mMap.find(source);
  return it == mMap.end() ? AcDbObjectId::kNull : it->second;
}

// ---------------------------------------------------------------- references

AcDbObjectId ObjectCopier::record(AcDbObjectId targetTable, const wchar_t* name) {
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
  if (source.isNull() || source.database() != mSource) return AcDbObjectId::kNull;
  AcDbObjectId found = lookup(source);
  if (!found.isNull()) return found;
  // Records are shared by whatever names them: they come along. Other
  // objects outside what is copied are left behind.
  if (PeekAs<AcDbSymbolTableRecord>(source)) copyRecord(source, found);
  return found;
}

bool ObjectCopier::application(const wchar_t* name) {
  const AcDbObjectId tableId = mTarget->regAppTableId();
  if (!FindByName(tableId, name).isNull()) return true;
  if (acdbSNValid(name, 0) != RTNORM) return false;
  AcDbRegAppTable* table = nullptr;
  if (acdbOpenObject(table, tableId, AcDb::kForWrite) != Acad::eOk) return false;
  auto* app = new AcDbRegAppTableRecord;
  app->setName(name);
  AcDbObjectId id;
  const Acad::ErrorStatus es = table->add(id, app);
  table->close();
  if (es != Acad::eOk) {
    delete app;
    return false;
  }
  app->close();
  mMade.push_back(id);
  return true;
}

// ---------------------------------------------------------------- records

Acad::ErrorStatus ObjectCopier::copyRecord(AcDbObjectId sourceId, AcDbObjectId& targetId) {
  targetId = lookup(sourceId);
  if (!targetId.isNull()) return Acad::eOk;
  auto* source = PeekAs<AcDbSymbolTableRecord>(sourceId);
  if (!source || sourceId.database() != mSource) return Acad::eInvalidInput;
  const int kind = TableIndex(mSource, source->ownerId());
  if (kind < 0) return Acad::eInvalidInput;
  // A layout's block stands for the target's space of the same kind.
  if (auto* block = AcDbBlockTableRecord::cast(source); block && block->isLayout()) {
    targetId = sourceId == mSource->modelSpaceId() ? mTarget->modelSpaceId() : mTarget->paperSpaceId();
    mMap[sourceId] = targetId;
    return Acad::eOk;
  }
  const AcDbObjectId targetTable = mTarget->state().tables[kind];
  Acad::ErrorStatus es = Acad::eOk;
  const AcDbObjectId existing = IsAnonymousBlock(*source) ? AcDbObjectId::kNull : FindByName(targetTable, source->getName());
  if (!existing.isNull()) {
    // Mapped first, so that what the record's own state names (a block's
    // references to itself) finds it.
    mMap[sourceId] = existing;
    if (mDuplicates == Duplicates::kTakeSource) es = takeSourceState(*source, existing);
    if (es == Acad::eOk) targetId = existing;
  } else {
    es = newRecord(*source, targetTable, targetId);
  }
  if (es != Acad::eOk) {
    mMap.erase(sourceId);
    targetId.setNull();
    failWith(es);
  }
  return es;
}

Acad::ErrorStatus ObjectCopier::newRecord(const AcDbSymbolTableRecord& source, AcDbObjectId targetTable,
                                          AcDbObjectId& made) {
  std::unique_ptr<AcDbObject> copy;
  Acad::ErrorStatus es = CopyObject(source, copy, this);
  if (es != Acad::eOk) return mStatus != Acad::eOk ? mStatus : es;
  auto* record = AcDbSymbolTableRecord::cast(copy.get());
  if (!record) return Acad::eWrongObjectType;
  if (IsAnonymousBlock(source)) record->setName(FreeAnonymousName(targetTable, source.getName()).c_str());
  AcDbSymbolTable* table = nullptr;
  if ((es = acdbOpenObject(table, targetTable, AcDb::kForWrite)) != Acad::eOk) return es;
  es = table->add(made, record);
  table->close();
  if (es != Acad::eOk) return es;
  copy.release()->close();
  mMade.push_back(made);
  mMap[source.objectId()] = made;
  // A block's entities follow it (after it is mapped: they may refer to it).
  if (auto* block = AcDbBlockTableRecord::cast(&source)) return copyEntities(block->entityIds(), made);
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
  Acad::ErrorStatus es = CopyObject(source, copy, this);
  if (es != Acad::eOk) return mStatus != Acad::eOk ? mStatus : es;
  AcDbObject* target = nullptr;
  if ((es = acdbOpenObject(target, existing, AcDb::kForWrite)) != Acad::eOk) return es;
  // The record keeps its own name: only its case may differ.
  const std::wstring name = static_cast<AcDbSymbolTableRecord*>(target)->getName();
  es = CopyStateInto(*copy, *target, this);
  if (es == Acad::eOk) static_cast<AcDbSymbolTableRecord*>(target)->setName(name.c_str());
  target->close();
  if (es != Acad::eOk) return es;
  if (block) return copyEntities(block->entityIds(), existing);
  return Acad::eOk;
}

// ---------------------------------------------------------------- entities

Acad::ErrorStatus ObjectCopier::makeCopies(const std::vector<AcDbObjectId>& entities, const AcGeMatrix3d& xform,
                                           std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbEntity>>>& copies) {
  for (const AcDbObjectId& id : entities) {
    if (id.isNull() || id.database() != mSource) return Acad::eWrongDatabase;
    if (id.isErased()) continue;
    auto* entity = PeekAs<AcDbEntity>(id);
    if (!entity) return Acad::eNotAnEntity;
    std::unique_ptr<AcDbEntity> copy;
    Acad::ErrorStatus es = CopyEntity(*entity, copy, this);
    if (mStatus != Acad::eOk) return mStatus;
    if (es == Acad::eOk && !xform.isIdentity()) es = PlaceCopy(copy, xform);
    if (es != Acad::eOk) return es;
    copies.emplace_back(id, std::move(copy));
  }
  return Acad::eOk;
}

Acad::ErrorStatus ObjectCopier::appendCopies(std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbEntity>>>& copies,
                                             AcDbObjectId targetBlock) {
  if (copies.empty()) return Acad::eOk;
  AcDbBlockTableRecord* block = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(block, targetBlock, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  for (auto& [source, copy] : copies) {
    AcDbObjectId id;
    if ((es = block->appendAcDbEntity(id, copy.get())) != Acad::eOk) break;
    copy.release()->close();
    mMade.push_back(id);
    mMap[source] = id;
  }
  block->close();
  return es;
}

Acad::ErrorStatus ObjectCopier::copyEntities(const std::vector<AcDbObjectId>& entities, AcDbObjectId targetBlock,
                                             const AcGeMatrix3d& xform) {
  if (!PeekAs<AcDbBlockTableRecord>(targetBlock) || targetBlock.database() != mTarget) return Acad::eInvalidInput;
  std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbEntity>>> copies;
  Acad::ErrorStatus es = makeCopies(entities, xform, copies);
  if (es == Acad::eOk) es = appendCopies(copies, targetBlock);
  failWith(es);
  return es;
}

Acad::ErrorStatus ObjectCopier::copyAsBlock(const std::vector<AcDbObjectId>& entities, const std::wstring& name,
                                            const AcGePoint3d& origin, AcDbObjectId& blockId) {
  blockId.setNull();
  if (acdbSNValid(name.c_str(), 0) != RTNORM) return Acad::eInvalidInput;
  if (!FindByName(mSource->blockTableId(), name).isNull()) return Acad::eSelfReference;
  // The copies first: what they name is copied before the block exists.
  std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbEntity>>> copies;
  Acad::ErrorStatus es = makeCopies(entities, AcGeMatrix3d::kIdentity, copies);
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
  if (es == Acad::eOk) es = appendCopies(copies, block);
  if (es != Acad::eOk) return failWith(es), es;
  blockId = block;
  return Acad::eOk;
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
    object->erase(false);
    object->close();
  }
  mChanged.clear();
  mMade.clear();
  mErased.clear();
}

}  // namespace kelhost::db
