// The undo journal as the command processor and the prompt see it: the
// hooks that open and close its steps (editor/undo_journal.h). A command
// is a step (cancelled and failed ones too: what they changed is undone
// as one step); commands run inside another command join its step. What
// an AutoLISP expression evaluated at the "Command:" prompt changes
// outside commands is a step; the commands it runs are steps of their own.
#pragma once

#include <string>

namespace kelhost::editor::undo {

// A command of that name starts / ends.
void CommandStarted(const std::wstring& name);
void CommandEnded(const std::wstring& name);
// An AutoLISP expression evaluated at the "Command:" prompt starts / ends.
void ExpressionStarted();
void ExpressionEnded();

}  // namespace kelhost::editor::undo
