// Point utilities of the ADS library: polar offsets, angles, distances and
// line intersections.
#include <algorithm>
#include <cmath>

#include "arx/acdbads.h"
#include "arx/acutads.h"

namespace {
const double kTwoPi = 6.28318530717958647692;

double Dot(const double* a, const double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
}  // namespace

// The point at the given angle (in the XY plane) and distance; Z is kept.
int acutPolar(const ads_point pt, ads_real angle, ads_real dist, ads_point result) {
  if (!pt || !result) return RTERROR;
  const double z = pt[Z];
  result[X] = pt[X] + dist * std::cos(angle);
  result[Y] = pt[Y] + dist * std::sin(angle);
  result[Z] = z;
  return RTNORM;
}

// The angle from the X axis of the line pt1-pt2 projected on the XY
// plane, counterclockwise, in [0, 2pi).
ads_real acutAngle(const ads_point pt1, const ads_point pt2) {
  if (!pt1 || !pt2) return 0.0;
  double a = std::atan2(pt2[Y] - pt1[Y], pt2[X] - pt1[X]);
  if (a < 0) a += kTwoPi;
  return a >= kTwoPi ? 0.0 : a;
}

ads_real acutDistance(const ads_point pt1, const ads_point pt2) {
  if (!pt1 || !pt2) return 0.0;
  return std::sqrt((pt2[X] - pt1[X]) * (pt2[X] - pt1[X]) + (pt2[Y] - pt1[Y]) * (pt2[Y] - pt1[Y]) +
                   (pt2[Z] - pt1[Z]) * (pt2[Z] - pt1[Z]));
}

// The closest points of the two lines; they intersect when those points
// coincide (within a tolerance relative to the coordinates involved).
int acdbInters(const ads_point from1, const ads_point to1, const ads_point from2, const ads_point to2, int teston,
               ads_point result) {
  if (!from1 || !to1 || !from2 || !to2 || !result) return RTERROR;
  double d1[3], d2[3], w[3];
  double scale = 0;
  for (int k = 0; k < 3; ++k) {
    d1[k] = to1[k] - from1[k];
    d2[k] = to2[k] - from2[k];
    w[k] = from1[k] - from2[k];
    scale = std::max({scale, std::fabs(from1[k]), std::fabs(to1[k]), std::fabs(from2[k]), std::fabs(to2[k])});
  }
  const double a = Dot(d1, d1), b = Dot(d1, d2), c = Dot(d2, d2), d = Dot(d1, w), e = Dot(d2, w);
  const double denom = a * c - b * b;
  // Zero-length lines and parallel lines have no single intersection.
  if (a == 0 || c == 0 || !(std::fabs(denom) > 1e-12 * a * c)) return RTNONE;
  const double s = (b * e - c * d) / denom;
  const double t = (a * e - b * d) / denom;
  double p1[3], p2[3];
  for (int k = 0; k < 3; ++k) {
    p1[k] = from1[k] + s * d1[k];
    p2[k] = from2[k] + t * d2[k];
  }
  const double gap = std::sqrt((p1[0] - p2[0]) * (p1[0] - p2[0]) + (p1[1] - p2[1]) * (p1[1] - p2[1]) +
                               (p1[2] - p2[2]) * (p1[2] - p2[2]));
  const double tol = 1e-10 * std::max(1.0, scale);
  if (!(gap <= tol)) return RTNONE;  // skew lines (or a non-finite input)
  if (teston) {
    const double eps = 1e-10;
    if (s < -eps || s > 1 + eps || t < -eps || t > 1 + eps) return RTNONE;
  }
  for (int k = 0; k < 3; ++k) result[k] = p1[k];
  return RTNORM;
}
