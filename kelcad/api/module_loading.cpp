#include "kelcad/api/module_loading.h"

#include "kelbase/directories.h"
#include "kelbase/files.h"
#include "kelbase/software.h"
#include "kelcad/entry/diagnostic.h"
#include "kelcad/entry/settings.h"

namespace KEL {

namespace {

KEL_SOFTTYPE gSoftType = KEL_SOFTTYPE();

CString InstallDir() {
  CString dir;
  GetInstallDir(dir);
  return dir;
}

}  // namespace

CString LoadArx(const wchar_t* path) {
  if (path == nullptr || !IsExist(path)) {
    acutPrintf(L" ***没有找到要加载的ARX ： %s\n", path != nullptr ? path : L"");
    return CString();
  }
  // IsLoadedArx compares file names only: the same module loaded from
  // another folder counts as loaded.
  if (IsLoadedArx(path)) return CString(path);
  return acedArxLoad(path) == RTNORM ? CString(path) : CString();
}

CString LoadDirArx(const wchar_t* subDir, const wchar_t* name) {
  CString module(name != nullptr ? name : L"");
  if (module.GetLength() < 4 || module.Right(4).CompareNoCase(L".ARX") != 0) module += L".ARX";
  CString path;
  path.Format(L"%s%s\\%s", InstallDir().GetString(), subDir != nullptr ? subDir : L"", module.GetString());
  return LoadArx(path);
}

bool CheckSystemFiles() {
  CStringArray keys, values;
  if (!SysINI().GetAllKeysAndValues(L"SystemFiles", keys, values) || values.GetSize() == 0) return true;
  const CString dir = InstallDir();
  for (int i = 0; i < static_cast<int>(values.GetSize()); ++i) {
    CString file = values[i];
    file.Trim();
    if (file.IsEmpty()) continue;
    CString path;
    path.Format(L"%s%s", dir.GetString(), file.GetString());
    if (!IsExist(path)) {
      DebugARXPrintf(L"\n ***不存在文件 %s", path.GetString());
      return false;
    }
  }
  return true;
}

KEL_SOFTTYPE GetSoftType() { return gSoftType; }

void SetSoftType(KEL_SOFTTYPE type) { gSoftType = type; }

}  // namespace KEL
