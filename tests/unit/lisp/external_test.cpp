#include <cstdio>
#include <string>
#include <vector>

#include "arx/acutads.h"
#include "lisp_fixture.h"

namespace {

// The chain as text: "RTLB RTSHORT:1 RTDOTE RTSTR:a RTLE".
std::wstring Describe(const resbuf* rb) {
  std::wstring out;
  for (; rb; rb = rb->rbnext) {
    if (!out.empty()) out += L' ';
    wchar_t buf[160];
    switch (rb->restype) {
      case RTSHORT: std::swprintf(buf, 160, L"RTSHORT:%d", rb->resval.rint); break;
      case RTLONG: std::swprintf(buf, 160, L"RTLONG:%d", static_cast<int>(rb->resval.rlong)); break;
      case RTREAL: std::swprintf(buf, 160, L"RTREAL:%g", rb->resval.rreal); break;
      case RTSTR: std::swprintf(buf, 160, L"RTSTR:%ls", rb->resval.rstring); break;
      case RTPOINT: std::swprintf(buf, 160, L"RTPOINT:%g,%g", rb->resval.rpoint[0], rb->resval.rpoint[1]); break;
      case RT3DPOINT:
        std::swprintf(buf, 160, L"RT3DPOINT:%g,%g,%g", rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
        break;
      case RTENAME: std::swprintf(buf, 160, L"RTENAME:%llx", static_cast<unsigned long long>(rb->resval.rlname[0])); break;
      case RTPICKS: std::swprintf(buf, 160, L"RTPICKS:%llx", static_cast<unsigned long long>(rb->resval.rlname[0])); break;
      case RTLB: std::swprintf(buf, 160, L"RTLB"); break;
      case RTLE: std::swprintf(buf, 160, L"RTLE"); break;
      case RTDOTE: std::swprintf(buf, 160, L"RTDOTE"); break;
      case RTNIL: std::swprintf(buf, 160, L"RTNIL"); break;
      case RTT: std::swprintf(buf, 160, L"RTT"); break;
      default: std::swprintf(buf, 160, L"%d", rb->restype); break;
    }
    out += buf;
  }
  return out;
}

// Records each call and answers with a prepared chain.
class FakeApplication : public kelhost::lisp::ExternalHandler {
 public:
  kelhost::lisp::ExternalResult invoke(void* owner, int code, const std::wstring& name, resbuf* args) override {
    calls.push_back(name + L"#" + std::to_wstring(code) + L": " + Describe(args));
    lastOwner = owner;
    kelhost::lisp::ExternalResult r;
    r.isVoid = answerVoid;
    r.value = answer;
    answer = nullptr;
    return r;
  }
  std::vector<std::wstring> calls;
  void* lastOwner = nullptr;
  bool answerVoid = false;
  resbuf* answer = nullptr;
};

resbuf* Node(int type) { return acutNewRb(type); }
resbuf* Str(int type, const wchar_t* s) {
  resbuf* rb = acutNewRb(type);
  acutNewString(s, rb->resval.rstring);
  return rb;
}
resbuf* Short(int type, short v) {
  resbuf* rb = acutNewRb(type);
  rb->resval.rint = v;
  return rb;
}
resbuf* Chain(std::initializer_list<resbuf*> nodes) {
  resbuf* head = nullptr;
  resbuf** tail = &head;
  for (resbuf* rb : nodes) {
    *tail = rb;
    tail = &rb->rbnext;
  }
  return head;
}

class ExternalTest : public LispTest {
 protected:
  ExternalTest() {
    lisp.setExternalHandler(&app);
    lisp.defineExternal(L"kel_fn", &owner, 7);
  }
  FakeApplication app;
  int owner = 0;
};

}  // namespace

TEST_F(ExternalTest, ArgumentsBecomeTheDocumentedChain) {
  eval(L"(kel_fn 1 70000 2.5 \"s\" t nil 'sym)");
  eval(L"(kel_fn '(1 2) '(1 2.5 3) '(1 2 3 4) '(a . 2) '((1 2) (3 \"x\")))");
  eval(L"(kel_fn)");
  ASSERT_EQ(app.calls.size(), 3u);
  EXPECT_EQ(app.calls[0], L"KEL_FN#7: RTSHORT:1 RTLONG:70000 RTREAL:2.5 RTSTR:s RTT RTNIL RTSTR:SYM");
  EXPECT_EQ(app.calls[1],
            L"KEL_FN#7: RTPOINT:1,2 RT3DPOINT:1,2.5,3 RTLB RTSHORT:1 RTSHORT:2 RTSHORT:3 RTSHORT:4 RTLE "
            L"RTLB RTSTR:A RTDOTE RTSHORT:2 RTLE RTLB RTPOINT:1,2 RTLB RTSHORT:3 RTSTR:x RTLE RTLE");
  EXPECT_EQ(app.calls[2], L"KEL_FN#7: ");
  EXPECT_EQ(app.lastOwner, &owner);
  EXPECT_EQ(eval(L"(kel_fn 32767 -32768 32768)"), L"nil");
  EXPECT_EQ(app.calls[3], L"KEL_FN#7: RTSHORT:32767 RTSHORT:-32768 RTLONG:32768");
}

TEST_F(ExternalTest, FunctionsHaveNoChainForm) {
  EXPECT_EQ(eval(L"(kel_fn car)").rfind(L"ERROR: bad argument type: #<SUBR @", 0), 0u);
  EXPECT_TRUE(app.calls.empty());
}

TEST_F(ExternalTest, ResultsComeBackAsValues) {
  app.answer = Chain({Short(RTSHORT, 5)});
  EXPECT_EQ(eval(L"(kel_fn)"), L"5");
  app.answer = Chain({Node(RTLB), Str(RTSTR, L"a"), Node(RTDOTE), Short(RTSHORT, 2), Node(RTLE)});
  EXPECT_EQ(eval(L"(kel_fn)"), L"(\"a\" . 2)");
  resbuf* pt = Node(RT3DPOINT);
  pt->resval.rpoint[0] = 1;
  pt->resval.rpoint[1] = 2;
  pt->resval.rpoint[2] = 3;
  resbuf* p2 = Node(RTPOINT);
  p2->resval.rpoint[0] = 4;
  p2->resval.rpoint[1] = 5;
  app.answer = Chain({pt, p2, Node(RTT), Node(RTNIL)});
  EXPECT_EQ(eval(L"(kel_fn)"), L"((1.0 2.0 3.0) (4.0 5.0) T nil)");
  resbuf* dxfPoint = Node(10);
  dxfPoint->resval.rpoint[0] = 1.5;
  app.answer = Chain({Node(RTLB), Str(0, L"LINE"), Short(62, 1), dxfPoint, Node(RTLB), Short(RTSHORT, 1),
                      Node(RTLB), Node(RTLE), Node(RTLE), Node(RTLE)});
  EXPECT_EQ(eval(L"(kel_fn)"), L"((0 . \"LINE\") (62 . 1) (10 1.5 0.0 0.0) (1 nil))");
  resbuf* name = Node(RTENAME);
  name->resval.rlname[0] = 0x7ff1234;
  app.answer = Chain({name});
  EXPECT_EQ(eval(L"(kel_fn)"), L"<Entity name: 7ff1234>");
  EXPECT_EQ(eval(L"(type (kel_fn))"), L"nil");  // no answer prepared: nil
  app.answer = Chain({Node(RTLB), Short(RTSHORT, 1)});
  EXPECT_EQ(eval(L"(kel_fn)"), L"ERROR: bad list in result chain");
}

TEST_F(ExternalTest, VoidResultIsNilButNotEchoed) {
  app.answerVoid = true;
  kelhost::lisp::Outcome o = lisp.evalOne(L"(kel_fn)");
  EXPECT_TRUE(o.ok);
  EXPECT_FALSE(o.printable);
  EXPECT_EQ(eval(L"(list (kel_fn))"), L"(nil)");
  EXPECT_TRUE(lisp.evalOne(L"(list (kel_fn))").printable);
  EXPECT_FALSE(lisp.evalOne(L"(progn 1 (kel_fn))").printable);
}

TEST_F(ExternalTest, BindingsAndTheirLifetime) {
  EXPECT_EQ(eval(L"(type kel_fn)"), L"EXRXSUBR");
  EXPECT_NE(eval(L"kel_fn").find(L"#<EXRXSUBR @"), std::wstring::npos);
  EXPECT_NE(eval(L"kel_fn").find(L" KEL_FN>"), std::wstring::npos);
  EXPECT_FALSE(lisp.defineExternal(L"bad name", &owner, 1));
  EXPECT_FALSE(lisp.defineExternal(L"12", &owner, 1));
  EXPECT_FALSE(lisp.undefineExternal(L"kel_fn", 8));  // not its code
  EXPECT_TRUE(lisp.undefineExternal(L"KEL_FN", 7));
  EXPECT_EQ(eval(L"(kel_fn)"), L"ERROR: no function definition: KEL_FN");
  // A value kept elsewhere stops working when its application goes.
  lisp.defineExternal(L"c:kelcmd", &owner, 9);
  run(L"(setq kept c:kelcmd)");
  lisp.undefineAllOf(&owner);
  EXPECT_EQ(eval(L"c:kelcmd"), L"nil");
  EXPECT_EQ(eval(L"(kept)"), L"ERROR: no function definition: C:KELCMD");
  lisp.defineExternal(L"kel_fn", &owner, 7);
  lisp.setExternalHandler(nullptr);
  EXPECT_EQ(eval(L"(kel_fn)"), L"ERROR: no function definition: KEL_FN");
}

TEST_F(ExternalTest, SymbolsAsChains) {
  run(L"(setq pt '(1 2 3) pair '(8 . \"0\") s \"x\" n nil big 100000)");
  auto get = [&](const wchar_t* name) {
    resbuf* rb = lisp.getSymbol(name);
    std::wstring text = rb ? Describe(rb) : L"<null>";
    acutRelRb(rb);
    return text;
  };
  EXPECT_EQ(get(L"pt"), L"RT3DPOINT:1,2,3");
  EXPECT_EQ(get(L"PAIR"), L"RTLB RTSHORT:8 RTDOTE RTSTR:0 RTLE");
  EXPECT_EQ(get(L"s"), L"RTSTR:x");
  EXPECT_EQ(get(L"n"), L"RTNIL");
  EXPECT_EQ(get(L"never-set"), L"RTNIL");
  EXPECT_EQ(get(L"big"), L"RTLONG:100000");
  EXPECT_EQ(get(L"not a name"), L"<null>");
  EXPECT_EQ(get(L"car"), L"<null>");  // a function has no chain form

  resbuf* list = Chain({Node(RTLB), Short(RTSHORT, 1), Str(RTSTR, L"two"), Node(RTLE)});
  EXPECT_TRUE(lisp.putSymbol(L"fromc", list));
  acutRelRb(list);
  EXPECT_EQ(eval(L"fromc"), L"(1 \"two\")");
  resbuf* two = Chain({Short(RTSHORT, 1), Short(RTSHORT, 2)});
  EXPECT_TRUE(lisp.putSymbol(L"fromc", two));
  acutRelRb(two);
  EXPECT_EQ(eval(L"fromc"), L"(1 2)");
  EXPECT_TRUE(lisp.putSymbol(L"fromc", nullptr));
  EXPECT_EQ(eval(L"fromc"), L"nil");
  resbuf* bad = Chain({Node(RTLE)});
  EXPECT_FALSE(lisp.putSymbol(L"fromc", bad));
  acutRelRb(bad);
  EXPECT_FALSE(lisp.putSymbol(L"(", nullptr));
}

TEST_F(ExternalTest, InvokeCallsAFunctionByName) {
  run(L"(defun add3 (a b c) (list (+ a b c) (type b)))");
  resbuf* args = Chain({Str(RTSTR, L"add3"), Short(RTSHORT, 1), Short(RTSHORT, 2), Short(RTSHORT, 3)});
  resbuf* result = nullptr;
  EXPECT_EQ(lisp.invoke(args, &result), RTNORM);
  EXPECT_EQ(Describe(result), L"RTLB RTSHORT:6 RTSTR:INT RTLE");
  acutRelRb(result);
  acutRelRb(args);
  args = Chain({Str(RTSTR, L"add3"), Short(RTSHORT, 1)});
  EXPECT_EQ(lisp.invoke(args, &result), RTERROR);
  EXPECT_EQ(result, nullptr);
  acutRelRb(args);
  EXPECT_EQ(out, L"\n; error: too few arguments");
  args = Chain({Short(RTSHORT, 1)});
  EXPECT_EQ(lisp.invoke(args, &result), RTERROR);
  acutRelRb(args);
}
