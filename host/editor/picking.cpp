#include "editor/picking.h"

#include <cmath>
#include <limits>

#include "ads/entity_names.h"
#include "arx/acedads.h"
#include "arx/dbents.h"
#include "arx/dbextents.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"

namespace kelhost::editor {
namespace {

double VarReal(const wchar_t* name, double fallback) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM) return fallback;
  return rb.restype == RTREAL ? rb.resval.rreal : rb.restype == RTSHORT ? rb.resval.rint : fallback;
}

// Whether the entity's layer is on and thawed.
bool OnVisibleLayer(const AcDbEntity* e) {
  const auto* layer = db::PeekAs<AcDbLayerTableRecord>(e->layerId());
  return !layer || (!layer->isOff() && !layer->isFrozen());
}

// Distance in the XY plane from p to the entity: to a curve its nearest
// point, to anything else its extents (0 inside).
double DistanceTo(const AcDbEntity* e, const AcGePoint3d& p) {
  if (const AcDbCurve* curve = AcDbCurve::cast(e)) {
    AcGePoint3d on;
    if (curve->getClosestPointTo(p, on) == Acad::eOk) return std::hypot(on.x - p.x, on.y - p.y);
  }
  AcDbExtents box;
  if (e->getGeomExtents(box) != Acad::eOk || box.isEmpty()) return std::numeric_limits<double>::infinity();
  const double dx = std::max({box.minPoint().x - p.x, 0.0, p.x - box.maxPoint().x});
  const double dy = std::max({box.minPoint().y - p.y, 0.0, p.y - box.maxPoint().y});
  return std::hypot(dx, dy);
}

}  // namespace

double PickAperture() {
  resbuf rb{};
  double pixelsHigh = 1080;
  if (acedGetVar(L"SCREENSIZE", &rb) == RTNORM && (rb.restype == RTPOINT || rb.restype == RT3DPOINT) &&
      rb.resval.rpoint[1] > 0)
    pixelsHigh = rb.resval.rpoint[1];
  const double pickbox = VarReal(L"PICKBOX", 3);
  return (pickbox > 0 ? pickbox : 3) * VarReal(L"VIEWSIZE", 297.0) / pixelsHigh;
}

AcDbObjectId PickIdAt(const double ucsPoint[3]) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) return AcDbObjectId::kNull;
  ads_point wcs;
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = 1;
  to.resval.rint = 0;
  if (acedTrans(ucsPoint, &from, &to, 0, wcs) != RTNORM) return AcDbObjectId::kNull;
  const AcGePoint3d p(wcs[0], wcs[1], wcs[2]);
  const double aperture = PickAperture();
  const AcDbObjectId space = db->currentSpaceId();
  AcDbObjectId best;
  double bestDistance = aperture;
  // The newest object wins a tie, as the one drawn on top.
  auto& stubs = db->state().stubs;
  for (auto it = stubs.rbegin(); it != stubs.rend(); ++it) {
    const AcDbObjectId id(it->get());
    if (id.isErased()) continue;
    const AcDbEntity* e = AcDbEntity::cast(db::Peek(id));
    if (!e || e->ownerId() != space || e->visibility() != AcDb::kVisible || !OnVisibleLayer(e)) continue;
    const double d = DistanceTo(e, p);
    if (d < bestDistance || (best.isNull() && d <= bestDistance)) {
      best = id;
      bestDistance = d;
    }
  }
  return best;
}

bool PickEntityAt(const double ucsPoint[3], std::int64_t name[2]) {
  const AcDbObjectId id = PickIdAt(ucsPoint);
  if (id.isNull()) return false;
  ads::NameOfId(id, name);
  return true;
}

}  // namespace kelhost::editor
