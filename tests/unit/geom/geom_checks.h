// Measures and random figures shared by the kernel's tests.
#pragma once

#include <algorithm>
#include <cmath>
#include <random>

#include "kelcad/geom/records.h"

namespace geomtest {

inline double Dist(const double a[3], const double b[3]) { return std::hypot(a[0] - b[0], a[1] - b[1]); }

// |actual - expected| relative to expected (at least 1).
inline double RelErr(double actual, double expected) {
  return std::fabs(actual - expected) / std::max(std::fabs(expected), 1.0);
}

// Signed distance of p from the line a*x + b*y + c = 0.
inline double LineDist(const linfo& l, const double p[3]) {
  return (l.a * p[0] + l.b * p[1] + l.c) / std::hypot(l.a, l.b);
}

inline linfo MakeLine(double x1, double y1, double x2, double y2) {
  linfo l{};
  l.pt1[0] = x1, l.pt1[1] = y1, l.pt2[0] = x2, l.pt2[1] = y2;
  const double len = std::hypot(x2 - x1, y2 - y1);
  l.dir[0] = (x2 - x1) / len, l.dir[1] = (y2 - y1) / len;
  l.a = y2 - y1;
  l.b = x1 - x2;
  l.c = -(l.a * x1 + l.b * y1);
  return l;
}

inline atype MakeArc(double x, double y, double r) {
  atype a{};
  a.center[0] = x, a.center[1] = y, a.radius = r;
  return a;
}

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  double Uniform(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(engine_); }
  int Int(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(engine_); }
  void Point(double p[3], double lo, double hi) {
    p[0] = Uniform(lo, hi);
    p[1] = Uniform(lo, hi);
    p[2] = 0;
  }

 private:
  std::mt19937 engine_;
};

}  // namespace geomtest
