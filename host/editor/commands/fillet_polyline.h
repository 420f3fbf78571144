// FILLET's Polyline option: an arc of the fillet radius at every vertex of
// a lightweight polyline where two straight segments meet and both are
// long enough for it (a segment shares its length between the fillets at
// its two ends).
#pragma once

#include "arx/dbents.h"

namespace kelhost::editor {

struct PolylineFillets {
  int filleted = 0;  // vertices rounded
  int tooShort = 0;  // vertices whose segments could not take the radius
};

// Rounds the polyline (open for write); radius 0 changes nothing.
PolylineFillets FilletPolylineVertices(AcDbPolyline& pline, double radius);

}  // namespace kelhost::editor
