#include "editor/region_selection.h"

#include <algorithm>

#include "arx/acedads.h"
#include "arx/dbents.h"
#include "arx/dbextents.h"
#include "db/curve_path.h"
#include "db/stub.h"
#include "editor/picking.h"

namespace kelhost::editor {
namespace {

// An entity as the plan view sees it: its outline flattened onto the XY
// plane, one point of it, and its box. Curves give their own geometry;
// anything else (text, blocks, hatches...) stands as its box (picking.h).
struct Outline {
  geom::Path path;
  AcGePoint3d onIt;
  AcDbExtents box;
};

AcGeMatrix3d Flattening() {
  AcGeMatrix3d m;
  m.entry[2][2] = 0.0;
  return m;
}

void AddRectangle(geom::Path& path, double x0, double y0, double x1, double y1) {
  const AcGePoint3d c[4] = {{x0, y0, 0}, {x1, y0, 0}, {x1, y1, 0}, {x0, y1, 0}};
  for (int i = 0; i < 4; ++i) path.addLine(c[i], c[(i + 1) % 4], i, i + 1);
}

bool OutlineOf(AcDbObjectId id, Outline& o) {
  const AcDbEntity* e = AcDbEntity::cast(db::Peek(id));
  if (!SelectionBox(e, o.box)) return false;
  const AcDbCurve* curve = AcDbCurve::cast(e);
  geom::Path own;
  if (curve && curve->buildPath(own) && !own.empty()) {
    o.path = own.transformed(Flattening());
    if (!o.path.pointAt(o.path.startParam(), o.onIt)) return false;
    return true;
  }
  const AcGePoint3d lo = o.box.minPoint(), hi = o.box.maxPoint();
  AddRectangle(o.path, lo.x, lo.y, hi.x, hi.y);
  o.onIt.set(lo.x, lo.y, 0);
  return true;
}

bool ToWorld(const AcGePoint3d& ucs, AcGePoint3d& world) {
  const ads_point in = {ucs.x, ucs.y, ucs.z};
  ads_point out;
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = 1;
  to.resval.rint = 0;
  if (acedTrans(in, &from, &to, 0, out) != RTNORM) return false;
  world.set(out[0], out[1], 0.0);
  return true;
}

// Even-odd rule in the XY plane.
bool InsidePolygon(const std::vector<AcGePoint3d>& poly, const AcGePoint3d& p) {
  bool inside = false;
  for (size_t i = 0, j = poly.size() - 1; i < poly.size(); j = i++) {
    const AcGePoint3d& a = poly[i];
    const AcGePoint3d& b = poly[j];
    if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

bool Crosses(const Outline& o, const geom::Path& boundary) {
  AcGePoint3dArray hits;
  geom::Intersect(o.path, false, boundary, false, hits);
  return hits.length() > 0;
}

bool Takes(const Outline& o, const std::vector<AcGePoint3d>& poly, const geom::Path& boundary, Region region) {
  switch (region) {
    case Region::kFence: return Crosses(o, boundary);
    case Region::kInside: return InsidePolygon(poly, o.onIt) && !Crosses(o, boundary);
    case Region::kCrossing: return InsidePolygon(poly, o.onIt) || Crosses(o, boundary);
  }
  return false;
}

std::vector<AcDbObjectId> Select(const std::vector<AcGePoint3d>& world, Region region) {
  geom::Path boundary;
  const size_t sides = region == Region::kFence ? world.size() - 1 : world.size();
  for (size_t i = 0; i < sides; ++i)
    boundary.addLine(world[i], world[(i + 1) % world.size()], static_cast<double>(i), static_cast<double>(i + 1));
  std::vector<AcDbObjectId> ids;
  for (const AcDbObjectId& id : SelectableEntities()) {
    Outline o;
    if (OutlineOf(id, o) && Takes(o, world, boundary, region)) ids.push_back(id);
  }
  return ids;
}

}  // namespace

std::vector<AcDbObjectId> EntitiesInBox(const AcGePoint3d& corner1, const AcGePoint3d& corner2, bool crossing) {
  AcGePoint3d a, b;
  if (!ToWorld(corner1, a) || !ToWorld(corner2, b)) return {};
  const double x0 = std::min(a.x, b.x), x1 = std::max(a.x, b.x);
  const double y0 = std::min(a.y, b.y), y1 = std::max(a.y, b.y);
  std::vector<AcDbObjectId> ids;
  std::vector<AcGePoint3d> rectangle = {{x0, y0, 0}, {x1, y0, 0}, {x1, y1, 0}, {x0, y1, 0}};
  geom::Path boundary;
  AddRectangle(boundary, x0, y0, x1, y1);
  for (const AcDbObjectId& id : SelectableEntities()) {
    Outline o;
    if (!OutlineOf(id, o)) continue;
    const AcGePoint3d lo = o.box.minPoint(), hi = o.box.maxPoint();
    // A window takes what its box holds; a crossing window also what
    // reaches into it, which the box alone cannot tell.
    const bool within = lo.x >= x0 && lo.y >= y0 && hi.x <= x1 && hi.y <= y1;
    const bool apart = lo.x > x1 || lo.y > y1 || hi.x < x0 || hi.y < y0;
    if (within || (crossing && !apart && Takes(o, rectangle, boundary, Region::kCrossing))) ids.push_back(id);
  }
  return ids;
}

std::vector<AcDbObjectId> EntitiesInRegion(const std::vector<AcGePoint3d>& points, Region region) {
  const size_t needed = region == Region::kFence ? 2 : 3;
  if (points.size() < needed) return {};
  std::vector<AcGePoint3d> world(points.size());
  for (size_t i = 0; i < points.size(); ++i)
    if (!ToWorld(points[i], world[i])) return {};
  return Select(world, region);
}

}  // namespace kelhost::editor
