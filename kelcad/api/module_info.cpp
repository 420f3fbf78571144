#include "kelcad/api/module_info.h"

#include <string>

#include "kelcad/entry/settings.h"

namespace KEL {

namespace {
// The module's version-control keywords, as the version-control system
// expanded them for this release of the library.
const wchar_t kRevisionKeyword[] = L"$Revision: 1.33 $";
const wchar_t kDateKeyword[] = L"$Date: 2015/10/09 09:56:59 $";
const wchar_t kAuthorKeyword[] = L"$Author: $";

// The keyword's value: the text after its label, without the closing "$"
// and the blanks around it.
CString KeywordValue(const wchar_t* keyword, int labelLength) {
  CString value(keyword);
  value = value.Mid(labelLength);
  value.TrimRight(L"$ ");
  value.TrimLeft();
  return value;
}
}  // namespace

const wchar_t* GetCADLibVersionNumber() {
  static std::wstring text;
  CString version;
  version.Format(L"[%s]-[%s]-[%s]", KeywordValue(kRevisionKeyword, 10).GetString(),
                 KeywordValue(kDateKeyword, 6).GetString(), KeywordValue(kAuthorKeyword, 8).GetString());
  text = version.str();
  return text.c_str();
}

double GetTextWidthFactor() {
  const double factor = _wtof(SysINI().GetSetting(L"TextWidthFactor", L"", L"System"));
  return factor > 0.0 ? factor : 1.0;
}

}  // namespace KEL
