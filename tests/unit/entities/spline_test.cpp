// Splines: NURBS evaluation against curves known exactly, fitting through
// points, refused data, edits, transformations and entity lists.
#include "curve_builders.h"

TEST(Spline, NurbsCurvesAreExact) {
  AcDbSpline quarter = QuarterCircle();
  ASSERT_FALSE(quarter.isNull());
  AcGePoint3d p;
  for (double t = 0; t <= 1.0; t += 0.125) {
    ASSERT_EQ(quarter.getPointAtParam(t, p), Acad::eOk);
    EXPECT_NEAR(p.asVector().length(), 1.0, 1e-12) << t;
  }
  // The first derivative against a central difference.
  for (double t : {0.0, 0.3, 1.0}) {
    AcGeVector3d d;
    quarter.getFirstDeriv(t, d);
    const double h = 1e-6, a = std::max(0.0, t - h), b = std::min(1.0, t + h);
    AcGePoint3d pa, pb;
    quarter.getPointAtParam(a, pa);
    quarter.getPointAtParam(b, pb);
    EXPECT_NEAR(d.x, (pb.x - pa.x) / (b - a), 1e-5) << t;
    EXPECT_NEAR(d.y, (pb.y - pa.y) / (b - a), 1e-5) << t;
  }
  EXPECT_TRUE(quarter.isPlanar());
  // Extents follow the curve, not its control points: the cubic from (0,0)
  // to (3,0) pulled by (1,2) and (2,-2) reaches y = +-1/sqrt(3) only.
  AcDbSpline wave(3, false, false, false, Points({{0, 0, 0}, {1, 2, 0}, {2, -2, 0}, {3, 0, 0}}),
                  Doubles({0, 0, 0, 0, 1, 1, 1, 1}), AcGeDoubleArray());
  AcDbExtents ext;
  ASSERT_EQ(wave.getGeomExtents(ext), Acad::eOk);
  EXPECT_NEAR_PT(ext.minPoint(), 0, -1 / std::sqrt(3.0), 0);
  EXPECT_NEAR_PT(ext.maxPoint(), 3, 1 / std::sqrt(3.0), 0);
  // Parameters are knots: a degree 1 spline over knots 0,0,1,3,3 is at its
  // second segment's middle at 2; an inner knot of a quadratic repeated
  // twice pins the curve to a control point (the third) there.
  AcDbSpline poly(1, false, false, false, Points({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}}), Doubles({0, 0, 1, 3, 3}),
                  AcGeDoubleArray());
  poly.getPointAtParam(2.0, p);
  EXPECT_NEAR_PT(p, 2, 1, 0);
  AcDbSpline kinked(2, false, false, false, Points({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}, {3, 1, 0}, {4, 0, 0}}),
                    Doubles({0, 0, 0, 1, 1, 2, 2, 2}), AcGeDoubleArray());
  kinked.getPointAtParam(1.0, p);
  EXPECT_NEAR_PT(p, 2, 0, 0);
  AcDbSpline twisted(1, false, false, false, Points({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1, 1, 1}}),
                     Doubles({0, 0, 1, 2, 3, 3}), AcGeDoubleArray());
  EXPECT_FALSE(twisted.isPlanar());
}

TEST(Spline, BadNurbsDataIsRefusedAndChangesNothing) {
  AcDbSpline s = QuarterCircle();
  const auto pts = Points({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}, {3, 1, 0}});
  const AcGeDoubleArray none, cubic = Doubles({0, 0, 0, 0, 1, 1, 1, 1});
  const struct {
    int degree;
    bool rational;
    AcGePoint3dArray points;
    AcGeDoubleArray knots, weights;
  } bad[] = {
      {3, false, Points({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}}), Doubles({0, 0, 0, 0, 1, 1, 1}), none},  // too few points
      {3, false, pts, Doubles({0, 0, 0, 0, 1, 1, 1}), none},                                       // knot count
      {2, false, pts, Doubles({0, 0, 0, 2, 1, 3, 3}), none},                                       // decreasing
      {3, true, pts, cubic, none},                                                                 // no weights
      {3, true, pts, cubic, Doubles({1, 0, 1, 1})},                                                // zero weight
      {1, false, pts, Doubles({0, 0, 1, 1, 2, 2}), none},  // a knot that would tear the curve
  };
  for (const auto& b : bad)
    EXPECT_EQ(s.setNurbsData(b.degree, b.rational, false, false, b.points, b.knots, b.weights), Acad::eInvalidInput);
  EXPECT_EQ(s.setWeightAt(0, -1.0), Acad::eInvalidInput);
  EXPECT_EQ(s.setControlPointAt(3, AcGePoint3d()), Acad::eInvalidIndex);
  EXPECT_EQ(s.numControlPoints(), 3);
  AcGePoint3d p;
  s.getPointAtParam(0.5, p);
  EXPECT_NEAR(p.asVector().length(), 1.0, 1e-12);
  AcDbSpline empty;
  double param = 0;
  EXPECT_EQ(empty.getEndParam(param), Acad::eDegenerateGeometry);
}

TEST(Spline, FitPointsMakeACubicThroughThem) {
  const auto fit = Points({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}, {3, 1, 0}});
  AcDbSpline s(fit);
  EXPECT_EQ(s.degree(), 3);
  EXPECT_EQ(s.numControlPoints(), 6);
  // Knots at the cumulative chord lengths, so each fit point sits at one.
  int degree = 0;
  Adesk::Boolean rational = true, closed = true, periodic = true;
  AcGePoint3dArray cps;
  AcGeDoubleArray knots, weights;
  double ct = 0, kt = 0;
  ASSERT_EQ(s.getNurbsData(degree, rational, closed, periodic, cps, knots, weights, ct, kt), Acad::eOk);
  EXPECT_FALSE(rational);
  const double r2 = std::sqrt(2.0);
  const double expected[] = {0, 0, 0, 0, r2, 2 * r2, 3 * r2, 3 * r2, 3 * r2, 3 * r2};
  ASSERT_EQ(knots.length(), 10);
  for (int i = 0; i < 10; ++i) EXPECT_NEAR(knots[i], expected[i], 1e-12) << i;
  for (int i = 0; i < 4; ++i) {
    AcGePoint3d p;
    s.getPointAtParam(expected[i + 3], p);
    EXPECT_NEAR_PT(p, fit[i].x, fit[i].y, 0);
  }
  // Given end tangents are the curve's directions there.
  AcDbSpline tangent(fit, AcGeVector3d(0, 2, 0), AcGeVector3d(1, 0, 0));
  AcGeVector3d d;
  tangent.getFirstDeriv(0.0, d);
  EXPECT_NEAR(d.x, 0.0, 1e-12);
  EXPECT_GT(d.y, 0.0);
  // Two fit points: the straight segment between them.
  AcDbSpline line(Points({{1, 1, 0}, {4, 5, 0}}));
  AcGePoint3d mid;
  line.getPointAtDist(2.5, mid);
  EXPECT_NEAR_PT(mid, 2.5, 3, 0);
  // Points round a loop close smoothly: one tangent where it meets itself.
  AcDbSpline loop(Points({{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}, {1, 0, 0}}));
  EXPECT_TRUE(loop.isClosed());
  AcGeVector3d ds, de;
  double e = 0;
  loop.getFirstDeriv(0.0, ds);
  loop.getEndParam(e);
  loop.getFirstDeriv(e, de);
  EXPECT_NEAR(ds.normal().dotProduct(de.normal()), 1.0, 1e-12);
  // Fit points that repeat in a row or are too few give no curve.
  EXPECT_TRUE(AcDbSpline(Points({{0, 0, 0}, {0, 0, 0}, {1, 0, 0}})).isNull());
  EXPECT_EQ(s.setFitData(Points({{0, 0, 0}}), 3, 0.0, AcGeVector3d(), AcGeVector3d()), Acad::eInvalidInput);
  EXPECT_EQ(s.numFitPoints(), 4);
}

TEST(Spline, EditsAndTransformsKeepItConsistent) {
  AcDbSpline s(Points({{0, 0, 0}, {1, -1, 1}, {2, -2, 0}, {3, -3, 2}}));  // in the plane x + y = 0
  // Moving a fit point refits the curve through it.
  ASSERT_EQ(s.setFitPointAt(1, AcGePoint3d(1, -1, 3)), Acad::eOk);
  double t = 0;
  EXPECT_EQ(s.getParamAtPoint(AcGePoint3d(1, -1, 3), t), Acad::eOk);
  // Stretched along X every point moves with the matrix and the plane
  // becomes x + 2y = 0.
  AcGePoint3d before, after;
  s.getPointAtParam(1.7, before);
  AcGeMatrix3d stretch;
  stretch.entry[0][0] = 2.0;
  ASSERT_EQ(s.transformBy(stretch), Acad::eOk);
  s.getPointAtParam(1.7, after);
  EXPECT_NEAR_PT(after, 2 * before.x, before.y, before.z);
  EXPECT_TRUE(s.isPlanar());
  EXPECT_NEAR(std::fabs(s.normal().dotProduct(AcGeVector3d(1, 2, 0).normal())), 1.0, 1e-12);
  AcGePoint3d fit;
  s.getFitPointAt(3, fit);
  EXPECT_NEAR_PT(fit, 6, -3, 2);
  // Moving a control point drops the fit data; a weight makes it rational.
  AcGePoint3d cp;
  s.getControlPointAt(2, cp);
  ASSERT_EQ(s.setControlPointAt(2, cp + AcGeVector3d(0, 1, 0)), Acad::eOk);
  EXPECT_FALSE(s.hasFitData());
  ASSERT_EQ(s.setWeightAt(3, 2.0), Acad::eOk);
  EXPECT_TRUE(s.isRational());
  EXPECT_EQ(s.weightAt(0), 1.0);
  // A mirror keeps a flat spline's normal pointing the same way.
  AcDbSpline flat = QuarterCircle();
  ASSERT_EQ(flat.transformBy(AcGeMatrix3d::mirroring(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis)), Acad::eOk);
  EXPECT_NEAR_PT(flat.normal(), 0, 0, 1);
}

TEST_F(DrawingTest, SplineListsAreMadeReadAndRefused) {
  ASSERT_NE(eval(L"(entmake '((0 . \"SPLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbSpline\") (70 . 12) (71 . 2)"
                 L" (72 . 6) (73 . 3) (74 . 0) (42 . 1.0e-10) (43 . 1.0e-10) (40 . 0.0) (40 . 0.0) (40 . 0.0)"
                 L" (40 . 1.0) (40 . 1.0) (40 . 1.0) (41 . 1.0) (41 . 0.7071067811865476) (41 . 1.0)"
                 L" (10 1.0 0.0 0.0) (10 1.0 1.0 0.0) (10 0.0 1.0 0.0)))"),
            L"nil");
  EXPECT_EQ(eval(L"(mapcar 'car (member '(100 . \"AcDbSpline\") (entget (entlast))))"),
            L"(100 210 70 71 72 73 74 42 43 40 40 40 40 40 40 41 41 41 10 10 10)");
  // Fit points alone: the control points are worked out.
  ASSERT_NE(eval(L"(entmake '((0 . \"SPLINE\") (70 . 8) (71 . 3) (74 . 3) (11 0.0 0.0 0.0) (11 5.0 5.0 0.0)"
                 L" (11 10.0 0.0 0.0) (12 0.0 1.0 0.0)))"),
            L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 73 (entget (entlast))))"), L"5");
  EXPECT_EQ(eval(L"(cdr (assoc 12 (entget (entlast))))"), L"(0.0 1.0 0.0)");
  // Bad data makes nothing: a count that disagrees, too few control
  // points, decreasing knots, a zero weight, one fit point.
  const std::wstring last = eval(L"(entlast)");
  const wchar_t* bad[] = {
      L"(71 . 1) (72 . 5) (40 . 0.0) (40 . 0.0) (40 . 1.0) (40 . 1.0) (10 0.0 0.0 0.0) (10 1.0 0.0 0.0)",
      L"(71 . 3) (40 . 0.0) (40 . 0.0) (40 . 1.0) (40 . 1.0) (10 0.0 0.0 0.0) (10 1.0 0.0 0.0)",
      L"(71 . 1) (40 . 0.0) (40 . 2.0) (40 . 1.0) (40 . 3.0) (10 0.0 0.0 0.0) (10 1.0 0.0 0.0)",
      L"(71 . 1) (40 . 0.0) (40 . 0.0) (40 . 1.0) (40 . 1.0) (41 . 1.0) (41 . 0.0) (10 0.0 0.0 0.0) (10 1.0 0.0 0.0)",
      L"(71 . 3) (11 0.0 0.0 0.0)",
  };
  for (const wchar_t* groups : bad)
    EXPECT_EQ(eval(std::wstring(L"(entmake '((0 . \"SPLINE\") ") + groups + L"))"), L"nil") << groups;
  EXPECT_EQ(eval(L"(entlast)"), last);
}
