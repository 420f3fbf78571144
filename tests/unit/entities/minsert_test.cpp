// Arrays of block images (MINSERT): the class lists and files choose by
// the column and row counts, their groups under AcDbMInsertBlock, boxes
// over every image, transformations that keep every image where the
// matrix puts it, and a round trip through a DXF file.
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"
#include "kelhost/drawing_files.h"
#include "kelhost/text.h"

namespace {
using entity_tests::LastId;
using entity_tests::Near;

// Where one image of the array sits: block coordinates to WCS.
AcGeMatrix3d ImageTransform(const AcDbMInsertBlock& array, int column, int row) {
  return AcGeMatrix3d::translation(array.elementOffset(column, row)) * array.blockTransform();
}

}  // namespace

class MInsert : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    // A unit square's bottom edge and left edge, based at the origin.
    eval(L"(entmake '((0 . \"BLOCK\") (2 . \"CELL\") (10 0.0 0.0 0.0)))");
    eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
    eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 0.0 1.0 0.0)))");
    ASSERT_NE(eval(L"(entmake '((0 . \"ENDBLK\")))"), L"nil");
  }
};

TEST_F(MInsert, ListsWithRowsOrColumnsMakeAnArray) {
  ASSERT_NE(eval(L"(entmake '((0 . \"INSERT\") (2 . \"CELL\") (10 1.0 2.0 0.0) (70 . 3) (44 . 2.0) (45 . 5.0)))"),
            L"nil");
  AcDbMInsertBlock* array = nullptr;
  ASSERT_EQ(acdbOpenObject(array, LastId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(array->columns(), 3);
  EXPECT_EQ(array->rows(), 1) << "a missing row count is one";
  EXPECT_DOUBLE_EQ(array->columnSpacing(), 2.0);
  EXPECT_DOUBLE_EQ(array->rowSpacing(), 5.0);
  array->close();
  // Its list: an INSERT under the array's own subclass marker, counts and
  // spacings always given.
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (entlast))))"), L"\"INSERT\"");
  EXPECT_EQ(eval(L"(vl-remove-if-not '(lambda (g) (= (car g) 100)) (entget (entlast)))"),
            L"((100 . \"AcDbEntity\") (100 . \"AcDbMInsertBlock\"))");
  EXPECT_EQ(eval(L"(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(70 71 44 45))"), L"(3 1 2.0 5.0)");
  // entget then entmake gives the same array; entmod changes it in place.
  EXPECT_NE(eval(L"(entmake (entget (entlast)))"), L"nil");
  EXPECT_EQ(kelhost::db::Peek(LastId())->isA(), AcDbMInsertBlock::desc());
  EXPECT_NE(eval(L"(entmod (subst '(71 . 4) (assoc 71 (entget (entlast))) (entget (entlast))))"), L"nil");
  EXPECT_EQ(kelhost::db::PeekAs<AcDbMInsertBlock>(LastId())->rows(), 4);

  // One row and one column is a plain block reference, without the groups.
  ASSERT_NE(eval(L"(entmake '((0 . \"INSERT\") (2 . \"CELL\") (10 0.0 0.0 0.0) (70 . 1) (71 . 1)))"), L"nil");
  EXPECT_EQ(kelhost::db::Peek(LastId())->isA(), AcDbBlockReference::desc());
  EXPECT_EQ(eval(L"(assoc 70 (entget (entlast)))"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 100 (cdr (member (assoc 100 (entget (entlast))) (entget (entlast))))))"),
            L"\"AcDbBlockReference\"");
  // A negative count is refused.
  EXPECT_EQ(eval(L"(entmake '((0 . \"INSERT\") (2 . \"CELL\") (10 0.0 0.0 0.0) (70 . 2) (71 . -3)))"), L"nil");
}

TEST_F(MInsert, BoxesCoverEveryImage) {
  // Three columns 2 apart along the turned X axis (+Y), two rows 5 apart
  // along the turned Y axis (-X).
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"CELL\") (10 10.0 0.0 0.0) (50 . 1.5707963267948966)"
       L" (70 . 3) (71 . 2) (44 . 2.0) (45 . 5.0)))");
  AcDbMInsertBlock* array = nullptr;
  ASSERT_EQ(acdbOpenObject(array, LastId(), AcDb::kForRead), Acad::eOk);
  AcDbExtents box, best;
  ASSERT_EQ(array->getGeomExtents(box), Acad::eOk);
  ASSERT_EQ(array->geomExtentsBestFit(best), Acad::eOk);
  const AcDbObjectId cell = array->blockTableRecord();
  EXPECT_PT(box.minPoint(), 4, 0, 0);
  EXPECT_PT(box.maxPoint(), 10, 5, 0);
  EXPECT_PT(best.minPoint(), 4, 0, 0);
  EXPECT_PT(best.maxPoint(), 10, 5, 0);
  array->close();
  // ssget by window sees the whole array.
  EXPECT_EQ(eval(L"(sslength (ssget \"W\" '(3.9 -0.1) '(10.1 5.1)))"), L"1");
  EXPECT_EQ(eval(L"(ssget \"W\" '(3.9 -0.1) '(10.1 4.9))"), L"nil");
  // An array of no images has no box.
  AcDbMInsertBlock empty(AcGePoint3d(0, 0, 0), cell, 0, 2, 1.0, 1.0);
  EXPECT_EQ(empty.getGeomExtents(box), Acad::eInvalidExtents);
}

TEST_F(MInsert, TransformationsKeepEveryImageWhereTheMatrixPutsIt) {
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"CELL\") (10 1.0 2.0 3.0) (41 . 2.0) (42 . 0.5)"
       L" (70 . 3) (71 . 2) (44 . 2.0) (45 . -5.0)))");
  const AcDbObjectId id = LastId();
  AcGeMatrix3d stretch;
  stretch.entry[0][0] = 3.0;  // along X: fits only an unturned array, so it comes first
  const AcGeMatrix3d matrices[] = {
      stretch,
      AcGeMatrix3d::translation(AcGeVector3d(-3, 4, 1)),
      AcGeMatrix3d::rotation(1.1, AcGeVector3d(0, 1, 1), AcGePoint3d(2, 0, 0)),
      AcGeMatrix3d::mirroring(AcGePoint3d(0, 3, 0), AcGeVector3d(0, 1, 0)),
      AcGeMatrix3d::scaling(0.5, AcGePoint3d(4, 4, 4)),
  };
  AcDbMInsertBlock* array = nullptr;
  ASSERT_EQ(acdbOpenObject(array, id, AcDb::kForWrite), Acad::eOk);
  for (const AcGeMatrix3d& m : matrices) {
    AcGeMatrix3d before[3][2];
    for (int c = 0; c < 3; ++c)
      for (int r = 0; r < 2; ++r) before[c][r] = m * ImageTransform(*array, c, r);
    ASSERT_EQ(array->transformBy(m), Acad::eOk);
    for (int c = 0; c < 3; ++c)
      for (int r = 0; r < 2; ++r) EXPECT_TRUE(Near(ImageTransform(*array, c, r), before[c][r])) << c << "," << r;
  }
  array->close();
}

TEST_F(MInsert, ArraysGoThroughADxfFile) {
  char dir[] = "/tmp/kel_minsert_XXXXXX";
  ASSERT_NE(mkdtemp(dir), nullptr);
  const std::string path = std::string(dir) + "/array.dxf";
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"CELL\") (10 1.0 2.0 0.0) (70 . 4) (71 . 2) (44 . 1.5) (45 . 2.5)))");
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"CELL\") (10 9.0 9.0 0.0)))");
  ASSERT_EQ(db->saveAs(kelhost::FromUtf8(path).c_str()), Acad::eOk);
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  EXPECT_NE(text.str().find("AcDbMInsertBlock"), std::string::npos);

  auto other = std::make_unique<AcDbDatabase>(false);
  std::wstring error;
  ASSERT_TRUE(kelhost::ReadDrawingFile(other.get(), kelhost::FromUtf8(path), error)) << kelhost::ToUtf8(error);
  std::system(("rm -rf '" + std::string(dir) + "'").c_str());
  auto* ms = kelhost::db::PeekAs<AcDbBlockTableRecord>(other->modelSpaceId());
  ASSERT_NE(ms, nullptr);
  ASSERT_EQ(ms->entityIds().size(), 2u);
  auto* array = kelhost::db::PeekAs<AcDbMInsertBlock>(ms->entityIds()[0]);
  ASSERT_NE(array, nullptr);
  EXPECT_EQ(array->columns(), 4);
  EXPECT_EQ(array->rows(), 2);
  EXPECT_DOUBLE_EQ(array->columnSpacing(), 1.5);
  EXPECT_DOUBLE_EQ(array->rowSpacing(), 2.5);
  EXPECT_EQ(kelhost::db::Peek(ms->entityIds()[1])->isA(), AcDbBlockReference::desc());
}
