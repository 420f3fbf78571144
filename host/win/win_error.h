// Last-error bookkeeping shared by the Win32 calls of the host.
#pragma once

#include "arx/win32.h"

namespace kelhost {
// The Win32 error code closest to a C library errno value.
DWORD Win32ErrorFromErrno(int err);
// Sets the last error from errno and returns FALSE, for failing calls.
BOOL FailFromErrno();
// Sets the last error and returns FALSE.
BOOL Fail(DWORD error);
}  // namespace kelhost
