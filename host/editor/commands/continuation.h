// Where the last line, arc or polyline segment drawn ended and which way
// it was heading: LINE, ARC and PLINE continue from there when the user
// presses Enter at their first prompt (a line after an arc, and an arc
// after anything, leave tangent to it). Arcs also set LASTANGLE.
#pragma once

#include "editor/commands/plane_arc.h"

namespace kelhost::editor {

struct Continuation {
  double point[3] = {0.0, 0.0, 0.0};  // UCS
  double direction = 0.0;             // of travel at the end, from the UCS X axis
  bool afterArc = false;
};

void RememberLineEnd(const double from[3], const double to[3]);
void RememberArcEnd(const PlaneArc& arc, double z);
// False when nothing was drawn yet in this drawing.
bool LastContinuation(Continuation& out);
// A new drawing starts with nothing to continue.
void ForgetContinuation();

}  // namespace kelhost::editor
