// Whether a point lies inside a polygon, decided by area: the point is put
// into the polygon between two consecutive vertices it can see. Inside, it
// carves the triangle it spans with them out of the polygon and the area
// shrinks; outside, the triangle is added and the area grows.
#include <vector>

#include "kelcad/entry/tolerance.h"
#include "kelcad/geom/polygon.h"
#include "kelcad/geom/polygon_points.h"
#include "kelcad/resbuf/rbchain.h"

using KEL::Geom::PlanePoint;

namespace {

// Releases a chain the function built, on every path.
struct OwnedChain {
  resbuf* head = nullptr;
  OwnedChain() = default;
  OwnedChain(const OwnedChain&) = delete;
  OwnedChain& operator=(const OwnedChain&) = delete;
  ~OwnedChain() {
    if (head != nullptr) acutRelRb(head);
  }
};

// A copy of the polygon as RT3DPOINT items; false when memory ran short.
bool CopyAsPoints(const resbuf* chain, OwnedChain& copy) {
  resbuf** link = &copy.head;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    resbuf* node = acutNewRb(RT3DPOINT);
    if (node == nullptr) return false;
    const bool flat = KEL::GetDXFCodeDataType(rb->restype) == RTPOINT;
    node->resval.rpoint[0] = rb->resval.rpoint[0];
    node->resval.rpoint[1] = rb->resval.rpoint[1];
    node->resval.rpoint[2] = flat ? 0.0 : rb->resval.rpoint[2];
    *link = node;
    link = &node->rbnext;
  }
  return true;
}

// What the point sees of the polygon: sightlines to vertices and the
// triangles they span. The point tolerance is read once per test.
class Sightlines {
 public:
  Sightlines(const double pt[3], const std::vector<PlanePoint>& ring)
      : from_{pt[0], pt[1], 0.0}, ring_(ring), seen_(ring.size(), kUnknown), tol_(KEL::GetPointEQ()) {}

  // True when the segment from the point to vertex i meets the polygon's
  // edges only at its own two ends, and there only at the edges' ends. A
  // sightline that grazes another vertex may pass into the polygon there,
  // so it counts as blocked.
  bool Sees(std::size_t i) {
    if (seen_[i] == kUnknown) seen_[i] = Clear(i) ? kYes : kNo;
    return seen_[i] == kYes;
  }

  // True when no other vertex lies strictly inside the triangle of the
  // point with vertices i and i + 1. A triangle with both sides in sight can
  // still hold the whole rest of the polygon when the point lies outside;
  // then its area would mislead.
  bool TriangleEmpty(std::size_t i) const {
    const std::size_t n = ring_.size(), j = (i + 1) % n;
    const PlanePoint p{from_[0], from_[1]};
    for (std::size_t k = 0; k < n; ++k) {
      if (k == i || k == j) continue;
      const double s1 = Cross(ring_[i], ring_[j], ring_[k]);
      const double s2 = Cross(ring_[j], p, ring_[k]);
      const double s3 = Cross(p, ring_[i], ring_[k]);
      if ((s1 > 0 && s2 > 0 && s3 > 0) || (s1 < 0 && s2 < 0 && s3 < 0)) return false;
    }
    return true;
  }

 private:
  enum : char { kUnknown, kYes, kNo };

  static double Cross(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
  }

  bool Clear(std::size_t i) const {
    const std::size_t n = ring_.size();
    const double to[3] = {ring_[i].x, ring_[i].y, 0.0};
    for (std::size_t j = 0; j < n; ++j) {
      const double q1[3] = {ring_[j].x, ring_[j].y, 0.0};
      const double q2[3] = {ring_[(j + 1) % n].x, ring_[(j + 1) % n].y, 0.0};
      ads_point hit;
      if (acdbInters(from_, to, q1, q2, 1, hit) != RTNORM) continue;
      const bool atEdgeEnd = KEL::IsPointEQ(hit, q1, tol_) || KEL::IsPointEQ(hit, q2, tol_);
      const bool atSightEnd = KEL::IsPointEQ(hit, to, tol_) || KEL::IsPointEQ(hit, from_, tol_);
      if (!(atEdgeEnd && atSightEnd)) return false;
    }
    return true;
  }

  const double from_[3];
  const std::vector<PlanePoint>& ring_;
  std::vector<char> seen_;
  const double tol_;
};

int InsideByArea(const double pt[3], const resbuf* chain) {
  std::vector<PlanePoint> ring;
  if (!KEL::Geom::ReadPolygon(chain, ring)) return RTERROR;
  OwnedChain copy;
  if (!CopyAsPoints(chain, copy)) return RTERROR;
  const double before = acs_js_area(copy.head);
  if (!(before > 0.0)) return RTERROR;
  const std::size_t n = ring.size();
  Sightlines sight(pt, ring);
  std::size_t chosen = 0;
  while (chosen < n && !(sight.Sees(chosen) && sight.Sees((chosen + 1) % n) && sight.TriangleEmpty(chosen)))
    ++chosen;
  if (chosen == n) return RTERROR;
  resbuf* vertex = copy.head;
  for (std::size_t i = 0; i < chosen; ++i) vertex = vertex->rbnext;
  resbuf* inserted = acutNewRb(RT3DPOINT);
  if (inserted == nullptr) return RTERROR;
  for (int k = 0; k < 3; ++k) inserted->resval.rpoint[k] = pt[k];
  inserted->rbnext = vertex->rbnext;
  vertex->rbnext = inserted;
  const double after = acs_js_area(copy.head);
  return before + 1e-6 >= after ? RTNORM : RTERROR;
}

}  // namespace

int acs_if_pin(const double pt[3], const resbuf* chain) {
  if (pt == nullptr || chain == nullptr) return RTERROR;
  try {
    return InsideByArea(pt, chain);
  } catch (...) {  // memory short: nothing may leave the kernel
    return RTERROR;
  }
}
