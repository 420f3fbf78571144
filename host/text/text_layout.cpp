#include "text/text_layout.h"

#include <algorithm>
#include <cmath>
#include <cwctype>

namespace kelhost::text {

void DecodeTextString(const wchar_t* text, std::u32string& shown) {
  shown.clear();
  if (!text) return;
  for (const wchar_t* p = text; *p; ++p) {
    if (p[0] == L'%' && p[1] == L'%' && p[2]) {
      const wchar_t code = static_cast<wchar_t>(std::towlower(p[2]));
      if (std::iswdigit(code)) {
        unsigned value = 0;
        int digits = 0;
        for (; digits < 3 && std::iswdigit(p[2 + digits]); ++digits) value = value * 10 + (p[2 + digits] - L'0');
        if (value) shown += static_cast<char32_t>(value);
        p += 1 + digits;
        continue;
      }
      switch (code) {
        case L'd': shown += U'\u00B0'; break;
        case L'p': shown += U'\u00B1'; break;
        case L'c': shown += U'\u2205'; break;
        case L'%': shown += U'%'; break;
        case L'u': case L'o': break;
        default: shown += static_cast<char32_t>(p[2]); break;
      }
      p += 2;
      continue;
    }
    if (p[0] == L'\\' && (p[1] == L'U' || p[1] == L'u') && p[2] == L'+') {
      unsigned value = 0;
      int digits = 0;
      for (; digits < 4 && std::iswxdigit(p[3 + digits]); ++digits) {
        const wchar_t h = static_cast<wchar_t>(std::towlower(p[3 + digits]));
        value = value * 16 + (h <= L'9' ? h - L'0' : h - L'a' + 10);
      }
      if (digits == 4) {
        shown += static_cast<char32_t>(value);
        p += 6;
        continue;
      }
    }
    shown += static_cast<char32_t>(*p);
  }
}

bool NeedsShaping(const std::u32string& shown) {
  for (char32_t c : shown) {
    if (c < 0x0300) continue;
    if ((c <= 0x036F) || (c >= 0x0590 && c <= 0x08FF) || (c >= 0x0900 && c <= 0x0DFF) ||
        (c >= 0x0E00 && c <= 0x0FFF) || (c >= 0x1000 && c <= 0x109F) || (c >= 0x1780 && c <= 0x17FF) ||
        (c >= 0x1AB0 && c <= 0x1AFF) || (c >= 0x1DC0 && c <= 0x1DFF) || c == 0x200C || c == 0x200D ||
        (c >= 0x20D0 && c <= 0x20FF) || (c >= 0xFB1D && c <= 0xFDFF) || (c >= 0xFE20 && c <= 0xFE2F) ||
        (c >= 0xFE70 && c <= 0xFEFF))
      return true;
  }
  return false;
}

bool ShapeRun(StyleFonts& fonts, const std::u32string& shown, std::vector<PlacedGlyph>& glyphs, double& advance) {
  auto* font = static_cast<TrueTypeFont*>(fonts.primary());
  std::vector<ShapedGlyph> shaped;
  if (!font->shape(shown, shaped)) return false;
  glyphs.clear();
  advance = 0.0;
  for (const ShapedGlyph& s : shaped) {
    PlacedGlyph g;
    g.font = font;
    g.glyphId = s.glyphId;
    g.byGlyphId = true;
    g.x = advance + s.xOffset;
    g.y = s.yOffset;
    g.shapedMetrics = s.metrics;
    glyphs.push_back(g);
    advance += s.metrics.advance;
  }
  return true;
}

bool PlacedGlyphOutline(const PlacedGlyph& glyph, GlyphPath& path) {
  if (!glyph.font) return false;
  bool ok;
  if (glyph.byGlyphId) ok = static_cast<TrueTypeFont*>(glyph.font)->outlineOfGlyph(glyph.glyphId, path);
  else ok = glyph.font->outline(glyph.code, path);
  if (ok) path.transform(1, 1, glyph.x, glyph.y);
  return ok;
}

InkBox MeasureLine(StyleFonts& fonts, const std::u32string& shown, const TextForm& form) {
  InkBox box;
  double minX = 1e300, minY = 1e300, maxX = -1e300, maxY = -1e300;
  LayOutLine(fonts, shown, [&](const PlacedGlyph& g) {
    const GlyphMetrics& m = *g.metrics;
    if (!m.inked) return;
    minX = std::min(minX, g.x + m.xMin);
    maxX = std::max(maxX, g.x + m.xMax);
    minY = std::min(minY, g.y + m.yMin);
    maxY = std::max(maxY, g.y + m.yMax);
  });
  if (minX > maxX) return box;
  const double sx = form.height * form.widthFactor, sy = form.height;
  minX *= sx;
  maxX *= sx;
  minY *= sy;
  maxY *= sy;
  // An oblique angle leans the box: its corners move by y tan(angle).
  if (form.oblique != 0.0) {
    const double lean = std::tan(form.oblique);
    const double a = minX + minY * lean, b = minX + maxY * lean, c = maxX + minY * lean, d = maxX + maxY * lean;
    minX = std::min(a, b);
    maxX = std::max(c, d);
  }
  if (form.backwards) {
    std::swap(minX, maxX);
    minX = -minX;
    maxX = -maxX;
  }
  if (form.upsideDown) {
    std::swap(minY, maxY);
    minY = -minY;
    maxY = -maxY;
  }
  // Adding zero turns a mirrored -0.0 into 0.0.
  box.minX = minX + 0.0;
  box.minY = minY + 0.0;
  box.maxX = maxX + 0.0;
  box.maxY = maxY + 0.0;
  box.empty = false;
  return box;
}

}  // namespace kelhost::text
