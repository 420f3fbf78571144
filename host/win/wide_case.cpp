// Unicode case mapping and white space, taken from the C library's UTF-8
// character tables so that the answer does not depend on the locale the
// process happens to run in (the "C" locale maps ASCII only).
#include <clocale>
#include <cwctype>
#include <locale.h>
#include <wctype.h>

#include "kelhost/text.h"
#include "win/unicode_locale.h"

namespace kelhost {
locale_t UnicodeLocale() {
  static const locale_t loc = [] {
    locale_t l = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    if (!l) l = newlocale(LC_CTYPE_MASK, "en_US.UTF-8", static_cast<locale_t>(nullptr));
    return l;
  }();
  return loc;
}

// ASCII, by far the most common, needs no table.
wchar_t ToUpperChar(wchar_t ch) {
  if (ch < 0x80) return ch >= L'a' && ch <= L'z' ? static_cast<wchar_t>(ch - 32) : ch;
  locale_t l = UnicodeLocale();
  return static_cast<wchar_t>(l ? towupper_l(static_cast<wint_t>(ch), l) : std::towupper(static_cast<wint_t>(ch)));
}

wchar_t ToLowerChar(wchar_t ch) {
  if (ch < 0x80) return ch >= L'A' && ch <= L'Z' ? static_cast<wchar_t>(ch + 32) : ch;
  locale_t l = UnicodeLocale();
  return static_cast<wchar_t>(l ? towlower_l(static_cast<wint_t>(ch), l) : std::towlower(static_cast<wint_t>(ch)));
}

bool IsBlankChar(wchar_t ch) {
  locale_t l = UnicodeLocale();
  return (l ? iswspace_l(static_cast<wint_t>(ch), l) : std::iswspace(static_cast<wint_t>(ch))) != 0;
}

std::wstring ToUpper(const std::wstring& text) {
  std::wstring out(text);
  for (wchar_t& c : out) c = c < 0x80 ? (c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 32) : c) : ToUpperChar(c);
  return out;
}

std::wstring ToLower(const std::wstring& text) {
  std::wstring out(text);
  for (wchar_t& c : out) c = c < 0x80 ? (c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c) : ToLowerChar(c);
  return out;
}

int CompareNoCase(const std::wstring& a, const std::wstring& b) {
  size_t n = a.size() < b.size() ? a.size() : b.size();
  for (size_t i = 0; i < n; ++i) {
    wchar_t x = ToUpperChar(a[i]), y = ToUpperChar(b[i]);
    if (x != y) return x < y ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

bool EqualNoCase(const std::wstring& a, const std::wstring& b) {
  return a.size() == b.size() && CompareNoCase(a, b) == 0;
}
}  // namespace kelhost
