// The three cores of the developers' diagnostics and the text buffer they
// share. Where a message goes is read from the base library's switches at
// every call, so a developer can turn output on while the program runs.
#include "kelcad/entry/diagnostic.h"

#include <algorithm>
#include <cstdarg>
#include <cwchar>

#include "kelbase/debug.h"

namespace {
// Characters of the shared buffer, the terminator included.
constexpr size_t kBufferLength = 40960;
wchar_t gText[kBufferLength];

const wchar_t kCaption[] = L"KEL调试信息";

// Formats into the shared buffer, cutting the text at its end.
void FormatIntoBuffer(const wchar_t* format, va_list args) {
  CString text;
  text.FormatV(format, args);
  const size_t length = std::min(static_cast<size_t>(text.GetLength()), kBufferLength - 1);
  std::wmemcpy(gText, text.GetString(), length);
  gText[length] = L'\0';
}

void ToDebugger() { DebugPrintf(L"%s", gText); }
void ToCommandLine() { acutPrintf(L"%s", gText); }
void ShowBox() { MessageBoxW(nullptr, gText, kCaption, 0); }
}  // namespace

void DebugARXPrintf(const wchar_t* format, ...) {
  try {
    // The command line is reached only through the debugger-output switch.
    if (!GetDSCommandLineToEXE()) return;
    const bool toCad = GetDSCommandLineToCAD();
    va_list args;
    va_start(args, format);
    FormatIntoBuffer(format, args);
    va_end(args);
    ToDebugger();
    if (toCad) ToCommandLine();
  } catch (...) {
    // Diagnostics never disturb the caller.
  }
}

void DebugARXMsgBox(const wchar_t* format, ...) {
  try {
    va_list args;
    va_start(args, format);
    FormatIntoBuffer(format, args);
    va_end(args);
    ShowBox();
    if (GetDSDialogToEXE()) ToDebugger();
    if (GetDSDialogToCAD()) ToCommandLine();
  } catch (...) {
  }
}

void DebugARXMacroPrintf(const wchar_t* format, ...) {
  try {
    va_list args;
    va_start(args, format);
    FormatIntoBuffer(format, args);
    va_end(args);
    if (GetDSMacroToEXE()) ToDebugger();
    if (GetDSMacroToCAD()) ToCommandLine();
    ShowBox();
  } catch (...) {
  }
}
