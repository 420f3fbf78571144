// The view of the working drawing as the editor changes it (ZOOM, PAN,
// acedSetCurrentView) and reads it (MSLIDE, VSMIN, VSMAX). The view lives
// in the drawing's active viewport record (db/active_view.h); the views it
// replaced are kept with the drawing for ZOOM Previous.
#pragma once

#include <cstddef>

#include "db/active_view.h"

namespace kelhost::editor {

// A view's place on the display plane (DCS): its centre and its height;
// its width is the height times the screen's aspect ratio.
struct ViewBox {
  double center[2] = {0.0, 0.0};
  double height = 0.0;
  double width() const;
};

// How many earlier views ZOOM Previous can go back through.
constexpr std::size_t kPreviousViewsKept = 10;

ViewBox CurrentViewBox();
// The smallest view showing the display-plane box lo-hi whole, centred on
// it. A box of no size keeps the current height.
ViewBox ViewAround(const double lo[2], const double hi[2]);
// Shows box (the view's direction, target and the rest unchanged); the
// view it replaces is kept for ZOOM Previous. False when the view cannot
// change (the drawing has no active viewport record, or it is open).
bool ShowViewBox(const ViewBox& box);
// Shows a whole view; a width that does not suit the screen's aspect
// ratio widens the view to show both the width and the height.
bool ShowView(db::ActiveView view);
// Back to the view before the last change; false when none is kept.
bool ShowPreviousView();

// A point, or a displacement, of the current UCS on the display plane.
void UcsToDisplay(const double ucs[3], bool disp, double dcs[2]);
void WorldToDisplay(const double wcs[3], double dcs[2]);
// The view's lower-left and upper-right corners in the current UCS.
void ViewCornersInUcs(double lowerLeft[3], double upperRight[3]);

}  // namespace kelhost::editor
