// The running product's number, the menu record and the library version.
#include "kelbase/software.h"

#ifndef KELBASE_VERSION
#error "the build passes the library's version as KELBASE_VERSION"
#endif

namespace KEL {
namespace {
// The family's key, as SetIsInSoftware and SRCADMenu use it.
const wchar_t* const kProductKey = L"Software\\KELSoft\\KELCAD";
}  // namespace

int GetRNXPart() {
  CString part;
  return GetRegStr(HKEY_CURRENT_USER, kProductKey, L"RNXPart", part) ? _wtoi(part) : 0;
}

bool SetRNXPart(int part) {
  CString text;
  text.Format(L"%d", part);
  return SetRegStr(HKEY_CURRENT_USER, kProductKey, L"RNXPart", text);
}

CString CADMenuSetting() {
  CString menu;
  if (!GetRegStr(HKEY_CURRENT_USER, kProductKey, L"Menu", menu)) return CString();
  return CString(L"HKEY_CURRENT_USER\\") + kProductKey + L"\\Menu";
}

const wchar_t* GetLibVersionNumber() { return L"" KELBASE_VERSION; }
}  // namespace KEL
