#include "db/mtext_layout.h"

namespace kelhost::db {
namespace {

bool IsWide(wchar_t c) {
  const unsigned long u = static_cast<unsigned long>(c);
  return (u >= 0x1100 && u <= 0x115F) || (u >= 0x2E80 && u <= 0xA4CF) || (u >= 0xAC00 && u <= 0xD7A3) ||
         (u >= 0xF900 && u <= 0xFAFF) || (u >= 0xFE30 && u <= 0xFE4F) || (u >= 0xFF00 && u <= 0xFF60) ||
         (u >= 0xFFE0 && u <= 0xFFE6) || (u >= 0x20000 && u <= 0x3FFFD);
}

// Breaks one line into pieces no wider than wrapWidth where it can: after
// a space, or before or after a wide character. A piece with no break
// opportunity stays whole however wide.
void Wrap(const std::wstring& line, double height, double widthFactor, double wrapWidth,
          std::vector<std::wstring>& out) {
  size_t start = 0;
  while (start < line.size()) {
    double width = 0.0;
    size_t lastBreak = std::wstring::npos;  // a piece may end before this index
    size_t i = start;
    for (; i < line.size(); ++i) {
      const wchar_t c = line[i];
      if (i > start && (IsWide(c) || IsWide(line[i - 1]) || line[i - 1] == L' ')) lastBreak = i;
      const double w = CharacterWidth(c, height, widthFactor);
      if (width + w > wrapWidth && c != L' ' && lastBreak != std::wstring::npos) break;
      width += w;
    }
    const size_t end = i < line.size() ? lastBreak : line.size();
    std::wstring piece = line.substr(start, end - start);
    // The spaces a line breaks at take no room.
    while (!piece.empty() && piece.back() == L' ' && end < line.size()) piece.pop_back();
    out.push_back(piece);
    start = end;
  }
  if (line.empty()) out.push_back(line);
}

}  // namespace

double CharacterWidth(wchar_t c, double height, double widthFactor) {
  return height * widthFactor * (IsWide(c) ? 1.0 : 0.7);
}

double LineWidth(const std::wstring& line, double height, double widthFactor) {
  double w = 0.0;
  for (wchar_t c : line) w += CharacterWidth(c, height, widthFactor);
  return w;
}

double LinePitch(double height, double spacingFactor) { return height * 5.0 / 3.0 * spacingFactor; }

TextLayout LayOutText(const std::wstring& plain, double height, double widthFactor, double spacingFactor,
                      double wrapWidth) {
  TextLayout layout;
  if (plain.empty()) return layout;
  size_t from = 0;
  while (true) {
    const size_t nl = plain.find(L'\n', from);
    const std::wstring line = plain.substr(from, nl == std::wstring::npos ? std::wstring::npos : nl - from);
    if (wrapWidth > 0) {
      Wrap(line, height, widthFactor, wrapWidth, layout.lines);
    } else {
      layout.lines.push_back(line);
    }
    if (nl == std::wstring::npos) break;
    from = nl + 1;
  }
  for (const std::wstring& line : layout.lines) {
    layout.widths.push_back(LineWidth(line, height, widthFactor));
    if (layout.widths.back() > layout.width) layout.width = layout.widths.back();
  }
  layout.height = height + static_cast<double>(layout.lines.size() - 1) * LinePitch(height, spacingFactor);
  return layout;
}

}  // namespace kelhost::db
