// Where the installed data of the family lives, found at run time from the
// location of this library, so a relocated installation still works.
#pragma once

#include <string>

namespace kelbase {
// <prefix>/<datadir>/kelcad, where <prefix> is the directory that holds
// the library directory this library was loaded from. Empty when the
// library's own location cannot be found.
std::string DataDirBesideLibrary();
// The data directory chosen when the project was configured.
std::string CompiledDataDir();
}  // namespace kelbase
