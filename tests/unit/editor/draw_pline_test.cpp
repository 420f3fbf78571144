// PLINE: the lightweight polyline it makes, its widths, arc segments and options.
#include <cmath>

#include "draw_fixture.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

struct Vertex {
  double x, y, bulge, startWidth, endWidth;
};

class PlineCommandTest : public DrawCommandTest {
 protected:
  std::vector<Vertex> Vertices(AcDbObjectId id, bool* closed = nullptr) {
    std::vector<Vertex> v;
    Read<AcDbPolyline>(id, [&](const AcDbPolyline& p) {
      for (unsigned i = 0; i < p.numVerts(); ++i) {
        AcGePoint2d pt;
        Vertex x{};
        p.getPointAt(i, pt);
        p.getBulgeAt(i, x.bulge);
        p.getWidthsAt(i, x.startWidth, x.endWidth);
        x.x = pt.x;
        x.y = pt.y;
        v.push_back(x);
      }
      if (closed) *closed = p.isClosed();
    });
    return v;
  }
};

TEST_F(PlineCommandTest, WidthsTaperOnceThenStayAndPlinewidRemembersThem) {
  ASSERT_EQ(Run({T(L"PLINE"), T(L"0,0"), T(L"w"), T(L"1"), T(L"2"), T(L"10,0"), T(L"10,10"), Enter()}), RTNORM);
  const std::vector<Vertex> v = Vertices(Last());
  ASSERT_EQ(v.size(), 3u);
  EXPECT_EQ(v[0].startWidth, 1.0);
  EXPECT_EQ(v[0].endWidth, 2.0);
  EXPECT_EQ(v[1].startWidth, 2.0);  // the ending width goes on
  EXPECT_EQ(v[1].endWidth, 2.0);
  EXPECT_EQ(RealVar(L"PLINEWID"), 2.0);
  out.clear();
  // The next polyline starts at that width; Halfwidth asks in halves.
  ASSERT_EQ(Run({T(L"PLINE"), T(L"0,0"), T(L"h"), Enter(), T(L"0.25"), T(L"5,0"), Enter()}), RTNORM);
  EXPECT_NE(out.find(L"Current line-width is 2.0000"), std::wstring::npos);
  EXPECT_NE(out.find(L"Specify starting half-width <1.0000>: "), std::wstring::npos);
  EXPECT_NE(out.find(L"Specify ending half-width <1.0000>: "), std::wstring::npos);
  const std::vector<Vertex> h = Vertices(Last());
  EXPECT_EQ(h[0].startWidth, 2.0);
  EXPECT_EQ(h[0].endWidth, 0.5);
  EXPECT_EQ(RealVar(L"PLINEWID"), 0.5);
}

TEST_F(PlineCommandTest, ArcSegmentsBecomeBulges) {
  // A tangent half circle, then an arc through a second point, then a
  // line again; CLose returns with an arc.
  ASSERT_EQ(Run({T(L"PLINE"), T(L"0,0"), T(L"10,0"), T(L"a"), T(L"10,10"), T(L"s"), T(L"5,15"), T(L"0,10"), T(L"l"),
                 T(L"2,5"), T(L"a"), T(L"cl")}),
            RTNORM);
  bool closed = false;
  const std::vector<Vertex> v = Vertices(Last(), &closed);
  ASSERT_EQ(v.size(), 5u);
  EXPECT_TRUE(closed);
  EXPECT_EQ(v[0].bulge, 0.0);
  EXPECT_NEAR(v[1].bulge, 1.0, 1e-12);  // a half circle to the left
  EXPECT_NEAR(v[2].bulge, 1.0, 1e-12);  // a half circle through (5,15)
  EXPECT_EQ(v[3].bulge, 0.0);
  // Back to the start tangent to the line from (0,10) to (2,5).
  EXPECT_NEAR(v[4].bulge, std::tan((std::atan2(-5.0, -2.0) - std::atan2(-5.0, 2.0)) / 2), 1e-12);
  EXPECT_NE(out.find(L"[Angle/CEnter/CLose/Direction/Halfwidth/Line/Radius/Second pt/Undo/Width]: "),
            std::wstring::npos);
}

TEST_F(PlineCommandTest, ArcOptionsWithAnglesCentersAndRadii) {
  ASSERT_EQ(Run({T(L"PLINE"), T(L"0,0"),   T(L"a"),    T(L"a"),  T(L"-90"), T(L"ce"), T(L"0,-5"),  // 90 clockwise
                 T(L"ce"),    T(L"10,-5"), T(L"l"),    T(L"5"),                                    // a sixth
                 T(L"r"),     T(L"5"),     T(L"a"),    T(L"90"), Enter(),                          // tangent chord
                 T(L"d"),     T(L"0"),     T(L"20,0"), Enter()}),
            RTNORM);
  const std::vector<Vertex> v = Vertices(Last());
  ASSERT_EQ(v.size(), 5u);
  EXPECT_NEAR(v[0].bulge, std::tan(-kPi / 8), 1e-12);
  EXPECT_NEAR(v[1].bulge, std::tan(kPi / 12), 1e-9);
  EXPECT_NEAR(v[2].bulge, std::tan(kPi / 8), 1e-9);
  EXPECT_AT(AcGePoint2d(v[1].x, v[1].y), 5, -5);
}

TEST_F(PlineCommandTest, RadiusArcsBendTowardTheirEndPoint) {
  ASSERT_EQ(Run({T(L"PLINE"), T(L"0,0"), T(L"10,0"), T(L"a"), T(L"r"), T(L"5"), T(L"15,-5"), T(L"r"), T(L"-5"),
                 T(L"20,-10"), Enter()}),
            RTNORM);
  const std::vector<Vertex> v = Vertices(Last());
  ASSERT_EQ(v.size(), 4u);
  EXPECT_NEAR(v[1].bulge, std::tan(-kPi / 8), 1e-12);     // right of east: clockwise, the minor arc
  EXPECT_NEAR(v[2].bulge, std::tan(3 * kPi / 8), 1e-12);  // left of south: anticlockwise, the major arc
}

TEST_F(PlineCommandTest, LengthCloseAndUndo) {
  ASSERT_EQ(
      Run({T(L"PLINE"), T(L"0,0"), T(L"u"), T(L"10,0"), T(L"l"), T(L"5"), T(L"15,5"), T(L"u"), T(L"0,7"), T(L"c")}),
      RTNORM);
  EXPECT_NE(out.find(L"All segments already undone."), std::wstring::npos);
  bool closed = false;
  const std::vector<Vertex> v = Vertices(Last(), &closed);
  ASSERT_EQ(v.size(), 4u);
  EXPECT_TRUE(closed);
  EXPECT_AT(AcGePoint2d(v[2].x, v[2].y), 15, 0);  // Length went on east
  EXPECT_AT(AcGePoint2d(v[3].x, v[3].y), 0, 7);
  // Close is offered once there is a segment.
  EXPECT_NE(out.find(L"Specify next point or [Arc/Halfwidth/Length/Undo/Width]: 10,0"), std::wstring::npos);
  EXPECT_NE(out.find(L"Specify next point or [Arc/Close/Halfwidth/Length/Undo/Width]: l"), std::wstring::npos);
}

TEST_F(PlineCommandTest, CancelKeepsTheSegmentsDrawnAndAPointAloneMakesNothing) {
  EXPECT_EQ(Run({T(L"PLINE"), T(L"0,0"), T(L"10,0"), T(L"10,10")}), RTCAN);
  ASSERT_EQ(Vertices(Last()).size(), 3u);
  EXPECT_EQ(Run({T(L"PLINE"), T(L"0,0"), Enter()}), RTNORM);
  EXPECT_EQ(Entities().size(), 1u);
  // Enter at the start continues from the last end, and an arc there is tangent.
  ASSERT_EQ(Run({T(L"PLINE"), Enter(), T(L"a"), T(L"20,10"), Enter()}), RTNORM);
  const std::vector<Vertex> v = Vertices(Last());
  EXPECT_AT(AcGePoint2d(v[0].x, v[0].y), 10, 10);
  EXPECT_NEAR(v[0].bulge, std::tan(-kPi / 4), 1e-12);  // heading north, a right half turn to (20,10)
}

TEST_F(PlineCommandTest, ImpossibleArcAsksAgain) {
  ASSERT_EQ(
      Run({T(L"PLINE"), T(L"0,0"), T(L"10,0"), T(L"a"), T(L"ce"), T(L"20,0"), T(L"l"), T(L"30"), T(L"l"), Enter()}),
      RTNORM);
  EXPECT_NE(out.find(L"*Invalid*"), std::wstring::npos);
  EXPECT_EQ(Vertices(Last()).size(), 2u);
}

}  // namespace
