// The group helpers against the host's own UNDO: UndoMGE has no AutoLISP
// name, so this is where its behaviour with undo turned off is shown.
#include <gtest/gtest.h>

#include <string>

#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

class UndoGroupsWithUndo : public EditorModuleTest {
 protected:
  int Short(const wchar_t* name) { return std::stoi(Var(name)); }
};

TEST_F(UndoGroupsWithUndo, GroupEndWithUndoOffTurnsItBackOn) {
  ASSERT_EQ(acedCommandS(RTSTR, L"UNDO", RTSTR, L"C", RTSTR, L"N", RTNONE), RTNORM);
  ASSERT_EQ(Short(L"UNDOCTL") & 1, 0);
  // ".undo" "all": at the control prompt that UNDO shows with undo off,
  // "all" is the All option.
  KEL::UndoMGE();
  EXPECT_EQ(Short(L"UNDOCTL") & 3, 1);
  EXPECT_EQ(Short(L"CMDECHO"), 0);
}

TEST_F(UndoGroupsWithUndo, AGroupStartedAndEndedUndoesInOneStep) {
  ASSERT_EQ(Eval(L"(command \"LINE\" \"0,0\" \"10,0\" \"\")"), L"nil");
  KEL::UndoMGS();
  EXPECT_NE(Short(L"UNDOCTL") & 8, 0);  // a group is open
  ASSERT_EQ(Eval(L"(command \"LINE\" \"0,0\" \"0,10\" \"\")"), L"nil");
  ASSERT_EQ(Eval(L"(command \"LINE\" \"0,0\" \"10,10\" \"\")"), L"nil");
  ASSERT_EQ(acedCommandS(RTSTR, L".undo", RTSTR, L"e", RTNONE), RTNORM);
  ASSERT_EQ(acedCommandS(RTSTR, L"U", RTNONE), RTNORM);
  EXPECT_EQ(Eval(L"(sslength (ssget \"X\"))"), L"1");
}

}  // namespace
