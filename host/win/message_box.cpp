// Headless message boxes: shown on standard error, recorded for tests,
// answered at once with the box's default button.
#include <cstdio>
#include <string>
#include <vector>

#include "arx/afx.h"
#include "kelhost/text.h"
#include "kelhost/ui.h"

namespace kelhost {
namespace {
std::vector<ShownMessageBox>& Shown() {
  static std::vector<ShownMessageBox> shown;
  return shown;
}

// The program's name, which MFC uses as the caption when none is given.
const wchar_t kApplicationCaption[] = L"AutoCAD";

int ShowBox(const wchar_t* text, const wchar_t* caption, UINT type) {
  std::wstring t = text ? text : L"";
  std::wstring c = caption ? caption : L"";
  std::string line = "[" + ToUtf8(c) + "] " + ToUtf8(t) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  RecordMessageBox(t, c, type);
  return HeadlessMessageBoxAnswer(type);
}
}  // namespace

const std::vector<ShownMessageBox>& ShownMessageBoxes() { return Shown(); }
void ClearShownMessageBoxes() { Shown().clear(); }

void RecordMessageBox(const std::wstring& text, const std::wstring& caption, unsigned type) {
  Shown().push_back(ShownMessageBox{text, caption, type});
}

int HeadlessMessageBoxAnswer(unsigned type) {
  switch (type & 0xFu) {
    case MB_ABORTRETRYIGNORE: return IDABORT;
    case MB_YESNOCANCEL:
    case MB_YESNO: return IDYES;
    case MB_RETRYCANCEL: return IDRETRY;
    case MB_CANCELTRYCONTINUE: return IDCANCEL;
    default: return IDOK;
  }
}
}  // namespace kelhost

// Windows titles a box without a caption "Error".
int MessageBoxW(HWND, LPCWSTR text, LPCWSTR caption, UINT type) {
  return kelhost::ShowBox(text, caption ? caption : L"Error", type);
}

int AfxMessageBox(const wchar_t* text, UINT type, UINT) {
  return kelhost::ShowBox(text, kelhost::kApplicationCaption, type);
}

int CWnd::MessageBox(const wchar_t* text, const wchar_t* caption, UINT type) {
  return kelhost::ShowBox(text, caption ? caption : kelhost::kApplicationCaption, type);
}
