// Plain readers for the pieces of typed numbers, shared by the distance
// and angle parsers.
#pragma once

#include <string_view>

namespace kelhost::units {

struct Cursor {
  std::wstring_view s;
  size_t i = 0;
  bool end() const { return i >= s.size(); }
  wchar_t peek() const { return end() ? 0 : s[i]; }
  void skipBlanks() {
    while (!end() && (s[i] == L' ' || s[i] == L'\t')) ++i;
  }
};

inline bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// An unsigned decimal or scientific number; integral tells whether it had
// neither a decimal point nor an exponent. On failure the cursor stays.
bool ReadNumber(Cursor& c, double& v, bool& integral);

}  // namespace kelhost::units
