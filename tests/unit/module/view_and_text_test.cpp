// The current view's rectangle and what follows from it, the family's text
// height and dimension precision kept in USERR5/USERI4, text measured by
// textbox, readable angles and the area of a chain of points.
#include <gtest/gtest.h>

#include <cmath>

#include "db/stub.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

class ViewAndText : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    ASSERT_TRUE(LoadModule());
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    EditorModuleTest::TearDown();
  }
  // ZOOM Center: the view's centre and height.
  static void ZoomCenter(double x, double y, double height) {
    const ads_point centre = {x, y, 0.0};
    ASSERT_EQ(acedCommandS(RTSTR, L"_.ZOOM", RTSTR, L"_C", RT3DPOINT, centre, RTREAL, height, RTNONE), RTNORM);
  }
  // The view's width for a height: the screen's shape.
  static double WidthFor(double height) {
    resbuf rb{};
    EXPECT_EQ(acedGetVar(L"SCREENSIZE", &rb), RTNORM);
    return height * rb.resval.rpoint[0] / rb.resval.rpoint[1];
  }
};

TEST_F(ViewAndText, TheScreenRectanglePointsInViewAndThePickBox) {
  ZoomCenter(50.0, 40.0, 20.0);
  const double halfWidth = WidthFor(20.0) / 2.0;
  double lowerLeft[3], upperRight[3];
  KEL::GetScreenLBRT(lowerLeft, upperRight);
  EXPECT_NEAR(lowerLeft[0], 50.0 - halfWidth, 1e-9);
  EXPECT_NEAR(lowerLeft[1], 30.0, 1e-9);
  EXPECT_NEAR(upperRight[0], 50.0 + halfWidth, 1e-9);
  EXPECT_NEAR(upperRight[1], 50.0, 1e-9);

  // The edges belong to the view (the top one is exact); z does not count.
  double inside[3] = {50.0 + halfWidth - 1e-9, 50.0, 99.0}, left[3] = {50.0 - halfWidth - 0.001, 40.0, 0.0};
  EXPECT_TRUE(KEL::IsPtInView(inside));
  EXPECT_FALSE(KEL::IsPtInView(left));

  // The view's height over a fixed 200 pixels, times PICKBOX (0 as 3).
  EXPECT_NEAR(KEL::GetPickBoxWidth(), 20.0 / 200.0 * 3, 1e-12);
  KEL::SetCADVar(L"PICKBOX", 0);
  EXPECT_NEAR(KEL::GetPickBoxWidth(), 0.3, 1e-12);
}

TEST_F(ViewAndText, TextHeightIsKeptInUserr5WithThreeAndAHalfForNone) {
  EXPECT_EQ(Var(L"USERR5"), L"0.0");
  EXPECT_EQ(KEL::GetTextHigh(), 3.5);
  EXPECT_EQ(Var(L"USERR5"), L"3.5");

  EXPECT_TRUE(KEL::SetTextHigh(5.0));
  EXPECT_EQ(KEL::GetTextHigh(), 5.0);
  // Not above the ZERO tolerance: refused, nothing written.
  EXPECT_FALSE(KEL::SetTextHigh(0.0));
  EXPECT_FALSE(KEL::SetTextHigh(KEL::ZERO() / 2));
  EXPECT_EQ(Var(L"USERR5"), L"5.0");
}

TEST_F(ViewAndText, DimensionPrecisionIsKeptInUseri4WithThreeForTooMany) {
  EXPECT_EQ(KEL::GetBZXSW(), 0);
  KEL::SetCADVar(L"USERI4", 7);
  EXPECT_EQ(KEL::GetBZXSW(), 3);
  EXPECT_EQ(Var(L"USERI4"), L"3");
  KEL::SetCADVar(L"USERI4", 6);
  EXPECT_EQ(KEL::GetBZXSW(), 3);
  KEL::SetCADVar(L"USERI4", -2);
  EXPECT_EQ(KEL::GetBZXSW(), -2);  // given as it is
  EXPECT_EQ(Var(L"USERI4"), L"-2");

  EXPECT_FALSE(KEL::SetBZXSW(-1));
  EXPECT_EQ(Var(L"USERI4"), L"-2");
  EXPECT_TRUE(KEL::SetBZXSW(0));
  EXPECT_EQ(Var(L"USERI4"), L"0");
}

TEST_F(ViewAndText, TextWidthFollowsHeightAndWidthFactorWithTheFamilysFactorForNegative) {
  double w1 = 0.0, w2 = 0.0, w3 = 0.0;
  ASSERT_TRUE(KEL::GetTextWidth(L"Width 42", 2.5, w1, 1.0));
  ASSERT_TRUE(KEL::GetTextWidth(L"Width 42", 5.0, w2, 0.5));
  EXPECT_GT(w1, 2.5);
  EXPECT_NEAR(w2, w1, 1e-9);
  ASSERT_TRUE(KEL::GetTextWidth(L"Width 42", 2.5, w3));
  EXPECT_NEAR(w3, w1, 1e-9);  // no factor configured: 1.0

  WriteFile("install/KelSys.ini", "[System]\r\nTextWidthFactor=0.7\r\n");
  ASSERT_TRUE(KEL::GetTextWidth(L"Width 42", 2.5, w3, -1.0));
  EXPECT_NEAR(w3, w1 * 0.7, 1e-9);

  double untouched = 9.0;
  EXPECT_FALSE(KEL::GetTextWidth(nullptr, 2.5, untouched, 1.0));
  EXPECT_EQ(untouched, 9.0);
}

TEST_F(ViewAndText, TextRectangleTurnsWithTheTextAndTakesTheMargins) {
  Eval(L"(entmake '((0 . \"TEXT\") (10 10.0 20.0 0.0) (40 . 2.0) (1 . \"HIH\") (50 . 1.5707963267948966)))");
  ads_name text;
  acdbEntLast(text);
  resbuf* list = acdbEntGet(text);
  ads_point low, high;
  ASSERT_EQ(acedTextBox(list, low, high), RTNORM);
  acutRelRb(list);
  const double x0 = low[0], y0 = low[1], x1 = high[0], y1 = high[1];
  double ll[3], lr[3], ur[3], ul[3], centre[3];
  ASSERT_EQ(KEL::GetTextRect(text, 1.0, 0.5, ll, lr, ur, ul, centre), 1);
  // A quarter turn: the text's x runs up the drawing, its y to the left.
  EXPECT_NEAR(ll[0], 10.0 - (y0 - 0.5), 1e-9);
  EXPECT_NEAR(ll[1], 20.0 + (x0 - 1.0), 1e-9);
  EXPECT_NEAR(lr[1], 20.0 + (x1 + 1.0), 1e-9);
  EXPECT_NEAR(ur[0], 10.0 - (y1 + 0.5), 1e-9);
  EXPECT_NEAR(centre[0], (ll[0] + ur[0]) / 2, 1e-9);

  double untouched[3] = {7, 7, 7};
  Eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  acdbEntLast(text);
  EXPECT_EQ(KEL::GetTextRect(text, 0, 0, untouched, lr, ur, ul, centre), 0);
  EXPECT_EQ(untouched[0], 7.0);
}

TEST_F(ViewAndText, ReadableAnglesTurnTextThatWouldReadUpsideDown) {
  double readable = -1, perpendicular = -1;
  KEL::GetRightTopAngles(kPi, readable, perpendicular);
  EXPECT_NEAR(readable, 0.0, 1e-12);
  EXPECT_NEAR(perpendicular, kPi / 2, 1e-12);
  // Exactly vertical text keeps reading upwards.
  KEL::GetRightTopAngles(kPi / 2, readable, perpendicular);
  EXPECT_NEAR(readable, kPi / 2, 1e-12);
  EXPECT_NEAR(perpendicular, kPi, 1e-12);
  // Downwards is 3pi/2 and reads upwards; negative angles come into range.
  KEL::GetRightTopAngles(-kPi / 2, readable, perpendicular);
  EXPECT_NEAR(readable, kPi / 2, 1e-12);
  EXPECT_NEAR(perpendicular, kPi, 1e-12);
  KEL::GetRightTopAngles(-7.0, readable, perpendicular);
  EXPECT_NEAR(readable, 4 * kPi - 7.0, 1e-12);
  // Above a whole turn the family's range rule leaves angles as they are.
  KEL::GetRightTopAngles(7.0, readable, perpendicular);
  EXPECT_EQ(readable, 7.0);
  EXPECT_NEAR(perpendicular, 7.0 + kPi / 2, 1e-12);
}

TEST_F(ViewAndText, AreaOfAChainOfPoints) {
  // Whatever the items' type codes, their points count.
  const ads_point a = {0, 0, 0}, b = {10, 0, 5}, c = {10, 10, 0}, d = {0, 10, 0};
  resbuf* square = acutBuildList(RTPOINT, a, RT3DPOINT, b, 10, c, RTPOINT, d, 0);
  EXPECT_EQ(KEL::JSPTBArea(square), 100.0);
  acutRelRb(square->rbnext->rbnext);
  square->rbnext->rbnext = nullptr;
  EXPECT_EQ(KEL::JSPTBArea(square), 0.0);
  EXPECT_EQ(KEL::JSPTBArea(nullptr), 0.0);
  acutRelRb(square);
}

}  // namespace
