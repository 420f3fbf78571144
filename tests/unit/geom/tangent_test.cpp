// Circles tangent to two curves: documented figures, side rules, the
// choice between roots, and refusals. Tangency over random figures is in
// properties_test.cpp.
#include "kernel_support.h"

namespace {

using kt::Arc;
using kt::Line;
using kt::Pt;

TEST(TangentArcArc, FilletNearerThePickOnTheSidePointsSide) {
  const atype a1 = Arc(0, 0, 1), a2 = Arc(4, 0, 1);
  const auto outside = Pt(2, 10), up = Pt(2, 5);
  double cen[3] = {7, 7, 7}, t1[3], t2[3];
  EXPECT_EQ(acs_aa_cen(up.data(), outside.data(), 0.5, a1, a2, cen, t1, t2), RTERROR);  // can't reach
  EXPECT_EQ(cen[0], 7);
  ASSERT_EQ(acs_aa_cen(up.data(), outside.data(), 2, a1, a2, cen, t1, t2), RTNORM);
  EXPECT_XY(cen, 2, std::sqrt(5.000025), 1e-12);  // the 0.0001 shows
  EXPECT_XY(t1, 2.0 / 3, std::sqrt(5.0) / 3, 1e-5);
  ASSERT_EQ(acs_aa_cen(Pt(2, -5).data(), outside.data(), 2, a1, a2, cen, t1, t2), RTNORM);
  EXPECT_XY(cen, 2, -std::sqrt(5.000025), 1e-12);
  // Side point inside the first circle: the fillet encloses it; its point
  // on the first circle is still the nearer intersection with the line of
  // centres (the near side), the second circle is touched from outside.
  ASSERT_EQ(acs_aa_cen(up.data(), Pt(0.5, 0).data(), 2, a1, a2, cen, t1, t2), RTNORM);
  EXPECT_XY(cen, 1, 0.005, 1e-6);
  EXPECT_XY(t1, 1, 0.005, 1e-4);
  EXPECT_XY(t2, 3, 0.005 / 3, 1e-4);
  EXPECT_EQ(acs_aa_cen(up.data(), outside.data(), 2, a1, Arc(0, 4, 1), cen, t1, t2), RTERROR);  // equal x
  EXPECT_EQ(acs_aa_cen(up.data(), outside.data(), -2, a1, a2, cen, t1, t2), RTERROR);
}

TEST(TangentArcArc, CircleThroughAPointTakesTheLargerRadius) {
  const atype a1 = Arc(-5, 0, 2), a2 = Arc(5, 0, 2);
  double cen[3], t1[3], t2[3], radius = -1;
  // p0 inside the first circle with p1 outside; p0 in line with the centres.
  EXPECT_EQ(acs_aa_circle(Pt(-4, 0.5).data(), Pt(0, 10).data(), a1, a2, cen, t1, t2, &radius), RTERROR);
  EXPECT_EQ(acs_aa_circle(Pt(0, 0).data(), Pt(0, -3).data(), a1, a2, cen, t1, t2, &radius), RTERROR);
  EXPECT_EQ(radius, -1);
  // Centre (0, 4 - rho) with 25 + (4 - rho)^2 = (rho + 2)^2; the other
  // root is negative.
  const double rho = 37.0 / 12;
  ASSERT_EQ(acs_aa_circle(Pt(0, 4).data(), Pt(0, 10).data(), a1, a2, cen, t1, t2, &radius), RTNORM);
  EXPECT_NEAR(radius, rho, 1e-5);
  EXPECT_XY(cen, 0, 4 - rho, 1e-5);
  EXPECT_XY(t1, -5 + 10 / (rho + 2), 2 * (4 - rho) / (rho + 2), 1e-5);
  // Circles of radius 6 and 102 pass through (1,-2) touching both here.
  ASSERT_EQ(acs_aa_circle(Pt(1, -2).data(), Pt(1, -2.5).data(), Arc(9, 4, 2), Arc(-7, -2, 4), cen, t1, t2, &radius),
            RTNORM);
  EXPECT_NEAR(radius, 102, 1e-3);
}

TEST(TangentArcLine, FilletAndCircleThroughAPointOnTheSidePointsSide) {
  // Circle of radius 2 at the origin, line x = 1: a fillet of 0.25 inside
  // the circle, left of the line, lies on x = 0.75, 1.75 from the centre.
  const linfo line = Line(1, -10, 1, 10);
  double cen[3], ta[3], tl[3], radius = -1;
  ASSERT_EQ(acs_al_cen(Pt(1.5, 3).data(), Pt(0.5, 1.5).data(), 0.25, Arc(0, 0, 2), line, cen, ta, tl), RTNORM);
  EXPECT_XY(cen, 0.75, std::sqrt(2.5), 1e-5);
  EXPECT_XY(ta, cen[0] * 2 / 1.75, cen[1] * 2 / 1.75, 1e-5);
  EXPECT_XY(tl, 1, cen[1], 1e-12);
  EXPECT_EQ(acs_al_cen(Pt(1.5, 3).data(), Pt(0.5, 1.5).data(), 0.25, Arc(0, 0, 2), Line(-5, 3, 5, 3), cen, ta, tl),
            RTERROR);  // horizontal
  // Below y = -1, circles of radius 4 and 100 pass through p0 touching
  // the line and the circle from outside; the larger is centred (-36,-101).
  const atype arc = Arc(4, -5, 4);
  const linfo below = Line(1, -1, -4, -1);
  const auto p0 = Pt(-8, -5);
  EXPECT_EQ(acs_al_circle(p0.data(), Pt(-8, 0).data(), arc, below, cen, ta, tl, &radius), RTERROR);   // across
  EXPECT_EQ(acs_al_circle(p0.data(), Pt(4, -6).data(), arc, below, cen, ta, tl, &radius), RTERROR);   // in circle
  EXPECT_EQ(acs_al_circle(Pt(4, -20).data(), p0.data(), arc, below, cen, ta, tl, &radius), RTERROR);  // || normal
  EXPECT_EQ(radius, -1);
  ASSERT_EQ(acs_al_circle(p0.data(), Pt(-8, -4.5).data(), arc, below, cen, ta, tl, &radius), RTNORM);
  EXPECT_NEAR(radius, 100, 1e-3);
  EXPECT_XY(cen, -36, -101, 1e-3);
  EXPECT_XY(tl, cen[0], -1, 1e-9);
  EXPECT_XY(ta, 4 - 40 / 26.0, -5 - 96 / 26.0, 1e-4);
}

TEST(TangentThroughAPoint, PointOnACurveTakesTheSidePointsSide) {
  // p0 just inside a circle counts as on it within 1e-8 for two circles,
  // within 1e-5 for a circle and a line. The circle then touches there: a
  // double root, split by the 0.0001 added to the discriminant.
  const atype a1 = Arc(-5, 0, 2), a2 = Arc(5, 0, 2);
  const linfo line = Line(-20, -10, -20, 10);
  const auto p1 = Pt(0, 20);
  auto inside = [](double by) { return Pt(-5 + (2 - by) * 0.5, (2 - by) * std::sqrt(3.0) / 2); };
  double cen[3], t1[3], t2[3], radius = 0;
  ASSERT_EQ(acs_aa_circle(inside(5e-9).data(), p1.data(), a1, a2, cen, t1, t2, &radius), RTNORM);
  EXPECT_NEAR(radius, 8, 0.05);
  EXPECT_XY(cen, 0, 5 * std::sqrt(3.0), 0.05);
  EXPECT_EQ(acs_aa_circle(inside(5e-8).data(), p1.data(), a1, a2, cen, t1, t2, &radius), RTERROR);
  ASSERT_EQ(acs_al_circle(inside(5e-8).data(), p1.data(), a1, line, cen, t1, t2, &radius), RTNORM);
  EXPECT_XY(t1, inside(0)[0], inside(0)[1], 0.01);
  // Left of x = -20 by 1e-8, within 1e-5 in the line's units (20 * dx).
  ASSERT_EQ(acs_al_circle(Pt(-20 - 1e-8, 3).data(), p1.data(), a1, line, cen, t1, t2, &radius), RTNORM);
  EXPECT_XY(t2, -20, 3, 0.01);
  EXPECT_EQ(acs_al_circle(Pt(-20 - 1e-6, 3).data(), p1.data(), a1, line, cen, t1, t2, &radius), RTERROR);
}

}  // namespace
