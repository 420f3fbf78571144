#include "file_problems.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "kelhost/text.h"

namespace kelbase {

void NoteProblem(CString* problem, const wchar_t* what, const std::string& path, const std::string& reason) {
  if (problem == nullptr) return;
  *problem = CString(what) + L" [" + CString(kelhost::FromUtf8(path)) + L"]";
  if (!reason.empty()) *problem += CString(L": ") + CString(kelhost::FromUtf8(reason));
}

std::string ErrnoText(int err) { return std::strerror(err); }

std::string Win32ErrorText(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND: return ErrnoText(ENOENT);
    case ERROR_PATH_NOT_FOUND: return ErrnoText(ENOTDIR);
    case ERROR_ACCESS_DENIED: return ErrnoText(EACCES);
    case ERROR_DIR_NOT_EMPTY: return ErrnoText(ENOTEMPTY);
    case ERROR_WRITE_FAULT: return ErrnoText(EIO);
    default: return "error " + std::to_string(error);
  }
}

std::string CanonicalPath(const std::string& nativePath) {
  if (nativePath.empty()) return std::string();
  char* resolved = ::realpath(nativePath.c_str(), nullptr);
  if (resolved == nullptr) return std::string();
  std::string result(resolved);
  std::free(resolved);
  return result;
}

namespace {
// canonical is home, or a directory above it.
bool HoldsHome(const std::string& canonical, const std::string& home) {
  if (home.empty()) return false;
  if (canonical == home) return true;
  return home.size() > canonical.size() && home.compare(0, canonical.size(), canonical) == 0 &&
         (canonical == "/" || home[canonical.size()] == '/');
}
}  // namespace

bool IsProtectedDirectory(const std::string& canonicalPath) {
  if (canonicalPath.empty() || canonicalPath == "/") return true;
  if (const char* home = std::getenv("HOME")) {
    if (HoldsHome(canonicalPath, CanonicalPath(home))) return true;
  }
  if (const passwd* account = ::getpwuid(::getuid())) {
    if (account->pw_dir != nullptr && HoldsHome(canonicalPath, CanonicalPath(account->pw_dir))) return true;
  }
  return false;
}

}  // namespace kelbase
