#include <gtest/gtest.h>

#include <cwchar>

#include "arx/afx.h"

TEST(CString, ConstructionFromWideNarrowAndRepeats) {
  EXPECT_EQ(CString("UTF-8 \xE4\xB8\xAD"), L"UTF-8 \u4e2d");
  EXPECT_TRUE(CString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
  EXPECT_EQ(CString(L"abcdef", 3), L"abc");
  EXPECT_EQ(CString(L'x', 3), L"xxx");
  EXPECT_TRUE(CString(L'x', 0).IsEmpty());
  CString s(L"self");
  s = s.GetString();  // assigning its own text
  EXPECT_EQ(s, L"self");
}

TEST(CString, FindAnswersMinusOneAndHonoursStart) {
  CString s(L"a,b,,c");
  EXPECT_EQ(s.Find(L','), 1);
  EXPECT_EQ(s.Find(L',', 2), 3);
  EXPECT_EQ(s.Find(L'z'), -1);
  EXPECT_EQ(s.Find(L',', 99), -1);
  EXPECT_EQ(s.Find(L",,"), 3);
  EXPECT_EQ(s.Find(L"a", 1), -1);
  EXPECT_EQ(s.Find(L""), 0);
  EXPECT_EQ(s.Find(static_cast<const wchar_t*>(nullptr)), -1);
  EXPECT_EQ(s.ReverseFind(L','), 4);
  EXPECT_EQ(s.ReverseFind(L'q'), -1);
  EXPECT_EQ(s.FindOneOf(L"cb"), 2);
  EXPECT_EQ(s.FindOneOf(L"xyz"), -1);
}

TEST(CString, MidLeftRightClampOutOfRangeArguments) {
  CString s(L"hello");
  EXPECT_EQ(s.Mid(1, 3), L"ell");
  EXPECT_EQ(s.Mid(3), L"lo");
  EXPECT_EQ(s.Mid(-2, 2), L"he");
  EXPECT_EQ(s.Mid(4, 100), L"o");
  EXPECT_TRUE(s.Mid(9).IsEmpty());
  EXPECT_TRUE(s.Mid(1, -1).IsEmpty());
  EXPECT_EQ(s.Left(2), L"he");
  EXPECT_EQ(s.Left(50), L"hello");
  EXPECT_TRUE(s.Left(-1).IsEmpty());
  EXPECT_EQ(s.Right(2), L"lo");
  EXPECT_EQ(s.Right(50), L"hello");
  EXPECT_TRUE(s.Right(-3).IsEmpty());
  EXPECT_EQ(s.SpanIncluding(L"hel"), L"hell");
  EXPECT_EQ(s.SpanExcluding(L"l"), L"he");
}

TEST(CString, TrimDefaultsToWhiteSpaceAndAcceptsSets) {
  CString s(L" \t\u3000 text \r\n");
  EXPECT_EQ(s.Trim(), L"text");
  CString t(L"xxaxbxx");
  EXPECT_EQ(t.Trim(L'x'), L"axb");
  CString u(L"-=a=-");
  EXPECT_EQ(u.TrimLeft(L"-="), L"a=-");
  EXPECT_EQ(u.TrimRight(L"-="), L"a");
  CString v(L"   ");
  EXPECT_TRUE(v.TrimRight().IsEmpty());
}

TEST(CString, TokenizeSkipsRunsOfDelimitersAndEndsWithMinusOne) {
  CString s(L",,a,bb;;c,");
  int pos = 0;
  EXPECT_EQ(s.Tokenize(L",;", pos), L"a");
  EXPECT_EQ(pos, 4);
  EXPECT_EQ(s.Tokenize(L",;", pos), L"bb");
  EXPECT_EQ(s.Tokenize(L",;", pos), L"c");
  EXPECT_EQ(pos, 10);
  EXPECT_TRUE(s.Tokenize(L",;", pos).IsEmpty());
  EXPECT_EQ(pos, -1);
  int neg = -1;
  EXPECT_TRUE(s.Tokenize(L",", neg).IsEmpty());
  EXPECT_EQ(neg, -1);
  // Without delimiters the rest comes back and the position stays.
  int start = 2;
  EXPECT_EQ(s.Tokenize(L"", start), L"a,bb;;c,");
  EXPECT_EQ(start, 2);
}

TEST(CString, ReplaceRemoveInsertDeleteReturnCounts) {
  CString s(L"aaa");
  EXPECT_EQ(s.Replace(L"aa", L"b"), 1);  // left to right, no overlap
  EXPECT_EQ(s, L"ba");
  CString t(L"x.y.z");
  EXPECT_EQ(t.Replace(L".", L"::"), 2);
  EXPECT_EQ(t, L"x::y::z");
  EXPECT_EQ(t.Replace(L"::", nullptr), 2);
  EXPECT_EQ(t, L"xyz");
  EXPECT_EQ(t.Replace(L"", L"q"), 0);
  EXPECT_EQ(t.Replace(L'y', L'Y'), 1);
  EXPECT_EQ(t.Replace(L'Y', L'Y'), 0);
  EXPECT_EQ(t.Remove(L'x'), 1);
  EXPECT_EQ(t, L"Yz");
  EXPECT_EQ(t.Insert(99, L'!'), 3);
  EXPECT_EQ(t.Insert(-5, L"<<"), 5);
  EXPECT_EQ(t, L"<<Yz!");
  EXPECT_EQ(t.Delete(1, 2), 3);
  EXPECT_EQ(t, L"<z!");
  EXPECT_EQ(t.Delete(2, 50), 2);
  EXPECT_EQ(t.Delete(7), 2);
}

TEST(CString, GetBufferAndReleaseBuffer) {
  CString s(L"ab");
  wchar_t* p = s.GetBuffer(20);
  EXPECT_STREQ(p, L"ab");  // the old content is kept
  std::wcscpy(p, L"longer text");
  s.ReleaseBuffer();
  EXPECT_EQ(s, L"longer text");
  EXPECT_EQ(s.GetLength(), 11);
  p = s.GetBuffer();
  p[3] = 0;
  s.ReleaseBuffer();
  EXPECT_EQ(s, L"lon");
  p = s.GetBufferSetLength(5);
  std::wmemcpy(p, L"12345", 5);
  s.ReleaseBuffer(2);
  EXPECT_EQ(s, L"12");
}

TEST(CString, ComparisonsAndCaseMapping) {
  CString s(L"Abc");
  EXPECT_EQ(s.Compare(L"Abc"), 0);
  EXPECT_LT(s.Compare(L"abc"), 0);
  EXPECT_GT(s.Compare(nullptr), 0);
  EXPECT_EQ(s.CompareNoCase(L"aBC"), 0);
  EXPECT_LT(s.CompareNoCase(L"abd"), 0);
  // Upper-case folding puts '_' after the letters.
  EXPECT_GT(CString(L"_").CompareNoCase(L"a"), 0);
  EXPECT_EQ(CString(L"\u00e9t\u00e9").MakeUpper(), L"\u00c9T\u00c9");
  EXPECT_EQ(CString(L"ABC").MakeLower().MakeReverse(), L"cba");
  EXPECT_TRUE(s == L"Abc");
  EXPECT_TRUE(L"Abd" != s);
}

TEST(CString, FormatUsesThePlatformConvention) {
  CString s;
  s.Format(L"%s has %d items at %.2f", L"list", 3, 1.5);
  EXPECT_EQ(s, L"list has 3 items at 1.50");
  s.AppendFormat(L" (%hs)", "narrow");
  EXPECT_EQ(s, L"list has 3 items at 1.50 (narrow)");
  s.Format(L"[%s]", s.GetString());  // formatting its own text
  EXPECT_EQ(s, L"[list has 3 items at 1.50 (narrow)]");
}
