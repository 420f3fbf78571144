// Two drawing-wide settings of the family kept in the drawing's user
// system variables: the default text height (USERR5) and the number of
// decimal places of dimensions (USERI4).
#pragma once

namespace KEL {

// USERR5. When it cannot be read the last value known to the module is
// given; a value not above 0 becomes 3.5, written back.
double GetTextHigh();
// Writes h to USERR5; false, writing nothing, when h is not above the
// ZERO tolerance or the write is refused.
bool SetTextHigh(double h);

// USERI4. When it cannot be read the last value known to the module is
// given; 6 or more becomes 3, written back. Negative values are given as
// they are.
int GetBZXSW();
// Writes v to USERI4; false, writing nothing, for a negative v or when the
// write is refused.
bool SetBZXSW(int v);

}  // namespace KEL
