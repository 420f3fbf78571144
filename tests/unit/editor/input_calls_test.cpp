// The user-input calls of applications and AutoLISP answered from the
// user's input: return codes, initget for one call only, keywords through
// acedGetInput, text buffers, entsel, and the AutoLISP forms.
#include <string>

#include "arx/acedads.h"
#include "tests/unit/editor/input_fixture.h"

namespace {

class InputCallsTest : public InputTest {
 protected:
  short errnoValue() {
    resbuf rb{};
    acedGetVar(L"ERRNO", &rb);
    return rb.resval.rint;
  }
};

TEST_F(InputCallsTest, PointsAreReaskedUntilValidAndRemembered) {
  answers({L"abc", L"1,2"});
  ads_point p;
  ASSERT_EQ(acedGetPoint(nullptr, L"\nFrom: ", p), RTNORM);
  EXPECT_DOUBLE_EQ(p[0], 1);
  EXPECT_DOUBLE_EQ(p[1], 2);
  EXPECT_EQ(out, L"\nFrom: abc\nInvalid point.\nFrom: 1,2");
  resbuf last{};
  acedGetVar(L"LASTPOINT", &last);
  EXPECT_DOUBLE_EQ(last.resval.rpoint[1], 2);

  answers({L"@1,1", L"", L"5"});
  ASSERT_EQ(acedGetCorner(p, L"\nOther corner: ", p), RTNORM);
  EXPECT_DOUBLE_EQ(p[0], 2);  // relative to the last point
  EXPECT_EQ(acedGetPoint(nullptr, nullptr, p), RTNONE);
  EXPECT_EQ(acedGetCorner(nullptr, nullptr, p), RTERROR);  // a corner needs its base
  ads_real d = 0;
  const ads_point base = {0, 0, 0};
  ASSERT_EQ(acedGetDist(base, L"\nLength: ", &d), RTNORM);
  EXPECT_DOUBLE_EQ(d, 5);
  EXPECT_EQ(acedGetReal(nullptr, &d), RTCAN);  // the input ended
}

TEST_F(InputCallsTest, DistanceByTwoPointsAsksForTheSecond) {
  answers({L"0,0", L"3,4"});
  ads_real d = 0;
  ASSERT_EQ(acedGetDist(nullptr, L"\nDistance: ", &d), RTNORM);
  EXPECT_DOUBLE_EQ(d, 5);
  EXPECT_EQ(out, L"\nDistance: 0,0\nSpecify second point: 3,4");
}

TEST_F(InputCallsTest, InitGetHoldsForTheNextCallOnly) {
  answers({L"", L"0", L"4", L""});
  int n = 0;
  ASSERT_EQ(acedInitGet(RSG_NONULL | RSG_NOZERO, nullptr), RTNORM);
  ASSERT_EQ(acedGetInt(L"\nN: ", &n), RTNORM);
  EXPECT_EQ(n, 4);
  EXPECT_EQ(out, L"\nN: \nRequires an integer value.\nN: 0\nValue must be nonzero.\nN: 4");
  EXPECT_EQ(acedGetInt(L"\nN: ", &n), RTNONE);  // the conditions are gone

  // A bad call uses them up too.
  answers({L""});
  acedInitGet(RSG_NONULL, nullptr);
  EXPECT_EQ(acedGetInt(L"\nN: ", nullptr), RTERROR);
  EXPECT_EQ(acedGetInt(L"\nN: ", &n), RTNONE);
}

TEST_F(InputCallsTest, KeywordsComeBackThroughGetInput) {
  answers({L"tw", L"_P", L"42", L"whatever"});
  ads_real v = 0;
  ACHAR kw[132];
  acedInitGet(0, L"Pi Two-pi _ Pi TwoPi");
  ASSERT_EQ(acedGetReal(L"\nValue: ", &v), RTKWORD);
  ASSERT_EQ(acedGetInput(kw), RTNORM);
  EXPECT_STREQ(kw, L"TwoPi");  // the global name
  acedInitGet(0, L"Pi Two-pi _ Pi TwoPi");
  ASSERT_EQ(acedGetReal(L"\nValue: ", &v), RTKWORD);
  acedGetInput(kw);
  EXPECT_STREQ(kw, L"Pi");
  ASSERT_EQ(acedGetReal(L"\nValue: ", &v), RTNORM);
  EXPECT_EQ(acedGetInput(kw), RTERROR);  // only right after a keyword
  acedInitGet(RSG_OTHER, nullptr);
  ASSERT_EQ(acedGetReal(L"\nValue: ", &v), RTKWORD);
  acedGetInput(kw);
  EXPECT_STREQ(kw, L"whatever");
  ACHAR small[4];
  EXPECT_EQ(acedGetInput(small, 4), RTINPUTTRUNCATED);
  EXPECT_STREQ(small, L"wha");
}

TEST_F(InputCallsTest, GetKwordNeedsKeywords) {
  answers({L"maybe", L"n", L""});
  ACHAR kw[132];
  EXPECT_EQ(acedGetKword(L"\nSure? ", kw), RTERROR);  // nothing to choose from
  EXPECT_EQ(out, L"");
  acedInitGet(0, L"Yes No");
  ASSERT_EQ(acedGetKword(L"\nSure? ", kw), RTNORM);
  EXPECT_STREQ(kw, L"No");
  EXPECT_EQ(out, L"\nSure? maybe\nInvalid option keyword.\nSure? n");
  acedInitGet(0, L"Yes No");
  EXPECT_EQ(acedGetKword(L"\nSure? ", kw), RTNONE);
}

TEST_F(InputCallsTest, TextWithAndWithoutSpacesAndItsBuffers) {
  answers({L"two words", std::wstring(200, L'x'), L"abcdef", L""});
  ACHAR text[133];
  ASSERT_EQ(acedGetString(1, L"\nName: ", text), RTNORM);
  EXPECT_STREQ(text, L"two words");
  ASSERT_EQ(acedGetString(1, nullptr, text), RTNORM);
  EXPECT_EQ(std::wstring(text).size(), 132u);  // the documented buffer, cut silently
  ACHAR small[4];
  EXPECT_EQ(acedGetString(0, nullptr, small, 4), RTINPUTTRUNCATED);
  EXPECT_STREQ(small, L"abc");
  acedInitGet(RSG_NONULL, nullptr);  // text prompts ignore the conditions
  ASSERT_EQ(acedGetString(0, nullptr, text), RTNORM);
  EXPECT_STREQ(text, L"");
}

TEST_F(InputCallsTest, EntSelPicksMissesAndTellsThemApart) {
  ASSERT_EQ(eval(L"(progn (entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0))) (setq e (entlast)) T)"),
            L"T");
  answers({L"5,0.1", L"50,50", L"", L"u"});
  ads_name name;
  ads_point p;
  ASSERT_EQ(acedEntSel(nullptr, name, p), RTNORM);
  EXPECT_EQ(out, L"\nSelect object: 5,0.1");
  EXPECT_DOUBLE_EQ(p[1], 0.1);  // where it was picked, not a point on it
  EXPECT_EQ(eval(L"(eq e (entlast))"), L"T");
  EXPECT_EQ(acedEntSel(L"\nPick: ", name, p), RTERROR);
  EXPECT_EQ(errnoValue(), 7);
  EXPECT_EQ(acedEntSel(L"\nPick: ", name, p), RTERROR);
  EXPECT_EQ(errnoValue(), 52);
  acedInitGet(0, L"Undo");
  EXPECT_EQ(acedEntSel(L"\nPick: ", name, p), RTKWORD);
  EXPECT_EQ(acedEntSel(L"\nPick: ", name, p), RTCAN);
}

TEST_F(InputCallsTest, AutoLispFormsReturnValuesNilKeywordsAndCancel) {
  answers({L"1,2", L"3", L"", L"y", L"a b", L"x", L"q", L"y", L"3,3"});
  EXPECT_EQ(eval(L"(getpoint \"\\nP: \")"), L"(1.0 2.0 0.0)");
  EXPECT_EQ(eval(L"(getdist '(0 0) \"\\nD: \")"), L"3.0");
  EXPECT_EQ(eval(L"(getint)"), L"nil");
  EXPECT_EQ(eval(L"(progn (initget \"Yes No\") (getkword \"\\nOK? \"))"), L"\"Yes\"");
  EXPECT_EQ(eval(L"(getstring T \"\\nS: \")"), L"\"a b\"");
  EXPECT_EQ(eval(L"(progn (initget 128) (getint))"), L"\"x\"");
  EXPECT_EQ(eval(L"(progn (initget \"Quit\") (getpoint '(0 0)))"), L"\"Quit\"");
  EXPECT_EQ(eval(L"(progn (initget \"Yes\") (entsel))"), L"\"Yes\"");
  EXPECT_EQ(eval(L"(getcorner '(0 0 0))"), L"(3.0 3.0 0.0)");
  EXPECT_EQ(eval(L"(getreal)"), L"error: Function cancelled");
  EXPECT_EQ(eval(L"(getkword)"), L"nil");  // no keywords: nothing asked

  EXPECT_EQ(eval(L"(getpoint 5)"), L"error: bad argument type: 2D/3D point: 5");
  EXPECT_EQ(eval(L"(getcorner)"), L"error: too few arguments");
  EXPECT_EQ(eval(L"(getint 5)"), L"error: bad argument type: stringp 5");
  EXPECT_EQ(eval(L"(initget \"a\" 1)"), L"error: bad argument type: stringp 1");
}

TEST_F(InputCallsTest, AutoLispCannotAnswerAPromptItAsked) {
  answers({L"(list 1 2)", L"3,4"});
  EXPECT_EQ(eval(L"(getpoint \"\\nP: \")"), L"(3.0 4.0 0.0)");
  EXPECT_EQ(out, L"\nP: (list 1 2)\nCan't reenter LISP.\nP: 3,4");
}

}  // namespace
