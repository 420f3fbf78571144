// ACDB calls available before the drawing database: error reporting.
#pragma once

#include "adsdef.h"

// Prints an application error message on the command line.
void acdbFail(const ACHAR* str);

// Intersection of the lines from1-to1 and from2-to2 (in 3D: they must
// meet). With teston nonzero the point must lie on both segments. RTNORM
// with the point in result; RTNONE when there is none (parallel, skew, or
// off a segment); RTERROR for missing arguments.
int acdbInters(const ads_point from1, const ads_point to1, const ads_point from2, const ads_point to2, int teston,
               ads_point result);
