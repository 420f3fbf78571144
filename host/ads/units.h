// The unit settings the number and angle conversions (acutRToS,
// acutDisToF, acutAngToS) read when asked for the current units: the
// drawing's system variables once a drawing supplies them, a new
// drawing's defaults before.
#pragma once

#include <functional>
#include <string>

namespace kelhost::units {

struct Settings {
  int lunits = 2;    // decimal
  int luprec = 4;
  int aunits = 0;    // decimal degrees
  int auprec = 0;
  int dimzin = 0;    // zero suppression (feet and inches, leading and trailing zeros)
  int unitmode = 0;  // 1: feet and fractions written as they are typed
};

// Where current values come from (the system variables); an empty source
// restores the defaults above.
void SetSettingsSource(std::function<Settings()> source);
Settings CurrentSettings();

// A distance as a command's prompt shows its default ("<297.0000>"): the
// current units and precision, without DIMZIN's zero suppression (which
// applies to rtos and dimension text only).
std::wstring PromptDistance(double value);

}  // namespace kelhost::units
