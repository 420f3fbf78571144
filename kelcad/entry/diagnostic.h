// Developers' diagnostics: three families of free functions that print a
// value where the base library's debug switches (kelbase/debug.h) say.
//   DebugARXPrintf       the debugger output when CommandLineToEXE is on,
//                        and then also the command line when
//                        CommandLineToCAD is on (never the command line
//                        alone: the CAD switch only widens the EXE one).
//   DebugARXMsgBox       a message box captioned "KEL调试信息" (OK only),
//                        then an echo to the debugger output (DialogToEXE)
//                        and the command line (DialogToCAD), each on its own.
//   DebugARXMacroPrintf  an echo to the debugger output (MacroToEXE) and the
//                        command line (MacroToCAD), then always the box.
// All share one text buffer of 40960 characters that every call overwrites;
// a longer text is cut there. The value overloads that print an array or a
// chain pass its text (KEL::PtArrayToStr, KEL::RbToStrEx, KEL::RbToStr) as
// the format, so a '%' in a printed string starts a conversion (which,
// having no value of the caller's to read, prints 0 or "(null)"): print
// arbitrary text with the core form and "%s". Main thread only.
#pragma once

#include "kelcad/platform.h"

void DebugARXPrintf(const wchar_t* format, ...);
void DebugARXPrintf(int value);
void DebugARXPrintf(double value);
void DebugARXPrintf(const ads_point point);
void DebugARXPrintf(const ads_name name);  // the first word, in hexadecimal
void DebugARXPrintf(AcGePoint2d point);
void DebugARXPrintf(AcGePoint3d point);
void DebugARXPrintf(const AcArray<AcGePoint2d>& points);
void DebugARXPrintf(const AcArray<AcGePoint3d>& points);
void DebugARXPrintf(const resbuf* chain);  // the AutoLISP form

void DebugARXMsgBox(const wchar_t* format, ...);
void DebugARXMsgBox(int value);
void DebugARXMsgBox(double value);
void DebugARXMsgBox(const ads_point point);
void DebugARXMsgBox(const ads_name name);
void DebugARXMsgBox(AcGePoint2d point);
void DebugARXMsgBox(AcGePoint3d point);
void DebugARXMsgBox(const AcArray<AcGePoint2d>& points);
void DebugARXMsgBox(const AcArray<AcGePoint3d>& points);
void DebugARXMsgBox(const resbuf* chain);  // the DXF form

void DebugARXMacroPrintf(const wchar_t* format, ...);
