// Small path helpers shared by the directory getters.
#pragma once

#include "kelcad/platform.h"

namespace kelbase {
// dir with a separator at its end: a backslash or slash already there is
// kept, otherwise '/' is added (the module appends "User\\x.ini" directly).
CString WithTrailingSeparator(const CString& dir);
bool DirectoryExists(const CString& dir);
// Creates dir and any missing parents; true when it exists afterwards.
bool CreateDirectoryTree(const CString& dir);
// Sets dir to candidate (with a trailing separator) when that directory
// exists; otherwise empties dir. Returns whether it exists.
bool GiveExistingDirectory(const CString& candidate, CString& dir);
}  // namespace kelbase
