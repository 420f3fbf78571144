// The editor reactor on the host's command notifications: object snaps off
// while a watched command runs, the value published and put back at the
// end or on cancel; the switch; U, failed commands and the plain substring
// test of the watched list.
#include <gtest/gtest.h>

#include "app/editor.h"
#include "command_recorder.h"
#include "editor_module_fixture.h"
#include "kelcad/entry/editor_reactor.h"
#include "kelcad/entry/module_state.h"
#include "kelcad/kelcad.h"

namespace {

class EditorReactor : public EditorModuleTest {
 protected:
  void SetUp() override {
    EditorModuleTest::SetUp();
    ASSERT_TRUE(LoadModule());
    Eval(L"(setvar \"OSMODE\" 35)");
    Eval(L"(setq kel_pub_osmode_value nil)");
  }
};

TEST_F(EditorReactor, OnlyASingleNilSwitchesOff) {
  EXPECT_FALSE(KEL::EditorReactorSwitchedOn());
  for (const auto& [call, on] : {std::pair<const wchar_t*, bool>{L"(kel_enableeditorreactor)", true},
                                 {L"(kel_enableeditorreactor nil)", false},
                                 {L"(kel_enableeditorreactor nil nil)", true},
                                 {L"(kel_enableeditorreactor nil)", false},
                                 {L"(kel_enableeditorreactor 0)", true}}) {
    EXPECT_TRUE(Void(call));
    EXPECT_EQ(KEL::EditorReactorSwitchedOn(), on) << kelhost::ToUtf8(call);
  }
}

TEST_F(EditorReactor, AnyCommandNamedInsideTheListTextReactsAndCancelRestores) {
  CommandRecorder recorder({L"IN", L"SERT", L"ZOOM"});
  KEL::SwitchEditorReactor(true);
  for (const wchar_t* name : {L"IN", L"sert", L"ZOOM"}) acedCommandS(RTSTR, name, RTNONE);
  ASSERT_EQ(recorder.calls().size(), 3u);
  EXPECT_EQ(recorder.calls()[0].osmode, 0);
  EXPECT_EQ(recorder.calls()[1].osmode, 0);
  EXPECT_EQ(recorder.calls()[2].osmode, 35);
  EXPECT_EQ(Var(L"OSMODE"), L"35");
  Eval(L"(setvar \"OSMODE\" 7)");
  EXPECT_EQ(acedCommandS(RTSTR, L"LINE", RTSTR, L"0,0", RTNONE), RTCAN);  // runs out of answers
  EXPECT_EQ(Eval(L"(list (getvar \"OSMODE\") kel_pub_osmode_value)"), L"(7 7)");
}

TEST_F(EditorReactor, UndoForgetsTheValueAndAFailedCommandLeavesSnapsOff) {
  KEL::SwitchEditorReactor(true);
  kelhost::app::NotifyCommandWillStart(L"LINE");
  EXPECT_EQ(Var(L"OSMODE"), L"0");
  kelhost::app::NotifyCommandWillStart(L"u");
  kelhost::app::NotifyCommandEnded(L"U");
  kelhost::app::NotifyCommandEnded(L"LINE");
  EXPECT_EQ(Var(L"OSMODE"), L"0");
  EXPECT_FALSE(KEL::EditorReactor()->snapChanged());

  Eval(L"(setvar \"OSMODE\" 35)");
  kelhost::app::NotifyCommandWillStart(L"TEXT");
  kelhost::app::NotifyCommandFailed(L"TEXT");
  EXPECT_EQ(Var(L"OSMODE"), L"0");
  // The next command's end, whichever it is, puts the value back.
  kelhost::app::NotifyCommandWillStart(L"ZOOM");
  kelhost::app::NotifyCommandEnded(L"ZOOM");
  EXPECT_EQ(Var(L"OSMODE"), L"35");
}

}  // namespace
