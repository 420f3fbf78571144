// The project field map. Its count of entries taken over lives as long as
// the module, by design, so the whole story is told in one test: no other
// test of this program loads a field file successfully.
#include <gtest/gtest.h>

#include "family_environment.h"
#include "kelcad/kelcad.h"

namespace {

using FieldMap = FamilyEnvironment;

const wchar_t kUsage[] =
    L"\n KEL_SetGCIniPath"
    L"\n 功能：设工程INI中可能会用到的字段对照文件路径名"
    L"\n 用法：KEL_SetGCIniPath 文件名相对路径"
    L"\n   如：KEL_SetGCIniPath \"Is\\SetGetDa.dat\"";

CString Translate(const wchar_t* name) {
  CString full = L"(none)";
  KEL::TranslateGCField(name, full);
  return full;
}

TEST_F(FieldMap, FieldFileEntriesAreTakenOverOnce) {
  ASSERT_TRUE(LoadModule());
  EXPECT_STREQ(KEL::GetGCSettingFileName(), L"Project.dat");

  EXPECT_EQ(Printed(L"(kel_setgcinipath 5)"), kUsage);
  EXPECT_EQ(Eval(L"(kel_setgcinipath)"), L"nil");
  const std::wstring missing = kelhost::FromUtf8(root) + L"/install/Is\\Missing.dat";
  EXPECT_EQ(Printed(L"(kel_setgcinipath \"Is\\\\Missing.dat\")"),
            L"\n 您提供的工程INI字段对照文件路径 [" + missing + L"] 错误!" + kUsage);
  EXPECT_EQ(Eval(L"(kel_setgcinipath \"Is\\\\Missing.dat\")"), L"nil");
  EXPECT_EQ(KEL::GCFieldFilePath(), missing.c_str());

  WriteFile("install/Is/SetGetDa.dat",
            "[Option]\nDebug = TRUE \nPrjIniFileName=MyProject.dat\n"
            "[SimpleName--FullName]\nsj=设计参数\nBh=编号\n");
  EXPECT_EQ(Eval(L"(kel_setgcinipath \"Is\\\\SetGetDa.dat\")"), L"T");
  EXPECT_EQ(Translate(L"SJ"), L"设计参数");
  EXPECT_EQ(Translate(L"sj"), L"设计参数");
  EXPECT_EQ(Translate(L"bh"), L"编号");
  EXPECT_EQ(Translate(L"xx"), L"(none)");
  EXPECT_TRUE(KEL::IsGCFieldDebug());
  EXPECT_STREQ(KEL::GetGCSettingFileName(), L"MyProject.dat");

  // Entries already taken keep their full names; only those beyond the
  // count are new.
  WriteFile("install/Is/SetGetDa.dat",
            "[Option]\nDebug=yes\n"
            "[SimpleName--FullName]\nsj=Changed\nBh=编号\nxx=Extra\n");
  CString path;
  EXPECT_TRUE(KEL::LoadGCFieldFile(L"Is\\SetGetDa.dat", path));
  EXPECT_EQ(Translate(L"sj"), L"设计参数");
  EXPECT_EQ(Translate(L"XX"), L"Extra");
  EXPECT_FALSE(KEL::IsGCFieldDebug());
  EXPECT_STREQ(KEL::GetGCSettingFileName(), L"Project.dat");

  // The count is by position: an entry put in front is never taken.
  WriteFile("install/Is/Other.dat", "[SimpleName--FullName]\nfirst=1\nsecond=2\nthird=3\nfourth=4\n");
  EXPECT_TRUE(KEL::LoadGCFieldFile(L"Is\\Other.dat", path));
  EXPECT_EQ(Translate(L"first"), L"(none)");
  EXPECT_EQ(Translate(L"third"), L"(none)");
  EXPECT_EQ(Translate(L"fourth"), L"4");
  EXPECT_EQ(Eval(L"(kel_setgcinipath \"Is\\\\Other.dat\")"), L"T");  // nothing new, still done
}

TEST_F(FieldMap, SectionsReadWholeOrByKeys) {
  WriteFile("work/p.ini", "[A]\nk1=v1\nk2 = v 2 \n[B]\nz=9\n");
  const std::wstring file = kelhost::FromUtf8(root + "/work/p.ini");
  CStringArray keys, values;
  ASSERT_TRUE(KEL::ReadIni(L"a", keys, values, file.c_str()));
  ASSERT_EQ(values.GetSize(), 2);
  EXPECT_EQ(keys[1] + L"=" + values[1], L"k2=v 2");
  keys.RemoveAll();
  keys.Add(L"Z");
  keys.Add(L"absent");
  ASSERT_TRUE(KEL::ReadIni(L"B", keys, values, file.c_str()));
  EXPECT_EQ(values[0] + L"|" + values[1], L"9|");
  EXPECT_FALSE(KEL::ReadIni(L"B", keys, values, L"/nonexistent/p.ini"));
  keys.RemoveAll();
  EXPECT_FALSE(KEL::ReadIni(L"C", keys, values, file.c_str()));
}

}  // namespace
