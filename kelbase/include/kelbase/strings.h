// String helpers of the family.
#pragma once

#include "kelcad/platform.h"

namespace KEL {
// The value in fixed notation with the given number of decimals (0 to
// 1074; a negative count is 0), always with a "." as decimal point: the
// digits of printf's %.*f in the "C" locale, so -0.0000001 with 2
// decimals gives "-0.00".
CString FloatToStr(double value, int decimals);
// text cut or filled with blanks at its end to exactly length characters
// (wide characters, so a Chinese character counts as one). A null text is
// empty; a length of 0 or less gives an empty string.
CString FixLenStr(const wchar_t* text, int length);
// text filled with blanks to length characters: at its end (left-aligned)
// or, with rightAligned, in front. A text already that long or longer is
// returned unchanged, so nothing is ever cut.
CString FixLenStr(const wchar_t* text, int length, bool rightAligned);
}  // namespace KEL

namespace KELOLD {
// Splits text at commas into parts (appended after clearing parts); with
// trim, blanks around each part are removed. Every comma separates two
// parts, so "a,,b" gives "a", "", "b" and "a," gives "a", "". An empty
// (or null) text gives no parts at all. Returns the number of parts.
int DisCommaString(const wchar_t* text, CStringArray& parts, bool trim);
}  // namespace KELOLD
