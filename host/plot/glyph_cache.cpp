#include "plot/glyph_cache.h"

namespace kelhost::plot {

const text::GlyphPath* GlyphCache::outline(const text::PlacedGlyph& glyph) {
  const std::uint64_t key = glyph.byGlyphId ? (std::uint64_t{1} << 32) | glyph.glyphId : glyph.code;
  auto [it, added] = mPaths.try_emplace({glyph.font, key});
  if (added) {
    text::PlacedGlyph atOrigin = glyph;
    atOrigin.x = atOrigin.y = 0.0;
    if (!text::PlacedGlyphOutline(atOrigin, it->second)) it->second = text::GlyphPath();
  }
  return it->second.empty() ? nullptr : &it->second;
}

}  // namespace kelhost::plot
