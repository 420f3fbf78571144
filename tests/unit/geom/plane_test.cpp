// Lines, circles, angles, matrices and the polyline decomposition lists.
#include <cstring>

#include "kelcad/geom/pline_segments.h"
#include "kernel_support.h"

namespace {

using kt::Line;
using kt::Pt;
const double kPi = 3.14159265358979323846;

TEST(PlaneLines, DegenerateAndParallelInputsWriteNothing) {
  linfo l = Line(0, 0, 10, 10), kept = l;
  const linfo shifted = Line(0, 1, 10, 11), spot = Line(1, 2, 1, 2);
  double res[3] = {-1, -1, -1};
  EXPECT_EQ(gl_line(&l, Pt(1, 2).data(), Pt(1, 2).data()), 0);
  EXPECT_EQ(gl_line_coef(&l, Pt(1, 2).data(), Pt(1, 2).data()), 0);  // a, b written, c kept
  EXPECT_EQ(l.c, kept.c);
  EXPECT_EQ(0, std::memcmp(&l, &kept, 9 * sizeof(double)));  // points and direction
  EXPECT_EQ(gl_intll_coef(res, &kept, &shifted) + gl_pt_pq2l2d(res, res, &spot), 0);
  EXPECT_EQ(res[0], -1);
  EXPECT_EQ(gl_intll_pts(res, &kept, &shifted), 0);
  // The platform's meeting point of the infinite lines, beyond both.
  const linfo l1 = Line(0, 0, 1, 1), l2 = Line(10, 0, 9, 1);
  ASSERT_EQ(gl_intll_pts(res, &l1, &l2), 1);
  EXPECT_XY(res, 5, 5, 1e-9);
}

TEST(PlaneCircles, TangentLinesAndCirclesMeetOnce) {
  const circ unit{{0, 0, 0}, 1}, a{{0, 0, 0}, 5}, touching{{10, 0, 0}, 5}, concentric{{0, 0, 3}, 2};
  const linfo tangent = Line(-5, 1, 5, 1), beyond = Line(-5, 1.001, 5, 1.001);
  double res[2][3];
  res[1][0] = 9;
  ASSERT_EQ(gl_intlc_pln(res, &tangent, &unit), 1);
  EXPECT_XY(res[0], 0, 1, 1e-12);
  EXPECT_EQ(res[1][0], 0);
  EXPECT_EQ(gl_intlc_pln(res, &beyond, &unit), 0);
  ASSERT_EQ(gl_intcc_pln(res, &a, &touching), 1);
  EXPECT_XY(res[0], 5, 0, 1e-12);
  EXPECT_EQ(gl_intcc_pln(res, &a, &concentric), -1);
}

TEST(PlaneAngles, ReductionAndArcs) {
  EXPECT_DOUBLE_EQ(gl_fixang(-2 * kPi), 2 * kPi);  // kept so deliberately
  EXPECT_DOUBLE_EQ(gl_fixang(2 * kPi), 0);
  EXPECT_DOUBLE_EQ(gl_fixang(-kPi / 2), 3 * kPi / 2);
  EXPECT_NEAR(gl_fixang(1000.25), 1000.25 - 318 * kPi, 1e-9);
  const circ c{{2, 3, 9}, 2};
  auto at = [&](double radians) {
    std::vector<double> p(3, 9);
    gl_pt_oncirc(p.data(), &c, radians);
    return p;
  };
  EXPECT_XY(at(kPi / 2), 2, 5, 1e-12);
  EXPECT_NEAR(gl_ang_ptcirc(at(5.5).data(), &c), 5.5, 1e-12);
  const double s = 350 * kPi / 180, e = 10 * kPi / 180;  // crosses 0
  EXPECT_EQ(gl_ptarc(s, e, at(0).data(), &c) + gl_ptarc(s, e, at(355 * kPi / 180).data(), &c), 2);
  EXPECT_EQ(gl_ptarc(s, e, at(kPi).data(), &c), 0);
  EXPECT_EQ(gl_ptarc(1, 2, at(1 - 1e-7).data(), &c) + gl_ptarc(1, 2, at(2 + 1e-7).data(), &c), 2);
  EXPECT_EQ(gl_ptarc(1, 2, at(1 - 1e-5).data(), &c), 0);
}

TEST(PlaneMatrices, ProductsMayOverwriteAFactor) {
  double t[4][4], m[4][4], square[4][4];
  gl_mat_trans(t, 1, 2, 3);
  for (int i = 0; i < 16; ++i) m[i / 4][i % 4] = i + 1;
  gl_matXmat(square, m, t);  // row 0 of m times column 3 of t
  EXPECT_EQ(square[0][3], 1 * 1 + 2 * 2 + 3 * 3 + 4);
  gl_matXmat(square, m, m);
  gl_matXmat(m, m, m);
  EXPECT_EQ(0, std::memcmp(m, square, sizeof m));
}

class PlineLists : public ::testing::Test {
 protected:
  void TearDown() override { gl_vertex_list_free(), gl_segment_list_free(); }
  static PlineVertex* Add(double x, double y, double bulge, int mode = 'E') {
    auto* v = static_cast<PlineVertex*>(gl_node_alloc(sizeof(PlineVertex)));
    *v = {nullptr, x, y, 0, bulge};
    EXPECT_EQ(gl_node_insert(v, &gl_vertex_list, mode), 1);
    return v;
  }
  static std::vector<PlineSegment*> Segments() {
    EXPECT_EQ(gl_vertices_to_segs(), 1);
    std::vector<PlineSegment*> all;
    for (PlineSegment* s = gl_segment_list; s != nullptr; s = s->next) all.push_back(s);
    return all;
  }
};

TEST_F(PlineLists, NodesGoInAtEitherEndAndComeOut) {
  PlineVertex* first = Add(1, 0, 0);
  PlineVertex* last = Add(2, 0, 0);
  EXPECT_EQ(Add(3, 0, 0, 'H')->next, first);
  void* stray = gl_node_alloc(40);
  EXPECT_EQ(gl_node_insert(stray, &gl_vertex_list, 'e'), 0);  // no such mode
  gl_node_free(stray);
  EXPECT_EQ(gl_node_unlink(first, &gl_vertex_list), 1);
  EXPECT_EQ(gl_vertex_list->next, last);
  EXPECT_EQ(gl_node_unlink(first, &gl_vertex_list), 0);
  EXPECT_EQ(gl_node_free(first), 1);
}

TEST_F(PlineLists, SegmentsOfStraightAndBulgedVertices) {
  Add(0, 0, 0), Add(4, 0, 0), Add(4, 3, 0), Add(0, 0, kClosingBulge);  // a closed triangle
  ASSERT_EQ(Segments().size(), 3u);
  ASSERT_EQ(Segments().size(), 3u);  // replaced, not added
  EXPECT_XY(Segments()[2]->chord.dir, -0.8, -0.6, 1e-15);
  gl_vertex_list_free();
  Add(2, 0, 1);                      // half circle from angle 0 to pi
  Add(0, 0, -std::tan(kPi / 8));     // quarter circle, clockwise
  Add(-2, -2, 0.5), Add(-2, -2, 0);  // no chord, yet an arc of radius 0
  const auto segs = Segments();
  ASSERT_EQ(segs.size(), 3u);
  EXPECT_XY(segs[0]->arc.center, 1, 0, 1e-12);
  EXPECT_XY(segs[1]->arc.center, -2, 0, 1e-12);  // bulging to the lower right
  EXPECT_EQ(segs[1]->direction, -1);
  EXPECT_EQ(segs[2]->direction, 1);
  // Points on the upper half, moved forward in order; clockwise, the lower.
  double pts[4][3] = {{1, -1, 0}, {1, 1, 0}, {1.5, -0.5, 0}, {0.2, 0.6, 0}}, lower[4][3];
  std::memcpy(lower, pts, sizeof pts);
  ASSERT_EQ(gl_filter_ptarc(segs[0], pts, 4), 2);
  EXPECT_XY(pts[1], 0.2, 0.6, 0);
  segs[0]->direction = -1;
  ASSERT_EQ(gl_filter_ptarc(segs[0], lower, 4), 2);
  EXPECT_XY(lower[1], 1.5, -0.5, 0);
}

}  // namespace
