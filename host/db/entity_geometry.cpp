// The geometry defaults of AcDbEntity: an entity without geometry has no
// extents, cannot be transformed, exploded or intersected.
#include "arx/dbmain.h"

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents&) const { return Acad::eInvalidExtents; }
Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbEntity::explode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity*, AcDb::Intersect, AcGePoint3dArray&, Adesk::GsMarker,
                                            Adesk::GsMarker) const {
  return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* pFrom, bool) {
  if (!pFrom) return Acad::eNullEntityPointer;
  if (!writable()) return Acad::eNotOpenForWrite;
  const AcDbEntity& from = *pFrom;
  mLayer = from.mLayer;
  mLinetype = from.mLinetype;
  mLinetypeScale = from.mLinetypeScale;
  mColorIndex = from.mColorIndex;
  mTrueColor = from.mTrueColor;
  mLineWeight = from.mLineWeight;
  mInvisible = from.mInvisible;
  return Acad::eOk;
}
