// The undo journal as the rest of the editor sees it: the groups that U,
// UNDO and REDO step through. A group opens when a command starts and
// when an AutoLISP expression typed at the prompt starts; everything the
// drawing gains, loses or changes while a group is open belongs to it.
#pragma once

#include <string>

namespace kelhost::editor::undo {

// A command of that name starts / ends (cancelled and failed commands
// too: what they changed is undone as one step). Commands run inside
// another command or inside an UNDO BEgin group join the open group.
void CommandStarted(const std::wstring& name);
void CommandEnded(const std::wstring& name);
// An AutoLISP expression evaluated at the "Command:" prompt (commands it
// runs make groups of their own).
void ExpressionStarted();
void ExpressionEnded();

}  // namespace kelhost::editor::undo
