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
// Writes bytes to path atomically: a temporary file beside it (named
// "NAME.kelcad-save-PID-N.tmp"), then a rename. Through a symbolic link the
// file the link names is written, in that file's directory, and the link
// stays. Temporary files that earlier saves to the same place left behind
// (this process's own, or those of processes that no longer run) are
// removed first. Returns false with errno set (and leaves any old file
// untouched) on failure.
bool WriteFileAtomically(const std::string& nativePath, const std::string& bytes);
// Why a write failed, from its errno: "permission denied", "no space left
// on the device", "a directory is in the way"...
std::wstring WriteErrorText(int error);
// Reads a whole file; false when it cannot be read.
bool ReadWholeFile(const std::string& nativePath, std::string& bytes);
}  // namespace kelhost
