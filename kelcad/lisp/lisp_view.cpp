// The current view from AutoLISP: its corners, the pick box, whether a
// point is in view, points put on the XY plane, and redrawing a set.
#include "kelcad/api/screen_view.h"
#include "kelcad/lisp/entmake_support.h"
#include "kelcad/lisp/query_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {

// Redraw modes beyond the last one (4, end highlighting) count as it.
constexpr int kLastRedrawMode = 4;
// Without a mode a set is drawn again as it is.
constexpr int kRedrawAgain = 1;

}  // namespace

int KEL_GetPickBoxWidth() {
  acedRetReal(GetPickBoxWidth());
  return RTNORM;
}

int KEL_GetScreenLBRT() {
  ads_point lowerLeft, upperRight;
  GetScreenLBRT(lowerLeft, upperRight);
  ReturnPointPair(lowerLeft, upperRight);
  return RTNORM;
}

// T stays the answer when the argument is missing or wrong: the family's
// programs read that as "in view" and carry on.
int KEL_IsPtInView() {
  const resbuf* arg = acedGetArgs();
  acedRetT();
  if (arg == nullptr) {
    acutPrintf(L"%s", L"\nError:panptv没有给定参数.");
    return RTNORM;
  }
  if (!IsPointArg(arg)) {
    acutPrintf(L"%s", L"\nError:panptv给定参数不是POINT.");
    return RTNORM;
  }
  ads_point p = {arg->resval.rpoint[0], arg->resval.rpoint[1], arg->restype == RT3DPOINT ? arg->resval.rpoint[2] : 0.0};
  ReturnBool(IsPtInView(p));
  return RTNORM;
}

int KEL_GetPMPt() {
  const resbuf* arg = acedGetArgs();
  if (!IsPointArg(arg)) {
    PrintUsageLines({L"\n KEL_GetPMPt 参数错", L"\n 功能：把一个点在Z置为0", L"\n 用法：KEL_GetPMPt 点"});
    return RTNORM;
  }
  const ads_point onPlane = {arg->resval.rpoint[0], arg->resval.rpoint[1], 0.0};
  acedRetPoint(onPlane);
  return RTNORM;
}

int KEL_SSRedraw() {
  const resbuf* set = acedGetArgs();
  if (set == nullptr) {
    acutPrintf(L"%s", L"\nError:ss_redraw没输入参数.");
    return RTERROR;
  }
  if (set->restype == RTNIL) return RTNORM;
  if (set->restype != RTPICKS) {
    acutPrintf(L"%s", L"\nError:ss_redraw参数1(ss).");
    return RTERROR;
  }
  int mode = kRedrawAgain;
  if (set->rbnext != nullptr && set->rbnext->restype == RTSHORT)
    mode = set->rbnext->resval.rint > kLastRedrawMode ? kLastRedrawMode : set->rbnext->resval.rint;
  ads_name name;
  ads_name_set(set->resval.rlname, name);
  RedrawSS(name, mode);
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
