// Small builders for the curve tests: point and number arrays, a spline
// known exactly, and a point comparison.
#pragma once

#include <cmath>
#include <initializer_list>

#include "../database/database_fixture.h"

#define EXPECT_NEAR_PT(p, X, Y, Z) \
  do {                             \
    EXPECT_NEAR((p).x, (X), 1e-9); \
    EXPECT_NEAR((p).y, (Y), 1e-9); \
    EXPECT_NEAR((p).z, (Z), 1e-9); \
  } while (0)

inline AcGePoint3dArray Points(std::initializer_list<AcGePoint3d> pts) {
  AcGePoint3dArray a;
  for (const AcGePoint3d& p : pts) a.append(p);
  return a;
}

inline AcGeDoubleArray Doubles(std::initializer_list<double> values) {
  AcGeDoubleArray a;
  for (double v : values) a.append(v);
  return a;
}

// The quarter of the unit circle from (1,0) to (0,1) as a rational quadratic.
inline AcDbSpline QuarterCircle() {
  return AcDbSpline(2, true, false, false, Points({{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}), Doubles({0, 0, 0, 1, 1, 1}),
                    Doubles({1, std::sqrt(0.5), 1}));
}
