// Headless user interface: message boxes answer at once; tests can read
// what they showed, and what the module's MFC start-up asked for.
#pragma once

#include <string>
#include <vector>

#include "arx/dbid.h"

namespace kelhost {
struct ShownMessageBox {
  std::wstring text;
  std::wstring caption;
  unsigned type = 0;
};
// Every message box shown since the last clear, oldest first.
const std::vector<ShownMessageBox>& ShownMessageBoxes();
void ClearShownMessageBoxes();
void RecordMessageBox(const std::wstring& text, const std::wstring& caption, unsigned type);
// The answer a headless box gives: its default (first) button, so IDOK,
// IDYES for Yes/No boxes, IDABORT, IDRETRY or IDCANCEL for the others.
int HeadlessMessageBoxAnswer(unsigned type);
// How many MessageBeep sounds there were since the start.
int BeepCount();

// How often InitAcUiDLL ran, and whether AfxEnableControlContainer did.
int InitAcUiDLLCallCount();
bool ControlContainerEnabled();

// What was asked of windows (CWnd's calls and their Win32 forms) since the
// last clear, oldest first.
struct WindowCall {
  enum Kind { kShow, kEnable, kBringToTop, kSetForeground };
  const void* window = nullptr;  // the window's handle (HWND)
  Kind kind = kShow;
  int value = 0;  // kShow: the show code; kEnable: 1 or 0; otherwise 0
};
const std::vector<WindowCall>& WindowCalls();
void ClearWindowCalls();

// Whether the entity is shown highlighted (AcDbEntity::highlight,
// acedRedraw mode 3; unhighlight and mode 4 end it).
bool IsHighlighted(AcDbObjectId id);

// How often the display was brought up to date (acedUpdateDisplay).
int DisplayUpdateCount();
}  // namespace kelhost
