// Crossings of a line segment with a decomposed polyline: straight
// segments meet the line where the two infinite lines do, arc segments
// where the line meets their circle on the arc; either way the point must
// also lie within the line segment and the polyline segment.
#include "kelcad/geom/line_pline_int.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "kelcad/geom/coord_trans.h"
#include "kelcad/geom/entities.h"
#include "kelcad/geom/plane.h"
#include "kelcad/geom/pline_readers.h"
#include "kelcad/geom/pline_segments.h"
#include "kelcad/resbuf/rbchain.h"

namespace KEL {
namespace Geom {
namespace {

// Relative allowance of the extent tests and of telling points apart:
// intersections computed two ways differ by rounding only.
constexpr double kRelTol = 1e-9;

bool HasLength(const linfo& l) { return l.dir[0] != 0.0 || l.dir[1] != 0.0 || l.dir[2] != 0.0; }

// p, known to lie on the line through l's points, lies between them (in XY).
bool WithinExtent(const linfo& l, const double p[3]) {
  const double dx = l.pt2[0] - l.pt1[0], dy = l.pt2[1] - l.pt1[1];
  const double len2 = dx * dx + dy * dy;
  if (!(len2 > 0.0)) return false;
  const double t = ((p[0] - l.pt1[0]) * dx + (p[1] - l.pt1[1]) * dy) / len2;
  return t >= -kRelTol && t <= 1.0 + kRelTol;
}

bool SamePoint(const Point3& a, const double b[3]) {
  const double scale = std::max({1.0, std::fabs(b[0]), std::fabs(b[1])});
  return std::hypot(a[0] - b[0], a[1] - b[1]) <= kRelTol * scale;
}

void Add(std::vector<Point3>& found, const double p[3]) {
  for (const Point3& known : found)
    if (SamePoint(known, p)) return;
  found.push_back({p[0], p[1], 0.0});
}

bool IsLineEntity(const ads_name ename) {
  resbuf* list = acdbEntGet(ename);
  const resbuf* type = list != nullptr ? KEL::GetRbXDXF(list, 0) : nullptr;
  const bool isLine = type != nullptr && type->resval.rstring != nullptr && std::wcscmp(type->resval.rstring, L"LINE") == 0;
  if (list != nullptr) acutRelRb(list);
  return isLine;
}

// The line of the entity in the current UCS, coefficients filled; false
// when it has no length in XY (a point, or upright), so crosses nothing.
bool ReadLine(const ads_name ename, linfo& line) {
  linfo world{};
  double normal[3] = {0, 0, 1};
  gl_getline(ename, &world, normal);  // its result says nothing: look at the record
  if (!HasLength(world)) return false;
  double from[3], to[3];
  if (!gl_wcs2ucs(from, world.pt1, 0) || !gl_wcs2ucs(to, world.pt2, 0)) return false;
  return gl_line(&line, from, to) == 1 && gl_line_coef(&line, from, to) == 1;
}

bool ReadPolyline(const ads_name ename) {
  return gl_lwpl_vertices(ename) == 1 || gl_pl_vertices(ename) == 1;
}

}  // namespace

std::vector<Point3> LineSegmentsCrossings(const linfo& line) {
  std::vector<Point3> found;
  for (const PlineSegment* s = gl_segment_list; s != nullptr; s = s->next) {
    if (!HasLength(s->chord)) continue;
    if (s->direction == 0) {
      double p[3];
      if (gl_intll_pts(p, &line, &s->chord) && WithinExtent(s->chord, p) && WithinExtent(line, p)) Add(found, p);
      continue;
    }
    double pts[2][3];
    const int n = gl_filter_ptarc(s, pts, gl_intlc_pln(pts, &line, &s->arc));
    for (int i = 0; i < n; ++i)
      if (WithinExtent(line, pts[i])) Add(found, pts[i]);
  }
  return found;
}

bool LinePolylineCrossings(const ads_name line, const ads_name pline, std::vector<Point3>& found) {
  found.clear();
  if (line == nullptr || pline == nullptr || !IsLineEntity(line)) return false;
  const bool isPolyline = ReadPolyline(pline);
  linfo l{};
  if (isPolyline && ReadLine(line, l) && gl_vertices_to_segs() == 1) found = LineSegmentsCrossings(l);
  gl_vertex_list_free();
  gl_segment_list_free();
  return isPolyline;
}

}  // namespace Geom
}  // namespace KEL
