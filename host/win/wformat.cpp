// The platform's wide printf convention, implemented once. Each numeric
// conversion is handed to snprintf on its own with a format we build (never
// the caller's format), in the "C" locale, so the decimal point is always
// '.' whatever locale the process runs in.
#include "arx/wformat.h"

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <locale.h>
#include <string>
#include <vector>

#include "arx/acutads.h"
#include "kelhost/text.h"

namespace kelhost {
namespace {
// Switches this thread to the "C" locale for the duration of a call.
class CLocaleScope {
 public:
  CLocaleScope() {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    mOld = c ? uselocale(c) : static_cast<locale_t>(nullptr);
  }
  ~CLocaleScope() {
    if (mOld) uselocale(mOld);
  }
  CLocaleScope(const CLocaleScope&) = delete;
  CLocaleScope& operator=(const CLocaleScope&) = delete;

 private:
  locale_t mOld;
};

// A va_list travels by reference inside this wrapper, so helpers can take
// arguments from it portably.
struct Args {
  va_list ap;
};

enum class Length { kNone, kChar, kShort, kLong, kLongLong, kInt32, kSize, kIntMax, kLongDouble, kWide };

struct Conversion {
  std::string flags;  // any of "-+ #0"
  int width = -1;
  int precision = -1;
  Length length = Length::kNone;
  wchar_t conversion = 0;
  bool leftAlign() const { return flags.find('-') != std::string::npos; }
  bool zeroPad() const { return flags.find('0') != std::string::npos; }
};

std::string CFormat(const char* fmt, ...) __attribute__((format(printf, 1, 2)));
std::string CFormat(const char* fmt, ...) {
  char small[128];
  va_list ap;
  va_start(ap, fmt);
  int n = std::vsnprintf(small, sizeof small, fmt, ap);
  va_end(ap);
  if (n < 0) return std::string();
  if (static_cast<size_t>(n) < sizeof small) return std::string(small, static_cast<size_t>(n));
  std::vector<char> big(static_cast<size_t>(n) + 1);
  va_start(ap, fmt);
  std::vsnprintf(big.data(), big.size(), fmt, ap);
  va_end(ap);
  return std::string(big.data(), static_cast<size_t>(n));
}

// "%<flags><width>.<precision>" followed by the length and conversion given.
std::string NumberFormat(const Conversion& conv, const char* lengthAndConversion) {
  std::string f = "%" + conv.flags;
  if (conv.width >= 0) f += std::to_string(conv.width);
  if (conv.precision >= 0) f += "." + std::to_string(conv.precision);
  f += lengthAndConversion;
  return f;
}

void AppendAscii(std::wstring& out, const std::string& s) {
  for (char c : s) out += static_cast<wchar_t>(static_cast<unsigned char>(c));
}

// Width and justification of text conversions (%s, %c, %p); like the
// platform, the '0' flag pads text with zeros.
void AppendPadded(std::wstring& out, const std::wstring& text, const Conversion& conv) {
  size_t width = conv.width > 0 ? static_cast<size_t>(conv.width) : 0;
  size_t pad = width > text.size() ? width - text.size() : 0;
  if (conv.leftAlign()) {
    out += text;
    out.append(pad, L' ');
  } else {
    out.append(pad, conv.zeroPad() ? L'0' : L' ');
    out += text;
  }
}

// Narrow (UTF-8) or wide text for %s and %c, by conversion and length.
bool WantsNarrow(const Conversion& conv) {
  if (conv.length == Length::kShort) return true;
  if (conv.length == Length::kLong || conv.length == Length::kWide) return false;
  return conv.conversion == L'S' || conv.conversion == L'C';
}

long long SignedArg(Args& a, Length length) {
  switch (length) {
    case Length::kChar: return static_cast<signed char>(va_arg(a.ap, int));
    case Length::kShort: return static_cast<short>(va_arg(a.ap, int));
    // The platform's long is 32 bits: read the slot as long so that both
    // int and long arguments work, and keep the low 32 bits.
    case Length::kLong: return static_cast<std::int32_t>(static_cast<std::uint32_t>(va_arg(a.ap, unsigned long)));
    case Length::kLongLong: return va_arg(a.ap, long long);
    case Length::kSize: return static_cast<long long>(va_arg(a.ap, std::ptrdiff_t));
    case Length::kIntMax: return static_cast<long long>(va_arg(a.ap, std::intmax_t));
    default: return va_arg(a.ap, int);
  }
}

unsigned long long UnsignedArg(Args& a, Length length) {
  switch (length) {
    case Length::kChar: return static_cast<unsigned char>(va_arg(a.ap, unsigned int));
    case Length::kShort: return static_cast<unsigned short>(va_arg(a.ap, unsigned int));
    case Length::kLong: return static_cast<std::uint32_t>(va_arg(a.ap, unsigned long));
    case Length::kLongLong: return va_arg(a.ap, unsigned long long);
    case Length::kSize: return static_cast<unsigned long long>(va_arg(a.ap, std::size_t));
    case Length::kIntMax: return static_cast<unsigned long long>(va_arg(a.ap, std::uintmax_t));
    default: return va_arg(a.ap, unsigned int);
  }
}

// Reads the length modifier at p; returns the position after it.
const wchar_t* ParseLength(const wchar_t* p, Length& length) {
  switch (*p) {
    case L'h':
      if (p[1] == L'h') { length = Length::kChar; return p + 2; }
      length = Length::kShort;
      return p + 1;
    case L'l':
      if (p[1] == L'l') { length = Length::kLongLong; return p + 2; }
      length = Length::kLong;
      return p + 1;
    case L'L': length = Length::kLongDouble; return p + 1;
    case L'w': length = Length::kWide; return p + 1;
    case L'z':
    case L't': length = Length::kSize; return p + 1;
    case L'j': length = Length::kIntMax; return p + 1;
    case L'q': length = Length::kLongLong; return p + 1;
    case L'I':
      if (p[1] == L'6' && p[2] == L'4') { length = Length::kLongLong; return p + 3; }
      if (p[1] == L'3' && p[2] == L'2') { length = Length::kInt32; return p + 3; }
      length = Length::kSize;
      return p + 1;
    default: return p;
  }
}

// Formats one conversion; false when the conversion is unknown.
bool FormatOne(std::wstring& out, Conversion& conv, Args& a) {
  switch (conv.conversion) {
    case L'd':
    case L'i': {
      long long v = SignedArg(a, conv.length);
      AppendAscii(out, CFormat(NumberFormat(conv, "lld").c_str(), v));
      return true;
    }
    case L'u':
    case L'o':
    case L'x':
    case L'X': {
      unsigned long long v = UnsignedArg(a, conv.length);
      char code[4] = {'l', 'l', static_cast<char>(conv.conversion), 0};
      AppendAscii(out, CFormat(NumberFormat(conv, code).c_str(), v));
      return true;
    }
    case L'f': case L'F': case L'e': case L'E':
    case L'g': case L'G': case L'a': case L'A': {
      char code[3] = {static_cast<char>(conv.conversion), 0, 0};
      if (conv.length == Length::kLongDouble) {
        long double v = va_arg(a.ap, long double);
        code[1] = code[0];
        code[0] = 'L';
        AppendAscii(out, CFormat(NumberFormat(conv, code).c_str(), v));
      } else {
        double v = va_arg(a.ap, double);
        AppendAscii(out, CFormat(NumberFormat(conv, code).c_str(), v));
      }
      return true;
    }
    case L'c':
    case L'C': {
      int v = va_arg(a.ap, int);
      wchar_t ch;
      if (WantsNarrow(conv)) {
        unsigned char b = static_cast<unsigned char>(v);
        ch = b < 0x80 ? static_cast<wchar_t>(b) : static_cast<wchar_t>(0xFFFD);  // half of a UTF-8 sequence
      } else {
        ch = static_cast<wchar_t>(v);
      }
      AppendPadded(out, std::wstring(1, ch), conv);
      return true;
    }
    case L's':
    case L'S': {
      std::wstring text;
      if (WantsNarrow(conv)) {
        const char* s = va_arg(a.ap, const char*);
        text = s ? FromUtf8(s) : std::wstring(L"(null)");
      } else {
        const wchar_t* s = va_arg(a.ap, const wchar_t*);
        text = s ? std::wstring(s) : std::wstring(L"(null)");
      }
      // The precision counts characters of the wide text.
      if (conv.precision >= 0 && text.size() > static_cast<size_t>(conv.precision))
        text.resize(static_cast<size_t>(conv.precision));
      AppendPadded(out, text, conv);
      return true;
    }
    case L'p': {
      // As the platform prints pointers: upper-case hex, all digits.
      const void* v = va_arg(a.ap, const void*);
      std::string hex = CFormat("%0*llX", static_cast<int>(sizeof(void*) * 2),
                                static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(v)));
      std::wstring text;
      AppendAscii(text, hex);
      Conversion padding = conv;
      padding.flags.erase(std::remove(padding.flags.begin(), padding.flags.end(), '0'), padding.flags.end());
      AppendPadded(out, text, padding);
      return true;
    }
    case L'n':
      // Writing through a caller's pointer is refused, as the platform does
      // by default; the argument is consumed so the rest stays aligned.
      (void)va_arg(a.ap, void*);
      return true;
    default:
      return false;
  }
}
}  // namespace

std::wstring WFormatV(const wchar_t* format, va_list args) {
  std::wstring out;
  if (!format) return out;
  CLocaleScope cLocale;
  Args a;
  va_copy(a.ap, args);
  const wchar_t* p = format;
  while (*p) {
    if (*p != L'%') {
      out += *p++;
      continue;
    }
    const wchar_t* start = p++;
    if (*p == L'%') {
      out += L'%';
      ++p;
      continue;
    }
    Conversion conv;
    while (*p == L'-' || *p == L'+' || *p == L' ' || *p == L'#' || *p == L'0') {
      if (conv.flags.find(static_cast<char>(*p)) == std::string::npos) conv.flags += static_cast<char>(*p);
      ++p;
    }
    if (*p == L'*') {
      int w = va_arg(a.ap, int);
      if (w < 0) {
        if (conv.flags.find('-') == std::string::npos) conv.flags += '-';
        w = w == INT_MIN ? 0 : -w;
      }
      conv.width = w;
      ++p;
    } else {
      while (*p >= L'0' && *p <= L'9') {
        int digit = static_cast<int>(*p - L'0');
        conv.width = (conv.width < 0 ? 0 : conv.width);
        if (conv.width < 100000000) conv.width = conv.width * 10 + digit;
        ++p;
      }
    }
    if (*p == L'.') {
      ++p;
      if (*p == L'*') {
        int prec = va_arg(a.ap, int);
        conv.precision = prec < 0 ? -1 : prec;  // a negative precision is as if omitted
        ++p;
      } else {
        conv.precision = 0;
        while (*p >= L'0' && *p <= L'9') {
          if (conv.precision < 100000000) conv.precision = conv.precision * 10 + static_cast<int>(*p - L'0');
          ++p;
        }
      }
    }
    p = ParseLength(p, conv.length);
    if (!*p) {  // the format ends inside a conversion: keep its text
      out.append(start);
      break;
    }
    conv.conversion = *p++;
    if (!FormatOne(out, conv, a)) out.append(start, static_cast<size_t>(p - start));
  }
  va_end(a.ap);
  return out;
}

std::wstring WFormat(const wchar_t* format, ...) {
  va_list ap;
  va_start(ap, format);
  std::wstring s = WFormatV(format, ap);
  va_end(ap);
  return s;
}
}  // namespace kelhost

// Like the platform's, this assumes the caller's buffer is large enough for
// the formatted text and its terminator; it cannot check.
int acutSPrintf(ACHAR* buffer, const ACHAR* format, ...) {
  if (!buffer || !format) return -1;
  va_list ap;
  va_start(ap, format);
  std::wstring s = kelhost::WFormatV(format, ap);
  va_end(ap);
  std::wmemcpy(buffer, s.c_str(), s.size() + 1);
  return static_cast<int>(s.size());
}
