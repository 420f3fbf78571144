// Zoom to the drawing's extents with a margin.
#include "kelcad/api/zoom.h"

#include "kelcad/api/sysvar_access.h"
#include "kelcad/platform.h"

namespace KEL {

namespace {

// EXTMIN and EXTMAX hold +1e20 and -1e20 while the drawing is empty.
constexpr double kEmptyExtents = 1e10;
constexpr double kMargin = 0.03;

void ToUser(ads_point p) {
  resbuf world{};
  world.restype = RTSHORT;
  world.resval.rint = 0;
  resbuf user{};
  user.restype = RTSHORT;
  user.resval.rint = 1;
  ads_point wcs = {p[0], p[1], p[2]};
  acedTrans(wcs, &world, &user, 0, p);
}

}  // namespace

void ZoomE() {
  const int cmdEcho = GetCADIntVar(L"CMDECHO");
  SetCADVar(L"CMDECHO", 0);
  ads_point low = {0.0, 0.0, 0.0};
  ads_point high = {0.0, 0.0, 0.0};
  GetCADVar(L"EXTMIN", low);
  GetCADVar(L"EXTMAX", high);
  if (low[0] > kEmptyExtents || high[0] > kEmptyExtents) {
    acedCommandS(RTSTR, L"ZOOM", RTSTR, L"E", RTNONE);
  } else {
    low[2] = 0.0;
    high[2] = 0.0;
    const double margin = kMargin * acutDistance(low, high);
    ads_point corner1, corner2;
    acutPolar(low, acutAngle(high, low), margin, corner1);
    acutPolar(high, acutAngle(low, high), margin, corner2);
    ToUser(corner1);
    ToUser(corner2);
    acedCommandS(RTSTR, L"ZOOM", RTSTR, L"W", RT3DPOINT, corner1, RT3DPOINT, corner2, RTNONE);
  }
  SetCADVar(L"CMDECHO", cmdEcho);
}

}  // namespace KEL
