// The project field map: a project's settings use full field (section)
// names, which the family's AutoLISP programs may abbreviate. A field file
// (named relative to the install directory) lists the abbreviations in its
// section "SimpleName--FullName", and its section "Option" names the
// project settings file ("PrjIniFileName") and switches diagnostics on
// ("Debug"). The map lives as long as the module.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// Loads the field file installDir + relativePath (joined as they stand).
// Returns false, with nothing read, when the file does not exist; fullPath
// receives the joined path either way. Entries are taken over once: a
// count of entries taken survives between loads, so a later load only
// adds the entries beyond that count, and names already mapped keep their
// full names.
bool LoadGCFieldFile(const wchar_t* relativePath, CString& fullPath);

// The full name mapped to shortName (compared without regard to case);
// false, with fullName untouched, when the map does not hold it.
bool TranslateGCField(const wchar_t* shortName, CString& fullName);
// The field file's "Option"/"Debug" switch: diagnostic prints of the INI
// access through result buffers.
bool IsGCFieldDebug();
// The path of the field file last named (empty before the first load).
CString GCFieldFilePath();
// The project settings file name from the field file ("Project.dat" until
// one says otherwise), copied into a module-owned buffer that stays valid
// until the next call.
const wchar_t* GetGCSettingFileName();

}  // namespace KEL
