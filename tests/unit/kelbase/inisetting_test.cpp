#include "kelbase/inisetting.h"
#include "scratch_environment.h"

using IniSettings = ScratchEnvironment;

namespace {
// UTF-16 bytes of ASCII text with a byte-order mark.
std::string Utf16(const std::string& ascii, bool bigEndian) {
  std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (char c : ascii) {
    if (bigEndian) bytes += '\0';
    bytes += c;
    if (!bigEndian) bytes += '\0';
  }
  return bytes;
}

std::vector<std::wstring> Items(const CStringArray& array) {
  std::vector<std::wstring> items;
  for (int i = 0; i < array.GetSize(); ++i) items.push_back(array[i].str());
  return items;
}
}  // namespace

TEST_F(IniSettings, ValuesRoundTripWithProfileSemantics) {
  INISetting ini(Wide(root + "/a.ini").c_str());
  EXPECT_EQ(ini.GetSetting(L"Key", L"fallback", L"Sec").str(), L"fallback");  // no file yet
  ASSERT_TRUE(ini.SetSetting(L"Key", L"value", L"Sec"));
  EXPECT_EQ(ini.GetSetting(L"KEY", L"", L"sec").str(), L"value");
  ASSERT_TRUE(ini.SetSetting(L"key", L"changed", L"SEC"));  // same key, any case
  EXPECT_EQ(ini.GetSetting(L"Key", L"", L"Sec").str(), L"changed");

  // Chinese text survives, and the file holds it as UTF-8.
  ASSERT_TRUE(ini.SetSetting(L"图框", L"A3 横向", L"设置"));
  EXPECT_EQ(ini.GetSetting(L"图框", L"", L"设置").str(), L"A3 横向");
  EXPECT_NE(ReadFile(root + "/a.ini").find("A3 横向"), std::string::npos);

  // Far longer than any fixed buffer, read back whole.
  const std::wstring longValue(70000, L'测');
  ASSERT_TRUE(ini.SetSetting(L"Long", longValue.c_str(), L"Sec"));
  EXPECT_EQ(ini.GetSetting(L"Long", L"", L"Sec").str(), longValue);

  // Missing names read the default and are never written.
  EXPECT_EQ(ini.GetSetting(nullptr, L"d", L"Sec").str(), L"d");
  EXPECT_TRUE(ini.GetSetting(L"Key", nullptr, L"Nowhere").IsEmpty());
  EXPECT_FALSE(ini.SetSetting(nullptr, L"x", L"Sec"));
  EXPECT_FALSE(ini.SetSetting(L"k", L"x", L""));
  EXPECT_EQ(ini.GetSetting(L"Key", L"", L"Sec").str(), L"changed");

  INISetting unset;
  EXPECT_EQ(unset.GetSetting(L"k", L"d", L"s").str(), L"d");
  EXPECT_FALSE(unset.SetSetting(L"k", L"v", L"s"));
}

TEST_F(IniSettings, FilesWithByteOrderMarksAreRead) {
  const std::string text = "[Precision]\r\n ZERO = 0.001 \r\n";
  for (const std::string& bytes : {Utf16(text, false), Utf16(text, true), "\xEF\xBB\xBF" + text}) {
    const std::string path = WriteFile("bom.ini", bytes);
    const INISetting ini(Wide(path).c_str());
    EXPECT_EQ(ini.GetSetting(L"zero", L"", L"PRECISION").str(), L"0.001");
  }
}

TEST_F(IniSettings, SectionsAndKeysAreListedInFileOrder) {
  const std::string path = WriteFile("list.ini",
      "[GC]\n; project values\nScale = 100,Double\nName=Bridge\nP=1,2,3\n[Empty]\n[Other]\nx=1\n");
  INISetting ini(Wide(path).c_str());
  CStringArray keys, values, sections;
  ASSERT_TRUE(ini.GetAllKeysAndValues(L"gc", keys, values));
  EXPECT_EQ(Items(keys), (std::vector<std::wstring>{L"Scale", L"Name", L"P"}));
  EXPECT_EQ(Items(values), (std::vector<std::wstring>{L"100,Double", L"Bridge", L"1,2,3"}));
  EXPECT_TRUE(ini.GetAllKeysAndValues(L"Empty", keys, values));
  EXPECT_EQ(keys.GetSize() + values.GetSize(), 0);
  EXPECT_FALSE(ini.GetAllKeysAndValues(L"Absent", keys, values));
  ASSERT_TRUE(ini.GetAllSections(sections));
  EXPECT_EQ(Items(sections), (std::vector<std::wstring>{L"GC", L"Empty", L"Other"}));

  ASSERT_TRUE(ini.DeleteKey(L"NAME", L"gc"));
  ASSERT_TRUE(ini.DeleteSection(L"other"));
  ASSERT_TRUE(ini.GetAllKeysAndValues(L"GC", keys, values));
  EXPECT_EQ(Items(keys), (std::vector<std::wstring>{L"Scale", L"P"}));
  ASSERT_TRUE(ini.GetAllSections(sections));
  EXPECT_EQ(Items(sections), (std::vector<std::wstring>{L"GC", L"Empty"}));
  EXPECT_FALSE(ini.DeleteKey(nullptr, L"GC"));  // would otherwise drop the section

  // Many entries overflow any first buffer and still all come back.
  INISetting big(Wide(root + "/big.ini").c_str());
  for (int i = 0; i < 300; ++i) {
    const std::wstring name = L"Entry" + std::to_wstring(i);
    ASSERT_TRUE(big.SetSetting(name.c_str(), L"value", name.c_str()));
  }
  ASSERT_TRUE(big.GetAllSections(sections));
  ASSERT_EQ(sections.GetSize(), 300);
  EXPECT_EQ(sections[299].str(), L"Entry299");
  ASSERT_TRUE(big.SetSetting(L"Wide", std::wstring(5000, L'x').c_str(), L"Entry0"));
  ASSERT_TRUE(big.GetAllKeysAndValues(L"Entry0", keys, values));
  ASSERT_EQ(values.GetSize(), 2);
  EXPECT_EQ(values[1].GetLength(), 5000);
}
