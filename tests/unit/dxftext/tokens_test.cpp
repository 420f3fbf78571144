// Splitting DXF text into groups: line ends, the forms a code line takes,
// the checks that name a line, text encodings, and files of many groups.
#include <gtest/gtest.h>

#include <string>

#include "dxf/dxf_tokens.h"
#include "kelhost/text.h"

namespace {

using kelhost::dxf::TokenList;
using kelhost::dxf::Tokenize;

struct Split {
  std::string bytes;  // what the tokens view
  bool ok = false;
  TokenList tokens;
  std::string error;
};

Split SplitText(const std::string& bytes) {
  Split s;
  s.bytes = bytes;
  std::wstring error;
  s.ok = Tokenize(s.bytes, s.tokens, error);
  s.error = kelhost::ToUtf8(error);
  return s;
}

std::string Header(const char* version) {
  return std::string("  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\n") + version + "\n  0\nENDSEC\n";
}

TEST(Tokens, LineEndsAndCodeLineForms) {
  const Split lf = SplitText("  0\nSECTION\n  2\nENTITIES\n 10\n1.5\n  0\nEOF\n");
  const Split crlf = SplitText("  0\r\nSECTION\r\n  2\r\nENTITIES\r\n 10\r\n1.5\r\n  0\r\nEOF\r\n");
  ASSERT_TRUE(lf.ok) << lf.error;
  ASSERT_TRUE(crlf.ok) << crlf.error;
  ASSERT_EQ(lf.tokens.size(), 4u);
  ASSERT_EQ(crlf.tokens.size(), 4u);
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(lf.tokens[i].code, crlf.tokens[i].code);
    EXPECT_EQ(lf.tokens[i].value, crlf.tokens[i].value);
    EXPECT_EQ(lf.tokens.lineOf(lf.tokens[i]), 2 * i + 1);
    EXPECT_EQ(crlf.tokens.lineOf(crlf.tokens[i]), 2 * i + 1);
  }
  // Lines are counted from the last one asked about, backwards too.
  EXPECT_EQ(lf.tokens.lineOf(lf.tokens[1]), 3u);
  EXPECT_EQ(lf.tokens.lineOf(lf.tokens[0]), 1u);
  EXPECT_EQ(lf.tokens[2].value, "1.5");

  // Codes as other writers put them: tabs, signs, leading zeros, blanks
  // after, four digits, no final line end.
  const Split odd = SplitText("\t10\n1\n+20\n2\n030 \n3\n 1001\nAPP\n0\nEOF");
  ASSERT_TRUE(odd.ok) << odd.error;
  ASSERT_EQ(odd.tokens.size(), 5u);
  EXPECT_EQ(odd.tokens[0].code, 10);
  EXPECT_EQ(odd.tokens[1].code, 20);
  EXPECT_EQ(odd.tokens[2].code, 30);
  EXPECT_EQ(odd.tokens[3].code, 1001);
  EXPECT_EQ(odd.tokens[4].value, "EOF");

  // Blank lines after EOF are harmless; what follows EOF is not read.
  const Split tail = SplitText("  0\nEOF\n\n   \nnot a group\n");
  ASSERT_TRUE(tail.ok) << tail.error;
  EXPECT_EQ(tail.tokens.size(), 1u);
}

TEST(Tokens, FaultsNameTheirLine) {
  EXPECT_EQ(SplitText("  0\nSECTION\n 1 0\n1.0\n").error, "line 3: bad group code \" 1 0\"");
  EXPECT_EQ(SplitText("  0\nSECTION\n2000\nX\n").error, "line 3: unknown group code 2000");
  EXPECT_EQ(SplitText("  0\nSECTION\n 10\n").error, "line 3: the file ends in the middle of a group (truncated)");
  EXPECT_EQ(SplitText("  0\nSECTION\n 10\n1e400\n").error, "line 4: bad number \"1e400\" for group 10");
  EXPECT_EQ(SplitText("  0\nSECTION\n 10\n1.5.2\n").error, "line 4: bad number \"1.5.2\" for group 10");
  EXPECT_EQ(SplitText(" 70\n70000\n").error, "line 2: value \"70000\" out of range for group 70");
  EXPECT_EQ(SplitText(" 90\n-2147483649\n").error, "line 2: value \"-2147483649\" out of range for group 90");
  // Reals in every form strtod reads pass; the plain ones without parsing.
  const Split reals = SplitText(" 10\n-0012.500\n 20\n 1e-3 \n 30\n.5\n 40\n7.\n  0\nEOF\n");
  ASSERT_TRUE(reals.ok) << reals.error;
  EXPECT_EQ(reals.tokens[1].value, " 1e-3 ");
  // Long runs of digits are checked eight at a time: a fault anywhere in
  // them, or next to the point, is still found.
  const std::string digits = "12345678901234567.89012345678";
  for (size_t at = 0; at < digits.size(); ++at)
    for (char fault : {'x', '/', ':', ' ', '.', '\x80'}) {
      std::string value = digits;
      if (value[at] == '.' && fault == '.') continue;
      value[at] = fault;
      // strtod takes a blank before or after the number.
      const bool blankEnd = fault == ' ' && (at == 0 || at == digits.size() - 1);
      EXPECT_EQ(SplitText(" 10\n" + value + "\n  0\nEOF\n").ok, blankEnd) << value;
    }
  EXPECT_TRUE(SplitText(" 10\n-" + digits + "\n 20\n1234567812345678\n  0\nEOF\n").ok);
  EXPECT_EQ(SplitText("AutoCAD Binary DXF\r\n\x1a").error,
            "line 1: binary DXF is not supported (save the drawing as ASCII DXF)");
}

TEST(Tokens, TextEncodingsFollowTheVersion) {
  // A 2000 drawing in the Windows code page: "ä" is one byte.
  const Split old = SplitText(Header("AC1015") + "  1\nT\xe4r \\U+00DF\n  0\nEOF\n");
  ASSERT_TRUE(old.ok) << old.error;
  EXPECT_EQ(old.tokens.back().value, "EOF");
  EXPECT_EQ(old.tokens[old.tokens.size() - 2].value, "T\xc3\xa4r \xc3\x9f");
  // A 2013 drawing must be UTF-8, and keeps \U+ as written.
  EXPECT_EQ(SplitText(Header("AC1027") + "  1\nT\xe4r\n  0\nEOF\n").error, "line 12: invalid UTF-8 text");
  const Split modern = SplitText("\xEF\xBB\xBF" + Header("AC1027") + "  1\nT\xc3\xa4r \\U+00DF\n  0\nEOF\n");
  ASSERT_TRUE(modern.ok) << modern.error;
  EXPECT_EQ(modern.tokens[0].value, "SECTION");  // the byte-order mark is skipped
  EXPECT_EQ(modern.tokens[modern.tokens.size() - 2].value, "T\xc3\xa4r \\U+00DF");
  // Escapes are decoded in text groups only.
  const Split handle = SplitText(Header("AC1015") + "330\n\\U+0041\n  0\nEOF\n");
  ASSERT_TRUE(handle.ok);
  EXPECT_EQ(handle.tokens[handle.tokens.size() - 2].value, "\\U+0041");
}

TEST(Tokens, FilesOfManySmallGroups) {
  // Groups shorter than the list's first estimate: it grows and keeps
  // every value in place.
  std::string bytes;
  for (int i = 0; i < 50000; ++i) bytes += "0\n" + std::string(1, static_cast<char>('A' + i % 26)) + "\n";
  bytes += "0\nEOF\n";
  const Split s = SplitText(bytes);
  ASSERT_TRUE(s.ok) << s.error;
  ASSERT_EQ(s.tokens.size(), 50001u);
  for (int i = 0; i < 50000; i += 997) {
    EXPECT_EQ(s.tokens[i].value, std::string(1, static_cast<char>('A' + i % 26)));
    EXPECT_EQ(s.tokens.lineOf(s.tokens[i]), static_cast<std::uint32_t>(2 * i + 1));
  }
}

}  // namespace

TEST(Tokens, CaretSpellingsInTextBecomeControlCharacters) {
  const Split s = SplitText("  1\nA^JB^ C^IE^x^\n 10\n1.0\n  0\nEOF\n");
  ASSERT_TRUE(s.ok) << s.error;
  // Line feed, a caret, a tab; a caret before anything else stays.
  EXPECT_EQ(s.tokens[0].value, "A\nB^C\tE^x^");
  EXPECT_EQ(s.tokens[1].value, "1.0");
  // Text read back keeps the line its group came from.
  EXPECT_EQ(s.tokens.lineOf(s.tokens[0]), 1u);
  EXPECT_EQ(s.tokens.lineOf(s.tokens[1]), 3u);
}
