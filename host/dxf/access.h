// The host's own access to the private state of database objects: the
// stub, the xdata chain, the class's DXF description. Only the database
// layer and the codec use it.
#pragma once

#include "arx/dbdict.h"
#include "arx/dbents.h"
#include "arx/dbsymtb.h"

namespace kelhost::dxf {

class Access {
 public:
  static AcDbStub* stub(const AcDbObject* o) { return o->mStub; }
  static void setStub(AcDbObject* o, AcDbStub* s) { o->mStub = s; }
  static void setOwner(AcDbObject* o, AcDbObjectId owner) { o->mOwner = owner; }
  static void setExtensionDictionary(AcDbObject* o, AcDbObjectId id) { o->mExtensionDictionary = id; }
  static resbuf*& xdata(AcDbObject* o) { return o->mXData; }
  static const resbuf* xdata(const AcDbObject* o) { return o->mXData; }
  static void fields(AcDbObject* o, GroupFiler& filer) { o->dxfFields(filer); }
  static bool paperSpaceRequested(const AcDbEntity* e) { return e->mPaperSpaceRequested; }
  static std::vector<AcDbObjectId>& entities(AcDbBlockTableRecord* b) { return b->mEntities; }
  static std::vector<AcDbObjectId>& records(AcDbSymbolTable* t) { return t->mRecords; }
  static const std::wstring& name(const AcDbSymbolTableRecord* r) { return r->mName; }
  // Every entry's object, erased ones too.
  static std::vector<AcDbObjectId> entryIds(const AcDbDictionary* d) {
    std::vector<AcDbObjectId> ids;
    for (const auto* item : d->mEntries.ordered()) ids.push_back(item->entry.second);
    return ids;
  }
  static void clearEntries(AcDbDictionary* d) { d->mEntries.clear(); }
  static short& flags(AcDbSymbolTableRecord* r) { return r->mFlags; }
  // Adds a record to its table's index without the open-state checks.
  static void index(AcDbSymbolTable* t, AcDbSymbolTableRecord* r, AcDbObjectId id);
  static void unindex(AcDbSymbolTable* t, AcDbSymbolTableRecord* r);
  // After a record's name or erased state was put back from a saved state:
  // its table finds it by its name again (an erased record gives way to a
  // live one of the same name), and no longer by the name it had.
  static void reindex(AcDbSymbolTableRecord* r, const std::wstring& previousName);
};

}  // namespace kelhost::dxf
