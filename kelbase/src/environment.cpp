#include "environment.h"

#include <vector>

namespace kelbase {
bool ReadEnvironment(const wchar_t* name, CString& value) {
  value.Empty();
  if (name == nullptr || *name == L'\0') return false;
  std::vector<wchar_t> buffer(256);
  for (;;) {
    const DWORD size = static_cast<DWORD>(buffer.size());
    const DWORD n = GetEnvironmentVariableW(name, buffer.data(), size);
    if (n == 0) return false;
    if (n < size) {  // fitted: n is the length without the terminator
      value = CString(buffer.data(), static_cast<int>(n));
      return true;
    }
    buffer.resize(static_cast<size_t>(n) + 1);  // n is the size needed
  }
}
}  // namespace kelbase
