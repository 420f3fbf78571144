// The module's start-up and unload sequences.
#include <new>

#include "kelbase/kelbase.h"
#include "kelcad/api/cadvar.h"
#include "kelcad/api/drawing_in_use.h"
#include "kelcad/entry/editor_reactor.h"
#include "kelcad/entry/kelzz_command.h"
#include "kelcad/entry/module_state.h"
#include "kelcad/entry/published_symbols.h"
#include "kelcad/entry/settings.h"

namespace KEL {

namespace {

struct ModuleState {
  bool startedWithoutLauncher = true;
  toKelCadVar* savedCadVars = nullptr;
  KelEditorReactor* editorReactor = nullptr;
  bool editorReactorOn = false;
};

ModuleState gState;

// Environment variables are read into buffers of the size the family has
// always used. A value that does not fit is reported as present but empty.
constexpr DWORD kEnvBufferSize = 1024;

bool ReadEnvironment(const wchar_t* name, CString& value) {
  wchar_t buffer[kEnvBufferSize] = {};
  const DWORD length = GetEnvironmentVariableW(name, buffer, kEnvBufferSize);
  if (length == 0) return false;
  value = length < kEnvBufferSize ? CString(buffer) : CString();
  return true;
}

void RegisterWithDynamicLinker(void* appId) {
  AcRxDictionary* registry = acrxSysRegistry();
  AcRxDynamicLinker* linker = registry != nullptr ? AcRxDynamicLinker::cast(registry->at(ACRX_DYNAMIC_LINKER)) : nullptr;
  if (linker == nullptr) return;
  linker->unlockApplication(appId);
  linker->registerAppMDIAware(appId);
}

void AddCommonFilesDirToPath() {
  CString dir;
  if (GetKELCommonFilesDir(dir)) AddPathEnvironmentVariable(dir);
}

// The launcher names the CAD profile to use; making it the current profile
// means writing it as the default value of the product's "Profiles" key.
// The per-user product root key is meant: profiles are per user, and the
// key is written under HKEY_CURRENT_USER.
void TakeProfileFromLauncher() {
  CString profile;
  if (!ReadEnvironment(L"ACADCurrentProfiles", profile)) return;
  gState.startedWithoutLauncher = false;
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  if (services != nullptr && !profile.IsEmpty()) {
    const wchar_t* root = services->getUserRegistryProductRootKey();
    CString key;
    key.Format(L"%s\\Profiles", root != nullptr ? root : L"");
    SetRegStr(HKEY_CURRENT_USER, key, nullptr, profile);
  }
  SetEnvironmentVariableW(L"ACADCurrentProfiles", nullptr);
}

// The launcher's software key is only consumed: removed from the
// environment, its value not used.
void ConsumeSoftwareProfileKey() {
  CString ignored;
  if (!ReadEnvironment(L"SoftwareProfileKey", ignored)) return;
  SetEnvironmentVariableW(L"SoftwareProfileKey", nullptr);
  RegCloseKey(HKEY_CURRENT_USER);
}

}  // namespace

toKelCadVar* SavedCadVarSet() { return gState.savedCadVars; }
KelEditorReactor* EditorReactor() { return gState.editorReactor; }
bool StartedWithoutLauncher() { return gState.startedWithoutLauncher; }
bool EditorReactorSwitchedOn() { return gState.editorReactorOn; }
void SwitchEditorReactor(bool on) { gState.editorReactorOn = on; }

void StartUpModule(void* appId) {
  // A module loaded again in the same process starts from a clean state,
  // as a freshly loaded library would.
  gState.startedWithoutLauncher = true;
  gState.editorReactorOn = false;
  ForgetCurrentDrawing();
  RegisterWithDynamicLinker(appId);
  AddCommonFilesDirToPath();
  AddKelCommands();
  TakeProfileFromLauncher();
  ConsumeSoftwareProfileKey();
  SysINI().SetFilePath(SysINIFilePath());
  UserINI().SetFilePath(UserINIFilePath());
  PublishGCSymbols();
  PublishPathAndToleranceSymbols();
  gState.savedCadVars = new (std::nothrow) toKelCadVar();
  AfxEnableControlContainer();
  gState.editorReactor = new (std::nothrow) KelEditorReactor(true);
}

void UnloadModule() {
  RemoveKelCommands();
  delete gState.savedCadVars;
  gState.savedCadVars = nullptr;
  if (gState.startedWithoutLauncher) {
    SetIsInSoftware(false);
    SRCADMenu(false, CString());
  }
  delete gState.editorReactor;
  gState.editorReactor = nullptr;
}

}  // namespace KEL
