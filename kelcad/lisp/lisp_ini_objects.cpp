// The user, system and project ("GC") settings objects from AutoLISP:
// choosing their files, reading and setting single values, and the paths
// the base library gives for them.
#include "kelbase/kelbase.h"
#include "kelcad/entry/settings.h"
#include "kelcad/lisp/ini_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {

bool IsText(const resbuf* rb) { return rb != nullptr && rb->restype == RTSTR && rb->resval.rstring != nullptr; }

// One of the three settings objects and the words its messages use.
struct SettingsObject {
  const wchar_t* tag;          // "User", "Sys", "GC": part of the function names
  const wchar_t* meaning;      // what its data are, in the usage lines
  INISetting& (*object)();
  CString (*libraryPath)();    // the path the base library gives
};

const SettingsObject kUser = {L"User", L"用户", UserINI, UserINIFilePath};
const SettingsObject kSystem = {L"Sys", L"系统", SysINI, SysINIFilePath};
const SettingsObject kProject = {L"GC", L"工程", CGCSetting, GCINIFilePath};

// The usage block of the get-item and set-item functions.
void PrintItemUsage(const SettingsObject& settings, bool set) {
  const wchar_t* verb = set ? L"Set" : L"Get";
  acutPrintf(L"\n KEL_%s%sINIItem ", verb, settings.tag);
  acutPrintf(L"\n 功能： %s%s配置数据", set ? L"设" : L"取", settings.meaning);
  if (set)
    acutPrintf(L"\n 用法： KEL_Set%sINIItem 要设的串 值  [应用程序名]", settings.tag);
  else
    acutPrintf(L"\n 用法： KEL_Get%sINIItem 要取的串  [应用程序名]", settings.tag);
  PrintUsageLines({L"\n 注意： 当 [应用程序名] 省去时为 [Setting] ", L"\n        如果没有这个值则返回为空字符串"});
}

// The section argument after the fixed ones: absent means "Setting". A
// section that is not a string prints the error line and the usage.
bool ReadSection(const resbuf* rb, const SettingsObject& settings, bool set, const wchar_t*& section) {
  section = L"Setting";
  if (rb == nullptr) return true;
  if (IsText(rb)) {
    section = rb->resval.rstring;
    return true;
  }
  acutPrintf(L"\n KEL_%s%sINIItem 参数错！", set ? L"Set" : L"Get", settings.tag);
  PrintItemUsage(settings, set);
  return false;
}

int GetItem(const SettingsObject& settings) {
  const resbuf* args = acedGetArgs();
  if (!IsText(args)) {
    PrintItemUsage(settings, false);
    return RTNORM;
  }
  const wchar_t* section = nullptr;
  if (!ReadSection(args->rbnext, settings, false, section)) return RTNORM;
  acedRetStr(settings.object().GetSetting(args->resval.rstring, L"", section));
  return RTNORM;
}

int SetItem(const SettingsObject& settings) {
  const resbuf* args = acedGetArgs();
  if (!IsText(args) || !IsText(args->rbnext)) {
    PrintItemUsage(settings, true);
    return RTNORM;
  }
  const wchar_t* section = nullptr;
  if (!ReadSection(args->rbnext->rbnext, settings, true, section)) return RTNORM;
  ReturnBool(settings.object().SetSetting(args->resval.rstring, args->rbnext->resval.rstring, section));
  return RTNORM;
}

bool IsExistingFile(const wchar_t* path) {
  const DWORD attributes = GetFileAttributesW(path);
  return IsExist(path) && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// Names the object's file; an argument that is not the path of an existing
// file prints the usage and the file in use.
int SetFile(const SettingsObject& settings, bool (*alsoRemember)(const wchar_t*)) {
  acedRetNil();
  const resbuf* args = acedGetArgs();
  if (!IsText(args) || !IsExistingFile(args->resval.rstring)) {
    acutPrintf(L"\n 功能： 设置%s配置文件(文件必须已经存在)", settings.meaning);
    acutPrintf(L"\n 用法： KEL_Set%sINI 文件名", settings.tag);
    acutPrintf(L"\n 当前%s配置文件： %s", settings.meaning, settings.object().GetFilePath().GetString());
    return RTNORM;
  }
  if (alsoRemember != nullptr && !alsoRemember(args->resval.rstring)) return RTNORM;
  settings.object().SetFilePath(args->resval.rstring);
  acedRetT();
  return RTNORM;
}

int LibraryPath(const SettingsObject& settings) {
  const CString path = settings.libraryPath();
  if (path.IsEmpty())
    acedRetNil();
  else
    acedRetStr(path);
  return RTNORM;
}

}  // namespace

int KEL_SetUserINI() { return SetFile(kUser, nullptr); }
int KEL_SetSysINI() { return SetFile(kSystem, nullptr); }
// The project object looks its file up on every use, so the choice is
// made the session's project file, not only the object's path.
int KEL_SetGCINI() { return SetFile(kProject, SetGCINIFilePath); }

int KEL_GetUserINIItem() { return GetItem(kUser); }
int KEL_GetSysINIItem() { return GetItem(kSystem); }
int KEL_GetGCINIItem() { return GetItem(kProject); }

int KEL_SetUserINIItem() { return SetItem(kUser); }
int KEL_SetSysINIItem() { return SetItem(kSystem); }
int KEL_SetGCINIItem() { return SetItem(kProject); }

int KEL_UserINIFilePath() { return LibraryPath(kUser); }
int KEL_SysINIFilePath() { return LibraryPath(kSystem); }
int KEL_GCINIFilePath() { return LibraryPath(kProject); }

}  // namespace Lisp
}  // namespace KEL
