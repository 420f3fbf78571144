// Process-wide state of the headless host's application layer: loaded
// modules and the application currently being messaged.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "arx/acrx.h"

namespace kelhost::app {

typedef AcRx::AppRetCode (*EntryPointFn)(AcRx::AppMsgCode, void*);
typedef int (*ApiVersionFn)();
typedef int (*DllMainFn)(void*, unsigned, void*);

// One loaded module. Its address is the application id handed to the
// module in every message.
struct LoadedModule {
  std::string path;       // native path as loaded
  std::wstring fileName;  // file name part, as the platform lists it
  void* handle = nullptr;
  EntryPointFn entry = nullptr;
  DllMainFn dllMain = nullptr;
  bool unlocked = false;
  bool mdiAware = false;
  int messaging = 0;  // messages to it under way (its code is running)
};

// Modules in load order.
std::vector<std::unique_ptr<LoadedModule>>& Modules();
LoadedModule* FindModule(void* appId);
LoadedModule* FindModuleByName(const std::wstring& nameOrPath);

// Sends a message to a module with it as the current application, so
// that calls it makes (acedDefun, addCommand) are attributed to it.
AcRx::AppRetCode SendMessage(LoadedModule& module, AcRx::AppMsgCode msg);
// The application being messaged, or null.
LoadedModule* CurrentModule();

}  // namespace kelhost::app
