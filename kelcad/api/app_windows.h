// Handing the screen between the CAD program's main window and a window of
// the family's own (a palette or a dialog shown modeless or as if modal).
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// The CAD program's main window to the top and enabled; w is hidden.
void ShowCadWindows(CWnd* w);
// The main window disabled; w to the top, shown and enabled.
void ShowMyWindowsAsModal(CWnd* w);
// w to the top, shown and enabled; the main window is left as it is.
void ShowMyWindowsAsModeless(CWnd* w);

}  // namespace KEL
