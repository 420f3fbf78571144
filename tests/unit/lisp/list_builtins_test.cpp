#include "lisp_fixture.h"

using ListBuiltinsTest = LispTest;

TEST_F(ListBuiltinsTest, ConstructionAndAccess) {
  EXPECT_EQ(eval(L"(list 1 \"a\" 'b)"), L"(1 \"a\" B)");
  EXPECT_EQ(eval(L"(list)"), L"nil");
  EXPECT_EQ(eval(L"(cons 1 '(2))"), L"(1 2)");
  EXPECT_EQ(eval(L"(cons 1 2)"), L"(1 . 2)");
  EXPECT_EQ(eval(L"(cons 1 nil)"), L"(1)");
  EXPECT_EQ(eval(L"(car nil)"), L"nil");
  EXPECT_EQ(eval(L"(cdr '(1))"), L"nil");
  EXPECT_EQ(eval(L"(cdr '(1 . 2))"), L"2");
  EXPECT_EQ(eval(L"(car \"x\")"), L"ERROR: bad argument type: consp \"x\"");
}

TEST_F(ListBuiltinsTest, CxrCompositionsToFourLevels) {
  run(L"(setq l '((1 2) (3 4) 5 6 7))");
  EXPECT_EQ(eval(L"(cadr l)"), L"(3 4)");
  EXPECT_EQ(eval(L"(caar l)"), L"1");
  EXPECT_EQ(eval(L"(cdar l)"), L"(2)");
  EXPECT_EQ(eval(L"(cddr l)"), L"(5 6 7)");
  EXPECT_EQ(eval(L"(caddr l)"), L"5");
  EXPECT_EQ(eval(L"(cadadr l)"), L"4");
  EXPECT_EQ(eval(L"(cadddr l)"), L"6");
  EXPECT_EQ(eval(L"(cddddr l)"), L"(7)");
  EXPECT_EQ(eval(L"(caaddr l)"), L"ERROR: bad argument type: consp 5");
  EXPECT_EQ(eval(L"(cadddr '(1))"), L"nil");
}

TEST_F(ListBuiltinsTest, NthLengthLastReverse) {
  EXPECT_EQ(eval(L"(nth 0 '(a b c))"), L"A");
  EXPECT_EQ(eval(L"(nth 2 '(a b c))"), L"C");
  EXPECT_EQ(eval(L"(nth 3 '(a b c))"), L"nil");
  EXPECT_EQ(eval(L"(nth -1 '(a b c))"), L"nil");
  EXPECT_EQ(eval(L"(length '(1 2 3))"), L"3");
  EXPECT_EQ(eval(L"(length nil)"), L"0");
  EXPECT_EQ(eval(L"(length 5)"), L"ERROR: bad argument type: listp 5");
  EXPECT_EQ(eval(L"(length '(1 . 2))"), L"ERROR: bad list: (1 . 2)");
  EXPECT_EQ(eval(L"(last '(1 2 3))"), L"3");
  EXPECT_EQ(eval(L"(last nil)"), L"nil");
  EXPECT_EQ(eval(L"(reverse '(1 (2 3) 4))"), L"(4 (2 3) 1)");
}

TEST_F(ListBuiltinsTest, AppendCopiesAllButTheLast) {
  EXPECT_EQ(eval(L"(append '(1 2) nil '(3) '(4 5))"), L"(1 2 3 4 5)");
  EXPECT_EQ(eval(L"(append)"), L"nil");
  EXPECT_EQ(eval(L"(append '(1) 2)"), L"ERROR: bad argument type: listp 2");
  EXPECT_EQ(run(L"(setq a '(1 2)) (append a '(3)) a"), L"(1 2)");
}

TEST_F(ListBuiltinsTest, SearchingUsesEqual) {
  run(L"(setq al '((\"a\" . 1) ((1 2) . 2) (b . 3)))");
  EXPECT_EQ(eval(L"(assoc \"a\" al)"), L"(\"a\" . 1)");
  EXPECT_EQ(eval(L"(assoc '(1 2) al)"), L"((1 2) . 2)");
  EXPECT_EQ(eval(L"(assoc 'zz al)"), L"nil");
  EXPECT_EQ(eval(L"(member 2.0 '(1 2 3))"), L"(2 3)");
  EXPECT_EQ(eval(L"(member \"x\" '(\"a\" \"x\" \"b\"))"), L"(\"x\" \"b\")");
  EXPECT_EQ(eval(L"(subst 'qq 'b '(a b (c b) b))"), L"(A QQ (C B) QQ)");
  EXPECT_EQ(eval(L"(subst 'qq '(c d) '(a (c d)))"), L"(A QQ)");
}

TEST_F(ListBuiltinsTest, MapcarWalksListsSideBySide) {
  EXPECT_EQ(eval(L"(mapcar '1+ '(1 2 3))"), L"(2 3 4)");
  EXPECT_EQ(eval(L"(mapcar '+ '(1 2 3) '(10 20))"), L"(11 22)");
  EXPECT_EQ(eval(L"(mapcar 'car nil)"), L"nil");
  EXPECT_EQ(eval(L"(mapcar 'list '(1) 5)"), L"ERROR: bad argument type: listp 5");
}

TEST_F(ListBuiltinsTest, VisualLispListFunctions) {
  EXPECT_EQ(eval(L"(vl-sort '(3 2 1 3) '<)"), L"(1 2 3)");
  EXPECT_EQ(eval(L"(vl-sort '(3.0 1.0 3.0) '<)"), L"(1.0 3.0 3.0)");
  EXPECT_EQ(eval(L"(vl-sort '(\"b\" \"a\" \"c\") '>)"), L"(\"c\" \"b\" \"a\")");
  EXPECT_EQ(eval(L"(vl-sort '((1 3) (2 2) (3 1)) (function (lambda (a b) (< (cadr a) (cadr b)))))"),
            L"((3 1) (2 2) (1 3))");
  // A comparison that contradicts itself still gives every element back.
  EXPECT_EQ(eval(L"(length (vl-sort '(5 1 4 2 3 9 8 7 6) (lambda (a b) (= (rem (+ a b) 3) 0))))"), L"9");
  EXPECT_EQ(eval(L"(vl-position \"b\" '(\"a\" \"b\"))"), L"1");
  EXPECT_EQ(eval(L"(vl-position 'z '(a b))"), L"nil");
  EXPECT_EQ(eval(L"(vl-remove 1 '(1 2 1.0 3))"), L"(2 3)");
  EXPECT_EQ(eval(L"(vl-remove-if 'minusp '(1 -2 3))"), L"(1 3)");
  EXPECT_EQ(eval(L"(vl-remove-if-not 'minusp '(1 -2 3))"), L"(-2)");
  EXPECT_EQ(eval(L"(vl-member-if 'minusp '(1 -2 3))"), L"(-2 3)");
  EXPECT_EQ(eval(L"(vl-member-if-not 'numberp '(1 a 3))"), L"(A 3)");
  EXPECT_EQ(eval(L"(vl-some '= '(1 2 3) '(3 2 1))"), L"T");
  EXPECT_EQ(eval(L"(vl-some 'member '(1 2) '((3) (2 4)))"), L"(2 4)");
  EXPECT_EQ(eval(L"(vl-every '< '(1 2) '(2 3 0))"), L"T");
  EXPECT_EQ(eval(L"(vl-every 'numberp '(1 a))"), L"nil");
  EXPECT_EQ(eval(L"(vl-list* 1 2 '(3))"), L"(1 2 3)");
  EXPECT_EQ(eval(L"(vl-list* 1 2)"), L"(1 . 2)");
  EXPECT_EQ(eval(L"(vl-list-length '(1 . 2))"), L"nil");
}

TEST_F(ListBuiltinsTest, LongListsDoNotRecurse) {
  // Building, comparing and dropping a long and a deeply nested list.
  EXPECT_EQ(run(L"(setq big nil) (repeat 100000 (setq big (cons 1 big))) (length big)"), L"100000");
  EXPECT_EQ(run(L"(setq deep nil) (repeat 100000 (setq deep (list deep))) (equal deep deep)"), L"T");
  EXPECT_EQ(run(L"(setq big nil deep nil)"), L"nil");
}
