// The DXF form of chains (every node a labelled dotted pair), hexadecimal
// byte text and point tables.
#include <gtest/gtest.h>

#include <string>

#include "chain_builder.h"
#include "scratch_family.h"

namespace {

using DxfForm = ScratchFamily;

TEST_F(DxfForm, EveryValueKindHasItsLabel) {
  ChainBuilder chain;
  chain.Real(40, 2.5).Point(RTPOINT, 1.5, 2.0, 9.0).Short(70, -3).Str(1, L"abc").Str(1, nullptr);
  chain.Point(10, 1.0, 2.0, 3.25).Long(90, 70000).Long(RTLONG, -5).Mark(RTLB).Mark(RTLE).Mark(RTNIL).Mark(RTT);
  chain.Binary(std::string("\x0a\xff", 2)).Mark(-6).Mark(-5).Str(-4, L"<OR").Mark(-3).Name(-2, 0x2f);
  chain.Mark(20).Mark(RTDOTE).Mark(RTVOID);  // no kind, or one without a label
  EXPECT_EQ(std::wstring(KEL::RbToStr(chain.head())),
            L"\n(40 . 2.5)\n(5002 . (1.5, 2))\n(70 . -3)\n(1 . \"abc\")\n(1 . (NULL))\n(10 . (1, 2, 3.25))"
            L"\n(90 . 70000)\n(5010 . -5)\n(5016 . List Begin)\n(5017 . List End)\n(5019 . NIL)\n(5021 . T)"
            L"\n(1004 . Binary Chunk: \"0AFF\")\n(-6 . Extension Dictionary)\n(-5 . Persistent Reactors)"
            L"\n(-4 . Conditional Operator: \"<OR\")\n(-3 . Start of Xdata)\n(-2 . <Entity Name Reference:       2f>)"
            L"\n(20 . *Unknown*)\n(5018 . *Unknown*)\n(5014 . *Unknown*)");

  CString code(L"old"), value(L"old");
  KEL::dxfToStr(chain.head(), code, value);
  EXPECT_EQ(code, L"40");
  EXPECT_EQ(value, L"2.5");
  KEL::dxfToStr(nullptr, code, value);
  EXPECT_TRUE(code.IsEmpty() && value.IsEmpty());
}

TEST_F(DxfForm, NamesSayWhatKindOfReferenceTheyAre) {
  ChainBuilder chain;
  chain.Name(-1, 0x7ff5a0b1c2d3LL)  // only the low 32 bits print, as the platform's long
      .Name(339, 0x1b)
      .Name(340, 0x2a)
      .Name(350, 0x3a)
      .Name(369, 0x4a)
      .Name(398, 0x5b)
      .Name(399, 0x6a)
      .Name(RTPICKS, 0x123456789LL);
  EXPECT_EQ(std::wstring(KEL::RbToStr(chain.head())),
            L"\n(-1 . <Entity Name: a0b1c2d3>)\n(339 . <Soft Pointer:       1b>)"
            L"\n(340 . <Hard Pointer:       2a>)\n(350 . <Soft Ownership:       3a>)"
            L"\n(369 . <Hard Ownership:       4a>)\n(398 . <Hard Pointer:       5b>)"
            L"\n(399 . <Entity Name:       6a>)\n(5007 . <Selection Set: 23456789>)");
}

TEST_F(DxfForm, ChainsPrintOnePairPerNode) {
  ChainBuilder chain;
  chain.Str(0, L"LINE").Point(10, 0.5, -1.0, 0.0).Short(62, 5);
  const std::wstring text = L"\n(0 . \"LINE\")\n(10 . (0.5, -1, 0))\n(62 . 5)";
  EXPECT_EQ(std::wstring(KEL::RbToStr(chain.head())), text);
  KEL::printResbufChain(chain.head());
  EXPECT_EQ(TakeCommandLine(), text);

  // The buffer is the module's: the next call replaces the text.
  const wchar_t* first = KEL::RbToStr(chain.head());
  ChainBuilder other;
  other.Mark(RTT);
  const wchar_t* second = KEL::RbToStr(other.head());
  EXPECT_EQ(second, first);
  EXPECT_EQ(std::wstring(second), L"\n(5021 . T)");

  EXPECT_EQ(std::wstring(KEL::RbToStr(nullptr)), L"");
  KEL::printResbufChain(nullptr);
  EXPECT_EQ(TakeCommandLine(), L"");
}

TEST_F(DxfForm, BytesAsUpperCaseHexadecimal) {
  CString out(L"old");
  const char bytes[] = {10, static_cast<char>(255), 0, static_cast<char>(0x80)};
  const wchar_t* text = KEL::bytesToHexStr(bytes, 2, out);
  EXPECT_EQ(text, out.GetString());  // the text is out's
  EXPECT_EQ(out, L"0AFF");
  KEL::bytesToHexStr(bytes, 4, out);
  EXPECT_EQ(out, L"0AFF0080");
  for (const int count : {0, -3}) {
    out = L"old";
    KEL::bytesToHexStr(bytes, count, out);
    EXPECT_EQ(out, L"") << count;
  }
  KEL::bytesToHexStr(nullptr, 5, out);
  EXPECT_EQ(out, L"");
}

TEST_F(DxfForm, PointArraysAsNumberedTables) {
  AcArray<AcGePoint2d> flat;
  EXPECT_EQ(std::wstring(KEL::PtArrayToStr(flat)), L"\n\n  序号        X                Y\n");
  flat.append(AcGePoint2d(1.0, -2.5));
  flat.append(AcGePoint2d(123456.0, 0.125));
  EXPECT_EQ(std::wstring(KEL::PtArrayToStr(flat)),
            L"\n\n  序号        X                Y\n"
            L"\n  0          1.000000        -2.500000\n"
            L"\n  1          123456.000000        0.125000\n");

  AcArray<AcGePoint3d> solid;
  EXPECT_EQ(std::wstring(KEL::PtArrayToStr(solid)), L"\n\n  序号        X                Y                Z\n");
  solid.append(AcGePoint3d(1.0, 2.0, -3.0));
  EXPECT_EQ(std::wstring(KEL::PtArrayToStr(solid)),
            L"\n\n  序号        X                Y                Z\n"
            L"\n  0          1.000000        2.000000        -3.000000\n");
}

}  // namespace
