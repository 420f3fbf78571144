// Symbol tables and dictionaries by name: acdbTblSearch, acdbTblNext,
// acdbTblObjName, acdbRegApp, acdbNamedObjDict, acdbDict*, and the xdata
// room and name checks.
#include "ads/entity_names.h"
#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "arx/dbdict.h"
#include "db/database_state.h"
#include "db/xdata.h"
#include "dxf/access.h"
#include "dxf/codec.h"
#include "dxf/list_filer.h"
#include "kelhost/text.h"

using namespace kelhost;

namespace {

// The list tblsearch and tblnext give: the record's groups without its
// name, handle, owner, subclass and newer (plot, lineweight, material)
// groups. A block is described by its BLOCK entity (with an external
// reference's path) and its first entity.
resbuf* TableList(AcDbSymbolTableRecord* record) {
  if (auto* block = AcDbBlockTableRecord::cast(record)) {
    dxf::ListWriter w(block->database());
    w.addText(0, L"BLOCK");
    w.addText(2, block->getName());
    if (resbuf* rb = w.add(70)) rb->resval.rint = dxf::Access::flags(block);
    AcGePoint3d origin = block->origin();
    w.point(10, origin, dxf::Presence::kAlways);
    const ACHAR* path = nullptr;
    if (block->isFromExternalReference() && block->pathName(path) == Acad::eOk && path && *path)
      w.addText(1, path);
    for (const AcDbObjectId& id : block->entityIds())
      if (!id.isErased()) {
        w.addName(-2, id);
        break;
      }
    return w.take();
  }
  resbuf* list = dxf::ObjectToList(record, nullptr);
  resbuf* head = nullptr;
  resbuf** tail = &head;
  int braces = 0;
  for (resbuf* rb = list; rb;) {
    resbuf* next = rb->rbnext;
    rb->rbnext = nullptr;
    const int code = rb->restype;
    if (code == 102) braces += rb->resval.rstring && rb->resval.rstring[0] == L'{' ? 1 : -1;
    const bool drop = braces > 0 || code == 102 || code == -1 || code == 5 || code == 330 || code == 100 ||
                      code == 360 || code == 290 || code == 370 || code == 390 || code == 347 || code == 348;
    if (drop) {
      acutRelRb(rb);
    } else {
      *tail = rb;
      tail = &rb->rbnext;
    }
    rb = next;
  }
  return head;
}

// Model and paper space are not listed by tblnext.
bool Listed(AcDbObjectId id) {
  auto* block = db::PeekAs<AcDbBlockTableRecord>(id);
  return !id.isErased() && !(block && block->isLayout());
}

AcDbDictionary* DictOfName(const ads_name dict) { return db::PeekAs<AcDbDictionary>(ads::IdOfName(dict)); }

resbuf* EntryList(AcDbObjectId id) {
  AcDbObject* entry = db::Peek(id);
  AcDbStub* stub = id;
  if (!entry || stub->writer) return nullptr;
  return dxf::ObjectToList(entry, nullptr);
}

}  // namespace

resbuf* acdbTblSearch(const ACHAR* tblname, const ACHAR* sym, int setnext) {
  AcDbObjectId tableId = ads::TableByName(tblname);
  auto* table = db::PeekAs<AcDbSymbolTable>(tableId);
  AcDbObjectId id;
  if (!table || !sym || table->getAt(sym, id) != Acad::eOk) return nullptr;
  if (setnext) ads::WorkingDb()->state().tableCursor[static_cast<AcDbStub*>(tableId)] = id;
  return TableList(db::PeekAs<AcDbSymbolTableRecord>(id));
}

resbuf* acdbTblNext(const ACHAR* tblname, int rewind) {
  AcDbObjectId tableId = ads::TableByName(tblname);
  auto* table = db::PeekAs<AcDbSymbolTable>(tableId);
  if (!table) return nullptr;
  AcDbObjectId& cursor = ads::WorkingDb()->state().tableCursor[static_cast<AcDbStub*>(tableId)];
  const auto& records = dxf::Access::records(table);
  size_t i = 0;
  if (!rewind && !cursor.isNull()) {
    while (i < records.size() && records[i] != cursor) ++i;
    if (i < records.size()) ++i;
  }
  while (i < records.size() && !Listed(records[i])) ++i;
  if (i >= records.size()) {
    if (!records.empty()) cursor = records.back();
    return nullptr;
  }
  cursor = records[i];
  return TableList(db::PeekAs<AcDbSymbolTableRecord>(records[i]));
}

int acdbTblObjName(const ACHAR* tblname, const ACHAR* sym, ads_name result) {
  auto* table = db::PeekAs<AcDbSymbolTable>(ads::TableByName(tblname));
  AcDbObjectId id;
  if (!table || !sym || !result || table->getAt(sym, id) != Acad::eOk) return RTERROR;
  ads::NameOfId(id, result);
  return RTNORM;
}

int acdbRegApp(const ACHAR* appname) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db || !appname || acdbSNValid(appname, 0) != RTNORM) return RTERROR;
  AcDbRegAppTable* table = nullptr;
  if (db->getRegAppTable(table, AcDb::kForWrite) != Acad::eOk) return RTERROR;
  int rc = RTERROR;
  if (!table->has(appname)) {
    auto* record = new AcDbRegAppTableRecord;
    record->setName(appname);
    if (table->add(record) == Acad::eOk) {
      record->close();
      rc = RTNORM;
    } else {
      delete record;
    }
  }
  table->close();
  return rc;
}

int acdbNamedObjDict(ads_name result) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db || !result) return RTERROR;
  ads::NameOfId(db->namedObjectsDictionaryId(), result);
  return RTNORM;
}

resbuf* acdbDictSearch(const ads_name dict, const ACHAR* sym, int setnext) {
  AcDbDictionary* d = DictOfName(dict);
  AcDbObjectId id;
  if (!d || !sym || d->getAt(sym, id) != Acad::eOk) return nullptr;
  if (setnext) ads::WorkingDb()->state().dictCursor[static_cast<AcDbStub*>(d->objectId())] = ToUpper(sym);
  return EntryList(id);
}

resbuf* acdbDictNext(const ads_name dict, int rewind) {
  AcDbDictionary* d = DictOfName(dict);
  if (!d) return nullptr;
  auto& cursors = ads::WorkingDb()->state().dictCursor;
  auto found = cursors.find(static_cast<AcDbStub*>(d->objectId()));
  const bool fromStart = rewind || found == cursors.end();
  const std::wstring after = fromStart ? L"" : found->second;
  AcDbDictionaryIterator* it = d->newIterator();
  AcDbObjectId next;
  std::wstring key;
  for (; !it->done(); it->next()) {
    std::wstring k = ToUpper(it->name());
    if (fromStart || k > after) {
      next = it->objectId();
      key = k;
      break;
    }
  }
  delete it;
  if (next.isNull()) {
    if (!fromStart) return nullptr;
    cursors.erase(static_cast<AcDbStub*>(d->objectId()));
    return nullptr;
  }
  cursors[static_cast<AcDbStub*>(d->objectId())] = key;
  return EntryList(next);
}

int acdbDictAdd(const ads_name dict, const ACHAR* sym, const ads_name newobj) {
  AcDbObjectId dictId = ads::IdOfName(dict);
  AcDbObjectId objId = ads::IdOfName(newobj);
  AcDbObject* object = db::Peek(objId);
  if (!sym || !*sym || !object || objId.isErased() || AcDbEntity::cast(object) || !object->ownerId().isNull() ||
      objId == dictId)
    return RTERROR;
  AcDbDictionary* d = nullptr;
  if (acdbOpenObject(d, dictId, AcDb::kForWrite) != Acad::eOk) return RTERROR;
  AcDbObjectId id;
  int rc = RTERROR;
  if (!d->has(sym) && d->database() == object->database()) rc = d->setAt(sym, object, id) == Acad::eOk ? RTNORM : RTERROR;
  d->close();
  return rc;
}

int acdbDictRemove(const ads_name dict, const ACHAR* sym) {
  AcDbDictionary* d = nullptr;
  if (!sym || acdbOpenObject(d, ads::IdOfName(dict), AcDb::kForWrite) != Acad::eOk) return RTERROR;
  int rc = d->remove(sym) == Acad::eOk ? RTNORM : RTERROR;
  d->close();
  return rc;
}

int acdbDictRename(const ads_name dict, const ACHAR* oldsym, const ACHAR* newsym) {
  AcDbDictionary* d = nullptr;
  if (!oldsym || !newsym || acdbOpenObject(d, ads::IdOfName(dict), AcDb::kForWrite) != Acad::eOk) return RTERROR;
  int rc = d->setName(oldsym, newsym) == Acad::eOk ? RTNORM : RTERROR;
  d->close();
  return rc;
}

int acdbXdRoom(const ads_name ent, long* result) {
  AcDbObject* object = db::Peek(ads::IdOfName(ent));
  if (!object || !result) return RTERROR;
  *result = db::kXDataLimit - db::XDataSize(dxf::Access::xdata(object));
  return RTNORM;
}

int acdbXdSize(const resbuf* rb, long* result) {
  if (!result) return RTERROR;
  if (rb && rb->restype == -3) rb = rb->rbnext;
  if (!rb || db::CheckXData(ads::WorkingDb(), rb) != Acad::eOk) return RTERROR;
  *result = db::XDataSize(rb);
  return RTNORM;
}

int acdbSNValid(const ACHAR* tbstr, int pipetest) {
  if (!tbstr || !*tbstr) return RTERROR;
  const std::wstring name = tbstr;
  for (size_t i = 0; i < name.size(); ++i) {
    const wchar_t ch = name[i];
    if (ch < 32 || ch == 127) return RTERROR;
    if (std::wstring(L"<>/\\\":?*,=`;").find(ch) != std::wstring::npos) return RTERROR;
    if (ch == L'|' && (pipetest != 1 || i == 0 || i + 1 == name.size())) return RTERROR;
  }
  return RTNORM;
}
