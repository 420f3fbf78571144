// acdbEntMake, acdbEntMakeX, acdbEntGet, acdbEntGetX, acdbEntMod,
// acdbEntUpd, acdbEntDel, acdbEntLast, acdbEntNext and acdbHandEnt over
// the working database.
#include <memory>
#include <vector>

#include "ads/entity_names.h"
#include "ads/entity_make.h"
#include "arx/dbblkref.h"
#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "arx/dbapserv.h"
#include "arx/dbents.h"
#include "db/database_state.h"
#include "db/xdata.h"
#include "dxf/access.h"
#include "dxf/codec.h"
#include "dxf/list_filer.h"
#include "kelhost/resbuf_kinds.h"
#include "kelhost/text.h"

namespace kelhost::ads {

AcDbDatabase* WorkingDb() { return acdbHostApplicationServices()->workingDatabase(); }

AcDbObjectId IdOfName(const ads_name name) {
  AcDbObjectId id;
  if (!name || acdbGetObjectId(id, name) != Acad::eOk) return AcDbObjectId::kNull;
  return id;
}

void NameOfId(AcDbObjectId id, ads_name name) { acdbGetAdsName(name, id); }

AcDbObjectId TableByName(const ACHAR* tableName) {
  static const struct {
    const wchar_t* name;
    db::Table table;
  } kTables[] = {{L"BLOCK", db::Table::kBlock},     {L"LAYER", db::Table::kLayer},  {L"LTYPE", db::Table::kLinetype},
                 {L"STYLE", db::Table::kTextStyle}, {L"DIMSTYLE", db::Table::kDimStyle}, {L"VIEW", db::Table::kView},
                 {L"UCS", db::Table::kUcs},         {L"VPORT", db::Table::kViewport}, {L"APPID", db::Table::kRegApp}};
  AcDbDatabase* db = WorkingDb();
  if (!tableName || !db) return AcDbObjectId::kNull;
  const std::wstring upper = ToUpper(tableName);
  for (const auto& t : kTables)
    if (upper == t.name) return db->state().tables[static_cast<int>(t.table)];
  return AcDbObjectId::kNull;
}

namespace {

// The table a record of this class goes to.
AcDbObjectId TableForRecord(AcDbDatabase* db, const AcDbObject* record) {
  const AcDbObjectId tables[] = {db->blockTableId(), db->layerTableId(), db->linetypeTableId(),
                                 db->textStyleTableId(), db->dimStyleTableId(), db->viewTableId(),
                                 db->UCSTableId(), db->viewportTableId(), db->regAppTableId()};
  for (const AcDbObjectId& t : tables)
    if (auto* table = db::PeekAs<AcDbSymbolTable>(t))
      if (record->isKindOf(table->recordClass())) return t;
  return AcDbObjectId::kNull;
}

// The groups of a list that describe the object itself: not its name,
// type, handle, owner or extension-dictionary groups, and not its xdata.
std::vector<const resbuf*> OwnGroups(const resbuf* list) {
  std::vector<const resbuf*> groups;
  bool header = true;
  int braces = 0;
  for (const resbuf* rb = list; rb && rb->restype != -3; rb = rb->rbnext) {
    if (rb->restype == 100) header = false;
    if (rb->restype == 102) {
      const std::wstring text = rb->resval.rstring ? rb->resval.rstring : L"";
      braces += !text.empty() && text[0] == L'{' ? 1 : text == L"}" ? -1 : 0;
      continue;
    }
    if (braces > 0) continue;
    if (rb->restype == -1 || rb->restype == 0 || rb->restype == 5) continue;
    if (header && (rb->restype == 330 || rb->restype == 360)) continue;
    groups.push_back(rb);
  }
  return groups;
}

// The type named by the list: its first group, or its second after -1.
const resbuf* TypeGroup(const resbuf* list) {
  if (list && list->restype == -1) list = list->rbnext;
  return list && list->restype == 0 && list->resval.rstring ? list : nullptr;
}

// Creates the records a reader queued (new layers).
bool CreatePending(AcDbDatabase* db, std::vector<dxf::GroupFiler::PendingRecord>& pending) {
  for (auto& p : pending) {
    AcDbLayerTable* table = nullptr;
    if (p.table != db->layerTableId() || acdbOpenObject(table, p.table, AcDb::kForWrite) != Acad::eOk) return false;
    AcDbObjectId id;
    if (table->getAt(p.name.c_str(), id) != Acad::eOk) {
      auto* layer = new AcDbLayerTableRecord;
      layer->setName(p.name.c_str());
      layer->setLinetypeObjectId(db->continuousLinetype());
      if (table->add(id, layer) == Acad::eOk) {
        layer->close();
      } else {
        delete layer;
      }
    }
    table->close();
    if (id.isNull()) return false;
    *p.target = id;
  }
  return true;
}

}  // namespace

int ReadEntityList(const resbuf* list, std::unique_ptr<AcDbObject>& object,
                   std::vector<dxf::GroupFiler::PendingRecord>& pending) {
  AcDbDatabase* db = WorkingDb();
  const resbuf* type = TypeGroup(list);
  if (!db || !type) return RTREJ;
  object = NewObjectForList(type->resval.rstring, list);
  if (!object) return RTREJ;
  dxf::ListReader reader(db, OwnGroups(list), false);
  dxf::Access::fields(object.get(), reader);
  if (reader.failed()) return RTREJ;
  if (const resbuf* sentinel = dxf::XDataSentinel(list)) {
    if (db::CheckXData(db, sentinel->rbnext) != Acad::eOk) return RTREJ;
    resbuf*& xdata = dxf::Access::xdata(object.get());
    xdata = db::MergeXData(nullptr, sentinel->rbnext);
    if (!xdata && sentinel->rbnext) return RTREJ;
  }
  pending = std::move(reader.pendingRecords);
  return RTNORM;
}

bool CreatePendingRecords(AcDbDatabase* db, std::vector<dxf::GroupFiler::PendingRecord>& pending) {
  return CreatePending(db, pending);
}

namespace {

// The entity-making core: RTNORM with made set, or RTREJ with nothing
// added to the database.
int Make(const resbuf* list, AcDbObjectId& made) {
  made.setNull();
  AcDbDatabase* db = WorkingDb();
  std::unique_ptr<AcDbObject> object;
  std::vector<dxf::GroupFiler::PendingRecord> pending;
  if (ReadEntityList(list, object, pending) != RTNORM) return RTREJ;
  // Sub-entities come only within their sequence.
  if (AcDbVertex::cast(object.get()) || AcDbAttribute::cast(object.get()) || AcDbSequenceEnd::cast(object.get()))
    return RTREJ;
  auto* entity = AcDbEntity::cast(object.get());
  auto* record = AcDbSymbolTableRecord::cast(object.get());
  AcDbObjectId tableId;
  if (record) {
    tableId = TableForRecord(db, record);
    auto* table = db::PeekAs<AcDbSymbolTable>(tableId);
    if (!table || table->has(record->getName())) return RTREJ;
    if (AcDbBlockTableRecord::cast(record)) return RTREJ;  // block definitions come as BLOCK...ENDBLK
  }
  if (!CreatePending(db, pending)) return RTREJ;
  Acad::ErrorStatus es;
  if (entity) {
    AcDbBlockTableRecord* space = nullptr;
    AcDbObjectId spaceId = dxf::Access::paperSpaceRequested(entity) ? db->paperSpaceId() : db->modelSpaceId();
    es = acdbOpenObject(space, spaceId, AcDb::kForWrite);
    if (es != Acad::eOk) return RTREJ;
    es = space->appendAcDbEntity(made, entity);
    space->close();
  } else if (record) {
    AcDbSymbolTable* table = nullptr;
    es = acdbOpenObject(table, tableId, AcDb::kForWrite);
    if (es != Acad::eOk) return RTREJ;
    es = table->add(made, record);
    table->close();
  } else {
    es = db->addAcDbObject(made, object.get());
  }
  if (es != Acad::eOk) return RTREJ;
  object.release()->close();
  return RTNORM;
}

// The object behind a name for reading: live, not erased, not open for write.
AcDbObject* Readable(const ads_name name) {
  AcDbObjectId id = IdOfName(name);
  AcDbStub* stub = id;
  if (id.isNull() || stub->erased || stub->writer) return nullptr;
  return stub->object.get();
}

bool IsMainEntity(const AcDbStub* stub) {
  const AcDbDatabase* db = stub->db;
  if (stub->erased || !AcDbEntity::cast(stub->object.get())) return false;
  AcDbObjectId owner = stub->object->ownerId();
  return owner == db->modelSpaceId() || owner == db->paperSpaceId();
}

}  // namespace
}  // namespace kelhost::ads

using namespace kelhost;

resbuf* acdbEntGet(const ads_name ent) {
  AcDbObject* object = ads::Readable(ent);
  return object ? dxf::ObjectToList(object, nullptr) : nullptr;
}

resbuf* acdbEntGetX(const ads_name ent, const resbuf* args) {
  AcDbObject* object = ads::Readable(ent);
  if (!object) return nullptr;
  // Without application names there is no xdata to add.
  static const resbuf kNone = [] {
    resbuf rb{};
    rb.restype = RTNONE;
    return rb;
  }();
  return dxf::ObjectToList(object, args ? args : &kNone);
}

int acdbEntMake(const resbuf* ent) {
  if (FirstNonFinite(ent)) return RTREJ;
  AcDbObjectId made;
  int rc = RTNORM;
  if (ads::MakeInSequence(ent, made, rc)) return rc;
  return ads::Make(ent, made);
}

int acdbEntMakeX(const resbuf* ent, ads_name result) {
  AcDbObjectId made;
  int rc = RTNORM;
  if (FirstNonFinite(ent)) {
    if (result) ads_name_clear(result);
    return RTREJ;
  }
  if (!ads::MakeInSequence(ent, made, rc)) rc = ads::Make(ent, made);
  if (result) {
    if ((rc == RTNORM || rc == RTKWORD) && !made.isNull()) ads::NameOfId(made, result);
    else ads_name_clear(result);
  }
  return rc;
}

int acdbEntMod(const resbuf* ent) {
  if (!ent || ent->restype != -1 || FirstNonFinite(ent)) return RTERROR;
  AcDbObjectId id = ads::IdOfName(ent->resval.rlname);
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, id, AcDb::kForWrite) != Acad::eOk) return RTERROR;
  const resbuf* type = ads::TypeGroup(ent);
  resbuf* saved = dxf::SaveState(object);
  auto* record = AcDbSymbolTableRecord::cast(object);
  const std::wstring oldName = record ? record->getName() : L"";
  bool ok = saved && (!type || EqualNoCase(type->resval.rstring, object->isA()->dxfName()));
  dxf::ListReader reader(object->database(), ads::OwnGroups(ent), true);
  if (ok) {
    dxf::Access::fields(object, reader);
    ok = !reader.failed();
  }
  if (ok && record && record->getName() != oldName) {
    // A renamed record goes through setName, which keeps its table's index.
    const std::wstring newName = record->getName();
    const_cast<std::wstring&>(dxf::Access::name(record)) = oldName;
    ok = record->setName(newName.c_str()) == Acad::eOk;
  }
  if (ok) {
    if (const resbuf* sentinel = dxf::XDataSentinel(ent)) ok = object->setXData(sentinel->rbnext) == Acad::eOk;
  }
  if (ok) ok = ads::CreatePending(object->database(), reader.pendingRecords);
  if (!ok && saved) dxf::RestoreState(object, saved);
  acutRelRb(saved);
  object->close();
  return ok ? RTNORM : RTERROR;
}

int acdbEntUpd(const ads_name ent) { return ads::Readable(ent) ? RTNORM : RTERROR; }

int acdbEntDel(const ads_name ent) {
  AcDbObjectId id = ads::IdOfName(ent);
  AcDbObject* object = nullptr;
  if (id.isNull() || AcDbSymbolTableRecord::cast(kelhost::db::Peek(id)) ||
      AcDbSymbolTable::cast(kelhost::db::Peek(id)))
    return RTERROR;
  // Vertices, attributes and SEQENDs go only with their main entity.
  if (ads::MainEntityOf(id) != static_cast<AcDbStub*>(id)) return RTERROR;
  if (acdbOpenObject(object, id, AcDb::kForWrite, true) != Acad::eOk) return RTERROR;
  Acad::ErrorStatus es = object->erase(!object->isErased());
  object->close();
  return es == Acad::eOk ? RTNORM : RTERROR;
}

int acdbEntLast(ads_name result) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!result || !db) return RTERROR;
  const auto& stubs = db->state().stubs;
  for (size_t i = stubs.size(); i-- > 0;)
    if (ads::IsMainEntity(stubs[i].get())) {
      ads::NameOfId(stubs[i].get(), result);
      return RTNORM;
    }
  ads_name_clear(result);
  return RTERROR;
}

int acdbEntNext(const ads_name ent, ads_name result) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!result || !db) return RTERROR;
  size_t from = 0;
  if (ent && !ads_name_nil(ent)) {
    AcDbObjectId id = ads::IdOfName(ent);
    AcDbStub* stub = id;
    if (id.isNull() || stub->db != db) return RTERROR;
    // Into and along the sub-entities of a complex entity.
    AcDbObjectId sub = ads::NextInSequence(id);
    if (!sub.isNull()) {
      ads::NameOfId(sub, result);
      return RTNORM;
    }
    from = ads::MainEntityOf(id)->order + 1;
  }
  const auto& stubs = db->state().stubs;
  for (size_t i = from; i < stubs.size(); ++i)
    if (ads::IsMainEntity(stubs[i].get())) {
      ads::NameOfId(stubs[i].get(), result);
      return RTNORM;
    }
  ads_name_clear(result);
  return RTERROR;
}

int acdbHandEnt(const ACHAR* handle, ads_name entres) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!handle || !entres || !db) return RTERROR;
  AcDbHandle h(handle);
  AcDbObjectId id;
  if (h.isNull() || db->getAcDbObjectId(id, false, h) != Acad::eOk) return RTERROR;
  ads::NameOfId(id, entres);
  return RTNORM;
}
