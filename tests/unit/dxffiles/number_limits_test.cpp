// Numbers at the edges of what a double holds. What the writer writes the
// reader reads: subnormal values come back exactly, and infinities and
// NaNs never get into a drawing (or, if one does, into a file).
#include <cmath>
#include <limits>

#include "arx/dbents.h"
#include "dxf_fixture.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

}  // namespace

TEST_F(DxfFileTest, SubnormalNumbersSaveAndReopenExactly) {
  ASSERT_EQ(eval(L"(progn (entmake (list (cons 0 \"CIRCLE\") (list 10 0.0 0.0 0.0) (cons 40 1e-320))) "
                 L"(entmake (list (cons 0 \"LINE\") (list 10 -4.9e-324 2.2250738585072014e-308 0.0) (list 11 1.0 1.0 1e-310))) "
                 L"(setvar \"USERR1\" 1e-320) T)"),
            L"T");
  saveAndReopen();
  EXPECT_EQ(eval(L"(= (cdr (assoc 40 (entget (entlast)))) 1e-320)"), L"nil");  // entlast is the line
  EXPECT_EQ(eval(L"(= (cdr (assoc 40 (entget (entnext)))) 1e-320)"), L"T");
  EXPECT_EQ(eval(L"(equal (cdr (assoc 10 (entget (entlast)))) (list -4.9e-324 2.2250738585072014e-308 0.0) 0.0)"), L"T");
  EXPECT_EQ(eval(L"(= (cadddr (assoc 11 (entget (entlast)))) 1e-310)"), L"T");
  EXPECT_EQ(eval(L"(= (getvar \"USERR1\") 1e-320)"), L"T");
}

TEST_F(DxfFileTest, NumbersBelowTheSmallestSubnormalReadAsZeroAndOverflowIsRefused) {
  const std::string good = Dxf(Drawing2013({{0, "CIRCLE"}, {5, "A1"}, {8, "0"}, {10, "0"}, {20, "1e-400"}, {30, "0"}, {40, "1"}}));
  writeText("tiny.dxf", good);
  std::wstring error;
  ASSERT_TRUE(kelhost::ReadDrawingFile(db.get(), wpath("tiny.dxf"), error)) << kelhost::ToUtf8(error);
  EXPECT_EQ(eval(L"(cadr (assoc 10 (entget (handent \"A1\"))))"), L"0.0");
  for (const char* bad : {"1e400", "inf", "-inf", "nan", "-nan", "1.#INF"}) {
    std::string text = good;
    text.replace(text.find("1e-400"), 6, bad);
    writeText("bad.dxf", text);
    EXPECT_FALSE(kelhost::ReadDrawingFile(db.get(), wpath("bad.dxf"), error)) << bad;
    EXPECT_NE(kelhost::ToUtf8(error).find("bad number"), std::string::npos) << bad << ": " << kelhost::ToUtf8(error);
  }
}

TEST_F(DxfFileTest, EntityListsAndVariablesRefuseInfinitiesAndNaNs) {
  // The reproducer: a coordinate past the largest double.
  EXPECT_EQ(eval(L"(entmake (list (cons 0 \"LINE\") (list 10 0.0 0.0 0.0) (list 11 (* 1e308 10.0) 0.0 0.0)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake (list (cons 0 \"CIRCLE\") (list 10 0.0 0.0 0.0) (cons 40 (- (* 1e308 10.0) (* 1e308 10.0)))))"),
            L"nil");
  EXPECT_EQ(eval(L"(entmakex (list (cons 0 \"TEXT\") (list 10 0.0 0.0 0.0) (cons 40 (* -1e308 10.0)) (cons 1 \"x\")))"),
            L"nil");
  EXPECT_EQ(eval(L"(progn (regapp \"KELAPP\") (entmake (list (cons 0 \"POINT\") (list 10 0.0 0.0 0.0) "
                 L"(list -3 (list \"KELAPP\" (cons 1040 (* 1e308 10.0)))))))"),
            L"nil");
  EXPECT_TRUE(modelSpace().empty());
  // entmod leaves the entity as it was.
  ASSERT_EQ(eval(L"(progn (entmake '((0 . \"CIRCLE\") (10 1.0 2.0 0.0) (40 . 3.0))) T)"), L"T");
  EXPECT_EQ(eval(L"(entmod (subst (cons 40 (* 1e308 10.0)) (assoc 40 (entget (entlast))) (entget (entlast))))"), L"nil");
  EXPECT_EQ(eval(L"(entmod (subst (list 10 1.0 (* 1e308 10.0) 0.0) (assoc 10 (entget (entlast))) (entget (entlast))))"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 40 (entget (entlast))))"), L"3.0");
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget (entlast))))"), L"(1.0 2.0 0.0)");
  // setvar rejects the value, and the variable keeps its own.
  EXPECT_EQ(eval(L"(setvar \"USERR1\" 2.5)"), L"2.5");
  EXPECT_NE(eval(L"(setvar \"USERR1\" (* 1e308 10.0))").find(L"rejected"), std::wstring::npos);
  EXPECT_NE(eval(L"(setvar \"LASTPOINT\" (list 0.0 (* 1e308 10.0) 0.0))").find(L"rejected"), std::wstring::npos);
  EXPECT_EQ(eval(L"(getvar \"USERR1\")"), L"2.5");
  resbuf value{};
  value.restype = RTREAL;
  value.resval.rreal = kNaN;
  EXPECT_NE(acedSetVar(L"USERR2", &value), RTNORM);
  saveAndReopen();
  EXPECT_EQ(modelSpace().size(), 1u);
}

TEST_F(DxfFileTest, DatabaseSettersRefuseInfinitiesAndNaNs) {
  auto circle = std::make_unique<AcDbCircle>(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, 3.0);
  EXPECT_EQ(circle->setRadius(kInf), Acad::eInvalidInput);
  EXPECT_EQ(circle->setRadius(kNaN), Acad::eInvalidInput);
  EXPECT_EQ(circle->setCenter(AcGePoint3d(kNaN, 0, 0)), Acad::eInvalidInput);
  EXPECT_EQ(circle->setThickness(-kInf), Acad::eInvalidInput);
  EXPECT_EQ(circle->setNormal(AcGeVector3d(0, kInf, 1)), Acad::eInvalidInput);
  EXPECT_EQ(circle->radius(), 3.0);
  EXPECT_EQ(circle->center(), AcGePoint3d(1, 2, 0));
  auto line = std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0));
  EXPECT_EQ(line->setEndPoint(AcGePoint3d(0, 0, kInf)), Acad::eInvalidInput);
  EXPECT_EQ(line->endPoint(), AcGePoint3d(1, 1, 0));
  auto text = std::make_unique<AcDbText>();
  EXPECT_EQ(text->setHeight(kInf), Acad::eInvalidInput);
  EXPECT_EQ(text->setRotation(kNaN), Acad::eInvalidInput);
  EXPECT_EQ(text->setPosition(AcGePoint3d(kInf, 0, 0)), Acad::eInvalidInput);
  auto polyline = std::make_unique<AcDbPolyline>();
  EXPECT_EQ(polyline->addVertexAt(0, AcGePoint2d(0, 0)), Acad::eOk);
  EXPECT_EQ(polyline->setPointAt(0, AcGePoint2d(kNaN, 0)), Acad::eInvalidInput);
  EXPECT_EQ(polyline->setBulgeAt(0, kInf), Acad::eInvalidInput);
  EXPECT_EQ(db->setLtscale(kInf), Acad::eInvalidInput);
  EXPECT_EQ(db->setTextsize(kNaN), Acad::eInvalidInput);
}

TEST_F(DxfFileTest, ASaveThatWouldWriteAnInfinityIsRefusedAndWritesNothing) {
  // A transformation that overflows the coordinates: the one way left
  // for such a value into the drawing.
  ASSERT_EQ(eval(L"(progn (entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1e308 1.0 0.0))) T)"), L"T");
  AcDbObjectId id = modelSpace().front();
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
  AcGeMatrix3d scale;
  scale.setToScaling(10.0);
  entity->transformBy(scale);
  entity->close();
  writeText("drawing.dxf", "what was there");
  std::wstring error;
  EXPECT_FALSE(kelhost::WriteDrawingFile(db.get(), wpath("drawing.dxf"), error));
  EXPECT_NE(kelhost::ToUtf8(error).find("holds a number that is not finite"), std::string::npos) << kelhost::ToUtf8(error);
  EXPECT_EQ(readText("drawing.dxf"), "what was there");
}
