// Putting entities into a drawing: model space of the current drawing, or
// the current space (model or paper) of a database.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// Appends ent to model space of the current drawing (KEL::GetCurDWGPtr),
// whatever space is current; its id goes to outId. The entity stays open:
// the caller closes it (or deletes it when the append failed). Status 364
// when there is no drawing at all; otherwise the status of the first table
// call that failed, or eOk.
Acad::ErrorStatus Append(AcDbEntity* ent, AcDbObjectId& outId);

// Appends ent to the current space of db, by default the working database
// (not the current drawing). eInvalidInput when the current space cannot
// be opened for write; a refused append prints
// "\nERROR: could not add entity to current space " and gives its status.
Acad::ErrorStatus addToCurrentSpace(AcDbEntity* ent, AcDbDatabase* db = nullptr);
// The same, then closes ent on success or deletes it on failure (an
// entity already in a database is left alone).
Acad::ErrorStatus addToCurrentSpaceAndClose(AcDbEntity* ent, AcDbDatabase* db = nullptr);
// The block of db's current space opened in mode; null when it cannot be
// opened. The caller closes it.
AcDbBlockTableRecord* openCurrentSpaceBlock(AcDb::OpenMode mode, AcDbDatabase* db);

}  // namespace KEL
