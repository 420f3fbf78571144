// Dimensions (DIMENSION): the common dimension with its picture (an
// anonymous *D block), and the kinds the host models: aligned, rotated,
// radial, diametric and ordinate. Other kinds (angular, three-point
// angular, arc length) have no class here: a drawing file keeps them
// verbatim, and acdbEntMake refuses them (returns nil), since the host
// could not draw their block.
#pragma once

#include <string>

#include "dbmtext.h"
#include "dbsymtb.h"

namespace kelhost::db {
class DimPicture;
}

class AcDbDimension : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDimension);

  // The middle of the text. Setting it makes it the user's position.
  AcGePoint3d textPosition() const { return mTextPosition; }
  Acad::ErrorStatus setTextPosition(const AcGePoint3d& position);
  bool isUsingDefaultTextPosition() const { return (mFlags & kUserTextPosition) == 0; }
  Acad::ErrorStatus useSetTextPosition();
  Acad::ErrorStatus useDefaultTextPosition();
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  // The text as the user gave it: empty (or "<>") for the measurement;
  // "<>" within it stands for the measurement; a single space hides the
  // text. A new string the caller releases (acutDelString / free).
  ACHAR* dimensionText() const;
  Acad::ErrorStatus setDimensionText(const ACHAR* text);
  // The text's own angle (0: as the style places it).
  double textRotation() const { return mTextRotation; }
  Acad::ErrorStatus setTextRotation(double angle);
  // The style: the drawing's current DIMSTYLE until one is set.
  AcDbObjectId dimensionStyle() const;
  Acad::ErrorStatus setDimensionStyle(AcDbObjectId style);
  AcDbMText::AttachmentPoint textAttachment() const { return static_cast<AcDbMText::AttachmentPoint>(mAttachment); }
  Acad::ErrorStatus setTextAttachment(AcDbMText::AttachmentPoint attachment);
  AcDb::LineSpacingStyle textLineSpacingStyle() const { return static_cast<AcDb::LineSpacingStyle>(mSpacingStyle); }
  Acad::ErrorStatus setTextLineSpacingStyle(AcDb::LineSpacingStyle style);
  double textLineSpacingFactor() const;
  Acad::ErrorStatus setTextLineSpacingFactor(double factor);
  double horizontalRotation() const { return mHorizontalRotation; }
  Acad::ErrorStatus setHorizontalRotation(double angle);

  // Style variables of the dimension's own: overrides of its style, kept
  // as the platform keeps them, in its xdata of "ACAD" as the DSTYLE list
  // (see db/dimension_overrides.h). A getter gives the dimension's own
  // value, else its style's. Setters take the value as it is (a negative
  // size, a DIMDEC outside 0..8, a DIMZIN outside 0..15 is eInvalidInput)
  // and the block is drawn anew as the dimension closes.
  double dimscale() const { return dimReal(40); }
  double dimasz() const { return dimReal(41); }
  double dimexo() const { return dimReal(42); }
  double dimdli() const { return dimReal(43); }
  double dimexe() const { return dimReal(44); }
  double dimrnd() const { return dimReal(45); }
  double dimdle() const { return dimReal(46); }
  double dimtxt() const { return dimReal(140); }
  double dimtsz() const { return dimReal(142); }
  double dimlfac() const { return dimReal(144); }
  double dimgap() const { return dimReal(147); }
  int dimtad() const { return dimInt(77); }
  int dimzin() const { return dimInt(78); }
  int dimdec() const { return dimInt(271); }
  bool dimse1() const { return dimInt(75) != 0; }
  bool dimse2() const { return dimInt(76) != 0; }
  bool dimsah() const { return dimInt(173) != 0; }
  bool dimtih() const { return dimInt(73) != 0; }
  // A null text style means the drawing's current one; a null arrowhead
  // block the closed filled arrowhead.
  AcDbObjectId dimtxsty() const { return dimRecord(340); }
  AcDbObjectId dimldrblk() const { return dimRecord(341); }
  AcDbObjectId dimblk() const { return dimRecord(342); }
  AcDbObjectId dimblk1() const { return dimRecord(343); }
  AcDbObjectId dimblk2() const { return dimRecord(344); }
  Acad::ErrorStatus setDimscale(double v) { return setDimReal(40, v); }
  Acad::ErrorStatus setDimasz(double v) { return setDimReal(41, v); }
  Acad::ErrorStatus setDimexo(double v) { return setDimReal(42, v); }
  Acad::ErrorStatus setDimdli(double v) { return setDimReal(43, v); }
  Acad::ErrorStatus setDimexe(double v) { return setDimReal(44, v); }
  Acad::ErrorStatus setDimrnd(double v) { return setDimReal(45, v); }
  Acad::ErrorStatus setDimdle(double v) { return setDimReal(46, v); }
  Acad::ErrorStatus setDimtxt(double v) { return setDimReal(140, v); }
  Acad::ErrorStatus setDimtsz(double v) { return setDimReal(142, v); }
  Acad::ErrorStatus setDimlfac(double v) { return setDimReal(144, v); }
  // Negative: the text is framed.
  Acad::ErrorStatus setDimgap(double v) { return setDimReal(147, v); }
  Acad::ErrorStatus setDimtad(int v) { return setDimInt(77, v); }
  Acad::ErrorStatus setDimzin(int v) { return setDimInt(78, v); }
  Acad::ErrorStatus setDimdec(int v) { return setDimInt(271, v); }
  Acad::ErrorStatus setDimse1(bool v) { return setDimInt(75, v ? 1 : 0); }
  Acad::ErrorStatus setDimse2(bool v) { return setDimInt(76, v ? 1 : 0); }
  Acad::ErrorStatus setDimsah(bool v) { return setDimInt(173, v ? 1 : 0); }
  Acad::ErrorStatus setDimtih(bool v) { return setDimInt(73, v ? 1 : 0); }
  Acad::ErrorStatus setDimtxsty(AcDbObjectId style) { return setDimRecord(340, style); }
  Acad::ErrorStatus setDimldrblk(AcDbObjectId block) { return setDimRecord(341, block); }
  Acad::ErrorStatus setDimblk(AcDbObjectId block) { return setDimRecord(342, block); }
  Acad::ErrorStatus setDimblk1(AcDbObjectId block) { return setDimRecord(343, block); }
  Acad::ErrorStatus setDimblk2(AcDbObjectId block) { return setDimRecord(344, block); }
  // Arrowheads by name: a block of the drawing, or one of the platform's
  // standard arrowheads ("_ArchTick", "_Oblique", "_Dot", "_Open", ...; any
  // case, "_" optional), whose block is made when the drawing lacks it;
  // "" or "." is the closed filled arrowhead. eKeyNotFound for any other.
  Acad::ErrorStatus setDimblk(const ACHAR* name) { return setDimBlockByName(342, name); }
  Acad::ErrorStatus setDimblk1(const ACHAR* name) { return setDimBlockByName(343, name); }
  Acad::ErrorStatus setDimblk2(const ACHAR* name) { return setDimBlockByName(344, name); }
  Acad::ErrorStatus setDimldrblk(const ACHAR* name) { return setDimBlockByName(341, name); }
  // The dimension takes the data of the record: each variable where the
  // record differs from the dimension's style becomes the dimension's own,
  // and any other value of its own goes, so that it draws as the record
  // says while it keeps its style. A null id drops all of its own values
  // and sets its style to null: the drawing's current dimension style.
  Acad::ErrorStatus setDimstyleData(AcDbObjectId record);
  // A new record in no database (the caller deletes it) with the data the
  // dimension draws with: its style's and its own values over them.
  Acad::ErrorStatus getDimstyleData(AcDbDimStyleTableRecord*& record) const;

  // The block that draws the dimension, and where it is placed.
  AcDbObjectId dimBlockId() const { return mBlock; }
  Acad::ErrorStatus setDimBlockId(AcDbObjectId block);
  AcGePoint3d dimBlockPosition() const { return mBlockPosition; }
  Acad::ErrorStatus setDimBlockPosition(const AcGePoint3d& position);
  // Block coordinates to WCS: the block position, then the transformations
  // the dimension had since its block was last drawn.
  AcGeMatrix3d dimBlockTransform() const;

  // What the dimension measures, from its points.
  virtual Acad::ErrorStatus measurement(double& value) const = 0;
  // The text the block shows for a measurement: the number as the style
  // writes it (see db/dimension_text.h) within the dimension's own text.
  // A new string the caller releases.
  Acad::ErrorStatus formatMeasurement(ACHAR*& text, double measurement) const;

  // Draws the block anew from the points and the style (the dimension in a
  // database and open for write): a *D block drawn for this dimension
  // alone is drawn over, else a new anonymous *D block is made (flag 32).
  // A text at its default position moves where the style puts it. Closing
  // a dimension does this when it has no block yet or has changed
  // (forceUpdate false: only then).
  Acad::ErrorStatus recomputeDimBlock(bool forceUpdate = true);

  // The block's entities as placed; without a block, the dimension's points.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // Moves, rotates, scales or mirrors the points (uniform scaling only);
  // the block is drawn anew as the dimension closes.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // Copies of the block's entities placed by dimBlockTransform(). Entities
  // of a kind the host keeps verbatim come along only when that placement
  // is the identity (they cannot be transformed).
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const override;

 protected:
  // The dimension's block.
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  AcDbDimension();
  // Group 70's bits over the kind (its low bits, which the class gives).
  enum Flags : short { kBlockOfItsOwn = 32, kUserTextPosition = 128 };
  virtual short dimensionKind() const = 0;
  // What the measurement's number follows in the text ("R" for a radius).
  virtual std::wstring measurementPrefix() const { return L""; }
  // Group 70's bits over the kind.
  short flags() const { return mFlags; }
  void setFlags(short flags) { mFlags = flags; }
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  // The clones' insertion point (12), which the linear kinds write in their
  // own subclass.
  void blockPositionField(kelhost::dxf::GroupFiler& filer);
  // The dimension's points moved by a transformation.
  virtual void transformPoints(const AcGeMatrix3d& xform) = 0;
  // The points the box of a dimension without its block spans.
  virtual void definingPoints(AcGePoint3dArray& points) const = 0;
  // Draws the dimension (WCS) for its style; a text at its default
  // position is moved there.
  virtual void drawPicture(kelhost::db::DimPicture& picture) = 0;
  // The text position as drawing puts it.
  void placeText(const AcGePoint3d& position);
  // The block is drawn anew as the dimension closes.
  void changed();
  Acad::ErrorStatus subClose() override;

  AcGePoint3d mDefinitionPoint;  // 10: on the dimension line for the linear kinds

 private:
  bool ownsItsBlock() const;
  double dimReal(int code) const;
  int dimInt(int code) const;
  AcDbObjectId dimRecord(int code) const;
  Acad::ErrorStatus setDimReal(int code, double value);
  Acad::ErrorStatus setDimInt(int code, int value);
  Acad::ErrorStatus setDimRecord(int code, AcDbObjectId record);
  Acad::ErrorStatus setDimBlockByName(int code, const ACHAR* name);

  AcGePoint3d mTextPosition, mBlockPosition;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  std::wstring mText;
  AcDbObjectId mStyle, mBlock;
  AcGeMatrix3d mSinceDrawn;
  double mTextRotation = 0.0, mHorizontalRotation = 0.0;
  double mSpacingFactor, mMeasured;  // NaN when a list or file did not give them
  short mFlags = 0, mAttachment = AcDbMText::kMiddleCenter, mSpacingStyle = AcDb::kAtLeast;
  short mVersion = 0;
  bool mNeedsBlock = true;
};

// Measures the distance between its extension line points.
class AcDbAlignedDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAlignedDimension);
  AcDbAlignedDimension() = default;
  AcDbAlignedDimension(const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point, const AcGePoint3d& dimLinePoint,
                       const ACHAR* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);

  AcGePoint3d xLine1Point() const { return mXLine1; }
  Acad::ErrorStatus setXLine1Point(const AcGePoint3d& point);
  AcGePoint3d xLine2Point() const { return mXLine2; }
  Acad::ErrorStatus setXLine2Point(const AcGePoint3d& point);
  // A point of the dimension line.
  AcGePoint3d dimLinePoint() const { return mDefinitionPoint; }
  Acad::ErrorStatus setDimLinePoint(const AcGePoint3d& point);
  // The extension lines' angle to the dimension line, 0 for square.
  double oblique() const { return mOblique; }
  Acad::ErrorStatus setOblique(double angle);

  Acad::ErrorStatus measurement(double& value) const override;

 protected:
  short dimensionKind() const override { return 1; }
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  void transformPoints(const AcGeMatrix3d& xform) override;
  void definingPoints(AcGePoint3dArray& points) const override;
  void drawPicture(kelhost::db::DimPicture& picture) override;

 private:
  AcGePoint3d mXLine1, mXLine2;
  double mOblique = 0.0;
};

// Measures along its rotation: the distance between its extension line
// points projected on that direction.
class AcDbRotatedDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRotatedDimension);
  AcDbRotatedDimension() = default;
  AcDbRotatedDimension(double rotation, const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                       const AcGePoint3d& dimLinePoint, const ACHAR* dimText = nullptr,
                       AcDbObjectId dimStyle = AcDbObjectId::kNull);

  AcGePoint3d xLine1Point() const { return mXLine1; }
  Acad::ErrorStatus setXLine1Point(const AcGePoint3d& point);
  AcGePoint3d xLine2Point() const { return mXLine2; }
  Acad::ErrorStatus setXLine2Point(const AcGePoint3d& point);
  AcGePoint3d dimLinePoint() const { return mDefinitionPoint; }
  Acad::ErrorStatus setDimLinePoint(const AcGePoint3d& point);
  double oblique() const { return mOblique; }
  Acad::ErrorStatus setOblique(double angle);
  // The dimension line's angle in the plane of the normal.
  double rotation() const { return mRotation; }
  Acad::ErrorStatus setRotation(double angle);

  Acad::ErrorStatus measurement(double& value) const override;

 protected:
  short dimensionKind() const override { return 0; }
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  void transformPoints(const AcGeMatrix3d& xform) override;
  void definingPoints(AcGePoint3dArray& points) const override;
  void drawPicture(kelhost::db::DimPicture& picture) override;

 private:
  AcGePoint3d mXLine1, mXLine2;
  double mOblique = 0.0, mRotation = 0.0;
};

// Measures a radius: from the centre (group 10) to a point of the curve
// (15). The picture: the dimension line from the centre to that point with
// an arrowhead there, a leader on past it of the leader length, the text
// at the leader's end (on the line without a leader), and a centre mark
// (DIMCEN > 0).
class AcDbRadialDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRadialDimension);
  AcDbRadialDimension() = default;
  AcDbRadialDimension(const AcGePoint3d& center, const AcGePoint3d& chordPoint, double leaderLength,
                      const ACHAR* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);

  AcGePoint3d center() const { return mDefinitionPoint; }
  Acad::ErrorStatus setCenter(const AcGePoint3d& point);
  AcGePoint3d chordPoint() const { return mChord; }
  Acad::ErrorStatus setChordPoint(const AcGePoint3d& point);
  double leaderLength() const { return mLeader; }
  Acad::ErrorStatus setLeaderLength(double length);

  Acad::ErrorStatus measurement(double& value) const override;

 protected:
  short dimensionKind() const override { return 4; }
  std::wstring measurementPrefix() const override { return L"R"; }
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  void transformPoints(const AcGeMatrix3d& xform) override;
  void definingPoints(AcGePoint3dArray& points) const override;
  void drawPicture(kelhost::db::DimPicture& picture) override;

 private:
  AcGePoint3d mChord;
  double mLeader = 0.0;
};

// Measures a diameter: between two opposite points of the curve (groups 10
// and 15). The picture: the dimension line between them with an arrowhead
// at each end, a leader past the far point of the leader length, and the
// text in the middle (at the leader's end when there is one).
class AcDbDiametricDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDiametricDimension);
  AcDbDiametricDimension() = default;
  AcDbDiametricDimension(const AcGePoint3d& chordPoint, const AcGePoint3d& farChordPoint, double leaderLength,
                         const ACHAR* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);

  AcGePoint3d chordPoint() const { return mDefinitionPoint; }
  Acad::ErrorStatus setChordPoint(const AcGePoint3d& point);
  AcGePoint3d farChordPoint() const { return mFarChord; }
  Acad::ErrorStatus setFarChordPoint(const AcGePoint3d& point);
  double leaderLength() const { return mLeader; }
  Acad::ErrorStatus setLeaderLength(double length);

  Acad::ErrorStatus measurement(double& value) const override;

 protected:
  short dimensionKind() const override { return 3; }
  std::wstring measurementPrefix() const override { return L"%%c"; }
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  void transformPoints(const AcGeMatrix3d& xform) override;
  void definingPoints(AcGePoint3dArray& points) const override;
  void drawPicture(kelhost::db::DimPicture& picture) override;

 private:
  AcGePoint3d mFarChord;
  double mLeader = 0.0;
};

// Measures how far a feature lies from an origin (group 10) along the X
// axis or the Y axis of its plane (group 70's bit 64 for X): the feature's
// point (13) and the end of its leader (14). The picture: the leader from
// the feature (DIMEXO off it) to its end, and the text past the end.
class AcDbOrdinateDimension : public AcDbDimension {
 public:
  ACRX_DECLARE_MEMBERS(AcDbOrdinateDimension);
  AcDbOrdinateDimension() = default;
  AcDbOrdinateDimension(bool useXAxis, const AcGePoint3d& definingPoint, const AcGePoint3d& leaderEndPoint,
                        const ACHAR* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);

  bool isUsingXAxis() const { return (flags() & kXAxis) != 0; }
  bool isUsingYAxis() const { return !isUsingXAxis(); }
  Acad::ErrorStatus useXAxis();
  Acad::ErrorStatus useYAxis();
  AcGePoint3d origin() const { return mDefinitionPoint; }
  Acad::ErrorStatus setOrigin(const AcGePoint3d& point);
  AcGePoint3d definingPoint() const { return mFeature; }
  Acad::ErrorStatus setDefiningPoint(const AcGePoint3d& point);
  AcGePoint3d leaderEndPoint() const { return mLeaderEnd; }
  Acad::ErrorStatus setLeaderEndPoint(const AcGePoint3d& point);

  Acad::ErrorStatus measurement(double& value) const override;

 protected:
  enum : short { kXAxis = 64 };
  short dimensionKind() const override { return 6; }
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  void transformPoints(const AcGeMatrix3d& xform) override;
  void definingPoints(AcGePoint3dArray& points) const override;
  void drawPicture(kelhost::db::DimPicture& picture) override;

 private:
  Acad::ErrorStatus setAxis(bool x);
  AcGePoint3d mFeature, mLeaderEnd;
};
