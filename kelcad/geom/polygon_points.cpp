// A polygon's vertices in a resbuf chain: reading them and its area.
#include "kelcad/geom/polygon_points.h"

#include <cmath>

#include "kelcad/resbuf/rbchain.h"

namespace KEL::Geom {

bool HoldsPoint(const resbuf* rb) {
  const int kind = KEL::GetDXFCodeDataType(rb->restype);
  return kind == RTPOINT || kind == RT3DPOINT;
}

long CountPolygonPoints(const resbuf* chain) {
  long n = 0;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext, ++n)
    if (!HoldsPoint(rb)) return -1;
  return n;
}

double ShoelaceArea(const resbuf* chain) { return CountPolygonPoints(chain) < 3 ? 0.0 : RingArea(chain); }

double RingArea(const resbuf* chain) {
  long count = 0;
  for (const resbuf* rb = chain; rb != nullptr && count < 3; rb = rb->rbnext) ++count;
  if (count < 3) return 0.0;
  const resbuf* last = chain;
  while (last->rbnext != nullptr) last = last->rbnext;
  // Walks the ring once: each item with the x of its neighbours.
  double sum = 0.0;
  const resbuf* before = last;
  for (const resbuf* rb = chain; rb != nullptr; before = rb, rb = rb->rbnext) {
    const resbuf* after = rb->rbnext != nullptr ? rb->rbnext : chain;
    sum += rb->resval.rpoint[1] * (before->resval.rpoint[0] - after->resval.rpoint[0]);
  }
  return std::fabs(sum) / 2.0;
}

bool ReadPolygon(const resbuf* chain, std::vector<PlanePoint>& points) {
  points.clear();
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    if (!HoldsPoint(rb)) return false;
    points.push_back({rb->resval.rpoint[0], rb->resval.rpoint[1]});
  }
  return true;
}

}  // namespace KEL::Geom
