// Loading and unloading modules the way the platform does: the library,
// its DllMain, the API version check, then the application messages.
#pragma once

#include <string>

namespace kelhost::app {
bool LoadModule(const std::string& nativePath, std::wstring* error);
// force: unload even a module that did not unlock itself (at exit).
bool UnloadModule(const std::string& nativePathOrName, bool force, std::wstring* error);
void UnloadAllModules();
}  // namespace kelhost::app
