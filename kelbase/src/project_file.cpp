// Choosing the current project settings file for the session.
#include "kelbase/directories.h"

namespace KEL {
bool SetGCINIFilePath(const wchar_t* path) {
  if (path == nullptr || *path == L'\0') return false;
  return SetEnvironmentVariableW(L"KEL_GC_INI", path) != FALSE;
}
}  // namespace KEL
