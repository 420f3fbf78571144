// Circular arcs in the drawing plane (the XY plane of the UCS), as the
// drawing commands construct them: from three points, from a start point
// with a center, an end point, an included angle, a chord, a radius or a
// tangent direction. An arc keeps the order it was drawn in: it runs from
// its start through a signed sweep (positive anticlockwise), so that a
// polyline bulge and the tangent a following segment continues both come
// straight from it.
#pragma once

#include "arx/acge.h"

namespace kelhost::editor {

struct PlaneArc {
  AcGePoint2d center;
  double radius = 0.0;
  double startAngle = 0.0;  // of the start point, seen from the center
  double sweep = 0.0;       // signed: positive anticlockwise
  // The end point exactly as given, for the constructions given one (the
  // end computed from the angles may be off in the last bits).
  bool endGiven = false;
  AcGePoint2d givenEnd;

  AcGePoint2d pointAt(double angle) const;
  AcGePoint2d start() const { return pointAt(startAngle); }
  AcGePoint2d end() const { return endGiven ? givenEnd : pointAt(startAngle + sweep); }
  // Directions of travel (angles) at the ends.
  double startTangent() const;
  double endTangent() const;
  // The bulge of the polyline segment this arc is (tan of a quarter of the sweep).
  double bulge() const;
  // The same arc as the platform stores one: anticlockwise from a start
  // angle to an end angle, both in [0, 2pi).
  void anticlockwise(double& from, double& to) const;
};

// An angle in [0, 2pi).
double NormalizedAngle(double a);
double AngleOf(const AcGeVector2d& v);
AcGeVector2d Direction(double angle);

// Each construction fails (false) when the geometry is impossible:
// collinear or coincident points, a chord longer than the diameter, a
// zero angle.
bool ArcThroughPoints(const AcGePoint2d& start, const AcGePoint2d& second, const AcGePoint2d& end, PlaneArc& arc);
// Anticlockwise from start round center to the ray through toward.
bool ArcStartCenterEnd(const AcGePoint2d& start, const AcGePoint2d& center, const AcGePoint2d& toward, PlaneArc& arc);
bool ArcStartCenterAngle(const AcGePoint2d& start, const AcGePoint2d& center, double included, PlaneArc& arc);
// Anticlockwise; a positive chord gives the minor arc, a negative one the major.
bool ArcStartCenterChord(const AcGePoint2d& start, const AcGePoint2d& center, double chord, PlaneArc& arc);
// From start to end turning through included (negative: clockwise).
bool ArcStartEndAngle(const AcGePoint2d& start, const AcGePoint2d& end, double included, PlaneArc& arc);
// Anticlockwise from start to end; a negative radius gives the major arc.
bool ArcStartEndRadius(const AcGePoint2d& start, const AcGePoint2d& end, double radius, PlaneArc& arc);
// Leaving start in the direction tangent (an angle) and ending at end.
// An end straight ahead gives no arc (false, straight true): the segment
// is a line.
bool ArcStartTangentEnd(const AcGePoint2d& start, double tangent, const AcGePoint2d& end, PlaneArc& arc,
                        bool* straight = nullptr);

}  // namespace kelhost::editor
