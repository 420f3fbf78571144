// The command-line helpers type into the document window and queue text to
// the document; the window helpers hand the screen between the main window
// and a window of the family's own.
#include <gtest/gtest.h>

#include <tuple>

#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"
#include "kelhost/editor.h"

namespace {

using CommandLineAndWindows = EditorModuleTest;

std::wstring NextAnswer() {
  const kelhost::editor::ReadInput in = kelhost::editor::NextInput(false, false);
  if (in.token.kind == kelhost::editor::Token::kCancel) return in.ended ? L"<end>" : L"<cancel>";
  return in.token.kind == kelhost::editor::Token::kEnter ? L"<enter>" : in.token.text;
}

TEST_F(CommandLineAndWindows, TypedTextIsReadAsAnswersAndClearingCancels) {
  EXPECT_TRUE(KEL::SendMsgToAcad(L"LINE", true));
  EXPECT_TRUE(KEL::SendMsgToAcad(L"0,0 ", false));
  EXPECT_EQ(NextAnswer(), L"LINE");
  EXPECT_EQ(NextAnswer(), L"0,0");
  EXPECT_EQ(NextAnswer(), L"<end>");
  EXPECT_TRUE(KEL::SendMsgToAcad(L"LINE", true));
  EXPECT_TRUE(KEL::ClearAcadCmdLine());
  EXPECT_EQ(NextAnswer(), L"<cancel>");
  EXPECT_EQ(NextAnswer(), L"<end>");
}

TEST_F(CommandLineAndWindows, AStringToExecuteRunsWhenTheAutoLispCallReturns) {
  KEL::SendStringToExecute(L"(setq queued (list 7 done))", true);
  EXPECT_EQ(Eval(L"queued"), L"nil");
  kelhost::Host::instance().writeCommandLine(L"\n");  // at the start of a line
  out.clear();
  EXPECT_TRUE(kelhost::editor::EvaluateAtPrompt(L"(setq done 1)", false));
  EXPECT_EQ(out, L"Command: (setq queued (list 7 done))\n(7 1)");
  const int updates = kelhost::DisplayUpdateCount();
  EXPECT_TRUE(KEL::FlushAcadGraphicsQueue());
  EXPECT_EQ(kelhost::DisplayUpdateCount(), updates + 1);
}

TEST_F(CommandLineAndWindows, ModalTakesTheMainWindowAwayAndShowCadGivesItBack) {
  CWnd mine;
  CWnd* main = CWnd::FromHandle(adsw_acadMainWnd());
  using Kind = kelhost::WindowCall::Kind;
  auto calls = [&] {
    std::vector<std::tuple<char, Kind, int>> seen;
    for (const kelhost::WindowCall& c : kelhost::WindowCalls())
      seen.emplace_back(c.window == main->GetSafeHwnd() ? 'M' : c.window == mine.GetSafeHwnd() ? 'W' : '?', c.kind,
                        c.value);
    kelhost::ClearWindowCalls();
    return seen;
  };
  using Calls = std::vector<std::tuple<char, Kind, int>>;
  KEL::ShowMyWindowsAsModal(&mine);
  EXPECT_EQ(calls(), (Calls{{'M', Kind::kEnable, 0}, {'W', Kind::kBringToTop, 0}, {'W', Kind::kShow, SW_SHOW},
                            {'W', Kind::kEnable, 1}}));
  EXPECT_FALSE(main->IsWindowEnabled());
  KEL::ShowCadWindows(&mine);
  EXPECT_EQ(calls(), (Calls{{'M', Kind::kBringToTop, 0}, {'W', Kind::kShow, SW_HIDE}, {'M', Kind::kEnable, 1}}));
  EXPECT_TRUE(main->IsWindowEnabled());
  EXPECT_FALSE(mine.IsWindowVisible());
  KEL::ShowMyWindowsAsModeless(&mine);
  EXPECT_EQ(calls(), (Calls{{'W', Kind::kBringToTop, 0}, {'W', Kind::kShow, SW_SHOW}, {'W', Kind::kEnable, 1}}));
  EXPECT_TRUE(mine.IsWindowVisible());
}

}  // namespace
