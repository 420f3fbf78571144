// The program's own windows: the main frame and the drawing window of the
// document. Both are shown from the start, and a character sent to either
// is typed on the command line, where the editor reads it after the
// current AutoLISP call or command.
#include <string>

#include "arx/acedads.h"
#include "arx/rxmfcapi.h"
#include "editor/user_input.h"
#include "kelhost/ui.h"

namespace kelhost::app {
namespace {

constexpr wchar_t kEscape = 27;
constexpr wchar_t kEnter = 13;

void TypeOnCommandLine(wchar_t ch) {
  if (ch == kEscape) editor::EscapeInput();
  else if (ch == kEnter) editor::QueueInput(L"\n");
  else editor::QueueInput(std::wstring(1, ch));
}

LRESULT TakeCharacters(UINT message, WPARAM wParam) {
  try {
    if (message == WM_CHAR) TypeOnCommandLine(static_cast<wchar_t>(wParam));
  } catch (...) {
  }
  return 0;
}

class MainFrame : public CMDIFrameWnd {
 public:
  MainFrame() : CMDIFrameWnd(true) {}

 protected:
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM) override { return TakeCharacters(message, wParam); }
};

class DrawingWindow : public CWnd {
 public:
  DrawingWindow() : CWnd(true) {}

 protected:
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM) override { return TakeCharacters(message, wParam); }
};

MainFrame& Frame() {
  static MainFrame frame;
  return frame;
}

DrawingWindow& DocumentWindow() {
  static DrawingWindow window;
  return window;
}

int gDisplayUpdates = 0;

}  // namespace
}  // namespace kelhost::app

CMDIFrameWnd* acedGetAcadFrame() { return &kelhost::app::Frame(); }
CWnd* AfxGetMainWnd() { return &kelhost::app::Frame(); }
HWND adsw_acadMainWnd() { return kelhost::app::Frame().GetSafeHwnd(); }
HWND adsw_acadDocWnd() { return kelhost::app::DocumentWindow().GetSafeHwnd(); }

void acedUpdateDisplay() { ++kelhost::app::gDisplayUpdates; }

namespace kelhost {
int DisplayUpdateCount() { return app::gDisplayUpdates; }
}  // namespace kelhost
