// The base library's debug switches (section "Debug" of the initialisation
// settings, read at every call) and its debugger output.
#include <gtest/gtest.h>

#include <string>

#include "scratch_family.h"

namespace {

using DebugSwitches = ScratchFamily;

TEST_F(DebugSwitches, OffUntilSetAndReadFromTheFileAtEveryCall) {
  EXPECT_FALSE(GetDSCommandLineToEXE());
  EXPECT_FALSE(GetDSFormatLspList());

  WriteInit(
      "[Debug]\nCommandLineToEXE=1\nCommandLineToCAD=0\nDialogToEXE=yes\nDialogToCAD=off\n"
      "MacroToEXE=TRUE\nMacroToCAD= 2 \nFormatLspList=On\n");
  EXPECT_TRUE(GetDSCommandLineToEXE());
  EXPECT_FALSE(GetDSCommandLineToCAD());
  EXPECT_TRUE(GetDSDialogToEXE());
  EXPECT_FALSE(GetDSDialogToCAD());
  EXPECT_TRUE(GetDSMacroToEXE());
  EXPECT_TRUE(GetDSMacroToCAD());
  EXPECT_TRUE(GetDSFormatLspList());

  // Changed behind the library's back: the next call sees it.
  WriteInit("[Debug]\nCommandLineToEXE=0\nMacroToCAD=-1\n");
  EXPECT_FALSE(GetDSCommandLineToEXE());
  EXPECT_TRUE(GetDSMacroToCAD());
  EXPECT_FALSE(GetDSFormatLspList());

  // Text that is neither a whole number nor a word for "on" is off.
  for (const char* value : {"", "0", "no", "false", "1x", "abc", "0.5"}) {
    WriteInit(std::string("[Debug]\nDialogToCAD=") + value + "\n");
    EXPECT_FALSE(GetDSDialogToCAD()) << value;
  }
  // Switches live in their own section only.
  WriteInit("[Precision]\nDialogToCAD=1\n");
  EXPECT_FALSE(GetDSDialogToCAD());
}

TEST_F(DebugSwitches, SettersStoreOneOrZeroUnderTheirOwnKey) {
  ASSERT_TRUE(SetDSDialogToCAD(true));
  ASSERT_TRUE(SetDSFormatLspList(true));
  ASSERT_TRUE(SetDSDialogToEXE(false));
  EXPECT_TRUE(GetDSDialogToCAD());
  EXPECT_TRUE(GetDSFormatLspList());
  EXPECT_FALSE(GetDSDialogToEXE());
  EXPECT_FALSE(GetDSMacroToCAD());
  const INISetting init(kelhost::FromUtf8(root + "/local/KelInit.ini").c_str());
  EXPECT_EQ(init.GetSetting(L"DialogToCAD", L"", L"Debug"), L"1");
  EXPECT_EQ(init.GetSetting(L"DialogToEXE", L"", L"Debug"), L"0");
}

TEST_F(DebugSwitches, DebugPrintfFormatsToTheDebuggerOutput) {
  DebugPrintf(L"%s=%d;%hs;%.2f", L"值", 42, "narrow", 1.5);
  EXPECT_EQ(TakeDebugOutput(), L"值=42;narrow;1.50");
  DebugPrintf(nullptr);
  DebugPrintf(L"%s", L"100%");  // text passed as an argument is not a format
  EXPECT_EQ(TakeDebugOutput(), L"100%");
  EXPECT_EQ(TakeCommandLine(), L"");
}

}  // namespace
