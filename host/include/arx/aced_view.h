// The current view of the drawing editor. The platform sets it from a view
// record; it has no call that reads it back: applications fill a view
// record from VIEWCTR, VIEWSIZE, VIEWDIR, TARGET, VIEWMODE, LENSLENGTH,
// FRONTZ, BACKZ and the screen's aspect ratio (VSMIN, VSMAX).
#pragma once

#include "acadstrc.h"

class AcDbViewTableRecord;
class AcDbViewport;

// Shows the view of pVwRec in the current viewport: its centre (display
// coordinates), height and width (the view shows both, widened to the
// screen's aspect ratio), target, direction, twist, lens length, clipping
// and view mode. pVP null for the current model-space viewport. The view
// replaced can be gone back to with ZOOM Previous. eInvalidInput for a
// null record, a view of no size or no direction, or a viewport (the
// headless host has no paper-space viewports).
Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* pVwRec, AcDbViewport* pVP);
