// Where the platform looks for a support file named without a directory:
// the current directory, then each directory of the support file search
// path (the environment variable ACAD, directories separated by ';').
#pragma once

#include <optional>
#include <string>

namespace kelhost::app {

// Whether a family path names a directory ("dir\name", "C:name").
bool HasDirectoryPart(const std::wstring& name);
// A regular file there (any case, through NativePath).
bool IsRegularFile(const std::wstring& familyPath);
// The file as named; for a bare name, else the first directory of the
// search path that holds it (the path returned joins them).
std::optional<std::wstring> FindSupportFile(const std::wstring& name);

}  // namespace kelhost::app
