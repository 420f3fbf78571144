// intersectWith between every kind of curve: lines, circles and arcs,
// ellipses, splines and polylines, with the extension rules, against
// points worked out by hand.
#include "curve_builders.h"

namespace {
constexpr double kPi = 3.14159265358979323846;

// Whether the points are exactly these (in any order), each within tol.
::testing::AssertionResult SamePoints(const AcGePoint3dArray& got, std::vector<AcGePoint3d> want, double tol = 1e-9) {
  std::string text;
  for (const AcGePoint3d& p : got)
    text += "(" + std::to_string(p.x) + ", " + std::to_string(p.y) + ", " + std::to_string(p.z) + ") ";
  if (static_cast<size_t>(got.length()) != want.size())
    return ::testing::AssertionFailure() << got.length() << " points, wanted " << want.size() << ": " << text;
  for (const AcGePoint3d& p : got) {
    auto it = std::find_if(want.begin(), want.end(), [&](const AcGePoint3d& w) { return w.distanceTo(p) <= tol; });
    if (it == want.end()) return ::testing::AssertionFailure() << "unexpected point among " << text;
    want.erase(it);
  }
  return ::testing::AssertionSuccess();
}

AcGePoint3dArray Meet(const AcDbEntity& a, const AcDbEntity& b, AcDb::Intersect how = AcDb::kOnBothOperands) {
  AcGePoint3dArray pts;
  EXPECT_EQ(a.intersectWith(&b, how, pts), Acad::eOk);
  return pts;
}

// Semi-axes 2 (along X) and 1 about the origin, full or from start to end.
AcDbEllipse Ellipse21(double start = 0.0, double end = 2 * kPi) {
  return AcDbEllipse(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(2, 0, 0), 0.5, start, end);
}
}  // namespace

TEST(CurveIntersections, LinesMeetEllipsesExactlyAndExtendAsAsked) {
  const AcDbEllipse full = Ellipse21();
  AcDbLine across(AcGePoint3d(-3, 0.5, 0), AcGePoint3d(3, 0.5, 0));
  const double x = std::sqrt(3.0);
  EXPECT_TRUE(SamePoints(Meet(full, across), {{-x, 0.5, 0}, {x, 0.5, 0}}));
  // A short line reaches the ellipse only when it is extended.
  AcDbLine stub(AcGePoint3d(0, 0.5, 0), AcGePoint3d(0.1, 0.5, 0));
  EXPECT_TRUE(SamePoints(Meet(stub, full), {}));
  EXPECT_TRUE(SamePoints(Meet(full, stub, AcDb::kExtendArg), {{-x, 0.5, 0}, {x, 0.5, 0}}));
  // The upper half meets the vertical line once; extended to the full
  // ellipse, twice. A tangent line touches once.
  const AcDbEllipse upper = Ellipse21(0.0, kPi);
  AcDbLine vertical(AcGePoint3d(0, -2, 0), AcGePoint3d(0, 2, 0));
  EXPECT_TRUE(SamePoints(Meet(vertical, upper), {{0, 1, 0}}));
  EXPECT_TRUE(SamePoints(Meet(vertical, upper, AcDb::kExtendArg), {{0, 1, 0}, {0, -1, 0}}));
  AcDbLine tangent(AcGePoint3d(-3, -1, 0), AcGePoint3d(3, -1, 0));
  EXPECT_TRUE(SamePoints(Meet(tangent, full), {{0, -1, 0}}));
  // Lines through the ellipse's plane meet it only on the curve.
  AcDbLine pierce(AcGePoint3d(2, 0, -1), AcGePoint3d(2, 0, 1));
  EXPECT_TRUE(SamePoints(Meet(pierce, full), {{2, 0, 0}}));
  AcDbLine inside(AcGePoint3d(0, 0, -1), AcGePoint3d(0, 0, 1));
  EXPECT_TRUE(SamePoints(Meet(inside, full), {}));
}

TEST(CurveIntersections, ConicsMeetEachOther) {
  // x^2/4 + y^2 = 1 with x^2 + y^2 = 2.25: x^2 = 5/3, y^2 = 7/12.
  const AcDbEllipse e = Ellipse21();
  AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.5);
  const double x = std::sqrt(5.0 / 3), y = std::sqrt(7.0 / 12);
  EXPECT_TRUE(SamePoints(Meet(e, circle), {{x, y, 0}, {-x, y, 0}, {x, -y, 0}, {-x, -y, 0}}));
  // The same ellipse turned a quarter: x^2 = y^2 = 4/5.
  AcDbEllipse turned(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(0, 2, 0), 0.5);
  const double r = std::sqrt(0.8);
  EXPECT_TRUE(SamePoints(Meet(e, turned), {{r, r, 0}, {-r, r, 0}, {r, -r, 0}, {-r, -r, 0}}));
  // The unit circle touches the ellipse at its minor vertices: two points,
  // each once. Where curves touch, points a hair apart along them are
  // equally close (about the square root of the precision).
  AcDbCircle unit(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0);
  EXPECT_TRUE(SamePoints(Meet(unit, e), {{0, 1, 0}, {0, -1, 0}}, 1e-7));
  // An arc in the first quadrant meets only the part of the ellipse it
  // covers; extended to its circle it meets all four.
  AcDbArc arc(AcGePoint3d(0, 0, 0), 1.5, 0.0, kPi / 2);
  EXPECT_TRUE(SamePoints(Meet(arc, e), {{x, y, 0}}));
  EXPECT_TRUE(SamePoints(Meet(arc, e, AcDb::kExtendThis), {{x, y, 0}, {-x, y, 0}, {x, -y, 0}, {-x, -y, 0}}));
  // An elliptical arc extends to its full ellipse.
  const AcDbEllipse quarter = Ellipse21(0.0, kPi / 2);
  EXPECT_TRUE(SamePoints(Meet(quarter, circle, AcDb::kExtendThis), {{x, y, 0}, {-x, y, 0}, {x, -y, 0}, {-x, -y, 0}}));
}

TEST(CurveIntersections, SplinesMeetEverything) {
  const AcDbSpline quarter = QuarterCircle();
  const double h = std::sqrt(0.5);
  AcDbLine diagonal(AcGePoint3d(0, 0, 0), AcGePoint3d(2, 2, 0));
  EXPECT_TRUE(SamePoints(Meet(diagonal, quarter), {{h, h, 0}}));
  // The unit circle about (1, 0) crosses it at 60 degrees.
  AcDbCircle circle(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis, 1.0);
  EXPECT_TRUE(SamePoints(Meet(quarter, circle), {{0.5, std::sqrt(0.75), 0}}));
  // An ellipse of semi-axes 2 and 0.5: x^2/4 + 4 y^2 = 1 with x^2 + y^2 = 1.
  AcDbEllipse flat(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(2, 0, 0), 0.25);
  EXPECT_TRUE(SamePoints(Meet(quarter, flat), {{std::sqrt(0.8), std::sqrt(0.2), 0}}));
  // Two splines: the quarter circle and a straight spline along y = x.
  AcDbSpline straight(Points({{0, 0, 0}, {2, 2, 0}}));
  EXPECT_TRUE(SamePoints(Meet(quarter, straight), {{h, h, 0}}));
  // A polyline of a line and a half circle (clockwise about (1, 1), radius
  // 0.5) against the quarter circle: once on the line, twice on the arc,
  // where the circles meet at 0.6875 (1, 1) +- s (-1, 1).
  AcDbPolyline pl;
  pl.addVertexAt(0, AcGePoint2d(0, 0.5));
  pl.addVertexAt(1, AcGePoint2d(1, 0.5), -1.0);
  pl.addVertexAt(2, AcGePoint2d(1, 1.5));
  const double s = std::sqrt(0.02734375);
  EXPECT_TRUE(SamePoints(Meet(pl, quarter),
                         {{std::sqrt(0.75), 0.5, 0}, {0.6875 - s, 0.6875 + s, 0}, {0.6875 + s, 0.6875 - s, 0}}));
}

TEST(CurveIntersections, SplinesAreNeverExtendedButLinesReachThem) {
  AcDbSpline segment(1, false, false, false, Points({{0, 0, 0}, {1, 0, 0}}), Doubles({0, 0, 1, 1}),
                     AcGeDoubleArray());
  AcDbLine post(AcGePoint3d(2, -1, 0), AcGePoint3d(2, 1, 0));
  EXPECT_TRUE(SamePoints(Meet(segment, post, AcDb::kExtendThis), {}));
  // The post extended downwards from (0.5, 3) reaches the spline.
  AcDbLine high(AcGePoint3d(0.5, 3, 0), AcGePoint3d(0.5, 2, 0));
  EXPECT_TRUE(SamePoints(Meet(segment, high), {}));
  EXPECT_TRUE(SamePoints(Meet(high, segment, AcDb::kExtendThis), {{0.5, 0, 0}}));
  // Curves that pass each other in space do not meet.
  AcDbLine over(AcGePoint3d(0.5, -1, 0.001), AcGePoint3d(0.5, 1, 0.001));
  EXPECT_TRUE(SamePoints(Meet(segment, over), {}));
  // A spline curving through three dimensions meets a line where it
  // actually passes.
  AcDbSpline helix(Points({{1, 0, 0}, {0, 1, 1}, {-1, 0, 2}, {0, -1, 3}}));
  AcGePoint3d on;
  helix.getPointAtParam(2.0, on);
  AcDbLine through(on - AcGeVector3d(1, 1, 0), on + AcGeVector3d(1, 1, 0));
  const AcGePoint3dArray hits = Meet(helix, through);
  ASSERT_EQ(hits.length(), 1);
  EXPECT_LE(hits[0].distanceTo(on), 1e-9);
}
