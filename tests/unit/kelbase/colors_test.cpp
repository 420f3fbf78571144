// The colour index table and matching RGB colours against it.
#include <gtest/gtest.h>

#include "kelbase/colors.h"

namespace {

Adesk::UInt32 Rgb(int r, int g, int b) { return (r << 16) | (g << 8) | b; }

TEST(ColourTable, HoldsThePublishedValues) {
  const int standard[10][3] = {{0, 0, 0},     {255, 0, 0},   {255, 255, 0}, {0, 255, 0},     {0, 255, 255},
                               {0, 0, 255},   {255, 0, 255}, {255, 255, 255}, {128, 128, 128}, {192, 192, 192}};
  for (int i = 0; i < 10; ++i)
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(i)), Rgb(standard[i][0], standard[i][1], standard[i][2]))
        << i;
  // A hue's five shades and their paler forms, and the greys.
  EXPECT_EQ(AcCmEntityColor::lookUpRGB(20), Rgb(255, 63, 0));
  EXPECT_EQ(AcCmEntityColor::lookUpRGB(21), Rgb(255, 159, 127));
  EXPECT_EQ(AcCmEntityColor::lookUpRGB(33), Rgb(165, 124, 82));
  EXPECT_EQ(AcCmEntityColor::lookUpRGB(109), Rgb(19, 38, 23));
  EXPECT_EQ(AcCmEntityColor::lookUpRGB(147), Rgb(38, 66, 76));
  EXPECT_EQ(AcCmEntityColor::lookUpRGB(249), Rgb(38, 19, 23));
  const int greys[6] = {51, 91, 132, 173, 214, 255};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(250 + i)), Rgb(greys[i], greys[i], greys[i]));
}

TEST(ColourMatching, ExactFirstThenNearest) {
  EXPECT_EQ(KEL::IsStandardCADColor(RGB(255, 0, 0)), 1) << "1 before 10";
  EXPECT_EQ(KEL::IsStandardCADColor(RGB(165, 124, 82)), 33);
  EXPECT_EQ(KEL::IsStandardCADColor(RGB(0, 0, 0)), -1) << "black is no index colour";
  EXPECT_EQ(KEL::IsStandardCADColor(RGB(165, 124, 82) | 0xFF000000u), 33) << "the top byte does not count";
  EXPECT_EQ(KEL::GetCADColorIndexNearest(RGB(165, 124, 82)), 33);
  EXPECT_EQ(KEL::GetCADColorIndexNearest(RGB(250, 5, 5)), 1);
  EXPECT_EQ(KEL::GetCADColorIndexNearest(RGB(50, 52, 50)), 250);
  AcCmColor c;
  EXPECT_TRUE(c.isByLayer());
  EXPECT_EQ(c.setColorIndex(257), Acad::eOutOfRange);
  EXPECT_EQ(c.setColorIndex(33), Acad::eOk);
  EXPECT_EQ(c.red(), 165);
  EXPECT_EQ(c.blue(), 82);
}

}  // namespace
