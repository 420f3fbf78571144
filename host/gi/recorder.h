// Drawing a drawable the way the graphics system does (its attributes,
// then its worldDraw) into a picture of what it drew. Nested drawables
// (a block's entities) are drawn with their own properties: a colour or
// lineweight BYBLOCK takes the enclosing drawable's.
#pragma once

#include "gi/picture.h"

namespace kelhost::gi {

struct DrawOptions {
  bool dragging = false;  // what isDragging() answers: a jig's sample
  AcGiRegenType regenType = kAcGiStandardDisplay;
};

// Nothing when the drawable says it is invisible.
Picture Draw(AcGiDrawable& drawable, const DrawOptions& options = DrawOptions());

}  // namespace kelhost::gi
