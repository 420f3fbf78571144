// Shapes (kept by name; a square box at the position for extents; moved,
// turned, scaled and mirrored), and the annotation classes as a whole in
// entity lists and selection.
#include <cmath>
#include <cstdlib>

#include "../database/database_fixture.h"
#include "entity_test_helpers.h"
#include "db/database_state.h"

namespace {
using entity_tests::kPi;
using entity_tests::LastId;
}  // namespace

class Annotation : public DrawingTest {};

TEST_F(Annotation, ShapeListsKeepTheNameAndCheckTheSize) {
  ASSERT_NE(eval(L"(entmake '((0 . \"SHAPE\") (8 . \"符号\") (10 1.0 2.0 0.0) (40 . 2.5) (2 . \"ARROW\")"
                 L" (50 . 0.5) (41 . 0.8) (51 . 0.1) (39 . 1.0)))"),
            L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 2 (entget (entlast))))"), L"\"ARROW\"");
  EXPECT_EQ(eval(L"(cdr (assoc 41 (entget (entlast))))"), L"0.8");
  EXPECT_EQ(eval(L"(cdr (assoc 39 (entget (entlast))))"), L"1.0");
  AcDbShape* shape = nullptr;
  ASSERT_EQ(acdbOpenObject(shape, LastId(), AcDb::kForRead), Acad::eOk);
  ACHAR* name = shape->name();
  EXPECT_STREQ(name, L"ARROW");
  std::free(name);
  EXPECT_EQ(shape->shapeNumber(), 0) << "numbers come from the shape file the host cannot read";
  EXPECT_NEAR(shape->rotation(), 0.5, 1e-12);
  EXPECT_NEAR(shape->oblique(), 0.1, 1e-12);
  EXPECT_EQ(shape->setSize(3.0), Acad::eNotOpenForWrite);
  shape->close();
  EXPECT_EQ(eval(L"(ssname (ssget \"X\" '((0 . \"SHAPE\"))) 0)"), eval(L"(entlast)"));

  const size_t before = db->state().stubs.size();
  EXPECT_EQ(eval(L"(entmake '((0 . \"SHAPE\") (10 1.0 2.0 0.0) (40 . 2.5)))"), L"nil") << "no name";
  EXPECT_EQ(eval(L"(entmake '((0 . \"SHAPE\") (10 1.0 2.0 0.0) (40 . 0.0) (2 . \"A\")))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"SHAPE\") (10 1.0 2.0 0.0) (41 . 0.0) (2 . \"A\")))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"SHAPE\") (40 . 1.0) (2 . \"A\")))"), L"nil") << "no position";
  EXPECT_EQ(db->state().stubs.size(), before);

  AcDbShape s;
  EXPECT_EQ(s.setSize(-1), Acad::eInvalidInput);
  EXPECT_EQ(s.setWidthFactor(0), Acad::eInvalidInput);
  EXPECT_EQ(s.setName(L""), Acad::eInvalidInput);
  EXPECT_EQ(s.setNormal(AcGeVector3d()), Acad::eInvalidInput);
}

TEST_F(Annotation, ShapeBoxAndTransformations) {
  AcDbShape s(AcGePoint3d(1, 1, 0), 2.0, kPi / 2, 1.5);
  AcDbExtents box;
  ASSERT_EQ(s.getGeomExtents(box), Acad::eOk);
  // Turned a quarter: 3 (size x width factor) along Y, the 2 of its height towards -X.
  EXPECT_NEAR(box.minPoint().x, -1, 1e-12);
  EXPECT_NEAR(box.maxPoint().x, 1, 1e-12);
  EXPECT_NEAR(box.minPoint().y, 1, 1e-12);
  EXPECT_NEAR(box.maxPoint().y, 4, 1e-12);

  ASSERT_EQ(s.transformBy(AcGeMatrix3d::scaling(2.0, AcGePoint3d(1, 1, 0))), Acad::eOk);
  EXPECT_NEAR(s.size(), 4.0, 1e-12);
  ASSERT_EQ(s.transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis)), Acad::eOk);
  EXPECT_NEAR(s.rotation(), kPi, 1e-12);
  EXPECT_NEAR(s.position().x, -1, 1e-12);
  // A mirror turns the shape over: its normal flips, and the box is the
  // mirror image of the one before.
  AcDbExtents before, after;
  s.getGeomExtents(before);
  ASSERT_EQ(s.transformBy(AcGeMatrix3d::mirroring(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis)), Acad::eOk);
  EXPECT_NEAR(s.normal().z, -1.0, 1e-12);
  s.getGeomExtents(after);
  EXPECT_NEAR(after.minPoint().x, -before.maxPoint().x, 1e-9);
  EXPECT_NEAR(after.maxPoint().x, -before.minPoint().x, 1e-9);
  EXPECT_NEAR(after.minPoint().y, before.minPoint().y, 1e-9);
  AcGeMatrix3d shear;
  shear.entry[0][1] = 1.0;
  EXPECT_EQ(s.transformBy(shear), Acad::eCannotScaleNonUniformly);
}

TEST_F(Annotation, ListsMakeTheSameEntityAgain) {
  // Each class's list, made into a new entity, lists the same.
  eval(L"(entmake '((0 . \"MTEXT\") (10 1.0 2.0 0.0) (40 . 3.0) (41 . 12.0) (71 . 5) (1 . \"多行\\\\P文字\")"
       L" (50 . 0.3) (90 . 1) (63 . 2)))");
  eval(L"(entmake '((0 . \"SHAPE\") (10 1.0 2.0 0.0) (40 . 2.5) (2 . \"ARROW\") (50 . 0.5)))");
  eval(L"(entmake '((0 . \"DIMENSION\") (10 0.0 5.0 0.0) (70 . 129) (11 1.0 1.0 0.0) (1 . \"<> m\") (53 . 0.25)"
       L" (13 0.0 0.0 0.0) (14 3.0 4.0 0.0)))");
  eval(L"(setq m (entnext) s (entnext m) d (entnext s))");
  EXPECT_EQ(eval(L"(mapcar '(lambda (e) (cdr (assoc 0 (entget e)))) (list m s d))"),
            L"(\"MTEXT\" \"SHAPE\" \"DIMENSION\")");
  for (const wchar_t* which : {L"m", L"s", L"d"}) {
    const std::wstring get = std::wstring(L"(entget ") + which + L")";
    const std::wstring first = eval(get);
    ASSERT_NE(eval(L"(entmake (vl-remove-if '(lambda (g) (member (car g) '(-1 5 330))) " + get + L"))"), L"nil")
        << which;
    const std::wstring again = eval(L"(entget (entlast))");
    auto body = [](const std::wstring& list) {
      const size_t at = list.find(L"(100 . ");
      return at == std::wstring::npos ? list : list.substr(at);
    };
    EXPECT_EQ(body(again), body(first)) << which;
  }
  // The user's text position (128) stays where it was put.
  EXPECT_EQ(eval(L"(cdr (assoc 11 (entget d)))"), L"(1.0 1.0 0.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget d)))"), L"161");
}
