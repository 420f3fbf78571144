// Polylines of the drawing read into the decomposition lists, and the
// crossings of a LINE with them.
#include <memory>

#include "kelcad/geom/coord_trans.h"
#include "kelcad/geom/line_pline_int.h"
#include "kelcad/geom/pline_readers.h"
#include "kelcad/geom/pline_segments.h"
#include "kelhost/sysvars.h"
#include "kernel_support.h"

namespace {

using KEL::Geom::Point3;

// A drawing of its own for each test; the lists are emptied afterwards.
class Drawing : public ::testing::Test {
 protected:
  void SetUp() override {
    db_ = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db_.get());
  }
  void TearDown() override {
    gl_vertex_list_free();
    gl_segment_list_free();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  }

  // vertices: x, y, bulge.
  void LwPolyline(const std::vector<std::array<double, 3>>& vertices, int flags, ads_name out,
                  const ads_point normal = kUp) {
    resbuf* list =
        acutBuildList(RTDXF0, L"LWPOLYLINE", 90, static_cast<int>(vertices.size()), 70, flags, 0);
    resbuf* tail = list;
    while (tail->rbnext != nullptr) tail = tail->rbnext;
    for (const auto& v : vertices) {
      const ads_point at = {v[0], v[1], 0};
      tail->rbnext = acutBuildList(10, at, 42, v[2], 0);
      while (tail->rbnext != nullptr) tail = tail->rbnext;
    }
    tail->rbnext = acutBuildList(210, normal, 0);
    ASSERT_EQ(acdbEntMakeX(list, out), RTNORM);
    acutRelRb(list);
  }
  // vertices: x, y, bulge, vertex flag.
  void HeavyPolyline(const std::vector<std::array<double, 4>>& vertices, int flags, ads_name out) {
    const ads_point origin = {0, 0, 0};
    resbuf* head = acutBuildList(RTDXF0, L"POLYLINE", 66, 1, 10, origin, 70, flags, 0);
    ASSERT_EQ(acdbEntMake(head), RTNORM);
    acutRelRb(head);
    for (const auto& v : vertices) {
      const ads_point at = {v[0], v[1], 0};
      resbuf* vertex = acutBuildList(RTDXF0, L"VERTEX", 10, at, 42, v[2], 70, static_cast<int>(v[3]), 0);
      ASSERT_EQ(acdbEntMake(vertex), RTNORM);
      acutRelRb(vertex);
    }
    resbuf* end = acutBuildList(RTDXF0, L"SEQEND", 0);
    ASSERT_EQ(acdbEntMake(end), RTNORM);
    acutRelRb(end);
    ASSERT_EQ(acdbEntLast(out), RTNORM);
  }
  void Line(double x1, double y1, double x2, double y2, ads_name out) {
    const ads_point from = {x1, y1, 0}, to = {x2, y2, 0};
    resbuf* list = acutBuildList(RTDXF0, L"LINE", 10, from, 11, to, 0);
    ASSERT_EQ(acdbEntMakeX(list, out), RTNORM);
    acutRelRb(list);
  }

  static std::vector<std::array<double, 4>> Vertices() {
    std::vector<std::array<double, 4>> out;
    for (const PlineVertex* v = gl_vertex_list; v != nullptr; v = v->next) out.push_back({v->x, v->y, v->z, v->bulge});
    return out;
  }

  static constexpr ads_point kUp = {0, 0, 1};
  std::unique_ptr<AcDbDatabase> db_;
};

TEST_F(Drawing, LightweightPolylineVertices) {
  ads_name closed, flagged, line;
  LwPolyline({{{0, 0, 0.5}}, {{4, 0, 0}}, {{4, 3, -1}}}, 1, closed);
  LwPolyline({{{0, 0, 0}}, {{4, 0, 0}}, {{4, 3, 0}}}, 129, flagged);
  Line(0, 0, 1, 1, line);

  ASSERT_EQ(gl_lwpl_vertices(closed), 1);
  auto v = Vertices();
  ASSERT_EQ(v.size(), 4u);
  EXPECT_EQ(v[0][3], 0.5);
  EXPECT_EQ(v[1][3], 0.0);
  EXPECT_EQ(v[2][3], -1.0);
  EXPECT_XY(v[2].data(), 4, 3, 0);
  // The closing node repeats the first vertex.
  EXPECT_XY(v[3].data(), 0, 0, 0);
  EXPECT_EQ(v[3][3], kClosingBulge);
  ASSERT_EQ(gl_vertices_to_segs(), 1);
  int segments = 0;
  for (const PlineSegment* s = gl_segment_list; s != nullptr; s = s->next) ++segments;
  EXPECT_EQ(segments, 3);

  // Flag bits beside "closed" read as open; the earlier list is replaced.
  ASSERT_EQ(gl_lwpl_vertices(flagged), 1);
  v = Vertices();
  ASSERT_EQ(v.size(), 3u);
  EXPECT_EQ(v[2][3], 0.0);

  // Not a lightweight polyline: 0 and an empty list.
  const ads_name nothing = {0, 0};
  EXPECT_EQ(gl_lwpl_vertices(line), 0);
  EXPECT_EQ(gl_vertex_list, nullptr);
  EXPECT_EQ(gl_lwpl_vertices(nothing), 0);
  EXPECT_EQ(gl_pl_vertices(closed), 0);
}

TEST_F(Drawing, PolylineVerticesComeInTheCurrentUcs) {
  // Seen from below, the entity's x runs the other way.
  const ads_point down = {0, 0, -1};
  ads_name mirrored;
  LwPolyline({{{1, 2, 0}}, {{3, 2, 0}}}, 0, mirrored, down);
  ASSERT_EQ(gl_lwpl_vertices(mirrored), 1);
  auto v = Vertices();
  ASSERT_EQ(v.size(), 2u);
  EXPECT_XY(v[0].data(), -1, 2, 1e-12);
  EXPECT_XY(v[1].data(), -3, 2, 1e-12);

  // A UCS moved to (10, 20): world points shift the other way.
  resbuf origin{};
  origin.restype = RT3DPOINT;
  origin.resval.rpoint[0] = 10, origin.resval.rpoint[1] = 20;
  ASSERT_EQ(kelhost::sysvars::SetHostVar(L"UCSORG", &origin), RTNORM);
  ads_name plain;
  LwPolyline({{{1, 2, 0}}, {{3, 2, 0}}}, 0, plain);
  ASSERT_EQ(gl_lwpl_vertices(plain), 1);
  EXPECT_XY(Vertices()[0].data(), -9, -18, 1e-12);

  double p[3] = {1, 2, 0}, w[3], u[3];
  ASSERT_EQ(gl_ucs2wcs(w, p, 0), 1);
  EXPECT_XY(w, 11, 22, 1e-12);
  ASSERT_EQ(gl_wcs2ucs(u, w, 0), 1);
  EXPECT_XY(u, 1, 2, 1e-12);
  // A displacement does not move with the origin.
  ASSERT_EQ(gl_ucs2wcs(w, p, 1), 1);
  EXPECT_XY(w, 1, 2, 1e-12);
  origin.resval.rpoint[0] = origin.resval.rpoint[1] = 0;
  kelhost::sysvars::SetHostVar(L"UCSORG", &origin);
}

TEST_F(Drawing, HeavyPolylineVertices) {
  ads_name closed, open;
  // The flag-16 vertex is a spline frame control point: skipped.
  HeavyPolyline({{{0, 0, 0, 0}}, {{9, 9, 0, 16}}, {{5, 0, 1, 0}}, {{5, 5, 0, 0}}}, 1, closed);
  HeavyPolyline({{{0, 0, 0, 0}}, {{5, 0, 0, 0}}}, 0, open);  // open: no closing node
  ASSERT_EQ(gl_pl_vertices(closed), 1);
  auto v = Vertices();
  ASSERT_EQ(v.size(), 4u);
  EXPECT_XY(v[1].data(), 5, 0, 0);
  EXPECT_EQ(v[1][3], 1.0);
  EXPECT_XY(v[2].data(), 5, 5, 0);
  EXPECT_EQ(v[3][3], kClosingBulge);
  ASSERT_EQ(gl_pl_vertices(open), 1);
  EXPECT_EQ(Vertices().size(), 2u);
  EXPECT_EQ(gl_lwpl_vertices(open), 0);
}

TEST_F(Drawing, LineCrossingsFollowThePolylinesSegments) {
  // A square from (0,0) to (4,4), its top side a half circle bulging up
  // (centre (2,4), radius 2), drawn from (4,4) back to (0,4).
  ads_name square, open, heavy, across, through, inside, upright, line;
  LwPolyline({{{0, 0, 0}}, {{4, 0, 0}}, {{4, 4, 1}}, {{0, 4, 0}}}, 1, square);
  LwPolyline({{{0, 0, 0}}, {{4, 0, 0}}, {{4, 4, 1}}, {{0, 4, 0}}}, 0, open);
  HeavyPolyline({{{0, 0, 0, 0}}, {{4, 0, 0, 0}}, {{4, 4, 1, 0}}, {{0, 4, 0, 0}}}, 1, heavy);
  Line(1, -1, 1, 10, across);   // bottom, then the arc
  Line(-1, 0, 5, 0, through);   // along the bottom side, through two corners
  Line(1, 1, 3, 1, inside);     // reaches nothing
  Line(3, 3, 3, 3, upright);    // no length
  Line(0, 0, 1, 1, line);

  std::vector<Point3> found;
  ASSERT_TRUE(KEL::Geom::LinePolylineCrossings(across, square, found));
  ASSERT_EQ(found.size(), 2u);
  EXPECT_XY(found[0].data(), 1, 0, 1e-12);
  EXPECT_XY(found[1].data(), 1, 4 + std::sqrt(3.0), 1e-12);
  EXPECT_EQ(gl_vertex_list, nullptr);
  EXPECT_EQ(gl_segment_list, nullptr);

  // The closing side is only there when the polyline is closed.
  ads_name level;
  Line(-1, 2, 5, 2, level);
  ASSERT_TRUE(KEL::Geom::LinePolylineCrossings(level, square, found));
  ASSERT_EQ(found.size(), 2u);
  EXPECT_XY(found[0].data(), 4, 2, 1e-12);
  EXPECT_XY(found[1].data(), 0, 2, 1e-12);
  ASSERT_TRUE(KEL::Geom::LinePolylineCrossings(level, open, found));
  ASSERT_EQ(found.size(), 1u);
  ASSERT_TRUE(KEL::Geom::LinePolylineCrossings(level, heavy, found));
  EXPECT_EQ(found.size(), 2u);

  // Corners shared by two sides are reported once.
  ASSERT_TRUE(KEL::Geom::LinePolylineCrossings(through, square, found));
  ASSERT_EQ(found.size(), 2u);
  EXPECT_XY(found[0].data(), 4, 0, 1e-12);
  EXPECT_XY(found[1].data(), 0, 0, 1e-12);

  EXPECT_TRUE(KEL::Geom::LinePolylineCrossings(inside, square, found));
  EXPECT_TRUE(found.empty());
  EXPECT_TRUE(KEL::Geom::LinePolylineCrossings(upright, square, found));
  EXPECT_TRUE(found.empty());
  // Entities of the wrong kind.
  EXPECT_FALSE(KEL::Geom::LinePolylineCrossings(square, square, found));
  EXPECT_FALSE(KEL::Geom::LinePolylineCrossings(across, line, found));
  EXPECT_EQ(gl_vertex_list, nullptr);
}

// Random lines over a polyline of random bulged segments: every point
// reported lies on the line segment and on one of the polyline's segments
// (on the arc, not just its circle), and lines through a segment's
// interior find it.
TEST_F(Drawing, CrossingsLieOnBothCurves) {
  kt::Random rnd(20261122);
  for (int round = 0; round < 200; ++round) {
    const PlineVertex a{nullptr, rnd(-5, 5), rnd(-5, 5), 0, (round % 2 ? 1 : -1) * rnd(0.05, 2)};
    const PlineVertex b{nullptr, rnd(-5, 5), rnd(-5, 5), 0, 0};
    gl_vertex_list_free();
    auto* p = static_cast<PlineVertex*>(gl_node_alloc(sizeof(PlineVertex)));
    auto* q = static_cast<PlineVertex*>(gl_node_alloc(sizeof(PlineVertex)));
    *p = a, *q = b;
    gl_node_insert(p, &gl_vertex_list, kNodeAtEnd);
    gl_node_insert(q, &gl_vertex_list, kNodeAtEnd);
    ASSERT_EQ(gl_vertices_to_segs(), 1);
    const PlineSegment& s = *gl_segment_list;
    // A line through a point of the arc at its middle angle crosses it.
    const double start = gl_ang_ptcirc(s.chord.pt1, &s.arc);
    const double sweep = 4 * std::atan(a.bulge);
    double mid[3];
    gl_pt_oncirc(mid, &s.arc, start + sweep / 2);
    const double turn = rnd(0, M_PI), len = rnd(0.5, 20);
    const linfo l = kt::Line(mid[0] - len * std::cos(turn), mid[1] - len * std::sin(turn),
                             mid[0] + len * std::cos(turn), mid[1] + len * std::sin(turn));
    const std::vector<Point3> found = KEL::Geom::LineSegmentsCrossings(l);
    ASSERT_FALSE(found.empty()) << round;
    bool midFound = false;
    for (const Point3& x : found) {
      EXPECT_LE(std::fabs(kt::LineDist(l, x.data())), 1e-9) << round;
      EXPECT_LE(std::hypot(x[0] - mid[0], x[1] - mid[1]), len + 1e-9);
      EXPECT_LE(kt::RelErr(std::hypot(x[0] - s.arc.center[0], x[1] - s.arc.center[1]), s.arc.radius), 1e-9);
      // On the arc's side of the chord: same side as its middle.
      const linfo chord = kt::Line(a.x, a.y, b.x, b.y);
      EXPECT_GE(kt::LineDist(chord, x.data()) * kt::LineDist(chord, mid), -1e-9) << round;
      midFound = midFound || std::hypot(x[0] - mid[0], x[1] - mid[1]) < 1e-7;
    }
    EXPECT_TRUE(midFound) << round;
  }
}

}  // namespace

namespace {

TEST_F(Drawing, MarkPointLeavesARedPointAndPdmodeZero) {
  resbuf pd;
  pd.rbnext = nullptr;
  pd.restype = RTSHORT;
  pd.resval.rint = 35;
  ASSERT_EQ(acedSetVar(L"PDMODE", &pd), RTNORM);
  const double at[3] = {3, 4, 0};
  EXPECT_EQ(gl_mark_point(at), 1);
  ads_name last;
  ASSERT_EQ(acdbEntLast(last), RTNORM);
  resbuf* list = acdbEntGet(last);
  ASSERT_NE(list, nullptr);
  int found = 0;
  for (resbuf* rb = list; rb; rb = rb->rbnext) {
    if (rb->restype == 0) found += std::wstring(rb->resval.rstring) == L"POINT";
    if (rb->restype == 62) found += rb->resval.rint == 1;
    if (rb->restype == 10) found += rb->resval.rpoint[0] == 3 && rb->resval.rpoint[1] == 4;
  }
  acutRelRb(list);
  EXPECT_EQ(found, 3);
  resbuf now;
  ASSERT_EQ(acedGetVar(L"PDMODE", &now), RTNORM);
  EXPECT_EQ(now.resval.rint, 0);  // not the 35 it had
  EXPECT_EQ(acedRedraw(last, 5), RTERROR);
}

}  // namespace
