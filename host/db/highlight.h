// The highlighted state the headless host keeps for entities.
#pragma once

#include "arx/dbid.h"

namespace kelhost::db {
void SetHighlighted(AcDbObjectId id, bool on);
}  // namespace kelhost::db
