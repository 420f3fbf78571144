// Measuring text with the fonts of its style (the CAD program's textbox).
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// The width of text at height in the current text style, with the width
// factor widthFactor; a negative factor means the family's configured one
// (GetTextWidthFactor). False, width untouched, when the text cannot be
// measured.
bool GetTextWidth(const wchar_t* text, double height, double& width, double widthFactor = -1.0);

// The corners of a TEXT's, attribute's or attribute definition's box, made
// larger by xMargin to the left and right and by yMargin below and above,
// turned with the text and placed at it, in world coordinates: lowerLeft,
// lowerRight, upperRight and upperLeft as the text reads, and the box's
// centre. Each output is a point (three doubles). 1 when done; 0, with the
// outputs untouched, when the entity is not such a text, cannot be
// measured, or an output is null.
int GetTextRect(ads_name text, double xMargin, double yMargin, double* lowerLeft, double* lowerRight,
                double* upperRight, double* upperLeft, double* centre);

}  // namespace KEL
