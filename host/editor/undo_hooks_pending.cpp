// Until the journal is in, groups are not recorded.
#include "editor/undo.h"

namespace kelhost::editor::undo {
void CommandStarted(const std::wstring&) {}
void CommandEnded(const std::wstring&) {}
void ExpressionStarted() {}
void ExpressionEnded() {}
}  // namespace kelhost::editor::undo
