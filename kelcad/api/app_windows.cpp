// Handing the screen between the main window and the family's windows.
#include "kelcad/api/app_windows.h"

namespace KEL {

namespace {

CWnd* MainWindow() { return CWnd::FromHandle(adsw_acadMainWnd()); }

void ShowOnTop(CWnd* w) {
  w->BringWindowToTop();
  w->ShowWindow(SW_SHOW);
  w->EnableWindow(TRUE);
}

}  // namespace

void ShowCadWindows(CWnd* w) {
  CWnd* main = MainWindow();
  if (main != nullptr) main->BringWindowToTop();
  if (w != nullptr) w->ShowWindow(SW_HIDE);
  if (main != nullptr) main->EnableWindow(TRUE);
}

void ShowMyWindowsAsModal(CWnd* w) {
  if (CWnd* main = MainWindow()) main->EnableWindow(FALSE);
  if (w != nullptr) ShowOnTop(w);
}

void ShowMyWindowsAsModeless(CWnd* w) {
  if (w != nullptr) ShowOnTop(w);
}

}  // namespace KEL
