// Coordinate transformation between the world, the drawing's UCS, the view
// and entities' object coordinate systems.
#include <cmath>

#include "arx/acedads.h"
#include "kelhost/sysvars.h"
#include "tests/unit/database/database_fixture.h"

namespace {

class TransTest : public DrawingTest {
 protected:
  void setPoint(const wchar_t* name, double x, double y, double z) {
    resbuf rb{};
    rb.restype = RT3DPOINT;
    rb.resval.rpoint[0] = x;
    rb.resval.rpoint[1] = y;
    rb.resval.rpoint[2] = z;
    ASSERT_EQ(kelhost::sysvars::SetHostVar(name, &rb), RTNORM) << name;
  }
  static resbuf Code(short c) {
    resbuf rb{};
    rb.restype = RTSHORT;
    rb.resval.rint = c;
    return rb;
  }
  void expectPoint(const ads_point p, double x, double y, double z) {
    EXPECT_NEAR(p[0], x, 1e-9);
    EXPECT_NEAR(p[1], y, 1e-9);
    EXPECT_NEAR(p[2], z, 1e-9);
  }
};

TEST_F(TransTest, UcsFromTheDrawingVariables) {
  const resbuf wcs = Code(0), ucs = Code(1);
  ads_point p = {1, 2, 3}, out, back;
  ASSERT_EQ(acedTrans(p, &wcs, &ucs, 0, out), RTNORM);
  expectPoint(out, 1, 2, 3);  // the world UCS of a new drawing

  // UCS at (10,20,0) turned 90 degrees about Z.
  setPoint(L"UCSORG", 10, 20, 0);
  setPoint(L"UCSXDIR", 0, 1, 0);
  setPoint(L"UCSYDIR", -1, 0, 0);
  resbuf rb{};
  ASSERT_EQ(acedGetVar(L"WORLDUCS", &rb), RTNORM);
  EXPECT_EQ(rb.resval.rint, 0);
  ASSERT_EQ(acedTrans(p, &ucs, &wcs, 0, out), RTNORM);
  expectPoint(out, 8, 21, 3);
  ASSERT_EQ(acedTrans(out, &wcs, &ucs, 0, back), RTNORM);
  expectPoint(back, 1, 2, 3);
  ASSERT_EQ(acedTrans(p, &ucs, &wcs, 1, out), RTNORM);  // a displacement ignores the origin
  expectPoint(out, -2, 1, 3);

  EXPECT_EQ(eval(L"(trans '(1 2) 1 0)"), L"(8.0 21.0 0.0)");
  EXPECT_EQ(eval(L"(trans '(8 21 3) 0 1)"), L"(1.0 2.0 3.0)");
  EXPECT_EQ(eval(L"(trans '(1 0 0) 1 0 T)"), L"(0.0 1.0 0.0)");
}

TEST_F(TransTest, ObjectAndDisplayCoordinates) {
  const resbuf wcs = Code(0), dcs = Code(2);
  ads_point p = {3, 4, 5}, out, back;
  ASSERT_EQ(acedTrans(p, &wcs, &dcs, 0, out), RTNORM);
  expectPoint(out, 3, 4, 5);  // plan view of the world

  // Looking along world X at (1,0,0): display X is world Y, display Y world Z.
  setPoint(L"VIEWDIR", 1, 0, 0);
  setPoint(L"TARGET", 1, 0, 0);
  ASSERT_EQ(acedTrans(p, &wcs, &dcs, 0, out), RTNORM);
  expectPoint(out, 4, 5, 2);
  ASSERT_EQ(acedTrans(out, &dcs, &wcs, 0, back), RTNORM);
  expectPoint(back, 3, 4, 5);

  // The object coordinates of extrusion (0,0,-1): X is minus world X.
  resbuf down{};
  down.restype = RT3DPOINT;
  down.resval.rpoint[2] = -1;
  ASSERT_EQ(acedTrans(p, &down, &wcs, 0, out), RTNORM);
  expectPoint(out, -3, 4, -5);
  // A tilted extrusion: the round trip is exact and the OCS Z is the extrusion.
  EXPECT_EQ(eval(L"(setq c (entmakex '((0 . \"CIRCLE\") (10 1.0 2.0 3.0) (40 . 1.0) (210 0.6 0.0 0.8))))") != L"nil",
            true);
  EXPECT_EQ(eval(L"(mapcar '(lambda (x) (/ (fix (* x 1000.0)) 1000.0)) (trans '(0 0 1) c 0))"), L"(0.6 0.0 0.8)");
  EXPECT_EQ(eval(L"(mapcar '(lambda (a b) (equal a b 1e-9)) (trans (trans '(7 8 9) 0 c) c 0) '(7 8 9))"),
            L"(T T T)");
  EXPECT_EQ(eval(L"(mapcar '(lambda (a b) (equal a b 1e-9)) (trans '(7 8 9) '(0.6 0 0.8) 0) (trans '(7 8 9) c 0))"),
            L"(T T T)");
  // A line has no extrusion: its coordinates are the world's.
  EXPECT_EQ(eval(L"(trans '(7 8 9) (entmakex '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0))) 0)"),
            L"(7.0 8.0 9.0)");

  resbuf bad = Code(5), zero{};
  zero.restype = RT3DPOINT;
  EXPECT_EQ(acedTrans(p, &bad, &wcs, 0, out), RTERROR);
  EXPECT_EQ(acedTrans(p, &zero, &wcs, 0, out), RTERROR);  // no direction
  EXPECT_EQ(acedTrans(p, nullptr, &wcs, 0, out), RTERROR);
  EXPECT_EQ(eval(L"(trans '(1 2) 7 0)"), L"error: bad argument value: 7");
  EXPECT_EQ(eval(L"(trans \"x\" 0 1)"), L"error: bad argument type: point: \"x\"");
}

}  // namespace
