#include "app/support_path.h"

#include <sys/stat.h>

#include <vector>

#include <cwchar>

#include "arx/acedads.h"
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

// The host keeps drawings as DXF: a ".dwg" that is not found is looked for
// as the ".dxf" of the same name, which is what WBLOCK writes for it.
int acedFindFile(const ACHAR* fname, ACHAR* result, size_t nBufLen) {
  try {
    if (!fname || !result || nBufLen == 0) return RTERROR;
    const std::wstring name(fname);
    std::optional<std::wstring> found = kelhost::app::FindSupportFile(name);
    const size_t n = name.size();
    if (!found && n > 4 && (name.compare(n - 4, 4, L".dwg") == 0 || name.compare(n - 4, 4, L".DWG") == 0))
      found = kelhost::app::FindSupportFile(name.substr(0, n - 4) + L".dxf");
    if (!found || found->size() >= nBufLen) return RTERROR;
    std::wmemcpy(result, found->c_str(), found->size() + 1);
    return RTNORM;
  } catch (...) {
    return RTERROR;
  }
}
