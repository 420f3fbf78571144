// Reads from private-profile files without a fixed limit: the buffer grows
// while the platform call reports that the text did not fit.
#pragma once

#include <string>
#include <vector>

#include "kelcad/platform.h"

namespace kelbase {
// The value of key in section, or defaultValue (the platform's lookup).
CString ReadProfileString(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue,
                          const wchar_t* fileName);
// "key=value" lines of a section, as the platform gives them.
std::vector<std::wstring> ReadProfileSection(const wchar_t* section, const wchar_t* fileName);
std::vector<std::wstring> ReadProfileSectionNames(const wchar_t* fileName);
// Every program-side write of a settings file bumps this count, so cached
// readings know to look again.
unsigned long SettingsWriteCount();
void NoteSettingsWritten();
}  // namespace kelbase
