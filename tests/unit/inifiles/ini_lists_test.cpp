// Settings files through result-buffer lists: what is written, what reads
// back, the messages of a wrong list, and short section names.
#include "../module/family_environment.h"
#include "kelcad/kelcad.h"

namespace {

using IniLists = FamilyEnvironment;

// A list owned by the test, released at the end of the scope.
struct List {
  explicit List(resbuf* chain) : head(chain) {}
  ~List() { acutRelRb(head); }
  List(const List&) = delete;
  List& operator=(const List&) = delete;
  resbuf* head;
};

std::vector<std::wstring> Texts(const CStringArray& items) {
  std::vector<std::wstring> texts;
  for (int i = 0; i < items.GetSize(); ++i) texts.push_back(items[i].str());
  return texts;
}

TEST_F(IniLists, WrittenValuesReadBackAsText) {
  const std::wstring file = kelhost::FromUtf8(root) + L"/work/Demo.ini";
  List write(acutBuildList(RTSTR, file.c_str(), RTSTR, L"Setting", RTSTR, L"Scale", RTREAL, 1.5, RTSTR, L"Count",
                           RTSHORT, 7, RTSTR, L"名称", RTSTR, L"设计 图纸", RTSTR, L"Tiny", RTREAL, -0.00004, 0));
  EXPECT_TRUE(KEL::WriteIni(write.head));
  EXPECT_EQ(ReadFile("work/Demo.ini"), "[SETTING]\nScale=1.5000\nCount=7\n名称=设计 图纸\nTiny=-0.0000\n");

  CStringArray keys, values;
  List whole(acutBuildList(RTSTR, file.c_str(), RTSTR, L"setting", 0));
  EXPECT_TRUE(KEL::ReadIni(whole.head, keys, values));
  EXPECT_EQ(Texts(keys), (std::vector<std::wstring>{L"Scale", L"Count", L"名称", L"Tiny"}));
  EXPECT_EQ(Texts(values), (std::vector<std::wstring>{L"1.5000", L"7", L"设计 图纸", L"-0.0000"}));

  // Keys in the caller's order; nodes that are not strings are skipped.
  List some(acutBuildList(RTSTR, file.c_str(), RTSTR, L"Setting", RTSTR, L"count", RTSHORT, 5, RTSTR, L"Missing",
                          RTSTR, L"名称", 0));
  EXPECT_TRUE(KEL::ReadIni(some.head, keys, values));
  EXPECT_EQ(Texts(keys), (std::vector<std::wstring>{L"count", L"Missing", L"名称"}));
  EXPECT_EQ(Texts(values), (std::vector<std::wstring>{L"7", L"", L"设计 图纸"}));

  // A file name given apart stands in front of the list, which stays the
  // caller's, unchanged.
  List rest(acutBuildList(RTSTR, L"Setting", RTSTR, L"Scale", 0));
  EXPECT_TRUE(KEL::ReadIni(rest.head, keys, values, file.c_str()));
  EXPECT_EQ(Texts(values), (std::vector<std::wstring>{L"1.5000"}));
  ASSERT_NE(rest.head->rbnext, nullptr);
  EXPECT_EQ(rest.head->rbnext->rbnext, nullptr);
  EXPECT_STREQ(rest.head->resval.rstring, L"Setting");
  List more(acutBuildList(RTSTR, L"Setting", RTSTR, L"Count", RTSHORT, 8, 0));
  EXPECT_TRUE(KEL::WriteIni(more.head, file.c_str()));
  EXPECT_NE(ReadFile("work/Demo.ini").find("Count=8\n"), std::string::npos);

  // Nothing to read: a missing file, a section that is not a string, keys
  // expected but none given as strings. An absent section reads empty.
  List missing(acutBuildList(RTSTR, L"work\\none.ini", RTSTR, L"Setting", 0));
  EXPECT_FALSE(KEL::ReadIni(missing.head, keys, values));
  List badSection(acutBuildList(RTSTR, file.c_str(), RTSHORT, 1, 0));
  EXPECT_FALSE(KEL::ReadIni(badSection.head, keys, values));
  List noKeys(acutBuildList(RTSTR, file.c_str(), RTSTR, L"Setting", RTSHORT, 5, 0));
  EXPECT_FALSE(KEL::ReadIni(noKeys.head, keys, values));
  List absent(acutBuildList(RTSTR, file.c_str(), RTSTR, L"Nowhere", 0));
  EXPECT_TRUE(KEL::ReadIni(absent.head, keys, values));
  EXPECT_TRUE(keys.IsEmpty());
  EXPECT_FALSE(KEL::ReadIni(nullptr, keys, values));
  EXPECT_TRUE(out.empty());
}

TEST_F(IniLists, WrongListsPrintTheirMessageAndWriteNothing) {
  WriteFile("work/Keep.ini", "[A]\r\nk = v\r\n");
  const std::wstring file = kelhost::FromUtf8(root) + L"/work/Keep.ini";
  const std::wstring fresh = kelhost::FromUtf8(root) + L"/work/Fresh.ini";
  struct Case {
    resbuf* list;
    const wchar_t* message;
  };
  const Case cases[] = {
      {acutBuildList(RTSTR, file.c_str(), RTSTR, L"A", RTSTR, L"k", RTSTR, L"w", RTSTR, L"k2", 0), L"参数个数不配对！"},
      {acutBuildList(RTSTR, file.c_str(), RTSTR, L"A", RTSTR, L"k", RTLONG, 70000, 0), L"参数类型错误！"},
      {acutBuildList(RTSTR, file.c_str(), RTSTR, L"A", RTSHORT, 3, RTSTR, L"w", 0), L"参数类型错误！"},
      {acutBuildList(RTSTR, file.c_str(), RTSTR, L"A", RTSTR, L"k", RTT, 0), L"参数类型错误！"},
      {acutBuildList(RTSHORT, 1, RTSTR, L"A", RTSTR, L"k", RTSTR, L"w", 0), L"第一个参数类型错误！"},
      {acutBuildList(RTSTR, file.c_str(), RTREAL, 1.0, RTSTR, L"k", RTSTR, L"w", 0), L"第二个参数类型错误！"},
      {acutBuildList(RTSTR, file.c_str(), RTSTR, L"A", 0), L"没有要写的键和值！"},
      {acutBuildList(RTSTR, fresh.c_str(), RTSTR, L"A", RTSTR, L"k", 0), L"参数个数不配对！"},
  };
  for (const Case& c : cases) {
    out.clear();
    EXPECT_FALSE(KEL::WriteIni(c.list));
    EXPECT_EQ(out, c.message);
    acutRelRb(c.list);
  }
  EXPECT_EQ(ReadFile("work/Keep.ini"), "[A]\r\nk = v\r\n");
  EXPECT_FALSE(std::filesystem::exists(root + "/work/Fresh.ini"));

  out.clear();
  List nowhere(acutBuildList(RTSTR, L"no\\such\\dir\\x.ini", RTSTR, L"A", RTSTR, L"k", RTSTR, L"v", 0));
  EXPECT_FALSE(KEL::WriteIni(nowhere.head));
  EXPECT_EQ(out, L"写INI文件失败：no\\such\\dir\\x.ini");
}

TEST_F(IniLists, DelIniItemRemovesKeysOrTheWholeSection) {
  WriteFile("work/Del.ini", "[A]\nk1=1\nk2=2\n[B]\nx=1\n[C]\ny=2\n");
  const std::wstring file = kelhost::FromUtf8(root) + L"/work/Del.ini";
  List keys(acutBuildList(RTSTR, file.c_str(), RTSTR, L"a", RTSTR, L"K1", RTSTR, L"absent", 0));
  EXPECT_TRUE(KEL::DelIniItem(keys.head));
  List section(acutBuildList(RTSTR, L"B", 0));
  EXPECT_TRUE(KEL::DelIniItem(section.head, file.c_str()));
  EXPECT_EQ(ReadFile("work/Del.ini"), "[A]\nk2=2\n[C]\ny=2\n");
  EXPECT_TRUE(out.empty());

  List badKey(acutBuildList(RTSTR, file.c_str(), RTSTR, L"C", RTSTR, L"y", RTSHORT, 1, 0));
  EXPECT_FALSE(KEL::DelIniItem(badKey.head));
  EXPECT_EQ(out, L"参数类型错误！");
  out.clear();
  List badSection(acutBuildList(RTSTR, file.c_str(), RTNIL, 0));
  EXPECT_FALSE(KEL::DelIniItem(badSection.head));
  EXPECT_EQ(out, L"第二个参数类型错误！");
  out.clear();
  List missing(acutBuildList(RTSTR, L"work\\none.ini", RTSTR, L"C", 0));
  EXPECT_FALSE(KEL::DelIniItem(missing.head));
  EXPECT_EQ(out, L"INI文件不存在：work\\none.ini");
  EXPECT_FALSE(std::filesystem::exists(root + "/work/none.ini"));
  EXPECT_EQ(ReadFile("work/Del.ini"), "[A]\nk2=2\n[C]\ny=2\n");
}

// The only test of this program that loads a field file: the map and its
// debug switch live as long as the module.
TEST_F(IniLists, ShortSectionNamesTakeTheirFullNamesAndDebugPrints) {
  WriteFile("install/Fields.dat", "[Option]\nDebug=True\n[SimpleName--FullName]\nSJ=设计参数\n");
  CString fieldFile;
  ASSERT_TRUE(KEL::LoadGCFieldFile(L"Fields.dat", fieldFile));
  const std::wstring file = kelhost::FromUtf8(root) + L"/work/Prj.ini";

  List write(acutBuildList(RTSTR, file.c_str(), RTSTR, L"sj", RTSTR, L"层高", RTREAL, 3.0, 0));
  EXPECT_TRUE(KEL::WriteIni(write.head));
  EXPECT_EQ(ReadFile("work/Prj.ini"), "[设计参数]\n层高=3.0000\n");
  EXPECT_EQ(out, L"\n WriteIni [设计参数] " + file + L"\n   层高=3.0000");

  out.clear();
  CStringArray keys, values;
  List read(acutBuildList(RTSTR, file.c_str(), RTSTR, L"Sj", RTSTR, L"层高", 0));
  EXPECT_TRUE(KEL::ReadIni(read.head, keys, values));
  EXPECT_EQ(Texts(values), (std::vector<std::wstring>{L"3.0000"}));
  EXPECT_EQ(out, L"\n ReadIni [设计参数] " + file + L"\n   层高=3.0000");

  // Names the map does not know are used upper-cased.
  List other(acutBuildList(RTSTR, file.c_str(), RTSTR, L"Other", RTSTR, L"a", RTSTR, L"b", 0));
  EXPECT_TRUE(KEL::WriteIni(other.head));
  EXPECT_NE(ReadFile("work/Prj.ini").find("[OTHER]\na=b\n"), std::string::npos);

  WriteFile("install/Quiet.dat", "[Option]\nDebug=False\n");
  ASSERT_TRUE(KEL::LoadGCFieldFile(L"Quiet.dat", fieldFile));
  out.clear();
  EXPECT_TRUE(KEL::ReadIni(read.head, keys, values));
  EXPECT_TRUE(out.empty());
}

TEST_F(IniLists, BaseListsRefuseMismatchedArraysWithoutWriting) {
  const std::wstring file = kelhost::FromUtf8(root) + L"/work/Base.ini";
  CStringArray keys, values;
  keys.Add(L"a");
  keys.Add(L"b");
  values.Add(L"1");
  EXPECT_FALSE(KEL::WriteIni(L"S", keys, values, file.c_str()));
  values.Add(L"2");
  keys[1] = L"";
  EXPECT_FALSE(KEL::WriteIni(L"S", keys, values, file.c_str()));
  EXPECT_FALSE(std::filesystem::exists(root + "/work/Base.ini"));
  keys[1] = L"b";
  EXPECT_TRUE(KEL::WriteIni(L"S", keys, values, file.c_str()));
  EXPECT_EQ(ReadFile("work/Base.ini"), "[S]\na=1\nb=2\n");

  CStringArray none;
  EXPECT_TRUE(KEL::DeleteIni(L"s", none, file.c_str()));
  EXPECT_EQ(ReadFile("work/Base.ini"), "");
  EXPECT_FALSE(KEL::DeleteIni(L"S", none, L"work\\none.ini"));
}

}  // namespace
