// The date, fixed-length and comma-separated strings, and the turning bar.
#include <ctime>

#include "kelbase/kelbase.h"
#include "kelcad/lisp/file_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

CString DateText(const std::tm& local) {
  CString text;
  text.Format(L"%02d:%02d  %02d/%02d/%04d", local.tm_hour, local.tm_min, local.tm_mon + 1, local.tm_mday,
              local.tm_year + 1900);
  return text;
}

int KEL_GetDate() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  acedRetStr(DateText(local));
  return RTNORM;
}

int KEL_FixLenStr() {
  const resbuf* args = acedGetArgs();
  const resbuf* length = args != nullptr ? args->rbnext : nullptr;
  const resbuf* flag = length != nullptr ? length->rbnext : nullptr;
  const bool flagOk = flag == nullptr || flag->restype == RTNIL || flag->restype == RTT;
  if (args == nullptr || args->restype != RTSTR || length == nullptr || length->restype != RTSHORT || !flagOk) {
    if (args != nullptr) acutPrintf(L"%s", L"\t参数错！\n");
    PrintUsageLines({L"KEL_FixLenStr\n",
                     L"功能： 把一个字符串变为定长字符串，如果字符串长度大于所给定的长度，则不进行任何变化\n",
                     L"用法： KEL_FixLenStr 字符串 长度  Nil,左对齐(默认)|T,右对齐\n", L"返回： 转化后的字符串"});
    return RTNORM;
  }
  const bool rightAligned = flag != nullptr && flag->restype == RTT;
  acedRetStr(FixLenStr(args->resval.rstring, length->resval.rint, rightAligned));
  return RTNORM;
}

// Every piece between commas, empty ones and blanks kept as they are, so
// that joining the pieces with commas gives the string back.
int KEL_Str2StrLst() {
  const resbuf* args = acedGetArgs();
  if (args == nullptr || args->restype != RTSTR) {
    PrintUsageLines({L"\nKEL_Str2StrLst", L"\n 功能：把用逗号分隔的字符串分解为字符串表",
                     L"\n 用法：KEL_Str2StrLst 字符串", L"\n 返回：LSP表，每个元素均为字符串"});
    return RTNORM;
  }
  CStringArray parts;
  KELOLD::DisCommaString(args->resval.rstring, parts, false);
  resbuf* list = nullptr;
  resbuf** tail = &list;
  for (int i = 0; i < parts.GetSize(); ++i) {
    *tail = acutBuildList(RTSTR, parts[i].GetString(), RTNONE);
    if (*tail == nullptr) break;
    tail = &(*tail)->rbnext;
  }
  if (list != nullptr) {
    acedRetList(list);
    acutRelRb(list);
  } else {
    acedRetNil();
  }
  return RTNORM;
}

// A backspace and one bar, turned a step on every call: printed from a
// long loop it draws a turning bar in place.
int KEL_Waiting() {
  static wchar_t frame[] = L"\b-";
  switch (frame[1]) {
    case L'-': frame[1] = L'\\'; break;
    case L'\\': frame[1] = L'|'; break;
    case L'|': frame[1] = L'/'; break;
    default: frame[1] = L'-'; break;
  }
  acutPrintf(L"%s", frame);
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
