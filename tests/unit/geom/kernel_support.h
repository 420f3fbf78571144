// Measures, figures and polygon chains shared by the kernel's tests.
#pragma once

#include <stdlib.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "kelcad/kelcad.h"

// p's x and y within tol of (x, y).
#define EXPECT_XY(p, x, y, tol) \
  EXPECT_LE(std::hypot((p)[0] - (x), (p)[1] - (y)), (tol)) << "(" << (p)[0] << ", " << (p)[1] << ")"

namespace kt {

inline double Dist(const double a[3], const double b[3]) { return std::hypot(a[0] - b[0], a[1] - b[1]); }
// |actual - expected| relative to expected (at least 1).
inline double RelErr(double actual, double expected) {
  return std::fabs(actual - expected) / std::max(std::fabs(expected), 1.0);
}
// Signed distance of p from the coefficient line.
inline double LineDist(const linfo& l, const double p[3]) {
  return (l.a * p[0] + l.b * p[1] + l.c) / std::hypot(l.a, l.b);
}
inline linfo Line(double x1, double y1, double x2, double y2) {
  linfo l{};
  const double p[3] = {x1, y1, 0}, q[3] = {x2, y2, 0};
  gl_line(&l, p, q);
  gl_line_coef(&l, p, q);
  return l;
}
inline atype Arc(double x, double y, double r) { return atype{{x, y, 0}, r, 0, 0}; }
inline std::vector<double> Pt(double x, double y) { return {x, y, 0}; }

struct Random {
  std::mt19937 engine;
  explicit Random(unsigned start) : engine(start) {}
  double operator()(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(engine); }
};

using Ring = std::vector<std::pair<double, double>>;

// A polygon chain owned by the test, every item of one point type code.
struct Chain {
  resbuf* head = nullptr;
  explicit Chain(const Ring& ring, int type = RT3DPOINT) {
    for (auto it = ring.rbegin(); it != ring.rend(); ++it) {
      resbuf* rb = acutNewRb(type);
      rb->resval.rpoint[0] = it->first, rb->resval.rpoint[1] = it->second;
      rb->rbnext = head;
      head = rb;
    }
  }
  ~Chain() { acutRelRb(head); }
};

// The point tolerance comes from the settings: point them at an empty
// temporary directory, so it is the default one.
struct PrivateSettings : ::testing::Environment {
  std::string dir = "/tmp/kelcad-geom-XXXXXX";
  void SetUp() override {
    ASSERT_NE(mkdtemp(dir.data()), nullptr);
    for (const char* name : {"KEL_INIT_INI", "KEL_SYS_INI", "KEL_USER_INI", "KEL_GC_INI"})
      setenv(name, (dir + "/" + name + ".ini").c_str(), 1);
  }
  void TearDown() override { std::filesystem::remove_all(dir); }
};

}  // namespace kt
