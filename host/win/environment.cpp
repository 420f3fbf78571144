// Process environment with the Windows calling convention; values are
// kept as UTF-8 in the native environment.
#include <cstdlib>
#include <cwchar>
#include <string>

#include "arx/win32.h"
#include "kelhost/text.h"
#include "win/win_error.h"

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size) {
  if (!name || !*name) {
    kelhost::Fail(ERROR_ENVVAR_NOT_FOUND);
    return 0;
  }
  const char* raw = std::getenv(kelhost::ToUtf8(name).c_str());
  if (!raw) {
    kelhost::Fail(ERROR_ENVVAR_NOT_FOUND);
    return 0;
  }
  std::wstring value = kelhost::FromUtf8(raw);
  if (!buffer || size <= value.size()) return static_cast<DWORD>(value.size() + 1);
  std::wmemcpy(buffer, value.c_str(), value.size() + 1);
  SetLastError(ERROR_SUCCESS);
  return static_cast<DWORD>(value.size());
}

BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value) {
  if (!name || !*name || std::wcschr(name, L'=')) return kelhost::Fail(ERROR_INVALID_PARAMETER);
  std::string n = kelhost::ToUtf8(name);
  int rc = value ? setenv(n.c_str(), kelhost::ToUtf8(value).c_str(), 1) : unsetenv(n.c_str());
  if (rc != 0) return kelhost::FailFromErrno();
  return TRUE;
}
