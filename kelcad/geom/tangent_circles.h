// Circles tangent to two given curves: the fillet of a given radius, and
// the circle through a given point, for a pair of circles (arcs) and for a
// circle and a line. An atype is read as its circle; its angles are not
// used. A linfo must carry both points and its coefficients a, b, c.
//
// The side point p1 says which side of each given curve the new circle
// lies on: outside a circle (touching it externally) when p1 is outside,
// inside (touching internally) otherwise; on p1's side of a line.
//
// The tangent point on a circle is taken on the line through both centres,
// at the given circle's point nearer the new centre: the touching point
// when the new circle touches it from outside or lies within it; when the
// new circle encloses it, the near point is kept all the same, as the
// family has always taken it (it is then not the touching point).
//
// Results: RTNORM with the centre, the tangent point on each curve (z = 0)
// and, for the circle through a point, its radius; RTERROR, nothing
// written, when no such circle exists or the configuration is outside the
// construction's reach (noted at each function). Every construction adds
// 0.0001 to its discriminant so that near-tangent cases still succeed;
// that moves the result off exact tangency by about 1e-4/(8*rho^2)
// relative, rho being the distance from the new centre to the curve's.
#pragma once

#include "kelcad/geom/records.h"

// The circle of radius r tangent to a1 and a2; of the two candidates, the
// one nearer the pick point p0. RTERROR also when the centres of a1 and a2
// have equal x, or r is negative.
int acs_aa_cen(const double p0[3], const double p1[3], double r, atype a1, atype a2, double cen[3],
               double tan1[3], double tan2[3]);

// The circle through p0 tangent to a1 and a2, of the larger radius. p0 and
// p1 must lie on the same side of each circle (p0 on a circle counts as
// p1's side). RTERROR also when p0 and the two centres are collinear, or
// no positive radius exists.
int acs_aa_circle(const double p0[3], const double p1[3], atype a1, atype a2, double cen[3], double tan1[3],
                  double tan2[3], double* radius);

// The circle of radius r tangent to arc a and line l; of the two
// candidates, the one nearer the pick point p0. RTERROR also for a
// horizontal line (a = 0) or a negative r.
int acs_al_cen(const double p0[3], const double p1[3], double r, atype a, linfo l, double cen[3],
               double tanArc[3], double tanLine[3]);

// The circle through p0 tangent to arc a and line l, of the larger radius.
// p0 and p1 must lie on the same side of the line and of the circle (p0 on
// either counts as p1's side). RTERROR also when the line is perpendicular
// to the direction from p0 to the arc's centre, or no positive radius
// exists.
int acs_al_circle(const double p0[3], const double p1[3], atype a, linfo l, double cen[3], double tanArc[3],
                  double tanLine[3], double* radius);
