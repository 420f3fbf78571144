#include "plot/layout_viewports.h"

#include <cmath>
#include <string>

#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"
#include "db/stub.h"
#include "dxf/kept_object.h"

namespace kelhost::plot {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

bool Number(const dxf::RawGroup& g, double& out) { return dxf::ParseReal(g.value, out); }

}  // namespace

std::vector<LayoutViewport> ViewportsOf(AcDbDatabase* db, AcDbObjectId paperSpace) {
  std::vector<LayoutViewport> found;
  const AcDbBlockTableRecord* block = db::PeekAs<AcDbBlockTableRecord>(paperSpace);
  if (!block) return found;
  for (AcDbObjectId id : block->entityIds()) {
    const AcDbObject* object = db::Peek(id);
    if (!object || object->isErased()) continue;
    const dxf::KeptData* kept = dxf::KeptDataOf(object);
    if (!kept || kept->type != L"VIEWPORT") continue;
    LayoutViewport vp;
    long long number = 0, status = 1;
    bool inViewport = false;  // past the subclass marker: the groups are the viewport's own
    for (const dxf::RawGroup& g : kept->body) {
      if (g.code == 100) {
        inViewport = g.value == "AcDbViewport";
        continue;
      }
      if (!inViewport) continue;
      double v = 0;
      switch (g.code) {
        case 10: Number(g, vp.center[0]); break;
        case 20: Number(g, vp.center[1]); break;
        case 40: Number(g, vp.width); break;
        case 41: Number(g, vp.height); break;
        case 12: Number(g, vp.viewCenter[0]); break;
        case 22: Number(g, vp.viewCenter[1]); break;
        case 17: Number(g, vp.target[0]); break;
        case 27: Number(g, vp.target[1]); break;
        case 45: Number(g, vp.viewHeight); break;
        case 51:
          if (Number(g, v)) vp.twist = v * kDegree;
          break;
        case 68: dxf::ParseInteger(g.value, status); break;
        case 69: dxf::ParseInteger(g.value, number); break;
        case 331: {
          std::uint64_t handle = 0;
          AcDbObjectId layer;
          if (dxf::ParseHandle(g.value, handle) &&
              db->getAcDbObjectId(layer, false,
                                  AcDbHandle(static_cast<Adesk::UInt32>(handle), static_cast<Adesk::UInt32>(handle >> 32))) ==
                  Acad::eOk)
            vp.frozenLayers.insert(layer);
          break;
        }
        default: break;
      }
    }
    // Number 1 is the paper itself; status 0 is a viewport turned off.
    if (number == 1 || status == 0 || !(vp.width > 0) || !(vp.height > 0) || !(vp.viewHeight > 0)) continue;
    found.push_back(std::move(vp));
  }
  return found;
}

}  // namespace kelhost::plot
