// Makes a drawing by cloning from two templates, as a family's template
// import does, for the interoperability check clone_ezdxf.py:
//   clone_drawing FIRST.dwt SECOND.dwt OUT.dxf
// Everything of the first template comes in (its layers, linetypes, text
// styles and dimension styles by table, each block as a new record filled
// by wblockCloneObjects, its model space); of the second, whose layers
// clash with the first's, the block PUMP the same way (the receiving
// drawing's layers kept) and its model space with every incoming record
// renamed. The host's audit of the result is printed; exit 1 on any
// failure.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "arx/arxheaders.h"
#include "db/audit.h"
#include "kelhost/text.h"

namespace {

bool Ok(Acad::ErrorStatus es, const char* what) {
  if (es != Acad::eOk) std::fprintf(stderr, "clone_drawing: %s: status %d\n", what, static_cast<int>(es));
  return es == Acad::eOk;
}

std::unique_ptr<AcDbDatabase> ReadTemplate(const char* path) {
  auto db = std::make_unique<AcDbDatabase>(false, false);
  if (!Ok(db->readDwgFile(kelhost::FromUtf8(path).c_str(), _SH_DENYWR, false, nullptr), path)) return nullptr;
  return db;
}

template <class Table>
std::vector<AcDbObjectId> Records(AcDbDatabase* db) {
  std::vector<AcDbObjectId> ids;
  Table* table = nullptr;
  if (db->getSymbolTable(table, AcDb::kForRead) != Acad::eOk) return ids;
  AcDbSymbolTableIterator* it = nullptr;
  table->newIterator(it);
  for (; !it->done(); it->step()) {
    AcDbObjectId id;
    it->getRecordId(id);
    ids.push_back(id);
  }
  delete it;
  table->close();
  return ids;
}

std::vector<AcDbObjectId> Entities(AcDbObjectId blockId) {
  std::vector<AcDbObjectId> ids;
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk) return ids;
  AcDbBlockTableRecordIterator* it = nullptr;
  block->newIterator(it);
  for (; !it->done(); it->step()) {
    AcDbObjectId id;
    it->getEntityId(id);
    ids.push_back(id);
  }
  delete it;
  block->close();
  return ids;
}

bool Clone(AcDbDatabase* source, const std::vector<AcDbObjectId>& ids, AcDbObjectId owner,
           AcDb::DuplicateRecordCloning drc, const char* what) {
  AcDbObjectIdArray array;
  for (const AcDbObjectId& id : ids) array.append(id);
  AcDbIdMapping map;
  return Ok(source->wblockCloneObjects(array, owner, map, drc), what);
}

// A block of the source brought in as a new record of target.
bool ImportBlock(AcDbDatabase* source, AcDbDatabase* target, AcDbObjectId sourceBlock) {
  AcDbBlockTableRecord* from = nullptr;
  if (!Ok(acdbOpenObject(from, sourceBlock, AcDb::kForRead), "open block")) return false;
  const std::wstring name = from->getName();
  const AcGePoint3d origin = from->origin();
  const bool skip = from->isLayout() || from->isAnonymous();
  from->close();
  if (skip) return true;
  AcDbBlockTable* table = nullptr;
  if (!Ok(target->getBlockTable(table, AcDb::kForWrite), "block table")) return false;
  auto* record = new AcDbBlockTableRecord;
  record->setName(name.c_str());
  record->setOrigin(origin);
  AcDbObjectId made;
  const Acad::ErrorStatus es = table->add(made, record);
  table->close();
  if (es != Acad::eOk) {
    delete record;
    return Ok(es, "add block");
  }
  record->close();
  return Clone(source, Entities(sourceBlock), made, AcDb::kDrcIgnore, "block entities");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: clone_drawing FIRST.dwt SECOND.dwt OUT.dxf\n");
    return 2;
  }
  std::unique_ptr<AcDbDatabase> first = ReadTemplate(argv[1]), second = ReadTemplate(argv[2]);
  if (!first || !second) return 1;
  auto target = std::make_unique<AcDbDatabase>(true, true);
  bool ok = Clone(first.get(), Records<AcDbLinetypeTable>(first.get()), target->linetypeTableId(), AcDb::kDrcIgnore,
                  "linetypes") &&
            Clone(first.get(), Records<AcDbLayerTable>(first.get()), target->layerTableId(), AcDb::kDrcIgnore,
                  "layers") &&
            Clone(first.get(), Records<AcDbTextStyleTable>(first.get()), target->textStyleTableId(),
                  AcDb::kDrcIgnore, "text styles") &&
            Clone(first.get(), Records<AcDbDimStyleTable>(first.get()), target->dimStyleTableId(), AcDb::kDrcIgnore,
                  "dimension styles");
  for (const AcDbObjectId& block : Records<AcDbBlockTable>(first.get()))
    ok = ok && ImportBlock(first.get(), target.get(), block);
  ok = ok && Clone(first.get(), Entities(first->modelSpaceId()), target->modelSpaceId(), AcDb::kDrcIgnore,
                   "first model space");
  AcDbObjectId pump;
  {
    AcDbBlockTable* table = nullptr;
    ok = ok && Ok(second->getBlockTable(table, AcDb::kForRead), "second's blocks");
    if (table) {
      ok = ok && Ok(table->getAt(L"PUMP", pump), "PUMP");
      table->close();
    }
  }
  ok = ok && ImportBlock(second.get(), target.get(), pump);
  ok = ok && Clone(second.get(), Entities(second->modelSpaceId()), target->modelSpaceId(), AcDb::kDrcMangleName,
                   "second model space");
  for (const std::wstring& problem : kelhost::db::AuditReferences(target.get())) {
    std::fprintf(stderr, "audit: %s\n", kelhost::ToUtf8(problem).c_str());
    ok = false;
  }
  ok = ok && Ok(target->saveAs(kelhost::FromUtf8(argv[3]).c_str()), "save");
  return ok ? 0 : 1;
}
