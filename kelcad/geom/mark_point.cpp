// A marker point for showing a computed location on the drawing.
#include "kelcad/geom/entities.h"

namespace {
void SetPdmode(short value) {
  resbuf rb;
  rb.rbnext = nullptr;
  rb.restype = RTSHORT;
  rb.resval.rint = value;
  acedSetVar(L"PDMODE", &rb);
}
}  // namespace

int gl_mark_point(const double pt[3]) {
  ads_point at = {pt[0], pt[1], pt[2]};
  resbuf* list = acutBuildList(RTDXF0, L"POINT", 8, L"0", 62, 1, 39, 0.0, 10, at, 0);
  SetPdmode(36);
  if (list) {
    acdbEntMake(list);
    acutRelRb(list);
  }
  ads_name last;
  if (acdbEntLast(last) == RTNORM) acedRedraw(last, 1);
  SetPdmode(0);
  return 1;
}
