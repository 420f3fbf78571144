// Applications loaded and unloaded by name, as acedArxLoad, acedArxUnload
// and the AutoLISP functions arxload and arxunload name them: ".arx" may
// be left off, and a name without a directory is looked for on the
// support file search path.
#pragma once

#include <optional>
#include <string>

namespace kelhost::app {

// The application's file name: the name without its directory, ".arx"
// added when it has no extension.
std::wstring ArxFileName(const std::wstring& name);
// The file to load: the name as given when it ends in ".arx", else with
// ".arx" added (a name with another extension is tried as given first).
std::optional<std::wstring> FindArxFile(const std::wstring& name);
// A module of that file name is loaded.
bool IsArxLoaded(const std::wstring& name);
// False when the application could not be loaded or unloaded (not found,
// not an application, already loaded; not loaded, locked, busy in a
// call): the reason goes to standard error, the command line shows only
// what the caller shows.
bool LoadArx(const std::wstring& name);
bool UnloadArx(const std::wstring& name);

}  // namespace kelhost::app
