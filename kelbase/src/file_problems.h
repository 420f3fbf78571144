// Shared pieces of the deleting helpers: how a failure is worded, and the
// directories that must never be deleted.
#pragma once

#include <string>

#include "kelcad/platform.h"

namespace kelbase {
// Sets *problem (when given) to "<what> [<native path>]: <reason>".
void NoteProblem(CString* problem, const wchar_t* what, const std::string& path, const std::string& reason);
// The C library's text for errno value err.
std::string ErrnoText(int err);
// A short text for the platform's last-error code.
std::string Win32ErrorText(DWORD error);

// The path with "." and ".." resolved and links followed; empty when it
// cannot be resolved (it does not exist).
std::string CanonicalPath(const std::string& nativePath);
// True for the file-system root, the user's home directory ($HOME and the
// account's home) and every directory above the home directory.
bool IsProtectedDirectory(const std::string& canonicalPath);
}  // namespace kelbase
