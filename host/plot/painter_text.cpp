// Text as its style's glyphs: TrueType outlines filled, shape-font strokes
// drawn with the entity's pen.
#include <cmath>
#include <vector>

#include "arx/dbblkref.h"
#include "arx/dbents.h"
#include "arx/dbmtext.h"
#include "arx/dbsymtb.h"
#include "db/mtext_layout.h"
#include "db/stub.h"
#include "db/text_box.h"
#include "plot/glyph_cache.h"
#include "plot/painter.h"
#include "plot/painter_state.h"
#include "text/font_library.h"
#include "text/text_layout.h"
#include "text/truetype_font.h"

namespace kelhost::plot {

text::StyleFonts* Painter::fontsOf(AcDbObjectId style, double* widthFactor) {
  auto found = mCaches->styles.find(style);
  if (found == mCaches->styles.end()) {
    std::pair<text::StyleFonts*, double> entry{nullptr, 1.0};
    const AcDbTextStyleTableRecord* record = db::PeekAs<AcDbTextStyleTableRecord>(style);
    if (record && !record->isErased()) {
      const ACHAR* file = nullptr;
      const ACHAR* big = nullptr;
      record->fileName(file);
      record->bigFontFileName(big);
      entry.first = &text::FontsForStyle(file ? file : L"", big ? big : L"");
      entry.second = record->xScale() > 0 ? record->xScale() : 1.0;
    }
    found = mCaches->styles.emplace(style, entry).first;
  }
  if (widthFactor) *widthFactor = found->second.second;
  return found->second.first;
}

// One line of glyphs from start along x (unit), upright along y (unit):
// a glyph point (u, v) in text-height units lands at
// start + x (u xScale + v height slant) + y (v height). TrueType glyphs go
// to cairo as glyphs of their font; shape-font glyphs as their strokes.
void Painter::textLine(text::StyleFonts& fonts, const std::u32string& shown, const AcGePoint3d& start,
                       const AcGeVector3d& x, const AcGeVector3d& y, double height, double xScale, double slant,
                       const Look& look, const Context& c) {
  setPen(look, c, false);
  // A glyph point to the device.
  auto place = [&](double u, double v, double& dx, double& dy) {
    const AcGePoint3d p = c.model * (start + x * (u * xScale + v * height * slant) + y * (v * height));
    c.device.apply(p.x, p.y, dx, dy);
  };
  // Runs of glyphs of one TrueType font, shown together.
  text::TrueTypeFont* runFont = nullptr;
  std::vector<cairo_glyph_t> run;
  auto showRun = [&] {
    if (run.empty()) return;
    cairo_font_face_t* face = mCaches->faces.faceOf(runFont);
    double ox, oy, ux, uy, vx, vy;
    place(0, 0, ox, oy);
    place(1, 0, ux, uy);
    place(0, 1, vx, vy);
    // Text space (x along, y down) to the device.
    cairo_matrix_t m;
    cairo_matrix_init(&m, ux - ox, uy - oy, ox - vx, oy - vy, ox, oy);
    if (face && std::fabs(m.xx * m.yy - m.xy * m.yx) > 1e-12) {
      cairo_save(mCr);
      cairo_transform(mCr, &m);
      cairo_set_font_face(mCr, face);
      cairo_set_font_size(mCr, runFont->emInTextHeights());
      cairo_font_options_t* options = cairo_font_options_create();
      cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
      cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
      cairo_set_font_options(mCr, options);
      cairo_font_options_destroy(options);
      cairo_show_glyphs(mCr, run.data(), static_cast<int>(run.size()));
      cairo_restore(mCr);
    }
    run.clear();
  };
  bool pendingFilled = false, pending = false;
  auto flush = [&] {
    if (!pending) return;
    if (pendingFilled) {
      cairo_set_fill_rule(mCr, CAIRO_FILL_RULE_WINDING);
      cairo_fill(mCr);
    } else {
      cairo_stroke(mCr);
    }
    pending = false;
  };
  cairo_new_path(mCr);
  text::LayOutLine(fonts, shown, [&](const text::PlacedGlyph& g) {
    if (g.font->kind() == text::Font::Kind::kTrueType) {
      auto* font = static_cast<text::TrueTypeFont*>(g.font);
      const unsigned index = g.byGlyphId ? g.glyphId : font->glyphIndex(g.code);
      if (index != 0 && mCaches->faces.faceOf(font)) {
        if (font != runFont) showRun();
        runFont = font;
        run.push_back(cairo_glyph_t{index, g.x, -g.y});
        return;
      }
    }
    const text::GlyphPath* path = mCaches->glyphs.outline(g);
    if (!path) return;
    if (pending && pendingFilled != path->filled) flush();
    pending = true;
    pendingFilled = path->filled;
    const double* k = path->coords.data();
    double lastX = 0, lastY = 0;  // the current point (device), for quadratic pieces
    for (text::GlyphPath::Op op : path->ops) {
      double ax = 0, ay = 0, bx = 0, by = 0, ex = 0, ey = 0;
      switch (op) {
        case text::GlyphPath::Op::kMove:
          place(g.x + k[0], g.y + k[1], ex, ey);
          cairo_move_to(mCr, ex, ey);
          k += 2;
          break;
        case text::GlyphPath::Op::kLine:
          place(g.x + k[0], g.y + k[1], ex, ey);
          cairo_line_to(mCr, ex, ey);
          k += 2;
          break;
        case text::GlyphPath::Op::kQuad:
          place(g.x + k[0], g.y + k[1], ax, ay);
          place(g.x + k[2], g.y + k[3], ex, ey);
          cairo_curve_to(mCr, lastX + 2.0 / 3 * (ax - lastX), lastY + 2.0 / 3 * (ay - lastY),
                         ex + 2.0 / 3 * (ax - ex), ey + 2.0 / 3 * (ay - ey), ex, ey);
          k += 4;
          break;
        case text::GlyphPath::Op::kCubic:
          place(g.x + k[0], g.y + k[1], ax, ay);
          place(g.x + k[2], g.y + k[3], bx, by);
          place(g.x + k[4], g.y + k[5], ex, ey);
          cairo_curve_to(mCr, ax, ay, bx, by, ex, ey);
          k += 6;
          break;
      }
      lastX = ex;
      lastY = ey;
    }
  });
  flush();
  showRun();
}

void Painter::text(const AcDbText& t, const Look& look, const Context& c) {
  text::StyleFonts* fonts = fontsOf(t.textStyle());
  if (!fonts) return;
  const ACHAR* string = t.textStringConst();
  if (const AcDbAttributeDefinition* def = AcDbAttributeDefinition::cast(&t); def && !c.outer) string = def->tagConst();
  std::u32string shown;
  text::DecodeTextString(string, shown);
  if (shown.empty()) return;
  // The box the text fills, from its justification: its lower left corner
  // is where the baseline starts.
  AcGePoint3d box[4];
  if (!db::TextBoxCorners(t, box)) return;
  const double height = t.height();
  if (!(height > 0)) return;
  AcGeVector3d y = box[3] - box[0];
  if (y.isZeroLength()) return;
  y = y.normal();
  AcGeVector3d x = y.crossProduct(t.normal());
  if (x.isZeroLength()) return;
  x = x.normal();
  double xScale = height * t.widthFactor();
  // Aligned and fitted text spans its two points whatever its characters.
  const double span = (box[1] - box[0]).length();
  if (t.horizontalMode() == AcDb::kTextAlign || t.horizontalMode() == AcDb::kTextFit) {
    text::TextForm form;
    form.height = height;
    form.widthFactor = t.widthFactor();
    const text::InkBox ink = text::MeasureLine(*fonts, shown, form);
    if (!ink.empty && ink.maxX > 0) xScale *= span / ink.maxX;
  }
  AcGePoint3d start = box[0];
  // Mirrored text reads backwards (or upside down) within the same box.
  if (t.isMirroredInX()) {
    start += x * span;
    x = -x;
  }
  if (t.isMirroredInY()) {
    start += y * height;
    y = -y;
  }
  textLine(*fonts, shown, start, x, y, height, xScale, std::tan(t.oblique()), look, c);
}

// Multiline text: its plain lines, wrapped to its width, each placed by
// the attachment point.
void Painter::mtext(const AcDbMText& t, const Look& look, const Context& c) {
  double widthFactor = 1.0;
  text::StyleFonts* fonts = fontsOf(t.textStyle(), &widthFactor);
  if (!fonts) return;
  ACHAR* plain = t.text();
  if (!plain) return;
  const std::wstring content = plain;
  std::free(plain);
  const double height = t.textHeight();
  if (!(height > 0)) return;
  const db::TextLayout laid =
      db::LayOutText(content, height, widthFactor, t.lineSpacingFactor(), t.width());
  if (laid.lines.empty()) return;
  AcGeVector3d x = t.direction();
  if (x.isZeroLength()) return;
  x = x.normal();
  const AcGeVector3d y = t.normal().normal().crossProduct(x);
  const int attachment = static_cast<int>(t.attachment()) - 1;
  const int row = attachment / 3, column = attachment % 3;
  const double pitch = db::LinePitch(height, t.lineSpacingFactor());
  const double total = height + pitch * (laid.lines.size() - 1);
  const double top = row == 0 ? 0.0 : row == 1 ? total / 2 : total;
  text::TextForm form;
  form.height = height;
  form.widthFactor = widthFactor;
  for (size_t i = 0; i < laid.lines.size(); ++i) {
    std::u32string shown(laid.lines[i].begin(), laid.lines[i].end());
    if (shown.empty()) continue;
    double left = 0.0;
    if (column > 0) {
      const double advance = text::LayOutLine(*fonts, shown, [](const text::PlacedGlyph&) {}) * height * widthFactor;
      left = column == 1 ? -advance / 2 : -advance;
    }
    const AcGePoint3d start = t.location() + x * left + y * (top - height - pitch * i);
    textLine(*fonts, shown, start, x, y, height, height * widthFactor, 0.0, look, c);
  }
}

}  // namespace kelhost::plot
