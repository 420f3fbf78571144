// Files and directories from AutoLISP: searching with wildcards, deleting
// files and trees, making directories.
#include "kelbase/kelbase.h"
#include "kelcad/lisp/file_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {

bool IsText(const resbuf* rb) { return rb != nullptr && rb->restype == RTSTR && rb->resval.rstring != nullptr; }

// The optional recycle-bin flag: absent or nil is false, T is true,
// anything else is refused.
bool ReadFlag(const resbuf* rb, bool& flag) {
  flag = false;
  if (rb == nullptr || rb->restype == RTNIL) return true;
  if (rb->restype != RTT) return false;
  flag = true;
  return true;
}

// A path and an optional recycle-bin flag; false (after the usage, with
// its error line when something was passed) for any other list.
bool ReadPathAndFlag(const resbuf* args, bool& flag, void (*printUsage)(bool passedSomething)) {
  if (IsText(args) && ReadFlag(args->rbnext, flag)) return true;
  printUsage(args != nullptr);
  return false;
}

void PrintDeleteFilesUsage(bool passedSomething) {
  if (passedSomething) acutPrintf(L"%s", L"\n KEL_DeleteFiles 参数错");
  PrintUsageLines({L"\n KEL_DeleteFiles", L"\n 功能:删除文件,支持通配符",
                   L"\n 用法:KEL_DeleteFiles 路径文件名 [t(送到回收站)|nil(不送到回收站,默认值)]",
                   L"\n      当最后一个参数为 T 是表明否送到回收站", L"\n 返回: T 成功 nil 失败"});
}

void PrintDeleteTreeUsage(bool passedSomething) {
  if (passedSomething) acutPrintf(L"%s", L"\n KEL_DeleteTree 参数错");
  PrintUsageLines({L"\n KEL_DeleteTree", L"\n 功能:删除目录树",
                   L"\n 用法:KEL_DeleteTree 目录名 [t(送到回收站)|nil(不送到回收站,默认值)]",
                   L"\n      当最后一个参数为 T 是表明否送到回收站",
                   L"\n 返回: T 成功(也可能本来就不存该目录) nil 失败"});
}

void PrintProblem(const wchar_t* function, const CString& problem) {
  if (!problem.IsEmpty()) acutPrintf(L"\n %s: %s", function, problem.GetString());
}

}  // namespace

int KEL_FindFile() {
  acedRetNil();
  const resbuf* args = acedGetArgs();
  if (!IsText(args)) {
    acutPrintf(L"%s", L"\n(kel_findfile)文件查找参数错!");
    return RTNORM;
  }
  WIN32_FIND_DATAW found;
  HANDLE search = FindFirstFileW(args->resval.rstring, &found);
  if (search == INVALID_HANDLE_VALUE) return RTNORM;
  resbuf* names = nullptr;
  resbuf** tail = &names;
  do {
    resbuf* name = acutNewRb(RTSTR);
    if (name == nullptr) break;
    acutNewString(found.cFileName, name->resval.rstring);
    *tail = name;
    tail = &name->rbnext;
  } while (FindNextFileW(search, &found));
  FindClose(search);
  if (names != nullptr) {
    acedRetList(names);
    acutRelRb(names);
  }
  return RTNORM;
}

// T when the file could NOT be deleted, nil when it was: the family's
// programs test the result that way round.
int KEL_DelFile() {
  acedRetNil();
  const resbuf* args = acedGetArgs();
  if (!IsText(args)) {
    acutPrintf(L"%s", L"\n(kel_delfile)必须跟字符串!");
    return RTNORM;
  }
  ReturnBool(DeleteFileW(args->resval.rstring) == FALSE);
  return RTNORM;
}

int KEL_DeleteFiles() {
  const resbuf* args = acedGetArgs();
  bool toRecycleBin = false;
  if (!ReadPathAndFlag(args, toRecycleBin, PrintDeleteFilesUsage)) return RTNORM;
  CString problem;
  const bool deleted = DeleteFiles(args->resval.rstring, toRecycleBin, &problem);
  if (!deleted) PrintProblem(L"KEL_DeleteFiles", problem);
  ReturnBool(deleted);
  return RTNORM;
}

int KEL_DeleteTree() {
  const resbuf* args = acedGetArgs();
  bool toRecycleBin = false;
  if (!ReadPathAndFlag(args, toRecycleBin, PrintDeleteTreeUsage)) return RTNORM;
  CString problem;
  const bool deleted = DeleteTree(args->resval.rstring, toRecycleBin, &problem);
  if (!deleted) PrintProblem(L"KEL_DeleteTree", problem);
  ReturnBool(deleted);
  return RTNORM;
}

int KEL_MkMDir() {
  const resbuf* args = acedGetArgs();
  if (!IsText(args)) {
    if (args != nullptr) acutPrintf(L"%s", L"\n KEL_MkMDir参数错");
    PrintUsageLines({L"\n KEL_MkMDir", L"\n 功能：创建多级目录", L"\n 用法：KEL_MkMDir 目录名",
                     L"\n 返回：T 成功 NIL 失败", L"\n 注意：该函数所创建的目录可以是多级的"});
    return RTNORM;
  }
  MkMDir(args->resval.rstring);
  ReturnBool(IsExist(args->resval.rstring));
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
