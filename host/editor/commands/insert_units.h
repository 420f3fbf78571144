// Insertion units: the units a block was drawn in and the drawing's own
// (INSUNITS, kept in the drawing's header when a file gave it), the line
// INSERT shows about them, and the factor that scales one to the other.
#pragma once

#include <string>

#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"

namespace kelhost::editor {

// INSUNITS as the drawing's header holds it; unitless when it has none.
AcDb::UnitsValue DrawingUnits(const AcDbDatabase* db);
// "Unitless", "Millimeters", ...
std::wstring UnitsName(AcDb::UnitsValue units);
// What a block drawn in blockUnits is scaled by in a drawing in
// drawingUnits: 1 when either is unitless.
double UnitsConversion(AcDb::UnitsValue blockUnits, AcDb::UnitsValue drawingUnits);

}  // namespace kelhost::editor
