// The host's command stack: commands registered by applications in
// groups, looked up by global or local name without regard to case.
#pragma once

#include <string>

#include "arx/accmd.h"

namespace kelhost::app {
AcEdCommandStack& CommandStack();
// Runs a registered command with the editor's notifications around it.
bool RunCommand(const std::wstring& name);
}  // namespace kelhost::app
