#include "plot/wide_polyline.h"

#include "arx/dbents.h"
#include "arx/dbpoly.h"
#include "db/stub.h"

namespace kelhost::plot {

std::unique_ptr<AcDbPolyline> WidePolylineOf(const AcDb2dPolyline& heavy) {
  auto light = std::make_unique<AcDbPolyline>();
  bool wide = false;
  unsigned index = 0;
  for (AcDbObjectId id : heavy.vertexIds()) {
    const AcDb2dVertex* v = db::PeekAs<AcDb2dVertex>(id);
    if (!v || v->isErased()) continue;
    const AcGePoint3d p = v->position();
    light->addVertexAt(index++, AcGePoint2d(p.x, p.y), v->bulge(), v->startWidth(), v->endWidth());
    wide = wide || v->startWidth() != 0.0 || v->endWidth() != 0.0;
  }
  if (!wide || index < 2) return nullptr;
  light->setClosed(heavy.isClosed());
  light->setNormal(heavy.normal());
  light->setElevation(heavy.elevation());
  return light;
}

}  // namespace kelhost::plot
