#include "app/module_loader.h"

#include <dlfcn.h>

#include <algorithm>

#include "app/app_state.h"
#include "arx/win32.h"
#include "kelhost/lisp.h"
#include "kelhost/host.h"
#include "kelhost/text.h"
#include "lisp/external_calls.h"

namespace kelhost::app {
namespace {

std::wstring BaseName(const std::string& path) {
  auto slash = path.find_last_of('/');
  return FromUtf8(slash == std::string::npos ? path : path.substr(slash + 1));
}

void Fail(std::wstring* error, const std::wstring& text) {
  if (error) *error = text;
}

void CloseLibrary(LoadedModule& m) {
  if (m.dllMain) m.dllMain(m.handle, DLL_PROCESS_DETACH, nullptr);
  dlclose(m.handle);
}

}  // namespace

bool LoadModule(const std::string& nativePath, std::wstring* error) {
  std::wstring name = BaseName(nativePath);
  if (FindModuleByName(name)) {
    Fail(error, name + L" is already loaded");
    return false;
  }
  // A name without a directory is a file here, not one for the dynamic
  // linker to look for in the system's library directories.
  const std::string file = nativePath.find('/') == std::string::npos ? "./" + nativePath : nativePath;
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) {
    const char* why = dlerror();
    Fail(error, L"cannot load " + FromUtf8(nativePath) + L": " + FromUtf8(why ? why : "unknown error"));
    return false;
  }
  auto module = std::make_unique<LoadedModule>();
  module->path = nativePath;
  module->fileName = name;
  module->handle = handle;
  module->entry = reinterpret_cast<EntryPointFn>(dlsym(handle, "acrxEntryPoint"));
  auto version = reinterpret_cast<ApiVersionFn>(dlsym(handle, "acrxGetApiVersion"));
  module->dllMain = reinterpret_cast<DllMainFn>(dlsym(handle, "DllMain"));
  if (!module->entry || !version) {
    dlclose(handle);
    Fail(error, name + L" is not an application: acrxEntryPoint or acrxGetApiVersion is missing");
    return false;
  }
  if (version() != ACRX_API_VERSION_MAJOR) {
    dlclose(handle);
    Fail(error, name + L" was built for another version of the platform");
    return false;
  }
  if (module->dllMain && !module->dllMain(handle, DLL_PROCESS_ATTACH, nullptr)) {
    dlclose(handle);
    Fail(error, name + L": DllMain refused to attach");
    return false;
  }
  LoadedModule& m = *module;
  Modules().push_back(std::move(module));
  SendMessage(m, AcRx::kInitAppMsg);
  // The document is already open: the module hears of it at once.
  SendMessage(m, AcRx::kLoadDwgMsg);
  return true;
}

namespace {
void Unload(std::vector<std::unique_ptr<LoadedModule>>::iterator it) {
  LoadedModule& m = **it;
  SendMessage(m, AcRx::kUnloadDwgMsg);
  SendMessage(m, AcRx::kUnloadAppMsg);
  Host::instance().lisp().undefineAllOf(&m);
  lispbridge::ForgetOwner(&m);
  std::unique_ptr<LoadedModule> owned = std::move(*it);
  Modules().erase(it);
  CloseLibrary(*owned);
}
}  // namespace

bool UnloadModule(const std::string& nativePathOrName, bool force, std::wstring* error) {
  LoadedModule* m = FindModuleByName(FromUtf8(nativePathOrName));
  if (!m) {
    Fail(error, FromUtf8(nativePathOrName) + L" is not loaded");
    return false;
  }
  if (!m->unlocked && !force) {
    Fail(error, m->fileName + L" is locked and cannot be unloaded");
    return false;
  }
  auto& all = Modules();
  Unload(std::find_if(all.begin(), all.end(), [m](const auto& p) { return p.get() == m; }));
  return true;
}

void UnloadAllModules() {
  auto& all = Modules();
  while (!all.empty()) Unload(all.end() - 1);
}

}  // namespace kelhost::app
