// Handlers whose output depends on the scratch directories, the date or
// message boxes; the fixed usage texts are covered by the AutoLISP
// scenarios.
#include <regex>

#include "../module/family_environment.h"
#include "kelcad/kelcad.h"
#include "kelcad/lisp/file_handlers.h"
#include "kelhost/ui.h"

namespace {

using LispFiles = FamilyEnvironment;

std::wstring Quoted(const std::wstring& path) {
  std::wstring text = L"\"";
  for (const wchar_t ch : path) {
    if (ch == L'\\' || ch == L'"') text += L'\\';
    text += ch;
  }
  return text + L"\"";
}

TEST_F(LispFiles, DateTextIsTimeThenMonthDayYear) {
  std::tm when{};
  when.tm_hour = 9;
  when.tm_min = 5;
  when.tm_mday = 3;
  when.tm_mon = 6;
  when.tm_year = 115;
  EXPECT_EQ(KEL::Lisp::DateText(when).str(), L"09:05  07/03/2015");
  when.tm_hour = 23;
  when.tm_min = 59;
  when.tm_mday = 31;
  when.tm_mon = 11;
  when.tm_year = 99;
  EXPECT_EQ(KEL::Lisp::DateText(when).str(), L"23:59  12/31/1999");

  ASSERT_TRUE(LoadModule());
  const std::wstring today = Eval(L"(kel_getdate)");
  EXPECT_TRUE(std::regex_match(kelhost::ToUtf8(today), std::regex("\"\\d\\d:\\d\\d  \\d\\d/\\d\\d/\\d{4}\"")))
      << kelhost::ToUtf8(today);
}

TEST_F(LispFiles, DirectoriesAndTheOldLocalDirectoryName) {
  ASSERT_TRUE(LoadModule());
  const std::wstring base = kelhost::FromUtf8(root);
  EXPECT_EQ(Eval(L"(kel_getinstalldir)"), L"\"" + base + L"/install/\"");
  EXPECT_EQ(Eval(L"(kel_getsoftpath)"), L"\"" + base + L"/install/\"");
  EXPECT_EQ(Eval(L"(kel_getworkdir)"), L"\"" + base + L"/work/\"");
  kelhost::ClearShownMessageBoxes();
  EXPECT_EQ(Eval(L"(kel_getsoftuserpath)"), L"\"" + base + L"/local/\"");
  ASSERT_EQ(kelhost::ShownMessageBoxes().size(), 1u);
  EXPECT_EQ(kelhost::ShownMessageBoxes()[0].text, L"函数名：KEL_GetSoftUserPath\n当前返回的本地目录");

  // A directory that cannot be given is the empty string.
  Set("KEL_WORK_DIR", root + "/missing/");
  EXPECT_EQ(Eval(L"(kel_getworkdir)"), L"\"\"");
}

TEST_F(LispFiles, SoftInfoListsTheInstallation) {
  WriteFile("install/KelSys.ini", "[System]\nSoftName=结构设计\nVersion=2.1\nTextWidthFactor=0.75\n");
  ASSERT_TRUE(LoadModule());
  const std::wstring base = kelhost::FromUtf8(root);
  const std::wstring head = L"\n\n          ******** 当前软件信息 ********"
                            L"\n             软件名称：   结构设计"
                            L"\n           软件版本号：   2.1"
                            L"\n         软件安装目录：   " + base + L"/install/"
                            L"\n         本地数据目录：   " + base + L"/local/"
                            L"\n         软件工作目录：   " + base + L"/work/"
                            L"\n       系统初始化文件：   " + base + L"/install/KelInit.ini"
                            L"\n         用户设置文件：   " + base + L"/local/KelUser.ini"
                            L"\n         系统设置文件：   " + base + L"/install/KelSys.ini";
  const std::wstring tail = std::wstring(L"\n     系统文字宽度比例：   0.750000") +
                            L"\n         函数库版本号：   " + KEL::GetLibVersionNumber() +
                            L"\n      CAD函数库版本号：   [1.33]-[2015/10/09 09:56:59]-[]"
                            L"\n     ***** 请使用 KEL_ErrLogInfo 查看错误记录相关内容";
  EXPECT_EQ(Printed(L"(kel_softinfo)"), head + L"\n      CAD菜单保存路径：   没有！"
                                              L"\n     当前工程设置文件：   " + base + L"/work/Project.ini" + tail);

  // Once a menu has been recorded, and with no project and no names.
  EXPECT_EQ(Eval(L"(kel_restorecadmenu)"), L"T");
  Set("KEL_GC_INI", "");
  WriteFile("install/KelSys.ini", "[Other]\n");
  const std::wstring second = Printed(L"(kel_softinfo)");
  EXPECT_NE(second.find(L"软件名称：   软件名错误\n           软件版本号：   版本号错误"), std::wstring::npos);
  EXPECT_NE(second.find(L"CAD菜单保存路径：   HKEY_CURRENT_USER\\Software\\KELSoft\\KELCAD\\Menu\n"),
            std::wstring::npos);
  EXPECT_NE(second.find(L"当前工程设置文件：   还没有设置当前工程路径\n"), std::wstring::npos);
  EXPECT_NE(second.find(L"系统文字宽度比例：   1.000000\n"), std::wstring::npos);
}

TEST_F(LispFiles, DeleteTreeSaysWhyItRefusesHome) {
  WriteFile("home/plans/a.dwg", "x");
  ASSERT_TRUE(LoadModule());
  const std::wstring home = kelhost::FromUtf8(root) + L"/home";
  EXPECT_EQ(Printed(L"(princ (kel_deletetree " + Quoted(home) + L"))"),
            L"\n KEL_DeleteTree: 拒绝删除文件系统根目录或用户主目录 [" + home + L"]nil");
  EXPECT_TRUE(std::filesystem::exists(root + "/home/plans/a.dwg"));
  EXPECT_EQ(Eval(L"(kel_deletetree " + Quoted(home + L"\\PLANS") + L" nil)"), L"T");
  EXPECT_FALSE(std::filesystem::exists(root + "/home/plans"));
}

TEST_F(LispFiles, ProjectSettingsFollowTheChosenFile) {
  WriteFile("work/Other.ini", "[Setting]\nName=桥梁\n[Extra]\nName=x\n");
  ASSERT_TRUE(LoadModule());
  const std::wstring other = kelhost::FromUtf8(root) + L"/work/Other.ini";
  EXPECT_EQ(Eval(L"(kel_getgciniitem \"Name\")"), L"\"\"");
  EXPECT_EQ(Eval(L"(kel_setgcini " + Quoted(other) + L")"), L"T");
  EXPECT_EQ(Eval(L"(kel_gcinifilepath)"), Quoted(other));
  EXPECT_EQ(Eval(L"(kel_getgciniitem \"name\")"), L"\"桥梁\"");
  EXPECT_EQ(Eval(L"(kel_getgciniitem \"Name\" \"Extra\")"), L"\"x\"");
  EXPECT_EQ(Eval(L"(kel_setgciniitem \"Level\" \"3\")"), L"T");
  EXPECT_NE(ReadFile("work/Other.ini").find("Level=3"), std::string::npos);

  // A file that does not exist is refused; the one in use is named.
  EXPECT_EQ(Printed(L"(kel_setgcini \"no\\\\such.ini\")"),
            L"\n 功能： 设置工程配置文件(文件必须已经存在)\n 用法： KEL_SetGCINI 文件名\n 当前工程配置文件： " + other);
  EXPECT_EQ(Eval(L"(kel_setgcini " + Quoted(kelhost::FromUtf8(root) + L"/work") + L")"), L"nil");
  Set("KEL_GC_INI", "");
  EXPECT_EQ(Eval(L"(kel_gcinifilepath)"), L"nil");
  EXPECT_EQ(Eval(L"(kel_setgciniitem \"Level\" \"4\")"), L"nil");  // no project file to write
}

TEST_F(LispFiles, RunningProductNumber) {
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(Eval(L"(kel_getrnxpart)"), L"0");
  ASSERT_TRUE(KEL::SetRNXPart(3));
  EXPECT_EQ(Eval(L"(kel_getrnxpart)"), L"3");
}

}  // namespace
