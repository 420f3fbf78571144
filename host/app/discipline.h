// The open/close discipline: whoever opens an object closes it before
// returning. Checked after every external function call and command.
#pragma once

#include <string>

namespace kelhost::app {
// Call with the open-object count from before the call; reports on
// standard error what the call left open.
void CheckNothingLeftOpen(int openBefore, const std::wstring& what);
int DisciplineViolations();
}  // namespace kelhost::app
