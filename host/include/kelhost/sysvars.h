// Host-side access to the system variables beyond acedGetVar/acedSetVar:
// what the host itself changes (the drawing's name, the view and UCS that
// commands set) and a fresh session for tests.
#pragma once

#include <string>

#include "arx/adsdef.h"

namespace kelhost::sysvars {

// What DWGNAME and DWGPREFIX report (the prefix ends with a separator).
void SetDrawingName(const std::wstring& prefix, const std::wstring& name);
// Sets a variable even when it is read-only for applications (VIEWCTR,
// UCSORG from the UCS command); the value is still checked. Variables the
// host works out (EXTMIN, VSMIN, SCREENSIZE, ...) cannot be set. RTNORM,
// RTREJ for a bad value, RTERROR for an unknown name.
int SetHostVar(const ACHAR* name, const resbuf* value);
// Session variables back to their defaults.
void ResetSession();

}  // namespace kelhost::sysvars
