// Object selection at "Select objects:": picks, windows, fences and the
// other selection modes, until Enter. Shared by the commands that select
// and by acedSSGet's interactive forms.
#pragma once

#include <string>
#include <vector>

#include "arx/dbid.h"
#include "editor/command_context.h"

namespace kelhost::editor {

std::vector<AcDbObjectId> SelectObjects(CommandContext& c, const std::wstring& prompt);

}  // namespace kelhost::editor
