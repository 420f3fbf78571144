// Glyph outlines kept for the length of a plot: a drawing repeats the same
// few characters many times, and reading an outline from its font is the
// costly part of drawing text.
#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "text/text_layout.h"

namespace kelhost::plot {

class GlyphCache {
 public:
  // The glyph's outline in text-height units with its origin at (0, 0);
  // null when the font has none.
  const text::GlyphPath* outline(const text::PlacedGlyph& glyph);

 private:
  std::map<std::pair<const text::Font*, std::uint64_t>, text::GlyphPath> mPaths;
};

}  // namespace kelhost::plot
