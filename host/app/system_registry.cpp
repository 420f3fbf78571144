// The system registry and its services: the dynamic linker, the command
// stack and the editor, found by the names the platform publishes.
#include <cwchar>

#include "app/app_state.h"
#include "app/arx_loading.h"
#include "app/command_stack.h"
#include "app/editor.h"
#include "arx/acrx.h"

AcRxObject::~AcRxObject() = default;

namespace kelhost::app {
namespace {

class HostDynamicLinker : public AcRxDynamicLinker {
 public:
  bool unlockApplication(void* appId) const override { return setFlag(appId, &LoadedModule::unlocked, true); }
  bool lockApplication(void* appId) const override { return setFlag(appId, &LoadedModule::unlocked, false); }
  bool isApplicationLocked(const ACHAR* name) const override {
    LoadedModule* m = FindModuleByName(name ? name : L"");
    return m && !m->unlocked;
  }
  bool registerAppMDIAware(void* appId) const override { return setFlag(appId, &LoadedModule::mdiAware, true); }
  bool registerAppNotMDIAware(void* appId) const override {
    return setFlag(appId, &LoadedModule::mdiAware, false);
  }
  // By name as acedArxLoad takes it; the headless host prints nothing.
  bool loadModule(const ACHAR* fileName, bool, bool) override { return fileName && LoadArx(fileName); }
  bool unloadModule(const ACHAR* fileName, bool) override { return fileName && UnloadArx(fileName); }

 private:
  static bool setFlag(void* appId, bool LoadedModule::*flag, bool value) {
    LoadedModule* m = FindModule(appId);
    if (!m) return false;
    m->*flag = value;
    return true;
  }
};

class SystemRegistry : public AcRxDictionary {
 public:
  AcRxObject* at(const ACHAR* key) const override {
    if (!key) return nullptr;
    if (std::wcscmp(key, ACRX_DYNAMIC_LINKER) == 0) return &mLinker;
    if (std::wcscmp(key, ACRX_COMMAND_DOCK) == 0) return &CommandStack();
    if (std::wcscmp(key, ACRX_EDITOR) == 0) return &Editor();
    return nullptr;
  }

 private:
  mutable HostDynamicLinker mLinker;
};

}  // namespace
}  // namespace kelhost::app

AcRxDictionary* acrxSysRegistry() {
  static kelhost::app::SystemRegistry registry;
  return &registry;
}
