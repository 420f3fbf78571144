// The entity-making AutoLISP functions: what each makes, the message of
// each refused argument list, the status each gives the dispatcher, and
// that UNDO takes back what they made.
#include <gtest/gtest.h>

#include "app/app_state.h"
#include "db/stub.h"
#include "editor/command_processor.h"
#include "editor/undo.h"
#include "editor/undo_journal.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"
#include "kelcad/lisp/entity_handlers.h"
#include "lisp/external_calls.h"

namespace {

class EntityMakers : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    ASSERT_TRUE(LoadModule());
    kelhost::editor::undo::Reset();
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), 0) << "objects left open";
    EditorModuleTest::TearDown();
  }
  // The drawing's entities as (type layer) lists, oldest first, without
  // the vertices and ends of polylines.
  std::wstring Made() {
    return Eval(L"(progn (setq e (entnext) l nil) (while e (setq d (entget e)) (if (not (member (cdr (assoc 0 d)) "
                L"'(\"VERTEX\" \"SEQEND\"))) (setq l (cons (list (cdr (assoc 0 d)) (cdr (assoc 8 d))) l))) "
                L"(setq e (entnext e))) (reverse l))");
  }
  std::wstring Group(const std::wstring& entity, int code) {
    return Eval(L"(cdr (assoc " + std::to_wstring(code) + L" (entget " + entity + L")))");
  }
};

TEST_F(EntityMakers, EachPositionalFunctionMakesItsEntityAndAnswersNil) {
  EXPECT_EQ(Eval(L"(kel_entmakepoint \"P\" '(1 2 3))"), L"nil");
  EXPECT_EQ(Eval(L"(kel_entmakecircle \"0\" '(0 0 0) 5)"), L"nil");
  EXPECT_EQ(Group(L"(entlast)", 40), L"5.0");
  EXPECT_EQ(Eval(L"(kel_entmaketext \"T\" \"编号\" '(4 5) 2.5 0.5)"), L"nil");
  EXPECT_EQ(Eval(L"(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(1 10 11 40 50 72 73))"),
            L"(\"编号\" (4.0 5.0 0.0) (4.0 5.0 0.0) 2.5 0.5 1 2)");
  EXPECT_EQ(Made(), L"((\"POINT\" \"P\") (\"CIRCLE\" \"0\") (\"TEXT\" \"T\"))");
  EXPECT_EQ(out, L"");
}

TEST_F(EntityMakers, PositionalFunctionsStopAtTheFirstWrongArgument) {
  EXPECT_EQ(Printed(L"(kel_entmakepoint)"), L"\nError:mkpt 没输入参数.");
  EXPECT_EQ(Printed(L"(kel_entmakepoint 1 '(0 0))"), L"\nError:mkpt 输入参数错(lay).");
  EXPECT_EQ(Printed(L"(kel_entmakepoint \"0\")"), L"\nError:mkpt 输入参数错(point).");
  EXPECT_EQ(Printed(L"(kel_entmakecircle \"0\" '(0 0 0) 70000)"), L"\nError:mkcir 参数rr.");
  EXPECT_EQ(Printed(L"(kel_entmakecircle \"0\" \"x\" 1)"), L"\nError:mkcir 参数p00.");
  EXPECT_EQ(Printed(L"(kel_entmakecircle '(0 0) 1)"), L"\nError:mkcir 参数lay.");
  EXPECT_EQ(Printed(L"(kel_entmaketext \"0\" \"a\" '(0 0) 1)"), L"\nError:mktxt 输入参数错(ang).");
  EXPECT_EQ(Printed(L"(kel_entmaketext \"0\" 5 '(0 0) 1 0)"), L"\nError:mktxt 输入参数错(str).");
  EXPECT_EQ(Printed(L"(kel_entmakearc \"0\" '(0 0) \"m\" '(1 0))"), L"\nError:mkarc 输入参数错(point_m).");
  EXPECT_EQ(Printed(L"(kel_entmakenut \"0\" '(0 0))"), L"\nError:mknut参数2(real,int).");
  EXPECT_EQ(Printed(L"(kel_entmakenut \"0\" '(0 0) 4 \"6\")"), L"\nError:mknut参数3(real,int).");
  // A circle of no radius is refused by the drawing, not by the handler.
  EXPECT_EQ(Printed(L"(kel_entmakecircle \"0\" '(0 0 0) 0)"), L"\nError:mkcir error.");
  EXPECT_EQ(Eval(L"(entlast)"), L"nil");
  EXPECT_EQ(Eval(L"(kel_entmakecircle)"), L"nil");
}

TEST_F(EntityMakers, LinesFollowTheFirstRunOfPointsWhereverTheLayerIs) {
  EXPECT_EQ(Printed(L"(kel_entmakeline '(0 0) \"WALL\" '(10 0) '(10 10))"), L"");
  EXPECT_EQ(Made(), L"((\"LINE\" \"WALL\") (\"LINE\" \"WALL\"))");
  EXPECT_EQ(Eval(L"(list (cdr (assoc 10 (entget (entlast)))) (cdr (assoc 11 (entget (entlast)))))"),
            L"((10.0 0.0 0.0) (10.0 10.0 0.0))");
  // The run ends at the integer: nothing, and nothing said.
  EXPECT_EQ(Printed(L"(kel_entmakeline \"0\" '(0 0) 5 '(10 0))"), L"");
  EXPECT_EQ(Printed(L"(kel_entmakeline \"0\" '(0 0))"), L"");
  EXPECT_EQ(Made(), L"((\"LINE\" \"WALL\") (\"LINE\" \"WALL\"))");
  EXPECT_EQ(Printed(L"(kel_entmakeline)"), L"\nError:kel_EntMakeLine 没输入参数.");
  EXPECT_EQ(Printed(L"(kel_entmakeline '(0 0) '(1 1))"), L"\nError:kel_EntMakeLine 没输入lay参数.");
  EXPECT_EQ(Printed(L"(kel_entmakeline \"0\" 1.5)"), L"\nError:kel_EntMakeLine 没输入ptb参数.");
}

TEST_F(EntityMakers, PolylineTakesThicknessAndWidthAndEndsAtTheRun) {
  Eval(L"(setvar \"THICKNESS\" 2.0)");
  Eval(L"(setvar \"PLINEWID\" 0.5)");
  EXPECT_EQ(Printed(L"(kel_entmakepline \"PL\" '(0 0) '(5 0) 3 '(9 9))"), L"");
  EXPECT_EQ(Eval(L"(progn (setq h (entget (entlast))) (list (cdr (assoc 39 h)) (cdr (assoc 40 h)) "
                 L"(cdr (assoc 70 h))))"),
            L"(2.0 0.5 0)");
  EXPECT_EQ(Eval(L"(progn (setq v (entnext (entlast)) n 0) (while (= \"VERTEX\" (cdr (assoc 0 (entget v)))) "
                 L"(setq n (1+ n) v (entnext v))) (list n (cdr (assoc 0 (entget v)))))"),
            L"(2 \"SEQEND\")");
  EXPECT_EQ(Printed(L"(kel_entmakepline)"), L"\nApplication ERROR: \nError:mkpl(kel_EntMakePLine) 没输入参数.\n");
  EXPECT_EQ(Printed(L"(kel_entmakepline '(0 0))"), L"\nApplication ERROR: \nError:mkpl 没输入lay参数.\n");
}

TEST_F(EntityMakers, PolylineWithoutPointsLeavesItsHeaderWaitingForVertices) {
  EXPECT_EQ(Printed(L"(kel_entmakepline \"PL\" 1)"), L"\nApplication ERROR: \nError:mkpl 没输入ptb参数.\n");
  // Vertices the caller makes afterwards finish it.
  Eval(L"(entmake '((0 . \"VERTEX\") (10 0.0 0.0 0.0)))");
  Eval(L"(entmake '((0 . \"VERTEX\") (10 3.0 4.0 0.0)))");
  EXPECT_EQ(Eval(L"(car (entmake '((0 . \"SEQEND\"))))"), L"(0 . \"SEQEND\")");
  EXPECT_EQ(Eval(L"(cdr (assoc 8 (entget (entlast))))"), L"\"PL\"");
}

TEST_F(EntityMakers, NutIsAWideClosedRingOfTwoHalfCircles) {
  EXPECT_EQ(Printed(L"(kel_entmakenut \"0\" '(0 0 0) 10 6)"), L"");
  const std::wstring head = L"(entget (entlast))";
  EXPECT_EQ(Eval(L"(mapcar '(lambda (c) (cdr (assoc c " + head + L"))) '(0 40 41 70))"), L"(\"POLYLINE\" 2.0 2.0 1)");
  EXPECT_EQ(Eval(L"(progn (setq v (entget (entnext (entlast))) w (entget (entnext (cdr (assoc -1 v))))) "
                 L"(list (mapcar '(lambda (x) (/ (fix (* 1000 x)) 1000.0)) (cdr (assoc 10 v))) (cdr (assoc 42 v)) "
                 L"(cdr (assoc 10 w)) (cdr (assoc 42 w))))"),
            L"((-4.0 0.0 0.0) 1.0 (4.0 0.0 0.0) 1.0)");
  // Equal diameters: a circle drawn as a polyline of no width.
  EXPECT_EQ(Printed(L"(kel_entmakenut \"0\" '(1 1 2) 4 4)"), L"");
  EXPECT_EQ(Eval(L"(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(10 40 70))"), L"((0.0 0.0 2.0) nil 1)");
}

TEST_F(EntityMakers, ArcIsRemadeOnTheGivenLayerFromTheCommandsArc) {
  EXPECT_EQ(Printed(L"(kel_entmakearc \"A1\" '(0 0) '(5 5) '(10 0))"), L"");
  EXPECT_EQ(Made(), L"((\"ARC\" \"A1\"))");
  EXPECT_EQ(Eval(L"(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(10 40 50 51))"),
            L"((5.0 0.0 0.0) 5.0 0.0 3.14159)");
  // The drafting state stays, as the family's programs expect of it.
  EXPECT_EQ(Var(L"CMDECHO"), L"0");
  // Points in a line make no arc: nothing made, nothing deleted.
  EXPECT_EQ(Printed(L"(kel_entmakearc \"A2\" '(0 0) '(1 0) '(2 0))"), L"");
  EXPECT_EQ(Made(), L"((\"ARC\" \"A1\"))");
}

int gStatus = 0;

TEST_F(EntityMakers, BlockHeaderAndInsertAnswerTheDispatcherOneOrThree) {
  // Their statuses, seen by calling them as the dispatcher does.
  void* kelcad = kelhost::app::FindModuleByName(L"KELCAD.arx");
  ASSERT_NE(kelcad, nullptr);
  kelhost::lispbridge::RegisterDirectHandler(kelcad, 88, [] { return gStatus = KEL::Lisp::KEL_MkTop(); });
  kelhost::lispbridge::RegisterDirectHandler(kelcad, 76, [] { return gStatus = KEL::Lisp::MkIns(); });
  EXPECT_EQ(Eval(L"(kel_mktop \"0\" '(1 2))"), L"nil");
  EXPECT_EQ(gStatus, 1);
  Eval(L"(entmake '((0 . \"CIRCLE\") (10 0.0 0.0 0.0) (40 . 1.0)))");
  const std::wstring block = Eval(L"(entmake '((0 . \"ENDBLK\")))");
  ASSERT_EQ(block.substr(0, 3), L"\"*U");
  EXPECT_EQ(Eval(L"(cdr (assoc 10 (tblsearch \"BLOCK\" " + block + L")))"), L"(1.0 2.0 0.0)");

  EXPECT_EQ(Printed(L"(mkins \"0\" " + block + L" '(5 5 0) \"P-1\")"), L"\nApplication ERROR: \nError:mkins error.\n");
  EXPECT_EQ(gStatus, 3);
  Eval(L"(regapp \"TFGXPJ\")");
  EXPECT_EQ(Printed(L"(mkins \"0\" " + block + L" '(5 5 0) \"P-1\")"), L"");
  EXPECT_EQ(gStatus, 1);
  EXPECT_EQ(Eval(L"(cdr (assoc -3 (entget (entlast) '(\"TFGXPJ\"))))"),
            L"((\"TFGXPJ\" (1002 . \"{\") (1000 . \"P-1\") (1002 . \"}\")))");
  // A fourth argument of another kind is ignored; the second name is the
  // same function.
  EXPECT_EQ(Printed(L"(kel_mkins \"0\" " + block + L" '(6 6 0) 7)"), L"");
  EXPECT_EQ(Eval(L"(cdr (assoc -3 (entget (entlast) '(\"*\"))))"), L"nil");
  EXPECT_EQ(Printed(L"(mkins \"0\" 1 '(0 0 0))"), L"\nApplication ERROR: \nError:mkins 参数2(km).\n");
  EXPECT_EQ(gStatus, 3);
  EXPECT_EQ(Printed(L"(kel_mktop \"0\" \"x\")"), L"\nApplication ERROR: \nError:mktop 输入参数错(point).\n");
  EXPECT_EQ(gStatus, 3);
  kelhost::lispbridge::RegisterDirectHandler(kelcad, 88, nullptr);
  kelhost::lispbridge::RegisterDirectHandler(kelcad, 76, nullptr);
}

TEST_F(EntityMakers, UndoTakesBackWhatEachCallMade) {
  auto atPrompt = [this](const std::wstring& expression) {
    kelhost::editor::undo::ExpressionStarted();
    Eval(expression);
    kelhost::editor::undo::ExpressionEnded();
  };
  atPrompt(L"(kel_entmakeline \"0\" '(0 0) '(1 0) '(1 1))");
  atPrompt(L"(kel_entmakenut \"0\" '(0 0 0) 10 6)");
  Eval(L"(setvar \"ANGBASE\" 1.0)");
  atPrompt(L"(kel_entmakearc \"A1\" '(0 0) '(5 5) '(10 0))");
  atPrompt(L"(kel_entmakepline \"PL\" '(0 0) '(5 0))");
  EXPECT_EQ(Made(), L"((\"LINE\" \"0\") (\"LINE\" \"0\") (\"POLYLINE\" \"0\") (\"ARC\" \"A1\") (\"POLYLINE\" \"PL\"))");
  kelhost::editor::RunTypedCommand(L"U");
  EXPECT_EQ(Made(), L"((\"LINE\" \"0\") (\"LINE\" \"0\") (\"POLYLINE\" \"0\") (\"ARC\" \"A1\"))");
  kelhost::editor::RunTypedCommand(L"U");
  EXPECT_EQ(Made(), L"((\"LINE\" \"0\") (\"LINE\" \"0\") (\"POLYLINE\" \"0\"))");
  // The drafting state the arc's call took first (KEL::Set0) is a step of
  // its own: the variables come back, no entity changes.
  EXPECT_EQ(Var(L"ANGBASE"), L"0.0");
  kelhost::editor::RunTypedCommand(L"U");
  EXPECT_EQ(Var(L"ANGBASE"), L"1.0");
  EXPECT_EQ(Made(), L"((\"LINE\" \"0\") (\"LINE\" \"0\") (\"POLYLINE\" \"0\"))");
  kelhost::editor::RunTypedCommand(L"U");
  EXPECT_EQ(Made(), L"((\"LINE\" \"0\") (\"LINE\" \"0\"))");
  kelhost::editor::RunTypedCommand(L"U");
  EXPECT_EQ(Made(), L"nil");
}

TEST_F(EntityMakers, UndoTakesBackWhatTheCppMakersMadeInOneStep) {
  kelhost::editor::undo::ExpressionStarted();
  AcDbObjectId id;
  KEL::CreateLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), id);
  KEL::CreateCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0, id);
  KEL::CreateLayer(L"MADE", L"", 2, true);
  kelhost::editor::undo::ExpressionEnded();
  EXPECT_EQ(Made(), L"((\"LINE\" \"0\") (\"CIRCLE\" \"0\"))");
  kelhost::editor::RunTypedCommand(L"U");
  EXPECT_EQ(Made(), L"nil");
  EXPECT_EQ(Eval(L"(tblsearch \"LAYER\" \"MADE\")"), L"nil");
  EXPECT_EQ(Var(L"CLAYER"), L"\"0\"");
}

}  // namespace
