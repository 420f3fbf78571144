// What the host's entities draw through AcGiWorldDraw, as a jig's samples
// (and anything that renders) see it: the primitives in world
// coordinates with the properties each was drawn with.
#include <cmath>

#include "arx/dbelipse.h"
#include "arx/dbspline.h"
#include "gi/recorder.h"
#include "jig_test_support.h"

namespace {

using kelhost::gi::Picture;
using kelhost::gi::Primitive;
constexpr double kPi = 3.14159265358979323846;

#define EXPECT_POINT(p, X, Y, Z)            \
  do {                                      \
    const AcGePoint3d q_ = (p);             \
    EXPECT_NEAR(q_.x, (X), 1e-9) << "x";    \
    EXPECT_NEAR(q_.y, (Y), 1e-9) << "y";    \
    EXPECT_NEAR(q_.z, (Z), 1e-9) << "z";    \
  } while (0)

class EntityGraphics : public JigTest {
 protected:
  AcDbObjectId record(AcDbObjectId table, const wchar_t* name) {
    AcDbSymbolTable* t = nullptr;
    AcDbObjectId id;
    if (acdbOpenObject(t, table, AcDb::kForRead) != Acad::eOk) return id;
    t->getAt(name, id);
    t->close();
    return id;
  }
};

TEST_F(EntityGraphics, CurvesDrawAsCirclesArcsAndCloseApproximations) {
  AcDbCircle circle(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, 3.0);
  circle.setColorIndex(4);
  Picture p = kelhost::gi::Draw(circle);
  ASSERT_EQ(p.size(), 1u);
  EXPECT_EQ(p[0].kind, Primitive::kCircle);
  EXPECT_POINT(p[0].center, 1, 2, 0);
  EXPECT_DOUBLE_EQ(p[0].radius, 3.0);
  EXPECT_EQ(p[0].properties.color, 4);

  AcDbArc arc(AcGePoint3d(0, 0, 0), 2.0, kPi / 2, kPi);
  p = kelhost::gi::Draw(arc);
  ASSERT_EQ(p.size(), 1u);
  EXPECT_EQ(p[0].kind, Primitive::kArc);
  EXPECT_POINT(AcGePoint3d::kOrigin + p[0].startVector, 0, 1, 0);
  EXPECT_NEAR(p[0].sweep, kPi / 2, 1e-12);
  EXPECT_TRUE(p[0].normal.isEqualTo(AcGeVector3d::kZAxis));

  AcDbEllipse ellipse(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(2, 0, 0), 0.5);
  p = kelhost::gi::Draw(ellipse);
  ASSERT_EQ(p.size(), 1u);
  EXPECT_EQ(p[0].kind, Primitive::kPolyline);
  ASSERT_GE(p[0].points.size(), 60u);
  for (const AcGePoint3d& q : p[0].points) EXPECT_NEAR(q.x * q.x / 4 + q.y * q.y, 1.0, 1e-9);
  EXPECT_TRUE(p[0].points.front().isEqualTo(p[0].points.back()));

  AcGePoint3dArray fit;
  fit.append(AcGePoint3d(0, 0, 0));
  fit.append(AcGePoint3d(1, 1, 0));
  fit.append(AcGePoint3d(2, 0, 0));
  AcDbSpline spline(fit);
  p = kelhost::gi::Draw(spline);
  ASSERT_EQ(p.size(), 1u);
  ASSERT_GE(p[0].points.size(), 10u);
  EXPECT_POINT(p[0].points.front(), 0, 0, 0);
  EXPECT_POINT(p[0].points.back(), 2, 0, 0);
}

TEST_F(EntityGraphics, APolylineDrawsItsArcsAndCoversTheBandOfAWideSegment) {
  AcDbPolyline pline;
  pline.addVertexAt(0, AcGePoint2d(0, 0), 0.0, 2.0, 2.0);
  pline.addVertexAt(1, AcGePoint2d(10, 0), 1.0);
  pline.addVertexAt(2, AcGePoint2d(10, 10));
  Picture p = kelhost::gi::Draw(pline);
  ASSERT_EQ(p.size(), 2u);
  EXPECT_EQ(p[0].kind, Primitive::kPolygon);
  EXPECT_EQ(p[0].properties.fill, kAcGiFillAlways);
  ASSERT_EQ(p[0].points.size(), 4u);
  EXPECT_POINT(p[0].points[0], 0, 1, 0);
  EXPECT_POINT(p[0].points[1], 10, 1, 0);
  EXPECT_POINT(p[0].points[2], 10, -1, 0);
  EXPECT_POINT(p[0].points[3], 0, -1, 0);
  EXPECT_EQ(p[1].kind, Primitive::kArc);  // the bulge 1 segment: a half circle to (10,10)
  EXPECT_EQ(p[1].properties.fill, kAcGiFillNever);
  EXPECT_POINT(p[1].center, 10, 5, 0);
  EXPECT_DOUBLE_EQ(p[1].radius, 5.0);
  EXPECT_NEAR(p[1].sweep, kPi, 1e-12);
  EXPECT_POINT(p[1].center + p[1].startVector * p[1].radius, 10, 0, 0);

  pline.setWidthsAt(0, 0.0, 0.0);
  pline.setClosed(true);
  p = kelhost::gi::Draw(pline);
  ASSERT_EQ(p.size(), 3u);  // line, arc, and the closing line
  EXPECT_EQ(p[0].kind, Primitive::kPolyline);
  EXPECT_EQ(p[2].kind, Primitive::kPolyline);
  EXPECT_POINT(p[2].points.back(), 0, 0, 0);
}

TEST_F(EntityGraphics, TextAndPointsDrawWhereTheyStand) {
  AcDbText text(AcGePoint3d(1, 1, 0), L"ABC", AcDbObjectId::kNull, 2.5, kPi / 2);
  Picture p = kelhost::gi::Draw(text);
  ASSERT_EQ(p.size(), 1u);
  EXPECT_EQ(p[0].kind, Primitive::kText);
  EXPECT_EQ(p[0].text, L"ABC");
  EXPECT_POINT(p[0].points[0], 1, 1, 0);
  EXPECT_TRUE(p[0].direction.isEqualTo(AcGeVector3d::kYAxis));
  EXPECT_DOUBLE_EQ(p[0].height, 2.5);

  AcDbPoint point(AcGePoint3d(3, 4, 5));
  p = kelhost::gi::Draw(point);
  ASSERT_EQ(p.size(), 1u);
  EXPECT_EQ(p[0].kind, Primitive::kPoints);
  EXPECT_POINT(p[0].points[0], 3, 4, 5);

  point.setVisibility(AcDb::kInvisible);
  EXPECT_TRUE(kelhost::gi::Draw(point).empty());
}

TEST_F(EntityGraphics, AReferenceDrawsItsBlockInPlaceWithItsOwnProperties) {
  ASSERT_NE(eval(L"(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\")"
                 L" (2 . \"L\") (70 . 0) (62 . 5) (6 . \"Continuous\")))"),
            L"nil");
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"B\") (70 . 2) (10 1.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"LINE\") (8 . \"0\") (62 . 0) (10 1.0 0.0 0.0) (11 2.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"CIRCLE\") (8 . \"0\") (62 . 3) (10 1.0 1.0 0.0) (40 . 0.5)))");
  eval(L"(entmake '((0 . \"ATTDEF\") (10 1.0 2.0 0.0) (40 . 0.25) (1 . \"X\") (3 . \"Mark?\") (2 . \"MARK\")"
       L" (70 . 0)))");
  eval(L"(entmake '((0 . \"ENDBLK\")))");
  const AcDbObjectId block = record(db->blockTableId(), L"B");
  const AcDbObjectId layer = record(db->layerTableId(), L"L");
  ASSERT_FALSE(block.isNull());
  ASSERT_FALSE(layer.isNull());

  AcDbBlockReference ref(AcGePoint3d(10, 0, 0), block);
  ref.setRotation(kPi / 2);
  ref.setScaleFactors(AcGeVector3d(2, 2, 2));
  ref.setColorIndex(256);
  ref.setLayer(layer);
  Picture p = kelhost::gi::Draw(ref);
  ASSERT_EQ(p.size(), 2u);  // the line and the circle; the definition's attribute is not drawn
  EXPECT_EQ(p[0].kind, Primitive::kPolyline);
  EXPECT_POINT(p[0].points[0], 10, 0, 0);  // the block's base point at the reference's position
  EXPECT_POINT(p[0].points[1], 10, 2, 0);  // scaled 2, turned a quarter
  EXPECT_EQ(p[0].properties.color, 5);     // BYBLOCK under a BYLAYER reference: its layer's colour
  EXPECT_EQ(p[0].properties.layer, layer); // on layer 0: the reference's layer
  EXPECT_EQ(p[1].kind, Primitive::kCircle);
  EXPECT_POINT(p[1].center, 8, 0, 0);
  EXPECT_DOUBLE_EQ(p[1].radius, 1.0);
  EXPECT_EQ(p[1].properties.color, 3);

  ref.setScaleFactors(AcGeVector3d(2, 1, 1));  // the circle becomes an ellipse
  p = kelhost::gi::Draw(ref);
  ASSERT_EQ(p.size(), 2u);
  EXPECT_EQ(p[1].kind, Primitive::kPolyline);
  for (const AcGePoint3d& q : p[1].points) {
    // About (9,0) after the turn: 1 across (x), 0.5 along (y) before it.
    const double along = (q.y - 0.0) / 1.0, across = (q.x - 9.0) / 0.5;
    EXPECT_NEAR(along * along + across * across, 1.0, 1e-9);
  }
}

TEST_F(EntityGraphics, AMirroringTransformKeepsAnArcsEnds) {
  // A drawable that draws a quarter arc under a mirror in the YZ plane.
  class Mirrored : public AcDbEntity {
   protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override {
      wd->geometry().pushModelTransform(AcGeMatrix3d::mirroring(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis));
      wd->geometry().circularArc(AcGePoint3d(0, 0, 0), 1.0, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, kPi / 2);
      wd->geometry().popModelTransform();
      wd->geometry().circularArc(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0), AcGePoint3d(2, 0, 0));
      return Adesk::kTrue;
    }
  } drawable;
  const Picture p = kelhost::gi::Draw(drawable);
  ASSERT_EQ(p.size(), 2u);
  const Primitive& a = p[0];
  const AcGeMatrix3d turn = AcGeMatrix3d::rotation(a.sweep, a.normal, a.center);
  EXPECT_POINT(a.center + a.startVector, -1, 0, 0);
  EXPECT_POINT(turn * (a.center + a.startVector), 0, 1, 0);
  const Primitive& b = p[1];  // through three points: clockwise over the top
  EXPECT_POINT(b.center, 1, 0, 0);
  EXPECT_NEAR(b.sweep, kPi, 1e-12);
  EXPECT_POINT(AcGeMatrix3d::rotation(b.sweep, b.normal, b.center) * (b.center + b.startVector * b.radius), 2, 0, 0);
  EXPECT_POINT(AcGeMatrix3d::rotation(b.sweep / 2, b.normal, b.center) * (b.center + b.startVector * b.radius), 1,
               1, 0);
}

TEST_F(EntityGraphics, AJigsSamplesAreDrawnAsDragging) {
  class Watching : public AcDbEntity {
   public:
    int dragging = 0, drawn = 0;

   protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override {
      ++drawn;
      dragging += wd->isDragging() ? 1 : 0;
      return Adesk::kTrue;
    }
  };
  class PointJig : public AcEdJig {
   public:
    Watching entityShown;
    DragStatus sampler() override {
      AcGePoint3d p;
      return acquirePoint(p);
    }
    AcDbEntity* entity() const override { return const_cast<Watching*>(&entityShown); }
  };
  answers(L"1,1\n");
  PointJig jig;
  EXPECT_EQ(jig.drag(), AcEdJig::kNormal);
  EXPECT_EQ(jig.entityShown.drawn, 1);
  EXPECT_EQ(jig.entityShown.dragging, 1);
  kelhost::gi::Draw(jig.entityShown);
  EXPECT_EQ(jig.entityShown.drawn, 2);
  EXPECT_EQ(jig.entityShown.dragging, 1);
}

}  // namespace
