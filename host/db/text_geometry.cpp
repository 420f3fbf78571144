// Where single-line text lies: its box from the widths of its style's
// fonts (the estimate of average widths only when the style cannot be read).
#include <algorithm>
#include <cmath>
#include <cwctype>
#include <string>

#include "arx/dbents.h"
#include "arx/dbextents.h"
#include "db/frames.h"
#include "db/mtext_layout.h"
#include "arx/dbsymtb.h"
#include "db/text_box.h"
#include "text/text_layout.h"

namespace {

// The characters a text shows: "%%d", "%%c", "%%p" and "%%nnn" are one
// character each, "%%u" and "%%o" (underline, overline) none.
std::wstring ShownCharacters(const std::wstring& text) {
  std::wstring shown;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text.compare(i, 2, L"%%") != 0 || i + 2 >= text.size()) {
      shown += text[i];
      continue;
    }
    const wchar_t code = static_cast<wchar_t>(std::towlower(text[i + 2]));
    if (code == L'u' || code == L'o') {
      i += 2;
    } else if (std::iswdigit(code)) {
      size_t j = i + 2;
      while (j < text.size() && j < i + 5 && std::iswdigit(text[j])) ++j;
      shown += L'?';
      i = j - 1;
    } else {
      shown += code == L'%' ? L'%' : L'?';
      i += 2;
    }
  }
  return shown;
}

// How far the text's ink reaches along its baseline, measured with the
// fonts of its style as acedTextBox measures it; false when the style
// cannot be opened (a text outside any drawing).
bool MeasuredWidth(const AcDbText& text, double& width) {
  AcDbTextStyleTableRecord* style = nullptr;
  if (text.textStyle().isNull() || acdbOpenObject(style, text.textStyle(), AcDb::kForRead) != Acad::eOk) return false;
  const ACHAR* file = nullptr;
  const ACHAR* big = nullptr;
  style->fileName(file);
  style->bigFontFileName(big);
  kelhost::text::StyleFonts& fonts = kelhost::text::FontsForStyle(file ? file : L"", big ? big : L"");
  style->close();
  std::u32string shown;
  kelhost::text::DecodeTextString(text.textStringConst(), shown);
  kelhost::text::TextForm form;
  form.height = text.height();
  form.widthFactor = text.widthFactor();
  const kelhost::text::InkBox box = kelhost::text::MeasureLine(fonts, shown, form);
  width = box.empty ? 0.0 : std::max(box.maxX, 0.0);
  return true;
}

}  // namespace

namespace kelhost::db {

bool TextBoxCorners(const AcDbText& text, AcGePoint3d corners[4]) {
  const std::wstring shown = ShownCharacters(text.textStringConst());
  if (shown.empty()) return false;
  const double h = text.height();
  double width = 0.0;
  if (!MeasuredWidth(text, width)) width = LineWidth(shown, h, text.widthFactor());
  // The text's own axes in its plane.
  Frame ocs;
  const AcGeVector3d normal = text.normal();
  const double n[3] = {normal.x, normal.y, normal.z};
  if (!OcsFrame(n, ocs)) return false;
  const AcGeVector3d ox(ocs.axis[0][0], ocs.axis[0][1], ocs.axis[0][2]);
  const AcGeVector3d oy(ocs.axis[1][0], ocs.axis[1][1], ocs.axis[1][2]);
  const double r = text.rotation();
  AcGeVector3d x = ox * std::cos(r) + oy * std::sin(r);
  AcGeVector3d y = ox * -std::sin(r) + oy * std::cos(r);

  AcGePoint3d origin = text.position();
  double left = 0.0, bottom = 0.0;
  const auto horz = text.horizontalMode();
  const auto vert = text.verticalMode();
  if (horz == AcDb::kTextAlign || horz == AcDb::kTextFit) {
    // Between the two points, whatever the characters' widths.
    const AcGeVector3d run = text.alignmentPoint() - text.position();
    if (!run.isZeroLength()) {
      width = run.length();
      x = run.normal();
      y = normal.normal().crossProduct(x);
    }
  } else if (horz != AcDb::kTextLeft || vert != AcDb::kTextBase) {
    origin = text.alignmentPoint();
    if (horz == AcDb::kTextCenter || horz == AcDb::kTextMid) left = -width / 2;
    else if (horz == AcDb::kTextRight) left = -width;
    if (horz == AcDb::kTextMid || vert == AcDb::kTextVertMid) bottom = -h / 2;
    else if (vert == AcDb::kTextTop) bottom = -h;
  }
  corners[0] = origin + x * left + y * bottom;
  corners[1] = origin + x * (left + width) + y * bottom;
  corners[2] = origin + x * (left + width) + y * (bottom + h);
  corners[3] = origin + x * left + y * (bottom + h);
  return true;
}

}  // namespace kelhost::db

Acad::ErrorStatus AcDbText::getGeomExtents(AcDbExtents& extents) const {
  AcGePoint3d corners[4];
  if (!kelhost::db::TextBoxCorners(*this, corners)) return Acad::eInvalidExtents;
  AcDbExtents box;
  for (const AcGePoint3d& p : corners) box.addPoint(p);
  extents = box;
  return Acad::eOk;
}
