// Ellipses: parameters against angles, exact extents, affine transforms
// (a non-uniform scale too) and entity lists.
#include "curve_builders.h"

namespace {
constexpr double kPi = 3.14159265358979323846;

#define EXPECT_SAME_PT(p, q) EXPECT_NEAR_PT(p, (q).x, (q).y, (q).z)
}  // namespace

TEST(Ellipse, AnglesAreDirectionsAndParametersDriveThePoints) {
  // Semi-axes 4 along X and 2, the arc from 45 to 180 degrees.
  AcDbEllipse e(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, AcGeVector3d(4, 0, 0), 0.5, kPi / 4, kPi);
  EXPECT_NEAR_PT(e.minorAxis(), 0, 2, 0);
  EXPECT_NEAR(e.startAngle(), kPi / 4, 1e-12);
  // tan(angle) = ratio tan(param): 45 degrees is parameter atan(2).
  double s = 0, end = 0;
  e.getStartParam(s);
  e.getEndParam(end);
  EXPECT_NEAR(s, std::atan(2.0), 1e-12);
  EXPECT_NEAR(end, kPi, 1e-12);
  AcGePoint3d p;
  e.getStartPoint(p);
  EXPECT_NEAR(p.y - 2, p.x - 1, 1e-12);  // on the 45 degree ray
  EXPECT_EQ(e.getPointAtParam(kPi / 2, p), Acad::eOk);
  EXPECT_NEAR_PT(p, 1, 4, 0);
  EXPECT_EQ(e.getPointAtParam(0.5, p), Acad::eInvalidInput);  // before the start
  EXPECT_FALSE(e.isClosed());
  double q = 0;
  EXPECT_EQ(e.getParamAtPoint(AcGePoint3d(1, 4.01, 0), q), Acad::eInvalidInput);
  // A full ellipse: its length the perimeter, a quarter of it at pi/2.
  AcDbEllipse full(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(0, 4, 0), 0.5);
  EXPECT_TRUE(full.isClosed());
  double len = 0;
  full.getDistAtParam(2 * kPi, len);
  EXPECT_NEAR(len, 19.376896441095205, 1e-9);
  full.getParamAtDist(len / 4, q);
  EXPECT_NEAR(q, kPi / 2, 1e-9);
  // An arc across the major axis ends past 2pi; its stored end stays below.
  AcDbEllipse across(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(2, 0, 0), 0.5, 1.5 * kPi, 0.5 * kPi);
  across.getEndParam(end);
  EXPECT_NEAR(end, 2.5 * kPi, 1e-12);
  EXPECT_NEAR(across.endParam(), 0.5 * kPi, 1e-12);
  // What is not an ellipse is refused and changes nothing.
  EXPECT_EQ(e.set(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(3, 0, 0), 1.5), Acad::eInvalidInput);
  EXPECT_EQ(e.set(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(3, 0, 1), 0.5), Acad::eInvalidInput);
  EXPECT_EQ(e.setRadiusRatio(0.0), Acad::eInvalidInput);
  EXPECT_NEAR_PT(e.majorAxis(), 4, 0, 0);
  EXPECT_EQ(e.radiusRatio(), 0.5);
}

TEST(Ellipse, ExtentsAreExact) {
  // Semi-axes 5 and 2, the major one along (3, 4): the box's half sizes are
  // sqrt(a^2 cos^2 + b^2 sin^2) and sqrt(a^2 sin^2 + b^2 cos^2).
  AcDbEllipse tilted(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, AcGeVector3d(3, 4, 0), 0.4);
  AcDbExtents ext;
  ASSERT_EQ(tilted.getGeomExtents(ext), Acad::eOk);
  EXPECT_NEAR_PT(ext.minPoint(), 1 - 3.4, 1 - std::sqrt(17.44), 0);
  EXPECT_NEAR_PT(ext.maxPoint(), 1 + 3.4, 1 + std::sqrt(17.44), 0);
  AcDbEllipse upper(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(2, 0, 0), 0.5, 0.0, kPi);
  upper.getGeomExtents(ext);
  EXPECT_NEAR_PT(ext.minPoint(), -2, 0, 0);
}

TEST(Ellipse, ClosestPointExtendsTheArcToTheWholeEllipse) {
  // The upper half of an ellipse with semi-axes 2 and 1; below it, the
  // nearest point is an end unless the arc may extend.
  AcDbEllipse upper(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(2, 0, 0), 0.5, 0.0, kPi);
  AcGePoint3d pt;
  ASSERT_EQ(upper.getClosestPointTo(AcGePoint3d(0, -3, 0), pt), Acad::eOk);
  EXPECT_NEAR(std::abs(pt.x), 2.0, 1e-9);
  EXPECT_NEAR(pt.y, 0.0, 1e-9);
  ASSERT_EQ(upper.getClosestPointTo(AcGePoint3d(0, -3, 0), pt, true), Acad::eOk);
  // The distance is flat at the vertex: the point is good to a few 1e-8.
  EXPECT_NEAR(pt.x, 0.0, 1e-6);
  EXPECT_NEAR(pt.y, -1.0, 1e-9);
}

TEST(Ellipse, AnyAffineTransformKeepsItAnEllipseThroughTheSamePoints) {
  AcGeMatrix3d stretch;  // x by 3, y by 1.5, then turned 30 degrees and moved
  stretch.entry[0][0] = 3.0;
  stretch.entry[1][1] = 1.5;
  const AcGeMatrix3d m = AcGeMatrix3d::translation(AcGeVector3d(5, -2, 1)) *
                         AcGeMatrix3d::rotation(kPi / 6, AcGeVector3d::kZAxis) * stretch;
  const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis);
  for (const AcGeMatrix3d& xform : {m, mirror}) {
    AcDbEllipse e(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(1, 1, 0), 0.6, 0.3, 4.0);
    AcGePoint3d s0, e0, mid, s1, e1;
    e.getStartPoint(s0);
    e.getEndPoint(e0);
    e.getPointAtParam(2.0, mid);
    ASSERT_EQ(e.transformBy(xform), Acad::eOk);
    e.getStartPoint(s1);
    e.getEndPoint(e1);
    EXPECT_SAME_PT(s1, xform * s0);
    EXPECT_SAME_PT(e1, xform * e0);
    double q = 0;
    EXPECT_EQ(e.getParamAtPoint(xform * mid, q), Acad::eOk);
    EXPECT_LE(e.radiusRatio(), 1.0);
    EXPECT_NEAR(e.majorAxis().dotProduct(e.minorAxis()), 0.0, 1e-9);
  }
  // A circle of radius 2 scaled by 3 along X: semi-axes 6 and 2.
  AcDbEllipse circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(0, 2, 0), 1.0);
  AcGeMatrix3d xs;
  xs.entry[0][0] = 3.0;
  ASSERT_EQ(circle.transformBy(xs), Acad::eOk);
  EXPECT_NEAR(std::fabs(circle.majorAxis().x), 6.0, 1e-12);
  EXPECT_NEAR(circle.radiusRatio(), 1.0 / 3, 1e-12);
  EXPECT_TRUE(circle.isClosed());
  AcGeMatrix3d flat;
  flat.entry[1][1] = 0.0;
  EXPECT_EQ(circle.transformBy(flat), Acad::eDegenerateGeometry);
}

TEST_F(DrawingTest, EllipseListsCarryTheirGroupsInOrder) {
  EXPECT_NE(eval(L"(entmake '((0 . \"ELLIPSE\") (10 1.0 2.0 0.0) (11 0.0 3.0 0.0) (40 . 0.5) (42 . 3.14159)))"),
            L"nil");
  EXPECT_EQ(eval(L"(mapcar 'car (member '(100 . \"AcDbEllipse\") (entget (entlast))))"), L"(100 10 11 210 40 41 42)");
  EXPECT_EQ(eval(L"(cdr (assoc 11 (entget (entlast))))"), L"(0.0 3.0 0.0)");
  // A ratio above 1, an axis off the plane or none is refused: nothing made.
  const std::wstring before = eval(L"(entlast)");
  EXPECT_EQ(eval(L"(entmake '((0 . \"ELLIPSE\") (10 0.0 0.0 0.0) (11 2.0 0.0 0.0) (40 . 1.5)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"ELLIPSE\") (10 0.0 0.0 0.0) (11 2.0 0.0 1.0) (40 . 0.5)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"ELLIPSE\") (10 0.0 0.0 0.0) (40 . 0.5)))"), L"nil");
  EXPECT_EQ(eval(L"(entlast)"), before);
  EXPECT_NE(eval(L"(entmod (subst '(40 . 0.25) '(40 . 0.5) (entget (entlast))))"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 40 (entget (entlast))))"), L"0.25");
}
