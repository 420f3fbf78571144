// Putting a directory of the family on the process search path, so that
// programs and libraries kept there are found.
#include <string>

#include "environment.h"
#include "kelbase/directories.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"

namespace KEL {
namespace {
// A native directory without its trailing slashes ("/" stays "/").
std::string WithoutTrailingSlash(std::string dir) {
  while (dir.size() > 1 && dir.back() == '/') dir.pop_back();
  return dir;
}

bool IsOnSearchPath(const std::string& searchPath, const std::string& dir) {
  size_t start = 0;
  for (;;) {
    const size_t end = searchPath.find(':', start);
    const std::string entry = searchPath.substr(start, end == std::string::npos ? std::string::npos : end - start);
    if (!entry.empty() && WithoutTrailingSlash(entry) == dir) return true;
    if (end == std::string::npos) return false;
    start = end + 1;
  }
}
}  // namespace

bool AddPathEnvironmentVariable(const wchar_t* dir) {
  if (dir == nullptr || *dir == L'\0') return false;
  const std::string native = WithoutTrailingSlash(kelhost::NativePath(dir));
  if (native.empty() || native.find(':') != std::string::npos) return false;  // ':' separates entries

  CString current;
  kelbase::ReadEnvironment(L"PATH", current);
  const std::string searchPath = kelhost::ToUtf8(current.str());
  if (IsOnSearchPath(searchPath, native)) return true;

  const std::string updated = searchPath.empty() ? native : native + ":" + searchPath;
  return SetEnvironmentVariableW(L"PATH", kelhost::FromUtf8(updated).c_str()) != FALSE;
}
}  // namespace KEL
