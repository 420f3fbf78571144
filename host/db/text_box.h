// The box single-line text takes: from its baseline to the text height,
// as wide as its characters are estimated to be (db/mtext_layout.h), placed
// by its justification. What the text's extents and its outline in a slide
// are made of.
#pragma once

#include "arx/acge.h"

class AcDbText;

namespace kelhost::db {

// Lower left, lower right, upper right, upper left (WCS); false for a text
// that shows no characters or whose normal is a zero vector.
bool TextBoxCorners(const AcDbText& text, AcGePoint3d corners[4]);

}  // namespace kelhost::db
