// The objects the last command took away from the drawing when the user
// asked for them to be removed (WBLOCK of selected objects, ERASE): what
// OOPS brings back. Each such command replaces the set.
#pragma once

#include <vector>

#include "arx/dbid.h"

namespace kelhost::editor {

void RememberErased(std::vector<AcDbObjectId> ids);
const std::vector<AcDbObjectId>& LastErased();

}  // namespace kelhost::editor
