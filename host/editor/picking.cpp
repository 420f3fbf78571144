#include "editor/picking.h"

#include <algorithm>
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

// What a view of a host without a screen shows when the view state says
// nothing: a drawing area 1080 pixels high over the default view height.
constexpr double kFallbackScreenHeight = 1080.0;
constexpr double kFallbackViewSize = 297.0;
constexpr double kFallbackPickbox = 3.0;

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

bool ToWorld(const double ucsPoint[3], AcGePoint3d& world) {
  ads_point wcs;
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = 1;
  to.resval.rint = 0;
  if (acedTrans(ucsPoint, &from, &to, 0, wcs) != RTNORM) return false;
  world.set(wcs[0], wcs[1], wcs[2]);
  return true;
}

// The objects within the pick box of ucsPoint with their distances; the
// newest first among equals, as the one drawn on top.
std::vector<std::pair<double, AcDbObjectId>> Near(const double ucsPoint[3]) {
  std::vector<std::pair<double, AcDbObjectId>> near;
  AcGePoint3d p;
  if (!ToWorld(ucsPoint, p)) return near;
  const double aperture = PickAperture();
  for (const AcDbObjectId& id : SelectableEntities()) {
    const double d = DistanceTo(AcDbEntity::cast(db::Peek(id)), p);
    if (d <= aperture) near.emplace_back(d, id);
  }
  std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  return near;
}

}  // namespace

double DistanceTo(const AcDbEntity* e, const AcGePoint3d& p) {
  if (const AcDbCurve* curve = AcDbCurve::cast(e)) {
    AcGePoint3d on;
    if (curve->getClosestPointTo(p, on) == Acad::eOk) return std::hypot(on.x - p.x, on.y - p.y);
  }
  AcDbExtents box;
  if (!SelectionBox(e, box)) return std::numeric_limits<double>::infinity();
  const double dx = std::max({box.minPoint().x - p.x, 0.0, p.x - box.maxPoint().x});
  const double dy = std::max({box.minPoint().y - p.y, 0.0, p.y - box.maxPoint().y});
  return std::hypot(dx, dy);
}

bool SelectionBox(const AcDbEntity* e, AcDbExtents& box) {
  if (!e) return false;
  if (e->getGeomExtents(box) == Acad::eOk && !box.isEmpty()) return true;
  const AcDbText* text = AcDbText::cast(e);
  if (!text) return false;
  box = AcDbExtents();
  box.addPoint(text->position());
  return true;
}

bool InCurrentSpace(AcDbObjectId id) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db || id.isNull() || id.isErased() || id.database() != db) return false;
  const AcDbEntity* e = AcDbEntity::cast(db::Peek(id));
  return e && e->ownerId() == db->currentSpaceId();
}

bool IsSelectable(AcDbObjectId id) {
  if (!InCurrentSpace(id)) return false;
  const AcDbEntity* e = AcDbEntity::cast(db::Peek(id));
  return e->visibility() == AcDb::kVisible && OnVisibleLayer(e);
}

std::vector<AcDbObjectId> SelectableEntities() {
  std::vector<AcDbObjectId> ids;
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) return ids;
  auto& stubs = db->state().stubs;
  for (auto it = stubs.rbegin(); it != stubs.rend(); ++it) {
    const AcDbObjectId id(it->get());
    if (IsSelectable(id)) ids.push_back(id);
  }
  return ids;
}

AcDbObjectId LastSelectable() {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) return AcDbObjectId::kNull;
  auto& stubs = db->state().stubs;
  for (auto it = stubs.rbegin(); it != stubs.rend(); ++it) {
    const AcDbObjectId id(it->get());
    if (IsSelectable(id)) return id;
  }
  return AcDbObjectId::kNull;
}

double PickAperture() {
  resbuf rb{};
  double pixelsHigh = kFallbackScreenHeight;
  if (acedGetVar(L"SCREENSIZE", &rb) == RTNORM && (rb.restype == RTPOINT || rb.restype == RT3DPOINT) &&
      rb.resval.rpoint[1] >= 1)
    pixelsHigh = rb.resval.rpoint[1];
  double viewSize = VarReal(L"VIEWSIZE", kFallbackViewSize);
  if (!(viewSize > 0)) viewSize = kFallbackViewSize;
  const double pickbox = VarReal(L"PICKBOX", kFallbackPickbox);
  // PICKBOX 0 still leaves the one pixel under the cursor.
  return std::max(pickbox, 0.5) * viewSize / pixelsHigh;
}

AcDbObjectId PickIdAt(const double ucsPoint[3]) {
  const auto near = Near(ucsPoint);
  return near.empty() ? AcDbObjectId::kNull : near.front().second;
}

std::vector<AcDbObjectId> PickAllAt(const double ucsPoint[3]) {
  std::vector<AcDbObjectId> ids;
  for (const auto& n : Near(ucsPoint)) ids.push_back(n.second);
  return ids;
}

bool PickEntityAt(const double ucsPoint[3], std::int64_t name[2]) {
  const AcDbObjectId id = PickIdAt(ucsPoint);
  if (id.isNull()) return false;
  ads::NameOfId(id, name);
  return true;
}

}  // namespace kelhost::editor
