// The host's TrueType fonts as cairo font faces: a page then embeds the
// font once and places its glyphs, instead of carrying every outline of
// every character (the same glyphs, from the same font files).
#pragma once

#include <cairo.h>

#include <map>

namespace kelhost::text {
class TrueTypeFont;
}

namespace kelhost::plot {

class FontFaces {
 public:
  FontFaces() = default;
  ~FontFaces();
  FontFaces(const FontFaces&) = delete;
  FontFaces& operator=(const FontFaces&) = delete;

  // Null when the font's file cannot be opened again for cairo.
  cairo_font_face_t* faceOf(text::TrueTypeFont* font);

 private:
  std::map<const text::TrueTypeFont*, cairo_font_face_t*> mFaces;
};

}  // namespace kelhost::plot
