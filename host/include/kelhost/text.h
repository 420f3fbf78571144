// UTF-8 at every boundary: conversions between the platform's wide text
// (wchar_t, 32-bit here) and UTF-8 bytes.
#pragma once

#include <string>

namespace kelhost {
std::string ToUtf8(const std::wstring& text);
std::string ToUtf8(const wchar_t* text);  // null gives ""
// Invalid sequences become U+FFFD.
std::wstring FromUtf8(const std::string& bytes);
std::wstring FromUtf8(const char* bytes);
// UTF-16 code units (little or big endian per the flag) to wide text.
std::wstring FromUtf16(const unsigned char* data, size_t byteCount, bool bigEndian);
}  // namespace kelhost
