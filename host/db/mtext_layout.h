// How much room text takes, estimated: the host has no fonts. A
// character is as wide as the text height times the style's width factor
// when it is a wide (East Asian full-width) character, and 0.7 of that
// otherwise; lines lie 5/3 of the text height apart times the line
// spacing factor (the platform's standard spacing). Lines wrap at spaces,
// and between wide characters, to the reference width when one is set.
// Inline changes of height, font or width (\H, \f, \W) are not measured.
#pragma once

#include <string>
#include <vector>

namespace kelhost::db {

struct TextLayout {
  std::vector<std::wstring> lines;  // as laid out (wrapped), blanks at the ends kept
  std::vector<double> widths;       // of each line
  double width = 0.0;               // the widest line
  double height = 0.0;              // first line's top to last line's baseline
};

double CharacterWidth(wchar_t c, double height, double widthFactor);
double LineWidth(const std::wstring& line, double height, double widthFactor);
// The distance between baselines of consecutive lines.
double LinePitch(double height, double spacingFactor);
// Lays plain text (lines separated by '\n') out; wrapWidth 0 for none.
TextLayout LayOutText(const std::wstring& plain, double height, double widthFactor, double spacingFactor,
                      double wrapWidth);

}  // namespace kelhost::db
