// The drawing plane (the XY plane of the current UCS) and the entities
// in it: the drawing commands work in UCS coordinates and make their
// lines, arcs, circles, polylines and text in the world from there; FILLET
// and CIRCLE's tangent form read picked lines, arcs and circles back into
// the plane and write the trimmed ones out again.
#pragma once

#include <memory>

#include "arx/dbents.h"
#include "editor/commands/plane_arc.h"
#include "editor/commands/tangent_circles.h"

namespace kelhost::editor {

// UCS point (x, y in the plane, z its height above it) and WCS.
AcGePoint3d PlaneToWorld(const AcGePoint2d& p, double z);
AcGePoint3d WorldToUcs(const AcGePoint3d& world);
// The UCS Z axis in the world: the normal of everything drawn.
AcGeVector3d PlaneNormal();
// A direction of the plane (an angle from the UCS X axis) as an angle in
// the object coordinate system of PlaneNormal(), as entities store angles.
double OcsAngleOf(double planeAngle);
// A plane point in that object coordinate system (x, y) with its elevation.
AcGePoint2d OcsPointOf(const AcGePoint2d& p, double z, double& elevation);

// Lines from UCS points (x, y, z).
std::unique_ptr<AcDbLine> MakeLine(const double from[3], const double to[3]);
std::unique_ptr<AcDbArc> MakeArc(const PlaneArc& arc, double z);
std::unique_ptr<AcDbCircle> MakeCircle(const AcGePoint2d& center, double radius, double z);

// A line, arc or circle of the drawing as the plane sees it.
struct PlaneEntity {
  enum Kind { kLine, kArc, kCircle };
  Kind kind = kLine;
  AcDbObjectId id;
  AcDbObjectId layer;
  AcGePoint2d start, end;  // a line's ends
  double startZ = 0.0, endZ = 0.0;
  AcGePoint2d center;  // arcs and circles
  double radius = 0.0;
  double from = 0.0, to = 0.0;  // an arc, anticlockwise in the plane
  double z = 0.0;

  PlaneCurve curve() const;
  // Whether a point of the circle (at that angle) lies on the arc.
  bool arcCovers(double angle) const;
};

// False when the entity is no line, arc or circle, or an arc or circle
// lies in another plane (lines are seen from above).
bool ReadPlaneEntity(AcDbObjectId id, PlaneEntity& out);
// Writes a line's ends or an arc's angles back (the entity open for write
// only for the change).
bool WritePlaneEntity(const PlaneEntity& e);

}  // namespace kelhost::editor
