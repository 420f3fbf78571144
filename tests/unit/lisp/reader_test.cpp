#include "lisp_fixture.h"

using ReaderTest = LispTest;

TEST_F(ReaderTest, NumbersReadAsIntegersOrReals) {
  EXPECT_EQ(eval(L"42"), L"42");
  EXPECT_EQ(eval(L"-7"), L"-7");
  EXPECT_EQ(eval(L"+7"), L"7");
  EXPECT_EQ(eval(L"1.5"), L"1.5");
  EXPECT_EQ(eval(L".5"), L"0.5");
  EXPECT_EQ(eval(L"-.25"), L"-0.25");
  EXPECT_EQ(eval(L"5."), L"5.0");
  EXPECT_EQ(eval(L"1e3"), L"1000.0");
  EXPECT_EQ(eval(L"2.5E-2"), L"0.025");
  // Beyond 32 bits an integer literal becomes a real.
  EXPECT_EQ(eval(L"2147483647"), L"2147483647");
  EXPECT_EQ(eval(L"(type 2147483648)"), L"REAL");
  // Tokens that only look numeric are symbols.
  EXPECT_EQ(eval(L"'1+"), L"1+");
  EXPECT_EQ(eval(L"'1e"), L"1E");
  EXPECT_EQ(eval(L"'-"), L"-");
}

TEST_F(ReaderTest, SymbolsAreCaseInsensitiveAndPrintUpperCase) {
  EXPECT_EQ(eval(L"'abc"), L"ABC");
  EXPECT_EQ(run(L"(setq Foo 1) foo"), L"1");
  EXPECT_EQ(eval(L"'nil"), L"nil");
  EXPECT_EQ(eval(L"'NIL"), L"nil");
  EXPECT_EQ(eval(L"'a.b"), L"A.B");
}

TEST_F(ReaderTest, StringEscapes) {
  EXPECT_EQ(eval(L"(strlen \"a\\nb\")"), L"3");
  EXPECT_EQ(eval(L"(ascii \"\\t\")"), L"9");
  EXPECT_EQ(eval(L"(ascii \"\\r\")"), L"13");
  EXPECT_EQ(eval(L"(ascii \"\\e\")"), L"27");
  EXPECT_EQ(eval(L"(ascii \"\\101\")"), L"65");
  EXPECT_EQ(eval(L"(ascii \"\\7x\")"), L"7");
  EXPECT_EQ(eval(L"(strlen \"\\\\\\\"\")"), L"2");
  // prin1 writes the escapes back.
  EXPECT_EQ(eval(L"\"q\\\"b\\\\s\\nn\\tt\\ee\\001\""), L"\"q\\\"b\\\\s\\nn\\tt\\ee\\001\"");
  // A string may span lines.
  EXPECT_EQ(eval(L"(strlen \"a\nb\")"), L"3");
}

TEST_F(ReaderTest, CommentsAreSkipped) {
  EXPECT_EQ(run(L"; a comment\n(+ 1 ; inside\n 2)"), L"3");
  EXPECT_EQ(eval(L"(+ 1 ;| inline\n comment |; 2)"), L"3");
  EXPECT_EQ(eval(L"(list 1 ;|x|;2)"), L"(1 2)");
}

TEST_F(ReaderTest, QuotesAndDottedPairs) {
  EXPECT_EQ(eval(L"'(a . b)"), L"(A . B)");
  EXPECT_EQ(eval(L"'(1 2 . 3)"), L"(1 2 . 3)");
  EXPECT_EQ(eval(L"'(1 . (2 3))"), L"(1 2 3)");
  EXPECT_EQ(eval(L"''a"), L"(QUOTE A)");
  EXPECT_EQ(eval(L"'(a 'b)"), L"(A (QUOTE B))");
  EXPECT_EQ(eval(L"'()"), L"nil");
  EXPECT_EQ(eval(L"(car '(\"x\" . 2))"), L"\"x\"");
}

TEST_F(ReaderTest, MalformedInputGivesThePlatformsMessages) {
  EXPECT_EQ(eval(L"(+ 1 2"), L"ERROR: malformed list on input");
  EXPECT_EQ(eval(L"'"), L"ERROR: malformed list on input");
  EXPECT_EQ(eval(L")"), L"ERROR: extra right paren on input");
  EXPECT_EQ(eval(L"'(. a)"), L"ERROR: misplaced dot on input");
  EXPECT_EQ(eval(L"'(a . b c)"), L"ERROR: misplaced dot on input");
  EXPECT_EQ(eval(L"'(a .)"), L"ERROR: misplaced dot on input");
  EXPECT_EQ(eval(L"\"abc"), L"ERROR: malformed string on input");
  EXPECT_EQ(out, L"\n; error: malformed list on input\n; error: malformed list on input"
                 L"\n; error: extra right paren on input\n; error: misplaced dot on input"
                 L"\n; error: misplaced dot on input\n; error: misplaced dot on input"
                 L"\n; error: malformed string on input");
}

TEST_F(ReaderTest, SourceStopsAtTheFirstError) {
  std::vector<std::wstring> seen;
  bool ok = lisp.evalSource(L"(setq a 1) (car 5) (setq a 2)", [&](const kelhost::lisp::Outcome& o) {
    seen.push_back(o.ok ? o.valueText : L"!" + o.error);
  });
  EXPECT_FALSE(ok);
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[1], L"!bad argument type: consp 5");
  EXPECT_EQ(eval(L"a"), L"1");
  EXPECT_TRUE(lisp.evalSource(L"  ; nothing but a comment\n", nullptr));
}

TEST_F(ReaderTest, DeepNestingReadsAndPrints) {
  std::wstring deep = L"'";
  for (int k = 0; k < 100000; ++k) deep += L'(';
  for (int k = 0; k < 100000; ++k) deep += L')';
  kelhost::lisp::Outcome o = lisp.evalOne(deep);
  ASSERT_TRUE(o.ok);
  EXPECT_EQ(o.valueText.size(), 2u * 99999 + 3);  // ((...(nil)...))
}

TEST_F(ReaderTest, ReadFunctionUsesTheReader) {
  EXPECT_EQ(eval(L"(read \"(a \\\"b\\\" 1.5)\")"), L"(A \"b\" 1.5)");
  EXPECT_EQ(eval(L"(read \"x y\")"), L"X");
  EXPECT_EQ(eval(L"(read \"\")"), L"nil");
  EXPECT_EQ(eval(L"(read \"(1\")"), L"ERROR: malformed list on input");
}
