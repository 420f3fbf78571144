// The CAD program's colour index against colours given as RGB (a Windows
// COLORREF: red in the low byte, then green, then blue), through the
// platform's table of the 256 index colours (AcCmEntityColor::lookUpRGB).
#pragma once

#include "kelcad/platform.h"

namespace KEL {
// The index (1-255) whose table colour is exactly rgb, the lowest when
// several are (pure red is 1, not 10; white is 7, not 255); -1 when none
// is. The byte above blue is ignored.
int IsStandardCADColor(COLORREF rgb);
// The index (1-255) of the table colour nearest to rgb: the least
// Euclidean distance in RGB space, sqrt(dr^2 + dg^2 + db^2), the lowest
// index on a tie. An exact colour gives what IsStandardCADColor gives.
int GetCADColorIndexNearest(COLORREF rgb);
}  // namespace KEL
