// String values in the registry of the platform.
#include <vector>

#include "kelbase/software.h"

namespace KEL {
bool SetRegStr(HKEY root, const wchar_t* key, const wchar_t* valueName, const wchar_t* value) {
  HKEY handle = nullptr;
  DWORD disposition = 0;
  if (RegCreateKeyExW(root, key != nullptr ? key : L"", 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr,
                      &handle, &disposition) != ERROR_SUCCESS) {
    return false;
  }
  const CString text(value != nullptr ? value : L"");
  // String data is counted in bytes, terminator included, in the width of
  // the platform's wide character.
  const DWORD bytes = static_cast<DWORD>((text.GetLength() + 1) * sizeof(wchar_t));
  const LONG status =
      RegSetValueExW(handle, valueName, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.GetString()), bytes);
  RegCloseKey(handle);
  return status == ERROR_SUCCESS;
}

bool GetRegStr(HKEY root, const wchar_t* key, const wchar_t* valueName, CString& value) {
  value.Empty();
  HKEY handle = nullptr;
  if (RegOpenKeyExW(root, key != nullptr ? key : L"", 0, KEY_READ, &handle) != ERROR_SUCCESS) return false;

  bool found = false;
  std::vector<wchar_t> buffer(128);
  for (;;) {
    DWORD type = REG_NONE;
    DWORD bytes = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
    const LONG status =
        RegQueryValueExW(handle, valueName, nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()), &bytes);
    if (status == ERROR_MORE_DATA) {
      // bytes now holds the size needed; leave room for a terminator the
      // stored data may lack.
      buffer.assign(bytes / sizeof(wchar_t) + 2, L'\0');
      continue;
    }
    // An expandable string is a string too; it is handed over unexpanded.
    if (status == ERROR_SUCCESS && (type == REG_SZ || type == REG_EXPAND_SZ)) {
      size_t length = bytes / sizeof(wchar_t);
      if (length > buffer.size()) length = buffer.size();
      while (length > 0 && buffer[length - 1] == L'\0') --length;
      value = CString(buffer.data(), static_cast<int>(length));
      found = true;
    }
    break;
  }
  RegCloseKey(handle);
  return found;
}
}  // namespace KEL
