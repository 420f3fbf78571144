// acedSSGet: the selection modes a program without a pointing device can
// serve (all, window, crossing, last, previous), each narrowed by a filter.
#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

#include "ads/entity_names.h"
#include "ads/selection_sets.h"
#include "ads/ssget_filter.h"
#include "arx/acdbads.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/dbextents.h"
#include "db/database_state.h"
#include "kelhost/text.h"

namespace kelhost::ads {
namespace {

std::mutex gPreviousLock;
std::vector<AcDbObjectId> gPrevious;

// Entities of the layouts (model and paper space), newest first.
std::vector<AcDbObjectId> LayoutEntities(AcDbDatabase* db, bool currentSpaceOnly) {
  std::vector<AcDbObjectId> ids;
  const AcDbObjectId current = db->currentSpaceId();
  auto& stubs = db->state().stubs;
  for (auto it = stubs.rbegin(); it != stubs.rend(); ++it) {
    AcDbStub* stub = it->get();
    const AcDbObjectId id(stub);
    const AcDbEntity* entity = AcDbEntity::cast(db::Peek(id));
    if (!entity || id.isErased()) continue;
    const AcDbObjectId owner = entity->ownerId();
    if (currentSpaceOnly ? owner != current : owner != db->modelSpaceId() && owner != db->paperSpaceId()) continue;
    ids.push_back(id);
  }
  return ids;
}

bool Extents(AcDbObjectId id, AcDbExtents& box) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) return false;
  const bool ok = entity->getGeomExtents(box) == Acad::eOk && !box.isEmpty();
  entity->close();
  return ok;
}

// Window (inside) or crossing (overlapping) by the entities' extents, in
// the plan view's X and Y.
std::vector<AcDbObjectId> ByWindow(AcDbDatabase* db, const double* a, const double* b, bool crossing) {
  const double lo[2] = {std::min(a[0], b[0]), std::min(a[1], b[1])};
  const double hi[2] = {std::max(a[0], b[0]), std::max(a[1], b[1])};
  std::vector<AcDbObjectId> ids;
  for (const AcDbObjectId& id : LayoutEntities(db, true)) {
    AcDbExtents box;
    if (!Extents(id, box)) continue;
    const AcGePoint3d mn = box.minPoint(), mx = box.maxPoint();
    const bool inside = mn.x >= lo[0] && mn.y >= lo[1] && mx.x <= hi[0] && mx.y <= hi[1];
    const bool overlaps = mn.x <= hi[0] && mn.y <= hi[1] && mx.x >= lo[0] && mx.y >= lo[1];
    if (crossing ? overlaps : inside) ids.push_back(id);
  }
  return ids;
}

bool Passes(const SelectionFilter* filter, AcDbObjectId id) {
  if (!filter) return true;
  ads_name name;
  NameOfId(id, name);
  resbuf* apps = acutBuildList(RTSTR, L"*", RTNONE);
  resbuf* list = acdbEntGetX(name, apps);
  const bool ok = list && filter->matches(list);
  acutRelRb(list);
  acutRelRb(apps);
  return ok;
}

int SSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss) {
  AcDbDatabase* db = WorkingDb();
  if (!ss || !db) return RTERROR;
  std::unique_ptr<SelectionFilter> compiled;
  if (filter && !(compiled = SelectionFilter::Compile(filter))) return RTERROR;
  std::wstring mode = str ? ToUpper(str) : L"";
  while (!mode.empty() && (mode[0] == L'_' || mode[0] == L'+' || mode[0] == L'.')) mode.erase(0, 1);

  std::vector<AcDbObjectId> found;
  if (mode == L"X") {
    found = LayoutEntities(db, false);
  } else if (mode == L"W" || mode == L"C") {
    if (!pt1 || !pt2) return RTERROR;
    found = ByWindow(db, static_cast<const double*>(pt1), static_cast<const double*>(pt2), mode == L"C");
  } else if (mode == L"L") {
    ads_name last;
    if (acdbEntLast(last) == RTNORM) found.push_back(IdOfName(last));
  } else if (mode == L"P") {
    std::lock_guard<std::mutex> hold(gPreviousLock);
    for (const AcDbObjectId& id : gPrevious)
      if (db::Peek(id) && !id.isErased() && id.database() == db) found.push_back(id);
  } else {
    // Picking and the implied set need a user at a pointing device.
    return RTERROR;
  }

  std::vector<AcDbObjectId> chosen;
  for (const AcDbObjectId& id : found)
    if (Passes(compiled.get(), id)) chosen.push_back(id);
  if (chosen.empty()) return RTERROR;
  {
    std::lock_guard<std::mutex> hold(gPreviousLock);
    gPrevious = chosen;
  }
  NewSelectionSet(std::move(chosen), ss);
  return RTNORM;
}

}  // namespace
}  // namespace kelhost::ads

int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss) {
  try {
    return kelhost::ads::SSGet(str, pt1, pt2, filter, ss);
  } catch (...) {
    return RTERROR;
  }
}
