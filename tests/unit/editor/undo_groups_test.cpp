// What makes one undo step: a command with the commands it runs, what an
// AutoLISP expression changes outside commands, an UNDO BEgin/End group;
// and that failed and cancelled commands are undone like finished ones.
#include "arx/aced_command.h"
#include "editor/builtin_commands.h"
#include "editor/commands/drawing_support.h"
#include "undo_fixture.h"

namespace {

using kelhost::editor::undo::StepCount;

// A command that draws, then fails.
void RunDrawsThenFails(kelhost::editor::CommandContext& c) {
  kelhost::editor::AppendToCurrentSpace(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
  c.fail(L"\nfailed on purpose");
}
KELHOST_BUILTIN_COMMAND(UndoTestFails, {L"UNDOTESTFAILS", RunDrawsThenFails});

// An application's command that runs two LINE commands.
void TwoLines() {
  acedCommandS(RTSTR, L"_.LINE", RTSTR, L"0,0", RTSTR, L"1,0", RTSTR, L"", RTNONE);
  acedCommandS(RTSTR, L"_.LINE", RTSTR, L"0,1", RTSTR, L"1,1", RTSTR, L"", RTNONE);
}

class UndoGroupsTest : public UndoTest {};

TEST_F(UndoGroupsTest, CommandsRunByACommandJoinItsStep) {
  ASSERT_EQ(acedRegCmds->addCommand(L"UNDOTEST", L"UNDOTESTTWO", L"UNDOTESTTWO", 0, TwoLines), Acad::eOk);
  type(L"UNDOTESTTWO");
  acedRegCmds->removeGroup(L"UNDOTEST");
  EXPECT_EQ(live(L"LINE"), 2);
  EXPECT_EQ(StepCount(), 1);
  type(L"U");
  EXPECT_EQ(out, L" UNDOTESTTWO");
  EXPECT_EQ(live(L"LINE"), 0);
}

// As on the platform, each command an AutoLISP program runs is a step of
// its own; what the expression changes around them makes steps between.
TEST_F(UndoGroupsTest, CommandsAnExpressionRunsAreStepsOfTheirOwn) {
  const std::wstring before = fingerprint();
  lisp(LR"((progn (entmake '((0 . "CIRCLE") (10 0 0 0) (40 . 1.0)))
                  (command "_.LINE" "0,0" "1,1" "")
                  (entmake '((0 . "POINT") (10 2 2 0)))))");
  EXPECT_EQ(StepCount(), 3);
  type(L"U");
  EXPECT_EQ(out, L" GROUP");
  EXPECT_EQ(live(L"POINT"), 0);
  EXPECT_EQ(live(L"LINE"), 1);
  type(L"U");
  EXPECT_EQ(out, L" LINE");
  type(L"U");
  EXPECT_EQ(fingerprint(), before);

  lisp(LR"((defun C:UNDOTESTLISP () (command "_.LINE" "0,0" "1,1" "") (command "_.LINE" "0,0" "2,1" "") (princ)))");
  type(L"UNDOTESTLISP");
  EXPECT_EQ(live(L"LINE"), 2);
  type(L"U");
  EXPECT_EQ(live(L"LINE"), 1);
}

TEST_F(UndoGroupsTest, FailedAndCancelledCommandsAreUndoneToTheStateBefore) {
  const std::wstring before = fingerprint();
  type(L"UNDOTESTFAILS");
  EXPECT_EQ(live(L"LINE"), 1);
  // LINE with two segments drawn, then the input ends: cancelled.
  type(L"LINE", {L"0,0", L"5,0", L"5,5"});
  EXPECT_NE(out.find(L"*Cancel*"), std::wstring::npos);
  EXPECT_EQ(live(L"LINE"), 3);
  type(L"U");
  EXPECT_EQ(out, L" LINE");
  EXPECT_EQ(live(L"LINE"), 1);
  type(L"U");
  EXPECT_EQ(out, L" UNDOTESTFAILS");
  EXPECT_EQ(fingerprint(), before);
}

TEST_F(UndoGroupsTest, BeginAndEndMakeOneStepNamedGroup) {
  type(L"UNDO", {L"BE"});
  EXPECT_EQ(undoctl(), 53 | 8);
  type(L"LINE", {L"0,0", L"1,0", L""});
  type(L"UNDO", {L"M"});  // a mark inside a group does not outlive it
  lisp(LR"((entmake '((0 . "POINT") (10 0 0 0))))");
  type(L"LINE", {L"0,1", L"1,1", L""});
  // While the group is open, U takes back its steps one by one but not
  // past its start.
  type(L"U");
  EXPECT_EQ(out, L" LINE");
  type(L"UNDO", {L"E"});
  EXPECT_EQ(undoctl(), 53);
  EXPECT_EQ(kelhost::editor::undo::Marks(), 0);
  EXPECT_EQ(StepCount(), 1);
  type(L"U");
  EXPECT_EQ(out, L" GROUP");
  EXPECT_EQ(live(L"LINE") + live(L"POINT"), 0);
}

TEST_F(UndoGroupsTest, AGroupPutsBackEveryVariableItsStepsChanged) {
  const std::wstring before = fingerprint();
  type(L"UNDO", {L"BE"});
  lisp(LR"((setvar "CECOLOR" "3"))");
  lisp(LR"((setvar "USERI1" 7))");
  lisp(LR"((progn (setvar "TEXTSIZE" 9.0) (setvar "USERR1" 1.5) (setvar "USERI1" 8)))");
  type(L"UNDO", {L"E"});
  type(L"U");
  EXPECT_EQ(fingerprint(), before);
}

TEST_F(UndoGroupsTest, UndoStopsAtTheStartOfAnOpenGroup) {
  type(L"LINE", {L"0,0", L"1,0", L""});
  type(L"UNDO", {L"BEgin"});
  type(L"LINE", {L"0,1", L"1,1", L""});
  type(L"UNDO", {L"5"});
  EXPECT_NE(out.find(L"<1>: 5 LINE"), std::wstring::npos) << out;
  EXPECT_EQ(live(L"LINE"), 1);
  type(L"U");
  EXPECT_EQ(live(L"LINE"), 1);
  // BEgin in an open group ends it and starts another; the legacy Group
  // keyword is BEgin.
  type(L"LINE", {L"0,2", L"1,2", L""});
  type(L"UNDO", {L"G"});
  type(L"LINE", {L"0,3", L"1,3", L""});
  type(L"UNDO", {L"E"});
  EXPECT_EQ(StepCount(), 3);
  type(L"UNDO", {L"3"});
  EXPECT_EQ(out.substr(out.find(L"<1>: 3")), L"<1>: 3 GROUP GROUP LINE");
  EXPECT_EQ(live(L"LINE"), 0);
}

// Zoom and pan steps in a row make one while Combine is on; the view they
// change is a drawing variable the host sets (read-only for programs).
TEST_F(UndoGroupsTest, ZoomsAndPansInARowCombine) {
  const auto viewCommand = [](const wchar_t* name, double x) {
    kelhost::editor::undo::CommandStarted(name);
    resbuf rb{};
    rb.restype = RT3DPOINT;
    rb.resval.rpoint[0] = x;
    kelhost::sysvars::SetHostVar(L"VIEWCTR", &rb);
    kelhost::editor::undo::CommandEnded(name);
  };
  const std::wstring before = lisp(L"(getvar \"VIEWCTR\")");
  viewCommand(L"ZOOM", 1);
  viewCommand(L"PAN", 2);
  viewCommand(L"ZOOM", 3);
  EXPECT_EQ(StepCount(), 1);
  type(L"U");
  EXPECT_EQ(out, L" ZOOM");
  EXPECT_EQ(lisp(L"(getvar \"VIEWCTR\")"), before);
  type(L"UNDO", {L"C", L"C", L"N"});
  viewCommand(L"ZOOM", 1);
  viewCommand(L"PAN", 2);
  EXPECT_EQ(StepCount(), 2);
}

}  // namespace
