#include "lisp_fixture.h"

using StringBuiltinsTest = LispTest;

TEST_F(StringBuiltinsTest, BuildingAndSlicing) {
  EXPECT_EQ(eval(L"(strcat \"ab\" \"\" \"cd\")"), L"\"abcd\"");
  EXPECT_EQ(eval(L"(strcat)"), L"\"\"");
  EXPECT_EQ(eval(L"(strcat \"a\" 1)"), L"ERROR: bad argument type: stringp 1");
  EXPECT_EQ(eval(L"(strlen \"abc\" \"de\")"), L"5");
  EXPECT_EQ(eval(L"(strlen)"), L"0");
  EXPECT_EQ(eval(L"(substr \"abcde\" 2)"), L"\"bcde\"");
  EXPECT_EQ(eval(L"(substr \"abcde\" 2 1)"), L"\"b\"");
  EXPECT_EQ(eval(L"(substr \"abcde\" 3 10)"), L"\"cde\"");
  EXPECT_EQ(eval(L"(substr \"abc\" 9)"), L"\"\"");
  EXPECT_EQ(eval(L"(substr \"abc\" 0)"), L"ERROR: bad argument value: positive 0");
  EXPECT_EQ(eval(L"(substr \"\x4E2D\x56FD\" 2 1)"), L"\"\x56FD\"");
}

TEST_F(StringBuiltinsTest, CaseConversion) {
  EXPECT_EQ(eval(L"(strcase \"This is a TEST.\")"), L"\"THIS IS A TEST.\"");
  EXPECT_EQ(eval(L"(strcase \"This is a TEST.\" T)"), L"\"this is a test.\"");
  EXPECT_EQ(eval(L"(strcase \"\x00E9t\x00E9\")"), L"\"\x00C9T\x00C9\"");
}

TEST_F(StringBuiltinsTest, NumbersAndCharacterCodes) {
  EXPECT_EQ(eval(L"(itoa -33)"), L"\"-33\"");
  EXPECT_EQ(eval(L"(itoa 3.0)"), L"ERROR: bad argument type: fixnump: 3.0");
  EXPECT_EQ(eval(L"(atoi \"  97.9x\")"), L"97");
  EXPECT_EQ(eval(L"(atoi \"-3\")"), L"-3");
  EXPECT_EQ(eval(L"(atoi \"abc\")"), L"0");
  EXPECT_EQ(eval(L"(atoi \"99999999999\")"), L"2147483647");
  EXPECT_EQ(eval(L"(atof \"97.1\")"), L"97.1");
  EXPECT_EQ(eval(L"(atof \"3\")"), L"3.0");
  EXPECT_EQ(eval(L"(atof \" -1.5e2m\")"), L"-150.0");
  EXPECT_EQ(eval(L"(atof \"x\")"), L"0.0");
  EXPECT_EQ(eval(L"(chr 65)"), L"\"A\"");
  EXPECT_EQ(eval(L"(chr 20013)"), L"\"\x4E2D\"");
  EXPECT_EQ(eval(L"(ascii \"ABC\")"), L"65");
  EXPECT_EQ(eval(L"(ascii \"\")"), L"0");
  EXPECT_EQ(eval(L"(vl-string->list \"AB\")"), L"(65 66)");
  EXPECT_EQ(eval(L"(vl-list->string '(72 105))"), L"\"Hi\"");
  EXPECT_EQ(eval(L"(vl-list->string '(72 \"i\"))"), L"ERROR: bad argument type: fixnump: \"i\"");
}

TEST_F(StringBuiltinsTest, UnitConversions) {
  // The drawing's DIMZIN (8 in a metric drawing) drops trailing zeros; 0 keeps them.
  EXPECT_EQ(eval(L"(rtos 17.5)"), L"\"17.5\"");
  eval(L"(setvar \"DIMZIN\" 0)");
  EXPECT_EQ(eval(L"(rtos 17.5)"), L"\"17.5000\"");  // LUNITS 2, LUPREC 4
  EXPECT_EQ(eval(L"(rtos 17.5 1 4)"), L"\"1.7500E+01\"");
  EXPECT_EQ(eval(L"(rtos 17.5 2 2)"), L"\"17.50\"");
  EXPECT_EQ(eval(L"(rtos 17.5 3 2)"), L"\"1'-5.50\\\"\"");
  EXPECT_EQ(eval(L"(rtos 17.5 4 2)"), L"\"1'-5 1/2\\\"\"");
  EXPECT_EQ(eval(L"(rtos 17.5 5 2)"), L"\"17 1/2\"");
  EXPECT_EQ(eval(L"(rtos 1 9 2)"), L"ERROR: bad argument value: 2");
  EXPECT_EQ(eval(L"(distof \"1'-5 1/2\\\"\" 4)"), L"17.5");
  EXPECT_EQ(eval(L"(distof \"1.7500E+01\" 1)"), L"17.5");
  EXPECT_EQ(eval(L"(distof \"abc\" 2)"), L"nil");
  EXPECT_EQ(eval(L"(angtos pi 0 2)"), L"\"180.00\"");
  eval(L"(setvar \"DIMZIN\" 8)");
}

TEST_F(StringBuiltinsTest, SearchingAndReplacing) {
  EXPECT_EQ(eval(L"(vl-string-search \"foo\" \"pfooyfoo\")"), L"1");
  EXPECT_EQ(eval(L"(vl-string-search \"foo\" \"pfooyfoo\" 2)"), L"5");
  EXPECT_EQ(eval(L"(vl-string-search \"x\" \"abc\")"), L"nil");
  EXPECT_EQ(eval(L"(vl-string-search \"a\" \"abc\" 10)"), L"nil");
  EXPECT_EQ(eval(L"(vl-string-subst \"Obi-wan\" \"Ben\" \"Ben Ben\")"), L"\"Obi-wan Ben\"");
  EXPECT_EQ(eval(L"(vl-string-subst \"x\" \"a\" \"aaa\" 1)"), L"\"axa\"");
  EXPECT_EQ(eval(L"(vl-string-subst \"x\" \"q\" \"abc\")"), L"\"abc\"");
  EXPECT_EQ(eval(L"(vl-string-position 98 \"abcb\")"), L"1");
  EXPECT_EQ(eval(L"(vl-string-position 98 \"abcb\" nil t)"), L"3");
}

TEST_F(StringBuiltinsTest, Trimming) {
  EXPECT_EQ(eval(L"(vl-string-trim \" \\t\\n\" \" \\t\\n abc \\n\")"), L"\"abc\"");
  EXPECT_EQ(eval(L"(vl-string-left-trim \"12\" \"1212a12\")"), L"\"a12\"");
  EXPECT_EQ(eval(L"(vl-string-right-trim \"12\" \"1212a12\")"), L"\"1212a\"");
  EXPECT_EQ(eval(L"(vl-string-trim \"ab\" \"abba\")"), L"\"\"");
}

TEST_F(StringBuiltinsTest, ValuesAsText) {
  EXPECT_EQ(eval(L"(vl-princ-to-string '(\"a\" 1.5 b))"), L"\"(a 1.5 B)\"");
  EXPECT_EQ(eval(L"(vl-prin1-to-string \"a\\\"b\")"), L"\"\\\"a\\\\\\\"b\\\"\"");
  EXPECT_EQ(eval(L"(vl-symbol-name 'abc)"), L"\"ABC\"");
  EXPECT_EQ(eval(L"(wcmatch \"Name\" \"N*\")"), L"T");
  EXPECT_EQ(eval(L"(wcmatch \"Name\" \"*`,*\")"), L"nil");
  EXPECT_EQ(eval(L"(wcmatch 1 \"*\")"), L"ERROR: bad argument type: stringp 1");
}
