#include <cmath>

#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "lisp_fixture.h"

using GeometryTest = LispTest;

TEST_F(GeometryTest, PolarDistanceAngle) {
  EXPECT_EQ(eval(L"(polar '(1 1) (/ pi 4) (sqrt 2))"), L"(2.0 2.0)");
  EXPECT_EQ(eval(L"(polar '(1 1 5) 0 2)"), L"(3.0 1.0 5.0)");
  EXPECT_EQ(eval(L"(distance '(0 0) '(3 4))"), L"5.0");
  EXPECT_EQ(eval(L"(distance '(0 0 0) '(3 4 12))"), L"13.0");
  EXPECT_EQ(eval(L"(distance '(0 0) '(3 4 12))"), L"5.0");  // a 2D point keeps it planar
  EXPECT_EQ(eval(L"(angle '(1 1) '(1 4))"), L"1.5708");
  EXPECT_EQ(eval(L"(angle '(0 0) '(0 -1))"), L"4.71239");
  EXPECT_EQ(eval(L"(angle '(0 0 0) '(1 0 9))"), L"0.0");
  EXPECT_EQ(eval(L"(distance '(0 0) 5)"), L"ERROR: bad argument type: 2D/3D point: 5");
  EXPECT_EQ(eval(L"(polar '(0 0 0 0) 0 1)"), L"ERROR: bad argument type: 2D/3D point: (0 0 0 0)");
}

TEST_F(GeometryTest, IntersWithAndWithoutSegments) {
  run(L"(setq a '(1.0 1.0) b '(9.0 9.0) c '(4.0 1.0) d '(4.0 2.0))");
  EXPECT_EQ(eval(L"(inters a b c d)"), L"nil");
  EXPECT_EQ(eval(L"(inters a b c d T)"), L"nil");
  EXPECT_EQ(eval(L"(inters a b c d nil)"), L"(4.0 4.0)");
  EXPECT_EQ(eval(L"(inters '(0 0) '(2 2) '(0 2) '(2 0))"), L"(1.0 1.0)");
  EXPECT_EQ(eval(L"(inters '(0 0) '(1 0) '(0 1) '(1 1) nil)"), L"nil");  // parallel
  EXPECT_EQ(eval(L"(inters '(0 0 0) '(2 2 2) '(0 2 0) '(2 0 2))"), L"(1.0 1.0 1.0)");
  // Skew in 3D, but crossing once projected (one point is 2D).
  EXPECT_EQ(eval(L"(inters '(0 0 0) '(2 2 0) '(0 2 5) '(2 0 5))"), L"nil");
  EXPECT_EQ(eval(L"(inters '(0 0 0) '(2 2 0) '(0 2) '(2 0 5))"), L"(1.0 1.0)");
}

TEST(GeometryUtilities, PlatformCalls) {
  ads_point from = {1, 2, 3}, result;
  EXPECT_EQ(acutPolar(from, 0.5 * 3.14159265358979323846, 2, result), RTNORM);
  EXPECT_NEAR(result[X], 1, 1e-12);
  EXPECT_NEAR(result[Y], 4, 1e-12);
  EXPECT_EQ(result[Z], 3);
  ads_point p1 = {0, 0, 0}, p2 = {-1, -1, 7};
  EXPECT_NEAR(acutAngle(p1, p2), 1.25 * 3.14159265358979323846, 1e-12);
  EXPECT_NEAR(acutDistance(p1, p2), std::sqrt(51.0), 1e-12);
  ads_point a = {0, 0, 0}, b = {10, 0, 0}, c = {20, -1, 0}, d = {20, 1, 0};
  EXPECT_EQ(acdbInters(a, b, c, d, 1, result), RTNONE);  // beyond the first segment
  EXPECT_EQ(acdbInters(a, b, c, d, 0, result), RTNORM);
  EXPECT_NEAR(result[X], 20, 1e-9);
  EXPECT_EQ(acdbInters(a, a, c, d, 0, result), RTNONE);  // a line of no length
  EXPECT_EQ(acdbInters(a, b, nullptr, d, 0, result), RTERROR);
  // Endpoints touching count as on the segment.
  ads_point e = {10, 0, 0}, f = {10, 5, 0};
  EXPECT_EQ(acdbInters(a, b, e, f, 1, result), RTNORM);
}
