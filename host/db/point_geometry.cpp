// The geometry of a point entity: its box and its transformation.
#include <cmath>

#include "arx/dbents.h"
#include "db/curve_geometry.h"

Acad::ErrorStatus AcDbPoint::getGeomExtents(AcDbExtents& extents) const {
  extents = AcDbExtents(mPosition, mPosition);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  const AcGeVector3d moved = m * mNormal.normal();
  if (moved.isZeroLength()) return Acad::eCannotScaleNonUniformly;
  const AcGeVector3d normal = moved.normal();
  // The angle of the X axis the point was drawn with, carried as a direction.
  const AcGeVector3d xdir =
      AcGeMatrix3d::planeToWorld(mNormal) * AcGeVector3d(std::cos(mEcsRotation), std::sin(mEcsRotation), 0);
  mPosition = m * mPosition;
  mThickness *= moved.length();
  mEcsRotation = kelhost::geom::OcsAngle(normal, m * xdir);
  mNormal = normal;
  return Acad::eOk;
}
