#include "directory_helpers.h"

#include <filesystem>
#include <system_error>

#include "kelhost/paths.h"

namespace kelbase {
CString WithTrailingSeparator(const CString& dir) {
  if (dir.IsEmpty()) return dir;
  const wchar_t last = dir.GetAt(dir.GetLength() - 1);
  if (last == L'/' || last == L'\\') return dir;
  return dir + L'/';
}

bool DirectoryExists(const CString& dir) {
  if (dir.IsEmpty()) return false;
  const DWORD attributes = GetFileAttributesW(dir);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool CreateDirectoryTree(const CString& dir) {
  if (dir.IsEmpty()) return false;
  if (DirectoryExists(dir)) return true;
  std::error_code error;
  std::filesystem::create_directories(kelhost::NativePath(dir.str()), error);
  return DirectoryExists(dir);
}

bool GiveExistingDirectory(const CString& candidate, CString& dir) {
  const CString withSeparator = WithTrailingSeparator(candidate);
  if (DirectoryExists(withSeparator)) {
    dir = withSeparator;
    return true;
  }
  dir.Empty();
  return false;
}
}  // namespace kelbase
