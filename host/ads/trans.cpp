// acedTrans: each coordinate system is a frame (db/frames.h); a point goes
// to the world and from there into the target system.
#include "ads/entity_names.h"
#include "arx/acdbads.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/dbxutil.h"
#include "db/database_state.h"
#include "db/frames.h"

namespace kelhost::ads {
namespace {

using db::Frame;
using db::FromWorld;
using db::OcsFrame;
using db::ToWorld;

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
      if (sys->resval.rint == 1) return db::UcsFrame(db->state(), f);
      if (sys->resval.rint == 2) return db::DcsFrame(db->state(), f);
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

namespace {
bool UcsWorld(ads_point p, ads_point q, bool vec, bool toWorld) {
  AcDbDatabase* db = kelhost::ads::WorkingDb();
  kelhost::ads::Frame ucs;
  if (!p || !q || !db || !kelhost::db::UcsFrame(db->state(), ucs)) return false;
  const double in[3] = {p[0], p[1], p[2]};
  if (toWorld)
    kelhost::ads::ToWorld(ucs, in, vec, q);
  else
    kelhost::ads::FromWorld(ucs, in, vec, q);
  return true;
}
}  // namespace

bool acdbUcs2Wcs(ads_point p, ads_point q, bool vec) {
  try {
    return UcsWorld(p, q, vec, true);
  } catch (...) {
    return false;
  }
}

bool acdbWcs2Ucs(ads_point p, ads_point q, bool vec) {
  try {
    return UcsWorld(p, q, vec, false);
  } catch (...) {
    return false;
  }
}
