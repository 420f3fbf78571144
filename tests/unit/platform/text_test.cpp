#include <gtest/gtest.h>

#include "kelhost/text.h"

using kelhost::FromUtf16;
using kelhost::FromUtf8;
using kelhost::ToUtf8;

TEST(Utf8, RoundTripsEveryPlane) {
  const std::wstring text = L"A\u00e9\u4e2d\U0001F600";
  const std::string bytes = ToUtf8(text);
  EXPECT_EQ(bytes, "A\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80");
  EXPECT_EQ(FromUtf8(bytes), text);
  EXPECT_EQ(ToUtf8(static_cast<const wchar_t*>(nullptr)), "");
  EXPECT_EQ(FromUtf8(static_cast<const char*>(nullptr)), L"");
}

TEST(Utf8, InvalidInputBecomesReplacementCharacters) {
  // Stray continuation byte, truncated sequence at the end, overlong form,
  // encoded surrogate, beyond U+10FFFF.
  EXPECT_EQ(FromUtf8(std::string("a\x80" "b")), L"a\uFFFDb");
  EXPECT_EQ(FromUtf8(std::string("a\xE4\xB8")), L"a\uFFFD");
  EXPECT_EQ(FromUtf8(std::string("\xC0\xAF")), L"\uFFFD\uFFFD");
  EXPECT_EQ(FromUtf8(std::string("\xED\xA0\x80")), L"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(FromUtf8(std::string("\xF4\x90\x80\x80")), L"\uFFFD\uFFFD\uFFFD\uFFFD");
  // A broken sequence does not swallow the valid character after it.
  EXPECT_EQ(FromUtf8(std::string("\xE4\xB8" "A")), L"\uFFFDA");
}

TEST(Utf8, UnencodableWideValuesBecomeReplacementCharacters) {
  std::wstring lone;
  lone += static_cast<wchar_t>(0xD800);
  lone += L'x';
  EXPECT_EQ(ToUtf8(lone), "\xEF\xBF\xBDx");
  std::wstring pair;  // a UTF-16 pair kept in wide text is joined
  pair += static_cast<wchar_t>(0xD83D);
  pair += static_cast<wchar_t>(0xDE00);
  EXPECT_EQ(ToUtf8(pair), "\xF0\x9F\x98\x80");
  EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(0x110000))), "\xEF\xBF\xBD");
}

TEST(Utf16, DecodesBothByteOrdersAndSurrogatePairs) {
  const unsigned char le[] = {0x41, 0x00, 0x2D, 0x4E, 0x3D, 0xD8, 0x00, 0xDE};
  const unsigned char be[] = {0x00, 0x41, 0x4E, 0x2D, 0xD8, 0x3D, 0xDE, 0x00};
  EXPECT_EQ(FromUtf16(le, sizeof le, false), L"A\u4e2d\U0001F600");
  EXPECT_EQ(FromUtf16(be, sizeof be, true), L"A\u4e2d\U0001F600");
  const unsigned char lone[] = {0x00, 0xDC, 0x41, 0x00, 0x3D, 0xD8};  // low alone, then high at the end
  EXPECT_EQ(FromUtf16(lone, sizeof lone, false), L"\uFFFDA\uFFFD");
  const unsigned char odd[] = {0x41, 0x00, 0x42};
  EXPECT_EQ(FromUtf16(odd, sizeof odd, false), L"A\uFFFD");
}

TEST(CaseMapping, IsUnicodeAwareWhateverTheLocale) {
  EXPECT_EQ(kelhost::ToUpper(L"abc\u00e9\u03b1"), L"ABC\u00c9\u0391");
  EXPECT_EQ(kelhost::ToLower(L"ABC\u00c9"), L"abc\u00e9");
  EXPECT_TRUE(kelhost::EqualNoCase(L"Stra\u00dfe", L"STRA\u00dfE"));
  EXPECT_FALSE(kelhost::EqualNoCase(L"abc", L"abcd"));
  EXPECT_LT(kelhost::CompareNoCase(L"abc", L"ABD"), 0);
  EXPECT_TRUE(kelhost::IsBlankChar(L'\u3000'));
  EXPECT_FALSE(kelhost::IsBlankChar(L'x'));
}
