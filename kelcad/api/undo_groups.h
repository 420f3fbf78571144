// Undo grouping for the family's drafting commands, through the UNDO
// command.
#pragma once

namespace KEL {

// Takes a snapshot of the saved set and puts the variables into the
// drafting state (as Set0), then brings UNDO's control into the state the
// family works in: undo off (UNDOCTL 0) is turned to All, One (3) to All,
// and an open automatic group (13) is ended. Returns UNDOMARKS, or -1 when
// it cannot be read.
int ClearUNDO();
// ClearUNDO, then UNDO BEgin (a group starts).
void UndoB();
// ClearUNDO, then UNDO Mark.
void UndoM();
// Starts an undo group with the built-in UNDO (".undo"), enabling undo
// first when it is off and ending an open automatic group. Leaves CMDECHO
// at 0.
void UndoMGS();
// Ends an undo group: with undo off sends ".undo" "all" alone; with an
// automatic group open ends it; otherwise does nothing. Leaves CMDECHO at 0.
void UndoMGE();

}  // namespace KEL
