// The dimension-style variables: group code, name and the defaults of the
// imperial (Standard) and metric (ISO-25) styles.
#pragma once

#include <vector>

class AcDbDimStyleTableRecord;

namespace kelhost::db {
struct DimVar {
  int code;
  const wchar_t* name;
  double imperial;
  double metric;
};
const std::vector<DimVar>& DimRealVars();
const std::vector<DimVar>& DimIntVars();
// Sets every variable of a style (open for write) to its metric default.
void UseMetricDimDefaults(AcDbDimStyleTableRecord* style);
}  // namespace kelhost::db
