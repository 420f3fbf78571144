// acedTrans: each coordinate system is an origin and three orthonormal
// axes in world coordinates; a point goes to the world and from there into
// the target system.
#include <cmath>

#include "ads/entity_names.h"
#include "arx/acdbads.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "db/database_state.h"

namespace kelhost::ads {
namespace {

struct Frame {
  double origin[3] = {0, 0, 0};
  double axis[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};  // X, Y, Z in WCS
};

void Cross(const double* a, const double* b, double* out) {
  out[0] = a[1] * b[2] - a[2] * b[1];
  out[1] = a[2] * b[0] - a[0] * b[2];
  out[2] = a[0] * b[1] - a[1] * b[0];
}

bool Normalize(double* v) {
  const double len = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
  if (!(len > 1e-12) || !std::isfinite(len)) return false;
  for (int i = 0; i < 3; ++i) v[i] /= len;
  return true;
}

// The object coordinate system of an extrusion direction (the
// arbitrary-axis rule): X is world Y (near the world Z axis) or world Z
// crossed with the normal.
bool OcsFrame(const double* normal, Frame& f) {
  double n[3] = {normal[0], normal[1], normal[2]};
  if (!Normalize(n)) return false;
  const double wy[3] = {0, 1, 0}, wz[3] = {0, 0, 1};
  const bool nearZ = std::fabs(n[0]) < 1.0 / 64 && std::fabs(n[1]) < 1.0 / 64;
  Cross(nearZ ? wy : wz, n, f.axis[0]);
  Normalize(f.axis[0]);
  Cross(n, f.axis[0], f.axis[1]);
  Normalize(f.axis[1]);
  for (int i = 0; i < 3; ++i) f.axis[2][i] = n[i];
  return true;
}

bool Point3(AcDbDatabase* db, const db::HeaderVarDef* def, double* out) {
  if (!def) return false;
  const db::HeaderValue v = db::GetHeaderVar(db->state(), *def);
  for (int i = 0; i < 3; ++i) out[i] = v.point[i];
  return true;
}

// The current UCS from UCSORG, UCSXDIR and UCSYDIR (Y made square to X).
bool UcsFrame(AcDbDatabase* db, Frame& f) {
  // Every point a command is given passes here: find the variables once.
  static const db::HeaderVarDef* const origin = db::FindHeaderVarDef(L"UCSORG");
  static const db::HeaderVarDef* const xDir = db::FindHeaderVarDef(L"UCSXDIR");
  static const db::HeaderVarDef* const yDir = db::FindHeaderVarDef(L"UCSYDIR");
  double y[3];
  if (!Point3(db, origin, f.origin) || !Point3(db, xDir, f.axis[0]) || !Point3(db, yDir, y)) return false;
  if (!Normalize(f.axis[0])) return false;
  Cross(f.axis[0], y, f.axis[2]);
  if (!Normalize(f.axis[2])) return false;
  Cross(f.axis[2], f.axis[0], f.axis[1]);
  return true;
}

void ToWorld(const Frame& f, const double* p, bool disp, double* out) {
  double r[3];
  for (int i = 0; i < 3; ++i)
    r[i] = (disp ? 0.0 : f.origin[i]) + p[0] * f.axis[0][i] + p[1] * f.axis[1][i] + p[2] * f.axis[2][i];
  for (int i = 0; i < 3; ++i) out[i] = r[i];
}

void FromWorld(const Frame& f, const double* p, bool disp, double* out) {
  double d[3];
  for (int i = 0; i < 3; ++i) d[i] = p[i] - (disp ? 0.0 : f.origin[i]);
  for (int k = 0; k < 3; ++k) out[k] = d[0] * f.axis[k][0] + d[1] * f.axis[k][1] + d[2] * f.axis[k][2];
}

// The display coordinates of the view: looking from VIEWDIR at TARGET
// (both given in the UCS), the target at the origin.
bool DcsFrame(AcDbDatabase* db, Frame& f) {
  Frame ucs;
  double dir[3], target[3];
  if (!UcsFrame(db, ucs) || !Point3(db, db::FindHeaderVarDef(L"VIEWDIR"), dir) ||
      !Point3(db, db::FindHeaderVarDef(L"TARGET"), target))
    return false;
  ToWorld(ucs, dir, true, dir);
  if (!OcsFrame(dir, f)) return false;
  ToWorld(ucs, target, false, f.origin);
  return true;
}

// The extrusion of an entity (210), or the world Z for one without.
bool EntityFrame(const resbuf* name, Frame& f) {
  resbuf* list = acdbEntGet(name->resval.rlname);
  if (!list) return false;
  double normal[3] = {0, 0, 1};
  for (const resbuf* rb = list; rb; rb = rb->rbnext)
    if (rb->restype == 210)
      for (int i = 0; i < 3; ++i) normal[i] = rb->resval.rpoint[i];
  acutRelRb(list);
  return OcsFrame(normal, f);
}

bool FrameOf(AcDbDatabase* db, const resbuf* sys, Frame& f) {
  if (!sys) return false;
  switch (sys->restype) {
    case RTSHORT:
      if (sys->resval.rint == 0) return true;
      if (sys->resval.rint == 1) return UcsFrame(db, f);
      if (sys->resval.rint == 2) return DcsFrame(db, f);
      return false;
    case RTENAME: return EntityFrame(sys, f);
    case RT3DPOINT: return OcsFrame(sys->resval.rpoint, f);
    default: return false;
  }
}

}  // namespace
}  // namespace kelhost::ads

int acedTrans(const ads_point pt, const resbuf* from, const resbuf* to, int disp, ads_point result) {
  try {
    AcDbDatabase* db = kelhost::ads::WorkingDb();
    kelhost::ads::Frame a, b;
    if (!pt || !result || !db || !kelhost::ads::FrameOf(db, from, a) || !kelhost::ads::FrameOf(db, to, b)) return RTERROR;
    double world[3];
    kelhost::ads::ToWorld(a, pt, disp != 0, world);
    kelhost::ads::FromWorld(b, world, disp != 0, result);
    return RTNORM;
  } catch (...) {
    return RTERROR;
  }
}
