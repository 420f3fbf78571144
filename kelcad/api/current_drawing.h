// The module's current drawing: the database that the family's drawing
// functions work in when they are not given one.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// Keeps db (the working database when db is null) as the current drawing;
// true when the kept pointer is not null.
bool SetCurDWGPtr(AcDbDatabase* db);
// The current drawing, or the working database while none is kept; null
// when there is neither.
AcDbDatabase* GetCurDWGPtr();

}  // namespace KEL
