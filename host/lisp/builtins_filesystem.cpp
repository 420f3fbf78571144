// Files and directories: vl-file-delete, -size, -rename, -copy,
// -directory-p, vl-directory-files, vl-mkdir, and the file-name functions
// vl-filename-base, -directory, -extension and -mktemp. Every path goes
// through the family's path mapping; names are given back as written.
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <vector>

#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "lisp/machine.h"
#include "win/dos_wildcard.h"

namespace kelhost::lisp {
namespace {

const std::wstring& PathArg(Machine& m, const ValuePtr& v) {
  const std::wstring& path = StrArg(m, v);
  if (!m.options.allowFiles) m.raise(L"file access is not allowed");
  return path;
}

bool Stat(const std::wstring& path, struct stat& st) { return ::stat(NativePath(path).c_str(), &st) == 0; }

bool IsSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

// Where the last component starts (after the last separator or drive).
size_t NameStart(const std::wstring& path) {
  size_t at = 0;
  for (size_t i = 0; i < path.size(); ++i)
    if (IsSeparator(path[i]) || (i == 1 && path[i] == L':')) at = i + 1;
  return at;
}

// The extension's '.' in the last component, or npos ("name." has none).
size_t ExtensionDot(const std::wstring& path) {
  const size_t start = NameStart(path);
  const size_t dot = path.rfind(L'.');
  if (dot == std::wstring::npos || dot < start || dot == start || dot + 1 == path.size()) return std::wstring::npos;
  return dot;
}

ValuePtr FileDelete(Machine& m, Args& a) {
  const std::wstring& path = PathArg(m, a[0]);
  struct stat st;
  if (!Stat(path, st) || S_ISDIR(st.st_mode)) return nullptr;
  return m.truth(std::remove(NativePath(path).c_str()) == 0);
}

// The size in bytes; 0 for a directory, nil for nothing there.
ValuePtr FileSize(Machine& m, Args& a) {
  const std::wstring& path = PathArg(m, a[0]);
  struct stat st;
  if (!Stat(path, st)) return nullptr;
  if (S_ISDIR(st.st_mode)) return MakeInt(0);
  if (st.st_size > 0x7FFFFFFF) return MakeReal(static_cast<double>(st.st_size));
  return MakeInt(static_cast<std::int32_t>(st.st_size));
}

// Refused when the new name is taken, as the platform's rename is.
ValuePtr FileRename(Machine& m, Args& a) {
  const std::wstring& from = PathArg(m, a[0]);
  const std::wstring& to = PathArg(m, a[1]);
  struct stat st;
  if (!Stat(from, st) || Stat(to, st)) return nullptr;
  return m.truth(std::rename(NativePath(from).c_str(), NativePath(to).c_str()) == 0);
}

// (vl-file-copy source destination [append]): the bytes copied; nil when
// the source cannot be read or the destination exists (without append).
ValuePtr FileCopy(Machine& m, Args& a) {
  const std::wstring& from = PathArg(m, a[0]);
  const std::wstring& to = PathArg(m, a[1]);
  const bool append = a.size() > 2 && a[2];
  struct stat st;
  if (!Stat(from, st) || S_ISDIR(st.st_mode)) return nullptr;
  std::string bytes;
  if (!ReadWholeFile(NativePath(from), bytes)) return nullptr;
  const std::string target = NativePath(to);
  struct stat existing;
  const bool exists = Stat(to, existing);
  if (exists && (!append || S_ISDIR(existing.st_mode))) return nullptr;
  if (append && exists) {
    std::string old;
    if (!ReadWholeFile(target, old)) return nullptr;
    bytes.insert(0, old);
    if (!WriteFileAtomically(target, bytes)) return nullptr;
    return MakeInt(static_cast<std::int32_t>(bytes.size() - old.size()));
  }
  if (!WriteFileAtomically(target, bytes)) return nullptr;
  return MakeInt(static_cast<std::int32_t>(bytes.size()));
}

ValuePtr DirectoryP(Machine& m, Args& a) {
  const std::wstring& path = PathArg(m, a[0]);
  struct stat st;
  return m.truth(Stat(path, st) && S_ISDIR(st.st_mode));
}

ValuePtr MkDir(Machine& m, Args& a) {
  const std::wstring& path = PathArg(m, a[0]);
  return m.truth(::mkdir(NativePath(path).c_str(), 0777) == 0);
}

// (vl-directory-files [directory pattern what]): what -1 directories only,
// 1 files only, else both. Names sorted; "." and ".." are directories.
ValuePtr DirectoryFiles(Machine& m, Args& a) {
  const std::wstring dir = a.size() > 0 && a[0] ? PathArg(m, a[0]) : L".";
  const std::wstring pattern = a.size() > 1 && a[1] ? StrArg(m, a[1]) : L"*.*";
  const std::int32_t what = a.size() > 2 && a[2] ? IntArg(m, a[2]) : 0;
  if (!m.options.allowFiles) m.raise(L"file access is not allowed");
  const std::string native = NativePath(dir.empty() ? L"." : dir);
  DIR* d = ::opendir(native.c_str());
  if (!d) return nullptr;
  const DosWildcard match(pattern);
  std::vector<std::wstring> names;
  while (const dirent* e = ::readdir(d)) {
    const std::wstring name = FromUtf8(e->d_name);
    struct stat st;
    const bool isDir = ::stat((native + "/" + e->d_name).c_str(), &st) == 0 && S_ISDIR(st.st_mode);
    if ((what < 0 && !isDir) || (what > 0 && isDir)) continue;
    if ((name == L"." || name == L"..") && native == "/") continue;
    if (match.Matches(name)) names.push_back(name);
  }
  ::closedir(d);
  m.step(names.size());
  std::sort(names.begin(), names.end());
  ListBuilder out;
  for (std::wstring& n : names) out.add(MakeStr(std::move(n)));
  return out.take();
}

// The last component without its extension.
ValuePtr FilenameBase(Machine& m, Args& a) {
  const std::wstring& path = StrArg(m, a[0]);
  const size_t start = NameStart(path);
  const size_t dot = ExtensionDot(path);
  return MakeStr(path.substr(start, (dot == std::wstring::npos ? path.size() : dot) - start));
}

// Everything before the last component, without the separator; "" for a
// bare name.
ValuePtr FilenameDirectory(Machine& m, Args& a) {
  const std::wstring& path = StrArg(m, a[0]);
  size_t start = NameStart(path);
  if (start == 0) return MakeStr(L"");
  size_t end = start;
  if (end > 1 && IsSeparator(path[end - 1]) && !(end == 3 && path[1] == L':') && end != 1) --end;
  return MakeStr(path.substr(0, end));
}

// The extension with its '.'; nil when there is none.
ValuePtr FilenameExtension(Machine& m, Args& a) {
  const std::wstring& path = StrArg(m, a[0]);
  const size_t dot = ExtensionDot(path);
  return dot == std::wstring::npos ? nullptr : MakeStr(path.substr(dot));
}

// The directory temporary files go to: TMPDIR, else /tmp.
std::wstring TempDirectory() {
  const char* t = std::getenv("TMPDIR");
  std::wstring dir = t && *t ? FromUtf8(t) : L"/tmp";
  while (dir.size() > 1 && IsSeparator(dir.back())) dir.pop_back();
  return dir;
}

// (vl-filename-mktemp [pattern directory extension]): a name no file has
// and that no earlier call of this session gave: the pattern's name (at
// most 5 characters, "$VL~~" by default) followed by a 3-digit number.
ValuePtr FilenameMktemp(Machine& m, Args& a) {
  static std::set<std::wstring> given;
  std::wstring pattern = a.size() > 0 && a[0] ? StrArg(m, a[0]) : L"$VL~~";
  std::wstring dir = a.size() > 1 && a[1] ? StrArg(m, a[1]) : L"";
  std::wstring ext = a.size() > 2 && a[2] ? StrArg(m, a[2]) : L"";
  if (!m.options.allowFiles) m.raise(L"file access is not allowed");
  // A directory or extension inside the pattern counts when not given.
  const size_t start = NameStart(pattern);
  if (dir.empty() && start > 0) dir = pattern.substr(0, start - 1);
  pattern.erase(0, start);
  if (const size_t dot = ExtensionDot(pattern); dot != std::wstring::npos) {
    if (ext.empty()) ext = pattern.substr(dot);
    pattern.erase(dot);
  }
  if (dir.empty()) dir = TempDirectory();
  if (!ext.empty() && ext[0] != L'.') ext.insert(0, L".");
  pattern = pattern.substr(0, 5);
  if (pattern.empty()) pattern = L"$VL~~";
  const std::wstring sep = IsSeparator(dir.back()) ? L"" : L"/";
  for (int n = 1; n <= 0xFFF; ++n) {
    const wchar_t* hex = L"0123456789abcdef";
    const wchar_t digits[4] = {hex[(n >> 8) & 15], hex[(n >> 4) & 15], hex[n & 15], 0};
    const std::wstring name = dir + sep + pattern + digits + ext;
    struct stat st;
    if (given.count(name) || Stat(name, st)) continue;
    given.insert(name);
    return MakeStr(name);
  }
  return nullptr;
}

}  // namespace

void RegisterFileSystemBuiltins(Machine& m) {
  m.defineBuiltin(L"VL-FILE-DELETE", FileDelete, 1, 1);
  m.defineBuiltin(L"VL-FILE-SIZE", FileSize, 1, 1);
  m.defineBuiltin(L"VL-FILE-RENAME", FileRename, 2, 2);
  m.defineBuiltin(L"VL-FILE-COPY", FileCopy, 2, 3);
  m.defineBuiltin(L"VL-FILE-DIRECTORY-P", DirectoryP, 1, 1);
  m.defineBuiltin(L"VL-MKDIR", MkDir, 1, 1);
  m.defineBuiltin(L"VL-DIRECTORY-FILES", DirectoryFiles, 0, 3);
  m.defineBuiltin(L"VL-FILENAME-BASE", FilenameBase, 1, 1);
  m.defineBuiltin(L"VL-FILENAME-DIRECTORY", FilenameDirectory, 1, 1);
  m.defineBuiltin(L"VL-FILENAME-EXTENSION", FilenameExtension, 1, 1);
  m.defineBuiltin(L"VL-FILENAME-MKTEMP", FilenameMktemp, 0, 3);
}

}  // namespace kelhost::lisp
