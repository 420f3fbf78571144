// Paper names: the ISO sizes by their short names and as the platform's
// plotter configurations name them, and custom sizes in millimetres.
#include <cwctype>
#include <string>

#include "kelhost/plot.h"
#include "kelhost/text.h"

namespace kelhost::plot {
namespace {

struct IsoSize {
  const wchar_t* name;
  double longSide, shortSide;
};
constexpr IsoSize kIso[] = {
    {L"A0", 1189, 841}, {L"A1", 841, 594}, {L"A2", 594, 420}, {L"A3", 420, 297}, {L"A4", 297, 210},
};

// "420x297", "420 x 297", "420.5X297": two positive numbers of millimetres.
bool CustomSize(const std::wstring& text, double& width, double& height) {
  const wchar_t* p = text.c_str();
  wchar_t* end = nullptr;
  width = std::wcstod(p, &end);
  if (end == p) return false;
  while (*end == L' ') ++end;
  if (*end != L'x' && *end != L'X') return false;
  p = end + 1;
  height = std::wcstod(p, &end);
  if (end == p) return false;
  while (*end == L' ') ++end;
  if (ToLower(end) == L"mm") end += 2;
  return *end == 0 && width > 0 && height > 0 && width < 1e5 && height < 1e5;
}

}  // namespace

bool PaperSize(const std::wstring& given, double& width, double& height) {
  std::wstring name = ToUpper(given);
  for (wchar_t& c : name)
    if (c == L'_') c = L' ';
  // "ISO FULL BLEED A3 (420.00 X 297.00 MM)" and "ISO A3 (...)" name the A3.
  const size_t paren = name.find(L'(');
  if (paren != std::wstring::npos) name = name.substr(0, paren);
  while (!name.empty() && name.back() == L' ') name.pop_back();
  for (const char* prefix : {"ISO FULL BLEED ", "ISO EXPAND ", "ISO "}) {
    const std::wstring p = FromUtf8(prefix);
    if (name.compare(0, p.size(), p) == 0) {
      name = name.substr(p.size());
      break;
    }
  }
  for (const IsoSize& size : kIso)
    if (name == size.name) {
      width = size.longSide;
      height = size.shortSide;
      return true;
    }
  return CustomSize(given, width, height);
}

}  // namespace kelhost::plot
