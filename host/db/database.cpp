// AcDbDatabase: the object store (stubs by handle, in the order made), the
// tables and dictionaries of a drawing, and the header variables.
#include "db/setters.h"
#include "arx/dbdatabase.h"

#include "arx/dbdict.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/rx_define.h"
#include "db/sequences.h"
#include "db/working.h"
#include "dxf/access.h"

using kelhost::db::Table;

KELHOST_RX_DEFINE(AcDbDatabase, AcRxObject, L"")

namespace kelhost::db {

AcDbStub* DatabaseState::add(AcDbDatabase* db, AcDbObject* object, Adesk::UInt64 handle) {
  if (handle == 0 || byHandle.count(handle)) {
    while (byHandle.count(nextHandle)) ++nextHandle;
    handle = nextHandle++;
  } else if (handle >= nextHandle) {
    nextHandle = handle + 1;
  }
  AcDbStub* stub = pool.make();
  stub->db = db;
  stub->handle = handle;
  stub->object.reset(object);
  stub->writer = true;
  stub->order = stubs.size();
  dxf::Access::setStub(object, stub);
  byHandle.insert(stub);
  stubs.emplace_back(stub);
  AdjustOpenCount(1);
  NotifyAdded(object);
  return stub;
}

}  // namespace kelhost::db

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) : mState(std::make_unique<kelhost::db::DatabaseState>()) {
  if (buildDefaultDrawing) kelhost::db::BuildDefaultDrawing(this);
}

AcDbDatabase::~AcDbDatabase() {
  kelhost::db::NotifyDatabaseGoing(this);
  // Objects still open when the database goes no longer count as open.
  for (auto& stub : mState->stubs)
    kelhost::db::AdjustOpenCount(-(stub->readers + stub->notifiers + (stub->writer ? 1 : 0)));
  mState->pool.forget();
  kelhost::db::DatabaseGoing(this);
}

namespace {
template <class T>
Acad::ErrorStatus OpenById(T*& out, AcDbObjectId id, AcDb::OpenMode mode) {
  out = nullptr;
  if (id.isNull()) return Acad::eNullObjectId;
  return acdbOpenObject(out, id, mode);
}
AcDbObjectId TableId(const kelhost::db::DatabaseState& s, Table t) { return s.tables[static_cast<int>(t)]; }
}  // namespace

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& t, AcDb::OpenMode m) { return OpenById(t, blockTableId(), m); }
Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& t, AcDb::OpenMode m) { return OpenById(t, layerTableId(), m); }
Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& t, AcDb::OpenMode m) {
  return OpenById(t, linetypeTableId(), m);
}
Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& t, AcDb::OpenMode m) {
  return OpenById(t, textStyleTableId(), m);
}
Acad::ErrorStatus AcDbDatabase::getDimStyleTable(AcDbDimStyleTable*& t, AcDb::OpenMode m) {
  return OpenById(t, dimStyleTableId(), m);
}
Acad::ErrorStatus AcDbDatabase::getViewTable(AcDbViewTable*& t, AcDb::OpenMode m) { return OpenById(t, viewTableId(), m); }
Acad::ErrorStatus AcDbDatabase::getUCSTable(AcDbUCSTable*& t, AcDb::OpenMode m) { return OpenById(t, UCSTableId(), m); }
Acad::ErrorStatus AcDbDatabase::getViewportTable(AcDbViewportTable*& t, AcDb::OpenMode m) {
  return OpenById(t, viewportTableId(), m);
}
Acad::ErrorStatus AcDbDatabase::getRegAppTable(AcDbRegAppTable*& t, AcDb::OpenMode m) { return OpenById(t, regAppTableId(), m); }
Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& d, AcDb::OpenMode m) {
  return OpenById(d, namedObjectsDictionaryId(), m);
}
Acad::ErrorStatus AcDbDatabase::getGroupDictionary(AcDbDictionary*& d, AcDb::OpenMode m) {
  return OpenById(d, groupDictionaryId(), m);
}
Acad::ErrorStatus AcDbDatabase::getLayoutDictionary(AcDbDictionary*& d, AcDb::OpenMode m) {
  return OpenById(d, layoutDictionaryId(), m);
}

AcDbObjectId AcDbDatabase::blockTableId() const { return TableId(*mState, Table::kBlock); }
AcDbObjectId AcDbDatabase::layerTableId() const { return TableId(*mState, Table::kLayer); }
AcDbObjectId AcDbDatabase::linetypeTableId() const { return TableId(*mState, Table::kLinetype); }
AcDbObjectId AcDbDatabase::textStyleTableId() const { return TableId(*mState, Table::kTextStyle); }
AcDbObjectId AcDbDatabase::dimStyleTableId() const { return TableId(*mState, Table::kDimStyle); }
AcDbObjectId AcDbDatabase::viewTableId() const { return TableId(*mState, Table::kView); }
AcDbObjectId AcDbDatabase::UCSTableId() const { return TableId(*mState, Table::kUcs); }
AcDbObjectId AcDbDatabase::viewportTableId() const { return TableId(*mState, Table::kViewport); }
AcDbObjectId AcDbDatabase::regAppTableId() const { return TableId(*mState, Table::kRegApp); }
AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const { return mState->namedObjects; }
AcDbObjectId AcDbDatabase::groupDictionaryId() const { return mState->groups; }
AcDbObjectId AcDbDatabase::layoutDictionaryId() const { return mState->layouts; }
AcDbObjectId AcDbDatabase::byLayerLinetype() const { return mState->byLayer; }
AcDbObjectId AcDbDatabase::byBlockLinetype() const { return mState->byBlock; }
AcDbObjectId AcDbDatabase::continuousLinetype() const { return mState->continuous; }
AcDbObjectId AcDbDatabase::layerZero() const { return mState->layerZero; }
AcDbObjectId AcDbDatabase::modelSpaceId() const { return mState->modelSpace; }
AcDbObjectId AcDbDatabase::paperSpaceId() const { return mState->paperSpace; }
AcDbObjectId AcDbDatabase::currentSpaceId() const { return mState->tilemode ? mState->modelSpace : mState->paperSpace; }

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* object) {
  AcDbObjectId id;
  return addAcDbObject(id, object);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object) {
  id.setNull();
  if (!object) return Acad::eNullObjectPointer;
  if (object->isDatabaseResident()) return Acad::eAlreadyInDb;
  id = mState->add(this, object);
  // A complex entity brings the sub-entities it was given before.
  kelhost::db::CommitPendingSubentities(object);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound, const AcDbHandle& objHandle,
                                                Adesk::UInt32) {
  retId.setNull();
  if (objHandle.isNull()) return Acad::eNullHandle;
  AcDbStub* stub = mState->byHandle.lookup(static_cast<Adesk::UInt64>(objHandle));
  if (!stub) return createIfNotFound ? Acad::eNotApplicable : Acad::eUnknownHandle;
  retId = AcDbObjectId(stub);
  return Acad::eOk;
}

AcDbHandle AcDbDatabase::handseed() const { return AcDbHandle(mState->nextHandle); }

namespace {
// Header setters tell the observers before they change a value.
template <class Record>
Acad::ErrorStatus SetRecord(AcDbDatabase* db, const wchar_t* name, AcDbObjectId& slot, AcDbObjectId id) {
  if (!kelhost::db::PeekAs<Record>(id) || id.isErased()) return Acad::eInvalidInput;
  kelhost::db::NotifyBeforeHeaderWrite(db, name);
  slot = id;
  return Acad::eOk;
}
template <class T>
Acad::ErrorStatus SetValue(AcDbDatabase* db, const wchar_t* name, T& slot, T value) {
  kelhost::db::NotifyBeforeHeaderWrite(db, name);
  slot = value;
  return Acad::eOk;
}
}  // namespace

AcDbObjectId AcDbDatabase::clayer() const { return mState->clayer; }
Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId id) {
  return SetRecord<AcDbLayerTableRecord>(this, L"CLAYER", mState->clayer, id);
}
AcDbObjectId AcDbDatabase::celtype() const { return mState->celtype; }
Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId id) {
  return SetRecord<AcDbLinetypeTableRecord>(this, L"CELTYPE", mState->celtype, id);
}
AcDbObjectId AcDbDatabase::textstyle() const { return mState->textstyle; }
Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId id) {
  return SetRecord<AcDbTextStyleTableRecord>(this, L"TEXTSTYLE", mState->textstyle, id);
}
AcDbObjectId AcDbDatabase::dimstyle() const { return mState->dimstyle; }
Acad::ErrorStatus AcDbDatabase::setDimstyle(AcDbObjectId id) {
  return SetRecord<AcDbDimStyleTableRecord>(this, L"DIMSTYLE", mState->dimstyle, id);
}
Adesk::UInt16 AcDbDatabase::cecolorIndex() const { return mState->cecolor; }
Acad::ErrorStatus AcDbDatabase::setCecolorIndex(Adesk::UInt16 index) {
  if (index > 256) return Acad::eOutOfRange;
  return SetValue(this, L"CECOLOR", mState->cecolor, index);
}
double AcDbDatabase::celtscale() const { return mState->celtscale; }
Acad::ErrorStatus AcDbDatabase::setCeltscale(double scale) {
  if (!kelhost::db::Finite(scale)) return Acad::eInvalidInput;
  if (!(scale > 0)) return Acad::eInvalidInput;
  return SetValue(this, L"CELTSCALE", mState->celtscale, scale);
}
AcDb::LineWeight AcDbDatabase::celweight() const { return static_cast<AcDb::LineWeight>(mState->celweight); }
Acad::ErrorStatus AcDbDatabase::setCelweight(AcDb::LineWeight weight) {
  if (weight < AcDb::kLnWtByLwDefault || weight > AcDb::kLnWt211) return Acad::eInvalidInput;
  return SetValue(this, L"CELWEIGHT", mState->celweight, static_cast<Adesk::Int16>(weight));
}
double AcDbDatabase::textsize() const { return mState->textsize; }
Acad::ErrorStatus AcDbDatabase::setTextsize(double size) {
  if (!kelhost::db::Finite(size)) return Acad::eInvalidInput;
  if (!(size > 0)) return Acad::eInvalidInput;
  return SetValue(this, L"TEXTSIZE", mState->textsize, size);
}
double AcDbDatabase::ltscale() const { return mState->ltscale; }
Acad::ErrorStatus AcDbDatabase::setLtscale(double scale) {
  if (!kelhost::db::Finite(scale)) return Acad::eInvalidInput;
  if (!(scale > 0)) return Acad::eInvalidInput;
  return SetValue(this, L"LTSCALE", mState->ltscale, scale);
}
bool AcDbDatabase::tilemode() const { return mState->tilemode; }
Acad::ErrorStatus AcDbDatabase::setTilemode(bool mode) { return SetValue(this, L"TILEMODE", mState->tilemode, mode); }
