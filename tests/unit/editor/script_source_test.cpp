#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "editor/input_sources.h"

using kelhost::editor::OpenParentheses;
using kelhost::editor::ScriptSource;

namespace {
std::vector<std::wstring> ReadAll(ScriptSource& s, bool spaces = false) {
  std::vector<std::wstring> out;
  std::wstring t;
  while (s.read(t, spaces)) out.push_back(t);
  return out;
}
}  // namespace

TEST(ScriptSource, EverySpaceAndLineEndIsAnEnter) {
  ScriptSource s(L"LINE 0,0 1,1  \r\nCIRCLE\n\n5,5 2\n");
  EXPECT_EQ(ReadAll(s), (std::vector<std::wstring>{L"LINE", L"0,0", L"1,1", L"", L"", L"CIRCLE", L"", L"5,5", L"2"}));
}

TEST(ScriptSource, LispExpressionsAreReadWholeOverLines) {
  ScriptSource s(L"(setq a \"x y\"\n  b 2) LINE\n(princ \")\") 1,1\n");
  EXPECT_EQ(ReadAll(s),
            (std::vector<std::wstring>{L"(setq a \"x y\"\n  b 2)", L"LINE", L"(princ \")\")", L"1,1"}));
}

TEST(ScriptSource, CommentLinesAreSkippedAndSpacesMayBelongToTheAnswer) {
  ScriptSource s(L"; a comment\nTEXT\nhello world\n;another\nend");
  std::wstring t;
  ASSERT_TRUE(s.read(t, false));
  EXPECT_EQ(t, L"TEXT");
  ASSERT_TRUE(s.read(t, true));
  EXPECT_EQ(t, L"hello world");
  ASSERT_TRUE(s.read(t, false));
  EXPECT_EQ(t, L"end");
  EXPECT_FALSE(s.read(t, false));
}

TEST(ScriptSource, OpenParenthesesSkipStringsAndComments) {
  EXPECT_EQ(OpenParentheses(L"(a (b \"(\" ; )\n"), 2);
  EXPECT_EQ(OpenParentheses(L"(a) ;| ( |; )"), -1);
  EXPECT_EQ(OpenParentheses(L"(a \"unfinished"), 2);
}
