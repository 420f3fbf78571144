// Points between the current user coordinate system and the world, in the
// forms the family's code holds them.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// The point carried from the UCS to the world / from the world to the UCS
// (acdbUcs2Wcs / acdbWcs2Ucs, as a point, not a displacement).
AcGePoint3d ucs2wcsPt3(const AcGePoint3d& pt);
AcGePoint3d ucs2wcsPt3(const double pt[3]);
AcGePoint3d wcs2ucsPt3(const AcGePoint3d& pt);
AcGePoint3d wcs2ucsPt3(const double pt[3]);
// pt carried from the UCS to the world in place.
void ads_pt_u2w(double pt[3]);
// A new array of the points carried from the world to the UCS, in order.
AcArray<AcGePoint3d> wcs2ucsAry(const AcArray<AcGePoint3d>& pts);
// Carries every RTPOINT and RT3DPOINT node of the chain from the world to
// the UCS in place (other nodes are left alone); returns chain.
resbuf* wcs2ucsRbRet(resbuf* chain);
// An angle in degrees measured in the world, as measured in the UCS: less
// the UCS's turn about Z, when it is turned (by more than 1e-6 radian).
double ucsAngleXZ(double angle);

}  // namespace KEL
