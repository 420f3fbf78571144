// Symbol-table records: names, the properties of each kind, and their DXF
// groups.
#include <cstdlib>
#include <cwchar>

#include "arx/acdbads.h"
#include "arx/dbblkref.h"
#include "arx/dblayout.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/object_copier.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/access.h"
#include "dxf/group_filer.h"
#include "kelhost/text.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbSymbolTableRecord, AcDbObject, L"")
KELHOST_RX_DEFINE(AcDbBlockTableRecord, AcDbSymbolTableRecord, L"BLOCK_RECORD")
KELHOST_RX_DEFINE(AcDbLayerTableRecord, AcDbSymbolTableRecord, L"LAYER")
KELHOST_RX_DEFINE(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, L"LTYPE")
KELHOST_RX_DEFINE(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, L"STYLE")
KELHOST_RX_DEFINE(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, L"DIMSTYLE")
KELHOST_RX_DEFINE(AcDbViewTableRecord, AcDbSymbolTableRecord, L"VIEW")
KELHOST_RX_DEFINE(AcDbUCSTableRecord, AcDbSymbolTableRecord, L"UCS")
KELHOST_RX_DEFINE(AcDbViewportTableRecord, AcDbSymbolTableRecord, L"VPORT")
KELHOST_RX_DEFINE(AcDbRegAppTableRecord, AcDbSymbolTableRecord, L"APPID")

// ---------------------------------------------------------------- record
Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& name) const {
  size_t n = mName.size() + 1;
  name = static_cast<ACHAR*>(std::malloc(n * sizeof(ACHAR)));
  if (!name) return Acad::eOutOfMemory;
  std::wmemcpy(name, mName.c_str(), n);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& name) const {
  name = mName.c_str();
  return Acad::eOk;
}

namespace {
// Records of a drawing that keep their names: the linetypes ByBlock,
// ByLayer and Continuous, layer 0, the text and dimension styles
// Standard, the model and paper space blocks, and every registered
// application.
bool KeepsItsName(const AcDbSymbolTableRecord* record, const std::wstring& name) {
  const std::wstring upper = kelhost::ToUpper(name);
  auto is = [&upper](const wchar_t* fixed) { return upper == kelhost::ToUpper(fixed); };
  if (AcDbRegAppTableRecord::cast(record)) return true;
  if (AcDbLinetypeTableRecord::cast(record)) return is(L"ByBlock") || is(L"ByLayer") || is(L"Continuous");
  if (AcDbLayerTableRecord::cast(record)) return is(L"0");
  if (AcDbTextStyleTableRecord::cast(record) || AcDbDimStyleTableRecord::cast(record)) return is(L"Standard");
  if (AcDbBlockTableRecord::cast(record)) return is(ACDB_MODEL_SPACE) || is(ACDB_PAPER_SPACE);
  return false;
}
}  // namespace

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!name || !*name) return Acad::eInvalidInput;
  // The names a drawing file may hold: valid symbol names, or an anonymous
  // name of a '*' and a valid one.
  if (acdbSNValid(name, 0) != RTNORM && !(name[0] == L'*' && name[1] && acdbSNValid(name + 1, 0) == RTNORM))
    return Acad::eInvalidInput;
  auto* table = kelhost::db::PeekAs<AcDbSymbolTable>(ownerId());
  if (table && isDatabaseResident()) {
    if (kelhost::ToUpper(mName) != kelhost::ToUpper(name) && KeepsItsName(this, mName)) return Acad::eIllegalReplacement;
    AcDbObjectId other;
    if (table->getAt(name, other) == Acad::eOk && other != objectId()) return Acad::eDuplicateRecordName;
    table->renamed(mName, name, objectId());
  }
  mName = name;
  return Acad::eOk;
}

void AcDbSymbolTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) { f.subclass(L"AcDbSymbolTableRecord"); }

void AcDbSymbolTableRecord::nameAndFlags(kelhost::dxf::GroupFiler& f) {
  f.text(2, mName, L"", Presence::kRequired);
  if (f.reading() && !f.failed() && acdbSNValid(mName.c_str(), 0) != RTNORM &&
      !(mName.size() > 1 && mName[0] == L'*' && acdbSNValid(mName.c_str() + 1, 0) == RTNORM))
    f.fail(L"invalid symbol table name \"" + mName + L"\" in group 2");
  f.int16(70, mFlags, 0, Presence::kAlways);
}

// ---------------------------------------------------------------- block
Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) { KELHOST_SET(mOrigin, origin); }

bool AcDbBlockTableRecord::isLayout() const {
  if (!mLayout.isNull() && !mLayout.isErased()) return true;
  AcDbDatabase* db = database();
  return db && (objectId() == db->modelSpaceId() || objectId() == db->paperSpaceId());
}

Acad::ErrorStatus AcDbBlockTableRecord::setIsFromOverlayReference(bool overlay) {
  if (!isFromExternalReference()) return Acad::eNotApplicable;
  KELHOST_SET(mFlags, static_cast<short>(overlay ? (mFlags | 8) : (mFlags & ~8)));
}

Acad::ErrorStatus AcDbBlockTableRecord::setLayoutId(AcDbObjectId layout) {
  if (!layout.isNull() && !AcDbLayout::cast(kelhost::db::Peek(layout))) return Acad::eInvalidInput;
  KELHOST_SET(mLayout, layout);
}

Acad::ErrorStatus AcDbBlockTableRecord::comments(ACHAR*& text) const {
  text = static_cast<ACHAR*>(std::malloc((mComments.size() + 1) * sizeof(ACHAR)));
  if (!text) return Acad::eOutOfMemory;
  std::wmemcpy(text, mComments.c_str(), mComments.size() + 1);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::comments(const ACHAR*& text) const {
  text = mComments.c_str();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* text) {
  if (!text) return Acad::eInvalidInput;
  KELHOST_SET(mComments, text);
}
Acad::ErrorStatus AcDbBlockTableRecord::pathName(const ACHAR*& path) const {
  path = mPathName.c_str();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::setPathName(const ACHAR* path) {
  if (!path) return Acad::eInvalidInput;
  KELHOST_SET(mPathName, path);
}
Acad::ErrorStatus AcDbBlockTableRecord::setBlockInsertUnits(AcDb::UnitsValue units) {
  if (units < AcDb::kUnitsUndefined || units > AcDb::kUnitsMax) return Acad::eOutOfRange;
  KELHOST_SET(mInsertUnits, static_cast<short>(units));
}
Acad::ErrorStatus AcDbBlockTableRecord::setExplodable(bool explodable) { KELHOST_SET(mExplodable, explodable); }
Acad::ErrorStatus AcDbBlockTableRecord::setBlockScaling(BlockScaling scaling) {
  if (scaling != kAny && scaling != kUniform) return Acad::eInvalidInput;
  KELHOST_SET(mUniformScaling, scaling == kUniform);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
  AcDbObjectId id;
  return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
  id.setNull();
  if (!entity) return Acad::eNullEntityPointer;
  if (!isDatabaseResident()) return Acad::eNotInDatabase;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (entity->isDatabaseResident()) return Acad::eAlreadyInDb;
  // A clone of another drawing's entity brings what it names.
  Acad::ErrorStatus es = kelhost::db::AdoptForeignClone(entity, database());
  if (es != Acad::eOk) return es;
  if (entity->layerId().isNull()) entity->setDatabaseDefaults(database());
  es = database()->addAcDbObject(id, entity);
  if (es != Acad::eOk) return es;
  kelhost::dxf::Access::setOwner(entity, objectId());
  mEntities.push_back(id);
  // Only definitions whose value a reference asks for count (not constant ones).
  if (auto* def = AcDbAttributeDefinition::cast(entity); def && !def->isConstant()) mFlags |= 2;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                                    bool skipDeleted) const {
  iterator = new AcDbBlockTableRecordIterator(mEntities);
  iterator->start(atBeginning, skipDeleted);
  return Acad::eOk;
}

// A block as its BLOCK entity describes it (entity lists, the BLOCKS
// section): name, flags, base point, external reference path, description.
void AcDbBlockTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbBlockTableRecord");
  nameAndFlags(f);
  f.point(10, mOrigin, Presence::kAlways);
  f.text(1, mPathName, L"", Presence::kUnlessDefault);
  f.text(4, mComments, L"", Presence::kUnlessDefault);
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
  mIndex = atBeginning ? 0 : static_cast<long>(mIds.size()) - 1;
  skip(atBeginning, skipDeleted);
}
bool AcDbBlockTableRecordIterator::done() const { return mIndex < 0 || mIndex >= static_cast<long>(mIds.size()); }
void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
  if (done()) return;
  mIndex += forward ? 1 : -1;
  skip(forward, skipDeleted);
}
void AcDbBlockTableRecordIterator::skip(bool forward, bool skipDeleted) {
  while (skipDeleted && !done() && mIds[static_cast<size_t>(mIndex)].isErased()) mIndex += forward ? 1 : -1;
}
Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
  if (done()) return Acad::eIteratorDone;
  id = mIds[static_cast<size_t>(mIndex)];
  return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
  entity = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenObject(entity, mIds[static_cast<size_t>(mIndex)], mode, openErased);
}

// ---------------------------------------------------------------- layer
void AcDbLayerTableRecord::setIsFrozen(bool frozen) {
  KELHOST_SET_VOID(mFlags, static_cast<short>(frozen ? (mFlags | 1) : (mFlags & ~1)));
}
void AcDbLayerTableRecord::setIsLocked(bool locked) {
  KELHOST_SET_VOID(mFlags, static_cast<short>(locked ? (mFlags | 4) : (mFlags & ~4)));
}
void AcDbLayerTableRecord::setIsOff(bool off) { KELHOST_SET_VOID(mOff, off); }
Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plot) { KELHOST_SET(mPlottable, plot); }
Acad::ErrorStatus AcDbLayerTableRecord::setColorIndex(Adesk::Int16 index) {
  if (index < 1 || index > 255) return Acad::eOutOfRange;
  KELHOST_SET(mColorIndex, index);
}
AcCmColor AcDbLayerTableRecord::color() const {
  AcCmColor c;
  c.setColorIndex(static_cast<Adesk::UInt16>(mColorIndex));
  return c;
}
void AcDbLayerTableRecord::setColor(const AcCmColor& color) {
  if (color.isByACI()) setColorIndex(static_cast<Adesk::Int16>(color.colorIndex()));
}
Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId id) {
  if (!kelhost::db::PeekAs<AcDbLinetypeTableRecord>(id)) return Acad::eInvalidInput;
  KELHOST_SET(mLinetype, id);
}
Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
  KELHOST_SET(mLineWeight, static_cast<Adesk::Int16>(weight));
}

void AcDbLayerTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbLayerTableRecord");
  nameAndFlags(f);
  AcDbDatabase* db = f.database();
  // The colour's sign carries the on/off state.
  short color = mOff ? static_cast<short>(-mColorIndex) : mColorIndex;
  f.int16(62, color, 7, Presence::kAlways);
  if (color == 0 || color < -255 || color > 255) {
    f.fail(L"bad layer colour in group 62");
  } else {
    mOff = color < 0;
    mColorIndex = static_cast<Adesk::Int16>(color < 0 ? -color : color);
  }
  f.record(6, mLinetype, db ? db->linetypeTableId() : AcDbObjectId::kNull, L"Continuous", Presence::kAlways, false);
  short plot = mPlottable ? 1 : 0;
  f.int16(290, plot, 1, Presence::kUnlessDefault);
  mPlottable = plot != 0;
  f.int16(370, mLineWeight, AcDb::kLnWtByLwDefault, Presence::kAlways);
}

// ---------------------------------------------------------------- linetype
Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* text) { KELHOST_SET(mComments, text ? text : L""); }
void AcDbLinetypeTableRecord::setPatternLength(double length) { KELHOST_SET_VOID(mPatternLength, length); }
void AcDbLinetypeTableRecord::setNumDashes(int count) {
  if (writable() && count >= 0) mDashes.resize(static_cast<size_t>(count), 0.0);
}
double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
  return index >= 0 && index < numDashes() ? mDashes[static_cast<size_t>(index)] : 0.0;
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double value) {
  if (!kelhost::db::Finite(value)) return Acad::eInvalidInput;
  if (index < 0 || index >= numDashes()) return Acad::eInvalidIndex;
  KELHOST_SET(mDashes[static_cast<size_t>(index)], value);
}

void AcDbLinetypeTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbLinetypeTableRecord");
  nameAndFlags(f);
  f.text(3, mComments, L"", Presence::kAlways);
  short alignment = 65;  // 'A', the only alignment there is
  f.int16(72, alignment, 65, Presence::kAlways);
  short count = static_cast<short>(mDashes.size());
  f.int16(73, count, 0, Presence::kAlways);
  f.real(40, mPatternLength, 0.0, Presence::kAlways);
  size_t n = f.beginRepeat(49, mDashes.size());
  bool fill = !f.reading() || !(n == 0 && f.keepsAbsent());
  if (f.reading() && fill) mDashes.assign(n, 0.0);
  for (size_t i = 0; fill && i < n; ++i) {
    f.enterRecord(i);
    f.real(49, mDashes[i], 0.0, Presence::kAlways);
    short element = 0;
    f.int16(74, element, 0, Presence::kAlways);
  }
  f.endRepeat();
}

// ---------------------------------------------------------------- text style
Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
  if (!kelhost::db::Finite(size)) return Acad::eInvalidInput;
  if (size < 0) return Acad::eInvalidInput;
  KELHOST_SET(mTextSize, size);
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
  if (!kelhost::db::Finite(scale)) return Acad::eInvalidInput;
  if (!(scale > 0)) return Acad::eInvalidInput;
  KELHOST_SET(mXScale, scale);
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) { KELHOST_SET(mOblique, angle); }
Acad::ErrorStatus AcDbTextStyleTableRecord::setPriorSize(double size) { KELHOST_SET(mPriorSize, size); }
Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) { KELHOST_SET(mFileName, name ? name : L""); }
Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* name) {
  KELHOST_SET(mBigFont, name ? name : L"");
}
void AcDbTextStyleTableRecord::setFlagBits(Adesk::UInt8 flags) { KELHOST_SET_VOID(mGeneration, flags); }

void AcDbTextStyleTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbTextStyleTableRecord");
  nameAndFlags(f);
  f.real(40, mTextSize, 0.0, Presence::kAlways);
  f.real(41, mXScale, 1.0, Presence::kAlways);
  f.real(50, mOblique, 0.0, Presence::kAlways);
  f.int16(71, mGeneration, 0, Presence::kAlways);
  f.real(42, mPriorSize, 2.5, Presence::kAlways);
  f.text(3, mFileName, L"", Presence::kAlways);
  f.text(4, mBigFont, L"", Presence::kAlways);
}

// ---------------------------------------------------------------- view
void AcDbViewTableRecord::setCenterPoint(const AcGePoint2d& p) { KELHOST_SET_VOID(mCenter, p); }
void AcDbViewTableRecord::setHeight(double h) { KELHOST_SET_VOID(mHeight, h); }
void AcDbViewTableRecord::setWidth(double w) { KELHOST_SET_VOID(mWidth, w); }
void AcDbViewTableRecord::setTarget(const AcGePoint3d& p) { KELHOST_SET_VOID(mTarget, p); }
void AcDbViewTableRecord::setViewDirection(const AcGeVector3d& v) { KELHOST_SET_VOID(mDirection, v); }
void AcDbViewTableRecord::setViewTwist(double a) { KELHOST_SET_VOID(mTwist, a); }
void AcDbViewTableRecord::setLensLength(double l) { KELHOST_SET_VOID(mLens, l); }
void AcDbViewTableRecord::setFrontClipDistance(double d) { KELHOST_SET_VOID(mFront, d); }
void AcDbViewTableRecord::setBackClipDistance(double d) { KELHOST_SET_VOID(mBack, d); }
void AcDbViewTableRecord::setIsPaperspaceView(bool on) {
  KELHOST_SET_VOID(mFlags, static_cast<short>(on ? (mFlags | 1) : (mFlags & ~1)));
}

namespace {
short WithBit(short mode, short bit, bool on) { return static_cast<short>(on ? (mode | bit) : (mode & ~bit)); }
}  // namespace

void AcDbViewTableRecord::setPerspectiveEnabled(bool on) { KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 1, on)); }
void AcDbViewTableRecord::setFrontClipEnabled(bool on) { KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 2, on)); }
void AcDbViewTableRecord::setBackClipEnabled(bool on) { KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 4, on)); }
void AcDbViewTableRecord::setFrontClipAtEye(bool atEye) {
  KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 16, !atEye));
}

void AcDbViewTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbViewTableRecord");
  nameAndFlags(f);
  f.real(40, mHeight, 1.0, Presence::kAlways);
  f.point2d(10, mCenter, Presence::kAlways);
  f.real(41, mWidth, 1.0, Presence::kAlways);
  f.vector(11, mDirection, AcGeVector3d::kZAxis, Presence::kAlways);
  f.point(12, mTarget, Presence::kAlways);
  f.real(42, mLens, 50.0, Presence::kAlways);
  f.real(43, mFront, 0.0, Presence::kAlways);
  f.real(44, mBack, 0.0, Presence::kAlways);
  f.real(50, mTwist, 0.0, Presence::kAlways);
  f.int16(71, mViewMode, 0, Presence::kAlways);
}

// ---------------------------------------------------------------- UCS
void AcDbUCSTableRecord::setOrigin(const AcGePoint3d& p) { KELHOST_SET_VOID(mOrigin, p); }
void AcDbUCSTableRecord::setXAxis(const AcGeVector3d& v) { KELHOST_SET_VOID(mXAxis, v); }
void AcDbUCSTableRecord::setYAxis(const AcGeVector3d& v) { KELHOST_SET_VOID(mYAxis, v); }

void AcDbUCSTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbUCSTableRecord");
  nameAndFlags(f);
  f.point(10, mOrigin, Presence::kAlways);
  f.vector(11, mXAxis, AcGeVector3d::kXAxis, Presence::kAlways);
  f.vector(12, mYAxis, AcGeVector3d::kYAxis, Presence::kAlways);
}

// ---------------------------------------------------------------- viewport
void AcDbViewportTableRecord::setCenterPoint(const AcGePoint2d& p) { KELHOST_SET_VOID(mCenter, p); }
void AcDbViewportTableRecord::setHeight(double h) { KELHOST_SET_VOID(mHeight, h); }
void AcDbViewportTableRecord::setTarget(const AcGePoint3d& p) { KELHOST_SET_VOID(mTarget, p); }
void AcDbViewportTableRecord::setViewDirection(const AcGeVector3d& v) { KELHOST_SET_VOID(mDirection, v); }
void AcDbViewportTableRecord::setLensLength(double l) { KELHOST_SET_VOID(mLens, l); }
void AcDbViewportTableRecord::setWidth(double w) {
  if (!kelhost::db::Finite(w)) return;
  if (mHeight > 0 && w > 0) KELHOST_SET_VOID(mAspect, w / mHeight);
}
void AcDbViewportTableRecord::setViewTwist(double a) { KELHOST_SET_VOID(mTwist, a); }
void AcDbViewportTableRecord::setFrontClipDistance(double d) { KELHOST_SET_VOID(mFront, d); }
void AcDbViewportTableRecord::setBackClipDistance(double d) { KELHOST_SET_VOID(mBack, d); }
void AcDbViewportTableRecord::setPerspectiveEnabled(bool on) { KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 1, on)); }
void AcDbViewportTableRecord::setFrontClipEnabled(bool on) { KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 2, on)); }
void AcDbViewportTableRecord::setBackClipEnabled(bool on) { KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 4, on)); }
void AcDbViewportTableRecord::setUcsFollowMode(bool on) { KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 8, on)); }
void AcDbViewportTableRecord::setFrontClipAtEye(bool atEye) {
  KELHOST_SET_VOID(mViewMode, WithBit(mViewMode, 16, !atEye));
}
void AcDbViewportTableRecord::setSnapAngle(double a) { KELHOST_SET_VOID(mSnapAngle, a); }
void AcDbViewportTableRecord::setSnapEnabled(bool on) { KELHOST_SET_VOID(mSnapOn, static_cast<short>(on ? 1 : 0)); }
void AcDbViewportTableRecord::setGridEnabled(bool on) { KELHOST_SET_VOID(mGridOn, static_cast<short>(on ? 1 : 0)); }

void AcDbViewportTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbViewportTableRecord");
  nameAndFlags(f);
  f.point2d(10, mLowerLeft, Presence::kAlways);
  f.point2d(11, mUpperRight, Presence::kAlways);
  f.point2d(12, mCenter, Presence::kAlways);
  f.point2d(13, mSnapBase, Presence::kAlways);
  AcGePoint2d snap(mSnapSpacing.x, mSnapSpacing.y), grid(mGridSpacing.x, mGridSpacing.y);
  f.point2d(14, snap, Presence::kAlways);
  f.point2d(15, grid, Presence::kAlways);
  mSnapSpacing = AcGeVector2d(snap.x, snap.y);
  mGridSpacing = AcGeVector2d(grid.x, grid.y);
  f.vector(16, mDirection, AcGeVector3d::kZAxis, Presence::kAlways);
  f.point(17, mTarget, Presence::kAlways);
  f.real(40, mHeight, 297.0, Presence::kAlways);
  f.real(41, mAspect, 1.0, Presence::kAlways);
  f.real(42, mLens, 50.0, Presence::kAlways);
  f.real(43, mFront, 0.0, Presence::kAlways);
  f.real(44, mBack, 0.0, Presence::kAlways);
  f.real(50, mSnapAngle, 0.0, Presence::kAlways);
  f.real(51, mTwist, 0.0, Presence::kAlways);
  f.int16(71, mViewMode, 0, Presence::kAlways);
  f.int16(72, mCircleZoom, 1000, Presence::kAlways);
  f.int16(73, mFastZoom, 1, Presence::kAlways);
  f.int16(74, mUcsIcon, 3, Presence::kAlways);
  f.int16(75, mSnapOn, 0, Presence::kAlways);
  f.int16(76, mGridOn, 0, Presence::kAlways);
  f.int16(77, mSnapStyle, 0, Presence::kAlways);
  f.int16(78, mIsoPair, 0, Presence::kAlways);
}

// ---------------------------------------------------------------- registered application
void AcDbRegAppTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbRegAppTableRecord");
  nameAndFlags(f);
}
