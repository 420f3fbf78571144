// Zooming the current view.
#pragma once

namespace KEL {

// The drawing's extents with a margin of 3% of their diagonal on each
// side (ZOOM Window); ZOOM Extents for an empty drawing. CMDECHO is 0
// meanwhile and put back afterwards.
void ZoomE();

}  // namespace KEL
