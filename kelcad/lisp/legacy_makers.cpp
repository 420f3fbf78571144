// "mklinx" (hidden lines) and "mk3dm" (3D polylines).
#include "kelcad/lisp/entmake_support.h"
#include "kelcad/lisp/legacy_handlers.h"

namespace KEL {
namespace Lisp {

// (mklinx layer p1 p2 ...): as kel_entmakeline, in the linetype HIDDEN,
// which the drawing must have loaded.
int MkLinX() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const int made = MakeLineRun(args,
                               {L"\nError:mklinx 没输入参数.", L"\nError:mklinx 没输入lay参数.",
                                L"\nError:mklinx 没输入ptb参数.", L"\nError:mklinx error.",
                                L"\nError:mklinx 没装入HIDDEN线型."},
                               Fail, L"HIDDEN");
  return made == kRunMade ? RTNORM : kLegacyFailed;
}

// (mk3dm layer p1 p2 ...): a 3D polyline through the points (two at
// least), made as its header, a vertex per point and the end of the
// sequence; T when it was made. A wrong call gives nil silently.
int Mk3dm() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  if (!IsTextArg(args) || !IsPointArg(args->rbnext) || !IsPointArg(args->rbnext->rbnext)) return kLegacyFailed;
  const wchar_t* layer = args->resval.rstring;
  if (!MakeFromList(acutBuildList(RTDXF0, L"POLYLINE", 8, layer, 66, 1, 70, 8, RTNONE))) return kLegacyFailed;
  for (const resbuf* rb = args->rbnext; IsPointArg(rb); rb = rb->rbnext)
    if (!MakeFromList(acutBuildList(RTDXF0, L"VERTEX", 8, layer, 10, rb->resval.rpoint, 70, 32, RTNONE))) break;
  if (!MakeFromList(acutBuildList(RTDXF0, L"SEQEND", 8, layer, RTNONE))) return kLegacyFailed;
  acedRetT();
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
