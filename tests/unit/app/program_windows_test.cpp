// The program's windows and document as applications reach them: the
// main window takes characters too, handles that name no window are
// refused, and strings sent to the document run at the prompt, echoed or
// not.
#include <gtest/gtest.h>

#include <string>

#include "arx/arxheaders.h"
#include "editor/user_input.h"
#include "kelhost/editor.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/ui.h"

namespace {

class ProgramWindows : public ::testing::Test {
 protected:
  void SetUp() override {
    kelhost::editor::ResetInputState();
    kelhost::ClearWindowCalls();
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
  }
  void TearDown() override {
    kelhost::editor::ResetInputState();
    kelhost::Host::instance().setCommandLineSink(nullptr);
  }
  std::wstring out;
};

TEST_F(ProgramWindows, TheMainFrameTakesCharactersAndDeadHandlesAreRefused) {
  EXPECT_EQ(static_cast<CWnd*>(acedGetAcadFrame()), AfxGetMainWnd());
  EXPECT_EQ(acedGetAcadFrame()->GetSafeHwnd(), adsw_acadMainWnd());
  for (wchar_t ch : std::wstring(L"ZOOM\r")) SendMessageW(adsw_acadMainWnd(), WM_CHAR, ch, 0);
  const kelhost::editor::ReadInput in = kelhost::editor::NextInput(false, false);
  EXPECT_EQ(in.token.text, L"ZOOM");

  HWND gone = nullptr;
  {
    CWnd palette;
    gone = palette.GetSafeHwnd();
    EXPECT_FALSE(ShowWindow(gone, SW_SHOW));  // it was hidden
    EXPECT_TRUE(palette.IsWindowVisible());
  }
  EXPECT_EQ(CWnd::FromHandle(gone), nullptr);
  EXPECT_FALSE(ShowWindow(gone, SW_SHOW));
  EXPECT_EQ(SendMessageW(gone, WM_CHAR, L'x', 0), 0);
  EXPECT_EQ(kelhost::WindowCalls().size(), 1u);
  EXPECT_FALSE(kelhost::editor::QueuedInputPending());
}

TEST_F(ProgramWindows, StringsSentToTheDocumentRunAtThePromptWithOrWithoutEcho) {
  AcApDocument* doc = acDocManager->curDocument();
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(acDocManager->sendStringToExecute(nullptr, L"(setq a 1)\n"), Acad::eInvalidInput);
  EXPECT_EQ(acDocManager->sendStringToExecute(doc, L"(setq shown 1)\n"), Acad::eOk);
  EXPECT_EQ(acDocManager->sendStringToExecute(doc, L"(setq hidden 2)\n", true, false, false), Acad::eOk);
  EXPECT_EQ(acDocManager->sendStringToExecute(doc, L"(setq last 3)\n"), Acad::eOk);
  kelhost::Host::instance().writeCommandLine(L"\n");  // at the start of a line
  out.clear();
  EXPECT_TRUE(kelhost::editor::EvaluateAtPrompt(L"(setq first 0)", false));
  EXPECT_EQ(out, L"Command: (setq shown 1)\n1\nCommand: \n2\nCommand: (setq last 3)\n3");
  EXPECT_EQ(kelhost::Host::instance().lisp().evalOne(L"(list first shown hidden last)").valueText, L"(0 1 2 3)");
  // The document keeps its own drawing whichever database is working.
  AcDbDatabase side;
  acdbHostApplicationServices()->setWorkingDatabase(&side);
  EXPECT_NE(doc->database(), &side);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(doc->database(), acdbHostApplicationServices()->workingDatabase());
}

}  // namespace
