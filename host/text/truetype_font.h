// TrueType and OpenType fonts through FreeType. The text height is the
// height of the font's capital letters (as the platform sizes TrueType
// text), or its em square when the font stands in for a big font, whose
// characters fill the text height.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "text/font.h"

namespace kelhost::text {

enum class HeightBasis { kCapitals, kEmSquare };

// A glyph placed by shaping: its metrics and where it goes relative to the
// pen, in text-height units.
struct ShapedGlyph {
  GlyphMetrics metrics;
  double xOffset = 0.0, yOffset = 0.0;
  unsigned glyphId = 0;
};

class TrueTypeFont : public Font {
 public:
  // Null when FreeType cannot read the file (face index for collections).
  static std::unique_ptr<TrueTypeFont> Open(const std::string& path, int faceIndex, HeightBasis basis);
  ~TrueTypeFont() override;

  bool outline(char32_t c, GlyphPath& path) override;
  bool outlineOfGlyph(unsigned glyphId, GlyphPath& path);
  // What a renderer that draws the font's glyphs itself (a page that
  // embeds the font) needs: the face in the file, the glyph of a
  // character (0 for none), and the em square in text heights.
  int faceIndex() const;
  unsigned glyphIndex(char32_t c) const;
  double emInTextHeights() const;
  std::string familyName() const;
  // Lays a run out with HarfBuzz (ligatures, marks, contextual forms):
  // what scripts whose shapes depend on their neighbours need.
  bool shape(const std::u32string& run, std::vector<ShapedGlyph>& glyphs);

 protected:
  bool loadMetrics(char32_t c, GlyphMetrics& metrics) override;

 private:
  struct Impl;
  explicit TrueTypeFont(const std::string& path, std::unique_ptr<Impl> impl);
  bool metricsOfGlyph(unsigned glyphId, GlyphMetrics& metrics);
  std::unique_ptr<Impl> mImpl;
};

}  // namespace kelhost::text
