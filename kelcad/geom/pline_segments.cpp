// Segments of a decomposed polyline, and points on an arc segment.
#include "kelcad/geom/pline_segments.h"

#include <cmath>
#include <utility>

#include "kelcad/geom/plane.h"

namespace {

// The centre of the arc from p to q with that (non-zero) bulge: off the
// chord's midpoint along its left normal by k half chords, where
// k = cot(half the included angle) = (1/b - b) / 2.
void ArcCentre(const PlineVertex& p, const PlineVertex& q, double bulge, double centre[3]) {
  const double k = (1.0 / bulge - bulge) / 2.0;
  centre[0] = (p.x + q.x - (q.y - p.y) * k) / 2.0;
  centre[1] = (p.y + q.y + (q.x - p.x) * k) / 2.0;
  centre[2] = 0.0;
}

}  // namespace

int gl_vertices_to_segs() {
  gl_segment_list_free();
  // Appending after the last node keeps each append from walking the list.
  void* last = &gl_segment_list;
  for (const PlineVertex* p = gl_vertex_list; p != nullptr && p->next != nullptr; p = p->next) {
    const PlineVertex& q = *p->next;
    auto* segment = static_cast<PlineSegment*>(gl_node_alloc(sizeof(PlineSegment)));
    if (segment == nullptr) return 0;
    const double from[3] = {p->x, p->y, p->z}, to[3] = {q.x, q.y, q.z};
    gl_line(&segment->chord, from, to);  // leaves a zero-length chord zeroed
    if (p->bulge != 0.0) {
      ArcCentre(*p, q, p->bulge, segment->arc.center);
      const double dx = p->x - segment->arc.center[0], dy = p->y - segment->arc.center[1];
      segment->arc.radius = std::sqrt(dx * dx + dy * dy + p->z * p->z);
      segment->direction = p->bulge > 0.0 ? 1 : -1;
    }
    gl_node_insert(segment, last, kNodeAtEnd);
    last = segment;
  }
  return 1;
}

int gl_filter_ptarc(const PlineSegment* segment, double pts[][3], int n) {
  if (n < 1) return n;
  if (segment == nullptr || pts == nullptr) return 0;
  double start = gl_fixang(gl_ang_ptcirc(segment->chord.pt1, &segment->arc));
  double end = gl_fixang(gl_ang_ptcirc(segment->chord.pt2, &segment->arc));
  // A clockwise arc is the counter-clockwise one from its end to its start.
  if (segment->direction == -1) std::swap(start, end);
  int kept = 0;
  for (int i = 0; i < n; ++i) {
    if (!gl_ptarc(start, end, pts[i], &segment->arc)) continue;
    if (kept != i)
      for (int k = 0; k < 3; ++k) pts[kept][k] = pts[i][k];
    ++kept;
  }
  return kept;
}
