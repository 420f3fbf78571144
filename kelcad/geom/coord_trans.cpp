// Points between the current UCS and the world, through the platform.
#include "kelcad/geom/coord_trans.h"

namespace {

// Coordinate-system codes of acedTrans.
constexpr short kWorld = 0;
constexpr short kUcs = 1;

int Trans(double res[3], const double pt[3], int disp, short from, short to) {
  if (res == nullptr || pt == nullptr) return 0;
  resbuf fromRb{};
  fromRb.restype = RTSHORT;
  fromRb.resval.rint = from;
  resbuf toRb{};
  toRb.restype = RTSHORT;
  toRb.resval.rint = to;
  return acedTrans(pt, &fromRb, &toRb, disp, res) == RTNORM ? 1 : 0;
}

}  // namespace

int gl_ucs2wcs(double res[3], const double pt[3], int disp) { return Trans(res, pt, disp, kUcs, kWorld); }
int gl_wcs2ucs(double res[3], const double pt[3], int disp) { return Trans(res, pt, disp, kWorld, kUcs); }
