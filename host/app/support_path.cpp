#include "app/support_path.h"

#include <sys/stat.h>

#include <vector>

#include "arx/win32.h"
#include "kelhost/paths.h"

namespace kelhost::app {
namespace {

bool IsSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

std::wstring Join(const std::wstring& dir, const std::wstring& name) {
  if (dir.empty()) return name;
  return IsSeparator(dir.back()) ? dir + name : dir + L"/" + name;
}

std::wstring SearchPath() {
  std::vector<wchar_t> buffer(256);
  for (;;) {
    DWORD n = GetEnvironmentVariableW(L"ACAD", buffer.data(), static_cast<DWORD>(buffer.size()));
    if (n == 0) return L"";
    if (n < buffer.size()) return std::wstring(buffer.data(), n);
    buffer.resize(n + 1);
  }
}

}  // namespace

bool HasDirectoryPart(const std::wstring& name) {
  for (wchar_t c : name)
    if (IsSeparator(c)) return true;
  return name.size() >= 2 && name[1] == L':';
}

bool IsRegularFile(const std::wstring& familyPath) {
  struct stat st;
  return stat(NativePath(familyPath).c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

std::optional<std::wstring> FindSupportFile(const std::wstring& name) {
  if (name.empty()) return std::nullopt;
  if (IsRegularFile(name)) return name;
  if (HasDirectoryPart(name)) return std::nullopt;
  const std::wstring dirs = SearchPath();
  size_t start = 0;
  while (start < dirs.size()) {
    size_t end = dirs.find(L';', start);
    if (end == std::wstring::npos) end = dirs.size();
    const std::wstring dir = dirs.substr(start, end - start);
    if (!dir.empty() && IsRegularFile(Join(dir, name))) return Join(dir, name);
    start = end + 1;
  }
  return std::nullopt;
}

}  // namespace kelhost::app
