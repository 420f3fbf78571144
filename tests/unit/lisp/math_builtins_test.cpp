#include "lisp_fixture.h"

using MathBuiltinsTest = LispTest;

TEST_F(MathBuiltinsTest, IntegerArithmeticWrapsAt32Bits) {
  EXPECT_EQ(eval(L"(+ 2147483647 1)"), L"-2147483648");
  EXPECT_EQ(eval(L"(- -2147483648 1)"), L"2147483647");
  EXPECT_EQ(eval(L"(* 65536 65536)"), L"0");
  EXPECT_EQ(eval(L"(1+ 2147483647)"), L"-2147483648");
  EXPECT_EQ(eval(L"(- -2147483648)"), L"-2147483648");
  EXPECT_EQ(eval(L"(/ -2147483648 -1)"), L"-2147483648");
  EXPECT_EQ(eval(L"(abs -2147483648)"), L"-2147483648");
}

TEST_F(MathBuiltinsTest, MixedArithmeticAndIdentities) {
  EXPECT_EQ(eval(L"(+)"), L"0");
  EXPECT_EQ(eval(L"(*)"), L"0");
  EXPECT_EQ(eval(L"(- 5)"), L"-5");
  EXPECT_EQ(eval(L"(/ 7 2)"), L"3");
  EXPECT_EQ(eval(L"(/ -7 2)"), L"-3");
  EXPECT_EQ(eval(L"(/ 7 2.0)"), L"3.5");
  // Integer division happens until a real takes part, left to right.
  EXPECT_EQ(eval(L"(/ 5 2 2.0)"), L"1.0");
  EXPECT_EQ(eval(L"(+ 1 2.5)"), L"3.5");
  EXPECT_EQ(eval(L"(* 2 3)"), L"6");
  EXPECT_EQ(eval(L"(rem 42 12)"), L"6");
  EXPECT_EQ(eval(L"(rem -7 2)"), L"-1");
  EXPECT_EQ(eval(L"(rem 5.5 2)"), L"1.5");
  EXPECT_EQ(eval(L"(1- 0.5)"), L"-0.5");
}

TEST_F(MathBuiltinsTest, ErrorsOfArithmetic) {
  EXPECT_EQ(eval(L"(+ 1 \"a\")"), L"ERROR: bad argument type: numberp: \"a\"");
  EXPECT_EQ(eval(L"(/ 1 0)"), L"ERROR: divide by zero");
  EXPECT_EQ(eval(L"(/ 1.0 0.0)"), L"ERROR: divide by zero");
  EXPECT_EQ(eval(L"(rem 1 0)"), L"ERROR: divide by zero");
  EXPECT_EQ(eval(L"(sqrt -4)"), L"ERROR: function undefined for argument: -4");
  EXPECT_EQ(eval(L"(log 0)"), L"ERROR: function undefined for argument: 0");
  EXPECT_EQ(eval(L"(1+ nil)"), L"ERROR: bad argument type: numberp: nil");
}

TEST_F(MathBuiltinsTest, ConversionsAndExtremes) {
  EXPECT_EQ(eval(L"(fix 3.7)"), L"3");
  EXPECT_EQ(eval(L"(fix -3.7)"), L"-3");
  EXPECT_EQ(eval(L"(fix 1e10)"), L"1.0e+010");
  EXPECT_EQ(eval(L"(float 3)"), L"3.0");
  EXPECT_EQ(eval(L"(max 1 3 2)"), L"3");
  EXPECT_EQ(eval(L"(max 3 2.0)"), L"3.0");
  EXPECT_EQ(eval(L"(min 4 -1.5 2)"), L"-1.5");
  EXPECT_EQ(eval(L"(abs -2.5)"), L"2.5");
}

TEST_F(MathBuiltinsTest, TranscendentalFunctions) {
  EXPECT_EQ(eval(L"(sqrt 16)"), L"4.0");
  EXPECT_EQ(eval(L"(sin 0)"), L"0.0");
  EXPECT_EQ(eval(L"(cos pi)"), L"-1.0");
  EXPECT_EQ(eval(L"(atan 1)"), L"0.785398");
  EXPECT_EQ(eval(L"(atan 1 -1)"), L"2.35619");
  EXPECT_EQ(eval(L"(atan -1 0)"), L"-1.5708");
  EXPECT_EQ(eval(L"(exp 1)"), L"2.71828");
  EXPECT_EQ(eval(L"(log 10)"), L"2.30259");
  EXPECT_EQ(eval(L"(expt 2 10)"), L"1024");
  EXPECT_EQ(eval(L"(expt 2 -1)"), L"0");
  EXPECT_EQ(eval(L"(expt 2.0 -1)"), L"0.5");
  EXPECT_EQ(eval(L"(expt 2 31)"), L"-2147483648");
  EXPECT_EQ(eval(L"(expt 3 1000000001)"), L"-1943431165");  // fast, and wrapped
  EXPECT_EQ(eval(L"(expt -8.0 0.5)"), L"ERROR: function undefined for argument: -8.0");
}

TEST_F(MathBuiltinsTest, BitwiseFunctions) {
  EXPECT_EQ(eval(L"(gcd 81 57)"), L"3");
  EXPECT_EQ(eval(L"(gcd 12 0)"), L"12");
  EXPECT_EQ(eval(L"(logand 7 15 3)"), L"3");
  EXPECT_EQ(eval(L"(logand)"), L"0");
  EXPECT_EQ(eval(L"(logior 1 4 8)"), L"13");
  EXPECT_EQ(eval(L"(lsh 2 1)"), L"4");
  EXPECT_EQ(eval(L"(lsh 40 -2)"), L"10");
  EXPECT_EQ(eval(L"(lsh 1 31)"), L"-2147483648");
  EXPECT_EQ(eval(L"(lsh -1 -28)"), L"15");  // logical, not arithmetic
  EXPECT_EQ(eval(L"(lsh 1 32)"), L"0");
  EXPECT_EQ(eval(L"(~ 5)"), L"-6");
  EXPECT_EQ(eval(L"(boole 1 12 5)"), L"4");
  EXPECT_EQ(eval(L"(boole 6 6 5)"), L"3");
  EXPECT_EQ(eval(L"(boole 7 8 5)"), L"13");
  EXPECT_EQ(eval(L"(boole 8 1 1)"), L"-2");
  EXPECT_EQ(eval(L"(logand 1.0)"), L"ERROR: bad argument type: fixnump: 1.0");
}

TEST_F(MathBuiltinsTest, RealsPrintLikeThePlatform) {
  EXPECT_EQ(eval(L"(/ 1.0 3)"), L"0.333333");
  EXPECT_EQ(eval(L"100.0"), L"100.0");
  EXPECT_EQ(eval(L"123456.0"), L"123456.0");
  EXPECT_EQ(eval(L"1234567.0"), L"1.23457e+006");
  EXPECT_EQ(eval(L"0.0001"), L"0.0001");
  EXPECT_EQ(eval(L"0.00001"), L"1.0e-005");
  EXPECT_EQ(eval(L"-2.5e100"), L"-2.5e+100");
  EXPECT_EQ(eval(L"1e400"), L"1.#INF");
  EXPECT_EQ(eval(L"pi"), L"3.14159");
}
