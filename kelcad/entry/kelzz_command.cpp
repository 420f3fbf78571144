// The command "KELZZ": transparent, works on the pick set, zooms to the
// drawing's extents.
#include "kelcad/entry/kelzz_command.h"

#include "kelcad/api/zoom.h"
#include "kelcad/platform.h"

namespace KEL {

namespace {

const wchar_t kCommandGroup[] = L"KELCAD";

AcEdCommandStack* CommandStack() {
  AcRxDictionary* registry = acrxSysRegistry();
  return registry != nullptr ? AcEdCommandStack::cast(registry->at(ACRX_COMMAND_DOCK)) : nullptr;
}

// Called by the command processor: nothing may escape to it.
void KelZZ() {
  try {
    ZoomE();
  } catch (...) {
  }
}

}  // namespace

bool AddKelCommands() {
  AcEdCommandStack* stack = CommandStack();
  if (stack == nullptr) return false;
  return stack->addCommand(kCommandGroup, L"KELZZ", L"KELZZ", ACRX_CMD_TRANSPARENT | ACRX_CMD_USEPICKSET, KelZZ,
                           nullptr, -1) == Acad::eOk;
}

void RemoveKelCommands() {
  if (AcEdCommandStack* stack = CommandStack()) stack->removeGroup(kCommandGroup);
}

}  // namespace KEL
