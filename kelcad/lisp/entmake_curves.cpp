// "kel_entmakearc" (an arc through three points) and "kel_entmakenut" (a
// ring drawn as a wide closed polyline).
#include <algorithm>
#include <cmath>
#include <cwchar>

#include "kelcad/api/cadvar.h"
#include "kelcad/lisp/entity_handlers.h"
#include "kelcad/lisp/entmake_support.h"
#include "kelcad/resbuf/rbchain.h"

namespace KEL {
namespace Lisp {

namespace {

bool SameName(const ads_name a, const ads_name b) { return a[0] == b[0] && a[1] == b[1]; }

// The ARC command's arc through the three points, taken apart: its centre,
// radius and angles, and the arc itself deleted. False, with nothing
// changed, when the command made no arc.
bool ArcThrough(const resbuf* start, const resbuf* middle, const resbuf* end, ads_point centre, double& radius,
                double& startAngle, double& endAngle) {
  ads_name before = {0, 0};
  acdbEntLast(before);
  if (acedCommandS(RTSTR, L"ARC", RT3DPOINT, start->resval.rpoint, RT3DPOINT, middle->resval.rpoint, RT3DPOINT,
                   end->resval.rpoint, RTNONE) != RTNORM)
    return false;
  ads_name made = {0, 0};
  // A command that ran without making an arc leaves the last entity as it
  // was: that one is not ours to take.
  if (acdbEntLast(made) != RTNORM || SameName(made, before)) return false;
  resbuf* list = acdbEntGet(made);
  resbuf* type = GetRbXDXF(list, 0);
  const bool isArc = type != nullptr && type->resval.rstring != nullptr && std::wcscmp(type->resval.rstring, L"ARC") == 0;
  resbuf* c = GetRbXDXF(list, 10);
  resbuf* r = GetRbXDXF(list, 40);
  resbuf* a0 = GetRbXDXF(list, 50);
  resbuf* a1 = GetRbXDXF(list, 51);
  const bool complete = isArc && c != nullptr && r != nullptr && a0 != nullptr && a1 != nullptr;
  if (complete) {
    for (int k = 0; k < 3; ++k) centre[k] = c->resval.rpoint[k];
    radius = r->resval.rreal;
    startAngle = a0->resval.rreal;
    endAngle = a1->resval.rreal;
    acdbEntDel(made);
  }
  acutRelRb(list);
  return complete;
}

}  // namespace

// (kel_entmakearc lay start middle end). The drafting state of KEL::Set0
// is taken first and left in place.
int KEL_EntMakeArc() {
  Set0();
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[4];
  if (!CheckPositional(args, L"\nError:mkarc 没输入参数.",
                       {{ArgKind::kText, L"\nError:mkarc 输入参数错(lay)."},
                        {ArgKind::kPoint, L"\nError:mkarc 输入参数错(point_s)."},
                        {ArgKind::kPoint, L"\nError:mkarc 输入参数错(point_m)."},
                        {ArgKind::kPoint, L"\nError:mkarc 输入参数错(point_e)."}},
                       Say, a))
    return RTNORM;
  // The command's arc and the one made from it are one step to undo.
  acedCommandS(RTSTR, L".UNDO", RTSTR, L"_BEgin", RTNONE);
  ads_point centre;
  double radius = 0.0, startAngle = 0.0, endAngle = 0.0;
  if (ArcThrough(a[1], a[2], a[3], centre, radius, startAngle, endAngle) &&
      !MakeFromList(acutBuildList(RTDXF0, L"ARC", 8, a[0]->resval.rstring, 10, centre, 39, 0.0, 40, radius, 50,
                                  startAngle, 51, endAngle, RTNONE)))
    Say(L"\nError:mkarc error.");
  acedCommandS(RTSTR, L".UNDO", RTSTR, L"_End", RTNONE);
  return RTNORM;
}

// (kel_entmakenut lay centre d1 d2): the ring between the diameters, as a
// closed polyline of two half-circle segments whose width fills it.
int KEL_EntMakeNut() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[4];
  if (!CheckPositional(args, L"\nError:mknut 没输入参数.",
                       {{ArgKind::kText, L"\nError:mknut 输入参数错(lay)."},
                        {ArgKind::kPoint, L"\nError:mknut 输入参数错(point)."},
                        {ArgKind::kNumber, L"\nError:mknut参数2(real,int)."},
                        {ArgKind::kNumber, L"\nError:mknut参数3(real,int)."}},
                       Say, a))
    return RTNORM;
  const wchar_t* lay = a[0]->resval.rstring;
  const double* centre = a[1]->resval.rpoint;
  const double d1 = std::fabs(NumberOf(a[2])), d2 = std::fabs(NumberOf(a[3]));
  const double inner = std::min(d1, d2) / 2.0;
  const double width = std::max(d1, d2) / 2.0 - inner;
  const double middle = inner + width / 2.0;
  ads_point left, right;
  acutPolar(centre, M_PI, middle, left);
  acutPolar(centre, 0.0, middle, right);
  const ads_point elevation = {0.0, 0.0, centre[2]};
  auto vertex = [&](const ads_point at) {
    return acutBuildList(RTDXF0, L"VERTEX", 8, lay, 10, at, 40, width, 41, width, 42, 1.0, 50, 0.0, 70, 0, 71, 0,
                         72, 0, 73, 0, 74, 0, RTNONE);
  };
  const bool made =
      MakeFromList(acutBuildList(RTDXF0, L"POLYLINE", 8, lay, 10, elevation, 40, width, 41, width, 70, 1, 71, 0, 72,
                                 0, 73, 0, 74, 0, 75, 0, RTNONE)) &&
      MakeFromList(vertex(left)) && MakeFromList(vertex(right)) &&
      MakeFromList(acutBuildList(RTDXF0, L"SEQEND", 8, lay, RTNONE));
  if (!made) Say(L"\nError:mknut error.");
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
