// Transformations of block references (their attributes following),
// heavy polylines and their vertices, and points; best-fit boxes of
// nested and turned blocks.
#include <cmath>
#include <vector>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"

namespace {
using entity_tests::kPi;
using entity_tests::LastId;
using entity_tests::Near;
AcGeMatrix3d Scaling(double x, double y, double z) {
  AcGeMatrix3d m;
  m.entry[0][0] = x;
  m.entry[1][1] = y;
  m.entry[2][2] = z;
  return m;
}

// Matrices a reference can follow: moves, turns about tilted axes,
// mirrors, uniform scalings, and a non-uniform scaling along the axes of
// an untilted, unturned reference.
std::vector<AcGeMatrix3d> UniformMatrices() {
  return {AcGeMatrix3d::translation(AcGeVector3d(3, -4, 5)),
          AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, 3), AcGePoint3d(1, 1, 0)),
          AcGeMatrix3d::mirroring(AcGePoint3d(2, 0, 0), AcGeVector3d(1, 0, 0)),
          AcGeMatrix3d::mirroring(AcGePoint3d(0, 0, 1), AcGeVector3d(0, 1, 1)),
          AcGeMatrix3d::scaling(2.5, AcGePoint3d(1, 2, 3)) * AcGeMatrix3d::rotation(2.0, AcGeVector3d::kZAxis)};
}
}  // namespace

class BlockTransform : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    eval(L"(entmake '((0 . \"BLOCK\") (2 . \"B\") (70 . 2) (10 1.0 0.0 0.0)))");
    eval(L"(entmake '((0 . \"LINE\") (10 1.0 0.0 0.0) (11 3.0 0.0 0.0)))");
    eval(L"(entmake '((0 . \"ATTDEF\") (10 1.0 1.0 0.0) (40 . 0.5) (1 . \"\") (3 . \"?\") (2 . \"T\") (70 . 0)))");
    ASSERT_NE(eval(L"(entmake '((0 . \"ENDBLK\")))"), L"nil");
  }
  // A reference to B without attributes, turned and scaled, or with one.
  AcDbObjectId plainReference() {
    eval(L"(entmake '((0 . \"INSERT\") (2 . \"B\") (10 4.0 5.0 6.0) (41 . 2.0) (42 . -1.5) (43 . 3.0) (50 . 0.4)"
         L" (210 0.0 0.6 0.8)))");
    return LastId();
  }
  AcDbObjectId attributedReference() {
    eval(L"(entmake '((0 . \"INSERT\") (66 . 1) (2 . \"B\") (10 4.0 5.0 0.0)))");
    eval(L"(entmake '((0 . \"ATTRIB\") (10 4.0 6.0 0.0) (40 . 0.5) (1 . \"v\") (2 . \"T\") (70 . 0)))");
    eval(L"(entmake '((0 . \"SEQEND\")))");
    return LastId();
  }
};

TEST_F(BlockTransform, ReferencesFollowTheMatrixExactly) {
  const AcDbObjectId id = plainReference();
  for (const AcGeMatrix3d& m : UniformMatrices()) {
    AcDbBlockReference* ref = nullptr;
    ASSERT_EQ(acdbOpenObject(ref, id, AcDb::kForWrite), Acad::eOk);
    const AcGeMatrix3d before = ref->blockTransform();
    EXPECT_EQ(ref->transformBy(m), Acad::eOk);
    EXPECT_TRUE(Near(ref->blockTransform(), m * before));
    EXPECT_NEAR(ref->normal().length(), 1.0, 1e-12);
    ref->close();
  }
  // A plain reference takes a stretch along its own axes as scale factors,
  // keeping the signs of its Y and Z factors.
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"B\") (10 1.0 1.0 0.0) (42 . -1.0) (50 . 1.5707963267948966)))");
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, LastId(), AcDb::kForWrite), Acad::eOk);
  const AcGeMatrix3d stretch = Scaling(3, 2, 1);
  AcGeMatrix3d before = ref->blockTransform();
  ASSERT_EQ(ref->transformBy(stretch), Acad::eOk);
  EXPECT_TRUE(Near(ref->blockTransform(), stretch * before));
  EXPECT_NEAR(ref->scaleFactors().x, 2.0, 1e-12);  // its X axis lies along Y
  EXPECT_NEAR(ref->scaleFactors().y, -3.0, 1e-12);
  // A stretch across its axes bends them: refused, nothing changed.
  before = ref->blockTransform();
  const AcGeMatrix3d across = AcGeMatrix3d::rotation(0.3, AcGeVector3d::kZAxis) * Scaling(3, 1, 1) *
                              AcGeMatrix3d::rotation(-0.3, AcGeVector3d::kZAxis);
  EXPECT_EQ(ref->transformBy(across), Acad::eCannotScaleNonUniformly);
  EXPECT_TRUE(Near(ref->blockTransform(), before));
  EXPECT_EQ(ref->transformBy(Scaling(1, 1, 0)), Acad::eCannotScaleNonUniformly) << "flattening";
  ref->close();
}

TEST_F(BlockTransform, AttributesFollowAndStopANonUniformScaling) {
  const AcDbObjectId id = attributedReference();
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, id, AcDb::kForWrite), Acad::eOk);
  const AcDbObjectId attId = ref->attributeIds()[0];
  EXPECT_EQ(ref->transformBy(Scaling(2, 1, 1)), Acad::eCannotScaleNonUniformly);
  EXPECT_PT(ref->position(), 4, 5, 0);
  // Mirrored in the line x = 5: the attribute goes with the reference.
  ASSERT_EQ(ref->transformBy(AcGeMatrix3d::mirroring(AcGePoint3d(5, 0, 0), AcGeVector3d::kXAxis)), Acad::eOk);
  EXPECT_PT(ref->position(), 6, 5, 0);
  EXPECT_LT(ref->scaleFactors().x, 0);
  ref->close();
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entnext (entlast)))))"), L"(6.0 6.0 0.0)");

  // An attribute someone holds open stops the transformation unchanged.
  AcDbAttribute* held = nullptr;
  ASSERT_EQ(acdbOpenObject(held, attId, AcDb::kForRead), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(ref, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(ref->transformBy(AcGeMatrix3d::translation(AcGeVector3d(1, 0, 0))), Acad::eWasOpenForRead);
  EXPECT_PT(ref->position(), 6, 5, 0);
  ref->close();
  held->close();
}

TEST_F(BlockTransform, HeavyPolylinesKeepTheirShapeUnderTheMatrix) {
  eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1) (70 . 1) (10 0.0 0.0 2.0) (39 . 1.0)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 0.0 0.0 0.0) (42 . 0.5)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 4.0 0.0 0.0) (40 . 0.5) (41 . 0.5)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 4.0 3.0 0.0)))");
  ASSERT_NE(eval(L"(entmake '((0 . \"SEQEND\")))"), L"nil");
  const AcDbObjectId id = LastId();
  const double params[] = {0.0, 0.3, 0.5, 1.0, 1.7, 2.5};
  for (const AcGeMatrix3d& m : UniformMatrices()) {
    AcDb2dPolyline* pl = nullptr;
    ASSERT_EQ(acdbOpenObject(pl, id, AcDb::kForWrite), Acad::eOk);
    std::vector<AcGePoint3d> before;
    for (double t : params) {
      AcGePoint3d p;
      pl->getPointAtParam(t, p);
      before.push_back(m * p);
    }
    ASSERT_EQ(pl->transformBy(m), Acad::eOk);
    for (size_t i = 0; i < before.size(); ++i) {
      AcGePoint3d p;
      pl->getPointAtParam(params[i], p);
      EXPECT_NEAR(p.distanceTo(before[i]), 0.0, 1e-9) << "at " << params[i];
    }
    pl->close();
  }
  AcDb2dPolyline* pl = nullptr;
  ASSERT_EQ(acdbOpenObject(pl, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_NEAR(pl->thickness(), 2.5, 1e-9) << "scaled with the last matrix";
  // An arc segment cannot stretch into a polyline.
  AcGePoint3d start;
  pl->getStartPoint(start);
  EXPECT_EQ(pl->transformBy(Scaling(2, 1, 1)), Acad::eCannotScaleNonUniformly);
  AcGePoint3d still;
  pl->getStartPoint(still);
  EXPECT_PT(still, start.x, start.y, start.z);
  // A vertex held open elsewhere stops the polyline unchanged.
  AcDb2dVertex* vertex = nullptr;
  ASSERT_EQ(acdbOpenObject(vertex, pl->vertexIds()[2], AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(pl->transformBy(AcGeMatrix3d::translation(AcGeVector3d(1, 1, 1))), Acad::eWasOpenForRead);
  pl->getStartPoint(still);
  EXPECT_PT(still, start.x, start.y, start.z);
  vertex->close();
  pl->close();

  // Straight segments stretch; a lone vertex moves within its polyline's plane.
  eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1) (10 0.0 0.0 5.0)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 1.0 1.0 0.0)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 2.0 3.0 0.0)))");
  eval(L"(entmake '((0 . \"SEQEND\")))");
  ASSERT_EQ(acdbOpenObject(pl, LastId(), AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(pl->transformBy(Scaling(2, 3, 1)), Acad::eOk);
  AcGePoint3d end;
  pl->getEndPoint(end);
  EXPECT_PT(end, 4, 9, 5);
  ASSERT_EQ(acdbOpenObject(vertex, pl->vertexIds()[0], AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(vertex->transformBy(AcGeMatrix3d::translation(AcGeVector3d(1, 0, 7))), Acad::eOk);
  EXPECT_PT(vertex->position(), 3, 3, 0);
  vertex->close();
  pl->close();
}

TEST_F(BlockTransform, ThreeDPolylinesAndPointsTakeAnyAffineMatrix) {
  eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1) (70 . 8)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 1.0 2.0 3.0) (70 . 32)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 -1.0 0.0 4.0) (70 . 32)))");
  eval(L"(entmake '((0 . \"SEQEND\")))");
  AcGeMatrix3d shear;
  shear.entry[0][1] = 0.5;
  shear.entry[2][0] = -2.0;
  shear.entry[1][3] = 7.0;
  AcDb3dPolyline* pl = nullptr;
  ASSERT_EQ(acdbOpenObject(pl, LastId(), AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(pl->transformBy(shear), Acad::eOk);
  AcGePoint3d p;
  pl->getEndPoint(p);
  EXPECT_PT(p, -1.0, 7.0, 6.0);
  pl->close();

  AcDbPoint point(AcGePoint3d(1, 2, 3));
  point.setThickness(2.0);
  point.setEcsRotation(0.25);
  ASSERT_EQ(point.transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kXAxis)), Acad::eOk);
  EXPECT_PT(point.position(), 1, -3, 2);
  EXPECT_NEAR(point.normal().y, -1.0, 1e-12);
  ASSERT_EQ(point.transformBy(Scaling(1, 3, 1)), Acad::eOk);
  EXPECT_NEAR(point.thickness(), 6.0, 1e-12) << "along the stretched normal";
  AcDbExtents box;
  ASSERT_EQ(point.getGeomExtents(box), Acad::eOk);
  EXPECT_PT(box.minPoint(), 1, -9, 2);
  EXPECT_PT(box.maxPoint(), 1, -9, 2);
  // The X axis it was drawn with turns with it: a quarter turn about Z.
  AcDbPoint turned(AcGePoint3d(0, 0, 0));
  turned.setEcsRotation(0.25);
  turned.transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis));
  EXPECT_NEAR(turned.ecsRotation(), 0.25 + kPi / 2, 1e-12);
}

TEST_F(BlockTransform, BestFitFollowsNestedTurnedGeometry) {
  // LINE1 holds a unit line along X; MID holds LINE1 turned 45 degrees at
  // (5,0), scaled 2, and a circle; MID is inserted turned 45 degrees.
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"LINE1\") (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"ENDBLK\")))");
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"MID\") (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"LINE1\") (10 5.0 0.0 0.0) (41 . 2.0) (42 . 2.0) (43 . 2.0)"
       L" (50 . 0.7853981633974483)))");
  eval(L"(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 1.0)))");
  eval(L"(entmake '((0 . \"ENDBLK\")))");
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"MID\") (10 0.0 0.0 0.0) (50 . 0.7853981633974483)))");
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, LastId(), AcDb::kForRead), Acad::eOk);
  AcDbExtents best, rough;
  ASSERT_EQ(ref->geomExtentsBestFit(best), Acad::eOk);
  ASSERT_EQ(ref->getGeomExtents(rough), Acad::eOk);
  // The line runs from (5,0) turned 45 degrees, straight up by 2.
  const double c = 5 / std::sqrt(2.0);
  EXPECT_PT(best.minPoint(), -1, -1, 0);
  EXPECT_PT(best.maxPoint(), c, c + 2, 0);
  // The rough box turns boxes, so it only grows.
  EXPECT_LT(rough.minPoint().x, best.minPoint().x - 0.1);
  EXPECT_GT(rough.maxPoint().x, best.maxPoint().x + 0.1);
  // A parent transformation places the whole.
  AcDbExtents moved;
  ASSERT_EQ(ref->geomExtentsBestFit(moved, AcGeMatrix3d::translation(AcGeVector3d(10, 0, 0))), Acad::eOk);
  EXPECT_PT(moved.minPoint(), 9, -1, 0);
  ref->close();

  // A block that holds a reference to itself has no extents, and no hang.
  AcDbBlockTableRecord* line1 = nullptr;
  AcDbBlockTable* table = nullptr;
  ASSERT_EQ(acdbOpenObject(table, db->blockTableId(), AcDb::kForRead), Acad::eOk);
  AcDbObjectId line1Id;
  ASSERT_EQ(table->getAt(L"LINE1", line1Id), Acad::eOk);
  table->close();
  ASSERT_EQ(acdbOpenObject(line1, line1Id, AcDb::kForWrite), Acad::eOk);
  auto* self = new AcDbBlockReference(AcGePoint3d(1, 0, 0), line1Id);
  ASSERT_EQ(line1->appendAcDbEntity(self), Acad::eOk);
  self->close();
  line1->close();
  AcDbBlockReference probe(AcGePoint3d(0, 0, 0), line1Id);
  EXPECT_EQ(probe.getGeomExtents(rough), Acad::eInvalidExtents);
  EXPECT_EQ(probe.geomExtentsBestFit(rough), Acad::eInvalidExtents);
}
