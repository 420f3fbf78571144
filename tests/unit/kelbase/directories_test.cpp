#include <dlfcn.h>

#include "kelbase/directories.h"
#include "scratch_environment.h"

namespace fs = std::filesystem;

using Directories = ScratchEnvironment;

TEST_F(Directories, VariablesAreUsedAsTheyStandWithASeparatorAtTheEnd) {
  CString dir;
  const std::string install = MakeDir("inst");
  Set("KEL_INSTALL_DIR", install);
  EXPECT_TRUE(KEL::GetInstallDir(dir));
  EXPECT_EQ(dir.str(), Wide(install + "/"));

  Set("KEL_INSTALL_DIR", install + "\\");  // a family-style separator is kept
  EXPECT_TRUE(KEL::GetInstallDir(dir));
  EXPECT_EQ(dir.str(), Wide(install + "\\"));

  // A configured directory that does not exist is not replaced by a default.
  Set("KEL_INSTALL_DIR", root + "/missing");
  EXPECT_FALSE(KEL::GetInstallDir(dir));
  EXPECT_TRUE(dir.IsEmpty());

  // The legacy CAD directories exist only when configured.
  EXPECT_FALSE(KEL::GetAcadR14Path(dir));
  Set("KEL_ACAD15_DIR", MakeDir("r15"));
  EXPECT_TRUE(KEL::GetAcadR15Path(dir));
  EXPECT_EQ(dir.str(), Wide(root + "/r15/"));
  Set("KEL_ACAD14_DIR", "");  // empty counts as unset
  EXPECT_FALSE(KEL::GetAcadR14Path(dir));
}

TEST_F(Directories, LocalAndWorkDirectoriesDefaultUnderTheUserDataRoot) {
  Unset("KEL_LOCAL_DIR");
  CString dir;
  Set("XDG_DATA_HOME", root + "/xdg");
  ASSERT_TRUE(KEL::GetLocalDir(dir));  // created on demand, parents too
  EXPECT_EQ(dir.str(), Wide(root + "/xdg/kelcad/"));
  EXPECT_TRUE(fs::is_directory(root + "/xdg/kelcad"));

  Set("XDG_DATA_HOME", "relative/path");  // ignored, as the convention says
  ASSERT_TRUE(KEL::GetLocalDir(dir));
  EXPECT_EQ(dir.str(), Wide(root + "/home/.local/share/kelcad/"));

  EXPECT_FALSE(KEL::GetWorkDir(dir, false));  // not created unless asked
  EXPECT_TRUE(dir.IsEmpty());
  ASSERT_TRUE(KEL::GetWorkDir(dir, true));
  EXPECT_EQ(dir.str(), Wide(root + "/home/.local/share/kelcad/work/"));
  EXPECT_TRUE(KEL::GetWorkDir(dir, false));

  Set("KEL_WORK_DIR", root + "/w");
  ASSERT_TRUE(KEL::GetWorkDir(dir, true));
  EXPECT_EQ(dir.str(), Wide(root + "/w/"));
}

TEST_F(Directories, CommonFilesLiveInTheInstallDirectoryUnlessConfigured) {
  CString dir;
  Set("KEL_INSTALL_DIR", MakeDir("inst"));
  EXPECT_FALSE(KEL::GetKELCommonFilesDir(dir));
  MakeDir("inst/common");
  ASSERT_TRUE(KEL::GetKELCommonFilesDir(dir));
  EXPECT_EQ(dir.str(), Wide(root + "/inst/common/"));
  Set("KEL_COMMON_DIR", MakeDir("shared"));
  ASSERT_TRUE(KEL::GetKELCommonFilesDir(dir));
  EXPECT_EQ(dir.str(), Wide(root + "/shared/"));
}

// Without configuration the install directory is the data directory of
// the prefix the library was loaded from: <libdir>/../share/kelcad.
TEST_F(Directories, InstallDirectoryIsFoundBesideTheLoadedLibrary) {
  Dl_info info{};
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&KEL::GetInstallDir), &info), 0);
  const fs::path data = fs::canonical(info.dli_fname).parent_path().parent_path() / "share" / "kelcad";
  std::error_code error;
  const bool madeHere = fs::create_directories(data, error);
  ASSERT_TRUE(fs::is_directory(data)) << data;

  CString dir;
  EXPECT_TRUE(KEL::GetInstallDir(dir));
  EXPECT_EQ(dir.str(), Wide(data.string() + "/"));
  if (madeHere) fs::remove(data, error);
}

TEST_F(Directories, SettingsFilesFollowTheirVariables) {
  const std::wstring local = Wide(root + "/local/");
  EXPECT_EQ(KEL::InitINIFilePath().str(), local + L"KelInit.ini");
  EXPECT_EQ(KEL::SysINIFilePath().str(), local + L"KelSys.ini");
  EXPECT_EQ(KEL::UserINIFilePath().str(), local + L"KelUser.ini");
  EXPECT_TRUE(KEL::GCINIFilePath().IsEmpty());  // no project yet

  // The project can be named in the initialisation settings...
  ASSERT_TRUE(KEL::CInitSetting().SetSetting(L"GCINIFile", L" /p/Project.ini ", L"GC-Path"));
  EXPECT_EQ(KEL::GCINIFilePath().str(), L"/p/Project.ini");
  // ...and a variable wins over it; the settings objects follow at once.
  Set("KEL_GC_INI", root + "/gc.ini");
  Set("KEL_INIT_INI", root + "/init.ini");
  EXPECT_EQ(KEL::CGCSetting().GetFilePath().str(), Wide(root + "/gc.ini"));
  EXPECT_EQ(KEL::CInitSetting().GetFilePath().str(), Wide(root + "/init.ini"));
  Set("KEL_SYS_INI", root + "/sys.ini");
  EXPECT_EQ(KEL::SysINIFilePath().str(), Wide(root + "/sys.ini"));
}

TEST_F(Directories, SearchPathGainsADirectoryOnce) {
  const std::string bin = MakeDir("Tools/Bin");
  Set("PATH", "/usr/bin:/bin");
  ASSERT_TRUE(KEL::AddPathEnvironmentVariable(Wide(bin + "/").c_str()));
  EXPECT_EQ(std::string(getenv("PATH")), bin + ":/usr/bin:/bin");
  EXPECT_TRUE(KEL::AddPathEnvironmentVariable(Wide(bin).c_str()));
  EXPECT_EQ(std::string(getenv("PATH")), bin + ":/usr/bin:/bin");

  // A family-style path is put on PATH in native form.
  Set("PATH", "");
  ASSERT_TRUE(KEL::AddPathEnvironmentVariable(Wide(root + "\\tools\\bin").c_str()));
  EXPECT_EQ(std::string(getenv("PATH")), bin);

  EXPECT_FALSE(KEL::AddPathEnvironmentVariable(L""));
  EXPECT_FALSE(KEL::AddPathEnvironmentVariable(nullptr));
}
