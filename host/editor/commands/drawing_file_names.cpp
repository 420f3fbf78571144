#include "editor/commands/drawing_file_names.h"

#include <sys/stat.h>

#include <unistd.h>

#include <cstdlib>
#include <vector>

#include "arx/acedads.h"
#include "arx/win32.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

bool IsSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

bool HasDirectory(const std::wstring& name) {
  for (wchar_t c : name)
    if (IsSeparator(c)) return true;
  return name.size() >= 2 && name[1] == L':';
}

bool EndsWithNoCase(const std::wstring& s, const std::wstring& tail) {
  return s.size() >= tail.size() && EqualNoCase(s.substr(s.size() - tail.size()), tail);
}

// The extension's dot, or npos when the file name has none.
size_t ExtensionDot(const std::wstring& path) {
  for (size_t k = path.size(); k > 0; --k) {
    if (IsSeparator(path[k - 1])) return std::wstring::npos;
    if (path[k - 1] == L'.') return k - 1;
  }
  return std::wstring::npos;
}

std::wstring Join(const std::wstring& dir, const std::wstring& name) {
  if (dir.empty()) return name;
  return IsSeparator(dir.back()) ? dir + name : dir + L"/" + name;
}

std::wstring EnvironmentVariable(const wchar_t* name) {
  std::vector<wchar_t> buffer(256);
  for (;;) {
    const DWORD n = GetEnvironmentVariableW(name, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (n == 0) return L"";
    if (n < buffer.size()) return std::wstring(buffer.data(), n);
    buffer.resize(n + 1);
  }
}

std::wstring DrawingDirectory() {
  resbuf rb{};
  if (acedGetVar(L"DWGPREFIX", &rb) != RTNORM || rb.restype != RTSTR || !rb.resval.rstring) return L"";
  std::wstring prefix = rb.resval.rstring;
  std::free(rb.resval.rstring);
  return prefix;
}

std::wstring WorkingDirectory() {
  char buf[4096];
  return getcwd(buf, sizeof buf) ? FromUtf8(buf) : L".";
}

// The file itself, or for a missing ".dwg" its ".dxf".
std::wstring Existing(const std::wstring& path) {
  if (IsExistingFile(path)) return path;
  if (EndsWithNoCase(path, L".dwg")) {
    const std::wstring dxf = path.substr(0, path.size() - 4) + L".dxf";
    if (IsExistingFile(dxf)) return dxf;
  }
  return L"";
}

}  // namespace

std::wstring Unquoted(const std::wstring& name) {
  if (name.size() >= 2 && name.front() == L'"' && name.back() == L'"') return name.substr(1, name.size() - 2);
  return name;
}

bool NamesAFile(const std::wstring& name) {
  return HasDirectory(name) || EndsWithNoCase(name, L".dwg") || EndsWithNoCase(name, L".dxf");
}

std::wstring FileBaseName(const std::wstring& path) {
  size_t start = path.size();
  while (start > 0 && !IsSeparator(path[start - 1]) && !(start == 2 && path[1] == L':')) --start;
  std::wstring base = path.substr(start);
  const size_t dot = ExtensionDot(base);
  return dot == std::wstring::npos ? base : base.substr(0, dot);
}

bool IsExistingFile(const std::wstring& path) {
  struct stat st;
  return !path.empty() && stat(NativePath(path).c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

std::wstring FindDrawingFile(const std::wstring& typed, std::vector<std::wstring>* searched) {
  std::wstring name = typed;
  if (name.empty()) return L"";
  if (ExtensionDot(name) == std::wstring::npos) name += L".dwg";
  if (HasDirectory(name)) return Existing(name);
  std::vector<std::wstring> dirs;
  const std::wstring drawingDir = DrawingDirectory();
  if (!drawingDir.empty()) dirs.push_back(drawingDir);
  dirs.push_back(WorkingDirectory());
  const std::wstring acad = EnvironmentVariable(L"ACAD");
  for (size_t start = 0; start <= acad.size();) {
    size_t end = acad.find(L';', start);
    if (end == std::wstring::npos) end = acad.size();
    if (end > start) dirs.push_back(acad.substr(start, end - start));
    start = end + 1;
  }
  for (const std::wstring& dir : dirs) {
    const std::wstring found = Existing(Join(dir, name));
    if (!found.empty()) return found;
  }
  if (searched) *searched = dirs;
  return L"";
}

std::wstring DrawingFileToWrite(const std::wstring& typed) {
  std::wstring name = typed;
  if (ExtensionDot(name) == std::wstring::npos) name += L".dwg";
  if (EndsWithNoCase(name, L".dwg")) name = name.substr(0, name.size() - 4) + L".dxf";
  return name;
}

}  // namespace kelhost::editor
