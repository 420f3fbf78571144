// The calling thread's last error, and errno translated to Win32 codes.
#include "win/win_error.h"

#include <cerrno>

namespace {
thread_local DWORD gLastError = ERROR_SUCCESS;
}  // namespace

DWORD GetLastError() { return gLastError; }
void SetLastError(DWORD error) { gLastError = error; }

namespace kelhost {
DWORD Win32ErrorFromErrno(int err) {
  switch (err) {
    case 0: return ERROR_SUCCESS;
    case ENOENT: return ERROR_FILE_NOT_FOUND;
    case ENOTDIR: return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EISDIR:
    case EROFS:
    case EBUSY: return ERROR_ACCESS_DENIED;
    case EEXIST: return ERROR_ALREADY_EXISTS;
    case ENOTEMPTY: return ERROR_DIR_NOT_EMPTY;
    case ENAMETOOLONG: return ERROR_INVALID_NAME;
    case EINVAL: return ERROR_INVALID_PARAMETER;
    case ENOMEM: return ERROR_NOT_ENOUGH_MEMORY;
    case ENOSPC:
    case EIO: return ERROR_WRITE_FAULT;
    default: return ERROR_ACCESS_DENIED;
  }
}

BOOL FailFromErrno() {
  SetLastError(Win32ErrorFromErrno(errno));
  return FALSE;
}

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}
}  // namespace kelhost
