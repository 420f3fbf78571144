// Inside the module: the drawing its functions work in.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// The current drawing kept by SetCurDWGPtr, else the working database;
// null when there is neither.
AcDbDatabase* DrawingInUse();
// Back to no current drawing of the module's own (start-up).
void ForgetCurrentDrawing();

}  // namespace KEL
