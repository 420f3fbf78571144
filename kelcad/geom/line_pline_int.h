// Where a LINE entity crosses a polyline entity, through the polyline's
// decomposition into straight and arc segments.
#pragma once

#include <array>
#include <vector>

#include "kelcad/geom/pline_lists.h"
#include "kelcad/platform.h"

namespace KEL {
namespace Geom {

using Point3 = std::array<double, 3>;

// The points where the segment of line (pt1 to pt2, coefficients filled)
// crosses the segments of gl_segment_list, in the order of the segments;
// a point met twice (a shared vertex) is reported once. z is 0.
std::vector<Point3> LineSegmentsCrossings(const linfo& line);

// The crossings of the LINE entity with the lightweight or heavy polyline
// entity, in the current UCS (none for a line without length in XY).
// false, with nothing found, when line is not a LINE or pline not a
// polyline. Both decomposition lists are left empty.
bool LinePolylineCrossings(const ads_name line, const ads_name pline, std::vector<Point3>& found);

}  // namespace Geom
}  // namespace KEL
