// FindFirstFileW / FindNextFileW / FindClose over the native directory
// stream of a family path.
#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <mutex>
#include <new>
#include <set>
#include <string>

#include "arx/win32.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "win/dos_wildcard.h"
#include "win/win_error.h"

namespace {

struct Search {
  DIR* stream;
  std::string directory;  // native, ending in '/' (or empty for ".")
  kelhost::DosWildcard pattern;
};

// Live searches, so that a stale or foreign handle is refused instead of
// being used.
std::mutex gSearchesMutex;
std::set<Search*> gSearches;

Search* LiveSearch(HANDLE handle) {
  std::lock_guard<std::mutex> lock(gSearchesMutex);
  Search* search = static_cast<Search*>(handle);
  return gSearches.count(search) != 0 ? search : nullptr;
}

// 100-nanosecond intervals from 1601-01-01 to the Unix epoch.
constexpr std::uint64_t kEpochOffset = 116444736000000000ULL;

FILETIME ToFileTime(const timespec& when) {
  const std::int64_t ticks = static_cast<std::int64_t>(when.tv_sec) * 10000000 + when.tv_nsec / 100;
  const std::uint64_t value = ticks < -static_cast<std::int64_t>(kEpochOffset)
                                  ? 0
                                  : static_cast<std::uint64_t>(ticks + static_cast<std::int64_t>(kEpochOffset));
  return FILETIME{static_cast<DWORD>(value & 0xFFFFFFFFu), static_cast<DWORD>(value >> 32)};
}

// Fills data for one entry; false when its name cannot be handed over
// (longer than the record holds).
bool Describe(const Search& search, const std::string& entry, const std::wstring& name, WIN32_FIND_DATAW* data) {
  if (name.size() >= MAX_PATH) return false;
  std::memset(data, 0, sizeof(*data));
  std::wmemcpy(data->cFileName, name.c_str(), name.size() + 1);
  const std::string path = (search.directory.empty() ? std::string("./") : search.directory) + entry;
  struct stat link;
  if (::lstat(path.c_str(), &link) != 0) {
    data->dwFileAttributes = FILE_ATTRIBUTE_NORMAL;  // vanished meanwhile: a name only
    return true;
  }
  struct stat target = link;
  DWORD attributes = 0;
  if (S_ISLNK(link.st_mode)) {
    attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    if (::stat(path.c_str(), &target) != 0) target = link;  // dangling: describe the link
  }
  if (S_ISDIR(target.st_mode)) {
    attributes |= FILE_ATTRIBUTE_DIRECTORY;
  } else {
    attributes |= FILE_ATTRIBUTE_ARCHIVE;
    const std::uint64_t size = static_cast<std::uint64_t>(target.st_size);
    data->nFileSizeLow = static_cast<DWORD>(size & 0xFFFFFFFFu);
    data->nFileSizeHigh = static_cast<DWORD>(size >> 32);
  }
  if ((target.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) attributes |= FILE_ATTRIBUTE_READONLY;
  data->dwFileAttributes = attributes;
  data->ftCreationTime = ToFileTime(target.st_ctim);
  data->ftLastAccessTime = ToFileTime(target.st_atim);
  data->ftLastWriteTime = ToFileTime(target.st_mtim);
  return true;
}

// The next entry that matches; false at the end of the directory.
bool NextMatch(Search& search, WIN32_FIND_DATAW* data) {
  while (const dirent* entry = ::readdir(search.stream)) {
    const std::wstring name = kelhost::FromUtf8(entry->d_name);
    if (search.pattern.Matches(name) && Describe(search, entry->d_name, name, data)) return true;
  }
  return false;
}

void Release(Search* search) {
  ::closedir(search->stream);
  delete search;
}

}  // namespace

HANDLE FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data) {
  if (pattern == nullptr || *pattern == L'\0' || data == nullptr) {
    kelhost::Fail(ERROR_INVALID_PARAMETER);
    return INVALID_HANDLE_VALUE;
  }
  std::wstring text(pattern);
  // The last component is the pattern; everything before it the directory.
  const size_t separator = text.find_last_of(L"\\/");
  std::wstring directory = separator == std::wstring::npos ? std::wstring() : text.substr(0, separator + 1);
  std::wstring namePattern = separator == std::wstring::npos ? text : text.substr(separator + 1);
  if (separator == std::wstring::npos && namePattern.size() >= 2 && namePattern[1] == L':') {
    namePattern.erase(0, 2);  // "C:name": a drive and a name in the current directory
  }
  if (namePattern.empty()) {
    kelhost::Fail(ERROR_FILE_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
  }
  if (namePattern.size() >= MAX_PATH) {  // no name can be that long
    kelhost::Fail(ERROR_INVALID_NAME);
    return INVALID_HANDLE_VALUE;
  }
  std::string nativeDirectory = directory.empty() ? std::string() : kelhost::NativePath(directory);
  if (!nativeDirectory.empty() && nativeDirectory.back() != '/') nativeDirectory += '/';
  DIR* stream = ::opendir(nativeDirectory.empty() ? "." : nativeDirectory.c_str());
  if (stream == nullptr) {
    kelhost::Fail(errno == EACCES ? ERROR_ACCESS_DENIED : ERROR_PATH_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
  }
  Search* search = nullptr;
  try {
    search = new Search{stream, nativeDirectory, kelhost::DosWildcard(namePattern)};
  } catch (const std::bad_alloc&) {
    ::closedir(stream);
    kelhost::Fail(ERROR_NOT_ENOUGH_MEMORY);
    return INVALID_HANDLE_VALUE;
  }
  if (!NextMatch(*search, data)) {
    Release(search);
    kelhost::Fail(ERROR_FILE_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
  }
  std::lock_guard<std::mutex> lock(gSearchesMutex);
  gSearches.insert(search);
  return search;
}

BOOL FindNextFileW(HANDLE handle, LPWIN32_FIND_DATAW data) {
  Search* search = LiveSearch(handle);
  if (search == nullptr) return kelhost::Fail(ERROR_INVALID_HANDLE);
  if (data == nullptr) return kelhost::Fail(ERROR_INVALID_PARAMETER);
  if (!NextMatch(*search, data)) return kelhost::Fail(ERROR_NO_MORE_FILES);
  return TRUE;
}

BOOL FindClose(HANDLE handle) {
  Search* search = nullptr;
  {
    std::lock_guard<std::mutex> lock(gSearchesMutex);
    search = static_cast<Search*>(handle);
    if (gSearches.erase(search) == 0) return kelhost::Fail(ERROR_INVALID_HANDLE);
  }
  Release(search);
  return TRUE;
}
