// Properties of the kernel over many random figures (fixed seeds):
// intersections lie on both curves, constructed circles touch what they
// should where they say, areas match the shoelace sum and the
// point-in-polygon test agrees with an even-odd count.
//
// The tangent constructions add 0.0001 to their discriminants, which moves
// a circle off exact tangency by about 1e-4 / (8 * Q * rho^2) relative (rho
// the distance between the centres, Q the leading coefficient): below 1e-9
// for figures of drawing size in millimetres, the sizes used here.
#include <cmath>
#include <utility>

#include <gtest/gtest.h>

#include "geom_checks.h"
#include "kelcad/kelcad.h"
#include "polygon_support.h"

namespace {

using namespace geomtest;

constexpr int kCases = 3000;
constexpr double kRel = 1e-9;
// Tangent figures: coordinates within +-kSpan, radii from kSpan / 10.
constexpr double kSpan = 10000;
constexpr double kLarge = kSpan / 10;

atype RandomArc(Random& random) {
  return MakeArc(random.Uniform(-kSpan, kSpan), random.Uniform(-kSpan, kSpan), random.Uniform(kLarge, 6 * kLarge));
}
linfo RandomLine(Random& random) {
  return MakeLine(random.Uniform(-kSpan, kSpan), random.Uniform(-kSpan, kSpan), random.Uniform(-kSpan, kSpan),
                  random.Uniform(-kSpan, kSpan));
}
// A point near p: the side point of a circle through p.
void Near(Random& random, const double p[3], double out[3]) {
  for (int k = 0; k < 2; ++k) out[k] = p[k] + random.Uniform(-kLarge / 2, kLarge / 2);
  out[2] = 0;
}

// Which way the side point puts a circle: +R outside, -R inside.
double Signed(const circ& c, const double side[3]) { return Dist(side, c.center) > c.radius ? c.radius : -c.radius; }

// The reflection of p in the line through a and b.
void Reflect(const double p[3], const double a[3], const double b[3], double out[3]) {
  const double dx = b[0] - a[0], dy = b[1] - a[1];
  const double t = ((p[0] - a[0]) * dx + (p[1] - a[1]) * dy) / (dx * dx + dy * dy);
  out[0] = 2 * (a[0] + t * dx) - p[0];
  out[1] = 2 * (a[1] + t * dy) - p[1];
  out[2] = 0;
}

// The tangent point t lies on circle c and on the new circle.
void ExpectTouches(const double t[3], const circ& c, const double cen[3], double radius, int i) {
  EXPECT_LE(RelErr(Dist(t, c.center), c.radius), kRel) << "case " << i;
  EXPECT_LE(RelErr(Dist(t, cen), radius), kRel) << "case " << i;
}

TEST(KernelProperties, IntersectionsLieOnBothCurves) {
  Random random(20240611);
  int lineCircle = 0, circleCircle = 0, lineLine = 0;
  for (int i = 0; i < kCases; ++i) {
    const circ c1{{random.Uniform(-1000, 1000), random.Uniform(-1000, 1000), 0}, random.Uniform(1, 800)};
    const circ c2{{random.Uniform(-1000, 1000), random.Uniform(-1000, 1000), 0}, random.Uniform(1, 800)};
    const linfo l1 = MakeLine(random.Uniform(-1000, 1000), random.Uniform(-1000, 1000), random.Uniform(-1000, 1000),
                              random.Uniform(-1000, 1000));
    const linfo l2 = MakeLine(random.Uniform(-1000, 1000), random.Uniform(-1000, 1000), random.Uniform(-1000, 1000),
                              random.Uniform(-1000, 1000));
    const double scale = 2000;
    double res[2][3];
    const int nlc = gl_intlc_pln(res, &l1, &c1);
    // Two points exactly when the line passes closer than the radius.
    EXPECT_EQ(nlc == 2, std::fabs(LineDist(l1, c1.center)) < c1.radius) << "case " << i;
    for (int k = 0; k < nlc; ++k) {
      EXPECT_LE(std::fabs(LineDist(l1, res[k])), kRel * scale) << "case " << i;
      EXPECT_LE(std::fabs(Dist(res[k], c1.center) - c1.radius), kRel * scale) << "case " << i;
    }
    lineCircle += nlc == 2;
    const int ncc = gl_intcc_pln(res, &c1, &c2);
    const double d = Dist(c1.center, c2.center);
    EXPECT_EQ(ncc == 2, d < c1.radius + c2.radius && d > std::fabs(c1.radius - c2.radius)) << "case " << i;
    for (int k = 0; k < ncc; ++k) {
      EXPECT_LE(std::fabs(Dist(res[k], c1.center) - c1.radius), kRel * scale) << "case " << i;
      EXPECT_LE(std::fabs(Dist(res[k], c2.center) - c2.radius), kRel * scale) << "case " << i;
    }
    circleCircle += ncc == 2;
    double p[3];
    if (gl_intll_coef(p, &l1, &l2) == 1) {
      // Nearly parallel lines meet far away; measure against that.
      const double far = std::max(scale, std::hypot(p[0], p[1]));
      EXPECT_LE(std::fabs(LineDist(l1, p)), kRel * far) << "case " << i;
      EXPECT_LE(std::fabs(LineDist(l2, p)), kRel * far) << "case " << i;
      ++lineLine;
    }
  }
  // The figures are varied enough to exercise every outcome.
  EXPECT_GT(lineCircle, kCases / 10);
  EXPECT_GT(circleCircle, kCases / 10);
  EXPECT_GT(lineLine, kCases * 9 / 10);
}

TEST(KernelProperties, FilletBetweenTwoCirclesTouchesBoth) {
  Random random(7);
  int built = 0;
  for (int i = 0; i < kCases; ++i) {
    const atype a1 = RandomArc(random), a2 = RandomArc(random);
    const double r = random.Uniform(kLarge, 6 * kLarge);
    double p0[3], p1[3];
    random.Point(p0, -1.5 * kSpan, 1.5 * kSpan);
    random.Point(p1, -1.5 * kSpan, 1.5 * kSpan);
    const double rho1 = Signed(a1, p1) + r, rho2 = Signed(a2, p1) + r;
    // A fillet whose centre nearly meets a circle's is tangent only to
    // within the 0.0001 in the discriminant: left out.
    if (std::fabs(rho1) < kLarge || std::fabs(rho2) < kLarge) continue;
    double cen[3], t1[3], t2[3];
    if (acs_aa_cen(p0, p1, r, a1, a2, cen, t1, t2) != RTNORM) continue;
    ++built;
    EXPECT_LE(RelErr(Dist(cen, a1.center), std::fabs(rho1)), kRel) << "case " << i;
    EXPECT_LE(RelErr(Dist(cen, a2.center), std::fabs(rho2)), kRel) << "case " << i;
    ExpectTouches(t1, a1, cen, r, i);
    ExpectTouches(t2, a2, cen, r, i);
    // The other candidate mirrors this one in the line of centres; the
    // one returned is the nearer to the pick point.
    double other[3];
    Reflect(cen, a1.center, a2.center, other);
    EXPECT_LE(Dist(cen, p0), Dist(other, p0) + kRel * kSpan) << "case " << i;
  }
  EXPECT_GT(built, kCases / 5);
}

TEST(KernelProperties, CircleThroughAPointTouchesTwoCircles) {
  Random random(11);
  int built = 0;
  for (int i = 0; i < kCases; ++i) {
    const atype a1 = RandomArc(random), a2 = RandomArc(random);
    double p0[3], p1[3];
    random.Point(p0, -1.5 * kSpan, 1.5 * kSpan);
    Near(random, p0, p1);
    double cen[3], t1[3], t2[3], radius = 0;
    const int status = acs_aa_circle(p0, p1, a1, a2, cen, t1, t2, &radius);
    const double s1 = Signed(a1, p0), s2 = Signed(a2, p0);
    // Points on different sides of a circle are always refused.
    if (s1 != Signed(a1, p1) || s2 != Signed(a2, p1)) {
      EXPECT_EQ(status, RTERROR) << "case " << i;
      continue;
    }
    if (status != RTNORM || radius < kLarge) continue;
    ++built;
    EXPECT_GT(radius, 0);
    EXPECT_LE(RelErr(Dist(cen, p0), radius), kRel) << "case " << i;
    EXPECT_LE(RelErr(Dist(cen, a1.center), std::fabs(radius + s1)), kRel) << "case " << i;
    EXPECT_LE(RelErr(Dist(cen, a2.center), std::fabs(radius + s2)), kRel) << "case " << i;
    ExpectTouches(t1, a1, cen, radius, i);
    ExpectTouches(t2, a2, cen, radius, i);
  }
  EXPECT_GT(built, kCases / 5);
}

TEST(KernelProperties, FilletBetweenCircleAndLineTouchesBoth) {
  Random random(13);
  int built = 0;
  for (int i = 0; i < kCases; ++i) {
    const atype arc = RandomArc(random);
    const linfo line = RandomLine(random);
    const double r = random.Uniform(kLarge, 6 * kLarge);
    double p0[3], p1[3];
    random.Point(p0, -1.5 * kSpan, 1.5 * kSpan);
    random.Point(p1, -1.5 * kSpan, 1.5 * kSpan);
    const double rho = Signed(arc, p1) + r;
    if (std::fabs(rho) < kLarge) continue;
    double cen[3], ta[3], tl[3];
    if (acs_al_cen(p0, p1, r, arc, line, cen, ta, tl) != RTNORM) continue;
    ++built;
    // At distance r from the line, on the side point's side.
    EXPECT_LE(RelErr(LineDist(line, cen), LineDist(line, p1) > 0 ? r : -r), kRel) << "case " << i;
    EXPECT_LE(RelErr(Dist(cen, arc.center), std::fabs(rho)), kRel) << "case " << i;
    ExpectTouches(ta, arc, cen, r, i);
    EXPECT_LE(std::fabs(LineDist(line, tl)), kRel * kSpan) << "case " << i;
    EXPECT_LE(RelErr(Dist(tl, cen), r), kRel) << "case " << i;
    // The other candidate mirrors this one in the perpendicular from the
    // arc's centre to the line.
    double foot[3], beyond[3], other[3];
    gl_pt_pq2l2d(foot, arc.center, &line);
    for (int k = 0; k < 2; ++k) beyond[k] = 2 * foot[k] - arc.center[k];
    beyond[2] = 0;
    Reflect(cen, arc.center, beyond, other);
    EXPECT_LE(Dist(cen, p0), Dist(other, p0) + kRel * kSpan) << "case " << i;
  }
  EXPECT_GT(built, kCases / 5);
}

TEST(KernelProperties, CircleThroughAPointTouchesCircleAndLine) {
  Random random(17);
  int built = 0;
  for (int i = 0; i < kCases; ++i) {
    const atype arc = RandomArc(random);
    const linfo line = RandomLine(random);
    double p0[3], p1[3];
    random.Point(p0, -1.5 * kSpan, 1.5 * kSpan);
    Near(random, p0, p1);
    double cen[3], ta[3], tl[3], radius = 0;
    const int status = acs_al_circle(p0, p1, arc, line, cen, ta, tl, &radius);
    const double s = Signed(arc, p0);
    if (s != Signed(arc, p1) || (LineDist(line, p0) > 0) != (LineDist(line, p1) > 0)) {
      EXPECT_EQ(status, RTERROR) << "case " << i;
      continue;
    }
    if (status != RTNORM || radius < kLarge) continue;
    ++built;
    EXPECT_LE(RelErr(Dist(cen, p0), radius), kRel) << "case " << i;
    EXPECT_LE(RelErr(LineDist(line, cen), LineDist(line, p0) > 0 ? radius : -radius), kRel) << "case " << i;
    EXPECT_LE(RelErr(Dist(cen, arc.center), std::fabs(radius + s)), kRel) << "case " << i;
    ExpectTouches(ta, arc, cen, radius, i);
    EXPECT_LE(std::fabs(LineDist(line, tl)), kRel * kSpan) << "case " << i;
    EXPECT_LE(RelErr(Dist(tl, cen), radius), kRel) << "case " << i;
  }
  EXPECT_GT(built, kCases / 5);
}

using PolygonProperties = PolygonSettings;

TEST_F(PolygonProperties, AreaIsTheShoelaceSumInEitherWinding) {
  Random random(23);
  for (int i = 0; i < kCases; ++i) {
    Ring ring = StarPolygon(random, random.Int(3, 12), random.Uniform(-500, 500), random.Uniform(-500, 500));
    double twice = 0;
    for (std::size_t k = 0; k < ring.size(); ++k) {
      const auto [x1, y1] = ring[k];
      const auto [x2, y2] = ring[(k + 1) % ring.size()];
      twice += x1 * y2 - x2 * y1;
    }
    const double expected = std::fabs(twice) / 2;
    Chain forward(ring);
    EXPECT_LE(RelErr(acs_js_area(forward.get()), expected), kRel) << "case " << i;
    Chain backward(Ring(ring.rbegin(), ring.rend()));
    EXPECT_LE(RelErr(acs_js_area(backward.get()), expected), kRel) << "case " << i;
  }
}

TEST_F(PolygonProperties, InsideAgreesWithEvenOddAwayFromTheBoundary) {
  Random random(29);
  int inside = 0, outside = 0;
  for (int i = 0; i < kCases; ++i) {
    const Ring ring = StarPolygon(random, random.Int(3, 12), 0, 0);
    Chain chain(ring);
    const std::string before = chain.text();
    for (int k = 0; k < 4; ++k) {
      const double p[3] = {random.Uniform(-110, 110), random.Uniform(-110, 110), 0};
      if (BoundaryDistance(ring, p[0], p[1]) < 1e-3) continue;
      const bool expected = EvenOddInside(ring, p[0], p[1]);
      EXPECT_EQ(acs_if_pin(p, chain.get()) == RTNORM, expected)
          << "case " << i << " point " << p[0] << "," << p[1];
      ++(expected ? inside : outside);
    }
    EXPECT_EQ(chain.text(), before);
  }
  EXPECT_GT(inside, kCases / 3);
  EXPECT_GT(outside, kCases / 3);
}

}  // namespace
