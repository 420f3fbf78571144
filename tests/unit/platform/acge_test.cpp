#include <gtest/gtest.h>

#include <cmath>

#include "arx/acge.h"

namespace {
constexpr double kPi = 3.14159265358979323846;
}

TEST(AcGe, TwoDimensionalAngles) {
  EXPECT_DOUBLE_EQ(AcGeVector2d(1, 0).angle(), 0.0);
  EXPECT_DOUBLE_EQ(AcGeVector2d(0, 1).angle(), kPi / 2);
  EXPECT_DOUBLE_EQ(AcGeVector2d(-1, 0).angle(), kPi);
  EXPECT_DOUBLE_EQ(AcGeVector2d(0, -1).angle(), 1.5 * kPi);  // never negative
  EXPECT_DOUBLE_EQ(AcGeVector2d(1, -1e-300).angle() < 2 * kPi ? 1.0 : 0.0, 1.0);
  // Between two vectors the angle is unsigned, in [0, pi].
  EXPECT_DOUBLE_EQ(AcGeVector2d(1, 0).angleTo(AcGeVector2d(0, -1)), kPi / 2);
  EXPECT_DOUBLE_EQ(AcGeVector2d(1, 0).angleTo(AcGeVector2d(-1, 0)), kPi);
  EXPECT_NEAR(AcGeVector2d(1, 0).angleTo(AcGeVector2d(1, 1e-9)), 1e-9, 1e-20);  // precise when nearly parallel
}

TEST(AcGe, ThreeDimensionalAnglesWithAndWithoutReference) {
  const AcGeVector3d x = AcGeVector3d::kXAxis, y = AcGeVector3d::kYAxis, z = AcGeVector3d::kZAxis;
  EXPECT_DOUBLE_EQ(x.angleTo(y), kPi / 2);
  EXPECT_DOUBLE_EQ(x.angleTo(-x), kPi);
  EXPECT_DOUBLE_EQ(x.angleTo(y, z), kPi / 2);           // counter-clockwise seen from +Z
  EXPECT_DOUBLE_EQ(y.angleTo(x, z), 1.5 * kPi);
  EXPECT_DOUBLE_EQ(y.angleTo(x, -z), kPi / 2);          // the reference flips the sense
  EXPECT_DOUBLE_EQ(x.angleTo(x, z), 0.0);
  EXPECT_DOUBLE_EQ(x.angleTo(-x, z), kPi);
}

TEST(AcGe, NormalsAndPerpendiculars) {
  AcGeVector3d v(3, 0, 4);
  EXPECT_TRUE(v.normal().isEqualTo(AcGeVector3d(0.6, 0, 0.8)));
  EXPECT_DOUBLE_EQ(v.length(), 5.0);  // normal() leaves the vector alone
  v.normalize();
  EXPECT_NEAR(v.length(), 1.0, 1e-15);
  AcGeVector3d zero(0, 0, 1e-13);
  EXPECT_EQ(zero.normal().z, 1e-13);  // within tolerance of zero: unchanged
  EXPECT_TRUE(AcGeVector2d(0, 2).normal().isEqualTo(AcGeVector2d::kYAxis));
  for (const AcGeVector3d& w : {AcGeVector3d(1, 2, 3), AcGeVector3d(0, 0, 1), AcGeVector3d(0.001, 0, -5)}) {
    AcGeVector3d p = w.perpVector();
    EXPECT_FALSE(p.isZeroLength());
    EXPECT_NEAR(p.dotProduct(w), 0.0, 1e-12);
  }
  EXPECT_TRUE(AcGeVector3d(0, 0, 1).perpVector().isEqualTo(AcGeVector3d(1, 0, 0)));  // Y x Z
}

TEST(AcGe, ParallelPerpendicularAndEqualWithinTolerance) {
  EXPECT_TRUE(AcGeVector3d(1, 1, 0).isParallelTo(AcGeVector3d(-2, -2, 0)));
  EXPECT_FALSE(AcGeVector3d(1, 1, 0).isParallelTo(AcGeVector3d(1, 1.001, 0)));
  EXPECT_FALSE(AcGeVector3d(0, 0, 0).isParallelTo(AcGeVector3d(1, 0, 0)));
  EXPECT_TRUE(AcGeVector3d(1, 0, 0).isPerpendicularTo(AcGeVector3d(0, 5, 5)));
  EXPECT_FALSE(AcGeVector3d(1, 0, 0).isPerpendicularTo(AcGeVector3d(0.01, 5, 5)));
  AcGeTol loose;
  loose.setEqualVector(0.01);
  EXPECT_TRUE(AcGeVector3d(1, 1, 0).isParallelTo(AcGeVector3d(1, 1.001, 0), loose));
  EXPECT_TRUE(AcGeVector3d(1, 2, 3) == AcGeVector3d(1, 2, 3 + 1e-13));
  EXPECT_FALSE(AcGeVector3d(1, 2, 3) == AcGeVector3d(1, 2, 3 + 1e-9));
  EXPECT_TRUE(AcGePoint3d(1, 2, 3) == AcGePoint3d(1, 2, 3 + 1e-11));
  EXPECT_EQ(AcGeContext::gTol.equalPoint(), 1e-10);
  EXPECT_EQ(AcGeContext::gTol.equalVector(), 1e-12);
  EXPECT_TRUE(AcGePoint3d::kOrigin.isEqualTo(AcGePoint3d(0, 0, 0)));
  EXPECT_TRUE(AcGeVector2d::kXAxis.isEqualTo(AcGeVector2d(1, 0)));
  EXPECT_TRUE(AcGeVector3d::kIdentity.isZeroLength());
}
