// Tests of points against segments and polygons, and polygon areas. A
// polygon is a resbuf chain of vertices in order, every item carrying a
// point (RTPOINT, RT3DPOINT or a point group code such as 10); only x and
// y are read.
#pragma once

#include "kelcad/geom/records.h"
#include "kelcad/platform.h"

// 1 when pt lies within the extent of the segment from l's first to its
// second point, else 0. pt is taken to lie on the line already: only the
// extent is tested (by x, with 1e-6 of the length as allowance, or by y
// exactly for a vertical segment).
int acs_ptseg(const linfo* l, const double pt[3]);

// The area enclosed by the polygon, >= 0, in either winding: 0 for fewer
// than three items or an item without a point.
double acs_js_area(const resbuf* chain);

// RTNORM when pt lies inside the polygon (or on its boundary); RTERROR
// when it lies outside, and on failure: a null chain, an item without a
// point, a polygon without area, or memory short. The chain is not
// changed. The polygon must be simple (no crossing edges).
int acs_if_pin(const double pt[3], const resbuf* chain);
