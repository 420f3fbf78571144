// The family's software state: registry values, the in-application flag,
// the CAD menu, loaded modules.
#pragma once

#include "kelcad/platform.h"

namespace KEL {
// Writes a string value (valueName null or empty: the key's default
// value) under root\key, creating the key. False on failure.
bool SetRegStr(HKEY root, const wchar_t* key, const wchar_t* valueName, const wchar_t* value);
bool GetRegStr(HKEY root, const wchar_t* key, const wchar_t* valueName, CString& value);
// Whether the CAD program runs as part of one of the family's products.
void SetIsInSoftware(bool in);
bool GetIsInSoftware();
// Restores the CAD program's own menu (toSoftware false) or the family's
// menu named by menuName (toSoftware true).
bool SRCADMenu(bool toSoftware, const CString& menuName);
// The module is loaded (name with or without ".arx", any case).
bool IsLoadedArx(const wchar_t* moduleName);
}  // namespace KEL
