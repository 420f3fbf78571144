#include "text/truetype_font.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_BBOX_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <hb.h>

namespace kelhost::text {
namespace {

FT_Library Library() {
  static FT_Library library = [] {
    FT_Library lib = nullptr;
    if (FT_Init_FreeType(&lib) != 0) lib = nullptr;
    return lib;
  }();
  return library;
}

constexpr FT_Int32 kUnscaled = FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP;

// The outline walker's state: font units to text-height units.
struct OutlineSink {
  GlyphPath* path;
  double scale;
  double x(const FT_Vector* v) const { return v->x * scale; }
  double y(const FT_Vector* v) const { return v->y * scale; }
};

int MoveTo(const FT_Vector* to, void* user) {
  auto* s = static_cast<OutlineSink*>(user);
  s->path->moveTo(s->x(to), s->y(to));
  return 0;
}
int LineTo(const FT_Vector* to, void* user) {
  auto* s = static_cast<OutlineSink*>(user);
  s->path->lineTo(s->x(to), s->y(to));
  return 0;
}
int ConicTo(const FT_Vector* c, const FT_Vector* to, void* user) {
  auto* s = static_cast<OutlineSink*>(user);
  s->path->quadTo(s->x(c), s->y(c), s->x(to), s->y(to));
  return 0;
}
int CubicTo(const FT_Vector* c1, const FT_Vector* c2, const FT_Vector* to, void* user) {
  auto* s = static_cast<OutlineSink*>(user);
  s->path->cubicTo(s->x(c1), s->y(c1), s->x(c2), s->y(c2), s->x(to), s->y(to));
  return 0;
}

}  // namespace

struct TrueTypeFont::Impl {
  FT_Face face = nullptr;
  double scale = 1.0;  // font units to text-height units
  hb_font_t* shaper = nullptr;
  std::string path;
  int faceIndex = 0;

  ~Impl() {
    if (shaper) hb_font_destroy(shaper);
    if (face) FT_Done_Face(face);
  }

  // The height of the capitals: the OS/2 table's, else the ink of "H",
  // else the ascender.
  double capHeight() const {
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    if (os2 && os2->version >= 2 && os2->sCapHeight > 0) return os2->sCapHeight;
    const FT_UInt h = FT_Get_Char_Index(face, 'H');
    if (h && FT_Load_Glyph(face, h, kUnscaled) == 0 && face->glyph->format == FT_GLYPH_FORMAT_OUTLINE) {
      FT_BBox box;
      if (FT_Outline_Get_BBox(&face->glyph->outline, &box) == 0 && box.yMax > 0) return box.yMax;
    }
    if (face->ascender > 0) return face->ascender;
    return face->units_per_EM * 0.7;
  }
};

std::unique_ptr<TrueTypeFont> TrueTypeFont::Open(const std::string& path, int faceIndex, HeightBasis basis) {
  FT_Library lib = Library();
  if (!lib) return nullptr;
  auto impl = std::make_unique<Impl>();
  if (FT_New_Face(lib, path.c_str(), faceIndex, &impl->face) != 0) {
    impl->face = nullptr;
    return nullptr;
  }
  if (!FT_IS_SCALABLE(impl->face) || impl->face->units_per_EM == 0) return nullptr;
  FT_Select_Charmap(impl->face, FT_ENCODING_UNICODE);
  const double basisUnits = basis == HeightBasis::kCapitals ? impl->capHeight() : impl->face->units_per_EM;
  impl->scale = 1.0 / basisUnits;
  impl->path = path;
  impl->faceIndex = faceIndex;
  return std::unique_ptr<TrueTypeFont>(new TrueTypeFont(path, std::move(impl)));
}

TrueTypeFont::TrueTypeFont(const std::string& path, std::unique_ptr<Impl> impl)
    : Font(path, Kind::kTrueType), mImpl(std::move(impl)) {}

TrueTypeFont::~TrueTypeFont() = default;

std::string TrueTypeFont::familyName() const {
  return mImpl->face->family_name ? mImpl->face->family_name : "";
}

bool TrueTypeFont::metricsOfGlyph(unsigned glyphId, GlyphMetrics& m) {
  FT_Face face = mImpl->face;
  if (FT_Load_Glyph(face, glyphId, kUnscaled) != 0) return false;
  const double s = mImpl->scale;
  m.advance = face->glyph->metrics.horiAdvance * s;
  m.inked = false;
  if (face->glyph->format == FT_GLYPH_FORMAT_OUTLINE && face->glyph->outline.n_points > 0) {
    FT_BBox box;
    if (FT_Outline_Get_BBox(&face->glyph->outline, &box) == 0 && box.xMax > box.xMin) {
      m.xMin = box.xMin * s;
      m.yMin = box.yMin * s;
      m.xMax = box.xMax * s;
      m.yMax = box.yMax * s;
      m.inked = true;
    }
  }
  return true;
}

bool TrueTypeFont::loadMetrics(char32_t c, GlyphMetrics& m) {
  const FT_UInt id = FT_Get_Char_Index(mImpl->face, c);
  return id != 0 && metricsOfGlyph(id, m);
}

bool TrueTypeFont::outlineOfGlyph(unsigned glyphId, GlyphPath& path) {
  FT_Face face = mImpl->face;
  if (FT_Load_Glyph(face, glyphId, kUnscaled) != 0 || face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) return false;
  FT_Outline_Funcs funcs{};
  funcs.move_to = MoveTo;
  funcs.line_to = LineTo;
  funcs.conic_to = ConicTo;
  funcs.cubic_to = CubicTo;
  OutlineSink sink{&path, mImpl->scale};
  path.filled = true;
  return FT_Outline_Decompose(&face->glyph->outline, &funcs, &sink) == 0;
}

int TrueTypeFont::faceIndex() const { return mImpl->faceIndex; }

unsigned TrueTypeFont::glyphIndex(char32_t c) const { return FT_Get_Char_Index(mImpl->face, c); }

double TrueTypeFont::emInTextHeights() const { return mImpl->face->units_per_EM * mImpl->scale; }

bool TrueTypeFont::outline(char32_t c, GlyphPath& path) {
  const FT_UInt id = FT_Get_Char_Index(mImpl->face, c);
  return id != 0 && outlineOfGlyph(id, path);
}

bool TrueTypeFont::shape(const std::u32string& run, std::vector<ShapedGlyph>& glyphs) {
  glyphs.clear();
  if (!mImpl->shaper) {
    hb_blob_t* blob = hb_blob_create_from_file(mImpl->path.c_str());
    hb_face_t* face = hb_face_create(blob, static_cast<unsigned>(mImpl->faceIndex));
    mImpl->shaper = hb_font_create(face);  // scale: font units
    hb_face_destroy(face);
    hb_blob_destroy(blob);
  }
  hb_buffer_t* buffer = hb_buffer_create();
  hb_buffer_add_utf32(buffer, reinterpret_cast<const uint32_t*>(run.data()), static_cast<int>(run.size()), 0,
                      static_cast<int>(run.size()));
  hb_buffer_guess_segment_properties(buffer);
  hb_shape(mImpl->shaper, buffer, nullptr, 0);
  unsigned count = 0;
  const hb_glyph_info_t* info = hb_buffer_get_glyph_infos(buffer, &count);
  const hb_glyph_position_t* pos = hb_buffer_get_glyph_positions(buffer, &count);
  const double s = mImpl->scale;
  bool ok = true;
  for (unsigned i = 0; i < count && ok; ++i) {
    ShapedGlyph g;
    g.glyphId = info[i].codepoint;
    ok = metricsOfGlyph(g.glyphId, g.metrics);
    g.metrics.advance = pos[i].x_advance * s;
    g.xOffset = pos[i].x_offset * s;
    g.yOffset = pos[i].y_offset * s;
    glyphs.push_back(g);
  }
  hb_buffer_destroy(buffer);
  return ok;
}

}  // namespace kelhost::text
