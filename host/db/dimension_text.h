// The text of a dimension: its measurement written as the dimension style
// says, and the user's text around it.
#pragma once

#include <string>

class AcDbDimStyleTableRecord;

namespace kelhost::db {

// A length as the style writes it: times DIMLFAC, rounded to DIMRND, in
// DIMLUNIT's units with DIMDEC decimals. Decimal units (2, and 6, the
// system's decimal form) drop zeros as DIMZIN says (4 leading, 8
// trailing) and use DIMDSEP as the separator; scientific, engineering,
// architectural and fractional ones are written as acutRToS writes them.
// DIMPOST then gives a prefix and suffix: its "<>" stands for the number,
// or without one it is a suffix.
std::wstring FormatLinearMeasurement(double value, const AcDbDimStyleTableRecord& style);

// The dimension's own text with the measurement in it: empty or "<>" is
// the measurement, the first "<>" in it is replaced by the measurement, a
// single space hides the text, anything else stands as it is.
std::wstring DimensionTextWith(const std::wstring& own, const std::wstring& measured);

}  // namespace kelhost::db
