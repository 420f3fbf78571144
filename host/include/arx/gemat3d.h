// AcGeMatrix3d: affine transformations of 3D space (translation, rotation,
// scaling, mirroring) as 4x4 matrices acting on column vectors.
#pragma once

#include "acge.h"

class AcGeMatrix3d {
 public:
  AcGeMatrix3d();
  static const AcGeMatrix3d kIdentity;

  AcGeMatrix3d& setToIdentity();
  bool isIdentity() const;
  AcGeMatrix3d operator*(const AcGeMatrix3d& m) const;
  AcGeMatrix3d& operator*=(const AcGeMatrix3d& m) { return postMultBy(m); }
  // this = this * m and this = m * this.
  AcGeMatrix3d& postMultBy(const AcGeMatrix3d& m);
  AcGeMatrix3d& preMultBy(const AcGeMatrix3d& m);
  double det() const;
  // The inverse; the identity when the matrix is singular.
  AcGeMatrix3d inverse() const;
  AcGeMatrix3d& invert() { return *this = inverse(); }
  // The largest factor by which the matrix stretches a unit vector.
  double scale() const;
  // Orthogonal up to one scale factor (no shear, no non-uniform scale).
  bool isUniScaledOrtho() const;
  AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }

  AcGeMatrix3d& setToTranslation(const AcGeVector3d& v);
  // Rotation by angle about axis (right-hand rule) through center.
  AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                              const AcGePoint3d& center = AcGePoint3d::kOrigin);
  AcGeMatrix3d& setToScaling(double scale, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  // Point reflection through a point; reflection in the plane through
  // point with that normal.
  AcGeMatrix3d& setToMirroring(const AcGePoint3d& point);
  AcGeMatrix3d& setToMirroring(const AcGePoint3d& pointOnPlane, const AcGeVector3d& planeNormal);
  // Maps the WCS onto the coordinate system (origin, xAxis, yAxis, zAxis).
  AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                               const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);

  static AcGeMatrix3d translation(const AcGeVector3d& v);
  static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                               const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d scaling(double scale, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d mirroring(const AcGePoint3d& pointOnPlane, const AcGeVector3d& planeNormal);
  // The object coordinate system of an entity with that normal (the
  // arbitrary-axis rule): maps OCS coordinates to WCS.
  static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
  static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal) { return planeToWorld(normal).inverse(); }

  bool isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol = AcGeContext::gTol) const;
  bool operator==(const AcGeMatrix3d& m) const { return isEqualTo(m); }
  bool operator!=(const AcGeMatrix3d& m) const { return !isEqualTo(m); }

  double entry[4][4];
};

AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p);
AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v);
