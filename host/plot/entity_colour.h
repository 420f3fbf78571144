// The colour a colour index plots with on white paper: the index table's,
// except white (7), which plots black as the background's opposite.
#pragma once

#include <cstdint>

namespace kelhost::plot {

std::uint32_t PlottedRgb(int colorIndex);

}  // namespace kelhost::plot
