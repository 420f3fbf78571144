#include "profile_reader.h"

#include <atomic>

namespace kelbase {
namespace {
constexpr DWORD kFirstBufferSize = 512;
// Beyond this (16 million characters) a reply is taken as it stands rather than
// growing further, in case a file is not a settings file at all.
constexpr size_t kLargestBufferSize = size_t{1} << 24;

bool CanGrow(const std::vector<wchar_t>& buffer) { return buffer.size() < kLargestBufferSize; }

// Splits a list of null-terminated strings ending in an extra null.
std::vector<std::wstring> SplitNullList(const std::vector<wchar_t>& buffer, DWORD length) {
  std::vector<std::wstring> items;
  size_t start = 0;
  for (size_t i = 0; i < length; ++i) {
    if (buffer[i] == L'\0') {
      if (i > start) items.emplace_back(buffer.data() + start, i - start);
      start = i + 1;
    }
  }
  if (start < length) items.emplace_back(buffer.data() + start, length - start);
  return items;
}

// Runs a list-returning profile call, which reports truncation by
// returning two less than the buffer size.
template <class Call>
std::vector<std::wstring> ReadList(Call call) {
  std::vector<wchar_t> buffer(kFirstBufferSize);
  for (;;) {
    const DWORD size = static_cast<DWORD>(buffer.size());
    const DWORD length = call(buffer.data(), size);
    if (length + 2 < size || !CanGrow(buffer)) return SplitNullList(buffer, length < size ? length : size - 1);
    buffer.assign(buffer.size() * 2, L'\0');
  }
}

std::atomic<unsigned long> gWriteCount{0};
}  // namespace

CString ReadProfileString(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue,
                          const wchar_t* fileName) {
  std::vector<wchar_t> buffer(kFirstBufferSize);
  for (;;) {
    const DWORD size = static_cast<DWORD>(buffer.size());
    const DWORD length = GetPrivateProfileStringW(section, key, defaultValue, buffer.data(), size, fileName);
    // A value that filled the buffer may have been cut: ask again with more.
    if (length + 1 < size || !CanGrow(buffer)) {
      return CString(buffer.data(), static_cast<int>(length < size ? length : size - 1));
    }
    buffer.assign(buffer.size() * 2, L'\0');
  }
}

std::vector<std::wstring> ReadProfileSection(const wchar_t* section, const wchar_t* fileName) {
  return ReadList([&](wchar_t* buffer, DWORD size) {
    return GetPrivateProfileSectionW(section, buffer, size, fileName);
  });
}

std::vector<std::wstring> ReadProfileSectionNames(const wchar_t* fileName) {
  return ReadList([&](wchar_t* buffer, DWORD size) {
    return GetPrivateProfileSectionNamesW(buffer, size, fileName);
  });
}

unsigned long SettingsWriteCount() { return gWriteCount.load(); }
void NoteSettingsWritten() { ++gWriteCount; }
}  // namespace kelbase
