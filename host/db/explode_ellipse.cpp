// A circle or arc under a non-uniform scaling: the ellipse it becomes.
#include "arx/dbelipse.h"
#include "db/curve_geometry.h"
#include "db/explode_copy.h"

namespace kelhost::db {

Acad::ErrorStatus EllipseOfCircle(const AcDbCircle& circle, const AcGeMatrix3d& m,
                                  std::unique_ptr<AcDbEntity>& ellipse) {
  // The circle as an ellipse of ratio 1 whose major axis is the circle's
  // OCS X axis: its parameters are then the arc's angles. The ellipse
  // takes any affine transformation.
  const AcGeVector3d n = circle.normal().normal();
  auto made = std::make_unique<AcDbEllipse>();
  Acad::ErrorStatus es = made->set(circle.center(), n, geom::OcsXAxis(n) * circle.radius(), 1.0);
  if (es == Acad::eOk)
    if (auto* arc = AcDbArc::cast(&circle)) {
      es = made->setStartParam(arc->startAngle());
      if (es == Acad::eOk) es = made->setEndParam(arc->endAngle());
    }
  if (es == Acad::eOk) es = made->transformBy(m);
  if (es != Acad::eOk) return es;
  ellipse = std::move(made);
  return Acad::eOk;
}

}  // namespace kelhost::db
