// The fixed two-level drawing records: names checked with a message box,
// group codes checked before anything is stored, removal by a null chain.
#include <string>

#include "oxdata_fixture.h"

namespace {

using DrawingRecords = OxDataTest;

resbuf* Sample() { return acutBuildList(1, L"数据", 40, 1.5, 70, 3, RTNONE); }

TEST_F(DrawingRecords, NamesOfOneTo31Characters) {
  resbuf* chain = Sample();
  const CString name31(std::wstring(31, L'D').c_str());
  const CString name32(std::wstring(32, L'D').c_str());
  EXPECT_EQ(KEL::SetXRecord(name32, L"R", chain), -1);
  EXPECT_EQ(KEL::SetXRecord(L"", L"R", chain), -1);
  EXPECT_EQ(KEL::SetXRecord(L"D", name32, chain), -1);
  EXPECT_EQ(KEL::SetXRecord(name32, name32, chain), -1);  // the first name is checked first
  EXPECT_EQ(Boxes(), (std::vector<std::wstring>{L"字典名不合法!", L"字典名不合法!", L"记录名不合法!", L"字典名不合法!"}));
  resbuf* out = chain;
  EXPECT_FALSE(KEL::GetXRecord(L"D", L"", out));
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(Boxes().back(), L"记录名不合法!");

  kelhost::ClearShownMessageBoxes();
  EXPECT_EQ(KEL::SetXRecord(name31, name31, chain), 1);
  EXPECT_TRUE(KEL::GetXRecord(name31, name31, out));
  EXPECT_EQ(Text(out), L"(1 数据)(40 1.5)(70 3)");
  acutRelRb(out);
  EXPECT_TRUE(Boxes().empty());
  acutRelRb(chain);
}

TEST_F(DrawingRecords, UnknownCodesAreNamedByPositionAndStoreNothing) {
  resbuf* chain = acutBuildList(1, L"a", 40, 1.0, RTNONE);
  chain->rbnext->restype = 25;  // a code with no kind
  EXPECT_EQ(KEL::SetXRecord(L"D", L"R", chain), -1);
  EXPECT_EQ(Boxes(), std::vector<std::wstring>{L"2 组扩展记录组码不合法"});
  resbuf* out = nullptr;
  EXPECT_TRUE(KEL::GetXRecord(L"D", L"R", out));
  EXPECT_EQ(out, nullptr);
  chain->rbnext->restype = 40;
  // Codes the table knows but an xrecord cannot hold: refused, nothing made.
  resbuf* xdataOnly = acutBuildList(1000, L"x", RTNONE);
  EXPECT_EQ(KEL::SetXRecord(L"D", L"R", xdataOnly), -1);
  acutRelRb(xdataOnly);
  AcDbDictionary* named = nullptr;
  ASSERT_EQ(db->getNamedObjectsDictionary(named, AcDb::kForRead), Acad::eOk);
  EXPECT_FALSE(named->has(L"D"));
  named->close();
  acutRelRb(chain);
}

TEST_F(DrawingRecords, ReplacingRemovingAndReadingBack) {
  resbuf* chain = Sample();
  ASSERT_EQ(KEL::SetXRecord(L"D", L"R", chain), 1);
  resbuf* other = acutBuildList(1, L"new", RTNONE);
  ASSERT_EQ(KEL::SetXRecord(L"D", L"R", other), 1);
  ASSERT_EQ(KEL::SetXRecord(L"D", L"S", chain), 1);
  resbuf* out = nullptr;
  EXPECT_TRUE(KEL::GetXRecord(L"d", L"r", out));  // names without regard to case
  EXPECT_EQ(Text(out), L"(1 new)");
  acutRelRb(out);
  // The same records through OxData's drawing records.
  int flags = 0;
  EXPECT_EQ(OxData::GetDWGxRecord(L"D", L"S", 70, flags), 0);
  EXPECT_EQ(flags, 3);

  EXPECT_EQ(KEL::SetXRecord(L"D", L"R", nullptr), 2);
  EXPECT_TRUE(KEL::GetXRecord(L"D", L"R", out));
  EXPECT_EQ(out, nullptr);
  EXPECT_TRUE(KEL::RemoveXRecord(L"D", L"R"));
  EXPECT_TRUE(KEL::RemoveXRecord(L"NONE", L"R"));
  EXPECT_TRUE(KEL::GetXRecord(L"NONE", L"R", out));
  EXPECT_EQ(out, nullptr);
  acutRelRb(chain);
  acutRelRb(other);

}

}  // namespace
