// Compiled shape files: the three layouts, the shape language's codes as
// measured metrics and outlines, and files that are broken.
#include <gtest/gtest.h>

#include "shape_file_builder.h"
#include "text/shape_font.h"

namespace {

using kelhost::text::GlyphMetrics;
using kelhost::text::GlyphPath;
using kelhost::text::ShapeFont;
using shapetest::ShapeCode;

// Capitals 10 units high: every metric below is in tenths of that.
shapetest::Shapes TestShapes() {
  return {
      // L: up the stem pen-up, down 10, right 6, then on to x 8.
      {'L', ShapeCode({2, 8, 0, 10, 1, 0xAC, 0x60, 2, 8, 2, 0, 0})},
      // O: a full circle of radius 3 (octant arc from octant 0, 8 octants).
      {'O', ShapeCode({2, 8, 6, 3, 1, 10, 3, 0x00, 2, 8, 2, -3, 0})},
      // C: half a circle from (6,0) to (0,0) bulging up (bulge 127).
      {'C', ShapeCode({2, 8, 6, 0, 1, 12, -6, 0, 127, 2, 8, 8, 0, 0})},
      // V: a displacement for vertical text only, then a stroke of 4.
      {'V', ShapeCode({14, 8, 0, -20, 0x40, 0})},
      // T: L as a subshape, then the pen down for a stroke on from there.
      {'T', ShapeCode({7, 0x00, 'L', 1, 0x20, 0})},
      // g: a stroke below the baseline.
      {'g', ShapeCode({2, 8, 0, -3, 1, 0x64, 2, 8, 4, -3, 0})},
      // R: itself as a subshape, for ever.
      {'R', ShapeCode({7, 0x00, 'R', 0})},
      // Scale codes: divide by 2, a stroke of 8 is 4 long, multiply back.
      {'S', ShapeCode({3, 2, 0x80, 4, 2, 0x20, 0})},
      // Position stack: push, a stroke up, pop, a stroke right.
      {'P', ShapeCode({5, 0x54, 6, 0x50, 0})},
      {0xB0, ShapeCode({0x24, 0})},
  };
}

std::unique_ptr<ShapeFont> TestUnifont() {
  std::string error;
  auto font = ShapeFont::Parse("test.shx", shapetest::Unifont("TEST", 10, 3, TestShapes()), &error);
  EXPECT_TRUE(font) << error;
  return font;
}

void ExpectMetrics(ShapeFont& font, char32_t c, double advance, double x0, double y0, double x1, double y1) {
  const GlyphMetrics* m = font.glyph(c);
  ASSERT_NE(m, nullptr) << static_cast<unsigned>(c);
  EXPECT_NEAR(m->advance, advance, 1e-12) << static_cast<unsigned>(c);
  ASSERT_TRUE(m->inked);
  EXPECT_NEAR(m->xMin, x0, 1e-12) << static_cast<unsigned>(c);
  EXPECT_NEAR(m->yMin, y0, 1e-12) << static_cast<unsigned>(c);
  EXPECT_NEAR(m->xMax, x1, 1e-12) << static_cast<unsigned>(c);
  EXPECT_NEAR(m->yMax, y1, 1e-12) << static_cast<unsigned>(c);
}

TEST(ShapeFont, ReadsTheUnifontDescription) {
  auto font = TestUnifont();
  ASSERT_TRUE(font);
  EXPECT_EQ(font->layout(), ShapeFont::Layout::kUnifont);
  EXPECT_EQ(font->fontName(), "TEST");
  EXPECT_EQ(font->above(), 10);
  EXPECT_EQ(font->below(), 3);
  EXPECT_EQ(font->shapeCount(), TestShapes().size());
}

TEST(ShapeFont, VectorsArcsAndPenCodesGiveTheInkAndAdvance) {
  auto font = TestUnifont();
  ASSERT_TRUE(font);
  ExpectMetrics(*font, 'L', 0.8, 0, 0, 0.6, 1.0);
  ExpectMetrics(*font, 'O', 0.8, 0, 0, 0.6, 0.6);
  ExpectMetrics(*font, 'C', 0.8, 0, 0, 0.6, 0.3);
  ExpectMetrics(*font, 'V', 0.4, 0, 0, 0.4, 0);
  ExpectMetrics(*font, 'T', 1.0, 0, 0, 1.0, 1.0);
  ExpectMetrics(*font, 'g', 0.4, 0, -0.3, 0, 0.3);
  ExpectMetrics(*font, 'S', 0.6, 0, 0, 0.6, 0);
  ExpectMetrics(*font, 'P', 0.5, 0, 0, 0.5, 0.5);
}

TEST(ShapeFont, MissingCharactersAndEndlessSubshapesHaveNoGlyph) {
  auto font = TestUnifont();
  ASSERT_TRUE(font);
  EXPECT_EQ(font->glyph('Z'), nullptr);
  EXPECT_EQ(font->glyph('R'), nullptr);  // the nesting is bounded
  GlyphPath path;
  EXPECT_FALSE(font->outline('Z', path));
}

TEST(ShapeFont, OutlinesAreOpenStrokesInTextHeightUnits) {
  auto font = TestUnifont();
  ASSERT_TRUE(font);
  GlyphPath l;
  ASSERT_TRUE(font->outline('L', l));
  EXPECT_FALSE(l.filled);
  using Op = GlyphPath::Op;
  EXPECT_EQ(l.ops, (std::vector<Op>{Op::kMove, Op::kLine, Op::kLine}));
  const std::vector<double> corners = {0, 1, 0, 0, 0.6, 0};
  ASSERT_EQ(l.coords.size(), corners.size());
  for (size_t i = 0; i < corners.size(); ++i) EXPECT_NEAR(l.coords[i], corners[i], 1e-12) << i;

  GlyphPath o;
  ASSERT_TRUE(font->outline('O', o));
  ASSERT_EQ(o.ops.size(), 5u);  // a move and four quarter-circle curves
  EXPECT_EQ(o.ops[1], Op::kCubic);
  EXPECT_NEAR(o.coords.end()[-2], 0.6, 1e-12);  // back where the circle started
  EXPECT_NEAR(o.coords.end()[-1], 0.3, 1e-12);
}

TEST(ShapeFont, ShapesLayoutNumbersByCodePageAndKeepsTheSignsAt256) {
  std::string error;
  auto font = ShapeFont::Parse("old.shx",
                               shapetest::ShapesFont("OLD", 6, 2, {{'A', ShapeCode({0x64, 0})}, {256, ShapeCode({0x24, 0})},
                                                                   {0xE9, ShapeCode({0x34, 0})}}),
                               &error);
  ASSERT_TRUE(font) << error;
  EXPECT_EQ(font->layout(), ShapeFont::Layout::kShapes);
  EXPECT_EQ(font->shapeNumberOf(U'A'), 65u);
  EXPECT_EQ(font->shapeNumberOf(U'\u00B0'), 256u);  // %%d's degree sign
  EXPECT_EQ(font->shapeNumberOf(U'\u00E9'), 0xE9u);  // through the Windows Latin code page
  EXPECT_EQ(font->shapeNumberOf(U'\u00B1'), 0u);
  ASSERT_NE(font->glyph('A'), nullptr);
  EXPECT_NEAR(font->glyph('A')->yMax, 1.0, 1e-12);  // "above" 6 is the text height
}

TEST(ShapeFont, BigFontsNumberByTheirDoubleByteCodes) {
  std::string error;
  // 中 is D6D0 in GBK; a square of 8 on a height of 8, advancing 10.
  auto font = ShapeFont::Parse(
      "hz.shx", shapetest::Bigfont("HZ", 8, {{0xD6D0, ShapeCode({0x80, 0x84, 0x88, 0x8C, 2, 8, 10, 0, 0})}}), &error);
  ASSERT_TRUE(font) << error;
  EXPECT_EQ(font->layout(), ShapeFont::Layout::kBigfont);
  EXPECT_EQ(font->codePage(), "GBK");
  EXPECT_EQ(font->shapeNumberOf(U'\u4E2D'), 0xD6D0u);
  ExpectMetrics(*font, U'\u4E2D', 1.25, 0, 0, 1.0, 1.0);
  EXPECT_EQ(font->glyph(U'\u6587'), nullptr);  // 文: not in the font
}

TEST(ShapeFont, BrokenFilesAreRefusedWithAReason) {
  std::string error;
  EXPECT_FALSE(ShapeFont::Parse("x.shx", "not a shape file at all", &error));
  EXPECT_EQ(error, "is not a compiled shape file");
  EXPECT_FALSE(ShapeFont::Parse("x.shx", "AutoCAD-86 fancyfont 1.0\r\n\x1a", &error));
  EXPECT_EQ(error, "is a compiled shape file of an unknown kind");
  EXPECT_FALSE(ShapeFont::Parse("x.shx", shapetest::Unifont("NOHEIGHT", 0, 0, {{'A', ShapeCode({0x64, 0})}}), &error));
  EXPECT_EQ(error, "has a font description without a height");

  // Every cut of good files is refused or read; none is read past its end.
  for (const std::string& whole : {shapetest::Unifont("TEST", 10, 3, TestShapes()),
                                   shapetest::ShapesFont("OLD", 6, 2, {{'A', ShapeCode({0x64, 0})}}),
                                   shapetest::Bigfont("HZ", 8, {{0xD6D0, ShapeCode({0x80, 0})}})}) {
    for (size_t n = 0; n < whole.size(); ++n) {
      auto font = ShapeFont::Parse("cut.shx", whole.substr(0, n), &error);
      if (font)
        for (char32_t c : {U'L', U'O', U'A', U'\u4E2D'}) font->glyph(c);
    }
  }
}

}  // namespace
