// A drawing setting read for a plot: a header variable the host defines,
// else one the host keeps only as the drawing's file gave it (LWDISPLAY,
// LWDEFAULT), else the fallback.
#pragma once

class AcDbDatabase;

namespace kelhost::plot {

double DrawingSetting(AcDbDatabase* db, const wchar_t* name, double fallback);

}  // namespace kelhost::plot
