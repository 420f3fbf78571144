// Points along curves from AutoLISP.
#include "kelcad/api/curves.h"
#include "kelcad/lisp/entmake_support.h"
#include "kelcad/lisp/query_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

int KEL_GetRightPointAtDist() {
  const resbuf* curve = acedGetArgs();
  const resbuf* from = curve != nullptr ? curve->rbnext : nullptr;
  const resbuf* dist = from != nullptr ? from->rbnext : nullptr;
  if (curve == nullptr || curve->restype != RTENAME || !IsPointArg(from) || !IsNumberArg(dist)) {
    PrintUsageLines({L"\n 求曲线上右边定距离点", L"\n KEL_GetRightPointAtDist 实体名 点 距离", L"\n 返回：点或者nil"});
    return RTNORM;
  }
  acedRetNil();
  AcDbObjectId id;
  if (acdbGetObjectId(id, curve->resval.rlname) != Acad::eOk) return RTNORM;
  const AcGePoint3d pt(from->resval.rpoint[0], from->resval.rpoint[1],
                       from->restype == RT3DPOINT ? from->resval.rpoint[2] : 0.0);
  AcGePoint3d out;
  if (!GetRightPointAtDist(id, pt, NumberOf(dist), out)) return RTNORM;
  const ads_point result = {out.x, out.y, out.z};
  acedRetPoint(result);
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
