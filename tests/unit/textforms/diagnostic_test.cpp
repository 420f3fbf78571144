// The developers' diagnostics: where each family sends its text for every
// combination of its two switches, the order of box and echo, the formats
// of the value overloads and the shared, limited buffer.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chain_builder.h"
#include "scratch_family.h"

namespace {

const wchar_t kCaption[] = L"KEL调试信息";

class Diagnostics : public ScratchFamily {
 protected:
  // Writes the two switches of one family (keys <family>ToEXE, <family>ToCAD)
  // and turns every other family's switches on, so that a family that read
  // the wrong switches is caught.
  void Switches(const std::string& family, bool exe, bool cad) const {
    std::string text = "[Debug]\n";
    for (const char* other : {"CommandLine", "Dialog", "Macro"}) {
      const bool mine = family == other;
      text += std::string(other) + "ToEXE=" + (mine ? (exe ? "1" : "0") : "1") + "\n";
      text += std::string(other) + "ToCAD=" + (mine ? (cad ? "1" : "0") : "1") + "\n";
    }
    WriteInit(text);
  }
  // The text of every box shown since the last call.
  static std::vector<std::wstring> TakeBoxes() {
    std::vector<std::wstring> texts;
    for (const auto& box : kelhost::ShownMessageBoxes()) {
      EXPECT_EQ(box.caption, kCaption);
      EXPECT_EQ(box.type, 0u);  // OK only
      texts.push_back(box.text);
    }
    kelhost::ClearShownMessageBoxes();
    return texts;
  }
  // Records, for each text on the command line, how many boxes had been
  // shown by then.
  void WatchOrder() {
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& text) {
      commandLine += text;
      boxesAtEcho.push_back(kelhost::ShownMessageBoxes().size());
    });
  }
  std::vector<size_t> boxesAtEcho;
};

TEST_F(Diagnostics, PrintfReachesTheCommandLineOnlyWhenBothSwitchesAreOn) {
  for (const bool exe : {false, true}) {
    for (const bool cad : {false, true}) {
      SCOPED_TRACE(std::string("EXE ") + (exe ? "on" : "off") + ", CAD " + (cad ? "on" : "off"));
      Switches("CommandLine", exe, cad);
      DebugARXPrintf(L"\nv=%d %s", 7, L"中");
      EXPECT_EQ(TakeDebugOutput(), exe ? L"\nv=7 中" : L"");
      EXPECT_EQ(TakeCommandLine(), exe && cad ? L"\nv=7 中" : L"");
      EXPECT_TRUE(TakeBoxes().empty());
    }
  }
}

TEST_F(Diagnostics, MsgBoxShowsTheBoxThenEchoesForEachSwitch) {
  WatchOrder();
  for (const bool exe : {false, true}) {
    for (const bool cad : {false, true}) {
      SCOPED_TRACE(std::string("EXE ") + (exe ? "on" : "off") + ", CAD " + (cad ? "on" : "off"));
      Switches("Dialog", exe, cad);
      boxesAtEcho.clear();
      DebugARXMsgBox(7);
      EXPECT_EQ(TakeBoxes(), std::vector<std::wstring>{L"整数：7"});
      EXPECT_EQ(TakeDebugOutput(), exe ? L"整数：7" : L"");
      EXPECT_EQ(TakeCommandLine(), cad ? L"整数：7" : L"");
      if (cad) {
        EXPECT_EQ(boxesAtEcho, std::vector<size_t>{1});  // the box came first
      }
    }
  }
}

TEST_F(Diagnostics, MacroPrintfEchoesFirstAndAlwaysShowsTheBox) {
  WatchOrder();
  for (const bool exe : {false, true}) {
    for (const bool cad : {false, true}) {
      SCOPED_TRACE(std::string("EXE ") + (exe ? "on" : "off") + ", CAD " + (cad ? "on" : "off"));
      Switches("Macro", exe, cad);
      boxesAtEcho.clear();
      DebugARXMacroPrintf(L"macro %s: %d%%", L"KEL_TEST", 50);
      EXPECT_EQ(TakeBoxes(), std::vector<std::wstring>{L"macro KEL_TEST: 50%"});
      EXPECT_EQ(TakeDebugOutput(), exe ? L"macro KEL_TEST: 50%" : L"");
      EXPECT_EQ(TakeCommandLine(), cad ? L"macro KEL_TEST: 50%" : L"");
      if (cad) {
        EXPECT_EQ(boxesAtEcho, std::vector<size_t>{0});  // the echo came first
      }
    }
  }
}

TEST_F(Diagnostics, ValueOverloadsChooseTheirFormats) {
  Switches("CommandLine", true, false);
  ads_point point = {1.0, 2.0, 3.0};
  ads_name name = {0x7f001a2bLL | (5LL << 40), 9};
  AcArray<AcGePoint2d> flat;
  flat.append(AcGePoint2d(1.0, 2.0));
  AcArray<AcGePoint3d> solid;
  solid.append(AcGePoint3d(1.0, 2.0, 3.0));
  ChainBuilder chain;
  chain.Short(62, 5).Str(8, L"墙");

  DebugARXPrintf(7);
  EXPECT_EQ(TakeDebugOutput(), L"\n 调试信息.整数：[7] ");
  DebugARXPrintf(2.5);
  EXPECT_EQ(TakeDebugOutput(), L"\n 调试信息.实数：[2.500000]");
  DebugARXPrintf(point);
  EXPECT_EQ(TakeDebugOutput(), L"\n 调试信息.点：[1.000000,2.000000,3.000000]");
  DebugARXPrintf(name);
  EXPECT_EQ(TakeDebugOutput(), L"\n 调试信息.实体名：[7f001a2b]");
  DebugARXPrintf(AcGePoint2d(1.0, -2.0));
  EXPECT_EQ(TakeDebugOutput(), L"\n 调试信息.二维点：[1.000000,-2.000000]");
  DebugARXPrintf(AcGePoint3d(1.0, 2.0, 3.0));
  EXPECT_EQ(TakeDebugOutput(), L"\n 调试信息.三维点：[1.000000,2.000000,3.000000]");
  DebugARXPrintf(flat);
  EXPECT_EQ(TakeDebugOutput(), std::wstring(KEL::PtArrayToStr(flat)));
  DebugARXPrintf(solid);
  EXPECT_EQ(TakeDebugOutput(), std::wstring(KEL::PtArrayToStr(solid)));
  DebugARXPrintf(chain.head());
  EXPECT_EQ(TakeDebugOutput(), L"((62 . 5) (8 . \"墙\"))");  // the AutoLISP form

  DebugARXMsgBox(2.5);
  DebugARXMsgBox(point);
  DebugARXMsgBox(name);
  DebugARXMsgBox(AcGePoint2d(1.0, -2.0));
  DebugARXMsgBox(AcGePoint3d(1.0, 2.0, 3.0));
  DebugARXMsgBox(flat);
  DebugARXMsgBox(solid);
  DebugARXMsgBox(chain.head());
  const std::vector<std::wstring> boxes = {
      L"实数：2.500000",
      L"点：1.000000,2.000000,3.000000",
      L"实体名：7f001a2b",
      L"二维点：1.000000,-2.000000",
      L"三维点： 1.000000,2.000000,3.000000",
      KEL::PtArrayToStr(flat),
      KEL::PtArrayToStr(solid),
      L"\n(62 . 5)\n(8 . \"墙\")",  // the DXF form
  };
  EXPECT_EQ(TakeBoxes(), boxes);
}

TEST_F(Diagnostics, PrintedTextIsUsedAsTheFormat) {
  Switches("CommandLine", true, true);
  ChainBuilder chain;
  chain.Str(RTSTR, L"100%%").Str(RTSTR, L"50%d").Str(RTSTR, L"%s|%5.1f");
  // Each conversion reads no caller's value: a number prints 0, a string
  // "(null)".
  DebugARXPrintf(chain.head());
  EXPECT_EQ(TakeDebugOutput(), L"\"100%\" \"500\" \"(null)|  0.0\"");
  EXPECT_EQ(TakeCommandLine(), L"\"100%\" \"500\" \"(null)|  0.0\"");
  DebugARXMsgBox(chain.head());
  EXPECT_EQ(TakeBoxes(),
            std::vector<std::wstring>{L"\n(5005 . \"100%\")\n(5005 . \"500\")\n(5005 . \"(null)|  0.0\")"});
  TakeDebugOutput();

  // A text with more conversions than can be given zeros prints as it stands.
  ChainBuilder many;
  const std::wstring percents(40, L'%');
  many.Str(RTSTR, (percents + L"%s").c_str());
  DebugARXPrintf(many.head());
  EXPECT_EQ(TakeDebugOutput(), L"\"" + percents + L"%s\"");
}

TEST_F(Diagnostics, TheSharedBufferCutsLongTexts) {
  Switches("CommandLine", true, true);
  const std::wstring longText(50000, L'长');
  DebugARXPrintf(L"%s", longText.c_str());
  const std::wstring cut(40959, L'长');
  EXPECT_EQ(TakeDebugOutput(), cut);
  EXPECT_EQ(TakeCommandLine(), cut);

  // A null format is an empty text, not a crash.
  Switches("Macro", false, false);
  DebugARXMacroPrintf(nullptr);
  EXPECT_EQ(TakeBoxes(), std::vector<std::wstring>{L""});
}

}  // namespace
