#include "plot/font_faces.h"

#include <cairo-ft.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include "text/truetype_font.h"

namespace kelhost::plot {
namespace {

// cairo's faces keep their FreeType faces for as long as cairo holds
// them, so the library they come from lives as long as the process.
FT_Library Library() {
  static FT_Library library = [] {
    FT_Library lib = nullptr;
    return FT_Init_FreeType(&lib) == 0 ? lib : nullptr;
  }();
  return library;
}

const cairo_user_data_key_t kFaceKey{};

void DoneFace(void* face) { FT_Done_Face(static_cast<FT_Face>(face)); }

}  // namespace

FontFaces::~FontFaces() {
  for (auto& entry : mFaces)
    if (entry.second) cairo_font_face_destroy(entry.second);
}

cairo_font_face_t* FontFaces::faceOf(text::TrueTypeFont* font) {
  auto found = mFaces.find(font);
  if (found != mFaces.end()) return found->second;
  cairo_font_face_t* made = nullptr;
  FT_Face face = nullptr;
  if (Library() && FT_New_Face(Library(), font->path().c_str(), font->faceIndex(), &face) == 0) {
    // Unhinted, as the outlines the host measures are.
    made = cairo_ft_font_face_create_for_ft_face(face, FT_LOAD_NO_HINTING);
    if (cairo_font_face_status(made) != CAIRO_STATUS_SUCCESS ||
        cairo_font_face_set_user_data(made, &kFaceKey, face, DoneFace) != CAIRO_STATUS_SUCCESS) {
      cairo_font_face_destroy(made);
      FT_Done_Face(face);
      made = nullptr;
    }
  }
  mFaces.emplace(font, made);
  return made;
}

}  // namespace kelhost::plot
