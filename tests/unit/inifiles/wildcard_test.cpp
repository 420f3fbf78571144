// The platform's long-name wildcard rules, as FindFirstFileW applies them.
#include <gtest/gtest.h>

#include "win/dos_wildcard.h"

namespace {

bool Match(const wchar_t* pattern, const wchar_t* name) { return kelhost::DosWildcard(pattern).Matches(name); }

TEST(DosWildcard, StarAndStarDotStarMatchEveryName) {
  for (const wchar_t* name : {L"a", L"a.b", L"readme", L".", L"..", L".hidden", L"x.tar.gz"}) {
    EXPECT_TRUE(Match(L"*", name)) << name;
    EXPECT_TRUE(Match(L"*.*", name)) << name;
  }
  EXPECT_FALSE(Match(L"*.*x", L"abc"));
}

TEST(DosWildcard, NamesAreComparedWithoutRegardToCase) {
  EXPECT_TRUE(Match(L"*.LSP", L"main.lsp"));
  EXPECT_TRUE(Match(L"Tk?et.CFG", L"tkSET.cfg"));
  EXPECT_TRUE(Match(L"É*", L"éa"));
  EXPECT_TRUE(Match(L"图框*.dwg", L"图框A3.DWG"));
  EXPECT_FALSE(Match(L"main.lsp", L"main.lsx"));
}

TEST(DosWildcard, QuestionMarkTakesOneCharacterButNeverADot) {
  EXPECT_TRUE(Match(L"a?c", L"abc"));
  EXPECT_FALSE(Match(L"a?c", L"a.c"));
  EXPECT_FALSE(Match(L"a?c", L"ac"));
  // At the end of the name, or before its dot, question marks take nothing.
  EXPECT_TRUE(Match(L"ab?", L"ab"));
  EXPECT_TRUE(Match(L"ab??", L"abc"));
  EXPECT_FALSE(Match(L"ab?", L"abcd"));
  EXPECT_TRUE(Match(L"ab?.txt", L"ab.txt"));
  EXPECT_TRUE(Match(L"ab?.txt", L"abc.txt"));
  EXPECT_FALSE(Match(L"ab?.txt", L"abcd.txt"));
}

TEST(DosWildcard, DotsBeforeWildcardsOrAtTheEndMayBeAbsent) {
  EXPECT_TRUE(Match(L"*.", L"readme"));
  EXPECT_FALSE(Match(L"*.", L"a.txt"));
  EXPECT_TRUE(Match(L"abc.", L"abc"));
  EXPECT_TRUE(Match(L"a.*", L"a"));
  EXPECT_TRUE(Match(L"a.*", L"a.txt"));
  EXPECT_TRUE(Match(L"a.*", L"a.b.c"));
  EXPECT_FALSE(Match(L"a.*", L"ab"));
  EXPECT_TRUE(Match(L".*", L".."));
  EXPECT_FALSE(Match(L".*", L"abc"));
}

TEST(DosWildcard, StarBeforeADotRunsToTheLastDotOnly) {
  EXPECT_TRUE(Match(L"*.txt", L"a.b.txt"));
  EXPECT_FALSE(Match(L"*.txt", L"a.txt.bak"));
  EXPECT_FALSE(Match(L"*.txt", L"txt"));
  EXPECT_TRUE(Match(L"*b*", L"a.b.c"));  // a star before anything else crosses dots
  EXPECT_FALSE(Match(L"*.tx", L"a.txt"));  // no short-name matching on this host
}

}  // namespace
