// Complex entities made from lists: heavy polylines, block definitions and
// references with attributes; entnext walking through them; sequences
// abandoned half way leave nothing behind.
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"

namespace {
using entity_tests::kPi;
using entity_tests::LastId;
const char* kSquarePolyline =
    "(progn (entmake '((0 . \"POLYLINE\") (66 . 1) (70 . 1) (8 . \"PL\")))"
    " (entmake '((0 . \"VERTEX\") (10 0.0 0.0 0.0) (42 . 0.0)))"
    " (entmake '((0 . \"VERTEX\") (10 4.0 0.0 0.0)))"
    " (entmake '((0 . \"VERTEX\") (10 4.0 4.0 0.0)))"
    " (entmake '((0 . \"VERTEX\") (10 0.0 4.0 0.0)))"
    " (entmake '((0 . \"SEQEND\"))))";

std::wstring W(const char* s) { return std::wstring(s, s + std::strlen(s)); }
}  // namespace

class Sequences : public DrawingTest {};

TEST_F(Sequences, HeavyPolylineIsMadeAtItsSeqend) {
  const Adesk::UInt64 before = handseed();
  EXPECT_NE(eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1)))"), L"nil");
  EXPECT_NE(eval(L"(entmake '((0 . \"VERTEX\") (10 0.0 0.0 0.0)))"), L"nil");
  EXPECT_EQ(handseed(), before) << "nothing is added before the SEQEND";
  EXPECT_EQ(eval(L"(entlast)"), L"nil");
  EXPECT_NE(eval(L"(entmake '((0 . \"SEQEND\")))"), L"nil");
  // entmakex names the polyline at its SEQEND, nothing before.
  EXPECT_EQ(eval(L"(entmakex '((0 . \"POLYLINE\") (66 . 1)))"), L"nil");
  eval(L"(entmakex '((0 . \"VERTEX\") (10 1.0 0.0 0.0)))");
  EXPECT_EQ(eval(L"(progn (setq made (entmakex '((0 . \"SEQEND\")))) (eq made (entlast)))"), L"T");

  ASSERT_NE(eval(W(kSquarePolyline)), L"nil");
  AcDb2dPolyline* pl = nullptr;
  ASSERT_EQ(acdbOpenObject(pl, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(pl->vertexIds().size(), 4u);
  EXPECT_TRUE(pl->isClosed());
  double dist = 0, end = 0;
  pl->getEndParam(end);
  pl->getDistAtParam(end, dist);
  EXPECT_NEAR(end, 4.0, 1e-12);
  EXPECT_NEAR(dist, 16.0, 1e-9);
  AcDbVoidPtrArray parts;
  pl->explode(parts);
  EXPECT_EQ(parts.length(), 4);
  for (void* p : parts) delete static_cast<AcDbEntity*>(p);
  ACHAR* layer = pl->layer();
  EXPECT_STREQ(layer, L"PL");
  std::free(layer);
  // The SEQEND takes the polyline's layer.
  AcDbEntity* vertex = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(vertex, pl->sequenceEndId(), AcDb::kForRead), Acad::eOk);
  layer = vertex->layer();
  EXPECT_STREQ(layer, L"PL");
  std::free(layer);
  vertex->close();
  pl->close();
}

TEST_F(Sequences, EntnextWalksIntoSubEntities) {
  ASSERT_NE(eval(W(kSquarePolyline)), L"nil");
  eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 1.0 0.0)))");
  EXPECT_EQ(eval(L"(progn (setq e (entnext) types nil) e)"), eval(L"(entnext)"));
  EXPECT_EQ(eval(L"(progn (while e (setq types (cons (cdr (assoc 0 (entget e))) types) e (entnext e))) (reverse types))"),
            L"(\"POLYLINE\" \"VERTEX\" \"VERTEX\" \"VERTEX\" \"VERTEX\" \"SEQEND\" \"LINE\")");
  // A vertex's list names its polyline as owner and gives its position.
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entnext (entnext (entnext))))))"), L"(4.0 0.0 0.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entlast))))"), L"\"LINE\"");
}

TEST_F(Sequences, BadOrUnfinishedSequencesLeaveNothing) {
  const Adesk::UInt64 before = handseed();
  EXPECT_EQ(eval(L"(entmake '((0 . \"VERTEX\") (10 0.0 0.0 0.0)))"), L"nil") << "no polyline open";
  EXPECT_EQ(eval(L"(entmake '((0 . \"SEQEND\")))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"ENDBLK\")))"), L"nil");
  // A bad vertex drops the whole polyline: the SEQEND then has nothing to end.
  eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1)))");
  EXPECT_EQ(eval(L"(entmake '((0 . \"VERTEX\")))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"SEQEND\")))"), L"nil");
  // A 3D vertex cannot join a 2D polyline, nor an attribute a polyline.
  eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1)))");
  EXPECT_EQ(eval(L"(entmake '((0 . \"VERTEX\") (10 0.0 0.0 0.0) (70 . 32)))"), L"nil");
  eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1)))");
  EXPECT_EQ(eval(L"(entmake '((0 . \"ATTRIB\") (10 0.0 0.0 0.0) (1 . \"x\") (2 . \"T\")))"), L"nil");
  // Anonymous names need both the star and flag 1; other names must be valid and new.
  EXPECT_EQ(eval(L"(entmake '((0 . \"BLOCK\") (2 . \"A<B\") (10 0.0 0.0 0.0)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"BLOCK\") (2 . \"*Model_Space\") (10 0.0 0.0 0.0)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"BLOCK\") (2 . \"*Paper_Space\") (70 . 0) (10 0.0 0.0 0.0)))"), L"nil");
  EXPECT_EQ(handseed(), before);
  // A block abandoned for another: only the second is made, at its ENDBLK.
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"HALF\") (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 1.0 0.0)))");
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"OTHER\") (10 0.0 0.0 0.0)))");
  EXPECT_EQ(handseed(), before);
  EXPECT_EQ(eval(L"(entmake '((0 . \"ENDBLK\")))"), L"((0 . \"ENDBLK\"))");
  EXPECT_EQ(eval(L"(tblsearch \"BLOCK\" \"HALF\")"), L"nil");
  EXPECT_NE(eval(L"(tblsearch \"BLOCK\" \"OTHER\")"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"BLOCK\") (2 . \"other\") (10 0.0 0.0 0.0)))"), L"nil") << "exists";
}

TEST_F(Sequences, BlockDefinitionThenInsertWithAttributes) {
  ASSERT_EQ(eval(L"(entmake '((0 . \"BLOCK\") (2 . \"DOOR\") (70 . 0) (10 1.0 1.0 0.0)))") != L"nil", true);
  eval(L"(entmake '((0 . \"LINE\") (10 1.0 1.0 0.0) (11 3.0 1.0 0.0)))");
  eval(L"(entmake '((0 . \"ATTDEF\") (10 1.0 2.0 0.0) (40 . 0.5) (1 . \"D1\") (3 . \"Number?\") (2 . \"num\") (70 . 0)))");
  EXPECT_EQ(eval(L"(entmake '((0 . \"ENDBLK\")))"), L"((0 . \"ENDBLK\"))");
  EXPECT_EQ(eval(L"(cdr (assoc 70 (tblsearch \"BLOCK\" \"DOOR\")))"), L"2") << "has attribute definitions";

  eval(L"(entmake '((0 . \"INSERT\") (66 . 1) (2 . \"DOOR\") (10 10.0 0.0 0.0) (41 . 2.0) (42 . 2.0) (43 . 2.0)"
       L" (50 . 1.5707963267948966)))");
  eval(L"(entmake '((0 . \"ATTRIB\") (10 8.0 0.0 0.0) (40 . 1.0) (1 . \"D7\") (2 . \"num\") (70 . 0)))");
  ASSERT_NE(eval(L"(entmake '((0 . \"SEQEND\")))"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 66 (entget (entlast))))"), L"1");
  EXPECT_EQ(eval(L"(cdr (assoc 2 (entget (entnext (entlast)))))"), L"\"NUM\"");
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entnext (entnext (entlast))))))"), L"\"SEQEND\"");

  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, LastId(), AcDb::kForRead), Acad::eOk);
  // Block point (3,1) is 2 from the base (1,1): scaled by 2, turned 90 degrees, at (10,0): (10,4).
  AcGePoint3d p = ref->blockTransform() * AcGePoint3d(3, 1, 0);
  EXPECT_NEAR(p.x, 10, 1e-9);
  EXPECT_NEAR(p.y, 4, 1e-9);
  AcDbExtents ext, best;
  ASSERT_EQ(ref->getGeomExtents(ext), Acad::eOk);
  ASSERT_EQ(ref->geomExtentsBestFit(best), Acad::eOk);
  EXPECT_NEAR(best.minPoint().y, 0.0, 1e-9);
  EXPECT_NEAR(best.maxPoint().y, 4.0, 1e-9);
  EXPECT_LE(ext.minPoint().x, best.minPoint().x + 1e-9);
  ref->close();

  // Moving the reference moves its attributes with it.
  AcDbEntity* ent = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(ent, LastId(), AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(ent->transformBy(AcGeMatrix3d::translation(AcGeVector3d(0, 5, 0))), Acad::eOk);
  ent->close();
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entnext (entlast)))))"), L"(8.0 5.0 0.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entlast))))"), L"(10.0 5.0 0.0)");
}

TEST_F(Sequences, AnonymousBlocksGetTheirNameAtEndblk) {
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"*U\") (70 . 1) (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 1.0)))");
  EXPECT_EQ(eval(L"(setq n (entmake '((0 . \"ENDBLK\"))))"), L"\"*U1\"");
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"*ANON\") (70 . 1) (10 0.0 0.0 0.0)))");
  EXPECT_EQ(eval(L"(entmake '((0 . \"ENDBLK\")))"), L"\"*A1\"");
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"*U\") (70 . 1) (10 0.0 0.0 0.0)))");
  // A heavy polyline inside a block definition.
  eval(W(kSquarePolyline));
  EXPECT_EQ(eval(L"(entmake '((0 . \"ENDBLK\")))"), L"\"*U2\"");
  EXPECT_EQ(eval(L"(entlast)"), L"nil") << "block contents are not drawing entities";
  AcDbBlockTable* table = nullptr;
  ASSERT_EQ(acdbOpenObject(table, db->blockTableId(), AcDb::kForRead), Acad::eOk);
  AcDbBlockTableRecord* block = nullptr;
  AcDbObjectId id;
  ASSERT_EQ(table->getAt(L"*U2", id), Acad::eOk);
  table->close();
  ASSERT_EQ(acdbOpenObject(block, id, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(block->isAnonymous());
  ASSERT_EQ(block->entityIds().size(), 1u);
  auto* pl = kelhost::db::PeekAs<AcDb2dPolyline>(block->entityIds()[0]);
  ASSERT_NE(pl, nullptr);
  EXPECT_EQ(pl->vertexIds().size(), 4u);
  block->close();
}

TEST_F(Sequences, ThreeDPolylineAndListRoundTrip) {
  eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1) (70 . 8)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 0.0 0.0 0.0) (70 . 32)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 3.0 4.0 12.0) (70 . 32)))");
  ASSERT_NE(eval(L"(entmake '((0 . \"SEQEND\")))"), L"nil");
  AcDb3dPolyline* pl = nullptr;
  ASSERT_EQ(acdbOpenObject(pl, LastId(), AcDb::kForRead), Acad::eOk);
  double dist = 0;
  pl->getDistAtParam(1.0, dist);
  EXPECT_NEAR(dist, 13.0, 1e-9);
  pl->close();
  // entget then entmake of the same lists gives an equal polyline.
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget (entlast))))"), L"8");
  EXPECT_EQ(eval(L"(cdr (assoc 100 (cdr (member (assoc 100 (entget (entlast))) (entget (entlast))))))"),
            L"\"AcDb3dPolyline\"");
  eval(L"(setq h (entlast) v (entnext h))");
  eval(L"(progn (entmake (entget h)) (entmake (entget v)) (entmake (entget (entnext v))) (entmake '((0 . \"SEQEND\"))))");
  EXPECT_NE(eval(L"(entlast)"), eval(L"h"));
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entnext (entnext (entlast))))))"), L"(3.0 4.0 12.0)");
  // An arc in a polyline vertex list rounds the corner: quarter circle of radius 2.
  eval(L"(entmake '((0 . \"POLYLINE\") (66 . 1)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 2.0 0.0 0.0) (42 . 0.41421356237309503)))");
  eval(L"(entmake '((0 . \"VERTEX\") (10 0.0 2.0 0.0)))");
  eval(L"(entmake '((0 . \"SEQEND\")))");
  AcDbCurve* curve = nullptr;
  ASSERT_EQ(acdbOpenObject(curve, LastId(), AcDb::kForRead), Acad::eOk);
  curve->getDistAtParam(1.0, dist);
  EXPECT_NEAR(dist, kPi, 1e-9);
  curve->close();
}
