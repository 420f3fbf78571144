#include "db/audit.h"

#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "dxf/access.h"
#include "dxf/list_filer.h"

namespace kelhost::db {
namespace {

// Walks an object's groups as a writer does and keeps every object they
// refer to, by id or by record name.
class ReferenceCollector : public dxf::ListWriter {
 public:
  explicit ReferenceCollector(AcDbDatabase* db) : ListWriter(db) {}
  void id(int code, AcDbObjectId& v, dxf::Presence) override {
    if (!v.isNull()) refs.emplace_back(code, v);
  }
  void record(int code, AcDbObjectId& v, AcDbObjectId, const wchar_t*, dxf::Presence, bool) override {
    if (!v.isNull()) refs.emplace_back(code, v);
  }
  std::vector<std::pair<int, AcDbObjectId>> refs;
};

std::wstring Describe(const AcDbObject* object) {
  ACHAR handle[20] = L"0";
  object->objectHandle().getIntoAsciiBuffer(handle, 20);
  return std::wstring(handle) + L" " + object->isA()->name();
}

// What is wrong with a reference from db to id, or empty.
std::wstring BadReference(const AcDbDatabase* db, AcDbObjectId id) {
  if (!id.isValid()) return L"names no object";
  if (id.database() != db) return L"names an object of another drawing";
  if (id.isErased()) return L"names an erased object";
  return L"";
}

}  // namespace

std::vector<std::wstring> AuditReferences(const AcDbDatabase* db) {
  std::vector<std::wstring> problems;
  if (!db) return problems;
  auto* mutableDb = const_cast<AcDbDatabase*>(db);  // the collector only reads
  for (const StubRef& stub : db->state().stubs) {
    if (stub->erased || !stub->object) continue;
    AcDbObject* object = stub->object.get();
    ReferenceCollector collector(mutableDb);
    dxf::Access::fields(object, collector);
    for (const auto& [code, id] : collector.refs) {
      const std::wstring why = BadReference(db, id);
      if (!why.empty()) problems.push_back(Describe(object) + L": group " + std::to_wstring(code) + L" " + why);
    }
    const AcDbObjectId xdict = object->extensionDictionary();
    if (!xdict.isNull() && !xdict.isErased()) {
      const std::wstring why = BadReference(db, xdict);
      if (!why.empty()) problems.push_back(Describe(object) + L": extension dictionary " + why);
    }
    const AcDbObjectId owner = object->ownerId();
    if (owner.isNull()) continue;
    if (const std::wstring why = BadReference(db, owner); !why.empty()) {
      problems.push_back(Describe(object) + L": owner " + why);
      continue;
    }
    if (auto* block = PeekAs<AcDbBlockTableRecord>(owner); block && AcDbEntity::cast(object)) {
      bool held = false;
      for (const AcDbObjectId& e : block->entityIds()) held = held || e == object->objectId();
      if (!held) problems.push_back(Describe(object) + L": not held by its block");
    }
  }
  return problems;
}

}  // namespace kelhost::db
