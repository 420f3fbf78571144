#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>

#include "arx/acutads.h"
#include "arx/wformat.h"

using kelhost::WFormat;

TEST(WFormat, StringsAndCharactersFollowThePlatformConvention) {
  EXPECT_EQ(WFormat(L"[%s]", L"wide\u4e2d"), L"[wide\u4e2d]");
  EXPECT_EQ(WFormat(L"[%ls|%ws]", L"a", L"b"), L"[a|b]");
  EXPECT_EQ(WFormat(L"[%hs]", "narrow \xE4\xB8\xAD"), L"[narrow \u4e2d]");
  EXPECT_EQ(WFormat(L"[%S]", "upper-S is narrow"), L"[upper-S is narrow]");
  EXPECT_EQ(WFormat(L"[%c%hc%C%lc]", L'\u4e2d', 'n', 'N', L'w'), L"[\u4e2dnNw]");
  EXPECT_EQ(WFormat(L"[%s|%hs]", static_cast<const wchar_t*>(nullptr), static_cast<const char*>(nullptr)),
            L"[(null)|(null)]");
}

TEST(WFormat, WidthPrecisionAndFlagsOnText) {
  EXPECT_EQ(WFormat(L"[%5s|%-5s|%.2s]", L"ab", L"ab", L"abcdef"), L"[   ab|ab   |ab]");
  EXPECT_EQ(WFormat(L"[%*s|%-*s|%.*s]", 4, L"x", 3, L"y", 1, L"zzz"), L"[   x|y  |z]");
  EXPECT_EQ(WFormat(L"[%*s]", -3, L"x"), L"[x  ]");  // negative width from * left-aligns
  EXPECT_EQ(WFormat(L"[%3c]", L'q'), L"[  q]");
}

TEST(WFormat, IntegersOfEveryWidth) {
  EXPECT_EQ(WFormat(L"%d %i %u %x %X %o", -5, 7, 4000000000u, 255u, 255u, 8u), L"-5 7 4000000000 ff FF 10");
  EXPECT_EQ(WFormat(L"%hd %hu %hhd", 70000, 70000, 300), L"4464 4464 44");
  // The platform's long is 32 bits; both int and long arguments print right.
  long asLong = -2;
  int asInt = -2;
  EXPECT_EQ(WFormat(L"%ld %ld", asLong, asInt), L"-2 -2");
  EXPECT_EQ(WFormat(L"%lx %lu", 0xFFFFFFFFL, 3000000000L), L"ffffffff 3000000000");
  EXPECT_EQ(WFormat(L"%lx", -1), L"ffffffff");
  long long big = -9000000000LL;
  EXPECT_EQ(WFormat(L"%lld %I64d %I64u %I64x", big, big, 18000000000ULL, 0x1234567890ULL),
            L"-9000000000 -9000000000 18000000000 1234567890");
  EXPECT_EQ(WFormat(L"%zd %Id %zu %Iu", static_cast<std::ptrdiff_t>(-9000000000LL), static_cast<std::ptrdiff_t>(-1),
                    static_cast<size_t>(9000000000ULL), static_cast<size_t>(5)),
            L"-9000000000 -1 9000000000 5");
  EXPECT_EQ(WFormat(L"%I32d", -7), L"-7");
}

TEST(WFormat, IntegerFlagsWidthAndPrecision) {
  EXPECT_EQ(WFormat(L"[%5d|%-5d|%05d|%+d|% d]", 42, 42, 42, 42, 42), L"[   42|42   |00042|+42| 42]");
  EXPECT_EQ(WFormat(L"[%.3d|%#x|%#o|%*d]", 7, 255u, 8u, 4, 1), L"[007|0xff|010|   1]");
  EXPECT_EQ(WFormat(L"[%.*d]", -1, 5), L"[5]");  // negative precision: as if omitted
}

TEST(WFormat, FloatingPointIsAlwaysCLocale) {
  const char* old = std::setlocale(LC_NUMERIC, nullptr);
  std::string saved = old ? old : "C";
  // A locale with a decimal comma, when the system has one.
  bool comma = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
  EXPECT_EQ(WFormat(L"%f|%.2f|%8.3f|%-8.1f|", 1.5, 3.14159, 2.0, 2.0), L"1.500000|3.14|   2.000|2.0     |");
  EXPECT_EQ(WFormat(L"%e|%.2E|%g|%G|%g", 12345.678, 0.000123, 0.0001, 1e-10, 100000.0),
            L"1.234568e+04|1.23E-04|0.0001|1E-10|100000");
  EXPECT_EQ(WFormat(L"%+.1f|%08.2f|%.0f|%#.0f", 2.25, -1.5, 2.5, 3.0), L"+2.2|-0001.50|2|3.");
  EXPECT_EQ(WFormat(L"%a", 1.0), L"0x1p+0");
  EXPECT_EQ(WFormat(L"%Lf", 1.25L), L"1.250000");
  std::setlocale(LC_NUMERIC, saved.c_str());
  if (!comma) GTEST_LOG_(INFO) << "no de_DE locale: decimal-comma case not exercised";
}

TEST(WFormat, PercentPointerAndOddFormats) {
  EXPECT_EQ(WFormat(L"100%% sure"), L"100% sure");
  EXPECT_EQ(WFormat(L"%p", reinterpret_cast<void*>(static_cast<std::uintptr_t>(0xABC))), L"0000000000000ABC");
  EXPECT_EQ(WFormat(L"%p", nullptr), L"0000000000000000");
  EXPECT_EQ(WFormat(L"a%yb%d", 3), L"a%yb3");     // unknown conversion kept, argument not used
  EXPECT_EQ(WFormat(L"end %"), L"end %");         // dangling percent kept
  EXPECT_EQ(WFormat(L"end %5"), L"end %5");
  EXPECT_EQ(WFormat(static_cast<const wchar_t*>(nullptr)), L"");
}

TEST(WFormat, SPrintfWritesTheCallersBuffer) {
  ACHAR buffer[64];
  EXPECT_EQ(acutSPrintf(buffer, L"%s=%d;%.1f", L"n", 12, 0.25), 8);
  EXPECT_STREQ(buffer, L"n=12;0.2");
  EXPECT_EQ(acutSPrintf(nullptr, L"x"), -1);
}
