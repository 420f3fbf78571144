// "kel_setgcinipath": names the project field file and takes its
// abbreviations over into the field map.
#include "kelcad/entry/gc_fields.h"
#include "kelcad/entry/lisp_handlers.h"
#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

namespace {

void PrintUsage() {
  acutPrintf(L"\n KEL_SetGCIniPath");
  acutPrintf(L"\n 功能：设工程INI中可能会用到的字段对照文件路径名");
  acutPrintf(L"\n 用法：KEL_SetGCIniPath 文件名相对路径");
  acutPrintf(L"\n   如：KEL_SetGCIniPath \"Is\\SetGetDa.dat\"");
}

}  // namespace

int KEL_SetGCIniPath() {
  acedRetNil();
  const resbuf* args = acedGetArgs();
  if (args == nullptr || args->restype != RTSTR) {
    PrintUsage();
    return RTNORM;
  }
  CString path;
  if (!LoadGCFieldFile(args->resval.rstring, path)) {
    acutPrintf(L"\n 您提供的工程INI字段对照文件路径 [%s] 错误!", path.GetString());
    PrintUsage();
    return RTNORM;
  }
  acedRetT();
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
