// "kel_entmakepoint", "kel_entmakecircle", "kel_entmaketext", "kel_mktop"
// and "mkins"/"kel_mkins": one entity from fixed positional arguments.
#include "kelcad/lisp/entity_handlers.h"
#include "kelcad/lisp/entmake_support.h"

namespace KEL {
namespace Lisp {

namespace {
// What "kel_mktop" and "mkins" answer the dispatcher.
constexpr int kMade = 1;
constexpr int kNotMade = 3;
}  // namespace

// (kel_entmakepoint lay point)
int KEL_EntMakePoint() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:mkpt 没输入参数.",
                       {{ArgKind::kText, L"\nError:mkpt 输入参数错(lay)."},
                        {ArgKind::kPoint, L"\nError:mkpt 输入参数错(point)."}},
                       Say, a))
    return RTNORM;
  if (!MakeFromList(acutBuildList(RTDXF0, L"POINT", 8, a[0]->resval.rstring, 10, a[1]->resval.rpoint, RTNONE)))
    Say(L"\nError:mkpt error.");
  return RTNORM;
}

// (kel_entmakecircle lay centre radius)
int KEL_EntMakeCircle() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[3];
  if (!CheckPositional(args, L"\nError:mkcir 没输入参数.",
                       {{ArgKind::kText, L"\nError:mkcir 参数lay."},
                        {ArgKind::kPoint, L"\nError:mkcir 参数p00."},
                        {ArgKind::kNumber, L"\nError:mkcir 参数rr."}},
                       Say, a))
    return RTNORM;
  if (!MakeFromList(acutBuildList(RTDXF0, L"CIRCLE", 8, a[0]->resval.rstring, 10, a[1]->resval.rpoint, 40,
                                  NumberOf(a[2]), RTNONE)))
    Say(L"\nError:mkcir error.");
  return RTNORM;
}

// (kel_entmaketext lay text point height rotation): centred on the point.
int KEL_EntMakeText() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[5];
  if (!CheckPositional(args, L"\nError:mktxt 没输入参数.",
                       {{ArgKind::kText, L"\nError:mktxt 输入参数错(lay)."},
                        {ArgKind::kText, L"\nError:mktxt 输入参数错(str)."},
                        {ArgKind::kPoint, L"\nError:mktxt 输入参数错(p00)."},
                        {ArgKind::kNumber, L"\nError:mktxt 输入参数错(texthigh)."},
                        {ArgKind::kNumber, L"\nError:mktxt 输入参数错(ang)."}},
                       Say, a))
    return RTNORM;
  if (!MakeFromList(acutBuildList(RTDXF0, L"TEXT", 1, a[1]->resval.rstring, 8, a[0]->resval.rstring, 10,
                                  a[2]->resval.rpoint, 11, a[2]->resval.rpoint, 40, NumberOf(a[3]), 50,
                                  NumberOf(a[4]), 72, 1, 73, 2, RTNONE)))
    Say(L"\nError:mktxt error.");
  return RTNORM;
}

// (kel_mktop lay base): opens an anonymous block definition; the caller's
// later entities go into it until it makes the ENDBLK itself.
int KEL_MkTop() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:mktop 没输入参数.",
                       {{ArgKind::kText, L"\nError:mktop 输入参数错(lay)."},
                        {ArgKind::kPoint, L"\nError:mktop 输入参数错(point)."}},
                       Fail, a))
    return kNotMade;
  if (!MakeFromList(acutBuildList(RTDXF0, L"BLOCK", 2, L"*U", 8, a[0]->resval.rstring, 10, a[1]->resval.rpoint, 70,
                                  1, RTNONE))) {
    Fail(L"\nError:mktop error.");
    return kNotMade;
  }
  return kMade;
}

// (mkins lay block point [text]): with the text, the INSERT carries it as
// xdata of "TFGXPJ", which the drawing must have registered already.
int MkIns() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[3];
  if (!CheckPositional(args, L"\nError:mkins 没输入参数.",
                       {{ArgKind::kText, L"\nError:mkins 参数1(lay)."},
                        {ArgKind::kText, L"\nError:mkins 参数2(km)."},
                        {ArgKind::kPoint, L"\nError:mkins 参数3(point)."}},
                       Fail, a))
    return kNotMade;
  const resbuf* extra = a[2]->rbnext;
  resbuf* list =
      IsTextArg(extra)
          ? acutBuildList(RTDXF0, L"INSERT", 2, a[1]->resval.rstring, 8, a[0]->resval.rstring, 10,
                          a[2]->resval.rpoint, -3, 1001, L"TFGXPJ", 1002, L"{", 1000, extra->resval.rstring, 1002,
                          L"}", RTNONE)
          : acutBuildList(RTDXF0, L"INSERT", 2, a[1]->resval.rstring, 8, a[0]->resval.rstring, 10,
                          a[2]->resval.rpoint, RTNONE);
  if (!MakeFromList(list)) {
    Fail(L"\nError:mkins error.");
    return kNotMade;
  }
  return kMade;
}

}  // namespace Lisp
}  // namespace KEL
