// Polygons as resbuf chains for the kernel's tests, the settings the
// point-in-polygon test reads its point tolerance from, and an independent
// even-odd test to compare with.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <initializer_list>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "geom_checks.h"
#include "kelcad/kelcad.h"

namespace geomtest {

// A chain of vertices owned by the test: every item of the given type code
// (RT3DPOINT, RTPOINT or a point group code).
class Chain {
 public:
  explicit Chain(std::initializer_list<std::pair<double, double>> points, int type = RT3DPOINT) {
    for (const auto& [x, y] : points) Add(x, y, type);
  }
  explicit Chain(const std::vector<std::pair<double, double>>& points, int type = RT3DPOINT) {
    for (const auto& [x, y] : points) Add(x, y, type);
  }
  ~Chain() { acutRelRb(head_); }
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;

  resbuf* get() const { return head_; }
  void append(resbuf* tail) { KEL::AppendRb(head_, tail); }
  // Every item's type, address and coordinates, to see that nothing moved.
  std::string text() const {
    std::ostringstream out;
    for (const resbuf* rb = head_; rb != nullptr; rb = rb->rbnext)
      out << rb << ' ' << rb->restype << ' ' << rb->resval.rpoint[0] << ' ' << rb->resval.rpoint[1] << ' '
          << rb->resval.rpoint[2] << ';';
    return out.str();
  }

 private:
  void Add(double x, double y, int type) {
    resbuf* rb = acutNewRb(type);
    rb->resval.rpoint[0] = x;
    rb->resval.rpoint[1] = y;
    rb->resval.rpoint[2] = 0;
    KEL::AppendRb(head_, rb);
  }
  resbuf* head_ = nullptr;
};

// Private settings files, so the point tolerance is the default one.
class PolygonSettings : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/kelcad-geom-test-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    root_ = pattern;
    for (const char* name : {"KEL_INIT_INI", "KEL_SYS_INI", "KEL_USER_INI", "KEL_GC_INI", "KEL_LOCAL_DIR",
                             "KEL_REGISTRY_FILE", "HOME"}) {
      const char* value = getenv(name);
      saved_[name] = value ? std::optional<std::string>(value) : std::nullopt;
    }
    setenv("KEL_INIT_INI", (root_ + "/KelInit.ini").c_str(), 1);
    setenv("KEL_SYS_INI", (root_ + "/KelSys.ini").c_str(), 1);
    setenv("KEL_USER_INI", (root_ + "/KelUser.ini").c_str(), 1);
    setenv("KEL_GC_INI", (root_ + "/Project.ini").c_str(), 1);
    setenv("KEL_LOCAL_DIR", (root_ + "/").c_str(), 1);
    setenv("KEL_REGISTRY_FILE", (root_ + "/registry.ini").c_str(), 1);
    setenv("HOME", root_.c_str(), 1);
  }
  void TearDown() override {
    for (const auto& [name, value] : saved_)
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }

 private:
  std::string root_;
  std::map<std::string, std::optional<std::string>> saved_;
};

using Ring = std::vector<std::pair<double, double>>;

// Crossings of a ray to +X with the edges: odd means inside.
inline bool EvenOddInside(const Ring& ring, double x, double y) {
  bool inside = false;
  const std::size_t n = ring.size();
  for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
    const auto [xi, yi] = ring[i];
    const auto [xj, yj] = ring[j];
    if ((yi > y) != (yj > y) && x < xj + (y - yj) * (xi - xj) / (yi - yj)) inside = !inside;
  }
  return inside;
}

inline double SegmentDistance(std::pair<double, double> a, std::pair<double, double> b, double x, double y) {
  const double dx = b.first - a.first, dy = b.second - a.second;
  double t = ((x - a.first) * dx + (y - a.second) * dy) / (dx * dx + dy * dy);
  t = t < 0 ? 0 : t > 1 ? 1 : t;
  return std::hypot(a.first + t * dx - x, a.second + t * dy - y);
}

inline double BoundaryDistance(const Ring& ring, double x, double y) {
  double best = 1e300;
  for (std::size_t i = 0; i < ring.size(); ++i)
    best = std::min(best, SegmentDistance(ring[i], ring[(i + 1) % ring.size()], x, y));
  return best;
}

// A simple polygon: vertices at increasing angles around a centre, each at
// its own distance, so it is star-shaped but seldom convex. No two
// neighbouring angles are half a turn apart or more, or the closing edges
// could cross.
inline Ring StarPolygon(Random& random, int n, double cx, double cy) {
  const double turn = 6.283185307179586;
  std::vector<double> angles;
  for (bool spread = false; !spread;) {
    angles.clear();
    for (int i = 0; i < n; ++i) angles.push_back(random.Uniform(0, turn));
    std::sort(angles.begin(), angles.end());
    spread = angles.front() + turn - angles.back() < turn / 2;
    for (int i = 1; i < n; ++i) spread = spread && angles[i] - angles[i - 1] < turn / 2;
  }
  Ring ring;
  for (double a : angles) {
    const double r = random.Uniform(10, 100);
    ring.emplace_back(cx + r * std::cos(a), cy + r * std::sin(a));
  }
  return ring;
}

}  // namespace geomtest
