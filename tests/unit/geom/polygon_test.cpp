// Points against segments and polygons, and polygon areas.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "kelcad/kelcad.h"
#include "polygon_support.h"

namespace {

using geomtest::Chain;
using geomtest::PolygonSettings;

TEST(PolygonSegments, ExtentOfASegment) {
  const linfo flat = geomtest::MakeLine(0, 0, 10, 0), upright = geomtest::MakeLine(0, 0, 0, 10);
  auto at = [](double x, double y) { return std::vector<double>{x, y, 0}; };
  EXPECT_EQ(acs_ptseg(&flat, at(5, 0).data()), 1);
  EXPECT_EQ(acs_ptseg(&flat, at(10.000005, 0).data()), 1);  // t = 1.0000005
  EXPECT_EQ(acs_ptseg(&flat, at(-0.0001, 0).data()), 0);
  EXPECT_EQ(acs_ptseg(&flat, at(-0.000001, 0).data()), 1);
  EXPECT_EQ(acs_ptseg(&flat, at(5, 99).data()), 1);  // the extent only
  // Vertical: by y, exactly, in either direction of the segment.
  EXPECT_EQ(acs_ptseg(&upright, at(0, 10).data()), 1);
  EXPECT_EQ(acs_ptseg(&upright, at(0, 10.0000001).data()), 0);
  EXPECT_EQ(acs_ptseg(&upright, at(0, -0.0000001).data()), 0);
  const linfo down = geomtest::MakeLine(0, 10, 0, 0);
  EXPECT_EQ(acs_ptseg(&down, at(3, 4).data()), 1);
  EXPECT_EQ(acs_ptseg(nullptr, at(3, 4).data()), 0);
}

TEST(PolygonArea, ShoelaceInEitherWinding) {
  Chain square({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  EXPECT_DOUBLE_EQ(acs_js_area(square.get()), 100);
  Chain clockwise({{0, 10}, {10, 10}, {10, 0}, {0, 0}});
  EXPECT_DOUBLE_EQ(acs_js_area(clockwise.get()), 100);
  EXPECT_EQ(acs_js_area(Chain({{0, 0}, {10, 0}}).get()), 0);
  EXPECT_EQ(acs_js_area(nullptr), 0);
  // An L shape, and 2D points and point group codes as vertices.
  Chain ell({{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 3}, {0, 3}}, RTPOINT);
  EXPECT_DOUBLE_EQ(acs_js_area(ell.get()), 6);
  Chain coded({{0, 0}, {3, 0}, {0, 4}}, 10);
  EXPECT_DOUBLE_EQ(acs_js_area(coded.get()), 6);
  // An item without a point makes the chain no polygon.
  Chain mixed({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  mixed.append(acutBuildList(RTSHORT, 3, 0));
  EXPECT_EQ(acs_js_area(mixed.get()), 0);
}

class PolygonInside : public PolygonSettings {};

TEST_F(PolygonInside, SquareInsideOutsideAndRefusals) {
  Chain square({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  const std::string before = square.text();
  const double in[3] = {5, 5, 0}, out[3] = {15, 5, 0}, below[3] = {5, -3, 0}, corner[3] = {-1, -1, 0};
  EXPECT_EQ(acs_if_pin(in, square.get()), RTNORM);
  EXPECT_EQ(acs_if_pin(out, square.get()), RTERROR);
  EXPECT_EQ(acs_if_pin(below, square.get()), RTERROR);
  EXPECT_EQ(acs_if_pin(corner, square.get()), RTERROR);
  EXPECT_EQ(square.text(), before);  // the chain is not touched
  EXPECT_EQ(acs_if_pin(in, nullptr), RTERROR);
  EXPECT_EQ(acs_if_pin(in, Chain({{0, 0}, {5, 5}, {10, 10}}).get()), RTERROR);  // no area
  EXPECT_EQ(acs_if_pin(in, Chain({{0, 0}, {10, 0}}).get()), RTERROR);
  Chain mixed({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  mixed.append(acutBuildList(RTSTR, L"x", 0));
  EXPECT_EQ(acs_if_pin(in, mixed.get()), RTERROR);
  // Either winding, 2D points, a point on an edge (inside).
  Chain clockwise({{0, 10}, {10, 10}, {10, 0}, {0, 0}}, RTPOINT);
  EXPECT_EQ(acs_if_pin(in, clockwise.get()), RTNORM);
  EXPECT_EQ(acs_if_pin(out, clockwise.get()), RTERROR);
  const double onEdge[3] = {10, 4, 0};
  EXPECT_EQ(acs_if_pin(onEdge, square.get()), RTNORM);
}

TEST_F(PolygonInside, NotchesAndPointsBeyondAnEdgeOnItsInnerSide) {
  // A U: the notch between its arms is outside.
  Chain u({{0, 0}, {9, 0}, {9, 9}, {6, 9}, {6, 3}, {3, 3}, {3, 9}, {0, 9}});
  const double arm[3] = {1.5, 7, 0}, notch[3] = {4.5, 7, 0}, base[3] = {4.5, 1.5, 0}, above[3] = {4.5, 12, 0};
  EXPECT_EQ(acs_if_pin(arm, u.get()), RTNORM);
  EXPECT_EQ(acs_if_pin(base, u.get()), RTNORM);
  EXPECT_EQ(acs_if_pin(notch, u.get()), RTERROR);
  EXPECT_EQ(acs_if_pin(above, u.get()), RTERROR);
  // Above a low triangle, the first edge and both its ends are in plain
  // sight from the point, yet the point is outside: the triangle it spans
  // with that edge holds the whole polygon.
  Chain low({{0, 0}, {10, 0}, {5, 6}});
  const double over[3] = {5, 10, 0}, within[3] = {5, 2, 0};
  EXPECT_EQ(acs_if_pin(over, low.get()), RTERROR);
  EXPECT_EQ(acs_if_pin(within, low.get()), RTNORM);
}

}  // namespace
