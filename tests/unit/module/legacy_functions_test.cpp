// The legacy short-name functions: their results, the message of each
// refused call, the status they answer the dispatcher and the default
// result a refused call leaves.
#include <gtest/gtest.h>

#include "app/app_state.h"
#include "db/stub.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"
#include "kelcad/lisp/legacy_handlers.h"
#include "lisp/external_calls.h"

namespace {

int gStatus = 0;

class LegacyFunctions : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    ASSERT_TRUE(LoadModule());
    kelcad = kelhost::app::FindModuleByName(L"KELCAD.arx");
    ASSERT_NE(kelcad, nullptr);
  }
  void TearDown() override {
    for (int code : watched) kelhost::lispbridge::RegisterDirectHandler(kelcad, code, nullptr);
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    EditorModuleTest::TearDown();
  }
  // Calls of the function of that code record the status it answers.
  template <int (*Handler)()>
  void Watch(int code) {
    watched.push_back(code);
    kelhost::lispbridge::RegisterDirectHandler(kelcad, code, [] { return gStatus = Handler(); });
  }
  // The platform's heading around an acdbFail message.
  static std::wstring Failed(const std::wstring& message) { return L"\nApplication ERROR: " + message + L"\n"; }

  void* kelcad = nullptr;
  std::vector<int> watched;
};

TEST_F(LegacyFunctions, PointFunctions) {
  Watch<KEL::Lisp::Get1Pt>(80);
  EXPECT_EQ(Eval(L"(get1pt '(0 0 5) '(10 0 7) '(1 0 2))"), L"(0.0 0.0 2.0)");
  EXPECT_EQ(gStatus, RTNORM);
  EXPECT_EQ(Eval(L"(get1pt '(0 0 5) '(10 0 7) '(1 0 2) \"far\")"), L"(10.0 0.0 2.0)");
  EXPECT_EQ(Eval(L"(get1pt '(0 0) '(2 0) '(1 0) \"Near\")"), L"(2.0 0.0 0.0)");  // a tie: the second
  EXPECT_EQ(Eval(L"(get1pt '(0 0) '(2 0) '(1 0) \"far\")"), L"(0.0 0.0 0.0)");
  EXPECT_EQ(Printed(L"(get1pt)"), Failed(L"\nError:get1pt没有给定参数."));
  EXPECT_EQ(gStatus, 3);
  EXPECT_EQ(Printed(L"(get1pt 1)"), Failed(L"\nError:get1pt给定第一个参数不是POINT."));
  EXPECT_EQ(Printed(L"(get1pt '(0 0))"), Failed(L"\nError:get1pt没有给定第二点."));
  EXPECT_EQ(Printed(L"(get1pt '(0 0) \"a\")"), Failed(L"\nError:get1pt给定第二个参数不是POINT."));
  EXPECT_EQ(Printed(L"(get1pt '(0 0) '(1 1))"), Failed(L"\nError:get1pt给定第三个参数不是POINT."));
  EXPECT_EQ(Eval(L"(get1pt '(0 0) '(1 1) 5)"), L"nil");

  EXPECT_EQ(Eval(L"(getmid '(0 0 0) '(10 4 2))"), L"(5.0 2.0 1.0)");
  EXPECT_EQ(Printed(L"(getmid '(0 0))"), Failed(L"\nError:getmid没有给定第二点."));
  EXPECT_EQ(Printed(L"(getmid '(0 0) 3)"), Failed(L"\nError:getmid给定第二点不是POINT."));

  Watch<KEL::Lisp::ZP>(85);
  EXPECT_EQ(Eval(L"(z_p 5.0 '(1 2 3))"), L"(1.0 2.0 5.0)");
  EXPECT_EQ(Printed(L"(z_p 5 '(1 2 3))"), Failed(L"\nError:z_p给定第一个参数不是real."));
  EXPECT_EQ(gStatus, 3);
  EXPECT_EQ(Printed(L"(z_p 5.0)"), Failed(L"\nError:z_p没有给定第二个参数."));
  EXPECT_EQ(Printed(L"(z_p 5.0 \"p\")"), Failed(L"\nError:z_p给定的第二个参数不是POINT."));

  EXPECT_EQ(Eval(L"(pt_d_px '(0 0) '(5 0) '(1 0) \"x\" '(3 0))"), L"((1.0 0.0 0.0) (3.0 0.0 0.0) (5.0 0.0 0.0))");
  EXPECT_EQ(Eval(L"(pt_d_px '(0 0) (list '(0 9) '(0 -2)))"), L"((0.0 -2.0 0.0) (0.0 9.0 0.0))");
  EXPECT_EQ(Eval(L"(pt_d_px '(0 0))"), L"nil");
  EXPECT_EQ(Printed(L"(pt_d_px 1 '(0 0))"), Failed(L"\nError:pt_d_px 输入参数1(point)."));
}

TEST_F(LegacyFunctions, LayerAndTypeTests) {
  MakeLayer(L"WALL", 0, 1);
  MakeLayer(L"wall2", 0, 2);
  EXPECT_EQ(Eval(L"(getlay)"), L"(\"0\" \"WALL\" \"wall2\")");
  EXPECT_EQ(Eval(L"(getlay \"w*\")"), L"(\"WALL\")");  // names as stored, pattern upper-cased
  EXPECT_EQ(Eval(L"(getlay \"X*\")"), L"nil");
  Watch<KEL::Lisp::GetLay>(82);
  EXPECT_EQ(Printed(L"(getlay 5)"), Failed(L"\ngetlay(string)"));
  EXPECT_EQ(gStatus, 1);

  Eval(L"(setq e (entmake '((0 . \"CIRCLE\") (8 . \"WALL\") (10 0.0 0.0 0.0) (40 . 1.0))) e (entlast))");
  EXPECT_EQ(Eval(L"(if_lay e \"wa*\")"), L"T");
  EXPECT_EQ(Eval(L"(if_lay e \"0\")"), L"nil");
  EXPECT_EQ(Eval(L"(if_lx e \"circle,arc\")"), L"T");
  EXPECT_EQ(Eval(L"(if_lx e \"LINE\")"), L"nil");
  EXPECT_EQ(Printed(L"(if_lay)"), Failed(L"\nError:if_lay没输入参数."));
  EXPECT_EQ(Printed(L"(if_lx \"e\" \"x\")"), Failed(L"\nError:if_lx参数1(ent name)."));
  EXPECT_EQ(Printed(L"(if_lx e 1)"), Failed(L"\nError:if_lx参数2(string)."));

  Eval(L"(regapp \"KELAPP\")");
  Eval(L"(entmod (append (entget e) '((-3 (\"KELAPP\" (1000 . \"v\"))))))");
  EXPECT_EQ(Eval(L"(appft e \"KELAPP\")"), L"T");
  EXPECT_EQ(Eval(L"(appft e \"OTHER\")"), L"nil");
  EXPECT_EQ(Printed(L"(appft e)"), Failed(L"\nError:appft参数2(string)."));
  Eval(L"(entdel e)");
  EXPECT_EQ(Printed(L"(appft e \"KELAPP\")"), Failed(L"\nError:appft当前图形中没有给定Entity."));
}

TEST_F(LegacyFunctions, LineQueriesAndTheirDefaults) {
  Eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 1.0) (11 3.0 4.0 13.0)))");
  Eval(L"(setq ln (entlast))");
  Watch<KEL::Lisp::LineCd>(71);
  EXPECT_EQ(Eval(L"(linecd ln 13)"), L"T");  // the length in space
  EXPECT_EQ(Eval(L"(linecd ln 13.01)"), L"nil");
  EXPECT_EQ(Printed(L"(linecd ln \"5\")"), Failed(L"\nError:linecd参数2(real,int)."));
  EXPECT_EQ(gStatus, 3);
  EXPECT_EQ(Eval(L"(linecd ln)"), L"T");  // the result set first stays

  Watch<KEL::Lisp::GetLbg>(67);
  EXPECT_EQ(Eval(L"(getlbg ln '(3 3 13))"), L"13.0");
  EXPECT_EQ(Eval(L"(getlbg ln '(1 0 1))"), L"1.0");
  EXPECT_EQ(Eval(L"(getlbg ln '(1.5 2 7))"), L"1.0");  // a tie: the start
  Eval(L"(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 1.0)))");
  EXPECT_EQ(Printed(L"(getlbg (entlast) '(0 0))"), L"");
  EXPECT_EQ(Eval(L"(getlbg (entlast) '(0 0))"), L"0.0");
  EXPECT_EQ(gStatus, 3);
  EXPECT_EQ(Printed(L"(getlbg ln)"), Failed(L"\nError:getlbg参数2(point)."));
  Eval(L"(entdel ln)");
  EXPECT_EQ(Printed(L"(getlbg ln '(0 0))"), Failed(L"\nError:mline当前图形中没有给定Entity."));
  EXPECT_EQ(Printed(L"(linecd ln 1)"), Failed(L"\nError:linecd当前图形中没有给定Entity."));
}

TEST_F(LegacyFunctions, ParallelLines) {
  Eval(L"(progn (entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0))) (setq a (entlast)))");
  Eval(L"(progn (entmake '((0 . \"LINE\") (10 0.0 1.0 0.0) (11 5.0 1.001 0.0))) (setq b (entlast)))");
  // Drawn the other way, directions a hair either side of a half turn.
  Eval(L"(progn (entmake '((0 . \"LINE\") (10 5.0 1.0 0.0) (11 0.0 1.001 0.0))) (setq c (entlast)))");
  const std::wstring pointer = L"\n 请使用新版本的 KEL_IsLinesPX 函数\n";
  EXPECT_EQ(Printed(L"(setq r (pxft a b 0.001))"), pointer);
  EXPECT_EQ(Eval(L"r"), L"T");
  EXPECT_EQ(Eval(L"(pxft a b 0.0001)"), L"nil");
  EXPECT_EQ(Eval(L"(pxft a c 0.001)"), L"nil");  // no wrap-around
  EXPECT_EQ(Eval(L"(pxft a c 3.2)"), L"T");
  EXPECT_EQ(Printed(L"(pxft a b 1)"), pointer + Failed(L"\nError:pxft参数3(real)."));
  Eval(L"(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 1.0)))");
  EXPECT_EQ(Printed(L"(pxft a (entlast) 0.1)"), pointer + Failed(L"\nError:pxft Entities MUST BE Line.!"));
  EXPECT_EQ(Eval(L"(kel_islinespx a b 0.001)"), L"T");
  EXPECT_EQ(Eval(L"(kel_islinespx a b)"), L"nil");
  EXPECT_EQ(Eval(L"(kel_islinespx a b 1)"), L"T");
  EXPECT_EQ(Printed(L"(kel_islinespx a)"),
            L"\n KEL_IsLinesPX\n 功能：判断两条直线是否平行\n 用法：KEL_IsLinesPX 直线1 直线2 [角度容差]"
            L"\n 返回：平行 T ,不平行 nil");
}

TEST_F(LegacyFunctions, ElevationPickBoxAndViews) {
  Watch<KEL::Lisp::Set3d>(66);
  EXPECT_TRUE(Void(L"(set3d 100 20)"));
  EXPECT_EQ(gStatus, RTNORM);
  EXPECT_EQ(Var(L"ELEVATION"), L"90.0");
  EXPECT_EQ(Var(L"THICKNESS"), L"20.0");
  EXPECT_EQ(Printed(L"(set3d 100)"), Failed(L"\nError:set3d给定的第二个参数error."));
  EXPECT_EQ(Printed(L"(set3d)"), Failed(L"\nError:set3d时没输入参数."));
  EXPECT_EQ(gStatus, 3);

  // The view's height over 200 pixels, times PICKBOX (3 for 0).
  const double height = std::stod(Var(L"VIEWSIZE"));
  EXPECT_NEAR(std::stod(Eval(L"(get_dd)")), height / 200 * std::stoi(Var(L"PICKBOX")), 1e-9);
  Eval(L"(setvar \"PICKBOX\" 0)");
  EXPECT_NEAR(std::stod(Eval(L"(get_dd)")), height / 200 * 3, 1e-9);

  Watch<KEL::Lisp::Zm2Pt>(65);
  EXPECT_EQ(Eval(L"(zm2pt '(1 1) '(2 2))"), L"nil");  // both in view already
  const std::wstring centre = Var(L"VIEWCTR");
  EXPECT_EQ(Eval(L"(zm2pt '(1000 0) '(1100 40))"), L"T");
  EXPECT_EQ(Var(L"VIEWCTR"), L"(1050.0 20.0 0.0)");
  EXPECT_NEAR(std::stod(Var(L"VIEWSIZE")), 120.0 / std::stod(Eval(L"(/ (car (getvar \"SCREENSIZE\")) "
                                                                    L"(cadr (getvar \"SCREENSIZE\")))")),
              1e-3);
  EXPECT_EQ(Printed(L"(zm2pt '(0 0) 1)"), Failed(L"\nError:zm2pt给定参数2不是POINT."));

  EXPECT_EQ(Eval(L"(pan2v '(1050 20))"), L"nil");
  EXPECT_EQ(Eval(L"(pan2v '(-500 -300))"), L"T");
  EXPECT_EQ(Var(L"VIEWCTR"), L"(-500.0 -300.0 0.0)");
  EXPECT_EQ(Printed(L"(pan2v)"), Failed(L"\nError:pan2v没有给定参数."));
  EXPECT_EQ(Printed(L"(pan2v 7)"), Failed(L"\nError:panptv给定参数不是POINT."));
  EXPECT_NE(Var(L"VIEWCTR"), centre);
}

TEST_F(LegacyFunctions, MakersDeleteAndBeep) {
  Watch<KEL::Lisp::MkLinX>(78);
  EXPECT_EQ(Printed(L"(mklinx \"H\" '(0 0) '(5 0))"), Failed(L"\nError:mklinx 没装入HIDDEN线型."));
  EXPECT_EQ(gStatus, 3);
  EXPECT_EQ(Printed(L"(mklinx '(0 0))"), Failed(L"\nError:mklinx 没输入lay参数."));
  EXPECT_EQ(Printed(L"(mklinx \"H\")"), Failed(L"\nError:mklinx 没输入ptb参数."));
  Eval(L"(entmake '((0 . \"LTYPE\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLinetypeTableRecord\") "
       L"(2 . \"HIDDEN\") (70 . 0) (3 . \"Hidden\") (72 . 65) (73 . 2) (40 . 0.375) (49 . 0.25) (74 . 0) "
       L"(49 . -0.125) (74 . 0)))");
  EXPECT_EQ(Eval(L"(mklinx \"H\" '(0 0) '(5 0) '(5 5))"), L"nil");
  EXPECT_EQ(gStatus, RTNORM);
  EXPECT_EQ(Eval(L"(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(0 6 8 10))"),
            L"(\"LINE\" \"HIDDEN\" \"H\" (5.0 0.0 0.0))");

  EXPECT_EQ(Eval(L"(mk3dm \"M\" '(0 0 0) '(1 0 1) '(1 1 2))"), L"T");
  EXPECT_EQ(Eval(L"(cdr (assoc 70 (entget (entlast))))"), L"8");
  EXPECT_EQ(Eval(L"(cdr (assoc 10 (entget (entnext (entnext (entnext (entlast)))))))"), L"(1.0 1.0 2.0)");
  EXPECT_EQ(Printed(L"(mk3dm \"M\" '(0 0 0))"), L"");

  Eval(L"(entmake '((0 . \"LINE\") (8 . \"KEEP\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"CIRCLE\") (8 . \"H\") (10 0.0 0.0 0.0) (40 . 1.0)))");
  Watch<KEL::Lisp::DelLn>(70);
  EXPECT_TRUE(Void(L"(del_ln \"h\")"));
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\" '((0 . \"LINE\"))))"), L"1");
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\" '((8 . \"H\"))))"), L"1");
  EXPECT_EQ(Printed(L"(del_ln)"), Failed(L"\nError:del_ln没输入参数."));
  EXPECT_EQ(gStatus, 3);

  const int beeps = kelhost::BeepCount();
  EXPECT_EQ(Eval(L"(beep)"), L"nil");
  EXPECT_EQ(kelhost::BeepCount(), beeps + 1);
}

TEST_F(LegacyFunctions, DialogNeedsItsFileHandle) {
  Watch<KEL::Lisp::Sm>(79);
  EXPECT_EQ(Printed(L"(sm)"), Failed(L"\nError:Unload dialog SM."));
  EXPECT_EQ(gStatus, 3);
  Eval(L"(setq dcl_id 99)");
  EXPECT_EQ(Printed(L"(sm)"), Failed(L"\nError:Cannot display dialog SM."));
}

}  // namespace
