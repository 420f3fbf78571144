#include "kelbase/software.h"
#include "kelhost/host.h"
#include "scratch_environment.h"

using Software = ScratchEnvironment;

namespace {
const wchar_t* const kTestKey = L"Software\\KELSoft\\KelbaseTest";
const wchar_t* const kProductKey = L"Software\\KELSoft\\KELCAD";
}  // namespace

TEST_F(Software, RegistryStringsRoundTrip) {
  CString value(L"stale");
  EXPECT_FALSE(KEL::GetRegStr(HKEY_CURRENT_USER, kTestKey, L"Missing", value));
  EXPECT_TRUE(value.IsEmpty());

  ASSERT_TRUE(KEL::SetRegStr(HKEY_CURRENT_USER, kTestKey, L"Profile", L"结构 Profile"));
  ASSERT_TRUE(KEL::GetRegStr(HKEY_CURRENT_USER, kTestKey, L"profile", value));
  EXPECT_EQ(value.str(), L"结构 Profile");

  const std::wstring longValue(3000, L'长');  // beyond the first read buffer
  ASSERT_TRUE(KEL::SetRegStr(HKEY_CURRENT_USER, kTestKey, L"Long", longValue.c_str()));
  ASSERT_TRUE(KEL::GetRegStr(HKEY_CURRENT_USER, kTestKey, L"Long", value));
  EXPECT_EQ(value.str(), longValue);

  // The key's unnamed value, and an empty string that is still a value.
  ASSERT_TRUE(KEL::SetRegStr(HKEY_CURRENT_USER, kTestKey, nullptr, L"default"));
  ASSERT_TRUE(KEL::GetRegStr(HKEY_CURRENT_USER, kTestKey, L"", value));
  EXPECT_EQ(value.str(), L"default");
  ASSERT_TRUE(KEL::SetRegStr(HKEY_CURRENT_USER, kTestKey, L"Empty", nullptr));
  EXPECT_TRUE(KEL::GetRegStr(HKEY_CURRENT_USER, kTestKey, L"Empty", value));
  EXPECT_TRUE(value.IsEmpty());

  // A number is not a string.
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kTestKey, 0, KEY_WRITE, &key), ERROR_SUCCESS);
  const DWORD number = 7;
  RegSetValueExW(key, L"Number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
  RegCloseKey(key);
  EXPECT_FALSE(KEL::GetRegStr(HKEY_CURRENT_USER, kTestKey, L"Number", value));
}

TEST_F(Software, SoftwareStateIsKeptInTheRegistry) {
  KEL::SetIsInSoftware(true);
  EXPECT_TRUE(KEL::GetIsInSoftware());
  CString stored;
  ASSERT_TRUE(KEL::GetRegStr(HKEY_CURRENT_USER, kProductKey, L"InSoftware", stored));
  EXPECT_EQ(stored.str(), L"1");
  KEL::SetIsInSoftware(false);
  EXPECT_FALSE(KEL::GetIsInSoftware());

  ASSERT_TRUE(KEL::SRCADMenu(true, CString(L"KELMENU")));
  ASSERT_TRUE(KEL::GetRegStr(HKEY_CURRENT_USER, kProductKey, L"Menu", stored));
  EXPECT_EQ(stored.str(), L"KELMENU");
  ASSERT_TRUE(KEL::SRCADMenu(false, CString(L"KELMENU")));  // back to the CAD program's own
  ASSERT_TRUE(KEL::GetRegStr(HKEY_CURRENT_USER, kProductKey, L"Menu", stored));
  EXPECT_TRUE(stored.IsEmpty());
}

TEST_F(Software, LoadedModulesAreFoundByFileNameInAnyForm) {
  EXPECT_FALSE(KEL::IsLoadedArx(L"fixture_module"));
  EXPECT_FALSE(KEL::IsLoadedArx(nullptr));
  EXPECT_FALSE(KEL::IsLoadedArx(L""));

  ASSERT_TRUE(kelhost::Host::instance().loadModule(FIXTURE_MODULE_PATH));
  EXPECT_TRUE(KEL::IsLoadedArx(L"fixture_module"));
  EXPECT_TRUE(KEL::IsLoadedArx(L"FIXTURE_MODULE.arx"));
  EXPECT_TRUE(KEL::IsLoadedArx(L"C:\\Apps\\Fixture_Module.ARX"));
  EXPECT_FALSE(KEL::IsLoadedArx(L"fixture"));
  EXPECT_FALSE(KEL::IsLoadedArx(L"fixture_module.arx.arx"));
  kelhost::Host::instance().unloadModule(FIXTURE_MODULE_PATH);
  EXPECT_FALSE(KEL::IsLoadedArx(L"fixture_module"));
}
