// Points against segments and polygons, and polygon areas.
#include "kernel_support.h"

namespace {

using kt::Chain;
using kt::Pt;

const auto* const kSettings = ::testing::AddGlobalTestEnvironment(new kt::PrivateSettings);

TEST(PolygonSegments, ExtentOfASegmentOnly) {
  const linfo flat = kt::Line(0, 0, 10, 0), upright = kt::Line(0, 10, 0, 0);
  EXPECT_EQ(acs_ptseg(&flat, Pt(10.000005, 0).data()), 1);  // t = 1.0000005
  EXPECT_EQ(acs_ptseg(&flat, Pt(-0.000001, 0).data()), 1);
  EXPECT_EQ(acs_ptseg(&flat, Pt(-0.0001, 0).data()), 0);
  EXPECT_EQ(acs_ptseg(&flat, Pt(5, 99).data()), 1);     // not the distance
  EXPECT_EQ(acs_ptseg(&upright, Pt(3, 10).data()), 1);  // vertical: y exactly
  EXPECT_EQ(acs_ptseg(&upright, Pt(0, 10.0000001).data()), 0);
  EXPECT_EQ(acs_ptseg(&upright, Pt(0, -0.0000001).data()), 0);
}

TEST(PolygonArea, ShoelaceInEitherWinding) {
  EXPECT_DOUBLE_EQ(acs_js_area(Chain({{0, 0}, {10, 0}, {10, 10}, {0, 10}}).head), 100);
  EXPECT_DOUBLE_EQ(acs_js_area(Chain({{0, 10}, {10, 10}, {10, 0}, {0, 0}}).head), 100);
  EXPECT_DOUBLE_EQ(acs_js_area(Chain({{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 3}, {0, 3}}, RTPOINT).head), 6);
  EXPECT_DOUBLE_EQ(acs_js_area(Chain({{0, 0}, {3, 0}, {0, 4}}, 10).head), 6);  // group 10 points
  EXPECT_EQ(acs_js_area(Chain({{0, 0}, {10, 0}}).head), 0);
  Chain mixed({{0, 0}, {10, 0}, {10, 10}});
  KEL::AppendRb(mixed.head, acutBuildList(RTSHORT, 3, 0));
  EXPECT_EQ(acs_js_area(mixed.head), 0);  // an item without a point
}

TEST(PolygonInside, InsideOutsideAndRefusals) {
  Chain square({{0, 0}, {10, 0}, {10, 10}, {0, 10}}), clockwise({{0, 10}, {10, 10}, {10, 0}, {0, 0}}, RTPOINT);
  const resbuf* second = square.head->rbnext;
  EXPECT_EQ(acs_if_pin(Pt(5, 5).data(), square.head), RTNORM);
  EXPECT_EQ(acs_if_pin(Pt(5, 5).data(), clockwise.head), RTNORM);
  EXPECT_EQ(acs_if_pin(Pt(10, 4).data(), square.head), RTNORM);  // on an edge
  EXPECT_EQ(acs_if_pin(Pt(10, 10).data(), clockwise.head), RTNORM);  // at a vertex
  EXPECT_EQ(acs_if_pin(Pt(15, 5).data(), square.head), RTERROR);
  // The sightline to (10,10) grazes (0,0) and runs inside: not in sight.
  EXPECT_EQ(acs_if_pin(Pt(-1, -1).data(), clockwise.head), RTERROR);
  EXPECT_EQ(square.head->rbnext, second);  // the chain is not touched
  EXPECT_EQ(second->rbnext->resval.rpoint[0], 10);
  EXPECT_EQ(acs_if_pin(Pt(5, 5).data(), nullptr), RTERROR);
  EXPECT_EQ(acs_if_pin(Pt(5, 5).data(), Chain({{0, 0}, {5, 5}, {10, 10}}).head), RTERROR);  // no area
  KEL::AppendRb(square.head, acutBuildList(RTSTR, L"x", 0));
  EXPECT_EQ(acs_if_pin(Pt(5, 5).data(), square.head), RTERROR);
}

TEST(PolygonInside, NotchesAndPointsBeyondAnEdgeOnItsInnerSide) {
  Chain u({{0, 0}, {9, 0}, {9, 9}, {6, 9}, {6, 3}, {3, 3}, {3, 9}, {0, 9}});
  EXPECT_EQ(acs_if_pin(Pt(1.5, 7).data(), u.head), RTNORM);
  EXPECT_EQ(acs_if_pin(Pt(4.5, 7).data(), u.head), RTERROR);  // in the notch
  EXPECT_EQ(acs_if_pin(Pt(4.5, 12).data(), u.head), RTERROR);
  // Above a low triangle, its base and both ends are in plain sight, yet
  // the point is outside: the triangle it spans with them holds the
  // polygon, and carving it out would mislead.
  Chain low({{0, 0}, {10, 0}, {5, 6}});
  EXPECT_EQ(acs_if_pin(Pt(5, 10).data(), low.head), RTERROR);
  EXPECT_EQ(acs_if_pin(Pt(5, 2).data(), low.head), RTNORM);
}

}  // namespace
