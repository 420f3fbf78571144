// Circles tangent to two curves: the documented configurations, the side
// rules and the refusals.
#include <cmath>

#include <gtest/gtest.h>

#include "geom_checks.h"
#include "kelcad/kelcad.h"

namespace {

using geomtest::Dist;
using geomtest::LineDist;
using geomtest::MakeArc;
using geomtest::MakeLine;

TEST(TangentArcArc, FilletBetweenTwoCirclesTakesTheCandidateNearerThePick) {
  const atype a1 = MakeArc(0, 0, 1), a2 = MakeArc(4, 0, 1);
  const double side[3] = {2, 10, 0}, up[3] = {2, 5, 0}, down[3] = {2, -5, 0};
  double cen[3], t1[3], t2[3];
  ASSERT_EQ(acs_aa_cen(up, side, 2, a1, a2, cen, t1, t2), RTNORM);
  // The 0.0001 added to the discriminant shows in the centre.
  EXPECT_DOUBLE_EQ(cen[0], 2);
  EXPECT_NEAR(cen[1], std::sqrt(5.000025), 1e-12);
  EXPECT_EQ(cen[2], 0);
  EXPECT_NEAR(t1[0], 2.0 / 3, 1e-5);
  EXPECT_NEAR(t1[1], std::sqrt(5.0) / 3, 1e-5);
  EXPECT_NEAR(t2[0], 4 - 2.0 / 3, 1e-5);
  EXPECT_NEAR(t2[1], t1[1], 1e-12);
  ASSERT_EQ(acs_aa_cen(down, side, 2, a1, a2, cen, t1, t2), RTNORM);
  EXPECT_NEAR(cen[1], -std::sqrt(5.000025), 1e-12);
  EXPECT_LT(t1[1], 0);
}

TEST(TangentArcArc, FilletSideFollowsTheSidePoint) {
  const atype a1 = MakeArc(0, 0, 1), a2 = MakeArc(4, 0, 1);
  const double pick[3] = {1, 1, 0};
  double cen[3], t1[3], t2[3];
  // Side point inside the first circle: the fillet of radius 2 encloses
  // it, touching it on its far side, and touches the second from outside.
  const double inside[3] = {0.5, 0, 0};
  ASSERT_EQ(acs_aa_cen(pick, inside, 2, a1, a2, cen, t1, t2), RTNORM);
  EXPECT_NEAR(Dist(cen, a1.center), 1, 1e-4);
  EXPECT_NEAR(Dist(cen, a2.center), 3, 1e-4);
  EXPECT_NEAR(t1[0], -1, 1e-4);
  EXPECT_NEAR(Dist(t1, cen), 2, 1e-4);
  EXPECT_NEAR(Dist(t2, cen), 2, 1e-4);
  EXPECT_NEAR(Dist(t2, a2.center), 1, 1e-12);
  // Too small to reach across from outside: no fillet, nothing written.
  double untouched[3] = {7, 7, 7};
  const double outside[3] = {2, 10, 0};
  EXPECT_EQ(acs_aa_cen(pick, outside, 0.5, a1, a2, untouched, t1, t2), RTERROR);
  EXPECT_EQ(untouched[0], 7);
  // Centres with equal x and negative radii are outside the construction.
  EXPECT_EQ(acs_aa_cen(pick, outside, 2, a1, MakeArc(0, 4, 1), cen, t1, t2), RTERROR);
  EXPECT_EQ(acs_aa_cen(pick, outside, -2, a1, a2, cen, t1, t2), RTERROR);
  EXPECT_EQ(acs_aa_cen(nullptr, outside, 2, a1, a2, cen, t1, t2), RTERROR);
}

TEST(TangentArcArc, CircleThroughAPoint) {
  const atype a1 = MakeArc(-5, 0, 2), a2 = MakeArc(5, 0, 2);
  const double p0[3] = {0, 4, 0}, p1[3] = {0, 10, 0};
  double cen[3], t1[3], t2[3], radius = 0;
  // By symmetry the centre is (0, 4 - rho) with 25 + (4 - rho)^2 =
  // (rho + 2)^2: rho = 37/12.
  ASSERT_EQ(acs_aa_circle(p0, p1, a1, a2, cen, t1, t2, &radius), RTNORM);
  EXPECT_NEAR(radius, 37.0 / 12, 1e-5);
  EXPECT_NEAR(cen[0], 0, 1e-9);
  EXPECT_NEAR(cen[1], 4 - 37.0 / 12, 1e-5);
  EXPECT_NEAR(Dist(t1, a1.center), 2, 1e-12);
  EXPECT_NEAR(Dist(t2, cen), radius, 1e-5);
  EXPECT_NEAR(t1[0], -t2[0], 1e-9);

  // p0 inside the first circle, p1 outside it: refused, nothing written.
  const double inside[3] = {-4, 0.5, 0};
  radius = -1;
  EXPECT_EQ(acs_aa_circle(inside, p1, a1, a2, cen, t1, t2, &radius), RTERROR);
  EXPECT_EQ(radius, -1);
  // p0 and both centres on one line: outside the construction.
  const double between[3] = {0, 0, 0}, below[3] = {0, -3, 0};
  EXPECT_EQ(acs_aa_circle(between, below, a1, a2, cen, t1, t2, &radius), RTERROR);
}

TEST(TangentArcArc, PointOnACircleTakesTheSidePointsSide) {
  const atype a1 = MakeArc(-5, 0, 2), a2 = MakeArc(5, 0, 2);
  // Just inside the first circle, by less than 1e-8: read as on it. The
  // circle touches it there from outside: centre on the perpendicular
  // bisector of the centres, (2 + rho) / 2 = 5, so rho = 8. Touching at p0
  // is a double root, split by the 0.0001 added to the discriminant: the
  // result is off by about 0.01.
  const double k = 2 - 5e-9;
  const double p0[3] = {-5 + k * 0.5, k * std::sqrt(3.0) / 2, 0}, p1[3] = {0, 20, 0};
  double cen[3], t1[3], t2[3], radius = 0;
  ASSERT_EQ(acs_aa_circle(p0, p1, a1, a2, cen, t1, t2, &radius), RTNORM);
  EXPECT_NEAR(radius, 8, 0.05);
  EXPECT_NEAR(cen[0], 0, 0.05);
  EXPECT_NEAR(cen[1], 5 * std::sqrt(3.0), 0.05);
  EXPECT_NEAR(Dist(t1, p0), 0, 0.01);
  EXPECT_NEAR(Dist(cen, a2.center), radius + 2, 1e-3);
  // Inside by 5e-8 is inside here (circle and line allow 1e-5): p1
  // outside is on the other side.
  const double q = 2 - 5e-8;
  const double q0[3] = {-5 + q * 0.5, q * std::sqrt(3.0) / 2, 0};
  EXPECT_EQ(acs_aa_circle(q0, p1, a1, a2, cen, t1, t2, &radius), RTERROR);
}

TEST(TangentArcArc, OfTwoCirclesThroughThePointTheLargerIsTaken) {
  // Circles of radius 6 and 102 pass through p0 touching both from
  // outside.
  const atype a1 = MakeArc(9, 4, 2), a2 = MakeArc(-7, -2, 4);
  const double p0[3] = {1, -2, 0}, p1[3] = {1, -2.5, 0};
  double cen[3], t1[3], t2[3], radius = 0;
  ASSERT_EQ(acs_aa_circle(p0, p1, a1, a2, cen, t1, t2, &radius), RTNORM);
  EXPECT_NEAR(radius, 102, 1e-3);
  EXPECT_NEAR(Dist(cen, p0), radius, 1e-5);
  EXPECT_NEAR(Dist(cen, a1.center), radius + 2, 1e-5);
  EXPECT_NEAR(Dist(cen, a2.center), radius + 4, 1e-5);
}

TEST(TangentArcLine, FilletSidesFollowTheSidePoint) {
  // A unit-free picture: circle of radius 2 at the origin, line x = 1.
  const atype arc = MakeArc(0, 0, 2);
  const linfo line = MakeLine(1, -10, 1, 10);
  double cen[3], ta[3], tl[3];
  // Right of the line, outside the circle: offset line x = 1.25, offset
  // circle of radius 2.25.
  const double right[3] = {1.5, 1.5, 0}, pickUp[3] = {1.5, 3, 0}, pickDown[3] = {1.5, -3, 0};
  ASSERT_EQ(acs_al_cen(pickUp, right, 0.25, arc, line, cen, ta, tl), RTNORM);
  EXPECT_NEAR(cen[0], 1.25, 1e-12);
  EXPECT_NEAR(cen[1], std::sqrt(3.5), 1e-5);
  EXPECT_NEAR(tl[0], 1, 1e-12);
  EXPECT_NEAR(tl[1], cen[1], 1e-12);
  EXPECT_NEAR(Dist(ta, cen), 0.25, 1e-5);
  EXPECT_NEAR(Dist(ta, arc.center), 2, 1e-12);
  ASSERT_EQ(acs_al_cen(pickDown, right, 0.25, arc, line, cen, ta, tl), RTNORM);
  EXPECT_NEAR(cen[1], -std::sqrt(3.5), 1e-5);
  // Left of the line, inside the circle: it touches the circle from within.
  const double left[3] = {0.5, 1.5, 0};
  ASSERT_EQ(acs_al_cen(pickUp, left, 0.25, arc, line, cen, ta, tl), RTNORM);
  EXPECT_NEAR(cen[0], 0.75, 1e-12);
  EXPECT_NEAR(Dist(cen, arc.center), 1.75, 1e-5);
  EXPECT_NEAR(Dist(ta, arc.center), 2, 1e-12);
  EXPECT_NEAR(Dist(ta, cen), 0.25, 1e-5);
  // A horizontal line is outside the construction; a circle too far away
  // has no fillet.
  EXPECT_EQ(acs_al_cen(pickUp, right, 0.25, arc, MakeLine(-5, 3, 5, 3), cen, ta, tl), RTERROR);
  EXPECT_EQ(acs_al_cen(pickUp, right, 0.25, MakeArc(-9, 0, 2), line, cen, ta, tl), RTERROR);
}

TEST(TangentArcLine, CircleThroughAPoint) {
  const atype arc = MakeArc(10, 0, 2);
  const linfo line = MakeLine(0, -10, 0, 10);
  const double p0[3] = {5, 3, 0}, p1[3] = {5, 4, 0};
  double cen[3], ta[3], tl[3], radius = 0;
  ASSERT_EQ(acs_al_circle(p0, p1, arc, line, cen, ta, tl, &radius), RTNORM);
  EXPECT_NEAR(Dist(cen, p0), radius, 1e-5);
  EXPECT_NEAR(LineDist(line, cen), radius, 1e-5);  // on the points' side
  EXPECT_NEAR(Dist(cen, arc.center), radius + 2, 1e-5);
  EXPECT_NEAR(tl[0], 0, 1e-12);
  EXPECT_NEAR(Dist(ta, arc.center), 2, 1e-12);

  // Refusals, with nothing written: p0 and p1 on different sides of the
  // line, or of the circle; p0 straight across the line from the centre.
  radius = -1;
  const double across[3] = {-1, 4, 0}, inCircle[3] = {10, 1, 0}, level[3] = {5, 0, 0};
  EXPECT_EQ(acs_al_circle(p0, across, arc, line, cen, ta, tl, &radius), RTERROR);
  EXPECT_EQ(acs_al_circle(p0, inCircle, arc, line, cen, ta, tl, &radius), RTERROR);
  EXPECT_EQ(acs_al_circle(level, p1, arc, line, cen, ta, tl, &radius), RTERROR);
  EXPECT_EQ(radius, -1);
}

TEST(TangentArcLine, BelowTheLineTheLargerCircleIsTaken) {
  // Below the line y = -1, circles of radius 4 and 100 pass through p0
  // touching the line and the circle from outside; the larger is centred
  // at (-36, -101).
  const atype arc = MakeArc(4, -5, 4);
  const linfo line = MakeLine(1, -1, -4, -1);
  const double p0[3] = {-8, -5, 0}, p1[3] = {-8, -4.5, 0};
  double cen[3], ta[3], tl[3], radius = 0;
  ASSERT_EQ(acs_al_circle(p0, p1, arc, line, cen, ta, tl, &radius), RTNORM);
  EXPECT_NEAR(radius, 100, 1e-3);
  EXPECT_NEAR(cen[0], -36, 1e-3);
  EXPECT_NEAR(cen[1], -101, 1e-3);
  EXPECT_NEAR(tl[0], cen[0], 1e-9);
  EXPECT_NEAR(tl[1], -1, 1e-9);
  EXPECT_NEAR(Dist(ta, arc.center), 4, 1e-9);
}

TEST(TangentArcLine, PointOnTheCurvesTakesTheSidePointsSide) {
  const atype arc = MakeArc(10, 0, 2);
  const linfo line = MakeLine(0, -10, 0, 10);
  double cen[3], ta[3], tl[3], radius = 0;
  // Left of the line, but within 1e-5 of it in the line's own units
  // (a*x + b*y + c, here 20*x): read as on it, so p1's side. Touching the
  // line at p0 is a double root, split by the 0.0001 added to the
  // discriminant.
  const double onLine[3] = {-1e-7, 3, 0}, p1[3] = {5, 4, 0};
  ASSERT_EQ(acs_al_circle(onLine, p1, arc, line, cen, ta, tl, &radius), RTNORM);
  EXPECT_NEAR(radius, 105.0 / 24, 0.01);  // (10 - rho)^2 + 9 = (rho + 2)^2
  EXPECT_GT(cen[0], 0);
  EXPECT_NEAR(Dist(tl, onLine), 0, 0.01);
  const double left[3] = {-1e-6, 3, 0};
  EXPECT_EQ(acs_al_circle(left, p1, arc, line, cen, ta, tl, &radius), RTERROR);
  // Inside the circle by 5e-8 counts as on it here, where the
  // circle-circle construction would refuse it. The circle touches at p0
  // from outside: centre (5.5, 6) on the ray from the arc's centre.
  const double onArc[3] = {10 - (2 - 5e-8) * 0.6, (2 - 5e-8) * 0.8, 0};
  ASSERT_EQ(acs_al_circle(onArc, p1, arc, line, cen, ta, tl, &radius), RTNORM);
  EXPECT_NEAR(radius, 5.5, 0.01);
  EXPECT_NEAR(Dist(cen, arc.center), radius + 2, 1e-3);
  EXPECT_NEAR(Dist(ta, onArc), 0, 0.01);
}

}  // namespace
