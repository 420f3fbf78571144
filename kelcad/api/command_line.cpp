// Typing on the command line through the document window.
#include "kelcad/api/command_line.h"

#include "kelcad/api/drawing_in_use.h"
#include "kelcad/platform.h"

namespace KEL {

namespace {

constexpr wchar_t kEscape = 27;
constexpr wchar_t kEnter = 13;

void Type(HWND window, wchar_t ch) { ::SendMessageW(window, WM_CHAR, static_cast<WPARAM>(ch), 0); }

}  // namespace

bool ClearAcadCmdLine() {
  HWND window = adsw_acadDocWnd();
  if (window == nullptr) return false;
  Type(window, kEscape);
  Type(window, kEscape);
  return true;
}

bool SendMsgToAcad(const wchar_t* text, bool enter) {
  HWND window = adsw_acadDocWnd();
  if (window == nullptr) return false;
  for (const wchar_t* p = text; p != nullptr && *p != L'\0'; ++p) Type(window, *p);
  if (enter) Type(window, kEnter);
  return true;
}

void SendStringToExecute(const wchar_t* text, bool enter) {
  AcApDocManager* manager = acDocManager;
  if (manager != nullptr && text != nullptr) manager->sendStringToExecute(manager->curDocument(), text, true, false, true);
  if (enter) {
    if (HWND window = adsw_acadDocWnd()) Type(window, kEnter);
  }
}

bool FlushAcadGraphicsQueue() {
  if (DrawingInUse() == nullptr) return false;
  acedUpdateDisplay();
  return true;
}

}  // namespace KEL
