// The objects a window, a polygon or a fence takes, as the plan view shows
// them: by their geometry in the X and Y of the world, among the objects a
// selection may take (see picking.h).
#pragma once

#include <vector>

#include "arx/acge.h"
#include "arx/dbid.h"

namespace kelhost::editor {

enum class Region {
  kInside,    // wholly inside (Window, WPolygon)
  kCrossing,  // inside or crossing the boundary (Crossing, CPolygon)
  kFence,     // crossing the open line through the points (Fence)
};

// A rectangle from two opposite corners (UCS), aligned with the view.
std::vector<AcDbObjectId> EntitiesInBox(const AcGePoint3d& corner1, const AcGePoint3d& corner2, bool crossing);
// A polygon (closed by its last side; at least three points) or a fence
// (at least two points), points in the UCS. Too few points take nothing.
std::vector<AcDbObjectId> EntitiesInRegion(const std::vector<AcGePoint3d>& points, Region region);

}  // namespace kelhost::editor
