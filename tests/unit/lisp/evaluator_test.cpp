#include "lisp_fixture.h"

using EvaluatorTest = LispTest;

TEST_F(EvaluatorTest, DefunLocalsAreDynamicAndRestored) {
  EXPECT_EQ(run(L"(setq x 10 y 20)"
                L"(defun show () (list x y))"
                L"(defun f (x / y) (setq y 5) (show))"
                L"(f 1)"),
            L"(1 5)");
  // Both the argument and the local are back after the call.
  EXPECT_EQ(eval(L"(list x y)"), L"(10 20)");
  // Locals start as nil even when the global has a value.
  EXPECT_EQ(run(L"(defun g (/ y) y) (g)"), L"nil");
  EXPECT_EQ(eval(L"(defun h (a) a)"), L"H");
}

TEST_F(EvaluatorTest, LocalsAreRestoredWhenAnErrorUnwinds) {
  run(L"(setq v 'outer) (defun bad (/ v) (setq v 'inner) (car 1))");
  EXPECT_EQ(eval(L"(bad)"), L"ERROR: bad argument type: consp 1");
  EXPECT_EQ(eval(L"v"), L"OUTER");
}

TEST_F(EvaluatorTest, DuplicateParameterKeepsTheFirst) {
  EXPECT_EQ(run(L"(defun d (a a) a) (d 1 2)"), L"1");
}

TEST_F(EvaluatorTest, ArgumentCountsAreChecked) {
  run(L"(defun two (a b) (+ a b))");
  EXPECT_EQ(eval(L"(two 1)"), L"ERROR: too few arguments");
  EXPECT_EQ(eval(L"(two 1 2 3)"), L"ERROR: too many arguments");
  EXPECT_EQ(eval(L"(car)"), L"ERROR: too few arguments");
  EXPECT_EQ(eval(L"(car '(1) '(2))"), L"ERROR: too many arguments");
  EXPECT_EQ(eval(L"(if)"), L"ERROR: too few arguments");
  EXPECT_EQ(eval(L"(if 1 2 3 4)"), L"ERROR: too many arguments");
}

TEST_F(EvaluatorTest, CallingWhatIsNotAFunction) {
  EXPECT_EQ(eval(L"(foo 1)"), L"ERROR: no function definition: FOO");
  EXPECT_EQ(run(L"(setq n 5) (n)"), L"ERROR: bad function: 5");
  EXPECT_EQ(eval(L"(1 2)"), L"ERROR: bad function: 1");
  EXPECT_EQ(eval(L"(\"s\")"), L"ERROR: bad function: \"s\"");
  EXPECT_EQ(out, L"\n; error: no function definition: FOO\n; error: bad function: 5\n; error: bad function: 1"
                 L"\n; error: bad function: \"s\"");
}

TEST_F(EvaluatorTest, LambdaAndFunctionValues) {
  EXPECT_EQ(eval(L"((lambda (x) (* x x)) 4)"), L"16");
  EXPECT_EQ(eval(L"(mapcar '(lambda (x) (1+ x)) '(1 2))"), L"(2 3)");
  EXPECT_EQ(eval(L"(mapcar (function (lambda (x) (1- x))) '(1 2))"), L"(0 1)");
  EXPECT_EQ(eval(L"(type (lambda (x) x))"), L"USUBR");
  EXPECT_EQ(eval(L"(function car)"), L"CAR");
  EXPECT_EQ(run(L"(setq f car) (f '(7 8))"), L"7");
  EXPECT_EQ(run(L"(defun-q dq (x) (* 2 x)) (dq 4)"), L"8");
  EXPECT_EQ(eval(L"dq"), L"((X) (* 2 X))");
}

TEST_F(EvaluatorTest, SetqAndQuote) {
  EXPECT_EQ(eval(L"(setq a 1 b (+ a 1))"), L"2");
  EXPECT_EQ(eval(L"(list a b)"), L"(1 2)");
  EXPECT_EQ(eval(L"(setq a)"), L"ERROR: too few arguments");
  EXPECT_EQ(eval(L"(setq 1 2)"), L"ERROR: bad argument type: symbolp 1");
  EXPECT_EQ(eval(L"(quote (a b))"), L"(A B)");
  EXPECT_EQ(eval(L"unbound-symbol"), L"nil");
  EXPECT_EQ(eval(L"t"), L"T");
}

TEST_F(EvaluatorTest, ConditionalsAndLogic) {
  EXPECT_EQ(eval(L"(if nil 1)"), L"nil");
  EXPECT_EQ(eval(L"(if 0 'yes 'no)"), L"YES");
  EXPECT_EQ(eval(L"(cond ((= 1 2) 'a) ((+ 1 1)) (t 'c))"), L"2");
  EXPECT_EQ(eval(L"(cond ((= 1 2) 'a))"), L"nil");
  EXPECT_EQ(eval(L"(cond ((= 1 1) 'x 'y))"), L"Y");
  // and/or give T or nil, not the deciding value.
  EXPECT_EQ(eval(L"(and 1 2)"), L"T");
  EXPECT_EQ(eval(L"(and 1 nil 2)"), L"nil");
  EXPECT_EQ(eval(L"(and)"), L"T");
  EXPECT_EQ(eval(L"(or nil 5)"), L"T");
  EXPECT_EQ(eval(L"(or)"), L"nil");
  // Evaluation stops at the deciding argument.
  EXPECT_EQ(run(L"(setq z 0) (or t (setq z 1)) (and nil (setq z 2)) z"), L"0");
}

TEST_F(EvaluatorTest, Loops) {
  EXPECT_EQ(run(L"(setq i 0 s 0) (while (< i 5) (setq s (+ s i) i (1+ i)))"), L"5");
  EXPECT_EQ(eval(L"s"), L"10");
  EXPECT_EQ(eval(L"(while nil 1)"), L"nil");
  EXPECT_EQ(run(L"(setq n 0) (repeat 4 (setq n (+ n 2)))"), L"8");
  EXPECT_EQ(eval(L"(repeat 0 1)"), L"nil");
  EXPECT_EQ(eval(L"(repeat 1.5 1)"), L"ERROR: bad argument type: fixnump: 1.5");
  EXPECT_EQ(run(L"(setq e 'keep acc nil) (foreach e '(1 2 3) (setq acc (cons e acc)))"), L"(3 2 1)");
  EXPECT_EQ(eval(L"e"), L"KEEP");
  EXPECT_EQ(eval(L"(foreach e 5 e)"), L"ERROR: bad argument type: listp 5");
  EXPECT_EQ(eval(L"(progn 1 2 3)"), L"3");
  EXPECT_EQ(eval(L"(progn)"), L"nil");
}

TEST_F(EvaluatorTest, ErrorHandlerReceivesTheMessageAndSeesLocals) {
  run(L"(defun *error* (msg) (setq caught (list msg where)))"
      L"(defun work (/ where) (setq where 'inside) (/ 1 0))");
  kelhost::lisp::Outcome o = lisp.evalOne(L"(work)");
  EXPECT_FALSE(o.ok);
  EXPECT_EQ(o.error, L"divide by zero");
  EXPECT_EQ(eval(L"caught"), L"(\"divide by zero\" INSIDE)");
  EXPECT_EQ(out, L"");  // the handler replaced the standard report
}

TEST_F(EvaluatorTest, ErrorInsideTheHandlerIsPrinted) {
  run(L"(defun *error* (msg) (princ \"[h]\") (car msg))");
  EXPECT_EQ(eval(L"(car 1)"), L"ERROR: bad argument type: consp 1");
  EXPECT_EQ(out, L"[h]\n; error: bad argument type: consp \"bad argument type: consp 1\"");
  out.clear();
  run(L"(setq *error* nil)");
  eval(L"(exit)");
  EXPECT_EQ(out, L"\n; error: quit / exit abort");
}

TEST_F(EvaluatorTest, RunawayRecursionIsAnErrorNotACrash) {
  run(L"(defun down (n) (down (1+ n)))");
  EXPECT_EQ(eval(L"(down 0)"), L"ERROR: Hard error occurred *** internal stack limit reached (simulated)");
  // The interpreter is usable afterwards, and *error* gets to run.
  run(L"(defun *error* (m) (setq seen m)) (defun loop2 (/ x) (loop2))");
  eval(L"(loop2)");
  EXPECT_EQ(eval(L"seen"), L"\"Hard error occurred *** internal stack limit reached (simulated)\"");
  EXPECT_EQ(eval(L"(+ 1 2)"), L"3");
}

TEST_F(EvaluatorTest, StepLimitStopsEndlessLoops) {
  kelhost::lisp::Options options;
  options.maxSteps = 10000;
  lisp.setOptions(options);
  EXPECT_EQ(eval(L"(while t)"), L"ERROR: evaluation limit reached");
  EXPECT_EQ(eval(L"(repeat 100 (setq s (strcat \"abcdefgh\" (if s s \"\") (if s s \"\"))))"),
            L"ERROR: evaluation limit reached");
  EXPECT_EQ(eval(L"(+ 1 1)"), L"2");  // the budget is per call
  // Shared structure: walking it in full is exponential, and charged.
  run(L"(repeat 40 (setq a (list a a) b (list b b)))");
  EXPECT_EQ(eval(L"(equal a b)"), L"ERROR: evaluation limit reached");
  EXPECT_EQ(eval(L"(vl-prin1-to-string a)"), L"ERROR: evaluation limit reached");
  EXPECT_EQ(eval(L"(+ a)"), L"ERROR: evaluation limit reached");
}

TEST_F(EvaluatorTest, QuietValuesAreNotPrintable) {
  kelhost::lisp::Outcome o = lisp.evalOne(L"(princ)");
  EXPECT_TRUE(o.ok);
  EXPECT_FALSE(o.printable);
  EXPECT_EQ(o.valueText, L"");
  EXPECT_FALSE(lisp.evalOne(L"(progn (princ \"x\") (prin1))").printable);
  EXPECT_TRUE(lisp.evalOne(L"(princ \"x\")").printable);
  EXPECT_TRUE(lisp.evalOne(L"nil").printable);
  EXPECT_EQ(eval(L"(type (princ))"), L"SYM");
  EXPECT_FALSE(lisp.evalOne(L"; comment only").printable);
}

TEST_F(EvaluatorTest, CatchAllApplyTurnsErrorsIntoValues) {
  EXPECT_EQ(run(L"(setq r (vl-catch-all-apply '/ '(1 0)))"
                L"(list (vl-catch-all-error-p r) (vl-catch-all-error-message r) (type r))"),
            L"(T \"divide by zero\" VL-CATCH-ALL-APPLY-ERROR)");
  EXPECT_EQ(eval(L"r"), L"#<%catch-all-apply-error%>");
  EXPECT_EQ(eval(L"(vl-catch-all-apply '+ '(1 2))"), L"3");
  EXPECT_EQ(eval(L"(vl-catch-all-error-p 3)"), L"nil");
  EXPECT_EQ(out, L"");  // caught errors are not reported
  // *error* is not called for a caught error.
  run(L"(defun *error* (m) (setq called t))");
  eval(L"(vl-catch-all-apply 'car '(1))");
  EXPECT_EQ(eval(L"called"), L"nil");
}

TEST_F(EvaluatorTest, EvalSetAndApply) {
  EXPECT_EQ(eval(L"(eval '(+ 1 2))"), L"3");
  EXPECT_EQ(run(L"(set 'q 9) q"), L"9");
  EXPECT_EQ(eval(L"(apply '+ '(1 2 3))"), L"6");
  EXPECT_EQ(eval(L"(apply 'and '(1 nil))"), L"nil");
  EXPECT_EQ(eval(L"(apply (lambda (a b) (list b a)) '(1 2))"), L"(2 1)");
  EXPECT_EQ(eval(L"(apply 'nosuch '(1))"), L"ERROR: no function definition: NOSUCH");
}
