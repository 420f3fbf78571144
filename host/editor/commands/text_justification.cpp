#include "editor/commands/text_justification.h"

#include <cmath>

#include "db/mtext_layout.h"

namespace kelhost::editor {
namespace {

using AcDb::kTextAlign;
using AcDb::kTextBase;
using AcDb::kTextBottom;
using AcDb::kTextCenter;
using AcDb::kTextFit;
using AcDb::kTextLeft;
using AcDb::kTextMid;
using AcDb::kTextRight;
using AcDb::kTextTop;
using AcDb::kTextVertMid;

constexpr double kDescent = 1.0 / 3.0;  // of the height, below the baseline

}  // namespace

const std::vector<Justification>& Justifications() {
  static const std::vector<Justification> all = {
      {L"Left", kTextLeft, kTextBase, L"\nSpecify start point of text"},
      {L"Center", kTextCenter, kTextBase, L"\nSpecify center point of text"},
      {L"Right", kTextRight, kTextBase, L"\nSpecify right endpoint of text baseline"},
      {L"Align", kTextAlign, kTextBase, L"\nSpecify first endpoint of text baseline"},
      {L"Middle", kTextMid, kTextBase, L"\nSpecify middle point of text"},
      {L"Fit", kTextFit, kTextBase, L"\nSpecify first endpoint of text baseline"},
      {L"TL", kTextLeft, kTextTop, L"\nSpecify top-left point of text"},
      {L"TC", kTextCenter, kTextTop, L"\nSpecify top-center point of text"},
      {L"TR", kTextRight, kTextTop, L"\nSpecify top-right point of text"},
      {L"ML", kTextLeft, kTextVertMid, L"\nSpecify middle-left point of text"},
      {L"MC", kTextCenter, kTextVertMid, L"\nSpecify middle-center point of text"},
      {L"MR", kTextRight, kTextVertMid, L"\nSpecify middle-right point of text"},
      {L"BL", kTextLeft, kTextBottom, L"\nSpecify bottom-left point of text"},
      {L"BC", kTextCenter, kTextBottom, L"\nSpecify bottom-center point of text"},
      {L"BR", kTextRight, kTextBottom, L"\nSpecify bottom-right point of text"},
  };
  return all;
}

const Justification* FindJustification(const std::wstring& keyword) {
  for (const Justification& j : Justifications())
    if (keyword == j.keyword) return &j;
  return nullptr;
}

const Justification& LeftJustification() { return Justifications().front(); }

bool TakesBaseline(const Justification& j) { return j.horz == kTextAlign || j.horz == kTextFit; }

std::wstring JustificationKeywords() {
  std::wstring list;
  for (const Justification& j : Justifications()) list += (list.empty() ? L"" : L" ") + std::wstring(j.keyword);
  return list;
}

double TextLength(const std::wstring& text, double height, double widthFactor) {
  return db::LineWidth(text, height, widthFactor);
}

AcGePoint2d TextPosition(const Justification& j, const AcGePoint2d& alignment, const std::wstring& text, double height,
                         double widthFactor, double rotation) {
  const double width = TextLength(text, height, widthFactor);
  double dx = 0, dy = 0;
  switch (j.horz) {
    case kTextCenter:
      dx = -width / 2;
      break;
    case kTextRight:
      dx = -width;
      break;
    case kTextMid:
      dx = -width / 2;
      dy = -height / 2;
      break;
    default:
      break;
  }
  switch (j.vert) {
    case kTextTop:
      dy = -height;
      break;
    case kTextVertMid:
      dy = -height / 2;
      break;
    case kTextBottom:
      dy = kDescent * height;
      break;
    default:
      break;
  }
  const double c = std::cos(rotation), s = std::sin(rotation);
  return AcGePoint2d(alignment.x + dx * c - dy * s, alignment.y + dx * s + dy * c);
}

}  // namespace kelhost::editor
