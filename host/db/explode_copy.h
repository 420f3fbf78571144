// The copies an explode hands back: an entity of a block definition
// copied out of the database (with its sub-entities, which the copy then
// owns) and placed where a reference shows it; and the same copies made
// for another database, their references translated.
#pragma once

#include <memory>

#include "arx/dbents.h"

namespace kelhost::db {

class CopyTranslator;

// A copy of entity (in a database or not): same class, groups and xdata,
// no owner, no extension dictionary, its live sub-entities copied as the
// copy's own. eNotApplicable for a class the host cannot copy. With a
// translator the copy is made for another database: the records and
// objects it refers to are the ones the translator gives (a reference it
// cannot give fails the copy, eNotApplicable; an application it cannot
// register, eRegappIdNotFound).
Acad::ErrorStatus CopyEntity(const AcDbEntity& entity, std::unique_ptr<AcDbEntity>& copy,
                             CopyTranslator* into = nullptr);
// The same for an object that is not an entity (a symbol-table record, a
// dictionary): a new object of its class with its groups and xdata.
Acad::ErrorStatus CopyObject(const AcDbObject& object, std::unique_ptr<AcDbObject>& copy,
                             CopyTranslator* into = nullptr);
// Gives target (of the source's class, open for write) the source's groups
// and xdata; on failure target may be half changed (restore its saved
// state).
Acad::ErrorStatus CopyStateInto(const AcDbObject& source, AcDbObject& target, CopyTranslator* into = nullptr);

// Transforms a copy by xform. Under a non-uniform scaling a circle or an
// arc is replaced by the ellipse it becomes. On failure the status of the
// entity that could not follow.
Acad::ErrorStatus PlaceCopy(std::unique_ptr<AcDbEntity>& copy, const AcGeMatrix3d& xform);

// The ellipse (full, or the arc's part) that a circle or arc becomes under
// xform; eCannotScaleNonUniformly when it flattens to a line.
Acad::ErrorStatus EllipseOfCircle(const AcDbCircle& circle, const AcGeMatrix3d& xform,
                                  std::unique_ptr<AcDbEntity>& ellipse);

}  // namespace kelhost::db
