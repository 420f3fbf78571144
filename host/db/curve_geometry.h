// Shared pieces of curve geometry: object coordinate systems, bulge
// segments, and the checks every transformBy makes.
#pragma once

#include "arx/dbents.h"
#include "db/curve_path.h"

namespace kelhost::geom {

constexpr double kPi = 3.14159265358979323846;

// The X axis of the object coordinate system of an entity with that normal.
AcGeVector3d OcsXAxis(const AcGeVector3d& normal);
// The angle of a WCS direction in the plane of normal, from its OCS X axis, in [0, 2pi).
double OcsAngle(const AcGeVector3d& normal, const AcGeVector3d& dir);
// Adds the segment from a to b (WCS) with that bulge in the plane of normal.
void AddBulgeSegment(Path& path, const AcGePoint3d& a, const AcGePoint3d& b, double bulge,
                     const AcGeVector3d& normal, double t0, double t1);
// A line or an arc for one segment (null for a zero-length one), with the
// properties of from.
AcDbCurve* SegmentEntity(const AcDbEntity& from, const AcGePoint3d& a, const AcGePoint3d& b, double bulge,
                         const AcGeVector3d& normal);
// The normal after a transformation (unit length).
AcGeVector3d TransformNormal(const AcGeMatrix3d& m, const AcGeVector3d& normal);
// The plane's new normal under m: across the images of the plane's axes,
// on the side the matrix takes the old normal (so that a mirroring turns
// the normal round as it does for the other planar entities). False when
// m flattens the plane.
bool TransformPlaneNormal(const AcGeMatrix3d& m, const AcGeVector3d& normal, AcGeVector3d& out);

}  // namespace kelhost::geom
