// CIRCLE: its forms, CIRCLERAD, and circles that cannot exist.
#include <cmath>

#include "draw_fixture.h"
#include "editor/commands/tangent_circles.h"

namespace {

using kelhost::editor::PlaneCurve;

TEST(TangentCirclesTest, LinesAndCircles) {
  // Two crossing lines: a circle in each of the four corners.
  auto corners =
      kelhost::editor::CirclesTangentTo(PlaneCurve::Line({0, 0}, {1, 0}), PlaneCurve::Line({0, 0}, {0, 1}), 2);
  ASSERT_EQ(corners.size(), 4u);
  const auto* best = kelhost::editor::NearestToPicks(corners, {5, 0}, {0, -5});
  ASSERT_NE(best, nullptr);
  EXPECT_AT(best->center, 2, -2);
  EXPECT_AT(best->touch1, 2, 0);
  EXPECT_AT(best->touch2, 0, -2);
  // A line and a circle of radius 3 at distance 5: outside (radius 1 fits
  // between) and around.
  auto round = kelhost::editor::CirclesTangentTo(PlaneCurve::Line({0, 0}, {1, 0}), PlaneCurve::Circle({0, 5}, 3), 1);
  bool between = false;
  for (const auto& c : round) between = between || ((c.center - AcGePoint2d(0, 1)).length() < 1e-9);
  EXPECT_TRUE(between);
  // Parallel lines 10 apart take no circle of radius 2.
  EXPECT_TRUE(kelhost::editor::CirclesTangentTo(PlaneCurve::Line({0, 0}, {1, 0}), PlaneCurve::Line({0, 10}, {1, 10}), 2)
                  .empty());
  EXPECT_EQ(kelhost::editor::Intersections(PlaneCurve::Line({0, 3}, {1, 3}), PlaneCurve::Circle({0, 0}, 3)).size(), 1u);
}

class CircleCommandTest : public DrawCommandTest {
 protected:
  void ExpectLastCircle(double cx, double cy, double r) {
    Read<AcDbCircle>(Last(), [&](const AcDbCircle& c) {
      EXPECT_AT(c.center(), cx, cy);
      EXPECT_NEAR(c.radius(), r, 1e-9);
    });
  }
};

TEST_F(CircleCommandTest, RadiusAndDiameterWithCircleradAsTheDefault) {
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"5,5"), T(L"3")}), RTNORM);
  ExpectLastCircle(5, 5, 3);
  EXPECT_NE(out.find(L"Specify radius of circle or [Diameter]: 3"), std::wstring::npos);  // no default yet
  EXPECT_EQ(RealVar(L"CIRCLERAD"), 3.0);
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"0,0"), Enter()}), RTNORM);
  ExpectLastCircle(0, 0, 3);
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"0,0"), T(L"d"), Enter()}), RTNORM);
  EXPECT_NE(out.find(L"Specify diameter of circle <6.0000>: "), std::wstring::npos);
  ExpectLastCircle(0, 0, 3);
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"0,0"), T(L"d"), T(L"10")}), RTNORM);
  ExpectLastCircle(0, 0, 5);
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"0,0"), T(L"3,4")}), RTNORM);  // a point gives the radius
  ExpectLastCircle(0, 0, 5);
  Run({T(L"CIRCLE"), T(L"0,0"), T(L"-2")});
  EXPECT_NE(out.find(L"Value must be positive and nonzero."), std::wstring::npos);
}

TEST_F(CircleCommandTest, ThreeAndTwoPoints) {
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"3p"), T(L"0,0"), T(L"10,0"), T(L"5,5")}), RTNORM);
  ExpectLastCircle(5, 0, 5);
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"2p"), T(L"0,0"), T(L"0,8")}), RTNORM);
  ExpectLastCircle(0, 4, 4);
  const size_t before = Entities().size();
  Run({T(L"CIRCLE"), T(L"3p"), T(L"0,0"), T(L"5,0"), T(L"10,0")});
  EXPECT_EQ(Entities().size(), before);
  EXPECT_NE(out.find(L"Circle does not exist."), std::wstring::npos);
}

TEST_F(CircleCommandTest, TangentTangentRadiusPicksTheCornerPointedAt) {
  const AcDbObjectId a = MakeLine(0, 0, 10, 0), b = MakeLine(0, 0, 0, 10);
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"t"), Pick(a, 5, 0), Pick(b, 0, 5), T(L"2")}), RTNORM);
  ExpectLastCircle(2, 2, 2);
  // Tangent to a circle and a line.
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"20,0"), T(L"5")}), RTNORM);
  const AcDbObjectId round = Last();
  ASSERT_EQ(Run({T(L"CIRCLE"), T(L"ttr"), Pick(round, 20, 5), Pick(a, 5, 0), T(L"1")}), RTNORM);
  Read<AcDbCircle>(Last(), [](const AcDbCircle& c) {
    EXPECT_NEAR(c.radius(), 1, 1e-12);
    EXPECT_NEAR(c.center().y, 1, 1e-9);                                   // on the line
    EXPECT_NEAR((c.center() - AcGePoint3d(20, 0, 0)).length(), 6, 1e-9);  // outside the circle
  });
  const size_t before = Entities().size();
  const AcDbObjectId far = MakeLine(0, 20, 10, 20);
  Run({T(L"CIRCLE"), T(L"t"), Pick(a, 5, 0), Pick(far, 5, 20), T(L"2")});
  EXPECT_EQ(Entities().size(), before + 1);  // only the line
  EXPECT_NE(out.find(L"Circle does not exist."), std::wstring::npos);
}

}  // namespace
