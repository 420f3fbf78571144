#include "lisp_fixture.h"

using PredicateBuiltinsTest = LispTest;

TEST_F(PredicateBuiltinsTest, NumericAndStringComparisons) {
  EXPECT_EQ(eval(L"(= 1 1.0 1)"), L"T");
  EXPECT_EQ(eval(L"(= \"a\" \"a\")"), L"T");
  EXPECT_EQ(eval(L"(= 1 \"1\")"), L"nil");
  EXPECT_EQ(eval(L"(= 5)"), L"T");
  EXPECT_EQ(eval(L"(/= 10 20 10 20)"), L"T");  // only successive pairs count
  EXPECT_EQ(eval(L"(/= 10 20 10 20 20)"), L"nil");
  EXPECT_EQ(eval(L"(< 1 2 3)"), L"T");
  EXPECT_EQ(eval(L"(< 1 3 2)"), L"nil");
  EXPECT_EQ(eval(L"(<= 1 1 2)"), L"T");
  EXPECT_EQ(eval(L"(> \"b\" \"a\")"), L"T");
  EXPECT_EQ(eval(L"(>= 2 2.0 1)"), L"T");
  EXPECT_EQ(eval(L"(< 1 'a)"), L"ERROR: bad argument type: numberp: A");
}

TEST_F(PredicateBuiltinsTest, EqAndEqual) {
  EXPECT_EQ(eval(L"(eq 'a 'A)"), L"T");
  EXPECT_EQ(eval(L"(eq 1 1)"), L"T");
  EXPECT_EQ(eval(L"(eq '(1) '(1))"), L"nil");
  EXPECT_EQ(run(L"(setq l '(1)) (eq l l)"), L"T");
  EXPECT_EQ(eval(L"(equal '(1 (2 \"x\")) '(1 (2 \"x\")))"), L"T");
  EXPECT_EQ(eval(L"(equal '(1 2) '(1 2 3))"), L"nil");
  EXPECT_EQ(eval(L"(equal 1.0 1.05 0.1)"), L"T");
  EXPECT_EQ(eval(L"(equal '(1.0 2.0) '(1.01 2.0) 0.001)"), L"nil");
  EXPECT_EQ(eval(L"(equal '(1.0 2.0) '(1.01 2.0) 0.1)"), L"T");
}

TEST_F(PredicateBuiltinsTest, TypeTests) {
  EXPECT_EQ(eval(L"(list (minusp -1) (minusp 0) (zerop 0.0) (zerop 1))"), L"(T nil T nil)");
  EXPECT_EQ(eval(L"(list (numberp 1) (numberp \"1\") (listp nil) (listp '(1)) (listp 1))"), L"(T nil T T nil)");
  EXPECT_EQ(eval(L"(list (atom nil) (atom '(1)) (null nil) (not 0) (vl-consp nil) (vl-consp '(1)))"),
            L"(T nil T nil nil T)");
  EXPECT_EQ(eval(L"(minusp \"x\")"), L"ERROR: bad argument type: numberp: \"x\"");
  EXPECT_EQ(run(L"(setq bound 1) (list (boundp 'bound) (boundp 'never-set))"), L"(T nil)");
}

TEST_F(PredicateBuiltinsTest, TypeNamesEveryKind) {
  EXPECT_EQ(eval(L"(mapcar 'type (list 1 1.5 \"s\" 'x '(1) car (lambda () 1)))"),
            L"(INT REAL STR SYM LIST SUBR USUBR)");
  EXPECT_EQ(eval(L"(type nil)"), L"nil");
  EXPECT_EQ(eval(L"(type 'setq)"), L"SYM");
  EXPECT_EQ(eval(L"(type setq)"), L"SUBR");
}
