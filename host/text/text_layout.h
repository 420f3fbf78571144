// Single-line text laid out with a style's fonts: which glyph goes where
// along the baseline, and the box its ink fills. Measuring (acedTextBox,
// textbox) and drawing (plots) both lay text out here.
#pragma once

#include <string>

#include "text/font_library.h"
#include "text/truetype_font.h"

namespace kelhost::text {

// The characters a TEXT string shows: the control codes %%d (degree),
// %%p (plus-minus), %%c (diameter), %%% (percent) and %%nnn (character
// nnn) become their characters; %%u and %%o (underline and overline
// switches) show nothing; \U+XXXX is that Unicode character.
void DecodeTextString(const wchar_t* text, std::u32string& shown);

// True when the characters need shaping (combining marks, the scripts
// whose letters join or reorder: Arabic, Hebrew, Indic, Thai...).
bool NeedsShaping(const std::u32string& shown);

// One glyph on the line, in text-height units (height 1, width factor 1,
// upright), x along the baseline from the insertion point.
struct PlacedGlyph {
  Font* font = nullptr;
  char32_t code = 0;        // the character asked of the font, or
  unsigned glyphId = 0;     // with byGlyphId, a glyph of a shaped run
  bool byGlyphId = false;
  double x = 0.0, y = 0.0;  // where the glyph's origin goes
  const GlyphMetrics* metrics = nullptr;
  GlyphMetrics shapedMetrics;  // what metrics points to for a shaped glyph
};

// Calls visit(const PlacedGlyph&) for each glyph in order; returns the
// pen's final x (the line's advance).
template <typename Visit>
double LayOutLine(StyleFonts& fonts, const std::u32string& shown, Visit&& visit);

// The outline of a placed glyph, moved to its place on the line.
bool PlacedGlyphOutline(const PlacedGlyph& glyph, GlyphPath& path);

// How a TEXT or ATTDEF entity draws its characters.
struct TextForm {
  double height = 1.0;
  double widthFactor = 1.0;
  double oblique = 0.0;      // radians, positive leans right
  bool backwards = false;    // mirrored in X (generation flag 2)
  bool upsideDown = false;   // mirrored in Y (generation flag 4)
};

// The box of the ink, relative to the insertion point in the text's own
// frame: lower left and upper right. Text that lays down no ink (empty,
// blanks) gives two zero points.
struct InkBox {
  double minX = 0.0, minY = 0.0, maxX = 0.0, maxY = 0.0;
  bool empty = true;
};
InkBox MeasureLine(StyleFonts& fonts, const std::u32string& shown, const TextForm& form);

// ---------------------------------------------------------------- template

bool ShapeRun(StyleFonts& fonts, const std::u32string& shown, std::vector<PlacedGlyph>& glyphs, double& advance);

template <typename Visit>
double LayOutLine(StyleFonts& fonts, const std::u32string& shown, Visit&& visit) {
  if (fonts.primary() && fonts.primary()->kind() == Font::Kind::kTrueType && NeedsShaping(shown)) {
    std::vector<PlacedGlyph> glyphs;
    double advance = 0.0;
    if (ShapeRun(fonts, shown, glyphs, advance)) {
      for (PlacedGlyph& g : glyphs) {
        g.metrics = &g.shapedMetrics;
        visit(static_cast<const PlacedGlyph&>(g));
      }
      return advance;
    }
  }
  double pen = 0.0;
  PlacedGlyph g;
  for (char32_t c : shown) {
    const ResolvedGlyph& r = fonts.resolve(c);
    if (!r.font) continue;
    g.font = r.font;
    g.code = r.code;
    g.x = pen;
    g.metrics = r.metrics;
    visit(static_cast<const PlacedGlyph&>(g));
    pen += r.metrics->advance;
  }
  return pen;
}

}  // namespace kelhost::text
