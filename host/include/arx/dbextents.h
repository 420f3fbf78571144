// AcDbExtents: an axis-aligned box in WCS that grows as points are added.
#pragma once

#include "acadstrc.h"
#include "gemat3d.h"

class AcDbExtents {
 public:
  // An empty box, (1e20, 1e20, 1e20) to (-1e20, -1e20, -1e20): the first
  // point added sets both corners.
  AcDbExtents();
  AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max);
  AcGePoint3d minPoint() const { return mMin; }
  AcGePoint3d maxPoint() const { return mMax; }
  // eInvalidExtents when min exceeds max on any axis.
  Acad::ErrorStatus set(const AcGePoint3d& min, const AcGePoint3d& max);
  void addPoint(const AcGePoint3d& pt);
  void addExt(const AcDbExtents& src);
  // The box around the eight transformed corners.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& mat);
  bool isEmpty() const { return mEmpty; }

 private:
  // The platform's empty box: corners no point can lie beyond.
  AcGePoint3d mMin{1e20, 1e20, 1e20}, mMax{-1e20, -1e20, -1e20};
  bool mEmpty = true;
};
