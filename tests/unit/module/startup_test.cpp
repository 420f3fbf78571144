// Start-up and unload of the module: the command, the launcher's
// environment variables, the settings files, the published symbols and
// the objects the module keeps.
#include <gtest/gtest.h>

#include "family_environment.h"
#include "kelcad/entry/editor_reactor.h"
#include "kelcad/entry/entry_point.h"
#include "kelcad/entry/module_state.h"
#include "kelcad/kelcad.h"

namespace {

using StartUp = FamilyEnvironment;

std::wstring ProfilesKey() {
  return std::wstring(acdbHostApplicationServices()->getUserRegistryProductRootKey()) + L"\\Profiles";
}

TEST_F(StartUp, TheLauncherProfileIsMadeCurrentAndTheMenuLeftAlone) {
  Set("ACADCurrentProfiles", "KEL-Profile");
  Set("SoftwareProfileKey", "whatever");
  KEL::SetIsInSoftware(true);
  ASSERT_TRUE(LoadModule());
  CString profile;
  EXPECT_TRUE(KEL::GetRegStr(HKEY_CURRENT_USER, ProfilesKey().c_str(), nullptr, profile));
  EXPECT_EQ(profile, L"KEL-Profile");
  EXPECT_EQ(getenv("ACADCurrentProfiles"), nullptr);
  EXPECT_EQ(getenv("SoftwareProfileKey"), nullptr);
  EXPECT_FALSE(KEL::StartedWithoutLauncher());
  UnloadModule();
  EXPECT_TRUE(KEL::GetIsInSoftware());
}

TEST_F(StartUp, WithoutTheLauncherUnloadLeavesTheFamilysSoftware) {
  KEL::SetIsInSoftware(true);
  ASSERT_TRUE(LoadModule());
  CString profile;
  EXPECT_FALSE(KEL::GetRegStr(HKEY_CURRENT_USER, ProfilesKey().c_str(), nullptr, profile));
  EXPECT_TRUE(KEL::StartedWithoutLauncher());
  UnloadModule();
  EXPECT_FALSE(KEL::GetIsInSoftware());
}

TEST_F(StartUp, TheZoomCommandIsRegisteredUntilUnload) {
  ASSERT_TRUE(LoadModule());
  EXPECT_TRUE(kelhost::Host::instance().isCommand(L"KELZZ"));
  EXPECT_FALSE(kelhost::Host::instance().isCommand(L"ZZ"));
  // What it does is ZoomE's (zoom_extents_test.cpp).
  AcEdCommand* command = acedRegCmds->lookupGlobalCmd(L"KELZZ");
  ASSERT_NE(command, nullptr);
  EXPECT_EQ(command->commandFlags(), ACRX_CMD_TRANSPARENT | ACRX_CMD_USEPICKSET);
  EXPECT_STREQ(command->localName(), L"KELZZ");
  UnloadModule();
  EXPECT_FALSE(kelhost::Host::instance().isCommand(L"KELZZ"));
}

TEST_F(StartUp, SettingsFilesAndKeptObjectsFollowTheModule) {
  WriteFile("install/KelSys.ini", "[cmdreactor]\ncmd=line,Arc\n");
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(KEL::SysINI().GetFilePath(), CString(kelhost::FromUtf8(root + "/install/KelSys.ini").c_str()));
  EXPECT_EQ(KEL::UserINI().GetFilePath(), CString(kelhost::FromUtf8(root + "/local/KelUser.ini").c_str()));
  ASSERT_NE(KEL::EditorReactor(), nullptr);
  EXPECT_TRUE(KEL::EditorReactor()->isAttached());
  EXPECT_EQ(KEL::EditorReactor()->watchedCommands(), L"LINE,ARC");
  EXPECT_FALSE(KEL::EditorReactor()->snapChanged());
  EXPECT_NE(KEL::SavedCadVarSet(), nullptr);
  EXPECT_EQ(CDynLinkLibrary::liveCount(), 1);
  UnloadModule();
  EXPECT_EQ(KEL::EditorReactor(), nullptr);
  EXPECT_EQ(KEL::SavedCadVarSet(), nullptr);
  EXPECT_EQ(CDynLinkLibrary::liveCount(), 0);
}

TEST_F(StartUp, TheReactorWatchesTheDefaultCommandsAndStaysDetachedWithoutAnEditorWish) {
  KelEditorReactor detached(false);
  EXPECT_FALSE(detached.isAttached());
  EXPECT_EQ(detached.watchedCommands(), L"LINE,PLINE,INSERT,TEXT");
}

TEST_F(StartUp, GCEntriesBecomeSymbolsTypedByTheirSecondPart) {
  WriteFile("install/KelInit.ini",
            "[GC]\nScale=100,Double\nQ=7,Int\nR=abc,Text\nP=1,2,3\nLone=5\nName=图号,string\n");
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(Eval(L"GC::Scale"), L"100.0");
  EXPECT_EQ(Eval(L"(type GC::Q)"), L"INT");
  EXPECT_EQ(Eval(L"GC::Q"), L"7");
  EXPECT_EQ(Eval(L"GC::R"), L"\"abc\"");
  EXPECT_EQ(Eval(L"GC::Name"), L"\"图号\"");
  EXPECT_EQ(Eval(L"GC::P"), L"nil");
  EXPECT_EQ(Eval(L"GC::Lone"), L"nil");
}

TEST_F(StartUp, PathsAndTolerancesArePublished) {
  WriteFile("install/KelInit.ini", "[Precision]\nPointEQ=0.001\nDoubleEQ=0.0001\nZERO=1e-9\n");
  Set("KEL_ACAD14_DIR", root + "/nowhere/");
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(Eval(L"%InstallDir%"), L"\"" + kelhost::FromUtf8(root) + L"/install/\"");
  EXPECT_EQ(Eval(L"%LocalDir%"), L"\"" + kelhost::FromUtf8(root) + L"/local/\"");
  EXPECT_EQ(Eval(L"%WorkDir%"), L"\"" + kelhost::FromUtf8(root) + L"/work/\"");
  EXPECT_EQ(Eval(L"%ACAD14Dir%"), L"\"\"");  // not an existing directory
  EXPECT_EQ(Eval(L"%ACAD15Dir%"), L"\"\"");
  EXPECT_EQ(Eval(L"(equal %PointEQ% 0.001 1e-12)"), L"T");
  EXPECT_EQ(Eval(L"(equal %DoubleEQ% 0.0001 1e-12)"), L"T");
  EXPECT_EQ(Eval(L"(equal %VectorEQ% 0.0001 1e-12)"), L"T");
  EXPECT_EQ(Eval(L"(equal %ZERO% 1e-9 1e-15)"), L"T");
}

TEST_F(StartUp, EntryPointsAnswerAsThePlatformExpects) {
  EXPECT_EQ(acrxGetApiVersion(), ACRX_API_VERSION_MAJOR);
  // Unknown messages are ignored and every message answers kRetOK.
  EXPECT_EQ(acrxEntryPoint(AcRx::kCfgMsg, nullptr), AcRx::kRetOK);
  EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(99), nullptr), AcRx::kRetOK);
  // Outside a call the dispatcher finds no code and runs nothing.
  out.clear();
  EXPECT_EQ(acrxEntryPoint(AcRx::kInvkSubrMsg, nullptr), AcRx::kRetOK);
  EXPECT_EQ(out, L"");
}

}  // namespace
