// Curve queries, extents, transformations, explode and intersections on
// lines, arcs, circles and lightweight polylines, against values worked
// out by hand.
#include <cmath>
#include <memory>

#include "../database/database_fixture.h"

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr double kEps = 1e-9;

#define EXPECT_PT(p, X, Y, Z)          \
  do {                                 \
    EXPECT_NEAR((p).x, (X), 1e-7);     \
    EXPECT_NEAR((p).y, (Y), 1e-7);     \
    EXPECT_NEAR((p).z, (Z), 1e-7);     \
  } while (0)

// An open polyline (0,0) -> (10,0) -> bulge 1 (half circle, ccw) -> (10,10).
std::unique_ptr<AcDbPolyline> LAndHalfCircle() {
  auto pl = std::make_unique<AcDbPolyline>();
  pl->addVertexAt(0, AcGePoint2d(0, 0));
  pl->addVertexAt(1, AcGePoint2d(10, 0), 1.0);
  pl->addVertexAt(2, AcGePoint2d(10, 10));
  return pl;
}
}  // namespace

TEST(CurveQueries, LineParametersAreDistances) {
  AcDbLine line(AcGePoint3d(1, 1, 0), AcGePoint3d(4, 5, 0));
  double p = 0;
  AcGePoint3d pt;
  AcGeVector3d d;
  ASSERT_EQ(line.getEndParam(p), Acad::eOk);
  EXPECT_NEAR(p, 5.0, kEps);
  EXPECT_EQ(line.getPointAtDist(2.5, pt), Acad::eOk);
  EXPECT_PT(pt, 2.5, 3.0, 0);
  EXPECT_EQ(line.getParamAtPoint(AcGePoint3d(2.5, 3, 0), p), Acad::eOk);
  EXPECT_NEAR(p, 2.5, kEps);
  EXPECT_EQ(line.getParamAtPoint(AcGePoint3d(2.5, 3.1, 0), p), Acad::eInvalidInput);
  EXPECT_EQ(line.getPointAtParam(6.0, pt), Acad::eInvalidInput);
  EXPECT_EQ(line.getFirstDeriv(1.0, d), Acad::eOk);
  EXPECT_PT(d, 0.6, 0.8, 0);
  // Beyond the end: the end point, unless extended.
  EXPECT_EQ(line.getClosestPointTo(AcGePoint3d(7, 9, 0), pt), Acad::eOk);
  EXPECT_PT(pt, 4, 5, 0);
  EXPECT_EQ(line.getClosestPointTo(AcGePoint3d(7, 9, 0), pt, true), Acad::eOk);
  EXPECT_PT(pt, 7, 9, 0);
  EXPECT_FALSE(line.isClosed());
}

TEST(CurveQueries, ArcAndCircleParametersAreAngles) {
  // Quarter arc from 350 to 80 degrees: crosses angle zero.
  AcDbArc arc(AcGePoint3d(0, 0, 0), 2.0, 350 * kPi / 180, 80 * kPi / 180);
  double s = 0, e = 0, dist = 0;
  arc.getStartParam(s);
  arc.getEndParam(e);
  EXPECT_NEAR(s, 350 * kPi / 180, kEps);
  EXPECT_NEAR(e, (80 + 360) * kPi / 180, kEps);
  EXPECT_EQ(arc.getDistAtParam(e, dist), Acad::eOk);
  EXPECT_NEAR(dist, 2.0 * kPi / 2, 1e-9);
  AcGePoint3d pt;
  EXPECT_EQ(arc.getPointAtParam(2 * kPi, pt), Acad::eOk);
  EXPECT_PT(pt, 2, 0, 0);
  EXPECT_EQ(arc.getDistAtPoint(AcGePoint3d(0, 2, 0), dist), Acad::eInvalidInput);  // 90 degrees is past the end
  // The closest point to a point behind the gap is an end point.
  arc.getClosestPointTo(AcGePoint3d(-5, -0.1, 0), pt);
  AcGePoint3d end;
  arc.getEndPoint(end);
  EXPECT_PT(pt, end.x, end.y, 0);

  AcDbCircle circle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 3.0);
  EXPECT_TRUE(circle.isClosed());
  circle.getEndParam(e);
  EXPECT_NEAR(e, 2 * kPi, kEps);
  circle.getParamAtDist(3.0 * kPi / 2, s);
  EXPECT_NEAR(s, kPi / 2, 1e-9);
  AcGeVector3d d;
  circle.getFirstDeriv(0.0, d);
  EXPECT_PT(d, 0, 3, 0);
}

TEST(CurveQueries, PolylineParametersAreVertexIndices) {
  auto pl = LAndHalfCircle();
  double e = 0, dist = 0, p = 0;
  pl->getEndParam(e);
  EXPECT_NEAR(e, 2.0, kEps);
  pl->getDistAtParam(2.0, dist);
  EXPECT_NEAR(dist, 10 + 5 * kPi, 1e-9);
  AcGePoint3d pt;
  // Half way round the half circle centred (10,5), counter-clockwise from (10,0): (15,5).
  pl->getPointAtParam(1.5, pt);
  EXPECT_PT(pt, 15, 5, 0);
  EXPECT_EQ(pl->getParamAtPoint(AcGePoint3d(15, 5, 0), p), Acad::eOk);
  EXPECT_NEAR(p, 1.5, 1e-9);
  pl->getPointAtDist(5.0, pt);
  EXPECT_PT(pt, 5, 0, 0);
  // A negative bulge turns the other way: (5,5) at the middle.
  pl->setBulgeAt(1, -1.0);
  pl->getPointAtParam(1.5, pt);
  EXPECT_PT(pt, 5, 5, 0);
  // Closing adds the segment back to the start.
  pl->setClosed(true);
  pl->getEndParam(e);
  EXPECT_NEAR(e, 3.0, kEps);
  pl->getPointAtParam(2.5, pt);
  EXPECT_PT(pt, 5, 5, 0);
  // An empty polyline has no geometry.
  AcDbPolyline empty;
  EXPECT_EQ(empty.getEndParam(e), Acad::eDegenerateGeometry);
}

TEST(EntityGeometry, ExtentsFollowTheCurve) {
  AcDbExtents ext;
  auto pl = LAndHalfCircle();
  ASSERT_EQ(pl->getGeomExtents(ext), Acad::eOk);
  EXPECT_PT(ext.minPoint(), 0, 0, 0);
  EXPECT_PT(ext.maxPoint(), 15, 10, 0);
  // An arc over the top of the circle reaches its top but not its sides.
  AcDbArc arc(AcGePoint3d(0, 0, 0), 1.0, kPi / 4, 3 * kPi / 4);
  arc.getGeomExtents(ext);
  EXPECT_PT(ext.minPoint(), -std::sqrt(0.5), std::sqrt(0.5), 0);
  EXPECT_PT(ext.maxPoint(), std::sqrt(0.5), 1, 0);
  AcDbText text;
  EXPECT_EQ(text.getGeomExtents(ext), Acad::eInvalidExtents);
}

TEST(EntityGeometry, TransformsMoveRotateScaleAndMirror) {
  AcGeMatrix3d rot = AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis, AcGePoint3d(1, 0, 0));
  EXPECT_PT(rot * AcGePoint3d(2, 0, 0), 1, 1, 0);
  EXPECT_TRUE((rot * rot.inverse()).isIdentity());
  AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis);
  EXPECT_LT(mirror.det(), 0);

  AcDbArc arc(AcGePoint3d(0, 0, 0), 1.0, 0.0, kPi / 2);
  ASSERT_EQ(arc.transformBy(AcGeMatrix3d::scaling(2.0) * rot), Acad::eOk);
  EXPECT_PT(arc.center(), 2, -2, 0);
  EXPECT_NEAR(arc.radius(), 2.0, kEps);
  EXPECT_NEAR(arc.startAngle(), kPi / 2, kEps);
  // Mirrored in the Y axis, the arc from 90 to 180 runs from 0 to 90 with the normal kept.
  AcDbArc second(AcGePoint3d(0, 0, 0), 1.0, kPi / 2, kPi);
  ASSERT_EQ(second.transformBy(mirror), Acad::eOk);
  EXPECT_PT(second.normal(), 0, 0, 1);
  EXPECT_NEAR(second.startAngle(), 0.0, kEps);
  EXPECT_NEAR(second.endAngle(), kPi / 2, kEps);
  AcGeMatrix3d stretch;
  stretch.entry[0][0] = 2.0;
  EXPECT_EQ(second.transformBy(stretch), Acad::eCannotScaleNonUniformly);

  // A mirrored polyline keeps its shape: the bulge changes sign.
  auto pl = LAndHalfCircle();
  ASSERT_EQ(pl->transformBy(mirror), Acad::eOk);
  AcGePoint3d pt;
  pl->getPointAtParam(1.5, pt);
  EXPECT_PT(pt, -15, 5, 0);
  double bulge = 0;
  pl->getBulgeAt(1, bulge);
  EXPECT_NEAR(bulge, -1.0, kEps);
  // Stretched, an arc segment would turn elliptical: refused, unchanged.
  EXPECT_EQ(pl->transformBy(stretch), Acad::eCannotScaleNonUniformly);
  pl->getPointAtParam(1.5, pt);
  EXPECT_PT(pt, -15, 5, 0);
  // Straight, width-less segments stretch like points.
  AcDbPolyline straight;
  straight.addVertexAt(0, AcGePoint2d(1, 1));
  straight.addVertexAt(1, AcGePoint2d(3, 2));
  ASSERT_EQ(straight.transformBy(stretch), Acad::eOk);
  straight.getPointAt(1, pt);
  EXPECT_PT(pt, 6, 2, 0);
  straight.setWidthsAt(0, 0.5, 0.5);
  EXPECT_EQ(straight.transformBy(stretch), Acad::eCannotScaleNonUniformly);
}

TEST(EntityGeometry, PolylineExplodesIntoLinesAndArcs) {
  auto pl = LAndHalfCircle();
  pl->setColorIndex(3);
  AcDbVoidPtrArray parts;
  ASSERT_EQ(pl->explode(parts), Acad::eOk);
  ASSERT_EQ(parts.length(), 2);
  auto* line = AcDbLine::cast(static_cast<AcDbEntity*>(parts[0]));
  auto* arc = AcDbArc::cast(static_cast<AcDbEntity*>(parts[1]));
  ASSERT_TRUE(line && arc);
  EXPECT_PT(line->endPoint(), 10, 0, 0);
  EXPECT_PT(arc->center(), 10, 5, 0);
  EXPECT_NEAR(arc->radius(), 5, kEps);
  EXPECT_NEAR(arc->startAngle(), 3 * kPi / 2, kEps);
  EXPECT_NEAR(arc->endAngle(), kPi / 2, kEps);
  EXPECT_EQ(arc->colorIndex(), 3);
  for (void* p : parts) delete static_cast<AcDbEntity*>(p);
}

TEST(EntityGeometry, IntersectionsWithAndWithoutExtension) {
  AcDbLine a(AcGePoint3d(0, 0, 0), AcGePoint3d(2, 0, 0));
  AcDbLine b(AcGePoint3d(3, -1, 0), AcGePoint3d(3, 1, 0));
  AcGePoint3dArray pts;
  EXPECT_EQ(a.intersectWith(&b, AcDb::kOnBothOperands, pts), Acad::eOk);
  EXPECT_EQ(pts.length(), 0);
  EXPECT_EQ(a.intersectWith(&b, AcDb::kExtendArg, pts), Acad::eOk);
  EXPECT_EQ(pts.length(), 0);  // the other line already reaches; this one must grow
  EXPECT_EQ(a.intersectWith(&b, AcDb::kExtendThis, pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 1);
  EXPECT_PT(pts[0], 3, 0, 0);

  AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 5.0);
  AcDbLine chord(AcGePoint3d(-10, 3, 0), AcGePoint3d(10, 3, 0));
  pts.removeAll();
  circle.intersectWith(&chord, AcDb::kOnBothOperands, pts);
  ASSERT_EQ(pts.length(), 2);
  EXPECT_NEAR(std::fabs(pts[0].x), 4.0, 1e-9);
  EXPECT_NEAR(pts[0].x + pts[1].x, 0.0, 1e-9);

  // Upper half arc against a circle: only the upper crossing counts
  // until the arc is extended.
  AcDbArc arc(AcGePoint3d(4, 0, 0), 5.0, 0.0, kPi);
  pts.removeAll();
  arc.intersectWith(&circle, AcDb::kOnBothOperands, pts);
  ASSERT_EQ(pts.length(), 1);
  EXPECT_PT(pts[0], 2, std::sqrt(21.0), 0);
  pts.removeAll();
  arc.intersectWith(&circle, AcDb::kExtendThis, pts);
  EXPECT_EQ(pts.length(), 2);

  // A polyline crossing a line at its straight and its curved part.
  auto pl = LAndHalfCircle();
  AcDbLine cut(AcGePoint3d(5, -1, 0), AcGePoint3d(5, 20, 0));
  AcDbLine across(AcGePoint3d(0, 5, 0), AcGePoint3d(20, 5, 0));
  pts.removeAll();
  pl->intersectWith(&cut, AcDb::kOnBothOperands, pts);
  ASSERT_EQ(pts.length(), 1);
  EXPECT_PT(pts[0], 5, 0, 0);
  pts.removeAll();
  pl->intersectWith(&across, AcDb::kOnBothOperands, pts);
  ASSERT_EQ(pts.length(), 1);
  EXPECT_PT(pts[0], 15, 5, 0);
  EXPECT_EQ(pl->intersectWith(nullptr, AcDb::kOnBothOperands, pts), Acad::eNullEntityPointer);
}
