// The undo helpers: the UNDO commands each sends for each UNDOCTL, as
// subroutine calls with every answer as text and command echo off, and
// what they return.
#include <gtest/gtest.h>

#include "command_recorder.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

using Lines = std::vector<std::wstring>;

class UndoHelpers : public EditorModuleTest {
 protected:
  template <class F>
  Lines Sent(int undoctl, F helper) {
    HostVar(L"UNDOCTL", undoctl);
    recorder.clear();
    helper();
    for (const RecordedCommand& c : recorder.calls()) EXPECT_EQ(c.cmdecho, 0);
    return recorder.lines();
  }
  CommandRecorder recorder{{L"UNDO"}};
};

TEST_F(UndoHelpers, ClearUndoSnapshotsAndBringsUndoToAll) {
  ASSERT_TRUE(LoadModule());
  auto clear = [] { KEL::ClearUNDO(); };
  EXPECT_EQ(Sent(0, clear), (Lines{L"UNDO A"}));
  EXPECT_EQ(Sent(3, clear), (Lines{L"UNDO C A"}));
  EXPECT_EQ(Sent(13, clear), (Lines{L"UNDO E"}));
  EXPECT_EQ(Sent(5, clear), Lines{});
  Eval(L"(setvar \"THICKNESS\" 2.0)");
  HostVar(L"UNDOMARKS", 4);
  EXPECT_EQ(Eval(L"(kel_clearundo)"), L"4");
  EXPECT_EQ(Var(L"THICKNESS"), L"0.0");
  KEL::RestoreCADVar();
  EXPECT_EQ(Var(L"THICKNESS"), L"2.0");
}

TEST_F(UndoHelpers, BeginAndMarkFollowTheClearing) {
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(Sent(0, [] { EXPECT_TRUE(Void(L"(kel_undob)")); }), (Lines{L"UNDO A", L"UNDO B"}));
  EXPECT_EQ(Sent(13, [] { EXPECT_TRUE(Void(L"(kel_undom)")); }), (Lines{L"UNDO E", L"UNDO M"}));
}

TEST_F(UndoHelpers, GroupsUseTheBuiltInUndoAndTheValueReadFirst) {
  auto start = [] { KEL::UndoMGS(); };
  EXPECT_EQ(Sent(0, start), (Lines{L".undo c all", L".undo g"}));
  EXPECT_EQ(Sent(13, start), (Lines{L".undo e", L".undo g"}));
  EXPECT_EQ(Sent(12, start), (Lines{L".undo c all", L".undo e", L".undo g"}));
  EXPECT_EQ(Sent(5, start), (Lines{L".undo g"}));
  auto end = [] { KEL::UndoMGE(); };
  EXPECT_EQ(Sent(0, end), (Lines{L".undo all"}));
  EXPECT_EQ(Sent(12, end), (Lines{L".undo all"}));
  EXPECT_EQ(Sent(13, end), (Lines{L".undo e"}));
  EXPECT_EQ(Sent(5, end), Lines{});
  EXPECT_EQ(Var(L"CMDECHO"), L"0");
}

}  // namespace
