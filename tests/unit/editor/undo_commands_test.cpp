// UNDO's options (a number, Mark and Back, Control, Auto), U and REDO as
// the command line shows them, and UNDOCTL and UNDOMARKS.
#include "undo_fixture.h"

namespace {

using kelhost::editor::undo::Marks;
using kelhost::editor::undo::StepCount;

class UndoCommandsTest : public UndoTest {
 protected:
  void line(int n) { type(L"LINE", {std::to_wstring(n) + L",0", std::to_wstring(n) + L",1", L""}); }
  // What UNDO printed after its answer.
  std::wstring afterAnswer() const { return out.substr(out.rfind(L": ") + 2); }
};

TEST_F(UndoCommandsTest, UndoShowsItsSettingsAndUndoesANumberOfSteps) {
  line(1);
  line(2);
  line(3);
  type(L"UNDO", {L"2"});
  EXPECT_EQ(out,
            L"\nCurrent settings: Auto = On, Control = All, Combine = Yes, Layer = Yes"
            L"\nEnter the number of operations to undo or [Auto/Control/BEgin/End/Mark/Back] <1>: 2 LINE LINE");
  EXPECT_EQ(live(L"LINE"), 1);
  type(L"UNDO", {L""});  // Enter: one
  EXPECT_EQ(afterAnswer(), L" LINE");
  type(L"UNDO", {L"4"});
  EXPECT_EQ(afterAnswer(), L"4 Everything has been undone");
  type(L"U");
  EXPECT_EQ(out, L" Everything has been undone");
}

TEST_F(UndoCommandsTest, MarksStopANumberAndBackGoesToTheLastMark) {
  line(1);
  type(L"UNDO", {L"M"});
  line(2);
  type(L"UNDO", {L"Mark"});
  line(3);
  line(4);
  EXPECT_EQ(Marks(), 2);
  EXPECT_EQ(lisp(L"(getvar \"UNDOMARKS\")"), L"2");
  type(L"UNDO", {L"B"});
  EXPECT_EQ(afterAnswer(), L"B LINE LINE Mark encountered");
  EXPECT_EQ(Marks(), 1);
  EXPECT_EQ(live(L"LINE"), 2);
  type(L"UNDO", {L"5"});
  EXPECT_EQ(afterAnswer(), L"5 LINE Mark encountered");
  EXPECT_EQ(lisp(L"(getvar \"UNDOMARKS\")"), L"0");
  // REDO brings back the step and the mark the last UNDO took.
  type(L"REDO");
  EXPECT_EQ(Marks(), 1);
  EXPECT_EQ(live(L"LINE"), 2);
}

TEST_F(UndoCommandsTest, BackWithoutAMarkAsksFirst) {
  line(1);
  line(2);
  type(L"UNDO", {L"Back", L"N"});
  EXPECT_EQ(out.substr(out.rfind(L"\n")), L"\nThis will undo everything. OK? <Y>: N");
  EXPECT_EQ(live(L"LINE"), 2);
  type(L"UNDO", {L"Back", L""});
  EXPECT_EQ(afterAnswer(), L" LINE LINE Everything has been undone");
  EXPECT_EQ(live(L"LINE"), 0);
}

TEST_F(UndoCommandsTest, RedoFollowsOnlyTheUndoJustBefore) {
  line(1);
  line(2);
  line(3);
  const std::wstring all = fingerprint();
  type(L"UNDO", {L"3"});
  type(L"REDO");
  EXPECT_EQ(out, L" LINE LINE LINE");
  EXPECT_EQ(fingerprint(), all);
  type(L"REDO");
  EXPECT_EQ(out, L" Everything has been redone");
  // What was redone is undone again; a command in between leaves REDO
  // nothing.
  type(L"U");
  EXPECT_EQ(live(L"LINE"), 2);
  line(4);
  type(L"REDO");
  EXPECT_EQ(out, L" Everything has been redone");
  EXPECT_EQ(live(L"LINE"), 3);
  // Of two U in a row, REDO brings back the second's.
  type(L"U");
  type(L"U");
  type(L"REDO");
  EXPECT_EQ(live(L"LINE"), 2);
}

TEST_F(UndoCommandsTest, ControlNoneForgetsAndDisables) {
  line(1);
  type(L"UNDO", {L"C", L"N"});
  EXPECT_EQ(undoctl(), 48);
  line(2);
  type(L"U");
  EXPECT_EQ(out, L"\nU command disabled. Use UNDO command to turn it on");
  EXPECT_EQ(live(L"LINE"), 2);
  // UNDO then asks for a control option straight away.
  type(L"UNDO", {L""});
  EXPECT_EQ(out,
            L"\nCurrent settings: Auto = On, Control = None, Combine = Yes, Layer = Yes"
            L"\nEnter an UNDO control option [All/None/One/Combine/Layer] <All>: ");
  EXPECT_EQ(undoctl(), 53);
  type(L"U");
  EXPECT_EQ(out, L" Everything has been undone");
}

TEST_F(UndoCommandsTest, ControlOneKeepsASingleStep) {
  line(1);
  line(2);
  type(L"UNDO", {L"C", L"O"});
  EXPECT_EQ(undoctl(), 1 | 2 | 16 | 32);
  EXPECT_EQ(StepCount(), 1);
  line(3);
  EXPECT_EQ(StepCount(), 1);
  type(L"UNDO", {L"M"});  // no Mark with One: the answer is refused and the input ends
  EXPECT_NE(out.find(L"[Control] <1>: M"), std::wstring::npos) << out;
  EXPECT_EQ(Marks(), 0);
  type(L"U");
  EXPECT_EQ(out, L" LINE");
  type(L"U");
  EXPECT_EQ(out, L" Everything has been undone");
  EXPECT_EQ(live(L"LINE"), 2);
  type(L"UNDO", {L"C", L"A"});
  EXPECT_EQ(undoctl(), 53);
}

TEST_F(UndoCommandsTest, AutoCombineAndLayerSettingsShowInUndoctl) {
  type(L"UNDO", {L"A", L"OFF"});
  EXPECT_EQ(undoctl(), 49);
  type(L"UNDO", {L"C", L"C", L"N"});
  EXPECT_EQ(out.substr(out.rfind(L"\n")), L"\nCombine zoom and pan operations? [Yes/No] <Yes>: N");
  type(L"UNDO", {L"C", L"L", L"No"});
  EXPECT_EQ(undoctl(), 1);
  type(L"UNDO", {L"A", L""});
  EXPECT_EQ(out,
            L"\nCurrent settings: Auto = Off, Control = All, Combine = No, Layer = No"
            L"\nEnter the number of operations to undo or [Auto/Control/BEgin/End/Mark/Back] <1>: A"
            L"\nEnter UNDO Auto mode [ON/OFF] <Off>: ");
  EXPECT_EQ(undoctl(), 1);
  // Read-only for programs.
  EXPECT_EQ(lisp(L"(setvar \"UNDOCTL\" 0)"), L"error: AutoCAD variable setting rejected: \"UNDOCTL\" 0");
  EXPECT_EQ(undoctl(), 1);
}

}  // namespace
