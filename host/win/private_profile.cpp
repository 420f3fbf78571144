// The private-profile calls of the Windows family over ProfileDocument.
// Each call reads the file afresh, so a change made by another program or
// another call is always seen.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "arx/win32.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "win/profile_document.h"
#include "win/win_error.h"

namespace {
using kelhost::ProfileDocument;

// A missing or unreadable file reads as empty.
ProfileDocument Load(LPCWSTR fileName) {
  std::string bytes;
  if (fileName && *fileName) kelhost::ReadWholeFile(kelhost::NativePath(fileName), bytes);
  return ProfileDocument::Parse(bytes);
}

// One string into the caller's buffer; a string that does not fit is cut
// and the result is size - 1.
DWORD CopyString(const std::wstring& s, LPWSTR buffer, DWORD size) {
  if (!buffer || size == 0) return 0;
  size_t n = s.size() < size ? s.size() : size - 1;
  std::wmemcpy(buffer, s.data(), n);
  buffer[n] = 0;
  return static_cast<DWORD>(n);
}

// A list of null-terminated strings ending with an extra null. When the
// list does not fit it is cut, still ends with two nulls, and the result is
// size - 2.
DWORD CopyList(const std::vector<std::wstring>& items, LPWSTR buffer, DWORD size) {
  if (!buffer || size == 0) return 0;
  if (size == 1) {
    buffer[0] = 0;
    return 0;
  }
  size_t pos = 0;
  for (const std::wstring& item : items) {
    if (pos + item.size() + 2 > size) {
      size_t room = size - 2 > pos ? size - 2 - pos : 0;
      std::wmemcpy(buffer + pos, item.data(), room < item.size() ? room : item.size());
      buffer[size - 2] = 0;
      buffer[size - 1] = 0;
      return size - 2;
    }
    std::wmemcpy(buffer + pos, item.data(), item.size());
    pos += item.size();
    buffer[pos++] = 0;
  }
  buffer[pos] = 0;
  if (pos == 0 && size >= 2) buffer[1] = 0;
  return static_cast<DWORD>(pos);
}

// Windows strips trailing blanks from the default value.
std::wstring DefaultValue(LPCWSTR value) {
  std::wstring v = value ? value : L"";
  while (!v.empty() && v.back() == L' ') v.pop_back();
  return v;
}

std::vector<std::wstring> Keys(const ProfileDocument& doc, const std::wstring& section) {
  std::vector<std::wstring> keys;
  for (const auto& entry : doc.Entries(section)) keys.push_back(entry.first);
  return keys;
}
}  // namespace

DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer, DWORD size,
                               LPCWSTR fileName) {
  if (!buffer || size == 0) return 0;
  ProfileDocument doc = Load(fileName);
  if (!section) return CopyList(doc.SectionNames(), buffer, size);
  if (!key) {
    // Listing keys of a section that has none gives the default instead.
    std::vector<std::wstring> keys = Keys(doc, section);
    if (keys.empty()) return CopyString(DefaultValue(defaultValue), buffer, size);
    return CopyList(keys, buffer, size);
  }
  std::wstring value;
  if (!*key || !doc.Find(section, key, value)) value = DefaultValue(defaultValue);
  return CopyString(value, buffer, size);
}

// The value's leading integer in base 10 (sign allowed, parsing stops at
// the first non-digit, so "12abc" is 12 and "abc" is 0); an absent or
// empty value gives the default.
UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, int defaultValue, LPCWSTR fileName) {
  if (!section || !key) return static_cast<UINT>(defaultValue);
  std::wstring value;
  if (!Load(fileName).Find(section, key, value) || value.empty()) return static_cast<UINT>(defaultValue);
  size_t i = 0;
  bool negative = false;
  if (value[i] == L'-' || value[i] == L'+') negative = value[i++] == L'-';
  std::uint32_t n = 0;
  for (; i < value.size() && value[i] >= L'0' && value[i] <= L'9'; ++i)
    n = n * 10u + static_cast<std::uint32_t>(value[i] - L'0');
  return negative ? static_cast<UINT>(0u - n) : static_cast<UINT>(n);
}

DWORD GetPrivateProfileSectionW(LPCWSTR section, LPWSTR buffer, DWORD size, LPCWSTR fileName) {
  if (!buffer || size == 0) return 0;
  if (!section) return CopyList({}, buffer, size);
  return CopyList(Load(fileName).EntryLines(section), buffer, size);
}

DWORD GetPrivateProfileSectionNamesW(LPWSTR buffer, DWORD size, LPCWSTR fileName) {
  return CopyList(Load(fileName).SectionNames(), buffer, size);
}

// Like Windows, it creates the file but not missing directories.
BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR fileName) {
  if (!section && !key && !value) return FALSE;  // "flush the cache": nothing is cached
  if (!section || !fileName || !*fileName) return kelhost::Fail(ERROR_INVALID_PARAMETER);
  // What would not read back the same is refused, and the file is left
  // as it was: a line break in a value would otherwise start new entries
  // or sections of its own.
  std::wstring stored, why;
  if (!ProfileDocument::Storable(section, key, value, stored, why)) {
    std::fprintf(stderr, "kelhost: %s: not written to %s: %s\n", kelhost::ToUtf8(key ? key : section).c_str(),
                 kelhost::ToUtf8(fileName).c_str(), kelhost::ToUtf8(why).c_str());
    return kelhost::Fail(ERROR_INVALID_PARAMETER);
  }
  const std::string path = kelhost::NativePath(fileName);
  std::string bytes;
  if (!kelhost::ReadWholeFile(path, bytes) && ::access(path.c_str(), F_OK) == 0)
    return kelhost::Fail(ERROR_ACCESS_DENIED);  // never replace a file we could not read
  ProfileDocument doc = ProfileDocument::Parse(bytes);
  if (!key) {
    if (!doc.DeleteSection(section)) return TRUE;
  } else if (!value) {
    if (!doc.DeleteKey(section, key)) return TRUE;
  } else {
    doc.Set(section, key, stored);
  }
  if (!kelhost::WriteFileAtomically(path, doc.Serialize())) {
    std::string dir = path.substr(0, path.find_last_of('/') == std::string::npos ? 0 : path.find_last_of('/'));
    if (!dir.empty() && ::access(dir.c_str(), F_OK) != 0) return kelhost::Fail(ERROR_PATH_NOT_FOUND);
    return kelhost::FailFromErrno();
  }
  return TRUE;
}
