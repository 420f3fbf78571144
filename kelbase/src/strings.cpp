#include "kelbase/strings.h"

#include <charconv>
#include <string>

namespace KEL {
namespace {
// Every double is exact within this many decimals; further ones would only
// be zeros, so requests beyond it are held to it.
constexpr int kMostDecimals = 1074;
}  // namespace

CString FloatToStr(double value, int decimals) {
  if (decimals < 0) decimals = 0;
  if (decimals > kMostDecimals) decimals = kMostDecimals;
  // to_chars is independent of the C locale, so the decimal point is
  // always '.'; the digits are those of printf's %.*f.
  std::string text(static_cast<size_t>(decimals) + 400, '\0');
  const std::to_chars_result result =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
  if (result.ec != std::errc()) return CString();
  text.resize(static_cast<size_t>(result.ptr - text.data()));
  return CString(text.c_str());
}

CString FixLenStr(const wchar_t* text, int length) {
  if (length <= 0) return CString();
  CString fixed(text != nullptr ? text : L"");
  if (fixed.GetLength() > length) return fixed.Left(length);
  return fixed + CString(L' ', length - fixed.GetLength());
}
}  // namespace KEL

namespace KELOLD {
int DisCommaString(const wchar_t* text, CStringArray& parts, bool trim) {
  parts.RemoveAll();
  // Nothing to split gives no parts; any other text gives one part more
  // than it has commas, empty parts included.
  if (text == nullptr || *text == L'\0') return 0;
  const wchar_t* start = text;
  for (const wchar_t* p = text;; ++p) {
    if (*p == L',' || *p == L'\0') {
      CString part(start, static_cast<int>(p - start));
      if (trim) part.Trim();
      parts.Add(part);
      if (*p == L'\0') break;
      start = p + 1;
    }
  }
  return parts.GetSize();
}
}  // namespace KELOLD
