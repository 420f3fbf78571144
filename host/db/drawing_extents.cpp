#include "db/drawing_extents.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "arx/dbents.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"

namespace kelhost::db {
namespace {

// Every change to an object of a drawing may move its extents.
class ExtentsWatcher : public ObjectObserver {
 public:
  void beforeWrite(AcDbObject* object) override { mark(object); }
  void added(AcDbObject* object) override { mark(object); }

 private:
  static void mark(AcDbObject* object) {
    if (AcDbDatabase* db = object ? object->database() : nullptr) db->state().extentsStale = true;
  }
};

const bool kWatching = [] {
  static ExtentsWatcher watcher;
  AddObjectObserver(&watcher);
  return true;
}();

bool Drawn(const AcDbEntity* e) {
  if (e->visibility() != AcDb::kVisible) return false;
  const auto* layer = PeekAs<AcDbLayerTableRecord>(e->layerId());
  return !layer || !layer->isFrozen();
}

bool Agree(double a, double b) { return std::fabs(a - b) <= 1e-10 * std::max({1.0, std::fabs(a), std::fabs(b)}); }

// A corner already stored that agrees with the new one but for rounding
// (a drawing read back from its file, whose angles were written in
// degrees) is kept, so that saving a drawing again gives the same file.
void StoreCorner(DatabaseState& s, const wchar_t* name, const AcGePoint3d& corner) {
  // An entity at the edge of the range of doubles may reach past it (a
  // circle of the largest radius): its extents are held at the edge, so
  // that they can be written and read back.
  auto held = [](double v) { return std::isnan(v) ? 0.0 : std::clamp(v, -DBL_MAX, DBL_MAX); };
  const AcGePoint3d p(held(corner.x), held(corner.y), held(corner.z));
  const HeaderVarDef& def = *FindHeaderVarDef(name);
  const HeaderValue old = GetHeaderVar(s, def);
  if (Agree(old.point[0], p.x) && Agree(old.point[1], p.y) && Agree(old.point[2], p.z)) return;
  HeaderValue v = DefaultHeaderValue(def);
  v.point[0] = p.x;
  v.point[1] = p.y;
  v.point[2] = p.z;
  s.headerVars[name] = v;
}

}  // namespace

bool SpaceExtents(AcDbDatabase* db, AcDbObjectId space, AcDbExtents& out) {
  out = AcDbExtents();
  if (!db) return false;
  for (const StubRef& stub : db->state().stubs) {
    if (stub->erased || !stub->object) continue;
    const AcDbEntity* e = AcDbEntity::cast(stub->object.get());
    if (!e || e->ownerId() != space || !Drawn(e)) continue;
    AcDbExtents box;
    if (e->getGeomExtents(box) == Acad::eOk && !box.isEmpty()) out.addExt(box);
  }
  return !out.isEmpty();
}

void RefreshExtents(AcDbDatabase* db, AcDbObjectId space) {
  if (!db) return;
  DatabaseState& s = db->state();
  if (!s.extentsStale && s.extentsSpace == space) return;
  AcDbExtents box;
  const bool any = SpaceExtents(db, space, box);
  constexpr double kEmpty = 1e20;
  StoreCorner(s, L"EXTMIN", any ? box.minPoint() : AcGePoint3d(kEmpty, kEmpty, kEmpty));
  StoreCorner(s, L"EXTMAX", any ? box.maxPoint() : AcGePoint3d(-kEmpty, -kEmpty, -kEmpty));
  // An object still open for write may change further without telling.
  bool writing = false;
  for (const StubRef& stub : s.stubs) writing = writing || stub->writer;
  s.extentsStale = writing;
  s.extentsSpace = space;
}

void MarkExtentsStale(AcDbDatabase* db) {
  if (db) db->state().extentsStale = true;
}

}  // namespace kelhost::db
