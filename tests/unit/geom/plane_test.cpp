// Lines, circles, angles and matrices of the plane kernel.
#include <array>
#include <cmath>
#include <cstring>

#include <gtest/gtest.h>

#include "kelcad/kelcad.h"

namespace {

const double kPi = 3.14159265358979323846;

linfo CoefLine(double x1, double y1, double x2, double y2) {
  linfo l{};
  const double p[3] = {x1, y1, 0}, q[3] = {x2, y2, 0};
  gl_line(&l, p, q);
  gl_line_coef(&l, p, q);
  return l;
}

TEST(PlaneLines, LineRecordAndCoefficients) {
  linfo l;
  for (double& v : l.pt1) v = 7;
  l.a = l.b = l.c = 42;
  const double p[3] = {1, 2, 3}, q[3] = {4, 6, 3};
  ASSERT_EQ(gl_line(&l, p, q), 1);
  EXPECT_DOUBLE_EQ(l.dir[0], 0.6);
  EXPECT_DOUBLE_EQ(l.dir[1], 0.8);
  EXPECT_DOUBLE_EQ(l.dir[2], 0.0);
  EXPECT_EQ(l.pt2[1], 6);
  EXPECT_EQ(l.c, 42);  // coefficients are gl_line_coef's job
  // Coincident in 3D: nothing written. Differing in z only: a line.
  linfo untouched = l;
  EXPECT_EQ(gl_line(&l, p, p), 0);
  EXPECT_EQ(0, std::memcmp(&l, &untouched, sizeof l));
  const double above[3] = {1, 2, 5};
  EXPECT_EQ(gl_line(&l, p, above), 1);
  EXPECT_EQ(l.dir[2], 1.0);

  ASSERT_EQ(gl_line_coef(&l, p, q), 1);
  EXPECT_EQ(l.a, 4);
  EXPECT_EQ(l.b, -3);
  EXPECT_EQ(l.c, 2);  // -(4*1 - 3*2)
  // Same point in XY: a and b stored as 0, c left alone.
  l.c = 99;
  EXPECT_EQ(gl_line_coef(&l, p, above), 0);
  EXPECT_EQ(l.a, 0);
  EXPECT_EQ(l.b, 0);
  EXPECT_EQ(l.c, 99);
  EXPECT_EQ(gl_line(nullptr, p, q), 0);
}

TEST(PlaneLines, IntersectionOfCoefficientLinesAndFeet) {
  const linfo diagonal = CoefLine(0, 0, 10, 10), anti = CoefLine(0, 10, 10, 0);
  double res[3] = {5, 5, 5};
  ASSERT_EQ(gl_intll_coef(res, &diagonal, &anti), 1);
  EXPECT_NEAR(res[0], 5, 1e-12);
  EXPECT_NEAR(res[1], 5, 1e-12);
  EXPECT_EQ(res[2], 0);
  // Parallel lines: 0, result untouched.
  const linfo shifted = CoefLine(0, 1, 10, 11);
  double kept[3] = {-1, -2, -3};
  EXPECT_EQ(gl_intll_coef(kept, &diagonal, &shifted), 0);
  EXPECT_EQ(kept[0], -1);
  EXPECT_EQ(kept[2], -3);

  const double pt[3] = {0, 10, 7};
  ASSERT_EQ(gl_pt_pq2l2d(res, pt, &diagonal), 1);
  EXPECT_NEAR(res[0], 5, 1e-12);
  EXPECT_NEAR(res[1], 5, 1e-12);
  EXPECT_EQ(res[2], 0);
  // The foot lies beyond the segment just as well: the line is infinite.
  const linfo horizontal = CoefLine(0, 3, 1, 3);
  const double off[3] = {20, -4, 0};
  ASSERT_EQ(gl_pt_pq2l2d(res, off, &horizontal), 1);
  EXPECT_DOUBLE_EQ(res[0], 20);
  EXPECT_DOUBLE_EQ(res[1], 3);
  linfo degenerate{};
  degenerate.pt2[2] = 5;  // distinct points, but one spot in XY
  EXPECT_EQ(gl_pt_pq2l2d(res, off, &degenerate), 0);
}

TEST(PlaneCircles, LineMeetsCircleInTwoOneOrNoPoints) {
  const circ unit{{0, 0, 0}, 1};
  double res[2][3];
  // Steep line (|a| > |b|), x = 0.6.
  const linfo steep = CoefLine(0.6, -5, 0.6, 5), flat = CoefLine(-5, 0.6, 5, 0.6);
  const linfo tangent = CoefLine(-5, 1, 5, 1), beyond = CoefLine(-5, 1.001, 5, 1.001);
  ASSERT_EQ(gl_intlc_pln(res, &steep, &unit), 2);
  EXPECT_NEAR(res[0][0], 0.6, 1e-12);
  EXPECT_NEAR(std::fabs(res[0][1]), 0.8, 1e-12);
  EXPECT_NEAR(res[1][1], -res[0][1], 1e-12);
  // Flat line (|a| <= |b|), y = 0.6, both points distinct and on the line.
  ASSERT_EQ(gl_intlc_pln(res, &flat, &unit), 2);
  EXPECT_NEAR(res[0][0] + res[1][0], 0, 1e-12);
  EXPECT_NEAR(std::fabs(res[0][0]), 0.8, 1e-12);
  EXPECT_NEAR(res[1][1], 0.6, 1e-12);
  // Tangent: one point in res[0]; res[1] zeroed.
  res[1][0] = 9;
  ASSERT_EQ(gl_intlc_pln(res, &tangent, &unit), 1);
  EXPECT_NEAR(res[0][0], 0, 1e-12);
  EXPECT_NEAR(res[0][1], 1, 1e-12);
  EXPECT_EQ(res[1][0], 0);
  // Slightly farther than the radius: none, both points zeroed.
  EXPECT_EQ(gl_intlc_pln(res, &beyond, &unit), 0);
  EXPECT_EQ(res[0][1], 0);
  // Not a line at all.
  linfo none{};
  EXPECT_EQ(gl_intlc_pln(res, &none, &unit), 0);
}

TEST(PlaneCircles, CircleMeetsCircle) {
  const circ a{{0, 0, 0}, 5}, b{{8, 0, 0}, 5};
  double res[2][3];
  ASSERT_EQ(gl_intcc_pln(res, &a, &b), 2);
  EXPECT_NEAR(res[0][0], 4, 1e-12);
  EXPECT_NEAR(res[1][0], 4, 1e-12);
  EXPECT_NEAR(std::fabs(res[0][1]), 3, 1e-12);
  EXPECT_NEAR(res[0][1] + res[1][1], 0, 1e-12);
  const circ touching{{10, 0, 0}, 5};
  ASSERT_EQ(gl_intcc_pln(res, &a, &touching), 1);
  EXPECT_NEAR(res[0][0], 5, 1e-12);
  const circ apart{{10.5, 0, 0}, 5}, concentric{{0, 0, 3}, 2};
  EXPECT_EQ(gl_intcc_pln(res, &a, &apart), 0);
  EXPECT_EQ(gl_intcc_pln(res, &a, &concentric), -1);
  // An arc is accepted as its circle.
  const atype arc{{{8, 0, 0}, 5}, 0.0, kPi};
  EXPECT_EQ(gl_intcc_pln(res, &a, &arc), 2);
}

TEST(PlaneAngles, ReductionToOneTurn) {
  EXPECT_DOUBLE_EQ(gl_fixang(-2 * kPi), 2 * kPi);  // kept so deliberately
  EXPECT_DOUBLE_EQ(gl_fixang(-4 * kPi), 2 * kPi);
  EXPECT_DOUBLE_EQ(gl_fixang(2 * kPi), 0);
  EXPECT_DOUBLE_EQ(gl_fixang(-kPi / 2), 3 * kPi / 2);
  EXPECT_DOUBLE_EQ(gl_fixang(0), 0);
  EXPECT_NEAR(gl_fixang(7 * kPi), kPi, 1e-12);
  EXPECT_NEAR(gl_fixang(-7 * kPi), kPi, 1e-12);
  EXPECT_NEAR(gl_fixang(1000.25), 1000.25 - 159 * 2 * kPi, 1e-9);
}

TEST(PlaneAngles, PointsAtAndAnglesOfCirclePoints) {
  const circ c{{2, 3, 9}, 2};
  double p[3];
  gl_pt_oncirc(p, &c, kPi / 2);
  EXPECT_NEAR(p[0], 2, 1e-12);
  EXPECT_NEAR(p[1], 5, 1e-12);
  EXPECT_EQ(p[2], 0);
  gl_pt_oncirc(p, &c, 5.5);
  EXPECT_NEAR(gl_ang_ptcirc(p, &c), 5.5, 1e-12);
  const double left[3] = {0, 3, 0};
  EXPECT_NEAR(gl_ang_ptcirc(left, &c), kPi, 1e-12);
}

TEST(PlaneAngles, PointOnArc) {
  const circ c{{0, 0, 0}, 1};
  auto at = [&](double degrees) {
    std::array<double, 3> p;
    gl_pt_oncirc(p.data(), &c, degrees * kPi / 180);
    return p;
  };
  const double s = 350 * kPi / 180, e = 10 * kPi / 180;  // crosses 0
  EXPECT_EQ(gl_ptarc(s, e, at(0).data(), &c), 1);
  EXPECT_EQ(gl_ptarc(s, e, at(355).data(), &c), 1);
  EXPECT_EQ(gl_ptarc(s, e, at(180).data(), &c), 0);
  EXPECT_EQ(gl_ptarc(s, e, at(11).data(), &c), 0);
  // An ordinary arc from 30 to 90 degrees, with its allowance at the ends.
  const double s2 = kPi / 6, e2 = kPi / 2;
  double p[3];
  gl_pt_oncirc(p, &c, s2 - 1e-7);
  EXPECT_EQ(gl_ptarc(s2, e2, p, &c), 1);
  gl_pt_oncirc(p, &c, s2 - 1e-5);
  EXPECT_EQ(gl_ptarc(s2, e2, p, &c), 0);
  gl_pt_oncirc(p, &c, e2 + 1e-7);
  EXPECT_EQ(gl_ptarc(s2, e2, p, &c), 1);
  EXPECT_EQ(gl_ptarc(s2, e2, at(60).data(), &c), 1);
  EXPECT_EQ(gl_ptarc(s2, e2, at(200).data(), &c), 0);
  // The distance from the centre does not matter, only the angle.
  const double far[3] = {0.1, 5, 0};
  EXPECT_EQ(gl_ptarc(s2, e2, far, &c), 1);
}

TEST(PlaneMatrices, IdentityTranslationScalingAndProducts) {
  double t[4][4], s[4][4], r[4][4];
  gl_mat_trans(t, 1, 2, 3);
  EXPECT_EQ(t[0][3], 1);
  EXPECT_EQ(t[1][3], 2);
  EXPECT_EQ(t[2][3], 3);
  EXPECT_EQ(t[3][3], 1);
  EXPECT_EQ(t[3][0], 0);
  EXPECT_EQ(t[1][1], 1);
  double m[4][4];
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) m[i][j] = i * 4 + j + 1;
  gl_mat_scal(s, -2, m);
  EXPECT_EQ(s[0][0], -2);
  EXPECT_EQ(s[3][3], -32);
  EXPECT_EQ(s[2][1], -20);
  // A translation followed by another adds up; the product is row by
  // column, so t*m differs from m*t.
  double t2[4][4];
  gl_mat_trans(t2, 10, 20, 30);
  gl_matXmat(r, t, t2);
  EXPECT_EQ(r[0][3], 11);
  EXPECT_EQ(r[2][3], 33);
  gl_matXmat(r, t, m);
  EXPECT_EQ(r[0][0], 1 + 1 * 13);  // row 0 of t is (1 0 0 1)
  EXPECT_EQ(r[0][3], 4 + 16);
  gl_matXmat(r, m, t);
  EXPECT_EQ(r[0][3], 1 * 1 + 2 * 2 + 3 * 3 + 4);
  // The result may be one of the factors.
  double expected[4][4];
  gl_matXmat(expected, m, m);
  gl_matXmat(m, m, m);
  EXPECT_EQ(0, std::memcmp(m, expected, sizeof m));
  gl_mat_ident(r);
  gl_matXmat(s, r, expected);
  EXPECT_EQ(0, std::memcmp(s, expected, sizeof s));
}

}  // namespace
