// The one place where the family's Windows paths meet the native file
// system: every file access of the host, the base library and the module
// goes through NativePath.
#pragma once

#include <string>

namespace kelhost {
// Backslashes become '/', a drive prefix ("C:") is dropped, and each
// component that does not exist as written is matched, without regard to
// case, against the entries of its directory. Components that match
// nothing are kept as written (so new files can be created).
std::string NativePath(const std::wstring& familyPath);
std::string NativePath(const wchar_t* familyPath);
// Writes bytes to path atomically: a temporary file beside it, then a
// rename. Returns false (and leaves any old file untouched) on failure.
bool WriteFileAtomically(const std::string& nativePath, const std::string& bytes);
// Reads a whole file; false when it cannot be read.
bool ReadWholeFile(const std::string& nativePath, std::string& bytes);
}  // namespace kelhost
