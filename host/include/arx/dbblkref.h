// Block references (INSERT) with their attributes (ATTRIB), and the
// attribute definitions (ATTDEF) of block definitions.
#pragma once

#include <string>

#include "dbpoly.h"

class AcDbAttributeDefinition : public AcDbText {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition);
  AcDbAttributeDefinition() = default;
  AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag, const ACHAR* prompt,
                          AcDbObjectId style = AcDbObjectId::kNull);
  const ACHAR* tagConst() const { return mTag.c_str(); }
  // A tag has no spaces; it is kept in upper case.
  Acad::ErrorStatus setTag(const ACHAR* tag);
  const ACHAR* promptConst() const { return mPrompt.c_str(); }
  Acad::ErrorStatus setPrompt(const ACHAR* prompt);
  bool isInvisible() const { return (mFlags & 1) != 0; }
  bool isConstant() const { return (mFlags & 2) != 0; }
  bool isVerifiable() const { return (mFlags & 4) != 0; }
  bool isPreset() const { return (mFlags & 8) != 0; }

 protected:
  // Its tag, where the definition stands.
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  std::wstring mTag, mPrompt;
  short mFlags = 0, mFieldLength = 0;
};

class AcDbAttribute : public AcDbText {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAttribute);
  AcDbAttribute() = default;
  AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                AcDbObjectId style = AcDbObjectId::kNull);
  const ACHAR* tagConst() const { return mTag.c_str(); }
  Acad::ErrorStatus setTag(const ACHAR* tag);
  bool isInvisible() const { return (mFlags & 1) != 0; }
  Acad::ErrorStatus setInvisible(bool on);
  bool isConstant() const { return (mFlags & 2) != 0; }
  // Takes the definition's tag, flags and text, placed by the reference's
  // block transformation.
  Acad::ErrorStatus setAttributeFromBlock(const AcDbAttributeDefinition* def, const AcGeMatrix3d& blockTransform);

 protected:
  // Nothing when invisible.
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  std::wstring mTag;
  short mFlags = 0, mFieldLength = 0;
};

class AcDbBlockReference : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbBlockReference);
  AcDbBlockReference() = default;
  AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord)
      : mPosition(position), mBlock(blockTableRecord) {}

  AcDbObjectId blockTableRecord() const { return mBlock; }
  Acad::ErrorStatus setBlockTableRecord(AcDbObjectId id);
  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& p);
  // The scale factors; none may be zero (eInvalidInput).
  AcGeVector3d scaleFactors() const { return mScale; }
  Acad::ErrorStatus setScaleFactors(const AcGeVector3d& scale);
  double rotation() const { return mRotation; }
  Acad::ErrorStatus setRotation(double a);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& n);
  // Block definition coordinates to WCS: the block's base point to the
  // position, scaled, rotated in the plane of the normal.
  AcGeMatrix3d blockTransform() const;

  // An attribute appended to a reference in a database (open for write)
  // joins the database and stays open for write (the caller closes it);
  // one appended to a reference not yet in a database belongs to it and
  // joins the database with it.
  Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
  Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
  const std::vector<AcDbObjectId>& attributeIds() const { return mSequence.items; }
  AcDbSubentSequence& sequence() { return mSequence; }

  // The box of the block's entities as placed (each entity's own box
  // transformed), with the attributes.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // The tightest box: each curve's geometry placed before its box is taken.
  virtual Acad::ErrorStatus geomExtentsBestFit(AcDbExtents& extents,
                                               const AcGeMatrix3d& parentXform = AcGeMatrix3d::kIdentity) const;
  // Moves, rotates, scales or mirrors the reference and its attributes. A
  // non-uniform scaling is taken when it stays along the reference's own
  // axes (it becomes scale factors) and the reference has no attributes;
  // otherwise eCannotScaleNonUniformly, nothing changed.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // Copies of the block's entities placed by blockTransform(), new and not
  // in a database (the caller owns them): attribute definitions as
  // attribute definitions (not the reference's attributes), nested
  // references as references. Under a non-uniform scaling circles and arcs
  // become ellipses; an entity that cannot take the transformation fails
  // the whole explode with its status, nothing appended.
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const override;
  // Explodes into the block that owns the reference (which stays): the
  // reference must be in a database.
  Acad::ErrorStatus explodeToOwnerSpace() const;

 protected:
  // The block's entities (not its attribute definitions) in the
  // reference's place, then the attributes.
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  // The reference's groups under a subclass marker; arrayFields() adds
  // the groups of an array between the rotation and the normal.
  void referenceFields(kelhost::dxf::GroupFiler& filer, const wchar_t* marker);
  virtual void arrayFields(kelhost::dxf::GroupFiler&) {}

 private:
  AcDbSubentSequence mSequence;
  AcGePoint3d mPosition;
  AcDbObjectId mBlock;
  AcGeVector3d mScale{1.0, 1.0, 1.0};
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  double mRotation = 0.0;
};

// A rectangular array of images of a block (MINSERT): columns along the
// reference's rotated X axis, rows along its Y axis, spaced in drawing
// units. In lists and files it is an INSERT with more than one column
// (70) or row (71), under the subclass marker AcDbMInsertBlock.
class AcDbMInsertBlock : public AcDbBlockReference {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMInsertBlock);
  // No rows or columns (an array of no images) and no spacing.
  AcDbMInsertBlock() = default;
  AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId blockTableRecord, Adesk::UInt16 columns,
                   Adesk::UInt16 rows, double colSpacing, double rowSpacing)
      : AcDbBlockReference(position, blockTableRecord), mColumns(columns), mRows(rows),
        mColumnSpacing(colSpacing), mRowSpacing(rowSpacing) {}

  Adesk::UInt16 columns() const { return mColumns; }
  Acad::ErrorStatus setColumns(Adesk::UInt16 columns);
  Adesk::UInt16 rows() const { return mRows; }
  Acad::ErrorStatus setRows(Adesk::UInt16 rows);
  double columnSpacing() const { return mColumnSpacing; }
  Acad::ErrorStatus setColumnSpacing(double spacing);
  double rowSpacing() const { return mRowSpacing; }
  Acad::ErrorStatus setRowSpacing(double spacing);
  // Where the image of one column and row is moved from the first (WCS).
  AcGeVector3d elementOffset(int column, int row) const;

  // The boxes cover every image of the array.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus geomExtentsBestFit(AcDbExtents& extents,
                                       const AcGeMatrix3d& parentXform = AcGeMatrix3d::kIdentity) const override;
  // The spacings follow the axes they run along.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // One block reference per image, row by row (with copies of the
  // attributes moved along); an array of no images gives none.
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const override;

 protected:
  // The block once per image of the array.
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  void arrayFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  Adesk::UInt16 mColumns = 0, mRows = 0;
  double mColumnSpacing = 0.0, mRowSpacing = 0.0;
};
