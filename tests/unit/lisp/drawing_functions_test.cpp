// The AutoLISP functions that work on the drawing, at the cases a
// scenario's single run does not reach: every settable property reads
// back what was set, snaps that depend on a start point or on the part of
// a circle an arc keeps, picks two blocks deep, and DIESEL's edges.
#include <string>
#include <vector>

#include "lisp/diesel.h"
#include "tests/unit/database/database_fixture.h"

namespace {

class DrawingFunctions : public DrawingTest {
 protected:
  // Sets a property and reads it back, as AutoLISP text.
  std::wstring roundTrip(const std::wstring& object, const std::wstring& property, const std::wstring& value) {
    const std::wstring set = eval(L"(setpropertyvalue " + object + L" \"" + property + L"\" " + value + L")");
    if (set != L"nil") return set;
    return eval(L"(getpropertyvalue " + object + L" \"" + property + L"\")");
  }
};

TEST_F(DrawingFunctions, EverySettablePropertyReadsBackWhatWasSet) {
  eval(L"(setq l (entmakex '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0))))");
  eval(L"(setq a (entmakex '((0 . \"ARC\") (10 0.0 0.0 0.0) (40 . 1.0) (50 . 0.0) (51 . 1.0))))");
  eval(L"(setq p (entmakex '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbPolyline\") (90 . 2) (70 . 0) "
       L"(10 0.0 0.0) (10 3.0 4.0))))");
  eval(L"(setq t1 (entmakex '((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 2.5) (1 . \"A\"))))");
  eval(L"(setq pt (entmakex '((0 . \"POINT\") (10 0.0 0.0 0.0))))");
  eval(L"(command \"_.LAYER\" \"_New\" \"Walls\" \"\")");
  struct Case {
    const wchar_t *object, *property, *value, *expected;
  };
  const std::vector<Case> cases = {
      {L"l", L"StartPoint", L"'(1 2 3)", L"(1.0 2.0 3.0)"},
      {L"l", L"EndPoint", L"'(4 5)", L"(4.0 5.0 0.0)"},
      {L"l", L"Thickness", L"2", L"2.0"},
      {L"l", L"Layer", L"\"Walls\"", L"\"Walls\""},
      {L"l", L"Color", L"3", L"3"},
      {L"l", L"LinetypeScale", L"0.5", L"0.5"},
      {L"l", L"LineWeight", L"30", L"30"},
      {L"l", L"Visible", L"0", L"0"},
      {L"a", L"Center", L"'(1 1 0)", L"(1.0 1.0 0.0)"},
      {L"a", L"Radius", L"2.5", L"2.5"},
      {L"a", L"StartAngle", L"0.5", L"0.5"},
      {L"a", L"EndAngle", L"2.0", L"2.0"},
      {L"p", L"Closed", L"1", L"1"},
      {L"p", L"ConstantWidth", L"0.25", L"0.25"},
      {L"p", L"Elevation", L"7", L"7.0"},
      {L"t1", L"TextString", L"\"Beam B-3\"", L"\"Beam B-3\""},
      {L"t1", L"Height", L"5", L"5.0"},
      {L"t1", L"Rotation", L"1.5", L"1.5"},
      {L"t1", L"WidthFactor", L"0.8", L"0.8"},
      {L"t1", L"TextStyleName", L"\"Standard\"", L"\"Standard\""},
      {L"t1", L"InsertionPoint", L"'(9 8 0)", L"(9.0 8.0 0.0)"},
      {L"pt", L"Position", L"'(1 2 3)", L"(1.0 2.0 3.0)"},
  };
  for (const Case& c : cases) EXPECT_EQ(roundTrip(c.object, c.property, c.value), c.expected) << c.object << L" " << c.property;
  // Properties that follow from others.
  EXPECT_EQ(eval(L"(getpropertyvalue a \"TotalAngle\")"), L"1.5");
  EXPECT_EQ(eval(L"(getpropertyvalue p \"NumberOfVertices\")"), L"2");
  EXPECT_EQ(eval(L"(getpropertyvalue p \"Length\")"), L"10.0");  // closed: there and back
  // Refusals leave the object as it was.
  EXPECT_EQ(eval(L"(vl-catch-all-error-message (vl-catch-all-apply 'setpropertyvalue (list l \"Layer\" \"NoSuchLayer\")))"),
            L"\"ADS request error\"");
  EXPECT_EQ(eval(L"(getpropertyvalue l \"Layer\")"), L"\"Walls\"");
  EXPECT_EQ(eval(L"(vl-catch-all-error-message (vl-catch-all-apply 'getpropertyvalue (list pt \"Radius\")))"),
            L"\"ADS request error\"");
  eval(L"(entdel l)");
  EXPECT_EQ(eval(L"(vl-catch-all-error-message (vl-catch-all-apply 'getpropertyvalue (list l \"Layer\")))"),
            L"\"ADS request error\"");
}

TEST_F(DrawingFunctions, SnapsFromTheLastPointAndWithinAnArc) {
  eval(L"(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 5.0)))");
  // Tangent from (10,0): the touching points at 60 degrees either side.
  eval(L"(setvar \"LASTPOINT\" '(10.0 0.0 0.0))");
  EXPECT_EQ(eval(L"(mapcar '(lambda (x) (/ (fix (+ (* x 1000.0) 0.5)) 1000.0)) (osnap '(2.6 4.2) \"_tan\"))"),
            L"(2.5 4.33 0.0)");
  EXPECT_EQ(eval(L"(osnap '(2.6 4.2) \"_per\")"), L"(5.0 0.0 0.0)");  // the circle point on the line through the centre
  eval(L"(entmake '((0 . \"ARC\") (10 100.0 0.0 0.0) (40 . 5.0) (50 . 0.0) (51 . 3.14159265358979)))");
  // The arc keeps the quadrants at 0, 90 and 180 degrees, not the one at 270.
  EXPECT_EQ(eval(L"(osnap '(100.2 -4.9) \"_qua\")"), L"nil");
  EXPECT_EQ(eval(L"(osnap '(99.0 4.9) \"_qua\")"), L"(100.0 5.0 0.0)");
  EXPECT_EQ(eval(L"(osnap '(104.9 0.2) \"_end\")"), L"(105.0 0.0 0.0)");
  EXPECT_EQ(eval(L"(osnap '(100.5 4.9) \"_mid\")"), L"(100.0 5.0 0.0)");
  // An intersection away from the point does not snap, though both lines pass near it.
  eval(L"(entmake '((0 . \"LINE\") (10 200.0 0.0 0.0) (11 300.0 1.0 0.0)))");
  eval(L"(entmake '((0 . \"LINE\") (10 200.0 0.5 0.0) (11 300.0 0.0 0.0)))");
  EXPECT_EQ(eval(L"(osnap '(201.0 0.3) \"_int\")"), L"nil");
}

TEST_F(DrawingFunctions, PicksTwoBlocksDeep) {
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"BOLT\") (70 . 0) (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"ENDBLK\")))");
  eval(L"(entmake '((0 . \"BLOCK\") (2 . \"PLATE\") (70 . 0) (10 0.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"INSERT\") (2 . \"BOLT\") (10 10.0 0.0 0.0)))");
  eval(L"(entmake '((0 . \"ENDBLK\")))");
  eval(L"(setq outer (entmakex '((0 . \"INSERT\") (2 . \"PLATE\") (10 0.0 50.0 0.0) (50 . 1.5707963267948966))))");
  // PLATE turned 90 degrees at (0,50): BOLT's line runs from (0,60) to (0,61).
  eval(L"(setq pick (nentselp '(0.0 60.5)))");
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget (car pick))))"), L"\"LINE\"");
  EXPECT_EQ(eval(L"(length (cadddr pick))"), L"2");
  EXPECT_EQ(eval(L"(eq (cadr (cadddr pick)) outer)"), L"T");  // innermost first, the outer reference last
  EXPECT_EQ(eval(L"(mapcar '(lambda (r) (mapcar '(lambda (x) (/ (fix (* x 1000.0)) 1000.0)) r)) (caddr pick))"),
            L"((0.0 -1.0 0.0 0.0) (1.0 0.0 0.0 60.0) (0.0 0.0 1.0 0.0) (0.0 0.0 0.0 1.0))");
  EXPECT_EQ(eval(L"(nentselp '(500.0 500.0))"), L"nil");
}

TEST(Diesel, NestingQuotingAndRefusals) {
  using kelhost::lisp::EvaluateDiesel;
  EXPECT_EQ(EvaluateDiesel(L"a$(+,1,$(*,2,3))b"), L"a7b");
  EXPECT_EQ(EvaluateDiesel(L"$(eq,\"x,y\",x)"), L"0");  // the comma in quotes belongs to the argument
  EXPECT_EQ(EvaluateDiesel(L"$(eval,\"$(+,1,1)\")"), L"2");
  EXPECT_EQ(EvaluateDiesel(L"$(substr,abc,0)"), L"$?");
  EXPECT_EQ(EvaluateDiesel(L"$(if,1,yes)$(if,0,yes)"), L"yes");
  EXPECT_EQ(EvaluateDiesel(L"$(+,1,x)"), L"$?");
  std::wstring deep;
  for (int i = 0; i < 200; ++i) deep += L"$(+,1,";
  deep += L"0";
  for (int i = 0; i < 200; ++i) deep += L")";
  EXPECT_EQ(EvaluateDiesel(deep).substr(0, 2), L"$?");  // too deep: refused, not a crash
  EXPECT_EQ(EvaluateDiesel(L"no calls, $ alone"), L"no calls, $ alone");
}

}  // namespace
