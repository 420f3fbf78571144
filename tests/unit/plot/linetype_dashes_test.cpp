// A linetype's dashes, gaps and dots as a dash array that starts with a
// dash, and the offset that keeps the pattern starting where it should.
#include <gtest/gtest.h>

#include <vector>

#include "plot/linetype_dashes.h"

namespace {

using kelhost::plot::Dashes;

TEST(LinetypeDashes, StartWithADashAndKeepThePhase) {
  std::vector<double> lengths;
  double offset = -1;
  // Gap 2, dash 5, gap 3: the array is dash 5, gap 5, entered 8 along it,
  // where 2 of the gap remain before the first dash.
  ASSERT_TRUE(Dashes({-2, 5, -3}).forDevice(1.0, 0.0, lengths, offset));
  EXPECT_EQ(lengths, (std::vector<double>{5, 5}));
  EXPECT_DOUBLE_EQ(offset, 8.0);
  // Dash, gap, dot, gap at three device units to the unit.
  ASSERT_TRUE(Dashes({12.7, -6.35, 0, -6.35}).forDevice(3.0, 0.5, lengths, offset));
  EXPECT_EQ(lengths.size(), 4u);
  EXPECT_DOUBLE_EQ(lengths[0], 38.1);
  EXPECT_DOUBLE_EQ(lengths[2], 0.0) << "the dot";
  EXPECT_DOUBLE_EQ(offset, 0.0);
  // Dash then dash joins around the cycle: dash 1, gap 2, dash 3 is dash
  // 4 (entered after 3), gap 2.
  ASSERT_TRUE(Dashes({1, -2, 3}).forDevice(1.0, 0.0, lengths, offset));
  EXPECT_EQ(lengths, (std::vector<double>{4, 2}));
  EXPECT_DOUBLE_EQ(offset, 3.0);
}

TEST(LinetypeDashes, ContinuousWhenThereIsNoPatternToSee) {
  std::vector<double> lengths;
  double offset = 0;
  EXPECT_TRUE(Dashes(std::vector<double>{}).continuous());
  EXPECT_TRUE(Dashes({5, 3}).continuous()) << "dashes only";
  EXPECT_FALSE(Dashes({5, -5}).forDevice(0.1, 0.0, lengths, offset)) << "a pattern one device unit long";
  EXPECT_FALSE(Dashes({5, -5}).forDevice(1.0, 20.0, lengths, offset)) << "finer than the pen is wide";
  EXPECT_FALSE(Dashes({5, -5}).forDevice(0.0, 0.0, lengths, offset));
}

}  // namespace
