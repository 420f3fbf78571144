// Set1: back from the drafting state to the user's variables, with the
// family's working layer "PP-COM" on, usable and current.
#include "kelcad/api/cadvar.h"
#include "kelcad/api/sysvar_access.h"

namespace KEL {

namespace {

const wchar_t kWorkingLayer[] = L"PP-COM";

// The layer record's flags (group 70) and colour (group 62); false when
// the drawing has no such layer.
bool FindWorkingLayer(int& flags, int& color) {
  resbuf* record = acdbTblSearch(L"LAYER", kWorkingLayer, 0);
  if (record == nullptr) return false;
  flags = 0;
  color = 7;
  for (const resbuf* rb = record; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == 70) flags = rb->resval.rint;
    if (rb->restype == 62) color = rb->resval.rint;
  }
  acutRelRb(record);
  return true;
}

// Frozen (1), frozen in new viewports (2), both, locked (4), and frozen
// and locked (5) are each undone with one LAYER command. A lock together
// with the viewport freeze (6, 7) is left as it is, as the family's code
// has always left it.
void MakeWorkingLayerUsable(int flags) {
  switch (flags) {
    case 1:
    case 2:
    case 3:
      acedCommandS(RTSTR, L"LAYER", RTSTR, L"T", RTSTR, kWorkingLayer, RTSTR, L"", RTNONE);
      break;
    case 4:
      acedCommandS(RTSTR, L"LAYER", RTSTR, L"U", RTSTR, kWorkingLayer, RTSTR, L"", RTNONE);
      break;
    case 5:
      acedCommandS(RTSTR, L"LAYER", RTSTR, L"T", RTSTR, kWorkingLayer, RTSTR, L"U", RTSTR, kWorkingLayer, RTSTR,
                   L"", RTNONE);
      break;
    default:
      break;
  }
}

}  // namespace

void Set1() {
  RestoreCADVar();
  SetCADVar(L"CMDECHO", 0);
  int flags = 0;
  int color = 0;
  if (FindWorkingLayer(flags, color)) {
    if (flags >= 64) flags -= 64;  // the record is referenced: not a state of the layer
    if (color < 0) acedCommandS(RTSTR, L"LAYER", RTSTR, L"ON", RTSTR, kWorkingLayer, RTSTR, L"", RTNONE);
    MakeWorkingLayerUsable(flags);
    acedCommandS(RTSTR, L"LAYER", RTSTR, L"S", RTSTR, kWorkingLayer, RTSTR, L"", RTNONE);
  } else {
    acedCommandS(RTSTR, L"LAYER", RTSTR, L"M", RTSTR, kWorkingLayer, RTSTR, L"", RTNONE);
  }
  SetCADVar(L"CMDECHO", 1);
  SetCADVar(L"BLIPMODE", 1);
}

}  // namespace KEL
