// Typed access to system variables. Every call goes through one result
// buffer held by the module, so none of them is reentrant.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// The status of acedGetVar; the value is given only on RTNORM.
// The integer form takes the 16-bit value, sign-extended.
int GetCADVar(const wchar_t* name, int& v);
int GetCADVar(const wchar_t* name, double& v);
// The platform's copy of the text is released once taken.
int GetCADVar(const wchar_t* name, CString& v);
int GetCADVar(const wchar_t* name, ads_point v);
// Keeps the point in a module-held point and leaves v untouched: callers
// that need the value use the ads_point form.
int GetCADVar(const wchar_t* name, AcGePoint3d& v);

// The value, or -1 / -1.0 / an empty string when it cannot be read.
int GetCADIntVar(const wchar_t* name);
double GetCADDblVar(const wchar_t* name);
CString GetCADStrVar(const wchar_t* name);
// Filled through GetCADVar(name, AcGePoint3d&), so always the origin.
AcGePoint3d GetCADPtVar(const wchar_t* name);

// The status of acedSetVar. Text is copied into a module-held buffer
// first (a null text is refused with RTERROR); an integer goes as RTSHORT,
// so only its low 16 bits count.
int SetCADVar(const wchar_t* name, const wchar_t* v);
int SetCADVar(const wchar_t* name, int v);
int SetCADVar(const wchar_t* name, double v);
// Sends a point of its own module-held buffer into which only v's x is
// copied: y and z stay 0.0. Use the AcGePoint3d form for a whole point.
int SetCADVar(const wchar_t* name, ads_point v);
int SetCADVar(const wchar_t* name, AcGePoint3d v);

}  // namespace KEL
