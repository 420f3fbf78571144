// String helpers of the family.
#pragma once

#include "kelcad/platform.h"

namespace KEL {
// The value in fixed notation with the given number of decimals.
CString FloatToStr(double value, int decimals);
// text cut or filled with blanks to exactly length characters.
CString FixLenStr(const wchar_t* text, int length);
}  // namespace KEL

namespace KELOLD {
// Splits text at commas into parts (appended after clearing parts); with
// trim, blanks around each part are removed. Returns the number of parts.
int DisCommaString(const wchar_t* text, CStringArray& parts, bool trim);
}  // namespace KELOLD
