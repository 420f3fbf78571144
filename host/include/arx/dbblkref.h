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

  // Attributes follow once the reference is in a database and open for
  // write; each new one stays open for write (the caller closes it).
  Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
  Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
  const std::vector<AcDbObjectId>& attributeIds() const { return mSequence.items; }
  AcDbSubentSequence& sequence() { return mSequence; }

  // The box of the block's entities as placed (each entity's own box
  // transformed), with the attributes.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // The tightest box: each curve's geometry placed before its box is taken.
  Acad::ErrorStatus geomExtentsBestFit(AcDbExtents& extents,
                                       const AcGeMatrix3d& parentXform = AcGeMatrix3d::kIdentity) const;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcDbSubentSequence mSequence;
  AcGePoint3d mPosition;
  AcDbObjectId mBlock;
  AcGeVector3d mScale{1.0, 1.0, 1.0};
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  double mRotation = 0.0;
};
