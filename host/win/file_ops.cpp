// File and directory calls of the Windows family on family paths.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cwchar>
#include <string>

#include "arx/win32.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "win/unicode_locale.h"
#include "win/win_error.h"

namespace {
bool IsDirectory(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::string ParentOf(const std::string& path) {
  std::string p = path;
  while (p.size() > 1 && p.back() == '/') p.pop_back();
  size_t slash = p.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : p.substr(0, slash);
}

// Windows tells a missing file (the directory exists) from a missing path.
BOOL FailMissingOr(const std::string& path) {
  if (errno == ENOENT && !IsDirectory(ParentOf(path))) return kelhost::Fail(ERROR_PATH_NOT_FOUND);
  return kelhost::FailFromErrno();
}
}  // namespace

DWORD GetFileAttributesW(LPCWSTR fileName) {
  if (!fileName || !*fileName) {
    kelhost::Fail(ERROR_PATH_NOT_FOUND);
    return INVALID_FILE_ATTRIBUTES;
  }
  std::string path = kelhost::NativePath(fileName);
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) {
    FailMissingOr(path);
    return INVALID_FILE_ATTRIBUTES;
  }
  // Directories carry exactly the directory bit, as they usually do on
  // Windows (code compares with ==); files the archive bit.
  if (S_ISDIR(st.st_mode)) return FILE_ATTRIBUTE_DIRECTORY;
  DWORD attributes = FILE_ATTRIBUTE_ARCHIVE;
  if (::access(path.c_str(), W_OK) != 0) attributes |= FILE_ATTRIBUTE_READONLY;
  return attributes;
}

BOOL CreateDirectoryW(LPCWSTR path, void*) {
  if (!path || !*path) return kelhost::Fail(ERROR_PATH_NOT_FOUND);
  std::string native = kelhost::NativePath(path);
  if (::mkdir(native.c_str(), 0777) != 0) return FailMissingOr(native);
  return TRUE;
}

BOOL RemoveDirectoryW(LPCWSTR path) {
  if (!path || !*path) return kelhost::Fail(ERROR_PATH_NOT_FOUND);
  std::string native = kelhost::NativePath(path);
  if (::rmdir(native.c_str()) != 0) {
    if (errno == ENOTDIR && !IsDirectory(native) && ::access(native.c_str(), F_OK) == 0)
      return kelhost::Fail(ERROR_DIRECTORY);  // a file, not a directory
    if (errno == EEXIST) return kelhost::Fail(ERROR_DIR_NOT_EMPTY);
    return FailMissingOr(native);
  }
  return TRUE;
}

BOOL DeleteFileW(LPCWSTR fileName) {
  if (!fileName || !*fileName) return kelhost::Fail(ERROR_PATH_NOT_FOUND);
  std::string native = kelhost::NativePath(fileName);
  if (IsDirectory(native)) return kelhost::Fail(ERROR_ACCESS_DENIED);
  if (::unlink(native.c_str()) != 0) return FailMissingOr(native);
  return TRUE;
}

BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists) {
  if (!from || !to || !*from || !*to) return kelhost::Fail(ERROR_PATH_NOT_FOUND);
  std::string source = kelhost::NativePath(from);
  std::string target = kelhost::NativePath(to);
  if (IsDirectory(source) || IsDirectory(target)) return kelhost::Fail(ERROR_ACCESS_DENIED);
  std::string bytes;
  if (!kelhost::ReadWholeFile(source, bytes)) return FailMissingOr(source);
  if (failIfExists && ::access(target.c_str(), F_OK) == 0) return kelhost::Fail(ERROR_FILE_EXISTS);
  if (!kelhost::WriteFileAtomically(target, bytes)) return FailMissingOr(target);
  struct stat st;
  if (::stat(source.c_str(), &st) == 0) (void)::chmod(target.c_str(), st.st_mode & 07777);
  return TRUE;
}

// Moves a file or directory; like the platform's, it will not replace an
// existing target, and moves a file across file systems by copying it.
BOOL MoveFileW(LPCWSTR from, LPCWSTR to) {
  if (!from || !to || !*from || !*to) return kelhost::Fail(ERROR_PATH_NOT_FOUND);
  std::string source = kelhost::NativePath(from);
  std::string target = kelhost::NativePath(to);
  struct stat st;
  if (::lstat(source.c_str(), &st) != 0) return FailMissingOr(source);
  if (source != target && ::lstat(target.c_str(), &st) == 0) return kelhost::Fail(ERROR_ALREADY_EXISTS);
  if (::rename(source.c_str(), target.c_str()) == 0) return TRUE;
  if (errno != EXDEV || IsDirectory(source)) return FailMissingOr(target);
  if (!CopyFileW(from, to, TRUE)) return FALSE;
  if (::unlink(source.c_str()) != 0) return kelhost::FailFromErrno();
  return TRUE;
}

// The mode keeps what the C library understands (r w a + b x); text-mode
// and the platform's other letters are dropped. An encoding suffix
// (",ccs=UTF-8", "UNICODE", "UTF-16LE") makes a stream for wide
// characters; this host's files are UTF-8, so such a stream always reads
// and writes UTF-8, and skips a byte-order mark when reading, whatever the
// process locale.
FILE* _wfopen(const wchar_t* fileName, const wchar_t* mode) {
  if (!fileName || !mode || !*fileName) {
    errno = EINVAL;
    return nullptr;
  }
  std::wstring m(mode);
  bool wide = false;
  size_t comma = m.find(L',');
  if (comma != std::wstring::npos) {
    std::wstring rest = kelhost::ToUpper(m.substr(comma + 1));
    rest.erase(std::remove(rest.begin(), rest.end(), L' '), rest.end());
    if (rest.compare(0, 4, L"CCS=") != 0) {
      errno = EINVAL;
      return nullptr;
    }
    wide = true;
    m.erase(comma);
  }
  std::string narrow;
  for (wchar_t c : m)
    if (c == L'r' || c == L'w' || c == L'a' || c == L'+' || c == L'b' || c == L'x') narrow += static_cast<char>(c);
  if (narrow.empty() || (narrow[0] != 'r' && narrow[0] != 'w' && narrow[0] != 'a')) {
    errno = EINVAL;
    return nullptr;
  }
  FILE* f = std::fopen(kelhost::NativePath(fileName).c_str(), narrow.c_str());
  if (!f || !wide) return f;
  if (narrow[0] == 'r') {
    unsigned char mark[3];
    if (::pread(fileno(f), mark, 3, 0) == 3 && mark[0] == 0xEF && mark[1] == 0xBB && mark[2] == 0xBF)
      std::fseek(f, 3, SEEK_SET);
  }
  // The stream takes its conversion from the thread's locale when it
  // becomes wide. (The C library's own ",ccs=" leaks per stream.)
  if (locale_t utf8 = kelhost::UnicodeLocale()) {
    locale_t old = uselocale(utf8);
    std::fwide(f, 1);
    uselocale(old);
  }
  return f;
}
