// The host's command stack: commands registered by applications in
// groups, looked up by global or local name without regard to case.
#pragma once

#include <string>

#include "arx/accmd.h"

namespace kelhost::app {
AcEdCommandStack& CommandStack();
// A registered command by upper-case name: the global name, or (unless
// globalOnly) the local one; the group added last wins. Null when none.
AcEdCommand* FindRegisteredCommand(const std::wstring& upperName, bool globalOnly);
}  // namespace kelhost::app
