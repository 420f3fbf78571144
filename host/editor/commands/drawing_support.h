// What the drawing commands share: points from the user's coordinate
// system to the world, and new entities added to the current space with
// the current layer, colour and linetype.
#pragma once

#include <memory>

#include "arx/dbents.h"
#include "arx/dbid.h"
#include "arx/acge.h"

namespace kelhost::editor {

AcGePoint3d ToWorld(const double ucs[3]);
// The entity takes the drawing's current properties and joins the current
// space; null id when it could not (the entity is deleted then).
AcDbObjectId AppendToCurrentSpace(std::unique_ptr<AcDbEntity> entity);
// Erases an entity the command made (its own Undo option).
void EraseEntity(AcDbObjectId id);

}  // namespace kelhost::editor
