// Points between the current UCS and the world, through the platform.
#pragma once

#include "kelcad/platform.h"

// 1 and pt carried from the current UCS to the world (or, for gl_wcs2ucs,
// back) in res; 0 when the platform refuses. disp nonzero carries a
// displacement rather than a point.
int gl_ucs2wcs(double res[3], const double pt[3], int disp);
int gl_wcs2ucs(double res[3], const double pt[3], int disp);
