// PAN (also -PAN, and 'PAN inside another command): moves the view so the
// drawing moves from a base point to a second point, or by a displacement
// given alone. The headless editor has no real-time pan: PAN asks what
// -PAN asks.
#include "editor/builtin_commands.h"
#include "editor/view.h"

namespace kelhost::editor {
namespace {

void RunPan(CommandContext& c) {
  const Answer base = c.askPoint(L"\nSpecify base point or displacement: ");
  if (base.status != RTNORM) return;
  const Answer second = c.askPoint(L"\nSpecify second point: ", L"", 0, base.point);
  double move[3];
  for (int i = 0; i < 3; ++i) move[i] = second.status == RTNORM ? second.point[i] - base.point[i] : base.point[i];
  double shift[2];
  UcsToDisplay(move, true, shift);
  ViewBox view = CurrentViewBox();
  view.center[0] -= shift[0];
  view.center[1] -= shift[1];
  ShowViewBox(view);
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Pan, {L"PAN", RunPan, /*hasDialog*/ true, /*transparent*/ true});

}  // namespace kelhost::editor
