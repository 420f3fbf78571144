// Input nested a million deep: every reader either takes it without
// recursing or refuses it as a bad input, and the process lives on.
#include "tests/unit/database/database_fixture.h"

namespace {

constexpr int kMillion = 1000000;

class DeepNestingTest : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    ASSERT_EQ(eval(L"(progn (entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 1.0))) T)"), L"T");
  }
  void setText(const wchar_t* symbol, const std::wstring& text) {
    resbuf rb{};
    rb.restype = RTSTR;
    rb.resval.rstring = const_cast<wchar_t*>(text.c_str());
    ASSERT_TRUE(kelhost::Host::instance().lisp().putSymbol(symbol, &rb));
  }
  // The size of (ssget "X" F), F wrapping (0 . "CIRCLE") in depth pairs
  // of the grouping operators; -1 when ssget refuses.
  long ssgetNested(int depth, const wchar_t* open, const wchar_t* close) {
    resbuf* head = nullptr;
    resbuf** tail = &head;
    auto add = [&](int code, const wchar_t* text) {
      *tail = acutBuildList(RTSTR, text, RTNONE);
      (*tail)->restype = static_cast<short>(code);
      tail = &(*tail)->rbnext;
    };
    for (int i = 0; i < depth; ++i) add(-4, open);
    add(0, L"CIRCLE");
    for (int i = 0; i < depth; ++i) add(-4, close);
    ads_name ss;
    long size = -1;
    if (acedSSGet(L"X", nullptr, nullptr, head, ss) == RTNORM) {
      Adesk::Int32 length = 0;
      acedSSLength(ss, &length);
      acedSSFree(ss);
      size = length;
    }
    acutRelRb(head);
    return size;
  }
};

TEST_F(DeepNestingTest, SelectionFiltersNestUpToTheLimitAndAreRefusedBeyondIt) {
  EXPECT_EQ(ssgetNested(kMillion, L"<NOT", L"NOT>"), -1);
  EXPECT_EQ(ssgetNested(kMillion, L"<OR", L"OR>"), -1);
  EXPECT_EQ(ssgetNested(kMillion, L"<AND", L"AND>"), -1);
  EXPECT_EQ(ssgetNested(kMillion, L"<XOR", L"XOR>"), -1);
  // At the limit the filter still works: an even number of NOTs keeps
  // the circle, an odd one drops it (and an empty selection is refused).
  EXPECT_EQ(ssgetNested(256, L"<NOT", L"NOT>"), 1);
  EXPECT_EQ(ssgetNested(255, L"<NOT", L"NOT>"), -1);
  EXPECT_EQ(ssgetNested(256, L"<OR", L"OR>"), 1);
  EXPECT_EQ(ssgetNested(257, L"<OR", L"OR>"), -1);
  // And from AutoLISP, as the reproducer wrote it.
  EXPECT_EQ(eval(L"(progn (setq a nil b nil) (repeat 30000 (setq a (cons '(-4 . \"<NOT\") a) b (cons '(-4 . \"NOT>\") b))) "
                 L"(setq f (append a '((0 . \"CIRCLE\")) b) a nil b nil) (ssget \"X\" f))"),
            L"nil");
}

TEST_F(DeepNestingTest, TheAutoLispReaderTakesDeepListsWithoutRecursing) {
  const std::wstring text = std::wstring(kMillion, L'(') + L"7" + std::wstring(kMillion, L')');
  setText(L"deeptext", text);
  EXPECT_EQ(eval(L"(progn (setq x (read deeptext) n 0) (while (listp x) (setq x (car x) n (1+ n))) (list n x))"),
            L"(1000000 7)");
  // Unbalanced, it is the reader's ordinary refusal.
  setText(L"deeptext", text.substr(0, text.size() - 1));
  EXPECT_EQ(eval(L"(read deeptext)"), L"error: malformed list on input");
  // Evaluated, the nesting meets the evaluator's own depth limit.
  EXPECT_NE(eval(L"(eval (read (strcat (substr deeptext 1 200000) \"quote\")))").find(L"error"), std::wstring::npos);
  setText(L"deeptext", L"");
}

TEST_F(DeepNestingTest, EntityListsWithDeepGroupsAreRefusedAndMakeNothing) {
  EXPECT_EQ(eval(L"(progn (setq x 1) (repeat 1000000 (setq x (list x))) "
                 L"(setq r (vl-catch-all-apply 'entmake (list (list '(0 . \"LINE\") '(10 0.0 0.0 0.0) '(11 1.0 1.0 0.0) x)))) "
                 L"(setq x nil) (list (vl-catch-all-error-p r) (sslength (ssget \"X\"))))"),
            L"(T 1)");
  EXPECT_EQ(eval(L"(progn (setq x '(0 . \"LINE\")) (repeat 1000000 (setq x (list x))) "
                 L"(setq r (vl-catch-all-apply 'ssget (list \"X\" (list x))) x nil) (if (vl-catch-all-error-p r) 'refused r))"),
            L"REFUSED");
}

}  // namespace
