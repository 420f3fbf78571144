// The arrowhead blocks of dimensions. The closed filled arrowhead has no
// block (a null id, named "" or "."); every other standard arrowhead is a
// block of the drawing named as the platform names it ("_ArchTick",
// "_Oblique", "_Dot", ...), made the first time a dimension asks for it.
// Each is drawn for an arrow size of 1 with its tip at the origin, the
// arrow pointing along +X (its body towards -X).
#pragma once

#include "arx/dbmain.h"

class AcDbDatabase;

namespace kelhost::db {

// The block of an arrowhead named in any case, with or without the leading
// "_": a block of that name in the drawing, else a standard arrowhead made
// now. id is null for the closed filled arrowhead ("", ".", "_ClosedFilled").
// eKeyNotFound for a name that is neither a block nor a standard arrowhead.
Acad::ErrorStatus ArrowBlock(AcDbDatabase* db, const wchar_t* name, AcDbObjectId& id);

// A stroke rather than an arrowhead ("_ArchTick", "_Oblique", "_Integral",
// "_None"): the dimension line runs on past the extension lines by DIMDLE.
bool IsTickArrow(AcDbObjectId block);

}  // namespace kelhost::db
