// The command line: where everything the module and AutoLISP print goes.
#pragma once

#include <string>

namespace kelhost::app {
void WriteCommandLine(const std::wstring& text);
// True when nothing was written yet or the last text ended a line.
bool AtLineStart();
}  // namespace kelhost::app
