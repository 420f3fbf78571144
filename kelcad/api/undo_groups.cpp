// Undo grouping through the UNDO command.
#include "kelcad/api/undo_groups.h"

#include "kelcad/api/cadvar.h"
#include "kelcad/api/sysvar_access.h"

namespace KEL {

namespace {

// UNDOCTL's bits.
constexpr int kUndoEnabled = 1;
constexpr int kUndoAuto = 4;
constexpr int kUndoGroupOpen = 8;

bool AutoGroupOpen(int undoctl) {
  return (undoctl & kUndoAuto) != 0 && (undoctl & kUndoGroupOpen) != 0;
}

}  // namespace

int ClearUNDO() {
  Set0();
  switch (GetCADIntVar(L"UNDOCTL")) {
    case 0:
      acedCommandS(RTSTR, L"UNDO", RTSTR, L"A", RTNONE);
      break;
    case 3:
      acedCommandS(RTSTR, L"UNDO", RTSTR, L"C", RTSTR, L"A", RTNONE);
      break;
    case 13:
      acedCommandS(RTSTR, L"UNDO", RTSTR, L"E", RTNONE);
      break;
    default:
      break;
  }
  return GetCADIntVar(L"UNDOMARKS");
}

void UndoB() {
  ClearUNDO();
  acedCommandS(RTSTR, L"UNDO", RTSTR, L"B", RTNONE);
}

void UndoM() {
  ClearUNDO();
  acedCommandS(RTSTR, L"UNDO", RTSTR, L"M", RTNONE);
}

// Both group functions test the value read before their first command.
void UndoMGS() {
  SetCADVar(L"cmdecho", 0);
  int undoctl = 0;
  GetCADVar(L"undoctl", undoctl);
  if ((undoctl & kUndoEnabled) == 0) acedCommandS(RTSTR, L".undo", RTSTR, L"c", RTSTR, L"all", RTNONE);
  if (AutoGroupOpen(undoctl)) acedCommandS(RTSTR, L".undo", RTSTR, L"e", RTNONE);
  acedCommandS(RTSTR, L".undo", RTSTR, L"g", RTNONE);
}

void UndoMGE() {
  SetCADVar(L"cmdecho", 0);
  int undoctl = 0;
  GetCADVar(L"undoctl", undoctl);
  if ((undoctl & kUndoEnabled) == 0) acedCommandS(RTSTR, L".undo", RTSTR, L"all", RTNONE);
  else if (AutoGroupOpen(undoctl)) acedCommandS(RTSTR, L".undo", RTSTR, L"e", RTNONE);
}

}  // namespace KEL
