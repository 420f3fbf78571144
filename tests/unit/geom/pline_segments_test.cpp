// The decomposition lists: nodes, segments from vertices, points on arc
// segments, and the meeting point of two lines.
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "kelcad/geom/pline_segments.h"
#include "kelcad/kelcad.h"

namespace {

const double kPi = 3.14159265358979323846;

class PlineLists : public ::testing::Test {
 protected:
  void SetUp() override { Clear(); }
  void TearDown() override { Clear(); }
  static void Clear() {
    gl_vertex_list_free();
    gl_segment_list_free();
  }
  static void AddVertex(double x, double y, double bulge, double z = 0) {
    auto* v = static_cast<PlineVertex*>(gl_node_alloc(sizeof(PlineVertex)));
    ASSERT_NE(v, nullptr);
    *v = {nullptr, x, y, z, bulge};
    ASSERT_EQ(gl_node_insert(v, &gl_vertex_list, kNodeAtEnd), 1);
  }
  static std::vector<PlineSegment*> Segments() {
    std::vector<PlineSegment*> all;
    for (PlineSegment* s = gl_segment_list; s != nullptr; s = s->next) all.push_back(s);
    return all;
  }
  static std::vector<double> Xs() {
    std::vector<double> xs;
    for (PlineVertex* v = gl_vertex_list; v != nullptr; v = v->next) xs.push_back(v->x);
    return xs;
  }
};

TEST_F(PlineLists, NodesAreInsertedAtEitherEndAndUnlinked) {
  EXPECT_EQ(gl_node_alloc(0), nullptr);
  auto* a = static_cast<PlineVertex*>(gl_node_alloc(40));
  auto* b = static_cast<PlineVertex*>(gl_node_alloc(40));
  auto* c = static_cast<PlineVertex*>(gl_node_alloc(40));
  ASSERT_TRUE(a && b && c);
  EXPECT_EQ(a->next, nullptr);
  a->x = 1, b->x = 2, c->x = 3;
  EXPECT_EQ(gl_node_insert(a, &gl_vertex_list, 'E'), 1);
  EXPECT_EQ(gl_node_insert(b, &gl_vertex_list, 'E'), 1);
  EXPECT_EQ(gl_node_insert(c, &gl_vertex_list, 'X'), 0);  // unknown mode
  EXPECT_EQ(gl_node_insert(c, &gl_vertex_list, 'e'), 0);
  EXPECT_EQ(Xs(), (std::vector<double>{1, 2}));
  EXPECT_EQ(gl_node_insert(c, &gl_vertex_list, 'H'), 1);
  EXPECT_EQ(Xs(), (std::vector<double>{3, 1, 2}));
  // Unlinking from the middle, the head and the end; then not found.
  EXPECT_EQ(gl_node_unlink(a, &gl_vertex_list), 1);
  EXPECT_EQ(a->next, nullptr);
  EXPECT_EQ(Xs(), (std::vector<double>{3, 2}));
  EXPECT_EQ(gl_node_unlink(a, &gl_vertex_list), 0);
  EXPECT_EQ(gl_node_unlink(c, &gl_vertex_list), 1);
  EXPECT_EQ(gl_node_unlink(b, &gl_vertex_list), 1);
  EXPECT_EQ(gl_vertex_list, nullptr);
  EXPECT_EQ(gl_node_unlink(b, &gl_vertex_list), 0);  // empty list
  EXPECT_EQ(gl_node_free(a), 1);
  EXPECT_EQ(gl_node_free(b), 1);
  EXPECT_EQ(gl_node_free(c), 1);
}

TEST_F(PlineLists, ClosedTriangleGivesThreeStraightSegments) {
  AddVertex(0, 0, 0);
  AddVertex(4, 0, 0);
  AddVertex(4, 3, 0);
  AddVertex(0, 0, kClosingBulge);  // the repeated first vertex
  ASSERT_EQ(gl_vertices_to_segs(), 1);
  const auto segs = Segments();
  ASSERT_EQ(segs.size(), 3u);
  for (const PlineSegment* s : segs) EXPECT_EQ(s->direction, 0);
  EXPECT_EQ(segs[1]->chord.pt1[0], 4);
  EXPECT_EQ(segs[1]->chord.pt2[1], 3);
  EXPECT_DOUBLE_EQ(segs[2]->chord.dir[0], -0.8);
  EXPECT_DOUBLE_EQ(segs[2]->chord.dir[1], -0.6);
  EXPECT_EQ(segs[2]->arc.radius, 0);  // straight: no circle

  // A second decomposition replaces the segments rather than adding to
  // them; an empty or one-vertex list gives none.
  ASSERT_EQ(gl_vertices_to_segs(), 1);
  EXPECT_EQ(Segments().size(), 3u);
  gl_vertex_list_free();
  EXPECT_EQ(gl_vertices_to_segs(), 1);
  EXPECT_EQ(gl_segment_list, nullptr);
  AddVertex(1, 1, 0.5);
  EXPECT_EQ(gl_vertices_to_segs(), 1);
  EXPECT_EQ(gl_segment_list, nullptr);
}

TEST_F(PlineLists, BulgesGiveArcsOnTheirSide) {
  AddVertex(0, 0, 1);                   // half circle, counter-clockwise
  AddVertex(2, 0, -std::tan(kPi / 8));  // quarter circle, clockwise
  AddVertex(4, 2, 0.5);                 // to the same spot: no chord
  AddVertex(4, 2, 0);                   // straight
  AddVertex(6, 0, 0);
  ASSERT_EQ(gl_vertices_to_segs(), 1);
  const auto segs = Segments();
  ASSERT_EQ(segs.size(), 4u);
  EXPECT_EQ(segs[0]->direction, 1);
  EXPECT_NEAR(segs[0]->arc.center[0], 1, 1e-12);
  EXPECT_NEAR(segs[0]->arc.center[1], 0, 1e-12);
  EXPECT_NEAR(segs[0]->arc.radius, 1, 1e-12);
  // Clockwise from (2,0) to (4,2) through a quarter turn bulges to the
  // upper left: centre (4,0). Counter-clockwise it would be (2,2).
  EXPECT_EQ(segs[1]->direction, -1);
  EXPECT_NEAR(segs[1]->arc.center[0], 4, 1e-12);
  EXPECT_NEAR(segs[1]->arc.center[1], 0, 1e-12);
  EXPECT_NEAR(segs[1]->arc.radius, 2, 1e-12);
  // Every arc passes through both ends of its chord.
  for (int i : {0, 1}) {
    const PlineSegment& s = *segs[i];
    EXPECT_NEAR(std::hypot(s.chord.pt2[0] - s.arc.center[0], s.chord.pt2[1] - s.arc.center[1]), s.arc.radius,
                1e-12);
  }
  // A chord of no length keeps its zeroed record, yet its bulge still
  // makes it an arc (of radius 0).
  EXPECT_EQ(segs[2]->chord.dir[0], 0);
  EXPECT_EQ(segs[2]->chord.pt2[0], 0);
  EXPECT_EQ(segs[2]->direction, 1);
  EXPECT_EQ(segs[2]->arc.radius, 0);
  EXPECT_EQ(segs[3]->direction, 0);
  EXPECT_EQ(segs[3]->chord.pt2[0], 6);
}

TEST_F(PlineLists, PointsAreFilteredToTheArcOfASegment) {
  // Counter-clockwise half circle from (2,0) to (0,0) over the top:
  // angles 0 to pi around (1,0).
  AddVertex(2, 0, 1);
  AddVertex(0, 0, 0);
  ASSERT_EQ(gl_vertices_to_segs(), 1);
  PlineSegment* upper = gl_segment_list;
  double pts[4][3] = {{1, -1, 0}, {1, 1, 0}, {1.5, -0.5, 0}, {0.2, 0.6, 0}};
  ASSERT_EQ(gl_filter_ptarc(upper, pts, 4), 2);
  EXPECT_EQ(pts[0][1], 1);  // kept points moved forward in order
  EXPECT_EQ(pts[1][0], 0.2);
  // The same chord clockwise is the lower half.
  double lower[4][3] = {{1, -1, 0}, {1, 1, 0}, {1.5, -0.5, 0}, {0.2, 0.6, 0}};
  upper->direction = -1;
  ASSERT_EQ(gl_filter_ptarc(upper, lower, 4), 2);
  EXPECT_EQ(lower[0][1], -1);
  EXPECT_EQ(lower[1][0], 1.5);
  EXPECT_EQ(gl_filter_ptarc(upper, lower, 0), 0);
  EXPECT_EQ(gl_filter_ptarc(upper, lower, -3), -3);
}

TEST(PlineLines, InfiniteLinesThroughPointPairs) {
  linfo l1{}, l2{};
  const double a[3] = {0, 0, 0}, b[3] = {1, 1, 0}, c[3] = {10, 0, 0}, d[3] = {9, 1, 0};
  gl_line(&l1, a, b);
  gl_line(&l2, c, d);
  double res[3];
  ASSERT_EQ(gl_intll_pts(res, &l1, &l2), 1);  // beyond both segments
  EXPECT_NEAR(res[0], 5, 1e-9);
  EXPECT_NEAR(res[1], 5, 1e-9);
  const double e[3] = {0, 1, 0}, f[3] = {1, 2, 0};
  gl_line(&l2, e, f);
  EXPECT_EQ(gl_intll_pts(res, &l1, &l2), 0);  // parallel
}

}  // namespace
