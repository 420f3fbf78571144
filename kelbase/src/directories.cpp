// The family's directories: each from its environment variable, else a
// default that works on a fresh installation.
#include "kelbase/directories.h"

#include <pwd.h>
#include <unistd.h>

#include "directory_helpers.h"
#include "environment.h"
#include "install_location.h"

namespace KEL {
namespace {
CString Utf8ToCString(const std::string& text) { return CString(text.c_str()); }

// The per-user data root of the desktop conventions: $XDG_DATA_HOME when
// it is an absolute path (relative values are to be ignored), else
// ~/.local/share.
CString UserDataRoot() {
  CString root;
  if (kelbase::ReadEnvironment(L"XDG_DATA_HOME", root) && root.GetAt(0) == L'/') return root;
  CString home;
  if (kelbase::ReadEnvironment(L"HOME", home)) return kelbase::WithTrailingSeparator(home) + L".local/share";
  if (const passwd* entry = getpwuid(getuid())) {
    if (entry->pw_dir != nullptr && *entry->pw_dir != '\0') {
      return kelbase::WithTrailingSeparator(Utf8ToCString(entry->pw_dir)) + L".local/share";
    }
  }
  return CString();
}

// The legacy CAD releases are not installed beside this host: their
// directories exist only when configured.
bool ConfiguredOnly(const wchar_t* variable, CString& dir) {
  CString configured;
  if (!kelbase::ReadEnvironment(variable, configured)) {
    dir.Empty();
    return false;
  }
  return kelbase::GiveExistingDirectory(configured, dir);
}
}  // namespace

bool GetInstallDir(CString& dir) {
  CString configured;
  if (kelbase::ReadEnvironment(L"KEL_INSTALL_DIR", configured)) {
    return kelbase::GiveExistingDirectory(configured, dir);
  }
  const std::string besideLibrary = kelbase::DataDirBesideLibrary();
  if (!besideLibrary.empty() && kelbase::GiveExistingDirectory(Utf8ToCString(besideLibrary), dir)) {
    return true;
  }
  return kelbase::GiveExistingDirectory(Utf8ToCString(kelbase::CompiledDataDir()), dir);
}

bool GetLocalDir(CString& dir) {
  CString candidate;
  if (!kelbase::ReadEnvironment(L"KEL_LOCAL_DIR", candidate)) {
    const CString root = UserDataRoot();
    if (root.IsEmpty()) {
      dir.Empty();
      return false;
    }
    candidate = kelbase::WithTrailingSeparator(root) + L"kelcad";
  }
  kelbase::CreateDirectoryTree(candidate);
  return kelbase::GiveExistingDirectory(candidate, dir);
}

bool GetWorkDir(CString& dir, bool create) {
  CString candidate;
  if (!kelbase::ReadEnvironment(L"KEL_WORK_DIR", candidate)) {
    CString local;
    if (!GetLocalDir(local)) {
      dir.Empty();
      return false;
    }
    candidate = local + L"work";
  }
  if (create) kelbase::CreateDirectoryTree(candidate);
  return kelbase::GiveExistingDirectory(candidate, dir);
}

bool GetKELCommonFilesDir(CString& dir) {
  CString candidate;
  if (!kelbase::ReadEnvironment(L"KEL_COMMON_DIR", candidate)) {
    CString install;
    if (!GetInstallDir(install)) {
      dir.Empty();
      return false;
    }
    candidate = install + L"common";
  }
  return kelbase::GiveExistingDirectory(candidate, dir);
}

bool GetAcadR14Path(CString& dir) { return ConfiguredOnly(L"KEL_ACAD14_DIR", dir); }

bool GetAcadR15Path(CString& dir) { return ConfiguredOnly(L"KEL_ACAD15_DIR", dir); }
}  // namespace KEL
