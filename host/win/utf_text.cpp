// Conversions between wide text and UTF-8 / UTF-16 bytes.
#include "kelhost/text.h"

#include <cstdint>
#include <cwchar>

namespace kelhost {
namespace {
constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

void AppendUtf8(std::string& out, char32_t c) {
  if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = kReplacement;
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

std::string EncodeUtf8(const wchar_t* text, size_t length) {
  std::string out;
  out.reserve(length);
  for (size_t i = 0; i < length; ++i) {
    char32_t c = static_cast<char32_t>(static_cast<std::uint32_t>(text[i]));
    // Text that came through a UTF-16 API may still hold surrogate pairs.
    if (IsHighSurrogate(c) && i + 1 < length) {
      char32_t low = static_cast<char32_t>(static_cast<std::uint32_t>(text[i + 1]));
      if (IsLowSurrogate(low)) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        ++i;
      }
    }
    AppendUtf8(out, c);
  }
  return out;
}

// Decodes following the Unicode "maximal subpart" practice: each invalid
// prefix of a sequence becomes exactly one U+FFFD.
std::wstring DecodeUtf8(const unsigned char* s, size_t n) {
  std::wstring out;
  out.reserve(n);
  size_t i = 0;
  while (i < n) {
    unsigned char b = s[i];
    if (b < 0x80) {
      out += static_cast<wchar_t>(b);
      ++i;
      continue;
    }
    int need = 0;
    char32_t c = 0;
    unsigned char lo = 0x80, hi = 0xBF;  // allowed range of the second byte
    if (b >= 0xC2 && b <= 0xDF) {
      need = 1;
      c = b & 0x1F;
    } else if (b >= 0xE0 && b <= 0xEF) {
      need = 2;
      c = b & 0x0F;
      if (b == 0xE0) lo = 0xA0;   // overlong
      if (b == 0xED) hi = 0x9F;   // surrogates
    } else if (b >= 0xF0 && b <= 0xF4) {
      need = 3;
      c = b & 0x07;
      if (b == 0xF0) lo = 0x90;   // overlong
      if (b == 0xF4) hi = 0x8F;   // beyond U+10FFFF
    } else {
      out += static_cast<wchar_t>(kReplacement);
      ++i;
      continue;
    }
    size_t j = i + 1;
    bool ok = true;
    for (int k = 0; k < need; ++k, ++j) {
      unsigned char min = k == 0 ? lo : 0x80;
      unsigned char max = k == 0 ? hi : 0xBF;
      if (j >= n || s[j] < min || s[j] > max) {
        ok = false;
        break;
      }
      c = (c << 6) | (s[j] & 0x3F);
    }
    out += static_cast<wchar_t>(ok ? c : kReplacement);
    i = j;  // on failure, resume at the byte that broke the sequence
  }
  return out;
}
}  // namespace

std::string ToUtf8(const std::wstring& text) { return EncodeUtf8(text.data(), text.size()); }

std::string ToUtf8(const wchar_t* text) {
  if (!text) return std::string();
  return EncodeUtf8(text, std::wcslen(text));
}

std::wstring FromUtf8(const std::string& bytes) {
  return DecodeUtf8(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

std::wstring FromUtf8(const char* bytes) {
  if (!bytes) return std::wstring();
  return FromUtf8(std::string(bytes));
}

std::wstring FromUtf16(const unsigned char* data, size_t byteCount, bool bigEndian) {
  std::wstring out;
  if (!data) return out;
  out.reserve(byteCount / 2);
  auto unit = [&](size_t at) -> char32_t {
    return bigEndian ? static_cast<char32_t>((data[at] << 8) | data[at + 1])
                     : static_cast<char32_t>(data[at] | (data[at + 1] << 8));
  };
  size_t i = 0;
  while (i + 1 < byteCount) {
    char32_t c = unit(i);
    i += 2;
    if (IsHighSurrogate(c)) {
      if (i + 1 < byteCount && IsLowSurrogate(unit(i))) {
        c = 0x10000 + ((c - 0xD800) << 10) + (unit(i) - 0xDC00);
        i += 2;
      } else {
        c = kReplacement;
      }
    } else if (IsLowSurrogate(c)) {
      c = kReplacement;
    }
    out += static_cast<wchar_t>(c);
  }
  if (i < byteCount) out += static_cast<wchar_t>(kReplacement);
  return out;
}
}  // namespace kelhost
