// The family's software state, kept in the registry so every module and
// later session sees it.
#include "kelbase/software.h"

namespace KEL {
namespace {
const wchar_t* const kProductKey = L"Software\\KELSoft\\KELCAD";
}  // namespace

void SetIsInSoftware(bool in) { SetRegStr(HKEY_CURRENT_USER, kProductKey, L"InSoftware", in ? L"1" : L"0"); }

bool GetIsInSoftware() {
  CString flag;
  return GetRegStr(HKEY_CURRENT_USER, kProductKey, L"InSoftware", flag) && _wtoi(flag) != 0;
}

// This host has no menu bar to switch; the requested menu is recorded
// (value "Menu": the family's menu name, or empty for the CAD program's
// own) so that a front end or a later session can apply it.
bool SRCADMenu(bool toSoftware, const CString& menuName) {
  return SetRegStr(HKEY_CURRENT_USER, kProductKey, L"Menu", toSoftware ? menuName.GetString() : L"");
}
}  // namespace KEL
