// The AutoLISP form of chains (RbToStrEx): atoms, group-code pairs with the
// outer wrap, xdata, nested lists, the short real form, the labelled form
// chosen by the list-format switch, and the hard limit of its buffer.
#include <gtest/gtest.h>

#include <string>

#include "chain_builder.h"
#include "scratch_family.h"

namespace {

using LispForm = ScratchFamily;

std::wstring Ex(const ChainBuilder& chain) { return KEL::RbToStrEx(chain.head()).str(); }

std::wstring OneReal(double value) {
  ChainBuilder chain;
  chain.Real(RTREAL, value);
  return Ex(chain);
}

TEST_F(LispForm, RealsInTheShortForm) {
  EXPECT_EQ(OneReal(12.5), L"12.5");
  EXPECT_EQ(OneReal(12.0), L"12.0");
  EXPECT_EQ(OneReal(2.0), L"2.0");
  EXPECT_EQ(OneReal(100.0), L"100.0");  // zeros before the point stay
  EXPECT_EQ(OneReal(0.1234567), L"0.12346");
  EXPECT_EQ(OneReal(3.14159265), L"3.14159");
  EXPECT_EQ(OneReal(-0.5), L"-0.5");
  EXPECT_EQ(OneReal(0.000001), L"0.0");  // rounds to zero decimals, one put back
  EXPECT_EQ(OneReal(0.0000001), L"0.0");
  EXPECT_EQ(OneReal(-1e-11), L"-0.0");  // below ZERO: one decimal, sign kept

  // The tolerance comes from the family's settings.
  WriteInit("[Precision]\nZERO=0.01\n");
  EXPECT_EQ(OneReal(0.005), L"0.0");
  EXPECT_EQ(OneReal(-0.009), L"-0.0");
  EXPECT_EQ(OneReal(0.01), L"0.01");
}

TEST_F(LispForm, AtomsOfEveryKind) {
  ChainBuilder atoms;
  atoms.Short(RTSHORT, -32768)
      .Str(RTSTR, L"a\"b 中文")
      .Point(RTPOINT, 1.0, 2.5, 7.0)
      .Point(RT3DPOINT, 1.0, 2.0, -3.25)
      .Long(RTLONG, 70000)  // the family's odd parenthesis
      .Name(RTENAME, 0x1a2bLL)
      .Name(RTPICKS, 0x5ff00000000ffLL)
      .Mark(RTNIL)
      .Mark(RTT)
      .Real(RTREAL, 0.25);
  EXPECT_EQ(Ex(atoms),
            L"-32768 \"a\"b 中文\" (1.0 2.5) (1.0 2.0 -3.25) 70000) <图元名: 1a2b> <选择集: ff> nil T 0.25");

  // Kinds without a form name themselves (a group code without a kind is
  // of kind RTNONE) and are not pairs: no wrap.
  ChainBuilder unknown;
  unknown.Real(RTANG, 1.0).Binary("\x01").Mark(-3).Mark(20);
  EXPECT_EQ(Ex(unknown),
            L"(未知的类型  ：  5004) (未知的类型  ：  1004) (未知的类型  ：  -3) (未知的类型  ：  5000)");

  ChainBuilder one;
  one.Short(RTSHORT, 5);
  EXPECT_EQ(Ex(one), L"5");
  EXPECT_EQ(KEL::RbToStrEx(nullptr), L"");
}

TEST_F(LispForm, GroupCodePairsAreWrappedOnce) {
  ChainBuilder color;
  color.Short(62, 5);
  EXPECT_EQ(Ex(color), L"((62 . 5))");

  ChainBuilder entity;
  entity.Name(-1, 0x2a)
      .Str(0, L"LINE")
      .Str(8, L"0")
      .Point(10, 1.0, 2.0, 0.0)
      .Real(40, 2.5)
      .Long(90, 70000)
      .Name(330, 0x2b)
      .Name(RTPICKS, 0x3c)  // an atom among pairs
      .Point(RTPOINT, 0.5, 0.25);
  EXPECT_EQ(Ex(entity),
            L"((-1 . <图元名: 2a>) (0 . \"LINE\") (8 . \"0\") (10 1.0 2.0 0.0) (40 . 2.5) (90 . 70000)"
            L" (330 . <图元名: 2b>) <选择集: 3c> (0.5 0.25))");

  ChainBuilder mixed;
  mixed.Short(RTSHORT, 1).Point(1010, 1.0, 0.0, 0.0);
  EXPECT_EQ(Ex(mixed), L"(1 (1010 1.0 0.0 0.0))");
}

TEST_F(LispForm, XdataOpensAMinusThreeGroup) {
  ChainBuilder entity;
  entity.Str(0, L"LINE")
      .Short(62, 1)
      .Str(1001, L"KELAPP")
      .Str(1000, L"值")
      .Short(1070, 3)
      .Str(1001, L"OTHER")  // later applications are plain pairs in the same group
      .Real(1040, 1.5);
  EXPECT_EQ(Ex(entity),
            L"((0 . \"LINE\") (62 . 1) (-3 (1001 . \"KELAPP\") (1000 . \"值\") (1070 . 3)"
            L" (1001 . \"OTHER\") (1040 . 1.5)))");

  // As an entity's data list with xdata has it, the sentinel node first.
  ChainBuilder withSentinel;
  withSentinel.Str(0, L"LINE").Mark(-3).Str(1001, L"A").Long(1071, -7);
  EXPECT_EQ(Ex(withSentinel), L"((0 . \"LINE\") (未知的类型  ：  -3) (-3 (1001 . \"A\") (1071 . -7)))");

  // Each call starts afresh: no xdata state is left over.
  ChainBuilder plain;
  plain.Str(1000, L"x");
  EXPECT_EQ(Ex(plain), L"((1000 . \"x\"))");
}

TEST_F(LispForm, NestedListsAndDottedPairs) {
  ChainBuilder nested;
  nested.Mark(RTLB).Short(RTSHORT, 1).Mark(RTLB).Str(RTSTR, L"a").Real(RTREAL, 2.5).Mark(RTLE).Mark(RTLE);
  EXPECT_EQ(Ex(nested), L"( 1 ( \"a\" 2.5))");

  ChainBuilder empty;
  empty.Mark(RTLB).Mark(RTLE).Mark(RTNIL);
  EXPECT_EQ(Ex(empty), L"() nil");

  // A dotted pair as AutoLISP passes it: " . " joins, then a ")" element.
  ChainBuilder dotted;
  dotted.Mark(RTLB).Short(RTSHORT, 1).Mark(RTDOTE).Short(RTSHORT, 2).Mark(RTLE);
  EXPECT_EQ(Ex(dotted), L"( 1 .  ) 2)");

  ChainBuilder pairInList;
  pairInList.Mark(RTLB).Short(62, 5).Mark(RTLE);
  EXPECT_EQ(Ex(pairInList), L"(( (62 . 5)))");
}

TEST_F(LispForm, TheListFormatSwitchGivesLabelledLines) {
  WriteInit("[Debug]\nFormatLspList=1\n");
  ChainBuilder entity;
  entity.Name(-1, 0x2a)
      .Str(0, L"LINE")
      .Point(10, 1.0, 2.0, 0.0)
      .Real(40, 0.1234567)
      .Short(62, 5)
      .Long(90, 70000)
      .Point(RTPOINT, 3.0, 4.0)
      .Name(RTPICKS, 0x3c)
      .Str(1001, L"APP")  // no xdata marker in this form
      .Binary("\x01");
  EXPECT_EQ(Ex(entity),
            L"   RTENAME[  -1] : <图元名: 2a>\n"
            L"     RTSTR[   0] : \"LINE\"\n"
            L" RT3DPOINT[  10] : 1.0,2.0,0.0\n"
            L"    RTREAL[  40] : 0.12346\n"
            L"   RTSHORT[  62] : 5\n"
            L"    RTLONG[  90] : 70000\n"
            L"   RTPOINT[5002] : 3.0,4.0\n"
            L"   RTPICKS[5007] : <选择集: 3c>\n"
            L"     RTSTR[1001] : \"APP\"\n"
            L"(未知的类型  ：  1004),肯请告知:-)\n");

  // List marks, nil and T join as in the AutoLISP form.
  ChainBuilder list;
  list.Mark(RTLB).Short(RTSHORT, 1).Mark(RTT).Mark(RTNIL).Mark(RTLE);
  EXPECT_EQ(Ex(list), L"(\n   RTSHORT[5003] : 1\n T nil)\n");

  // The switch is read at every call.
  WriteInit("[Debug]\nFormatLspList=0\n");
  EXPECT_EQ(Ex(list), L"( 1 T nil)");
}

TEST_F(LispForm, TextBeyondTheBufferEndsTheProcess) {
  // 163840 characters with the terminator: a string atom with its quotes
  // fits up to 163837 characters of text.
  ChainBuilder fits;
  fits.Str(RTSTR, std::wstring(163837, L'x').c_str());
  EXPECT_EQ(KEL::RbToStrEx(fits.head()).GetLength(), 163839);

  ChainBuilder tooLong;
  tooLong.Str(RTSTR, std::wstring(163838, L'x').c_str());
  EXPECT_EXIT(KEL::RbToStrEx(tooLong.head()), ::testing::ExitedWithCode(1), "does not fit in its buffer of 163840");

  // Many small pairs overrun it as well, and so does the outer wrap.
  ChainBuilder many;
  for (int i = 0; i < 20000; ++i) many.Short(62, 5);  // 9 characters each with the blank
  EXPECT_EXIT(KEL::RbToStrEx(many.head()), ::testing::ExitedWithCode(1), "RbToStrEx");
  ChainBuilder wrapped;
  wrapped.Str(1, std::wstring(163839 - 8, L'x').c_str());  // (1 . "...") fills the buffer exactly
  EXPECT_EXIT(KEL::RbToStrEx(wrapped.head()), ::testing::ExitedWithCode(1), "RbToStrEx");
}

}  // namespace
