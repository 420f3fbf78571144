// UTF-8 at every boundary: conversions between the platform's wide text
// (wchar_t, 32-bit here) and UTF-8 bytes, and the Unicode-aware case
// mapping that every "without regard to case" comparison of the host uses.
#pragma once

#include <cstddef>
#include <string>

namespace kelhost {
// Code points that cannot be encoded (lone surrogates, values beyond
// U+10FFFF) become U+FFFD; an adjacent high/low surrogate pair is joined.
std::string ToUtf8(const std::wstring& text);
std::string ToUtf8(const wchar_t* text);  // null gives ""
// Invalid sequences become U+FFFD (one per maximal invalid subpart).
std::wstring FromUtf8(const std::string& bytes);
std::wstring FromUtf8(const char* bytes);  // null gives L""
// UTF-16 code units (little or big endian per the flag) to wide text;
// lone surrogates and a trailing odd byte become U+FFFD.
std::wstring FromUtf16(const unsigned char* data, size_t byteCount, bool bigEndian);

// Simple (one-to-one) Unicode case mapping, independent of the process
// locale.
wchar_t ToUpperChar(wchar_t ch);
// ToUpperChar with ASCII mapped in line, for loops over names.
inline wchar_t ToUpperCharInline(wchar_t ch) {
  return ch < 0x80 ? (ch >= L'a' && ch <= L'z' ? static_cast<wchar_t>(ch - 32) : ch) : ToUpperChar(ch);
}
wchar_t ToLowerChar(wchar_t ch);
std::wstring ToUpper(const std::wstring& text);
std::wstring ToLower(const std::wstring& text);
// Unicode white space (what the platform's iswspace accepts).
bool IsBlankChar(wchar_t ch);
// Compares after mapping both sides to upper case: <0, 0 or >0.
int CompareNoCase(const std::wstring& a, const std::wstring& b);
bool EqualNoCase(const std::wstring& a, const std::wstring& b);
}  // namespace kelhost
