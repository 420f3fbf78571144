#include "install_location.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#ifndef KEL_DEFAULT_DATADIR
#define KEL_DEFAULT_DATADIR "/usr/local/share/kelcad"
#endif
#ifndef KEL_INSTALL_LIBDIR
#define KEL_INSTALL_LIBDIR "lib"
#endif
#ifndef KEL_INSTALL_DATADIR
#define KEL_INSTALL_DATADIR "share"
#endif

namespace fs = std::filesystem;

namespace kelbase {
namespace {
// An address inside this library, for dladdr.
void LocationAnchor() {}

// How many directory levels the library directory lies below the prefix:
// "lib" is one, Debian's "lib/x86_64-linux-gnu" two.
int LibraryDirDepth() {
  const fs::path libdir(KEL_INSTALL_LIBDIR);
  if (libdir.is_absolute()) return 1;
  int depth = 0;
  for (const auto& part : libdir) {
    if (!part.empty() && part != ".") ++depth;
  }
  return depth > 0 ? depth : 1;
}
}  // namespace

std::string DataDirBesideLibrary() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&LocationAnchor), &info) == 0 || info.dli_fname == nullptr ||
      *info.dli_fname == '\0') {
    return std::string();
  }
  std::error_code error;
  fs::path library = fs::weakly_canonical(fs::absolute(info.dli_fname, error), error);
  if (error) return std::string();
  fs::path prefix = library.parent_path();
  for (int level = LibraryDirDepth(); level > 0; --level) prefix = prefix.parent_path();
  fs::path datadir(KEL_INSTALL_DATADIR);
  if (datadir.is_absolute()) return std::string();  // not relative to a prefix
  return (prefix / datadir / "kelcad").string();
}

std::string CompiledDataDir() { return KEL_DEFAULT_DATADIR; }
}  // namespace kelbase
