// ARC and the arc constructions the drawing commands share.
#include <cmath>

#include "draw_fixture.h"
#include "editor/commands/plane_arc.h"

using kelhost::editor::PlaneArc;

namespace {

constexpr double kPi = 3.14159265358979323846;

TEST(PlaneArcTest, ThroughThreePointsKeepsTheDrawingOrder) {
  PlaneArc arc;
  ASSERT_TRUE(kelhost::editor::ArcThroughPoints({0, 0}, {5, 5}, {10, 0}, arc));
  EXPECT_AT(arc.center, 5, 0);
  EXPECT_NEAR(arc.radius, 5, 1e-12);
  EXPECT_NEAR(arc.sweep, -kPi, 1e-12);  // over the top from left to right: clockwise
  EXPECT_AT(arc.end(), 10, 0);
  ASSERT_TRUE(kelhost::editor::ArcThroughPoints({10, 0}, {5, 5}, {0, 0}, arc));
  EXPECT_NEAR(arc.sweep, kPi, 1e-12);
  EXPECT_NEAR(arc.endTangent(), 3 * kPi / 2, 1e-12);  // heading down at the left end
  EXPECT_FALSE(kelhost::editor::ArcThroughPoints({0, 0}, {5, 0}, {10, 0}, arc));
  EXPECT_FALSE(kelhost::editor::ArcThroughPoints({0, 0}, {0, 0}, {10, 0}, arc));
}

TEST(PlaneArcTest, StartPointForms) {
  PlaneArc arc;
  ASSERT_TRUE(kelhost::editor::ArcStartCenterEnd({10, 0}, {0, 0}, {0, 3}, arc));
  EXPECT_NEAR(arc.sweep, kPi / 2, 1e-12);  // anticlockwise to the ray through the third point
  EXPECT_AT(arc.end(), 0, 10);
  ASSERT_TRUE(kelhost::editor::ArcStartCenterAngle({10, 0}, {0, 0}, -kPi / 2, arc));
  EXPECT_AT(arc.end(), 0, -10);
  // A positive chord gives the minor arc, a negative one the major arc.
  ASSERT_TRUE(kelhost::editor::ArcStartCenterChord({10, 0}, {0, 0}, 10 * std::sqrt(2.0), arc));
  EXPECT_NEAR(arc.sweep, kPi / 2, 1e-9);
  ASSERT_TRUE(kelhost::editor::ArcStartCenterChord({10, 0}, {0, 0}, -10 * std::sqrt(2.0), arc));
  EXPECT_NEAR(arc.sweep, 3 * kPi / 2, 1e-9);
  EXPECT_FALSE(kelhost::editor::ArcStartCenterChord({10, 0}, {0, 0}, 20.5, arc));
  EXPECT_FALSE(kelhost::editor::ArcStartCenterAngle({10, 0}, {0, 0}, 0.0, arc));
  // From the ends: an angle, a radius (negative: major), a tangent.
  ASSERT_TRUE(kelhost::editor::ArcStartEndAngle({0, 0}, {2, 0}, kPi / 2, arc));
  EXPECT_AT(arc.center, 1, 1);
  EXPECT_NEAR(arc.radius, std::sqrt(2.0), 1e-12);
  ASSERT_TRUE(kelhost::editor::ArcStartEndRadius({0, 0}, {2, 0}, -std::sqrt(2.0), arc));
  EXPECT_AT(arc.center, 1, -1);
  EXPECT_NEAR(arc.sweep, 3 * kPi / 2, 1e-9);
  EXPECT_FALSE(kelhost::editor::ArcStartEndRadius({0, 0}, {2, 0}, 0.9, arc));
  ASSERT_TRUE(kelhost::editor::ArcStartTangentEnd({0, 0}, 0.0, {5, 5}, arc));
  EXPECT_AT(arc.center, 0, 5);
  EXPECT_NEAR(arc.bulge(), std::tan(kPi / 8), 1e-12);
  bool straight = false;
  EXPECT_FALSE(kelhost::editor::ArcStartTangentEnd({0, 0}, 0.0, {5, 0}, arc, &straight));
  EXPECT_TRUE(straight);
}

class ArcCommandTest : public DrawCommandTest {
 protected:
  // Center, radius and anticlockwise angles of the arc drawn last.
  void ExpectLastArc(double cx, double cy, double r, double from, double to) {
    Read<AcDbArc>(Last(), [&](const AcDbArc& a) {
      EXPECT_AT(a.center(), cx, cy);
      EXPECT_NEAR(a.radius(), r, 1e-9);
      EXPECT_NEAR(a.startAngle(), from, 1e-9);
      EXPECT_NEAR(a.endAngle(), to, 1e-9);
    });
  }
};

TEST_F(ArcCommandTest, ThreePointsAndTheCenterForms) {
  ASSERT_EQ(Run({T(L"ARC"), T(L"0,0"), T(L"5,-5"), T(L"10,0")}), RTNORM);
  ExpectLastArc(5, 0, 5, kPi, 0);
  ASSERT_EQ(Run({T(L"ARC"), T(L"c"), T(L"0,0"), T(L"10,0"), T(L"a"), T(L"-90")}), RTNORM);
  ExpectLastArc(0, 0, 10, 3 * kPi / 2, 0);  // clockwise from east, stored anticlockwise
  ASSERT_EQ(Run({T(L"ARC"), T(L"10,0"), T(L"c"), T(L"0,0"), T(L"l"), T(L"-14.142135623730951")}), RTNORM);
  ExpectLastArc(0, 0, 10, 0, 3 * kPi / 2);
  EXPECT_NE(out.find(L"Specify end point of arc (hold Ctrl to switch direction) or [Angle/chord Length]: "),
            std::wstring::npos);
}

TEST_F(ArcCommandTest, EndForms) {
  ASSERT_EQ(Run({T(L"ARC"), T(L"0,0"), T(L"e"), T(L"2,0"), T(L"r"), T(L"-1.4142135623730951")}), RTNORM);
  ExpectLastArc(1, -1, std::sqrt(2.0), 3 * kPi / 4, kPi / 4);  // the major arc, under the chord
  ASSERT_EQ(Run({T(L"ARC"), T(L"0,0"), T(L"e"), T(L"2,0"), T(L"d"), T(L"90")}), RTNORM);
  ExpectLastArc(1, 0, 1, 0, kPi);  // leaving north, bending right
  ASSERT_EQ(Run({T(L"ARC"), T(L"0,0"), T(L"e"), T(L"2,0"), T(L"a"), T(L"180")}), RTNORM);
  ExpectLastArc(1, 0, 1, kPi, 0);
}

TEST_F(ArcCommandTest, ImpossibleGeometryFailsAndDrawsNothing) {
  Run({T(L"ARC"), T(L"0,0"), T(L"5,0"), T(L"10,0")});
  Run({T(L"ARC"), T(L"c"), T(L"0,0"), T(L"10,0"), T(L"l"), T(L"25")});
  Run({T(L"ARC"), T(L"0,0"), T(L"e"), T(L"10,0"), T(L"r"), T(L"4")});
  EXPECT_TRUE(Entities().empty());
  size_t invalid = 0;
  for (size_t at = out.find(L"*Invalid*"); at != std::wstring::npos; at = out.find(L"*Invalid*", at + 1)) ++invalid;
  EXPECT_EQ(invalid, 3u);
}

TEST_F(ArcCommandTest, EnterContinuesTangentFromTheLastLineOrArc) {
  Run({T(L"ARC"), Enter(), T(L"5,5")});
  EXPECT_NE(out.find(L"No line or arc to continue."), std::wstring::npos);
  EXPECT_TRUE(Entities().empty());
  MakeLine(0, 0, 10, 0);
  ASSERT_EQ(Run({T(L"ARC"), Enter(), T(L"15,5")}), RTNORM);
  ExpectLastArc(10, 5, 5, 3 * kPi / 2, 0);
  EXPECT_NEAR(RealVar(L"LASTANGLE"), 0.0, 1e-12);
  // LINE after an arc leaves along its end tangent (north here).
  ASSERT_EQ(Run({T(L"LINE"), Enter(), T(L"3"), Enter()}), RTNORM);
  Read<AcDbLine>(Last(), [](const AcDbLine& l) {
    EXPECT_AT(l.startPoint(), 15, 5);
    EXPECT_AT(l.endPoint(), 15, 8);
  });
  EXPECT_NE(out.find(L"Length of line: "), std::wstring::npos);
}

TEST_F(ArcCommandTest, CancelledArcLeavesNothing) {
  EXPECT_EQ(Run({T(L"ARC"), T(L"0,0"), T(L"5,5")}), RTCAN);
  EXPECT_TRUE(Entities().empty());
}

}  // namespace
