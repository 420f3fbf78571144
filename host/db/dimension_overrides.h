// A dimension's own values of its style's variables, kept as the platform
// keeps them: in the dimension's xdata of the application "ACAD", as
// (1000 . "DSTYLE") (1002 . "{") then for each variable its group code
// (1070) and its value (1040 a real, 1070 an integer, 1005 the handle of a
// record), and (1002 . "}").
#pragma once

#include <functional>
#include <optional>

#include "arx/dbmain.h"

namespace kelhost::db {

std::optional<double> DimOverrideReal(const AcDbObject* dim, int code);
std::optional<int> DimOverrideInt(const AcDbObject* dim, int code);
std::optional<AcDbObjectId> DimOverrideRecord(const AcDbObject* dim, int code);
// The dimension open for write. Any other value of that variable is
// replaced; the rest of the application's data stays.
Acad::ErrorStatus SetDimOverrideReal(AcDbObject* dim, int code, double value);
Acad::ErrorStatus SetDimOverrideRecord(AcDbObject* dim, int code, AcDbObjectId record);
Acad::ErrorStatus SetDimOverrideInt(AcDbObject* dim, int code, int value);
Acad::ErrorStatus SetDimOverrideText(AcDbObject* dim, int code, const wchar_t* text);
// Drops the dimension's own value of one variable / of all of them (the
// DSTYLE list goes when it is left empty).
Acad::ErrorStatus RemoveDimOverride(AcDbObject* dim, int code);
Acad::ErrorStatus RemoveDimOverrides(AcDbObject* dim);

// Each of the dimension's own values in the order kept: the variable's
// group code and its value node (1040, 1070, 1005 or 1000).
void ForEachDimOverride(const AcDbObject* dim, const std::function<void(int, const resbuf&)>& visit);

}  // namespace kelhost::db
