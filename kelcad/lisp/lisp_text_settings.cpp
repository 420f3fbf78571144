// The family's text height, dimension precision and text width factor from
// AutoLISP.
#include "kelcad/api/kept_settings.h"
#include "kelcad/api/module_info.h"
#include "kelcad/api/user_settings.h"
#include "kelcad/lisp/query_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

int KEL_GetTextHigh() {
  acedRetReal(GetTextHigh());
  return RTNORM;
}

// The module keeps the value before the drawing is asked to, so its copy
// changes even when the drawing refuses it.
int KEL_SetTextHigh() {
  const resbuf* arg = acedGetArgs();
  acedRetNil();
  if (arg == nullptr || (arg->restype != RTREAL && arg->restype != RTSHORT)) {
    PrintUsageLines({L"\n KEL_SetTextHigh", L"\n 功能：设当字高", L"\n 用法： KEL_SetTextHigh   整数或者实数",
                     L"\n 返回： 成功： T  ,失败： nil"});
    return RTNORM;
  }
  const double h = arg->restype == RTSHORT ? arg->resval.rint : arg->resval.rreal;
  KeepTextHigh(h);
  ReturnBool(SetTextHigh(h));
  return RTNORM;
}

int KEL_GetBZXSW() {
  acedRetInt(GetBZXSW());
  return RTNORM;
}

int KEL_SetBZXSW() {
  const resbuf* arg = acedGetArgs();
  acedRetNil();
  if (arg == nullptr || arg->restype != RTSHORT) {
    PrintUsageLines({L"\n KEL_SetBZXSW", L"\n 功能：设标注小数位", L"\n 用法：KEL_SetBZXSW 整数"});
    return RTNORM;
  }
  ReturnBool(SetBZXSW(arg->resval.rint));
  return RTNORM;
}

int KEL_GetTextWidthFactor() {
  acedRetReal(GetTextWidthFactor());
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
