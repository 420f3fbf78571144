// The common dimension: its properties and DXF groups, its block (drawn
// as it closes), and the geometry it has through that block.
#include <cmath>
#include <limits>

#include "arx/acutads.h"
#include "arx/dbapserv.h"
#include "arx/dbdatabase.h"
#include "arx/dbdim.h"
#include "db/curve_geometry.h"
#include "db/database_state.h"
#include "db/explode_copy.h"
#include "db/dimension_arrows.h"
#include "db/dimension_overrides.h"
#include "db/dimension_style_data.h"
#include "db/dimstyle_vars.h"
#include "db/dimension_picture.h"
#include "db/dimension_text.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/codec.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbDimension, AcDbEntity, L"")

namespace {

constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();

AcDbDatabase* DatabaseOf(const AcDbEntity* e) {
  return e->database() ? e->database() : acdbHostApplicationServices()->workingDatabase();
}

const wchar_t* RecordName(AcDbObjectId id, const wchar_t* fallback) {
  auto* record = kelhost::db::PeekAs<AcDbSymbolTableRecord>(id);
  return record ? record->getName() : fallback;
}

}  // namespace

AcDbDimension::AcDbDimension() : mSpacingFactor(kAbsent), mMeasured(kAbsent) {}

// ---------------------------------------------------------------- properties
void AcDbDimension::changed() { mNeedsBlock = true; }

Acad::ErrorStatus AcDbDimension::setTextPosition(const AcGePoint3d& position) {
  if (!kelhost::db::Finite(position)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mTextPosition = position;
  mFlags = static_cast<short>(mFlags | kUserTextPosition);
  changed();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::useSetTextPosition() {
  KELHOST_SET_REDRAWN(mFlags, static_cast<short>(mFlags | kUserTextPosition));
}

Acad::ErrorStatus AcDbDimension::useDefaultTextPosition() {
  KELHOST_SET_REDRAWN(mFlags, static_cast<short>(mFlags & ~kUserTextPosition));
}

void AcDbDimension::placeText(const AcGePoint3d& position) { mTextPosition = position; }

// ---------------------------------------------------------------- own style values
namespace {
const AcDbDimStyleTableRecord& StyleData(AcDbObjectId style) {
  static const AcDbDimStyleTableRecord standard;
  auto* record = kelhost::db::PeekAs<AcDbDimStyleTableRecord>(style);
  return record ? *record : standard;
}
}  // namespace

double AcDbDimension::dimReal(int code) const {
  if (auto own = kelhost::db::DimOverrideReal(this, code)) return *own;
  return StyleData(dimensionStyle()).real(code);
}

int AcDbDimension::dimInt(int code) const {
  if (auto own = kelhost::db::DimOverrideInt(this, code)) return *own;
  return StyleData(dimensionStyle()).integer(code);
}

AcDbObjectId AcDbDimension::dimRecord(int code) const {
  if (auto own = kelhost::db::DimOverrideRecord(this, code)) return *own;
  return StyleData(dimensionStyle()).recordVar(code);
}

Acad::ErrorStatus AcDbDimension::setDimReal(int code, double value) {
  // DIMGAP alone may be negative (a framed text).
  if (!std::isfinite(value) || (value < 0 && code != 147)) return Acad::eInvalidInput;
  const Acad::ErrorStatus es = kelhost::db::SetDimOverrideReal(this, code, value);
  if (es == Acad::eOk) changed();
  return es;
}

Acad::ErrorStatus AcDbDimension::setDimInt(int code, int value) {
  if ((code == 271 && (value < 0 || value > 8)) || (code == 78 && (value < 0 || value > 15)))
    return Acad::eInvalidInput;
  const Acad::ErrorStatus es = kelhost::db::SetDimOverrideInt(this, code, value);
  if (es == Acad::eOk) changed();
  return es;
}

Acad::ErrorStatus AcDbDimension::setDimRecord(int code, AcDbObjectId record) {
  const bool fits = record.isNull() || (code == 340 ? kelhost::db::PeekAs<AcDbTextStyleTableRecord>(record) != nullptr
                                                    : kelhost::db::PeekAs<AcDbBlockTableRecord>(record) != nullptr);
  if (!fits) return Acad::eInvalidInput;
  const Acad::ErrorStatus es = kelhost::db::SetDimOverrideRecord(this, code, record);
  if (es == Acad::eOk) changed();
  return es;
}

Acad::ErrorStatus AcDbDimension::setDimBlockByName(int code, const ACHAR* name) {
  if (!writable()) return Acad::eNotOpenForWrite;
  AcDbObjectId block;
  const Acad::ErrorStatus es = kelhost::db::ArrowBlock(DatabaseOf(this), name, block);
  return es == Acad::eOk ? setDimRecord(code, block) : es;
}

Acad::ErrorStatus AcDbDimension::setDimstyleData(AcDbObjectId record) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (record.isNull()) {
    const Acad::ErrorStatus es = kelhost::db::RemoveDimOverrides(this);
    if (es != Acad::eOk) return es;
    mStyle.setNull();
    changed();
    return Acad::eOk;
  }
  auto* given = kelhost::db::PeekAs<AcDbDimStyleTableRecord>(record);
  if (!given) return Acad::eInvalidInput;
  const AcDbDimStyleTableRecord& own = StyleData(dimensionStyle());
  Acad::ErrorStatus es = kelhost::db::RemoveDimOverrides(this);
  for (const kelhost::db::DimVar& v : kelhost::db::DimRealVars())
    if (es == Acad::eOk && given->real(v.code) != own.real(v.code))
      es = kelhost::db::SetDimOverrideReal(this, v.code, given->real(v.code));
  for (const kelhost::db::DimVar& v : kelhost::db::DimIntVars())
    if (es == Acad::eOk && given->integer(v.code) != own.integer(v.code))
      es = kelhost::db::SetDimOverrideInt(this, v.code, given->integer(v.code));
  for (int code = 340; code <= 344; ++code)
    if (es == Acad::eOk && given->recordVar(code) != own.recordVar(code))
      es = kelhost::db::SetDimOverrideRecord(this, code, given->recordVar(code));
  if (es == Acad::eOk && std::wstring(given->dimpost()) != own.dimpost())
    es = kelhost::db::SetDimOverrideText(this, 3, given->dimpost());
  changed();
  return es;
}

Acad::ErrorStatus AcDbDimension::getDimstyleData(AcDbDimStyleTableRecord*& record) const {
  record = kelhost::db::EffectiveDimStyle(dimensionStyle(), this).release();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::setNormal(const AcGeVector3d& normal) {
  if (!kelhost::db::Finite(normal)) return Acad::eInvalidInput;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mNormal, normal.normal());
}

ACHAR* AcDbDimension::dimensionText() const {
  ACHAR* out = nullptr;
  acutNewString(mText.c_str(), out);
  return out;
}

Acad::ErrorStatus AcDbDimension::setDimensionText(const ACHAR* text) {
  KELHOST_SET_REDRAWN(mText, text ? text : L"");
}

Acad::ErrorStatus AcDbDimension::setTextRotation(double angle) {
  if (!kelhost::db::Finite(angle)) return Acad::eInvalidInput;
  if (!std::isfinite(angle)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mTextRotation, angle);
}

AcDbObjectId AcDbDimension::dimensionStyle() const {
  if (!mStyle.isNull()) return mStyle;
  AcDbDatabase* db = DatabaseOf(this);
  return db ? db->dimstyle() : AcDbObjectId::kNull;
}

Acad::ErrorStatus AcDbDimension::setDimensionStyle(AcDbObjectId style) {
  if (!kelhost::db::PeekAs<AcDbDimStyleTableRecord>(style)) return Acad::eInvalidInput;
  KELHOST_SET_REDRAWN(mStyle, style);
}

Acad::ErrorStatus AcDbDimension::setTextAttachment(AcDbMText::AttachmentPoint attachment) {
  if (attachment < AcDbMText::kTopLeft || attachment > AcDbMText::kBottomRight) return Acad::eInvalidInput;
  KELHOST_SET(mAttachment, static_cast<short>(attachment));
}

Acad::ErrorStatus AcDbDimension::setTextLineSpacingStyle(AcDb::LineSpacingStyle style) {
  if (style != AcDb::kAtLeast && style != AcDb::kExactly) return Acad::eInvalidInput;
  KELHOST_SET(mSpacingStyle, static_cast<short>(style));
}

double AcDbDimension::textLineSpacingFactor() const { return std::isnan(mSpacingFactor) ? 1.0 : mSpacingFactor; }
Acad::ErrorStatus AcDbDimension::setTextLineSpacingFactor(double factor) {
  if (!kelhost::db::Finite(factor)) return Acad::eInvalidInput;
  if (!(factor >= 0.25 && factor <= 4.0)) return Acad::eInvalidInput;
  KELHOST_SET(mSpacingFactor, factor);
}

Acad::ErrorStatus AcDbDimension::setHorizontalRotation(double angle) {
  if (!kelhost::db::Finite(angle)) return Acad::eInvalidInput;
  if (!std::isfinite(angle)) return Acad::eInvalidInput;
  KELHOST_SET(mHorizontalRotation, angle);
}

Acad::ErrorStatus AcDbDimension::setDimBlockId(AcDbObjectId block) {
  if (!kelhost::db::PeekAs<AcDbBlockTableRecord>(block)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mBlock = block;
  mSinceDrawn.setToIdentity();
  mNeedsBlock = false;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::setDimBlockPosition(const AcGePoint3d& position) { KELHOST_SET(mBlockPosition, position); }

AcGeMatrix3d AcDbDimension::dimBlockTransform() const {
  const AcGeVector3d offset = AcGeMatrix3d::planeToWorld(mNormal) * mBlockPosition.asVector();
  return mSinceDrawn * AcGeMatrix3d::translation(offset);
}

Acad::ErrorStatus AcDbDimension::formatMeasurement(ACHAR*& text, double measurement) const {
  text = nullptr;
  if (!std::isfinite(measurement)) return Acad::eInvalidInput;
  kelhost::db::DimPicture styleOf(DatabaseOf(this), dimensionStyle(), mNormal, this);
  const std::wstring shown =
      kelhost::db::DimensionTextWith(mText, measurementPrefix() + kelhost::db::FormatLinearMeasurement(measurement, styleOf.style()));
  return acutNewString(shown.c_str(), text) == RTNORM ? Acad::eOk : Acad::eOutOfMemory;
}

// ---------------------------------------------------------------- DXF
void AcDbDimension::blockPositionField(kelhost::dxf::GroupFiler& f) {
  AcGePoint3d p = mBlockPosition;
  f.point(12, p, Presence::kUnlessDefault);
  if (!f.reading() || !p.isEqualTo(AcGePoint3d::kOrigin)) mBlockPosition = p;
}

void AcDbDimension::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  AcDbDatabase* db = f.database();
  f.subclass(L"AcDbDimension");
  f.int16(280, mVersion, 0, Presence::kAlways);

  std::wstring block = RecordName(mBlock, L"");
  f.text(2, block, L"", Presence::kAlways);
  if (f.reading()) {
    const AcDbObjectId found = block.empty() || !db ? AcDbObjectId::kNull : f.findRecord(db->blockTableId(), block.c_str());
    if (block.empty()) {
      mBlock.setNull();
    } else if (!found.isNull()) {
      mBlock = found;
      // A copy draws with its original's block: neither may draw over it.
      auto& drawnFor = db->state().dimBlockDrawnFor;
      AcDbStub *key = found, *self = objectId();
      auto at = drawnFor.find(key);
      if (at != drawnFor.end() && at->second != self) at->second = nullptr;
    } else {
      f.fail(L"no block \"" + block + L"\" for group 2");
    }
  }
  f.point(10, mDefinitionPoint, Presence::kAlways);

  // The text position is in the plane's coordinates in lists and files.
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(mNormal);
  AcGePoint3d text = f.reading() ? AcGePoint3d(kAbsent, kAbsent, kAbsent) : toPlane * mTextPosition;
  f.point(11, text, Presence::kAlways);
  // Some writers put the clones' point here rather than in their subclass.
  if (f.reading()) f.point(12, mBlockPosition, Presence::kUnlessDefault);

  short kind = static_cast<short>(dimensionKind() | mFlags);
  f.int16(70, kind, dimensionKind(), Presence::kAlways);
  if ((kind & 0x0F) != dimensionKind())
    f.fail(L"dimension kind " + std::to_wstring(kind & 0x0F) + L" in group 70 is not this class's");
  mFlags = static_cast<short>(kind & ~0x0F);
  f.int16(71, mAttachment, AcDbMText::kMiddleCenter, Presence::kAlways);
  if (mAttachment < AcDbMText::kTopLeft || mAttachment > AcDbMText::kBottomRight)
    f.fail(L"bad attachment point in group 71");
  f.int16(72, mSpacingStyle, AcDb::kAtLeast, Presence::kUnlessDefault);
  for (auto [code, value] : {std::pair<int, double*>{41, &mSpacingFactor}, {42, &mMeasured}}) {
    if (f.reading()) {
      double got = kAbsent;
      f.real(code, got, kAbsent, Presence::kAlways);
      if (!std::isnan(got) || !f.keepsAbsent()) *value = got;
    } else if (!std::isnan(*value)) {
      f.real(code, *value, 0.0, Presence::kAlways);
    }
  }
  f.text(1, mText, L"", Presence::kAlways);
  f.real(53, mTextRotation, 0.0, Presence::kUnlessDefault);
  f.real(51, mHorizontalRotation, 0.0, Presence::kUnlessDefault);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
  if (f.reading()) {
    mNormal = mNormal.normal();
    if (!std::isnan(text.x)) mTextPosition = AcGeMatrix3d::planeToWorld(mNormal) * text;
  }
  if (!f.reading() && mStyle.isNull() && db) mStyle = db->dimstyle();
  const AcDbObjectId styles = db ? db->dimStyleTableId() : AcDbObjectId::kNull;
  f.record(3, mStyle, styles, RecordName(db ? db->dimstyle() : AcDbObjectId::kNull, L"Standard"),
           Presence::kAlways, false);
  // A list that makes a dimension without a block (entmake), or changes
  // one (entmod), has its block drawn as the dimension closes.
  if (f.reading()) mNeedsBlock = f.keepsAbsent() || (!isDatabaseResident() && mBlock.isNull());
}

// ---------------------------------------------------------------- the block
namespace {

// Which dimension each block is drawn for, from one walk over the drawing.
void IndexDimensionBlocks(kelhost::db::DatabaseState& state) {
  state.dimBlockDrawnFor.clear();
  for (const auto& stub : state.stubs) {
    auto* dim = AcDbDimension::cast(stub->object.get());
    if (!dim || stub->erased || dim->dimBlockId().isNull()) continue;
    AcDbStub* block = dim->dimBlockId();
    auto [at, added] = state.dimBlockDrawnFor.emplace(block, stub.get());
    if (!added) at->second = nullptr;
  }
  state.dimBlocksIndexedAt = state.stubs.size();
}

}  // namespace

bool AcDbDimension::ownsItsBlock() const {
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(mBlock);
  if (!block || mBlock.isErased() || !(mFlags & kBlockOfItsOwn) || block->isLayout()) return false;
  const std::wstring name = block->getName();
  if (name.size() < 2 || name[0] != L'*' || (name[1] != L'D' && name[1] != L'd')) return false;
  // Another dimension (a copy) may draw with it too.
  kelhost::db::DatabaseState& state = database()->state();
  AcDbStub* key = mBlock;
  auto at = state.dimBlockDrawnFor.find(key);
  if (at == state.dimBlockDrawnFor.end() && state.dimBlocksIndexedAt != state.stubs.size()) {
    IndexDimensionBlocks(state);
    at = state.dimBlockDrawnFor.find(key);
  }
  AcDbStub* self = objectId();
  return at != state.dimBlockDrawnFor.end() && at->second == self;
}

namespace {

// A new anonymous *D block, open for write.
AcDbBlockTableRecord* NewDimensionBlock(AcDbDatabase* db) {
  AcDbBlockTable* table = nullptr;
  if (acdbOpenObject(table, db->blockTableId(), AcDb::kForWrite) != Acad::eOk) return nullptr;
  std::wstring name;
  AcDbObjectId existing;
  for (int& n = db->state().nextDimBlock;; ++n) {
    name = L"*D" + std::to_wstring(n);
    if (table->getAt(name.c_str(), existing, true) != Acad::eOk) break;
  }
  // Made from its groups so that it carries the anonymous flag.
  resbuf* groups = acutBuildList(100, L"AcDbSymbolTableRecord", 100, L"AcDbBlockTableRecord", 2, name.c_str(), 70,
                                 1, 10, asDblArray(AcGePoint3d::kOrigin), 0);
  auto* block = new AcDbBlockTableRecord;
  AcDbObjectId id;
  if (!groups || !kelhost::dxf::RestoreState(block, groups) || table->add(id, block) != Acad::eOk) {
    delete block;
    block = nullptr;
  }
  acutRelRb(groups);
  table->close();
  return block;
}

}  // namespace

Acad::ErrorStatus AcDbDimension::recomputeDimBlock(bool forceUpdate) {
  if (!forceUpdate && !mNeedsBlock) return Acad::eOk;
  AcDbDatabase* db = database();
  if (!db) return Acad::eNotInDatabase;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  kelhost::db::DimPicture picture(db, dimensionStyle(), mNormal, this);
  drawPicture(picture);
  std::vector<std::unique_ptr<AcDbEntity>> parts = picture.take();

  AcDbBlockTableRecord* block = nullptr;
  if (ownsItsBlock() && acdbOpenObject(block, mBlock, AcDb::kForWrite) == Acad::eOk) {
    for (const AcDbObjectId& id : block->entityIds()) {
      AcDbEntity* old = nullptr;
      if (acdbOpenObject(old, id, AcDb::kForWrite) == Acad::eOk) {
        old->erase();
        old->close();
      }
    }
  } else {
    block = NewDimensionBlock(db);
    if (!block) return Acad::eWasOpenForWrite;
  }
  for (std::unique_ptr<AcDbEntity>& part : parts) {
    AcDbObjectId id;
    if (block->appendAcDbEntity(id, part.get()) == Acad::eOk) part.release()->close();
  }
  mBlock = block->objectId();
  block->close();
  AcDbStub* drawnFor = objectId();
  db->state().dimBlockDrawnFor[mBlock] = drawnFor;
  mFlags = static_cast<short>(mFlags | kBlockOfItsOwn);
  mBlockPosition = AcGePoint3d::kOrigin;
  mSinceDrawn.setToIdentity();
  double measured = 0.0;
  if (measurement(measured) == Acad::eOk) mMeasured = measured;
  mNeedsBlock = false;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subClose() {
  if (mNeedsBlock && database() && !ownerId().isNull() && !isErased()) recomputeDimBlock(false);
  return Acad::eOk;
}

// ---------------------------------------------------------------- geometry
Acad::ErrorStatus AcDbDimension::getGeomExtents(AcDbExtents& extents) const {
  AcDbExtents box;
  const AcGeMatrix3d xform = dimBlockTransform();
  if (auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(mBlock)) {
    for (const AcDbObjectId& id : block->entityIds()) {
      auto* e = id.isErased() ? nullptr : kelhost::db::PeekAs<AcDbEntity>(id);
      AcDbExtents part;
      if (e && e->getGeomExtents(part) == Acad::eOk) {
        part.transformBy(xform);
        box.addExt(part);
      }
    }
  }
  if (box.isEmpty()) {
    AcGePoint3dArray points;
    definingPoints(points);
    points.append(mTextPosition);
    for (const AcGePoint3d& p : points) box.addPoint(p);
  }
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!m.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  const AcGeVector3d normal = kelhost::geom::TransformNormal(m, mNormal);
  if (mTextRotation != 0) {
    const AcGeVector3d dir =
        AcGeMatrix3d::planeToWorld(mNormal) * AcGeVector3d(std::cos(mTextRotation), std::sin(mTextRotation), 0.0);
    mTextRotation = kelhost::geom::OcsAngle(normal, m * dir);
  }
  transformPoints(m);
  mTextPosition = m * mTextPosition;
  mNormal = normal;
  mSinceDrawn = m * mSinceDrawn;
  changed();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::explode(AcDbVoidPtrArray& entitySet) const {
  auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(mBlock);
  if (!block) return Acad::eNotApplicable;
  const AcGeMatrix3d xform = dimBlockTransform();
  for (const AcDbObjectId& id : block->entityIds()) {
    auto* e = id.isErased() ? nullptr : kelhost::db::PeekAs<AcDbEntity>(id);
    if (!e) continue;
    std::unique_ptr<AcDbEntity> copy;
    if (kelhost::db::CopyEntity(*e, copy) == Acad::eOk && kelhost::db::PlaceCopy(copy, xform) == Acad::eOk)
      entitySet.append(copy.release());
  }
  return Acad::eOk;
}
