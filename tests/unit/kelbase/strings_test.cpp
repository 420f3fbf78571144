#include "kelbase/files.h"
#include "kelbase/strings.h"
#include "scratch_environment.h"

namespace {
std::vector<std::wstring> Split(const wchar_t* text, bool trim) {
  CStringArray parts;
  parts.Add(L"stale");
  const int count = KELOLD::DisCommaString(text, parts, trim);
  std::vector<std::wstring> items;
  for (int i = 0; i < parts.GetSize(); ++i) items.push_back(parts[i].str());
  EXPECT_EQ(count, parts.GetSize());
  return items;
}
}  // namespace

TEST(Strings, FloatToStrWritesFixedDecimals) {
  EXPECT_EQ(KEL::FloatToStr(0.000001, 10).str(), L"0.0000010000");
  EXPECT_EQ(KEL::FloatToStr(2.5, 0).str(), L"2");  // rounds half to even, as %.0f
  EXPECT_EQ(KEL::FloatToStr(-1.005, -3).str(), L"-1");
  EXPECT_EQ(KEL::FloatToStr(-0.0000001, 2).str(), L"-0.00");
  EXPECT_EQ(KEL::FloatToStr(1e20, 1).str(), L"100000000000000000000.0");
  EXPECT_EQ(KEL::FloatToStr(0.1, 1200).GetLength(), 2 + 1074);
}

TEST(Strings, FixLenStrCutsOrPads) {
  EXPECT_EQ(KEL::FixLenStr(L"abc", 5).str(), L"abc  ");
  EXPECT_EQ(KEL::FixLenStr(L"图框名称", 2).str(), L"图框");
  EXPECT_EQ(KEL::FixLenStr(nullptr, 3).str(), L"   ");
  EXPECT_TRUE(KEL::FixLenStr(L"abc", 0).IsEmpty());
  EXPECT_TRUE(KEL::FixLenStr(L"abc", -2).IsEmpty());
}

TEST(Strings, DisCommaStringKeepsEveryPart) {
  using V = std::vector<std::wstring>;
  EXPECT_EQ(Split(L"100,Double", false), (V{L"100", L"Double"}));
  EXPECT_EQ(Split(L"1,2,3", false), (V{L"1", L"2", L"3"}));
  EXPECT_EQ(Split(L"a,,b", false), (V{L"a", L"", L"b"}));
  EXPECT_EQ(Split(L",", false), (V{L"", L""}));
  EXPECT_EQ(Split(L" 7 , Int ", false), (V{L" 7 ", L" Int "}));
  EXPECT_EQ(Split(L" 7 , Int ", true), (V{L"7", L"Int"}));
  EXPECT_EQ(Split(L"单值", true), (V{L"单值"}));
  EXPECT_EQ(Split(L"", false), V{});
  EXPECT_EQ(Split(nullptr, true), V{});
}

using Files = ScratchEnvironment;

TEST_F(Files, IsExistFindsFilesAndDirectoriesInAnyCase) {
  WriteFile("Data.TXT", "x");
  MakeDir("Sub");
  EXPECT_TRUE(KEL::IsExist(Wide(root + "/Data.TXT").c_str()));
  EXPECT_TRUE(KEL::IsExist(Wide(root + "\\data.txt").c_str()));
  EXPECT_TRUE(KEL::IsExist(Wide(root + "/sub").c_str()));
  EXPECT_FALSE(KEL::IsExist(Wide(root + "/none.txt").c_str()));
  EXPECT_FALSE(KEL::IsExist(L""));
  EXPECT_FALSE(KEL::IsExist(nullptr));
}
