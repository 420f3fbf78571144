// MkMDir: a directory with all its missing parents.
#include <sys/stat.h>

#include <cerrno>
#include <string>

#include "kelbase/files.h"
#include "kelhost/paths.h"

namespace KEL {

namespace {
bool IsDirectory(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}
}  // namespace

bool MkMDir(const wchar_t* dir) {
  if (dir == nullptr || *dir == L'\0') return false;
  std::string path = kelhost::NativePath(dir);
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  if (path.empty()) return false;
  // Each level in turn from the top; NativePath has already matched the
  // levels that exist in any case, so the rest are made as written.
  for (size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    const std::string level = path.substr(0, end);
    if (!IsDirectory(level) && ::mkdir(level.c_str(), 0777) != 0 && !(errno == EEXIST && IsDirectory(level)))
      return false;
    if (end == std::string::npos) break;
  }
  return IsDirectory(path);
}

}  // namespace KEL
