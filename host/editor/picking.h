// Picking an object at a point, as a click at a prompt does: the object
// nearest the point within the pick box, among the visible objects of the
// current space.
#pragma once

#include <cstdint>

#include "arx/dbid.h"

namespace kelhost::editor {

// The pick box's half size in drawing units: PICKBOX pixels of the view.
double PickAperture();
// ucsPoint in the current UCS; false when nothing is near enough.
bool PickEntityAt(const double ucsPoint[3], std::int64_t name[2]);
AcDbObjectId PickIdAt(const double ucsPoint[3]);

}  // namespace kelhost::editor
