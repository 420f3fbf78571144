// AutoLISP access to the tolerances: read, set and compare. A wrong call
// prints the function's usage lines and sets no value.
#include <cstring>
#include <initializer_list>

#include "kelbase/kelbase.h"
#include "kelcad/entry/lisp_handlers.h"
#include "kelcad/entry/tolerance.h"
#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

namespace {

void PrintLines(std::initializer_list<const wchar_t*> lines) {
  for (const wchar_t* line : lines) acutPrintf(L"%s", line);
}

bool IsReal(const resbuf* rb) { return rb != nullptr && rb->restype == RTREAL; }

// A number of any of the three numeric kinds, as a real.
bool ReadNumber(const resbuf* rb, double& value) {
  if (rb == nullptr) return false;
  switch (rb->restype) {
    case RTSHORT: value = rb->resval.rint; return true;
    case RTLONG: value = rb->resval.rlong; return true;
    case RTREAL: value = rb->resval.rreal; return true;
    default: return false;
  }
}

// The second point of a comparison is read as three doubles whatever the
// node's type, as the family's code has always passed it.
void ReadPointBits(const resbuf* rb, ads_point pt) {
  std::memcpy(pt, rb->resval.rpoint, sizeof(ads_point));
}

}  // namespace

int KEL_GetPointEQ() {
  acedRetReal(GetPointEQ());
  return RTNORM;
}

int KEL_SetPointEQ() {
  const resbuf* args = acedGetArgs();
  if (!IsReal(args)) {
    PrintLines({L"\n KEL_SetPointEQ 参数错", L"\n 功能：设置点比较精度", L"\n 用法：KEL_SetPointEQ 0.001"});
    return RTNORM;
  }
  SetPointEQ(args->resval.rreal);
  return RTNORM;
}

int KEL_GetVectorEQ() {
  acedRetReal(GetVectorEQ());
  return RTNORM;
}

int KEL_SetVectorEQ() {
  const resbuf* args = acedGetArgs();
  if (!IsReal(args)) {
    PrintLines({L"\n KEL_SetVectorEQ 参数错", L"\n 功能：设置向量比较精度(用全局点比较精度生成)",
                L"\n 用法：KEL_SetVectorEQ 0.001"});
    return RTNORM;
  }
  SetVectorEQ(args->resval.rreal);
  return RTNORM;
}

int KEL_GetDoubleEQ() {
  acedRetReal(GetDoubleEQ());
  return RTNORM;
}

int KEL_SetDoubleEQ() {
  const resbuf* args = acedGetArgs();
  if (!IsReal(args)) {
    PrintLines({L"\n KEL_SetDoubleEQ 参数错", L"\n 功能：设置实数比较精度", L"\n 用法：KEL_SetDoubleEQ 0.001"});
    return RTNORM;
  }
  SetDoubleEQ(args->resval.rreal);
  return RTNORM;
}

int KEL_IsPointEQ() {
  const resbuf* args = acedGetArgs();
  if (args == nullptr || args->restype != RT3DPOINT || args->rbnext == nullptr) {
    PrintLines({L"\n KEL_IsPointEQ 参数错", L"\n 功能：判断两个三维点是否相等", L"\n 用法：KEL_IsPointEQ 点1 点2 "});
    return RTNORM;
  }
  ads_point second;
  ReadPointBits(args->rbnext, second);
  if (IsPointEQ(args->resval.rpoint, second, -1.0))
    acedRetT();
  else
    acedRetNil();
  return RTNORM;
}

int KEL_IsPoint2dEQ() {
  const resbuf* args = acedGetArgs();
  if (args == nullptr || (args->restype != RT3DPOINT && args->restype != RTPOINT) || args->rbnext == nullptr) {
    PrintLines({L"\n KEL_IsPoint2dEQ 参数错", L"\n 功能：判断两个二维点是否相等,可把三维点当二维点处理",
                L"\n 用法：KEL_IsPoint2dEQ 点1 点2 "});
    return RTNORM;
  }
  ads_point second;
  ReadPointBits(args->rbnext, second);
  if (IsPoint2dEQ(args->resval.rpoint, second, -1.0))
    acedRetT();
  else
    acedRetNil();
  return RTNORM;
}

int KEL_IsDoubleEQ() {
  const resbuf* args = acedGetArgs();
  double a = 0.0, b = 0.0;
  if (!ReadNumber(args, a) || !ReadNumber(args->rbnext, b)) {
    PrintLines({L"\n KEL_IsDoubleEQ 参数错", L"\n 功能：判断两个实数是否相等", L"\n 用法：KEL_IsDoubleEQ 数字一 数字二",
                L"\n 注意：不用进行类型转换"});
    return RTNORM;
  }
  if (IsDoubleEQ(a, b, -1.0))
    acedRetT();
  else
    acedRetNil();
  return RTNORM;
}

int KEL_IsZero() {
  const resbuf* args = acedGetArgs();
  if (!IsReal(args)) {
    PrintLines({L"\n KEL_IsZero", L"\n 功能：判断一个实数是否为 0 ", L"\n 用法：KEL_IsZero 实数",
                L"\n 返回：T 是 0 ,nil 不是"});
    return RTNORM;
  }
  if (ISZERO(args->resval.rreal))
    acedRetT();
  else
    acedRetNil();
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
