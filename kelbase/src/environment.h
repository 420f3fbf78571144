// Reading the process environment through the platform's call, so values
// the module sets with SetEnvironmentVariableW are seen as well.
#pragma once

#include "kelcad/platform.h"

namespace kelbase {
// The variable's value; false (and value emptied) when the variable is
// absent or empty, which the family treats alike: "not configured".
bool ReadEnvironment(const wchar_t* name, CString& value);
}  // namespace kelbase
