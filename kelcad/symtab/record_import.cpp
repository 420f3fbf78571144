#include "kelcad/symtab/record_import.h"

#include <cwchar>

namespace KEL {
namespace RecordImport {

namespace {

template <class Table>
Acad::ErrorStatus OpenAs(AcDbDatabase* db, AcDbSymbolTable*& table, AcDb::OpenMode mode) {
  Table* typed = nullptr;
  const Acad::ErrorStatus es = db->getSymbolTable(typed, mode);
  table = typed;
  return es;
}

bool SameName(const wchar_t* a, const wchar_t* b) { return CString(a).CompareNoCase(b) == 0; }

// Erased records come back without waiting for anything else.
void Unerase(AcDbObjectId id) {
  if (id.isNull()) return;
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, id, AcDb::kForWrite, true) != Acad::eOk) return;
  object->erase(false);
  object->close();
}

// The first record of the table named name (any case), open in mode; null
// with the status of the walk when none matched.
AcDbSymbolTableRecord* FindRecord(AcDbDatabase* db, Kind kind, const wchar_t* name, AcDb::OpenMode mode,
                                  Acad::ErrorStatus& status) {
  AcDbSymbolTable* table = nullptr;
  status = OpenTable(db, kind, table, AcDb::kForRead);
  if (status != Acad::eOk) return nullptr;
  AcDbSymbolTableIterator* it = nullptr;
  status = table->newIterator(it);
  table->close();
  if (status != Acad::eOk) return nullptr;
  AcDbSymbolTableRecord* found = nullptr;
  for (it->start(); !it->done() && found == nullptr; it->step()) {
    AcDbSymbolTableRecord* record = nullptr;
    status = it->getRecord(record, mode);
    if (status != Acad::eOk) continue;
    if (SameName(record->getName(), name))
      found = record;
    else
      record->close();
  }
  delete it;
  return found;
}

// The source record cloned out of its drawing (its own owner, so the clone
// is in no database) and added to the target's table.
Acad::ErrorStatus CopyRecord(Kind kind, AcDbSymbolTableRecord* record, AcDbDatabase* target, AcDbObjectId& newId) {
  AcDbIdMapping map;
  AcDbObject* clone = nullptr;
  const Acad::ErrorStatus cloned = record->deepClone(record, clone, map, true);
  record->close();
  if (cloned != Acad::eOk) acutPrintf(L"\ndeepClone error:%d", static_cast<int>(cloned));
  auto* copy = AcDbSymbolTableRecord::cast(clone);
  if (copy == nullptr) {
    delete clone;
    return Acad::eInvalidInput;
  }
  AcDbSymbolTable* table = nullptr;
  Acad::ErrorStatus es = OpenTable(target, kind, table, AcDb::kForWrite);
  if (es != Acad::eOk) {
    delete copy;
    return es;
  }
  es = table->add(newId, copy);
  if (kind == Kind::kTextStyle) acutPrintf(L"\nImport TextStyle OK%d", static_cast<int>(es));
  if (es == Acad::eOk)
    copy->close();
  else
    delete copy;
  table->close();
  return es;
}

// The ids of a block's entities, in order.
Acad::ErrorStatus BlockEntities(AcDbBlockTableRecord* block, AcDbObjectIdArray& ids) {
  AcDbBlockTableRecordIterator* it = nullptr;
  const Acad::ErrorStatus es = block->newIterator(it);
  if (es != Acad::eOk) return es;
  for (it->start(); !it->done(); it->step()) {
    AcDbObjectId id;
    if (it->getEntityId(id) == Acad::eOk) ids.append(id);
  }
  delete it;
  return Acad::eOk;
}

// A new block of the source block's name and base point in the target,
// filled with copies of its entities; the records they use come along
// unless the target has records of those names (kept as they are).
Acad::ErrorStatus CopyBlock(AcDbSymbolTableRecord* record, AcDbDatabase* source, AcDbDatabase* target,
                            AcDbObjectId& newId) {
  auto* sourceBlock = AcDbBlockTableRecord::cast(record);
  AcDbObjectIdArray entities;
  Acad::ErrorStatus es = sourceBlock != nullptr ? BlockEntities(sourceBlock, entities) : Acad::eInvalidInput;
  const CString name(record->getName());
  const AcGePoint3d origin = sourceBlock != nullptr ? sourceBlock->origin() : AcGePoint3d();
  record->close();
  if (es != Acad::eOk) return es;

  AcDbBlockTable* blocks = nullptr;
  es = target->getBlockTable(blocks, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  auto* made = new AcDbBlockTableRecord;
  es = made->setName(name);
  if (es == Acad::eOk) es = made->setOrigin(origin);
  if (es == Acad::eOk) es = blocks->add(newId, made);
  blocks->close();
  if (es != Acad::eOk) {
    delete made;
    newId.setNull();
    return es;
  }
  made->close();
  if (entities.isEmpty()) return Acad::eOk;
  AcDbIdMapping map;
  es = source->wblockCloneObjects(entities, newId, map, AcDb::kDrcIgnore, false);
  if (es != Acad::eOk) {
    // The copies are already taken back; the empty block goes too.
    AcDbObject* block = nullptr;
    if (acdbOpenObject(block, newId, AcDb::kForWrite) == Acad::eOk) {
      block->erase();
      block->close();
    }
    newId.setNull();
  }
  return es;
}

}  // namespace

Acad::ErrorStatus OpenTable(AcDbDatabase* db, Kind kind, AcDbSymbolTable*& table, AcDb::OpenMode mode) {
  table = nullptr;
  if (db == nullptr) return Acad::eNullObjectPointer;
  switch (kind) {
    case Kind::kTextStyle: return OpenAs<AcDbTextStyleTable>(db, table, mode);
    case Kind::kDimStyle: return OpenAs<AcDbDimStyleTable>(db, table, mode);
    case Kind::kLayer: return OpenAs<AcDbLayerTable>(db, table, mode);
    case Kind::kLinetype: return OpenAs<AcDbLinetypeTable>(db, table, mode);
    case Kind::kBlock: return OpenAs<AcDbBlockTable>(db, table, mode);
  }
  return Acad::eInvalidInput;
}

bool SkippedByImportAll(Kind kind, const wchar_t* name) {
  const CString n(name);
  switch (kind) {
    case Kind::kTextStyle: return n == L"Standard";
    case Kind::kDimStyle: return n == L"ISO-25";
    case Kind::kLayer: return n == L"0";
    case Kind::kLinetype: return n == L"ByBlock" || n == L"ByLayer" || n == L"Continuous";
    case Kind::kBlock: return n.Find(L"Model_Space") >= 0 || n.Find(L"Paper_Space") >= 0;
  }
  return false;
}

bool RecordNames(AcDbDatabase* db, Kind kind, std::vector<CString>& names) {
  names.clear();
  AcDbSymbolTable* table = nullptr;
  if (OpenTable(db, kind, table, AcDb::kForRead) != Acad::eOk) return false;
  AcDbSymbolTableIterator* it = nullptr;
  const bool walked = table->newIterator(it) == Acad::eOk;
  if (walked) {
    for (it->start(); !it->done(); it->step()) {
      AcDbSymbolTableRecord* record = nullptr;
      if (it->getRecord(record, AcDb::kForRead) != Acad::eOk) continue;
      names.emplace_back(record->getName());
      record->close();
    }
    delete it;
  }
  table->close();
  return walked;
}

Acad::ErrorStatus Remove(Kind kind, const wchar_t* name, AcDbDatabase* db, AcDbObjectId* erased) {
  if (erased != nullptr) erased->setNull();
  if (db == nullptr) return Acad::eInvalidInput;
  Acad::ErrorStatus es = Acad::eOk;
  AcDbSymbolTableRecord* record = FindRecord(db, kind, name, AcDb::kForWrite, es);
  if (record == nullptr) return es;
  es = record->erase();
  if (es == Acad::eOk && erased != nullptr) *erased = record->objectId();
  record->close();
  return es;
}

Acad::ErrorStatus Import(Kind kind, AcDbDatabase* source, AcDbDatabase* target, const wchar_t* name,
                         AcDbObjectId& newId, bool replace) {
  if (source == nullptr || target == nullptr) return Acad::eInvalidInput;
  AcDbObjectId replaced;
  if (replace) Remove(kind, name, target, &replaced);
  Acad::ErrorStatus es = Acad::eOk;
  AcDbSymbolTableRecord* record = FindRecord(source, kind, name, AcDb::kForRead, es);
  if (record == nullptr) {
    es = Acad::eInvalidInput;
  } else if (kind == Kind::kBlock) {
    es = CopyBlock(record, source, target, newId);
  } else {
    es = CopyRecord(kind, record, target, newId);
  }
  if (es != Acad::eOk) Unerase(replaced);
  return es;
}

}  // namespace RecordImport
}  // namespace KEL
