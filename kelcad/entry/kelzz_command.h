// The module's one command, "KELZZ" (zoom to extents) in the group "KELCAD".
#pragma once

namespace KEL {
// On the command stack, if the host has one. False when it could not be added.
bool AddKelCommands();
// Removes the whole command group.
void RemoveKelCommands();
}  // namespace KEL
