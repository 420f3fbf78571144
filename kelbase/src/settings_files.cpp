// The family's settings files and the two process-wide settings objects.
#include "kelbase/directories.h"
#include "environment.h"

namespace KEL {
namespace {
// variable when set, else fileName in the local directory, else empty.
CString SettingsFile(const wchar_t* variable, const wchar_t* fileName) {
  CString path;
  if (kelbase::ReadEnvironment(variable, path)) return path;
  CString local;
  if (!GetLocalDir(local)) return CString();
  return local + fileName;
}
}  // namespace

CString InitINIFilePath() { return SettingsFile(L"KEL_INIT_INI", L"KelInit.ini"); }
CString SysINIFilePath() { return SettingsFile(L"KEL_SYS_INI", L"KelSys.ini"); }
CString UserINIFilePath() { return SettingsFile(L"KEL_USER_INI", L"KelUser.ini"); }

CString GCINIFilePath() {
  CString path;
  if (kelbase::ReadEnvironment(L"KEL_GC_INI", path)) return path;
  path = CInitSetting().GetSetting(L"GCINIFile", L"", L"GC-Path");
  path.Trim();
  return path;
}

// The objects follow their files: the path is looked up again on every
// call, so a changed variable takes effect at once.
INISetting& CInitSetting() {
  static INISetting setting;
  setting.SetFilePath(InitINIFilePath());
  return setting;
}

INISetting& CGCSetting() {
  static INISetting setting;
  setting.SetFilePath(GCINIFilePath());
  return setting;
}
}  // namespace KEL
