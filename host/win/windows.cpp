// Headless windows: every CWnd is a live window between its construction
// and its destruction; handles are looked up among the live ones, so a
// stale or made-up handle is refused instead of followed. What is asked of
// a window's appearance is kept for tests.
#include <algorithm>
#include <vector>

#include "arx/afx.h"
#include "kelhost/ui.h"

namespace {

std::vector<CWnd*>& LiveWindows() {
  static std::vector<CWnd*> windows;
  return windows;
}

std::vector<kelhost::WindowCall>& Calls() {
  static std::vector<kelhost::WindowCall> calls;
  return calls;
}

void Record(const CWnd* window, kelhost::WindowCall::Kind kind, int value) {
  Calls().push_back(kelhost::WindowCall{window->m_hWnd, kind, value});
}

}  // namespace

namespace kelhost {
const std::vector<WindowCall>& WindowCalls() { return Calls(); }
void ClearWindowCalls() { Calls().clear(); }
}  // namespace kelhost

CWnd::CWnd() : CWnd(false) {}

CWnd::CWnd(bool shown) : m_hWnd(this), mVisible(shown) { LiveWindows().push_back(this); }

CWnd::~CWnd() {
  auto& live = LiveWindows();
  live.erase(std::remove(live.begin(), live.end(), this), live.end());
}

CWnd* CWnd::FromHandle(HWND hWnd) {
  if (hWnd == nullptr) return nullptr;
  for (CWnd* w : LiveWindows())
    if (w->m_hWnd == hWnd) return w;
  return nullptr;
}

BOOL CWnd::ShowWindow(int nCmdShow) {
  Record(this, kelhost::WindowCall::kShow, nCmdShow);
  const bool wasVisible = mVisible;
  mVisible = nCmdShow != SW_HIDE;
  return wasVisible ? TRUE : FALSE;
}

BOOL CWnd::EnableWindow(BOOL bEnable) {
  Record(this, kelhost::WindowCall::kEnable, bEnable ? 1 : 0);
  const bool wasDisabled = !mEnabled;
  mEnabled = bEnable != FALSE;
  return wasDisabled ? TRUE : FALSE;
}

void CWnd::BringWindowToTop() { Record(this, kelhost::WindowCall::kBringToTop, 0); }

BOOL CWnd::SetForegroundWindow() {
  Record(this, kelhost::WindowCall::kSetForeground, 0);
  return TRUE;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) { return WindowProc(message, wParam, lParam); }

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  WindowProc(message, wParam, lParam);
  return TRUE;
}

LRESULT CWnd::WindowProc(UINT, WPARAM, LPARAM) { return 0; }

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  CWnd* w = CWnd::FromHandle(window);
  return w != nullptr ? w->SendMessage(message, wParam, lParam) : 0;
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  CWnd* w = CWnd::FromHandle(window);
  return w != nullptr ? w->PostMessage(message, wParam, lParam) : FALSE;
}

BOOL IsWindow(HWND window) { return CWnd::FromHandle(window) != nullptr ? TRUE : FALSE; }

BOOL ShowWindow(HWND window, int showCommand) {
  CWnd* w = CWnd::FromHandle(window);
  return w != nullptr ? w->ShowWindow(showCommand) : FALSE;
}

BOOL EnableWindow(HWND window, BOOL enable) {
  CWnd* w = CWnd::FromHandle(window);
  return w != nullptr ? w->EnableWindow(enable) : FALSE;
}

BOOL BringWindowToTop(HWND window) {
  CWnd* w = CWnd::FromHandle(window);
  if (w == nullptr) return FALSE;
  w->BringWindowToTop();
  return TRUE;
}

BOOL SetForegroundWindow(HWND window) {
  CWnd* w = CWnd::FromHandle(window);
  return w != nullptr ? w->SetForegroundWindow() : FALSE;
}

BOOL IsWindowVisible(HWND window) {
  CWnd* w = CWnd::FromHandle(window);
  return w != nullptr ? w->IsWindowVisible() : FALSE;
}

BOOL IsWindowEnabled(HWND window) {
  CWnd* w = CWnd::FromHandle(window);
  return w != nullptr ? w->IsWindowEnabled() : FALSE;
}
