// The family's software state from AutoLISP: the CAD menu, the running
// product and the information block of "kel_softinfo".
#include "kelbase/kelbase.h"
#include "kelcad/api/module_info.h"
#include "kelcad/entry/settings.h"
#include "kelcad/lisp/file_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {
// text, or fallback when text is empty.
const wchar_t* OrElse(const CString& text, const wchar_t* fallback) {
  return text.IsEmpty() ? fallback : text.GetString();
}
}  // namespace

int KEL_RestoreCADMenu() {
  ReturnBool(SRCADMenu(false, CString()));
  return RTNORM;
}

int KEL_GetRNXPart() {
  acedRetInt(GetRNXPart());
  return RTNORM;
}

int KEL_SoftInfo() {
  CString install, local, work;  // each getter leaves its directory empty when it cannot give it
  GetInstallDir(install);
  GetLocalDir(local);
  GetWorkDir(work, false);
  const CString name = SysINI().GetSetting(L"SoftName", L"软件名错误", L"System");
  const CString version = SysINI().GetSetting(L"Version", L"版本号错误", L"System");

  acutPrintf(L"%s", L"\n");
  acutPrintf(L"%s", L"\n          ******** 当前软件信息 ********");
  acutPrintf(L"\n             软件名称：   %s", name.GetString());
  acutPrintf(L"\n           软件版本号：   %s", version.GetString());
  acutPrintf(L"\n         软件安装目录：   %s", install.GetString());
  acutPrintf(L"\n         本地数据目录：   %s", local.GetString());
  acutPrintf(L"\n         软件工作目录：   %s", work.GetString());
  acutPrintf(L"\n       系统初始化文件：   %s", InitINIFilePath().GetString());
  acutPrintf(L"\n         用户设置文件：   %s", UserINIFilePath().GetString());
  acutPrintf(L"\n         系统设置文件：   %s", SysINIFilePath().GetString());
  const CString menu = CADMenuSetting();
  acutPrintf(L"\n      CAD菜单保存路径：   %s", OrElse(menu, L"没有！"));
  const CString project = GCINIFilePath();
  acutPrintf(L"\n     当前工程设置文件：   %s", OrElse(project, L"还没有设置当前工程路径"));
  acutPrintf(L"\n     系统文字宽度比例：   %f", GetTextWidthFactor());
  acutPrintf(L"\n         函数库版本号：   %s", GetLibVersionNumber());
  acutPrintf(L"\n      CAD函数库版本号：   %s", GetCADLibVersionNumber());
  acutPrintf(L"%s", L"\n     ***** 请使用 KEL_ErrLogInfo 查看错误记录相关内容");
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
