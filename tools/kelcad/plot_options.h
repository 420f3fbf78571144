// The console's --plot-* options as plot settings.
#pragma once

#include <string>

#include "kelhost/plot.h"
#include "options.h"

namespace kelcad_console {

// False with a message when a value is not understood (an unknown paper,
// a scale of zero, a resolution out of range...).
bool PlotSettingsOf(const Options& options, kelhost::plot::Settings& settings, std::string& error);

}  // namespace kelcad_console
