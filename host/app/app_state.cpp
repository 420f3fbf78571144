#include "app/app_state.h"

#include "kelhost/text.h"

namespace kelhost::app {
namespace {
LoadedModule* gCurrent = nullptr;

}  // namespace

std::vector<std::unique_ptr<LoadedModule>>& Modules() {
  static std::vector<std::unique_ptr<LoadedModule>> modules;
  return modules;
}

LoadedModule* FindModule(void* appId) {
  for (auto& m : Modules())
    if (m.get() == appId) return m.get();
  return nullptr;
}

// A module is named by its file name (any case), or by its full path.
LoadedModule* FindModuleByName(const std::wstring& nameOrPath) {
  std::wstring name = nameOrPath;
  auto sep = name.find_last_of(L"/\\");
  if (sep != std::wstring::npos) name = name.substr(sep + 1);
  for (auto& m : Modules())
    if (EqualNoCase(m->fileName, name)) return m.get();
  return nullptr;
}

AcRx::AppRetCode SendMessage(LoadedModule& module, AcRx::AppMsgCode msg) {
  LoadedModule* saved = gCurrent;
  gCurrent = &module;
  ++module.messaging;
  AcRx::AppRetCode rc = module.entry(msg, &module);
  --module.messaging;
  gCurrent = saved;
  return rc;
}

LoadedModule* CurrentModule() { return gCurrent; }

}  // namespace kelhost::app
