// The family's directories from AutoLISP; "" when one cannot be given.
#include "kelbase/kelbase.h"
#include "kelcad/lisp/file_handlers.h"

namespace KEL {
namespace Lisp {

namespace {
int ReturnDirectory(bool found, const CString& dir) {
  acedRetStr(found ? dir.GetString() : L"");
  return RTNORM;
}
}  // namespace

int KEL_GetInstallDir() {
  CString dir;
  const bool found = GetInstallDir(dir);
  return ReturnDirectory(found, dir);
}

int KEL_GetLocalDir() {
  CString dir;
  const bool found = GetLocalDir(dir);
  return ReturnDirectory(found, dir);
}

// The old name of "kel_getlocaldir": it says so in a message box first.
int KEL_GetSoftUserPath() {
  AfxMessageBox(L"函数名：KEL_GetSoftUserPath\n当前返回的本地目录");
  return KEL_GetLocalDir();
}

int KEL_GetWorkDir() {
  CString dir;
  const bool found = GetWorkDir(dir, false);
  return ReturnDirectory(found, dir);
}

}  // namespace Lisp
}  // namespace KEL
