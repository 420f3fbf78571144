// Object selection at "Select objects:": picks, windows, fences, polygons
// and the other selection modes, adding and removing, until Enter. Shared
// by the commands that select and by acedSSGet's interactive forms; the
// objects chosen become the Previous selection.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "arx/dbid.h"
#include "editor/command_context.h"
#include "editor/requests.h"

namespace kelhost::editor {

// Where the selection asks and speaks.
class SelectionDialog {
 public:
  virtual ~SelectionDialog() = default;
  // The answer to a prompt; RTCAN for cancel.
  virtual Answer ask(const Request& request) = 0;
  virtual void print(const std::wstring& text) = 0;
};

struct SelectionOptions {
  std::wstring prompt = L"\nSelect objects: ";
  bool single = false;           // the first selection that finds something ends it (":S")
  bool wholeAperture = false;    // a pick takes everything in the pick box (":E")
  bool impliedWindows = true;    // a pick that finds nothing starts a window
  // A filter: the objects it refuses are counted out and left out.
  std::function<bool(AcDbObjectId)> accept;
};

struct SelectionResult {
  int status = 0;  // RTNORM (ids may be empty), RTCAN
  std::vector<AcDbObjectId> ids;
};

SelectionResult SelectObjects(SelectionDialog& dialog, const SelectionOptions& options);

// A built-in command's selection: cancel ends the command (CommandCancelled).
std::vector<AcDbObjectId> SelectObjects(CommandContext& c, const std::wstring& prompt);

// The keywords of "Select objects:".
extern const wchar_t kSelectionKeywords[];

}  // namespace kelhost::editor
