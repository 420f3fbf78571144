// Where the host's fonts come from. A style names its font file and big
// font file as the drawing's STYLE table holds them ("txt", "gbenor.shx",
// "gbcbig.shx", "arial.ttf"); they are looked for on the support path
// (the current directory and ACAD), TrueType ones also among the system's
// fonts (fontconfig). A font that cannot be found is replaced, as the
// platform does: a shape font by the font FONTALT names, when that one is
// found, else by the Latin substitute; a big font by the CJK substitute; a
// TrueType font by the system font fontconfig offers for its name. The
// replacement is said once per font on standard error:
//   Substituting [LiberationSans-Regular.ttf] for [txt.shx].
// The substitutes come from Debian font packages: Liberation Sans
// (fonts-liberation2; DejaVu Sans when it is missing) and WenQuanYi Micro
// Hei (fonts-wqy-microhei).
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "text/font.h"

namespace kelhost::text {

// A character as a style draws it: the font that has it and its metrics.
struct ResolvedGlyph {
  Font* font = nullptr;          // null: nothing can draw it (no ink, no advance)
  char32_t code = 0;             // the character asked of that font ('?' for a stand-in)
  const GlyphMetrics* metrics = nullptr;
};

// The fonts of one style: its font, its big font (shape fonts only), and
// the substitutes for characters neither has. Kept for the session.
class StyleFonts {
 public:
  StyleFonts(Font* primary, Font* big);
  ~StyleFonts();
  StyleFonts(const StyleFonts&) = delete;
  StyleFonts& operator=(const StyleFonts&) = delete;

  Font* primary() const { return mPrimary; }
  Font* big() const { return mBig; }
  // Double-byte characters of a shape font come from its big font; what
  // the style's fonts lack from the substitutes (CJK characters from the
  // CJK one); what no font has is drawn as the style font's "?".
  const ResolvedGlyph& resolve(char32_t c);

 private:
  ResolvedGlyph lookUp(char32_t c);
  Font* mPrimary;
  Font* mBig;
  struct Cache;
  std::unique_ptr<Cache> mCache;
};

// The fonts of a style's font and big font file names (big may be empty),
// found or substituted on first use and kept for the session.
StyleFonts& FontsForStyle(const std::wstring& fontFile, const std::wstring& bigFontFile);

// The substitutes (null only when the system has no scalable font at all).
Font* LatinSubstitute();
Font* CjkSubstitute();

// True for characters drawn a full text height wide in East Asian text
// (CJK ideographs, kana, hangul, full-width forms).
bool IsWideCharacter(char32_t c);

}  // namespace kelhost::text
