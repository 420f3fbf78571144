// EXTMIN and EXTMAX kept exact. The platform widens them as objects are
// drawn and shrinks them only on a regeneration; the host works them out
// again whenever they are read (or saved) after any object of the drawing
// changed: a write, an addition, an erasure. Without anything drawn they
// are the empty box's corners, (1e20, 1e20, 1e20) and (-1e20, -1e20, -1e20).
#pragma once

#include "arx/dbextents.h"
#include "arx/dbid.h"

class AcDbDatabase;

namespace kelhost::db {

// The box around the entities of a space that are drawn (visible, not on a
// frozen layer; objects on layers that are off still count, as on the
// platform). False when there are none.
bool SpaceExtents(AcDbDatabase* db, AcDbObjectId space, AcDbExtents& out);
// Brings the header's EXTMIN and EXTMAX up to date for space when an object
// changed since they were last worked out (or they were for another space).
void RefreshExtents(AcDbDatabase* db, AcDbObjectId space);
// For changes made without opening objects (they mark it themselves).
void MarkExtentsStale(AcDbDatabase* db);

}  // namespace kelhost::db
