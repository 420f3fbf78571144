#include "db/mtext_codes.h"

#include <cwctype>

namespace kelhost::db {
namespace {

// The value of a hexadecimal digit, or -1.
int HexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return -1;
}

// The character of \U+XXXX at s[i], or 0 when it is not one.
wchar_t UnicodeEscape(const std::wstring& s, size_t i) {
  if (i + 6 >= s.size() || s[i + 2] != L'+') return 0;
  int value = 0;
  for (size_t k = i + 3; k < i + 7; ++k) {
    const int d = HexDigit(s[k]);
    if (d < 0) return 0;
    value = value * 16 + d;
  }
  return static_cast<wchar_t>(value);
}

// Where the argument of a code ends: just past its ';' (or the end).
size_t PastSemicolon(const std::wstring& s, size_t from) {
  const size_t semi = s.find(L';', from);
  return semi == std::wstring::npos ? s.size() : semi + 1;
}

// A stacked fraction's argument "a^b", "a/b" or "a#b" (with its own
// escapes) read as a/b.
std::wstring Stacked(const std::wstring& arg) {
  std::wstring out;
  for (size_t i = 0; i < arg.size(); ++i) {
    const wchar_t c = arg[i];
    if (c == L'\\' && i + 1 < arg.size()) {
      out += arg[++i];
    } else if (c == L'^' || c == L'#') {
      out += L'/';
    } else {
      out += c;
    }
  }
  return out;
}

// The %% symbol codes at s[i] (which holds "%%"): appends the character
// and returns where the text goes on, or i when it is not one.
size_t PercentCode(const std::wstring& s, size_t i, std::wstring& out) {
  if (i + 2 >= s.size()) return i;
  switch (std::towlower(static_cast<wint_t>(s[i + 2]))) {
    case L'c': out += L'\u2205'; return i + 3;
    case L'd': out += L'\u00B0'; return i + 3;
    case L'p': out += L'\u00B1'; return i + 3;
    case L'%': out += L'%'; return i + 3;
    default: break;
  }
  if (i + 4 < s.size() && std::iswdigit(static_cast<wint_t>(s[i + 2])) && std::iswdigit(static_cast<wint_t>(s[i + 3])) &&
      std::iswdigit(static_cast<wint_t>(s[i + 4]))) {
    const int code = (s[i + 2] - L'0') * 100 + (s[i + 3] - L'0') * 10 + (s[i + 4] - L'0');
    if (code == 0) return i;  // no character to give
    out += static_cast<wchar_t>(code);
    return i + 5;
  }
  return i;
}

}  // namespace

std::wstring MTextPlainText(const std::wstring& s) {
  std::wstring out;
  out.reserve(s.size());
  size_t i = 0;
  while (i < s.size()) {
    const wchar_t c = s[i];
    if (c == L'{' || c == L'}') {
      ++i;
      continue;
    }
    if (c == L'%' && i + 1 < s.size() && s[i + 1] == L'%') {
      const size_t next = PercentCode(s, i, out);
      if (next != i) {
        i = next;
        continue;
      }
    }
    if (c != L'\\' || i + 1 >= s.size()) {
      out += c;
      ++i;
      continue;
    }
    const wchar_t code = s[i + 1];
    switch (code) {
      case L'P':
      case L'N':
      case L'X':
        out += L'\n';
        i += 2;
        break;
      case L'~':
        out += L' ';
        i += 2;
        break;
      case L'\\':
      case L'{':
      case L'}':
        out += code;
        i += 2;
        break;
      case L'L': case L'l': case L'O': case L'o': case L'K': case L'k':
        i += 2;
        break;
      case L'f': case L'F': case L'H': case L'C': case L'c': case L'A':
      case L'T': case L'Q': case L'W': case L'p':
        i = PastSemicolon(s, i + 2);
        break;
      case L'S': {
        const size_t end = PastSemicolon(s, i + 2);
        const size_t argEnd = end > i + 2 && end <= s.size() && s[end - 1] == L';' ? end - 1 : end;
        out += Stacked(s.substr(i + 2, argEnd - (i + 2)));
        i = end;
        break;
      }
      case L'U':
        if (const wchar_t u = UnicodeEscape(s, i)) {
          out += u;
          i += 7;
          break;
        }
        [[fallthrough]];
      default:
        out += c;
        out += code;
        i += 2;
        break;
    }
  }
  return out;
}

}  // namespace kelhost::db
