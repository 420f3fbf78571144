// What the module keeps from start-up to unload.
#pragma once

#include "kelcad/platform.h"

class toKelCadVar;
class KelEditorReactor;

namespace KEL {

// The saved system-variable set and the editor reactor made at start-up;
// null before start-up, after unload, or when they could not be made.
toKelCadVar* SavedCadVarSet();
KelEditorReactor* EditorReactor();
// True unless the CAD program was started through the family's launcher
// (which passes the profile in "ACADCurrentProfiles"); unload then gives
// the CAD program back its own menu.
bool StartedWithoutLauncher();

// The editor reactor's switch: off from start-up until an AutoLISP program
// turns it on ("kel_enableeditorreactor").
bool EditorReactorSwitchedOn();
void SwitchEditorReactor(bool on);

// The start-up sequence (kInitAppMsg) and the unload sequence
// (kUnloadAppMsg). No step stops the sequence when it fails.
void StartUpModule(void* appId);
void UnloadModule();

// The module's instance handle and the resource handle kept by the DLL
// entry.
HINSTANCE ModuleInstance();
HINSTANCE ModuleResourceHandle();

}  // namespace KEL
