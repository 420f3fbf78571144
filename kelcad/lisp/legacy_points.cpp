// "get1pt", "getmid", "z_p" and "pt_d_px": points picked, halved, lifted
// and sorted by distance.
#include <algorithm>
#include <cwctype>
#include <string>
#include <vector>

#include "kelcad/lisp/entmake_support.h"
#include "kelcad/lisp/legacy_handlers.h"
#include "kelcad/resbuf/rbchain.h"

namespace KEL {
namespace Lisp {

namespace {
void CopyPoint(const double from[3], ads_point to) {
  for (int i = 0; i < 3; ++i) to[i] = from[i];
}
}  // namespace

// (get1pt p1 p2 p3 [mode]): of p1 and p2 lifted to p3's elevation, the
// nearer to p3 for "near" (the default), else the farther. On equal
// distances "near" gives p2.
int Get1Pt() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[3];
  if (!CheckPositional(args, L"\nError:get1pt没有给定参数.",
                       {{ArgKind::kPoint, L"\nError:get1pt给定第一个参数不是POINT."},
                        {ArgKind::kPoint, L"\nError:get1pt给定第二个参数不是POINT.", L"\nError:get1pt没有给定第二点."},
                        {ArgKind::kPoint, L"\nError:get1pt给定第三个参数不是POINT."}},
                       Fail, a))
    return kLegacyFailed;
  std::wstring mode = IsTextArg(a[2]->rbnext) ? a[2]->rbnext->resval.rstring : L"near";
  std::transform(mode.begin(), mode.end(), mode.begin(), [](wchar_t c) { return std::towupper(c); });
  ads_point p1, p2, p3;
  CopyPoint(a[0]->resval.rpoint, p1);
  CopyPoint(a[1]->resval.rpoint, p2);
  CopyPoint(a[2]->resval.rpoint, p3);
  p1[2] = p2[2] = p3[2];
  const bool near = mode == L"NEAR";
  const bool firstIsFarther = acutDistance(p1, p3) >= acutDistance(p2, p3);
  acedRetPoint(near == firstIsFarther ? p2 : p1);
  return RTNORM;
}

// (getmid a b): the midpoint.
int GetMid() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:getmid没有给定参数.",
                       {{ArgKind::kPoint, L"\nError:getmid给定参数不是POINT."},
                        {ArgKind::kPoint, L"\nError:getmid给定第二点不是POINT.", L"\nError:getmid没有给定第二点."}},
                       Fail, a))
    return kLegacyFailed;
  ads_point mid;
  for (int i = 0; i < 3; ++i) mid[i] = (a[0]->resval.rpoint[i] + a[1]->resval.rpoint[i]) / 2;
  acedRetPoint(mid);
  return RTNORM;
}

// (z_p z point): the point at elevation z. z must be a real.
int ZP() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[2];
  if (!CheckPositional(args, L"\nError:z_p没输入参数.",
                       {{ArgKind::kReal, L"\nError:z_p给定第一个参数不是real."},
                        {ArgKind::kPoint, L"\nError:z_p给定的第二个参数不是POINT.", L"\nError:z_p没有给定第二个参数."}},
                       Fail, a))
    return kLegacyFailed;
  ads_point p;
  CopyPoint(a[1]->resval.rpoint, p);
  p[2] = a[0]->resval.rreal;
  acedRetPoint(p);
  return RTNORM;
}

// (pt_d_px base p ...) or (pt_d_px base (p ...)): the points after base,
// nearest to it first (in space; equal distances keep their order).
// Arguments among them that are not points are passed over.
int PtDPx() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  const resbuf* a[1];
  if (!CheckPositional(args, L"\nError:pt_d_px 没输入参数.", {{ArgKind::kPoint, L"\nError:pt_d_px 输入参数1(point)."}},
                       Fail, a))
    return kLegacyFailed;
  struct Far {
    double distance;
    const resbuf* point;
  };
  std::vector<Far> points;
  for (const resbuf* rb = a[0]->rbnext; rb; rb = rb->rbnext)
    if (IsPointArg(rb)) points.push_back({acutDistance(a[0]->resval.rpoint, rb->resval.rpoint), rb});
  std::stable_sort(points.begin(), points.end(), [](const Far& x, const Far& y) { return x.distance < y.distance; });
  resbuf* list = nullptr;
  for (const Far& f : points) {
    resbuf* node = acutBuildList(RT3DPOINT, f.point->resval.rpoint, RTNONE);
    if (node == nullptr) {
      acutRelRb(list);
      Fail(L"\nError:pt_d_px malloc.");
      return kLegacyFailed;
    }
    AppendRb(list, node);
  }
  if (list != nullptr) {
    acedRetList(list);
    acutRelRb(list);
  }
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
