// AcDbEntity: the properties every entity has and their DXF groups.
#include <cstdlib>
#include <cwchar>

#include "db/setters.h"
#include "arx/dbapserv.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/rx_define.h"
#include "dxf/group_filer.h"

KELHOST_RX_DEFINE(AcDbEntity, AcDbObject, L"")

namespace {
ACHAR* Duplicate(const ACHAR* text) {
  size_t n = std::wcslen(text) + 1;
  auto* copy = static_cast<ACHAR*>(std::malloc(n * sizeof(ACHAR)));
  if (copy) std::wmemcpy(copy, text, n);
  return copy;
}

const ACHAR* RecordName(AcDbObjectId id, const ACHAR* fallback) {
  auto* rec = kelhost::db::PeekAs<AcDbSymbolTableRecord>(id);
  return rec ? rec->getName() : fallback;
}

// The record of that name in a table of db, or null.
AcDbObjectId Lookup(AcDbDatabase* db, AcDbObjectId tableId, const ACHAR* name) {
  auto* table = kelhost::db::PeekAs<AcDbSymbolTable>(tableId);
  AcDbObjectId id;
  if (!db || !table || !name || table->getAt(name, id) != Acad::eOk) return AcDbObjectId::kNull;
  return id;
}

AcDbDatabase* DatabaseFor(const AcDbEntity* e) {
  return e->database() ? e->database() : acdbHostApplicationServices()->workingDatabase();
}
}  // namespace

AcDbEntity::AcDbEntity() = default;

ACHAR* AcDbEntity::layer() const { return Duplicate(RecordName(mLayer, L"0")); }
ACHAR* AcDbEntity::linetype() const { return Duplicate(RecordName(mLinetype, L"ByLayer")); }

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* newVal, bool) {
  AcDbDatabase* db = DatabaseFor(this);
  AcDbObjectId id = Lookup(db, db ? db->layerTableId() : AcDbObjectId::kNull, newVal);
  if (id.isNull()) return Acad::eKeyNotFound;
  return setLayer(id);
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId newVal, bool) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!kelhost::db::PeekAs<AcDbLayerTableRecord>(newVal)) return Acad::eInvalidInput;
  mLayer = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 color, bool) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (color > 256) return Acad::eOutOfRange;
  mColorIndex = color;
  mTrueColor = -1;
  return Acad::eOk;
}

AcCmEntityColor AcDbEntity::entityColor() const {
  AcCmEntityColor c;
  if (mTrueColor >= 0)
    c.setRGB(static_cast<Adesk::UInt8>(mTrueColor >> 16), static_cast<Adesk::UInt8>(mTrueColor >> 8),
             static_cast<Adesk::UInt8>(mTrueColor));
  else
    c.setColorIndex(static_cast<Adesk::Int16>(mColorIndex));
  return c;
}

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* newVal, bool) {
  AcDbDatabase* db = DatabaseFor(this);
  AcDbObjectId id = Lookup(db, db ? db->linetypeTableId() : AcDbObjectId::kNull, newVal);
  if (id.isNull()) return Acad::eKeyNotFound;
  return setLinetype(id);
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId newVal, bool) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!kelhost::db::PeekAs<AcDbLinetypeTableRecord>(newVal)) return Acad::eInvalidInput;
  mLinetype = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double newVal, bool) {
  if (!kelhost::db::Finite(newVal)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!(newVal > 0)) return Acad::eInvalidInput;
  mLinetypeScale = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight newVal, bool) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (newVal < AcDb::kLnWtByLwDefault || newVal > AcDb::kLnWt211) return Acad::eInvalidInput;
  mLineWeight = static_cast<Adesk::Int16>(newVal);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility newVal, bool) {
  if (!writable()) return Acad::eNotOpenForWrite;
  mInvisible = newVal == AcDb::kInvisible;
  return Acad::eOk;
}

void AcDbEntity::setDatabaseDefaults() { setDatabaseDefaults(DatabaseFor(this)); }

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* db) {
  if (!db || !writable()) return;
  mLayer = db->clayer();
  mLinetype = db->celtype();
  mColorIndex = db->cecolorIndex();
  mLinetypeScale = db->celtscale();
  mLineWeight = static_cast<Adesk::Int16>(db->celweight());
}

void AcDbEntity::dxfFields(kelhost::dxf::GroupFiler& f) {
  using kelhost::dxf::Presence;
  AcDbDatabase* db = f.database();
  f.subclass(L"AcDbEntity");
  short paper = 0;
  if (!f.reading() && db && !ownerId().isNull() && ownerId() == db->paperSpaceId()) paper = 1;
  f.int16(67, paper, 0, Presence::kAlways);
  if (f.reading()) mPaperSpaceRequested = paper != 0;
  std::wstring layout = paper ? L"Layout1" : L"Model";
  f.text(410, layout, L"Model", Presence::kAlways);
  const AcDbObjectId noTable;
  f.record(8, mLayer, db ? db->layerTableId() : noTable, L"0", Presence::kAlways, true);
  if (!f.reading() && mLinetype.isNull() && db) mLinetype = db->byLayerLinetype();
  f.record(6, mLinetype, db ? db->linetypeTableId() : noTable, L"ByLayer", Presence::kUnlessDefault, false);
  short color = static_cast<short>(mColorIndex);
  f.int16(62, color, 256, Presence::kUnlessDefault);
  if (color < 0 || color > 256) f.fail(L"bad colour index in group 62");
  else mColorIndex = static_cast<Adesk::UInt16>(color);
  f.int32(420, mTrueColor, -1, Presence::kUnlessDefault);
  mTrueColor = mTrueColor < 0 ? -1 : (mTrueColor & 0xFFFFFF);
  short weight = mLineWeight;
  f.int16(370, weight, AcDb::kLnWtByLayer, Presence::kUnlessDefault);
  if (weight < AcDb::kLnWtByLwDefault || weight > AcDb::kLnWt211) f.fail(L"bad lineweight in group 370");
  else mLineWeight = weight;
  f.real(48, mLinetypeScale, 1.0, Presence::kUnlessDefault);
  if (!(mLinetypeScale > 0)) f.fail(L"bad linetype scale in group 48");
  short invisible = mInvisible ? 1 : 0;
  f.int16(60, invisible, 0, Presence::kUnlessDefault);
  mInvisible = invisible != 0;
}
