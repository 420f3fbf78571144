// Points against segments, and the area of a polygon.
#include "kelcad/geom/polygon.h"
#include "kelcad/geom/polygon_points.h"

int acs_ptseg(const linfo* l, const double pt[3]) {
  if (l == nullptr || pt == nullptr) return 0;
  const double x1 = l->pt1[0], x2 = l->pt2[0];
  if (x2 - x1 == 0.0) {
    const double y1 = l->pt1[1], y2 = l->pt2[1], y = pt[1];
    return (y >= y1 && y <= y2) || (y >= y2 && y <= y1) ? 1 : 0;
  }
  const double t = (pt[0] - x1) / (x2 - x1);
  return t >= -1e-6 && t <= 1.000001 ? 1 : 0;
}

double acs_js_area(const resbuf* chain) { return KEL::Geom::ShoelaceArea(chain); }
