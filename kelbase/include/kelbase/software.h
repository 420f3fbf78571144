// The family's software state: registry values, the in-application flag,
// the CAD menu, loaded modules.
#pragma once

#include "kelcad/platform.h"

namespace KEL {
// The family's state is kept under HKEY_CURRENT_USER\Software\KELSoft\KELCAD:
//   "InSoftware"  "1" or "0"   (SetIsInSoftware)
//   "Menu"        menu name, empty for the CAD program's own (SRCADMenu)

// Writes a string value (REG_SZ; valueName null or empty: the key's
// default value; a null value writes an empty one) under root\key,
// creating the key. False on failure.
bool SetRegStr(HKEY root, const wchar_t* key, const wchar_t* valueName, const wchar_t* value);
// Reads a string value of any length. False, with value emptied, when the
// key or value is missing or is not a string (REG_SZ, or REG_EXPAND_SZ
// handed over unexpanded).
bool GetRegStr(HKEY root, const wchar_t* key, const wchar_t* valueName, CString& value);
// Whether the CAD program runs as part of one of the family's products;
// kept in the registry, so it outlives the session. Unset reads false.
void SetIsInSoftware(bool in);
bool GetIsInSoftware();
// Restores the CAD program's own menu (toSoftware false) or the family's
// menu named by menuName (toSoftware true). This host has no menu bar: the
// requested menu is recorded as "Menu" under the product key. True when
// recorded.
bool SRCADMenu(bool toSoftware, const CString& menuName);
// The module is loaded (name with or without ".arx", any case, any folder:
// only file names are compared). Reads the platform's list of loaded
// modules up to its first entry that is not a string.
bool IsLoadedArx(const wchar_t* moduleName);

// Which product of the family is running, as a number the products agree
// on ("RNXPart" under the product key; 0 when unset or not a number).
int GetRNXPart();
bool SetRNXPart(int part);
// Where the CAD program's menu state is kept: the registry value that
// SRCADMenu records ("HKEY_CURRENT_USER\...\Menu"), or empty while none
// has been recorded.
CString CADMenuSetting();
// The version of this base library ("major.minor.patch").
const wchar_t* GetLibVersionNumber();
}  // namespace KEL
