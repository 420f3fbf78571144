// Shapes (SHAPE): a symbol of a shape file placed by position, size and
// rotation.
#pragma once

#include <string>

#include "dbents.h"

class AcDbShape : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbShape);
  AcDbShape() = default;
  AcDbShape(const AcGePoint3d& position, double size, double rotation = 0.0, double widthFactor = 1.0);

  AcGePoint3d position() const { return mPosition; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  // The height of the shape; positive.
  double size() const { return mSize; }
  Acad::ErrorStatus setSize(double size);
  // The shape's name in its shape file, as a new string the caller
  // releases (acutDelString / free).
  ACHAR* name() const;
  Acad::ErrorStatus setName(const ACHAR* name);
  // The number of a shape is defined by the shape file, which the host
  // cannot read: it keeps the name only, and the number is always 0.
  Adesk::Int16 shapeNumber() const { return 0; }
  double rotation() const { return mRotation; }
  Acad::ErrorStatus setRotation(double angle);
  // Not zero; negative for a shape drawn backwards.
  double widthFactor() const { return mWidthFactor; }
  Acad::ErrorStatus setWidthFactor(double factor);
  double oblique() const { return mOblique; }
  Acad::ErrorStatus setOblique(double angle);
  double thickness() const { return mThickness; }
  Acad::ErrorStatus setThickness(double thickness);
  AcGeVector3d normal() const { return mNormal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

  // Without the shape's strokes the box is an approximation: the square
  // of side size (stretched by the width factor) standing on the
  // position, turned by the rotation in the shape's plane.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // Moves, rotates and scales the shape (uniform scaling only); a
  // mirroring mirrors it (its normal turns over).
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  AcGePoint3d mPosition;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  std::wstring mName;
  double mSize = 1.0, mRotation = 0.0, mWidthFactor = 1.0, mOblique = 0.0, mThickness = 0.0;
};
