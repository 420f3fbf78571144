// The copies an explode hands back: an entity of a block definition
// copied out of the database (with its sub-entities, which the copy then
// owns) and placed where a reference shows it.
#pragma once

#include <memory>

#include "arx/dbents.h"

namespace kelhost::db {

// A copy of entity (in a database or not): same class, groups and xdata,
// no owner, no extension dictionary, its live sub-entities copied as the
// copy's own. eNotApplicable for a class the host cannot copy.
Acad::ErrorStatus CopyEntity(const AcDbEntity& entity, std::unique_ptr<AcDbEntity>& copy);

// Transforms a copy by xform. Under a non-uniform scaling a circle or an
// arc is replaced by the ellipse it becomes. On failure the status of the
// entity that could not follow.
Acad::ErrorStatus PlaceCopy(std::unique_ptr<AcDbEntity>& copy, const AcGeMatrix3d& xform);

// The ellipse (full, or the arc's part) that a circle or arc becomes under
// xform; eCannotScaleNonUniformly when it flattens to a line.
Acad::ErrorStatus EllipseOfCircle(const AcDbCircle& circle, const AcGeMatrix3d& xform,
                                  std::unique_ptr<AcDbEntity>& ellipse);

}  // namespace kelhost::db
