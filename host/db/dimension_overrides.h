// A dimension's own values of its style's variables, kept as the platform
// keeps them: in the dimension's xdata of the application "ACAD", as
// (1000 . "DSTYLE") (1002 . "{") then for each variable its group code
// (1070) and its value (1040 a real, 1070 an integer, 1005 the handle of a
// record), and (1002 . "}").
#pragma once

#include <optional>

#include "arx/dbmain.h"

namespace kelhost::db {

std::optional<double> DimOverrideReal(const AcDbObject* dim, int code);
std::optional<AcDbObjectId> DimOverrideRecord(const AcDbObject* dim, int code);
// The dimension open for write. Any other value of that variable is
// replaced; the rest of the application's data stays.
Acad::ErrorStatus SetDimOverrideReal(AcDbObject* dim, int code, double value);
Acad::ErrorStatus SetDimOverrideRecord(AcDbObject* dim, int code, AcDbObjectId record);

}  // namespace kelhost::db
