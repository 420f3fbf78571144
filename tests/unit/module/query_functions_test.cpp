// The AutoLISP query, view and settings functions: their answers, their
// usage texts on wrong calls and the quirks the family's programs rely on.
#include <gtest/gtest.h>

#include "db/stub.h"
#include "db/working.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"
#include "kelhost/ui.h"

namespace {

class QueryFunctions : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    ASSERT_TRUE(LoadModule());
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    EditorModuleTest::TearDown();
  }
  bool LastHighlighted() {
    ads_name last;
    acdbEntLast(last);
    AcDbObjectId id;
    acdbGetObjectId(id, last);
    return kelhost::IsHighlighted(id);
  }
};

TEST_F(QueryFunctions, TextHeightAndDimensionPrecision) {
  EXPECT_EQ(Eval(L"(kel_settexthigh 5)"), L"T");
  EXPECT_EQ(Eval(L"(kel_gettexthigh)"), L"5.0");
  EXPECT_EQ(Printed(L"(kel_settexthigh \"5\")"),
            L"\n KEL_SetTextHigh\n 功能：设当字高\n 用法： KEL_SetTextHigh   整数或者实数\n 返回： 成功： T  ,失败： nil");

  // A height the drawing will not take is still the module's own from then
  // on: it answers with it while USERR5 cannot be read.
  EXPECT_EQ(Eval(L"(kel_settexthigh 1e-11)"), L"nil");
  EXPECT_EQ(Var(L"USERR5"), L"5.0");
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  kelhost::db::SetZeroDocumentState(true);
  EXPECT_EQ(Eval(L"(kel_gettexthigh)"), L"1.0e-011");
  kelhost::db::SetZeroDocumentState(false);
  acdbHostApplicationServices()->setWorkingDatabase(drawing.get());

  EXPECT_EQ(Eval(L"(setvar \"USERI4\" 9)"), L"9");
  EXPECT_EQ(Eval(L"(kel_getbzxsw)"), L"3");
  EXPECT_EQ(Eval(L"(kel_setbzxsw 2)"), L"T");
  EXPECT_EQ(Printed(L"(kel_setbzxsw 2.0)"), L"\n KEL_SetBZXSW\n 功能：设标注小数位\n 用法：KEL_SetBZXSW 整数");
  EXPECT_EQ(Eval(L"(kel_setbzxsw 70000)"), L"nil");  // a long integer is not taken

}

TEST_F(QueryFunctions, ViewCornersPointsInViewAndPointsOnThePlane) {
  Eval(L"(command \"_.ZOOM\" \"_C\" '(0 0) 200)");
  EXPECT_EQ(Eval(L"(mapcar 'cadr (kel_getscreenlbrt))"), L"(-100.0 100.0)");
  EXPECT_EQ(Eval(L"(kel_isptinview '(0 100))"), L"T");
  EXPECT_EQ(Eval(L"(kel_isptinview '(0 100.5 0))"), L"nil");
  // A missing or wrong argument says so and still answers T.
  EXPECT_EQ(Printed(L"(kel_isptinview)"), L"\nError:panptv没有给定参数.");
  EXPECT_EQ(Eval(L"(kel_isptinview)"), L"T");
  EXPECT_EQ(Printed(L"(kel_isptinview 5)"), L"\nError:panptv给定参数不是POINT.");

  EXPECT_EQ(Eval(L"(kel_getpmpt '(3 4 5))"), L"(3.0 4.0 0.0)");
  EXPECT_EQ(Eval(L"(kel_getpmpt '(3 4))"), L"(3.0 4.0 0.0)");
  const std::wstring usage = L"\n KEL_GetPMPt 参数错\n 功能：把一个点在Z置为0\n 用法：KEL_GetPMPt 点";
  EXPECT_EQ(Printed(L"(kel_getpmpt)"), usage);
  EXPECT_EQ(Printed(L"(kel_getpmpt '(1 2 3 4))"), usage);
  EXPECT_TRUE(Void(L"(kel_getpmpt 7)"));
}

TEST_F(QueryFunctions, RedrawingASetClampsTheModeAtFour) {
  Eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))");
  Eval(L"(setq ss (ssadd (entlast)))");
  EXPECT_TRUE(Void(L"(kel_ssredraw ss 3)"));
  EXPECT_TRUE(LastHighlighted());
  EXPECT_TRUE(Void(L"(kel_ssredraw ss)"));  // drawn again as it is
  EXPECT_TRUE(LastHighlighted());
  EXPECT_TRUE(Void(L"(kel_ssredraw ss 9)"));  // as 4: highlighting ends
  EXPECT_FALSE(LastHighlighted());

  EXPECT_EQ(Printed(L"(kel_ssredraw nil)"), L"");
  EXPECT_EQ(Printed(L"(kel_ssredraw)"), L"\nError:ss_redraw没输入参数.");
  EXPECT_EQ(Printed(L"(kel_ssredraw (entlast))"), L"\nError:ss_redraw参数1(ss).");
  EXPECT_TRUE(Void(L"(kel_ssredraw)"));
}

TEST_F(QueryFunctions, RectangleOfAnEntityASetOrAListOfNames) {
  Eval(L"(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 2.0 1.0 0.0)))");
  Eval(L"(setq a (entlast))");
  Eval(L"(entmake '((0 . \"CIRCLE\") (10 5.0 5.0 0.0) (40 . 1.0)))");
  Eval(L"(setq b (entlast))");
  EXPECT_EQ(Eval(L"(kel_getssrect (entlast))"), L"((4.0 4.0 0.0) (6.0 6.0 0.0))");
  EXPECT_EQ(Eval(L"(kel_getssrect (ssget \"X\"))"), L"((0.0 0.0 0.0) (6.0 6.0 0.0))");
  EXPECT_EQ(Eval(L"(kel_getssrect (list a \"not a name\" (list b)))"), L"((0.0 0.0 0.0) (6.0 6.0 0.0))");

  const std::wstring usage = L"参数传递错误!\n用法:(kel_GetSSRect 实体名或选择集名或实体名表)";
  EXPECT_EQ(Printed(L"(kel_getssrect a 1)"), usage);
  EXPECT_EQ(Eval(L"(kel_getssrect a 1)"), L"nil");
  EXPECT_EQ(Printed(L"(kel_getssrect '(\"x\" 1))"), usage);
  EXPECT_EQ(Printed(L"(kel_getssrect nil)"), usage);

  // An entity that cannot be measured: nil and nothing said.
  Eval(L"(entmake '((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 1.0) (1 . \"\")))");
  EXPECT_EQ(Printed(L"(kel_getssrect (entlast))"), L"");
  EXPECT_EQ(Eval(L"(kel_getssrect (entlast))"), L"nil");
}

TEST_F(QueryFunctions, EntityColourAndType) {
  Eval(L"(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbPolyline\") (90 . 2) (10 0.0 0.0) (10 1.0 0.0)))");
  Eval(L"(setq e (entlast))");
  EXPECT_EQ(Eval(L"(kel_setentcolorindex e 1)"), L"T");
  EXPECT_EQ(Eval(L"(cdr (assoc 62 (entget e)))"), L"1");
  EXPECT_EQ(Eval(L"(kel_setentcolorindex e 257)"), L"nil");
  EXPECT_EQ(Eval(L"(kel_setentcolorindex e -1)"), L"nil");
  EXPECT_EQ(Eval(L"(cdr (assoc 62 (entget e)))"), L"1");
  EXPECT_EQ(Printed(L"(kel_setentcolorindex e)"),
            L"\n (KEL_SetEntColorIndex) 参数错\n (KEL_SetEntColorIndex 实体名 色号 )");
  EXPECT_TRUE(Void(L"(kel_setentcolorindex e \"1\")"));

  EXPECT_EQ(Eval(L"(kel_entistype e \"*poly*\")"), L"T");
  EXPECT_EQ(Eval(L"(kel_entistype e \"LINE\")"), L"nil");
  EXPECT_EQ(Eval(L"(kel_entistype e \"ARC，CIRCLE\")"), L"nil");
  EXPECT_EQ(Eval(L"(kel_entistype e \"ARC，LWPOLYLINE\")"), L"T");
  EXPECT_EQ(Eval(L"(kel_entistype e \"ARC,*LINE\")"), L"T");
  EXPECT_EQ(Printed(L"(kel_entistype \"LINE\" e)"),
            L"\n (KEL_EntIsType) 参数错\n (KEL_EntIsType 实体名 类型串,可用通配符及可以用“，”隔开表示“或”的关系 )");
  EXPECT_TRUE(Void(L"(kel_entistype e)"));
}

TEST_F(QueryFunctions, PointAlongACurveTowardsTheRight) {
  // Drawn leftwards: the point is found by going back along the line.
  Eval(L"(entmake '((0 . \"LINE\") (10 10.0 0.0 0.0) (11 0.0 0.0 0.0)))");
  Eval(L"(setq e (entlast))");
  EXPECT_EQ(Eval(L"(kel_getrightpointatdist e '(5 1) 2)"), L"(7.0 0.0 0.0)");
  EXPECT_EQ(Eval(L"(kel_getrightpointatdist e '(5 0 0) -2.5)"), L"(2.5 0.0 0.0)");
  EXPECT_EQ(Eval(L"(kel_getrightpointatdist e '(5 0 0) 6.0)"), L"nil");  // past the end
  Eval(L"(entmake '((0 . \"TEXT\") (10 0.0 0.0 0.0) (40 . 1.0) (1 . \"A\")))");
  EXPECT_EQ(Eval(L"(kel_getrightpointatdist (entlast) '(0 0) 1)"), L"nil");  // not a curve

  const std::wstring usage =
      L"\n 求曲线上右边定距离点\n KEL_GetRightPointAtDist 实体名 点 距离\n 返回：点或者nil";
  EXPECT_EQ(Printed(L"(kel_getrightpointatdist)"), usage);
  EXPECT_EQ(Printed(L"(kel_getrightpointatdist e '(5 0))"), usage);
  EXPECT_EQ(Printed(L"(kel_getrightpointatdist '(5 0) e 2)"), usage);
  EXPECT_EQ(Printed(L"(kel_getrightpointatdist e '(5 0) 70000)"), usage);  // a long integer is not taken
  EXPECT_TRUE(Void(L"(kel_getrightpointatdist e 5 2)"));
}

}  // namespace
