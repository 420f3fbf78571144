#include "kelcad/api/ucs_points.h"

#include <cmath>

namespace KEL {

namespace {

AcGePoint3d Carried(const double pt[3], bool toWorld) {
  ads_point in = {pt[0], pt[1], pt[2]};
  ads_point out = {pt[0], pt[1], pt[2]};
  if (toWorld)
    acdbUcs2Wcs(in, out, false);
  else
    acdbWcs2Ucs(in, out, false);
  return AcGePoint3d(out[0], out[1], out[2]);
}

AcGePoint3d Carried(const AcGePoint3d& pt, bool toWorld) {
  const double p[3] = {pt.x, pt.y, pt.z};
  return Carried(p, toWorld);
}

}  // namespace

AcGePoint3d ucs2wcsPt3(const AcGePoint3d& pt) { return Carried(pt, true); }
AcGePoint3d ucs2wcsPt3(const double pt[3]) { return Carried(pt, true); }
AcGePoint3d wcs2ucsPt3(const AcGePoint3d& pt) { return Carried(pt, false); }
AcGePoint3d wcs2ucsPt3(const double pt[3]) { return Carried(pt, false); }

void ads_pt_u2w(double pt[3]) {
  if (pt != nullptr) acdbUcs2Wcs(pt, pt, false);
}

AcArray<AcGePoint3d> wcs2ucsAry(const AcArray<AcGePoint3d>& pts) {
  AcArray<AcGePoint3d> out(pts.length(), 8);
  for (int i = 0; i < pts.length(); ++i) out.append(wcs2ucsPt3(pts[i]));
  return out;
}

resbuf* wcs2ucsRbRet(resbuf* chain) {
  for (resbuf* rb = chain; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == RTPOINT || rb->restype == RT3DPOINT) acdbWcs2Ucs(rb->resval.rpoint, rb->resval.rpoint, false);
  return chain;
}

double ucsAngleXZ(double angle) {
  const double kTwoPi = 2.0 * M_PI;
  const AcGePoint3d origin = wcs2ucsPt3(AcGePoint3d(0, 0, 0));
  const AcGePoint3d diagonal = wcs2ucsPt3(AcGePoint3d(1, 1, 0));
  // The turn about +Z from the diagonal as the UCS sees it to the world's.
  const double seen = std::atan2(diagonal.y - origin.y, diagonal.x - origin.x);
  const double turn = std::fmod(std::atan2(1.0, 1.0) - seen + kTwoPi, kTwoPi);
  if (std::fabs(turn) > 1e-6) return angle - turn * 180.0 / M_PI;
  return angle;
}

}  // namespace KEL
