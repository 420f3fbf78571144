// What the user sees: the current view's rectangle, whether a point lies in
// it, the pick box in drawing units, and redrawing a selection set.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// The corners of the current view in its own coordinates, from VIEWSIZE
// (the height), VIEWCTR and the width-to-height ratio of VSMIN..VSMAX.
void GetScreenLBRT(double lowerLeft[3], double upperRight[3]);

// True when the point's x and y lie within the current view, bounds
// included.
bool IsPtInView(double point[3]);

// PICKBOX (0 taken as 3) in drawing units, reckoning the view's height as
// a fixed 200 pixels, whatever the real size of the drawing area.
double GetPickBoxWidth();

// acedRedraw of every member of the set, in order, in mode.
void RedrawSS(ads_name set, int mode);

}  // namespace KEL
