// Extents of entities, id arrays and selection sets: block references by
// their best fit or, failing that, by their exploded pieces; the empty box
// when nothing can be measured.
#include <gtest/gtest.h>

#include <array>

#include "db/stub.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

class EntityBounds : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    ASSERT_TRUE(LoadModule());
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    EditorModuleTest::TearDown();
  }
  // Makes the entity and gives its id.
  AcDbObjectId Make(const std::wstring& list) {
    EXPECT_NE(Eval(L"(entmake '" + list + L")"), L"nil") << kelhost::ToUtf8(list);
    ads_name last;
    EXPECT_EQ(acdbEntLast(last), RTNORM);
    AcDbObjectId id;
    EXPECT_EQ(acdbGetObjectId(id, last), Acad::eOk);
    return id;
  }
  static void ExpectCorners(const double* min, const double* max, std::array<double, 6> want) {
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(min[i], want[i], 1e-9) << "min " << i;
      EXPECT_NEAR(max[i], want[3 + i], 1e-9) << "max " << i;
    }
  }
  int EntityCount() { return std::stoi(Eval(L"(sslength (ssget \"X\"))")); }
};

TEST_F(EntityBounds, OneEntityByIdOrName) {
  const AcDbObjectId line = Make(L"((0 . \"LINE\") (10 1.0 2.0 0.0) (11 4.0 -1.0 3.0))");
  double min[3], max[3];
  ASSERT_EQ(KEL::GetEntBound(line, min, max), 1);
  ExpectCorners(min, max, {1, -1, 0, 4, 2, 3});

  // An erased entity cannot be opened: nothing, and the outputs untouched.
  Eval(L"(entdel (entlast))");
  min[0] = 42.0;
  EXPECT_EQ(KEL::GetEntBound(line, min, max), 0);
  EXPECT_EQ(min[0], 42.0);
  EXPECT_EQ(KEL::GetEntBound(AcDbObjectId::kNull, min, max), 0);
}

TEST_F(EntityBounds, BlockReferencesAreMeasuredByTheirBestFitWithoutExploding) {
  Eval(L"(entmake '((0 . \"BLOCK\") (2 . \"RING\") (70 . 0) (10 0.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 1.0)))");
  Eval(L"(entmake '((0 . \"ENDBLK\")))");
  // Scaled by 2 and turned a quarter: the circle stays a circle of radius 2.
  const AcDbObjectId ref =
      Make(L"((0 . \"INSERT\") (2 . \"RING\") (10 10.0 5.0 0.0) (41 . 2.0) (42 . 2.0) (43 . 2.0) (50 . 1.5707963267948966))");
  double min[3], max[3];
  ASSERT_EQ(KEL::GetEntBound(ref, min, max), 1);
  ExpectCorners(min, max, {8, 3, 0, 12, 7, 0});
  EXPECT_EQ(EntityCount(), 1);
}

TEST_F(EntityBounds, AReferenceWithoutBestFitIsMeasuredByItsPiecesWhichStay) {
  // Attribute definitions do not show in a reference, so this block has
  // nothing to fit; exploded, the definition is a piece of its own.
  Eval(L"(entmake '((0 . \"BLOCK\") (2 . \"ASK\") (70 . 2) (10 0.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"ATTDEF\") (10 0.0 0.0 0.0) (40 . 1.0) (1 . \"XX\") (3 . \"Mark?\") (2 . \"MARK\") (70 . 0)))");
  Eval(L"(entmake '((0 . \"ENDBLK\")))");
  const AcDbObjectId ref = Make(L"((0 . \"INSERT\") (2 . \"ASK\") (10 100.0 50.0 0.0))");
  double min[3], max[3];
  ASSERT_EQ(KEL::GetEntBound(ref, min, max), 1);
  EXPECT_EQ(EntityCount(), 2);
  EXPECT_EQ(Eval(L"(cdr (assoc 0 (entget (entlast))))"), L"\"ATTDEF\"");
  EXPECT_EQ(Eval(L"(cdr (assoc 10 (entget (entlast))))"), L"(100.0 50.0 0.0)");
  // The reference's extents are the piece's.
  ads_name piece;
  acdbEntLast(piece);
  AcDbExtents own;
  ASSERT_EQ(KEL::GetEntBound(piece, own), 1);
  ExpectCorners(min, max, {own.minPoint().x, own.minPoint().y, own.minPoint().z, own.maxPoint().x,
                           own.maxPoint().y, own.maxPoint().z});
  EXPECT_GT(max[0], 100.5);
  // Measured again, it explodes again.
  ASSERT_EQ(KEL::GetEntBound(ref, min, max), 1);
  EXPECT_EQ(EntityCount(), 3);

  // An empty block has no pieces either: nothing.
  Eval(L"(entmake '((0 . \"BLOCK\") (2 . \"VOID\") (70 . 0) (10 0.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"ENDBLK\")))");
  const AcDbObjectId empty = Make(L"((0 . \"INSERT\") (2 . \"VOID\") (10 0.0 0.0 0.0))");
  EXPECT_EQ(KEL::GetEntBound(empty, min, max), 0);
  EXPECT_EQ(EntityCount(), 4);
}

TEST_F(EntityBounds, ArraysUniteWhatCanBeMeasuredAndGiveTheEmptyBoxForNothing) {
  AcArray<AcDbObjectId> ids;
  AcGePoint3d min, max;
  EXPECT_EQ(KEL::GetEntBound(ids, min, max), 0);

  ids.append(Make(L"((0 . \"LINE\") (10 0.0 0.0 0.0) (11 5.0 5.0 0.0))"));
  Eval(L"(entdel (entlast))");
  ids.append(Make(L"((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 1.0) (1 . \"\"))"));
  ASSERT_EQ(KEL::GetEntBound(ids, min, max), 1);
  EXPECT_EQ(min, AcGePoint3d(1e20, 1e20, 1e20));
  EXPECT_EQ(max, AcGePoint3d(-1e20, -1e20, -1e20));

  ids.append(Make(L"((0 . \"CIRCLE\") (10 -2.0 3.0 1.0) (40 . 1.0))"));
  ids.append(Make(L"((0 . \"POINT\") (10 7.0 0.0 0.0))"));
  ASSERT_EQ(KEL::GetEntBound(ids, min, max), 1);
  EXPECT_EQ(min, AcGePoint3d(-3, 0, 0));
  EXPECT_EQ(max, AcGePoint3d(7, 4, 1));
}

TEST_F(EntityBounds, SelectionSets) {
  ads_name set;
  ASSERT_EQ(acedSSAdd(nullptr, nullptr, set), RTNORM);
  double min[3] = {0, 0, 0}, max[3] = {0, 0, 0};
  EXPECT_EQ(KEL::GetEntBound(set, min, max), 0) << "an empty set";
  Make(L"((0 . \"LINE\") (10 -1.0 0.0 0.0) (11 1.0 2.0 0.0))");
  Make(L"((0 . \"LINE\") (10 3.0 -4.0 0.0) (11 3.0 0.0 0.0))");
  ads_name all;
  ASSERT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, all), RTNORM);
  ASSERT_EQ(KEL::GetEntBound(all, min, max), 1);
  ExpectCorners(min, max, {-1, -4, 0, 3, 2, 0});
  acedSSFree(all);
  EXPECT_EQ(KEL::GetEntBound(all, min, max), 0) << "a freed set";
  acedSSFree(set);
}

TEST_F(EntityBounds, RectangleAroundAnEntity) {
  const AcDbObjectId line = Make(L"((0 . \"LINE\") (10 2.0 1.0 0.0) (11 6.0 4.0 0.0))");
  bEntityRectStruct rect{};
  ASSERT_TRUE(KEL::GetBEntityRect(line, &rect));
  EXPECT_EQ(rect.lowerLeft, AcGePoint3d(2, 1, 0));
  EXPECT_EQ(rect.upperRight, AcGePoint3d(6, 4, 0));
  EXPECT_EQ(rect.centre, AcGePoint3d(4, 2.5, 0));
  EXPECT_EQ(rect.width, 4.0);
  EXPECT_EQ(rect.height, 3.0);
  EXPECT_FALSE(KEL::GetBEntityRect(AcDbObjectId::kNull, &rect));
}

}  // namespace
