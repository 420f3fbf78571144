// Properties over many random figures (fixed random streams): intersections lie on
// both curves; constructed circles touch what they should, on the side
// asked for; areas are the shoelace sum; the point-in-polygon test agrees
// with an even-odd count.
//
// The tangent constructions add 0.0001 to their discriminants, which moves
// a circle off exact tangency by about 1e-4 / (8 * Q * rho^2) relative (rho
// the distance between the centres): below 1e-9 for the drawing-size
// figures used here, coordinates to 10000 and radii from 1000.
#include "kernel_support.h"

namespace {

using namespace kt;

constexpr int kCases = 3000;
constexpr double kRel = 1e-9, kSpan = 10000, kLarge = 1000;

struct Figures : Random {
  using Random::Random;
  std::vector<double> NewPoint(double span = 1.5 * kSpan) { return Pt((*this)(-span, span), (*this)(-span, span)); }
  atype NewArc() { return Arc((*this)(-kSpan, kSpan), (*this)(-kSpan, kSpan), (*this)(kLarge, 6 * kLarge)); }
  linfo NewLine() {
    const auto p = NewPoint(kSpan), q = NewPoint(kSpan);
    return Line(p[0], p[1], q[0], q[1]);
  }
};

// +R when the side point is outside c, -R inside.
double Signed(const circ& c, const std::vector<double>& side) {
  return Dist(side.data(), c.center) > c.radius ? c.radius : -c.radius;
}

// The circle (cen, radius) touches c at t from the side of signed radius
// s, or line l at t on the side of the sign of s.
void ExpectTouches(const double cen[3], double radius, const circ& c, double s, const double t[3], int i) {
  EXPECT_LE(RelErr(Dist(cen, c.center), std::fabs(radius + s)), kRel) << "case " << i;
  // The tangent point is the intersection of the line of centres with the
  // given circle nearer the new centre: the touching point, except when the
  // new circle encloses the given one, where it is the near side.
  const bool encloses = s < 0 && radius > c.radius;
  const double expected = encloses ? std::fabs(radius - 2 * c.radius) : radius;
  EXPECT_LE(RelErr(Dist(t, c.center), c.radius) + RelErr(Dist(t, cen), expected), kRel) << "case " << i;
}
void ExpectTouches(const double cen[3], double radius, const linfo& l, double s, const double t[3], int i) {
  EXPECT_LE(RelErr(LineDist(l, cen), s > 0 ? radius : -radius), kRel) << "case " << i;
  EXPECT_LE(std::fabs(LineDist(l, t)) / kSpan + RelErr(Dist(t, cen), radius), kRel) << "case " << i;
}

TEST(KernelProperties, IntersectionsLieOnBothCurves) {
  Figures f(20240611);
  int found[3] = {0, 0, 0};
  for (int i = 0; i < kCases; ++i) {
    const atype c1 = f.NewArc(), c2 = f.NewArc();
    const linfo l1 = f.NewLine(), l2 = f.NewLine();
    double res[2][3], p[3];
    const int nlc = gl_intlc_pln(res, &l1, &c1);
    EXPECT_EQ(nlc == 2, std::fabs(LineDist(l1, c1.center)) < c1.radius) << "case " << i;
    for (int k = 0; k < nlc; ++k)
      EXPECT_LE(std::fabs(LineDist(l1, res[k])) + std::fabs(Dist(res[k], c1.center) - c1.radius), kRel * kSpan);
    const int ncc = gl_intcc_pln(res, &c1, &c2);
    const double d = Dist(c1.center, c2.center);
    EXPECT_EQ(ncc == 2, d < c1.radius + c2.radius && d > std::fabs(c1.radius - c2.radius)) << "case " << i;
    for (int k = 0; k < ncc; ++k)
      EXPECT_LE(std::fabs(Dist(res[k], c1.center) - c1.radius) + std::fabs(Dist(res[k], c2.center) - c2.radius),
                kRel * kSpan);
    const bool meet = gl_intll_coef(p, &l1, &l2) == 1;
    // Nearly parallel lines meet far away: measured against that.
    const double off = meet ? std::fabs(LineDist(l1, p)) + std::fabs(LineDist(l2, p)) : 0;
    EXPECT_LE(off, kRel * std::max(kSpan, std::hypot(p[0], p[1]))) << "case " << i;
    found[0] += nlc == 2, found[1] += ncc == 2, found[2] += meet;
  }
  EXPECT_GT(std::min({found[0], found[1], found[2]}), kCases / 10);
}

TEST(KernelProperties, FilletsTouchBothCurvesNearerThePick) {
  Figures f(7);
  int built = 0;
  for (int i = 0; i < kCases; ++i) {
    const atype a1 = f.NewArc(), a2 = f.NewArc();
    const linfo line = f.NewLine();
    const double r = f(kLarge, 6 * kLarge);
    const auto p0 = f.NewPoint(), p1 = f.NewPoint();
    const double s1 = Signed(a1, p1), s2 = Signed(a2, p1);
    double cen[3], t1[3], t2[3], mirror[3];
    // A centre that nearly meets a circle's is tangent only to within the
    // 0.0001: left out.
    if (std::fabs(r + s1) < kLarge || std::fabs(r + s2) < kLarge) continue;
    if (acs_aa_cen(p0.data(), p1.data(), r, a1, a2, cen, t1, t2) == RTNORM) {
      ExpectTouches(cen, r, a1, s1, t1, i);
      ExpectTouches(cen, r, a2, s2, t2, i);
      // The other candidate is the mirror image in the line of centres.
      const linfo axis = Line(a1.center[0], a1.center[1], a2.center[0], a2.center[1]);
      gl_pt_pq2l2d(mirror, cen, &axis);
      const auto other = Pt(2 * mirror[0] - cen[0], 2 * mirror[1] - cen[1]);
      EXPECT_LE(Dist(cen, p0.data()), Dist(other.data(), p0.data()) + kRel * kSpan) << "case " << i;
      ++built;
    }
    if (acs_al_cen(p0.data(), p1.data(), r, a1, line, cen, t1, t2) == RTNORM) {
      ExpectTouches(cen, r, a1, s1, t1, i);
      ExpectTouches(cen, r, line, LineDist(line, p1.data()), t2, i);
      ++built;
    }
  }
  EXPECT_GT(built, kCases / 2);
}

TEST(KernelProperties, CirclesThroughAPointTouchBothCurves) {
  Figures f(11);
  int built = 0;
  for (int i = 0; i < kCases; ++i) {
    const atype a1 = f.NewArc(), a2 = f.NewArc();
    const linfo line = f.NewLine();
    const auto p0 = f.NewPoint(), shift = f.NewPoint(500), p1 = Pt(p0[0] + shift[0], p0[1] + shift[1]);
    const double s1 = Signed(a1, p0), s2 = Signed(a2, p0);
    const bool sides = s1 == Signed(a1, p1);
    const bool lineSides = LineDist(line, p0.data()) * LineDist(line, p1.data()) > 0;
    double cen[3], t1[3], t2[3], radius = 0;
    int status = acs_aa_circle(p0.data(), p1.data(), a1, a2, cen, t1, t2, &radius);
    EXPECT_TRUE(status == RTERROR || (sides && s2 == Signed(a2, p1))) << "case " << i;
    if (status == RTNORM && radius >= kLarge) {
      EXPECT_LE(RelErr(Dist(cen, p0.data()), radius), kRel) << "case " << i;
      ExpectTouches(cen, radius, a1, s1, t1, i);
      ExpectTouches(cen, radius, a2, s2, t2, i);
      ++built;
    }
    status = acs_al_circle(p0.data(), p1.data(), a1, line, cen, t1, t2, &radius);
    EXPECT_TRUE(status == RTERROR || (sides && lineSides)) << "case " << i;
    if (status == RTNORM && radius >= kLarge) {
      EXPECT_LE(RelErr(Dist(cen, p0.data()), radius), kRel) << "case " << i;
      ExpectTouches(cen, radius, a1, s1, t1, i);
      ExpectTouches(cen, radius, line, LineDist(line, p0.data()), t2, i);
      ++built;
    }
  }
  EXPECT_GT(built, kCases / 2);
}

TEST(KernelProperties, AreaAndInsideAgreeWithIndependentCounts) {
  Random random(29);
  int inside = 0, outside = 0;
  for (int i = 0; i < kCases; ++i) {
    // A simple, seldom convex polygon: vertices at increasing angles around
    // the origin, each at its own distance, no two neighbours half a turn
    // apart or more (or the closing edges could cross).
    std::vector<double> angles(static_cast<int>(random(3, 13)));
    for (bool spread = false; !spread;) {
      for (double& a : angles) a = random(0, 2 * M_PI);
      std::sort(angles.begin(), angles.end());
      spread = angles.back() - angles.front() > M_PI;  // the gap across 0
      for (std::size_t k = 1; k < angles.size(); ++k) spread = spread && angles[k] - angles[k - 1] < M_PI;
    }
    Ring ring;
    for (double a : angles) {
      const double r = random(10, 100);
      ring.emplace_back(r * std::cos(a), r * std::sin(a));
    }
    const std::size_t n = ring.size();
    Chain chain(ring), backward(Ring(ring.rbegin(), ring.rend()));
    const double x = random(-100, 100), y = random(-100, 100);
    double twice = 0, near = 1e300;
    bool odd = false;  // crossings of a ray to +X
    for (std::size_t k = 0, j = n - 1; k < n; j = k++) {
      const auto [xk, yk] = ring[k];
      const auto [xj, yj] = ring[j];
      twice += xj * yk - xk * yj;
      if ((yk > y) != (yj > y) && x < xj + (y - yj) * (xk - xj) / (yk - yj)) odd = !odd;
      const double dx = xk - xj, dy = yk - yj;
      const double t = std::clamp(((x - xj) * dx + (y - yj) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
      near = std::min(near, std::hypot(xj + t * dx - x, yj + t * dy - y));
    }
    EXPECT_LE(RelErr(acs_js_area(chain.head), std::fabs(twice) / 2), kRel) << "case " << i;
    EXPECT_LE(RelErr(acs_js_area(backward.head), std::fabs(twice) / 2), kRel) << "case " << i;
    if (near < 1e-3) continue;  // on the boundary either answer will do
    EXPECT_EQ(acs_if_pin(Pt(x, y).data(), chain.head) == RTNORM, odd) << "case " << i << " at " << x << "," << y;
    ++(odd ? inside : outside);
  }
  EXPECT_GT(std::min(inside, outside), kCases / 10);
}

}  // namespace
