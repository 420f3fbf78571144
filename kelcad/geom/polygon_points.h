// A polygon's vertices in a resbuf chain: reading them and its area.
#pragma once

#include <vector>

#include "kelcad/platform.h"

namespace KEL::Geom {

struct PlanePoint {
  double x;
  double y;
};

// True when the chain item carries a point value.
bool HoldsPoint(const resbuf* rb);
// The number of items, or -1 when one of them carries no point.
long CountPolygonPoints(const resbuf* chain);
// Half the absolute value of sum y_i * (x_{i-1} - x_{i+1}), indices cyclic,
// over a chain of points; 0 for fewer than three.
double ShoelaceArea(const resbuf* chain);
// The same over the point values of the items whatever their type codes,
// for callers that vouch for them; 0 for fewer than three items.
double RingArea(const resbuf* chain);
// The x and y of every item in order; false when an item carries no point.
// May throw std::bad_alloc.
bool ReadPolygon(const resbuf* chain, std::vector<PlanePoint>& points);

}  // namespace KEL::Geom
