#include <gtest/gtest.h>

#include "arx/afx.h"
#include "kelhost/ui.h"

TEST(MessageBoxes, AreRecordedAndAnswerTheirDefaultButton) {
  kelhost::ClearShownMessageBoxes();
  testing::internal::CaptureStderr();
  EXPECT_EQ(AfxMessageBox(L"\u4fdd\u5b58?", MB_YESNO | MB_ICONQUESTION), IDYES);
  EXPECT_EQ(MessageBoxW(nullptr, L"text", nullptr, MB_OKCANCEL), IDOK);
  EXPECT_EQ(AfxGetMainWnd()->MessageBox(L"again", L"Title", MB_YESNOCANCEL), IDYES);
  EXPECT_EQ(MessageBoxW(nullptr, L"retry", L"T", MB_RETRYCANCEL), IDRETRY);
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_NE(err.find("\xE4\xBF\x9D\xE5\xAD\x98?"), std::string::npos);  // UTF-8 on standard error
  const auto& shown = kelhost::ShownMessageBoxes();
  ASSERT_EQ(shown.size(), 4u);
  EXPECT_EQ(shown[0].text, L"\u4fdd\u5b58?");
  EXPECT_EQ(shown[0].type, MB_YESNO | MB_ICONQUESTION);
  EXPECT_EQ(shown[1].caption, L"Error");  // Windows' caption when none is given
  EXPECT_EQ(shown[2].caption, L"Title");
  kelhost::ClearShownMessageBoxes();
  EXPECT_TRUE(kelhost::ShownMessageBoxes().empty());
}

TEST(ExtensionModule, TermDeletesTheModulesLibraries) {
  AFX_EXTENSION_MODULE mine, other;
  int dummy;
  HMODULE handle = &dummy;
  const int before = CDynLinkLibrary::liveCount();
  ASSERT_TRUE(AfxInitExtensionModule(mine, handle));
  EXPECT_TRUE(mine.bInitialized);
  EXPECT_EQ(mine.hResource, handle);
  AfxInitExtensionModule(other, nullptr);
  new CDynLinkLibrary(mine);
  new CDynLinkLibrary(mine);
  new CDynLinkLibrary(other);
  EXPECT_EQ(CDynLinkLibrary::liveCount(), before + 3);
  AfxTermExtensionModule(mine);
  EXPECT_EQ(CDynLinkLibrary::liveCount(), before + 1);  // only this module's (leak check under ASan)
  EXPECT_FALSE(mine.bInitialized);
  AfxTermExtensionModule(other);
  EXPECT_EQ(CDynLinkLibrary::liveCount(), before);
}

TEST(ExtensionModule, ResourceHandleAndUiStartUp) {
  HINSTANCE old = AfxGetResourceHandle();
  EXPECT_NE(old, nullptr);
  int mine;
  AfxSetResourceHandle(&mine);
  EXPECT_EQ(AfxGetResourceHandle(), &mine);
  AfxSetResourceHandle(old);
  const int calls = kelhost::InitAcUiDLLCallCount();
  InitAcUiDLL();
  EXPECT_EQ(kelhost::InitAcUiDLLCallCount(), calls + 1);
  AfxEnableControlContainer();
  EXPECT_TRUE(kelhost::ControlContainerEnabled());
}
