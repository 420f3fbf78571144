// A heavy 2D polyline whose vertices carry widths, as the lightweight
// polyline with the same vertices, bulges and widths: the one that knows
// how to draw wide segments.
#pragma once

#include <memory>

class AcDb2dPolyline;
class AcDbPolyline;

namespace kelhost::plot {

// Null when no segment has a width (the polyline draws as its curve).
std::unique_ptr<AcDbPolyline> WidePolylineOf(const AcDb2dPolyline& heavy);

}  // namespace kelhost::plot
