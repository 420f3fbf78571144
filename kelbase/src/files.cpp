#include "kelbase/files.h"

#include "kelcad/platform.h"

namespace KEL {
bool IsExist(const wchar_t* path) {
  if (path == nullptr || *path == L'\0') return false;
  return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}
}  // namespace KEL
