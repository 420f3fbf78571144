// The family's debug switches and the debugger output.
//
// The switches say where developers' diagnostics go (the debugger output,
// "EXE", or the CAD command line, "CAD") and how result-buffer chains are
// printed. They live in section "Debug" of the initialisation settings
// (KEL::CInitSetting(), file KEL_INIT_INI) and are read from the file at
// every call, so a switch changed while the program runs takes effect at
// the next message:
//
//   key                getter                    what it switches on
//   CommandLineToEXE   GetDSCommandLineToEXE     DebugARXPrintf: debugger output
//   CommandLineToCAD   GetDSCommandLineToCAD     DebugARXPrintf: also the command line
//   DialogToEXE        GetDSDialogToEXE          DebugARXMsgBox: echo to the debugger output
//   DialogToCAD        GetDSDialogToCAD          DebugARXMsgBox: echo to the command line
//   MacroToEXE         GetDSMacroToEXE           DebugARXMacroPrintf: debugger output
//   MacroToCAD         GetDSMacroToCAD           DebugARXMacroPrintf: command line
//   FormatLspList      GetDSFormatLspList        KEL::RbToStrEx: one labelled line per node
//                                                instead of AutoLISP text
//
// A switch is on when its value (trimmed) is a non-zero integer or one of
// "true", "yes", "on" in any case; anything else, and a missing key, is
// off, so a fresh install prints no diagnostics.
#pragma once

bool GetDSCommandLineToEXE();
bool GetDSCommandLineToCAD();
bool GetDSDialogToEXE();
bool GetDSDialogToCAD();
bool GetDSMacroToEXE();
bool GetDSMacroToCAD();
bool GetDSFormatLspList();

// Each stores "1" or "0" under its key; false when the settings file could
// not be written (no initialisation settings path, or a write error).
bool SetDSCommandLineToEXE(bool on);
bool SetDSCommandLineToCAD(bool on);
bool SetDSDialogToEXE(bool on);
bool SetDSDialogToCAD(bool on);
bool SetDSMacroToEXE(bool on);
bool SetDSMacroToCAD(bool on);
bool SetDSFormatLspList(bool on);

// Formats with the platform's wide convention (%s takes a wide string) and
// writes the text to the debugger output (OutputDebugStringW: standard
// error, or the file named by KEL_DEBUG_LOG). A null format writes nothing.
void DebugPrintf(const wchar_t* format, ...);
