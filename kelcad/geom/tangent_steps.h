// Steps shared by the tangent-circle constructions.
#pragma once

#include "kelcad/geom/records.h"

namespace KEL::Geom {

double Distance2d(const double a[3], const double b[3]);

// +radius when side lies outside c (strictly farther than the radius from
// its centre), -radius otherwise: the new circle then touches c
// externally or internally.
double SignedRadius(const circ& c, const double side[3]);

// Which side of c the points p0 and p1 lie on, as the signed radius of c
// (+radius outside, -radius inside); false when they lie on different
// sides. p0 within onTolerance of the circle takes p1's side.
bool SideOfCircle(const circ& c, const double p0[3], const double p1[3], double onTolerance,
                  double& signedRadius);

// The roots of q*t^2 + b*t + g = 0 with 0.0001 added to the discriminant:
// roots[0] takes +sqrt(disc), roots[1] -sqrt(disc). False when q is 0, the
// raised discriminant is negative, or a root is not finite.
bool RaisedRoots(double q, double b, double g, double roots[2]);

// The larger of the two roots; the second only when strictly greater.
double LargerRoot(const double roots[2]);

// Where the circle of that radius centred at centre touches c: one of the
// two points where the line through both centres meets c. The first is
// taken unless the second lies strictly nearer to the radius's distance
// from centre: that is the nearer point when the circles touch externally
// or the new one lies inside c, and the farther one when the new circle
// encloses c. False when the centres coincide.
bool TangentPointOnCircle(const double centre[3], double radius, const circ& c, double out[3]);

// Where the circle centred at centre touches line l: the foot of the
// perpendicular. False when l's points coincide.
bool TangentPointOnLine(const double centre[3], const linfo& l, double out[3]);

// The point (x, y, 0).
void SetPlanePoint(double out[3], double x, double y);
void CopyPoint(double out[3], const double in[3]);

}  // namespace KEL::Geom
