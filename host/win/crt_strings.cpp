// Case-insensitive C runtime string calls of the Windows family; case is
// mapped with Unicode rules whatever the process locale.
#include <cerrno>
#include <climits>
#include <cwchar>

#include "arx/win32.h"
#include "kelhost/text.h"

namespace {
// What the platform returns, with errno EINVAL, for a null argument.
constexpr int kNlsCompareError = INT_MAX;
}  // namespace

// Compares lower-case forms, as the platform documents for _wcsicmp.
int _wcsnicmp(const wchar_t* a, const wchar_t* b, size_t n) {
  if (!a || !b) {
    errno = EINVAL;
    return kNlsCompareError;
  }
  for (size_t i = 0; i < n; ++i) {
    wchar_t x = kelhost::ToLowerChar(a[i]), y = kelhost::ToLowerChar(b[i]);
    if (x != y) return x < y ? -1 : 1;
    if (x == 0) break;
  }
  return 0;
}

int _wcsicmp(const wchar_t* a, const wchar_t* b) { return _wcsnicmp(a, b, static_cast<size_t>(-1)); }

wchar_t* _wcsupr(wchar_t* s) {
  if (s)
    for (wchar_t* p = s; *p; ++p) *p = kelhost::ToUpperChar(*p);
  return s;
}

wchar_t* _wcslwr(wchar_t* s) {
  if (s)
    for (wchar_t* p = s; *p; ++p) *p = kelhost::ToLowerChar(*p);
  return s;
}
