// Deciding whether typed text is a complete AutoLISP expression yet.
#pragma once

#include <string>

namespace kelcad_console {
// Open parentheses not yet closed, outside strings and comments; negative
// when there are more closing than opening ones.
int OpenParens(const std::wstring& text);
// A line that starts an AutoLISP expression rather than a command name.
bool IsLispInput(const std::wstring& line);
}  // namespace kelcad_console
