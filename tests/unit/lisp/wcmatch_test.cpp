#include <gtest/gtest.h>

#include <string>

#include "arx/acutads.h"

namespace {
bool Match(const wchar_t* s, const wchar_t* pattern) { return acutWcMatch(s, pattern) == RTNORM; }
}  // namespace

TEST(WcMatch, SingleCharacterClasses) {
  EXPECT_TRUE(Match(L"A1", L"@#"));
  EXPECT_FALSE(Match(L"11", L"@#"));
  EXPECT_TRUE(Match(L"a-b", L"a.b"));
  EXPECT_FALSE(Match(L"a1b", L"a.b"));
  EXPECT_TRUE(Match(L"\x00E9", L"@"));
  EXPECT_TRUE(Match(L"xyz", L"x?z"));
  EXPECT_FALSE(Match(L"xz", L"x?z"));
  EXPECT_FALSE(Match(L"abc", L"ABC"));  // case matters
}

TEST(WcMatch, StarsAnywhere) {
  EXPECT_TRUE(Match(L"this is a string", L"this*"));
  EXPECT_TRUE(Match(L"", L"*"));
  EXPECT_TRUE(Match(L"abc", L"*b*"));
  EXPECT_TRUE(Match(L"abc", L"a**c"));
  EXPECT_FALSE(Match(L"abd", L"*c"));
  EXPECT_TRUE(Match(L"", L""));
  EXPECT_FALSE(Match(L"a", L""));
  // Many stars do not blow up.
  std::wstring s(2000, L'a'), p;
  for (int k = 0; k < 1000; ++k) p += L"*a";
  p += L"b";
  EXPECT_FALSE(Match(s.c_str(), p.c_str()));
}

TEST(WcMatch, BracketsAndRanges) {
  EXPECT_TRUE(Match(L"STR3", L"STR[1-38]"));
  EXPECT_TRUE(Match(L"STR8", L"STR[1-38]"));
  EXPECT_FALSE(Match(L"STR5", L"STR[1-38]"));
  EXPECT_TRUE(Match(L"XC", L"[~AB]C"));
  EXPECT_FALSE(Match(L"AC", L"[~AB]C"));
  EXPECT_TRUE(Match(L"~", L"[A~BC]"));  // a tilde not first is literal
  EXPECT_TRUE(Match(L"-", L"[-AB]"));
  EXPECT_TRUE(Match(L"-", L"[AB-]"));
  EXPECT_FALSE(Match(L"-", L"[~-AB]"));
  EXPECT_TRUE(Match(L"]", L"[]AB]"));
  EXPECT_TRUE(Match(L"x", L"[~]AB]"));
  EXPECT_TRUE(Match(L"*", L"[*?]"));  // wild cards are literal inside
  EXPECT_TRUE(Match(L"[ab", L"[ab"));  // unclosed: an ordinary bracket
}

TEST(WcMatch, AlternativesNegationAndEscapes) {
  EXPECT_TRUE(Match(L"this is the end", L"ABC,XYZ*,*end"));
  EXPECT_FALSE(Match(L"middle", L"ABC,XYZ*,*end"));
  EXPECT_TRUE(Match(L"XY", L"~*AB*"));
  EXPECT_FALSE(Match(L"XABY", L"~*AB*"));
  EXPECT_TRUE(Match(L"AB", L"~A,AB"));
  EXPECT_FALSE(Match(L"Name", L"*`,*"));
  EXPECT_TRUE(Match(L"a,b", L"*`,*"));
  EXPECT_TRUE(Match(L"~AB", L"`~AB"));
  EXPECT_TRUE(Match(L"a\\b", L"*`\\*"));
  EXPECT_TRUE(Match(L"#", L"`#"));
  EXPECT_FALSE(Match(L"1", L"`#"));
  EXPECT_EQ(acutWcMatch(nullptr, L"*"), RTERROR);
}
