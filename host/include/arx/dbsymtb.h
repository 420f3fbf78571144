// Symbol tables and their records: blocks, layers, linetypes, text styles,
// dimension styles, views, UCSs, viewports and registered applications.
// Record names are unique in a table without regard to case.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "dbcolor.h"
#include "dbmain.h"

class AcDbSymbolTableRecord;
class AcDbSymbolTableIterator;

class AcDbSymbolTable : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTable);

  // The record of that name (not erased, unless getErasedRecord).
  Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id, bool getErasedRecord = false) const;
  Acad::ErrorStatus getAt(const ACHAR* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                          bool openErased = false) const;
  bool has(const ACHAR* name) const;
  bool has(AcDbObjectId id) const;
  // Adds a new record (the table open for write): eDuplicateRecordName,
  // eInvalidInput for a record of another table's kind or without a name;
  // the record is then in the database and open for write.
  Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
  Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
  // Records in the order they were added.
  Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;

  // The class of this table's records.
  virtual AcRxClass* recordClass() const = 0;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  friend class AcDbSymbolTableRecord;
  friend class AcDbSymbolTableIterator;
  friend class kelhost::dxf::Access;
  void renamed(const std::wstring& oldName, const std::wstring& newName, AcDbObjectId id);
  std::vector<AcDbObjectId> mRecords;
  std::unordered_map<std::wstring, AcDbObjectId> mByName;  // upper-case name
};

class AcDbSymbolTableIterator {
 public:
  ~AcDbSymbolTableIterator() = default;
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
  Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode, bool openErased = false) const;

 private:
  friend class AcDbSymbolTable;
  explicit AcDbSymbolTableIterator(std::vector<AcDbObjectId> ids) : mIds(std::move(ids)) {}
  void skip(bool forward, bool skipDeleted);
  std::vector<AcDbObjectId> mIds;  // a snapshot: records added later are not visited
  long mIndex = 0;
};

class AcDbSymbolTableRecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);
  // The name as a new string the caller releases.
  Acad::ErrorStatus getName(ACHAR*& name) const;
  // A pointer to the record's own name.
  Acad::ErrorStatus getName(const ACHAR*& name) const;
  const ACHAR* getName() const { return mName.c_str(); }
  // eDuplicateRecordName when another record of the table has it;
  // eInvalidInput for an empty name or one that is no valid symbol name
  // (acdbSNValid; '*' may begin an anonymous one); eIllegalReplacement for a record of
  // a drawing that keeps its name (the linetypes ByBlock, ByLayer and
  // Continuous, layer 0, the styles Standard, the model and paper space
  // blocks, registered applications).
  Acad::ErrorStatus setName(const ACHAR* name);
  bool isDependent() const { return (mFlags & 16) != 0; }
  bool isResolved() const { return (mFlags & 32) != 0; }

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  // The groups every record has after its own subclass marker: name (2)
  // and flags (70).
  void nameAndFlags(kelhost::dxf::GroupFiler& filer);
  // The record's 70 flags (each record kind names its bits).
  short mFlags = 0;

 private:
  friend class AcDbSymbolTable;
  friend class kelhost::dxf::Access;
  std::wstring mName;
};

#define KELHOST_DECLARE_TABLE(TABLE, RECORD)                                                              \
  class RECORD;                                                                                           \
  class TABLE : public AcDbSymbolTable {                                                                  \
   public:                                                                                                \
    ACRX_DECLARE_MEMBERS(TABLE);                                                                          \
    using AcDbSymbolTable::getAt;                                                                         \
    Acad::ErrorStatus getAt(const ACHAR* name, RECORD*& record, AcDb::OpenMode mode,                      \
                            bool openErased = false) const;                                               \
    AcRxClass* recordClass() const override;                                                              \
  }

KELHOST_DECLARE_TABLE(AcDbBlockTable, AcDbBlockTableRecord);
KELHOST_DECLARE_TABLE(AcDbLayerTable, AcDbLayerTableRecord);
KELHOST_DECLARE_TABLE(AcDbLinetypeTable, AcDbLinetypeTableRecord);
KELHOST_DECLARE_TABLE(AcDbTextStyleTable, AcDbTextStyleTableRecord);
KELHOST_DECLARE_TABLE(AcDbDimStyleTable, AcDbDimStyleTableRecord);
KELHOST_DECLARE_TABLE(AcDbViewTable, AcDbViewTableRecord);
KELHOST_DECLARE_TABLE(AcDbUCSTable, AcDbUCSTableRecord);
KELHOST_DECLARE_TABLE(AcDbViewportTable, AcDbViewportTableRecord);
KELHOST_DECLARE_TABLE(AcDbRegAppTable, AcDbRegAppTableRecord);

#define ACDB_MODEL_SPACE L"*Model_Space"
#define ACDB_PAPER_SPACE L"*Paper_Space"

class AcDbBlockTableRecordIterator;

namespace AcDb {
// Drawing and block insertion units.
enum UnitsValue {
  kUnitsUndefined = 0, kUnitsInches, kUnitsFeet, kUnitsMiles, kUnitsMillimeters, kUnitsCentimeters, kUnitsMeters,
  kUnitsKilometers, kUnitsMicroinches, kUnitsMils, kUnitsYards, kUnitsAngstroms, kUnitsNanometers, kUnitsMicrons,
  kUnitsDecimeters, kUnitsDekameters, kUnitsHectometers, kUnitsGigameters, kUnitsAstronomical, kUnitsLightYears,
  kUnitsParsecs, kUnitsUSSurveyFeet, kUnitsUSSurveyInch, kUnitsUSSurveyYard, kUnitsUSSurveyMile, kUnitsMax = kUnitsUSSurveyMile
};
}  // namespace AcDb

// A block: its entities, base point and flags (the BLOCK entity's 70:
// anonymous 1, non-constant attribute definitions 2, external reference 4,
// overlay 8, externally dependent 16, resolved 32, referenced 64), its
// description, the layout it holds and how references to it may be
// scaled and exploded.
class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);
  enum BlockScaling { kAny = 0, kUniform = 1 };

  AcGePoint3d origin() const { return mOrigin; }
  Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
  bool isAnonymous() const { return (mFlags & 1) != 0; }
  // Set when an attribute definition is appended.
  bool hasAttributeDefinitions() const { return (mFlags & 2) != 0; }
  bool isFromExternalReference() const { return (mFlags & 4) != 0; }
  bool isFromOverlayReference() const { return (mFlags & 8) != 0; }
  Acad::ErrorStatus setIsFromOverlayReference(bool overlay);
  // Model space, paper space, or a block that a layout holds.
  bool isLayout() const;
  AcDbObjectId getLayoutId() const { return mLayout; }
  // eInvalidInput for an id that is neither null nor a layout.
  Acad::ErrorStatus setLayoutId(AcDbObjectId layout);
  // The description (a new string the caller releases, or the record's own).
  Acad::ErrorStatus comments(ACHAR*& text) const;
  Acad::ErrorStatus comments(const ACHAR*& text) const;
  Acad::ErrorStatus setComments(const ACHAR* text);
  // An external reference's drawing path.
  Acad::ErrorStatus pathName(const ACHAR*& path) const;
  Acad::ErrorStatus setPathName(const ACHAR* path);
  AcDb::UnitsValue blockInsertUnits() const { return static_cast<AcDb::UnitsValue>(mInsertUnits); }
  Acad::ErrorStatus setBlockInsertUnits(AcDb::UnitsValue units);
  bool explodable() const { return mExplodable; }
  Acad::ErrorStatus setExplodable(bool explodable);
  BlockScaling blockScaling() const { return mUniformScaling ? kUniform : kAny; }
  Acad::ErrorStatus setBlockScaling(BlockScaling scaling);
  // Appends an entity (the record open for write). A new entity joins the
  // database and stays open for write: the caller closes it.
  Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
  Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
  Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;
  // The entities in order, erased ones included.
  const std::vector<AcDbObjectId>& entityIds() const { return mEntities; }

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  friend class kelhost::dxf::Access;
  AcGePoint3d mOrigin;
  std::vector<AcDbObjectId> mEntities;
  AcDbObjectId mLayout;
  std::wstring mComments, mPathName;
  short mInsertUnits = AcDb::kUnitsUndefined;
  bool mExplodable = true, mUniformScaling = false;
};

class AcDbBlockTableRecordIterator {
 public:
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
  Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode, bool openErased = false) const;

 private:
  friend class AcDbBlockTableRecord;
  explicit AcDbBlockTableRecordIterator(std::vector<AcDbObjectId> ids) : mIds(std::move(ids)) {}
  void skip(bool forward, bool skipDeleted);
  std::vector<AcDbObjectId> mIds;
  long mIndex = 0;
};

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);
  bool isFrozen() const { return (mFlags & 1) != 0; }
  void setIsFrozen(bool frozen);
  bool isLocked() const { return (mFlags & 4) != 0; }
  void setIsLocked(bool locked);
  bool isOff() const { return mOff; }
  void setIsOff(bool off);
  bool isPlottable() const { return mPlottable; }
  Acad::ErrorStatus setIsPlottable(bool plot);
  // Colour index 1-255 (the sign of the DXF group says off/on).
  Adesk::Int16 colorIndex() const { return mColorIndex; }
  Acad::ErrorStatus setColorIndex(Adesk::Int16 index);
  // The colour as an AcCmColor (always an index colour). setColor takes
  // an index colour; by layer and by block leave the record as it is.
  AcCmColor color() const;
  void setColor(const AcCmColor& color);
  AcDbObjectId linetypeObjectId() const { return mLinetype; }
  Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId id);
  AcDb::LineWeight lineWeight() const { return static_cast<AcDb::LineWeight>(mLineWeight); }
  Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcDbObjectId mLinetype;
  Adesk::Int16 mColorIndex = 7;
  Adesk::Int16 mLineWeight = AcDb::kLnWtByLwDefault;
  bool mOff = false;
  bool mPlottable = true;
};

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);
  const ACHAR* commentsConst() const { return mComments.c_str(); }
  Acad::ErrorStatus setComments(const ACHAR* text);
  double patternLength() const { return mPatternLength; }
  void setPatternLength(double length);
  int numDashes() const { return static_cast<int>(mDashes.size()); }
  void setNumDashes(int count);
  double dashLengthAt(int index) const;
  Acad::ErrorStatus setDashLengthAt(int index, double value);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  std::wstring mComments;
  double mPatternLength = 0.0;
  std::vector<double> mDashes;
};

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);
  double textSize() const { return mTextSize; }
  Acad::ErrorStatus setTextSize(double size);
  double xScale() const { return mXScale; }
  Acad::ErrorStatus setXScale(double scale);
  double obliquingAngle() const { return mOblique; }
  Acad::ErrorStatus setObliquingAngle(double angle);
  double priorSize() const { return mPriorSize; }
  Acad::ErrorStatus setPriorSize(double size);
  Acad::ErrorStatus fileName(const ACHAR*& name) const { name = mFileName.c_str(); return Acad::eOk; }
  Acad::ErrorStatus setFileName(const ACHAR* name);
  Acad::ErrorStatus bigFontFileName(const ACHAR*& name) const { name = mBigFont.c_str(); return Acad::eOk; }
  Acad::ErrorStatus setBigFontFileName(const ACHAR* name);
  Adesk::UInt8 flagBits() const { return static_cast<Adesk::UInt8>(mGeneration); }
  void setFlagBits(Adesk::UInt8 flags);
  bool isShapeFile() const { return (mFlags & 1) != 0; }
  bool isVertical() const { return (mFlags & 4) != 0; }

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  std::wstring mFileName, mBigFont;
  double mTextSize = 0.0, mXScale = 1.0, mOblique = 0.0, mPriorSize = 2.5;
  short mGeneration = 0;
};

// A dimension style: its variables by DXF group (DIMSCALE 40, DIMASZ 41,
// DIMTXT 140, DIMSAH 173, DIMTXSTY 340, ...), each with the default of the
// imperial Standard style until set.
class AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord);
  AcDbDimStyleTableRecord();
  double dimscale() const { return real(40); }
  double dimasz() const { return real(41); }
  double dimexo() const { return real(42); }
  double dimdli() const { return real(43); }
  double dimexe() const { return real(44); }
  double dimtxt() const { return real(140); }
  double dimcen() const { return real(141); }
  double dimgap() const { return real(147); }
  int dimtad() const { return integer(77); }
  int dimdec() const { return integer(271); }
  bool dimsah() const { return integer(173) != 0; }
  bool dimtih() const { return integer(73) != 0; }
  bool dimtoh() const { return integer(74) != 0; }
  double dimrnd() const { return real(45); }
  double dimdle() const { return real(46); }
  double dimtsz() const { return real(142); }
  double dimlfac() const { return real(144); }
  int dimzin() const { return integer(78); }
  AcDbObjectId dimtxsty() const { return mTextStyle; }
  // Arrowhead blocks (null: the closed filled arrowhead): DIMBLK for both
  // ends, DIMBLK1 and DIMBLK2 for each end when DIMSAH is on, DIMLDRBLK
  // for leaders.
  AcDbObjectId dimblk() const { return recordVar(342); }
  AcDbObjectId dimblk1() const { return recordVar(343); }
  AcDbObjectId dimblk2() const { return recordVar(344); }
  AcDbObjectId dimldrblk() const { return recordVar(341); }
  // The measurement's prefix and suffix: "<>" stands for the measurement.
  const ACHAR* dimpost() const { return mPostfix.c_str(); }
  const ACHAR* dimapost() const { return mAltPostfix.c_str(); }
  Acad::ErrorStatus setDimpost(const ACHAR* text);
  Acad::ErrorStatus setDimapost(const ACHAR* text);
  Acad::ErrorStatus setDimrnd(double v) { return setReal(45, v); }
  Acad::ErrorStatus setDimdle(double v) { return setReal(46, v); }
  Acad::ErrorStatus setDimtsz(double v) { return setReal(142, v); }
  Acad::ErrorStatus setDimzin(int v) { return setInteger(78, v); }
  Acad::ErrorStatus setDimblk(AcDbObjectId block) { return setRecordVar(342, block); }
  Acad::ErrorStatus setDimblk1(AcDbObjectId block) { return setRecordVar(343, block); }
  Acad::ErrorStatus setDimblk2(AcDbObjectId block) { return setRecordVar(344, block); }
  Acad::ErrorStatus setDimldrblk(AcDbObjectId block) { return setRecordVar(341, block); }
  Acad::ErrorStatus setDimscale(double v) { return setReal(40, v); }
  Acad::ErrorStatus setDimasz(double v) { return setReal(41, v); }
  Acad::ErrorStatus setDimexo(double v) { return setReal(42, v); }
  Acad::ErrorStatus setDimdli(double v) { return setReal(43, v); }
  Acad::ErrorStatus setDimexe(double v) { return setReal(44, v); }
  Acad::ErrorStatus setDimtxt(double v) { return setReal(140, v); }
  Acad::ErrorStatus setDimcen(double v) { return setReal(141, v); }
  Acad::ErrorStatus setDimgap(double v) { return setReal(147, v); }
  Acad::ErrorStatus setDimtad(int v) { return setInteger(77, v); }
  Acad::ErrorStatus setDimdec(int v) { return setInteger(271, v); }
  Acad::ErrorStatus setDimsah(bool v) { return setInteger(173, v ? 1 : 0); }
  Acad::ErrorStatus setDimtih(bool v) { return setInteger(73, v ? 1 : 0); }
  Acad::ErrorStatus setDimtoh(bool v) { return setInteger(74, v ? 1 : 0); }
  Acad::ErrorStatus setDimtxsty(AcDbObjectId style);

  // Any variable by its group code; eInvalidInput for a code that is not
  // one of the style's real or integer variables.
  double real(int code) const;
  int integer(int code) const;
  Acad::ErrorStatus setReal(int code, double value);
  Acad::ErrorStatus setInteger(int code, int value);
  // The variables that name a record: DIMTXSTY 340 (a text style),
  // DIMLDRBLK 341, DIMBLK 342, DIMBLK1 343, DIMBLK2 344 (blocks; null is
  // the closed filled arrowhead). Null for any other code.
  AcDbObjectId recordVar(int code) const;
  Acad::ErrorStatus setRecordVar(int code, AcDbObjectId record);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  std::vector<double> mReals;  // in the order of the variable table
  std::vector<short> mInts;
  std::wstring mPostfix, mAltPostfix;  // DIMPOST 3, DIMAPOST 4
  AcDbObjectId mTextStyle;
  AcDbObjectId mBlocks[4];  // DIMLDRBLK, DIMBLK, DIMBLK1, DIMBLK2
};

class AcDbViewTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewTableRecord);
  AcGePoint2d centerPoint() const { return mCenter; }
  void setCenterPoint(const AcGePoint2d& p);
  double height() const { return mHeight; }
  void setHeight(double h);
  double width() const { return mWidth; }
  void setWidth(double w);
  AcGePoint3d target() const { return mTarget; }
  void setTarget(const AcGePoint3d& p);
  AcGeVector3d viewDirection() const { return mDirection; }
  void setViewDirection(const AcGeVector3d& v);
  double viewTwist() const { return mTwist; }
  void setViewTwist(double a);
  double lensLength() const { return mLens; }
  void setLensLength(double l);
  double frontClipDistance() const { return mFront; }
  void setFrontClipDistance(double d);
  double backClipDistance() const { return mBack; }
  void setBackClipDistance(double d);
  bool isPaperspaceView() const { return (mFlags & 1) != 0; }
  void setIsPaperspaceView(bool on);
  // The view mode (VIEWMODE's bits 1, 2, 4 and 16).
  bool perspectiveEnabled() const { return (mViewMode & 1) != 0; }
  void setPerspectiveEnabled(bool on);
  bool frontClipEnabled() const { return (mViewMode & 2) != 0; }
  void setFrontClipEnabled(bool on);
  bool backClipEnabled() const { return (mViewMode & 4) != 0; }
  void setBackClipEnabled(bool on);
  bool frontClipAtEye() const { return (mViewMode & 16) == 0; }
  void setFrontClipAtEye(bool atEye);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint2d mCenter;
  AcGePoint3d mTarget;
  AcGeVector3d mDirection = AcGeVector3d::kZAxis;
  double mHeight = 1.0, mWidth = 1.0, mTwist = 0.0, mLens = 50.0, mFront = 0.0, mBack = 0.0;
  short mViewMode = 0;
};

class AcDbUCSTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbUCSTableRecord);
  AcGePoint3d origin() const { return mOrigin; }
  void setOrigin(const AcGePoint3d& p);
  AcGeVector3d xAxis() const { return mXAxis; }
  void setXAxis(const AcGeVector3d& v);
  AcGeVector3d yAxis() const { return mYAxis; }
  void setYAxis(const AcGeVector3d& v);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint3d mOrigin;
  AcGeVector3d mXAxis = AcGeVector3d::kXAxis, mYAxis = AcGeVector3d::kYAxis;
};

class AcDbViewportTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord);
  AcGePoint2d lowerLeftCorner() const { return mLowerLeft; }
  AcGePoint2d upperRightCorner() const { return mUpperRight; }
  AcGePoint2d centerPoint() const { return mCenter; }
  void setCenterPoint(const AcGePoint2d& p);
  double height() const { return mHeight; }
  void setHeight(double h);
  double width() const { return mHeight * mAspect; }
  AcGePoint3d target() const { return mTarget; }
  void setTarget(const AcGePoint3d& p);
  AcGeVector3d viewDirection() const { return mDirection; }
  void setViewDirection(const AcGeVector3d& v);
  // The width as the viewport's aspect ratio keeps it (group 41).
  void setWidth(double w);
  double viewTwist() const { return mTwist; }
  void setViewTwist(double a);
  double lensLength() const { return mLens; }
  void setLensLength(double l);
  double frontClipDistance() const { return mFront; }
  void setFrontClipDistance(double d);
  double backClipDistance() const { return mBack; }
  void setBackClipDistance(double d);
  // The view mode (VIEWMODE's bits).
  bool perspectiveEnabled() const { return (mViewMode & 1) != 0; }
  void setPerspectiveEnabled(bool on);
  bool frontClipEnabled() const { return (mViewMode & 2) != 0; }
  void setFrontClipEnabled(bool on);
  bool backClipEnabled() const { return (mViewMode & 4) != 0; }
  void setBackClipEnabled(bool on);
  bool ucsFollowMode() const { return (mViewMode & 8) != 0; }
  void setUcsFollowMode(bool on);
  bool frontClipAtEye() const { return (mViewMode & 16) == 0; }
  void setFrontClipAtEye(bool atEye);
  AcGePoint2d snapBase() const { return mSnapBase; }
  AcGeVector2d snapIncrements() const { return mSnapSpacing; }
  AcGeVector2d gridIncrements() const { return mGridSpacing; }
  double snapAngle() const { return mSnapAngle; }
  void setSnapAngle(double a);
  bool snapEnabled() const { return mSnapOn != 0; }
  void setSnapEnabled(bool on);
  bool gridEnabled() const { return mGridOn != 0; }
  void setGridEnabled(bool on);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint2d mLowerLeft{0, 0}, mUpperRight{1, 1}, mCenter{210, 148.5}, mSnapBase;
  AcGeVector2d mSnapSpacing{10, 10}, mGridSpacing{10, 10};
  AcGePoint3d mTarget;
  AcGeVector3d mDirection = AcGeVector3d::kZAxis;
  double mHeight = 297.0, mAspect = 1.0, mTwist = 0.0, mLens = 50.0, mFront = 0.0, mBack = 0.0;
  double mSnapAngle = 0.0;
  short mViewMode = 0, mCircleZoom = 1000, mFastZoom = 1, mUcsIcon = 3, mSnapOn = 0, mGridOn = 0;
  short mSnapStyle = 0, mIsoPair = 0;
};

class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
};
