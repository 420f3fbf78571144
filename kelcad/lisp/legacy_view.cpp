// The legacy functions of the view and the drafting state: elevation and
// thickness, the pick box in drawing units, bringing points into view,
// the "sm" dialog and the beep.
#include <algorithm>
#include <cmath>

#include "kelcad/api/cadvar.h"
#include "kelcad/api/screen_view.h"
#include "kelcad/api/sysvar_access.h"
#include "kelcad/lisp/entmake_support.h"
#include "kelcad/lisp/legacy_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

// (set3d elevation thickness): objects of that thickness drawn from now on
// are centred on the elevation.
int Set3d() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:set3d时没输入参数.",
                       {{ArgKind::kNumber, L"\nError:set3d给定的第一个参数error."},
                        {ArgKind::kNumber, L"\nError:set3d给定的第二个参数error."}},
                       Fail, a))
    return kLegacyFailed;
  const double elevation = NumberOf(a[0]), thickness = NumberOf(a[1]);
  SetCADVar(L"ELEVATION", elevation - thickness / 2);
  SetCADVar(L"THICKNESS", thickness);
  acedRetVoid();
  return RTNORM;
}

// (get_dd): the pick box's size in drawing units, the view's height being
// taken as 200 pixels.
int GetDd() {
  acedRetReal(GetPickBoxWidth());
  return RTNORM;
}

// (zm2pt a b): T after zooming so that both points show with a tenth of
// their distance to spare on each side; nil when both are in view.
int Zm2Pt() {
  Set0();
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:zm2pt没有给定参数.",
                       {{ArgKind::kPoint, L"\nError:zm2pt给定参数1不是POINT."},
                        {ArgKind::kPoint, L"\nError:zm2pt给定参数2不是POINT."}},
                       Fail, a))
    return kLegacyFailed;
  ads_point p1 = {a[0]->resval.rpoint[0], a[0]->resval.rpoint[1], a[0]->resval.rpoint[2]};
  ads_point p2 = {a[1]->resval.rpoint[0], a[1]->resval.rpoint[1], a[1]->resval.rpoint[2]};
  if (IsPtInView(p1) && IsPtInView(p2)) return RTNORM;
  const double margin = 0.1 * acutDistance(p1, p2);
  ads_point q1, q2;
  acutPolar(p1, acutAngle(p2, p1), margin, q1);
  acutPolar(p2, acutAngle(p1, p2), margin, q2);
  ads_point centre = {(q1[0] + q2[0]) / 2, (q1[1] + q2[1]) / 2, (q1[2] + q2[2]) / 2};
  // The height that fits both the rise and the run of the moved points in
  // a view of the current proportions.
  ads_point lowerLeft, upperRight;
  GetScreenLBRT(lowerLeft, upperRight);
  const double aspect = (upperRight[0] - lowerLeft[0]) / (upperRight[1] - lowerLeft[1]);
  double height = std::max(std::fabs(q2[1] - q1[1]), std::fabs(q2[0] - q1[0]) / aspect);
  if (!(height > 0)) height = std::fabs(upperRight[1] - lowerLeft[1]);  // one point: keep the size
  acedCommandS(RTSTR, L"_.ZOOM", RTSTR, L"_C", RT3DPOINT, centre, RTREAL, height, RTNONE);
  acedRetT();
  return RTNORM;
}

// (pan2v point): T after panning the point to the middle of the view; nil
// when it is in view already.
int Pan2V() {
  Set0();
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[1];
  if (!CheckPositional(args, L"\nError:pan2v没有给定参数.", {{ArgKind::kPoint, L"\nError:panptv给定参数不是POINT."}},
                       Fail, a))
    return kLegacyFailed;
  ads_point p = {a[0]->resval.rpoint[0], a[0]->resval.rpoint[1], a[0]->resval.rpoint[2]};
  if (IsPtInView(p)) return RTNORM;
  ads_point centre = {0, 0, 0};
  GetCADVar(L"VIEWCTR", centre);
  acedCommandS(RTSTR, L"_.PAN", RT3DPOINT, p, RT3DPOINT, centre, RTNONE);
  acedRetT();
  return RTNORM;
}

// (sm): shows the dialog "sm" of the DCL file whose handle is in dcl_id.
int Sm() {
  acedRetVoid();
  resbuf* id = nullptr;
  int dclId = -1;
  if (acedGetSym(L"dcl_id", &id) == RTNORM && id != nullptr) {
    if (id->restype == RTSHORT) dclId = id->resval.rint;
    if (id->restype == RTLONG) dclId = static_cast<int>(id->resval.rlong);
  }
  acutRelRb(id);
  if (dclId < 0) {
    Fail(L"\nError:Unload dialog SM.");
    return kLegacyFailed;
  }
  ads_hdlg dialog = nullptr;
  if (ads_new_dialog(L"sm", dclId, nullptr, &dialog) != RTNORM || dialog == nullptr) {
    Fail(L"\nError:Cannot display dialog SM.");
    return kLegacyFailed;
  }
  int status = 0;
  ads_start_dialog(dialog, &status);
  return 1;
}

int Beep() {
  acedRetNil();
  MessageBeep(static_cast<UINT>(-1));
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
