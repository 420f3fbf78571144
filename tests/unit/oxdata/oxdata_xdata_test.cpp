// OxData on xdata and entity lists: addressing by code and occurrence,
// zero-filled groups, the lenient reads, deletion by index and by pattern,
// and what it refuses without touching the object.
#include <cstdlib>
#include <string>

#include "oxdata_fixture.h"

namespace {

using XDataValues = OxDataTest;

TEST_F(XDataValues, WritingPastTheEndZeroFillsAndReadsAreLenient) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  ASSERT_FALSE(Registered(L"APP"));
  ASSERT_TRUE(data.SetxData(L"APP", 1070, 5, 2));
  EXPECT_EQ(XData(line), L"(1001 APP)(1070 0)(1070 0)(1070 5)");
  EXPECT_TRUE(Registered(L"APP"));

  int value = -1;
  EXPECT_EQ(data.GetxData(L"APP", 1070, value, 2), 2);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(data.GetxData(L"APP", 1070, value, 1), 1);
  EXPECT_EQ(value, 0);
  // Past the end: the last group's value, and the last index there is.
  value = -1;
  EXPECT_EQ(data.GetxData(L"APP", 1070, value, 7), 2);
  EXPECT_EQ(value, 5);
  // An absent code or application leaves the value alone.
  value = 99;
  long wide = 99;
  EXPECT_EQ(data.GetxData(L"APP", 1071, wide, 0), -1);
  EXPECT_EQ(wide, 99);
  EXPECT_EQ(data.GetxData(L"OTHER", 1070, value, 0), -1);
  EXPECT_EQ(value, 99);

  // Overwriting in the middle and appending a second code keep the order.
  ASSERT_TRUE(data.SetxData(L"APP", 1070, 7, 1));
  ASSERT_TRUE(data.SetxData(L"APP", 1000, L"墙", 1));
  EXPECT_EQ(XData(line), L"(1001 APP)(1070 0)(1070 7)(1070 5)(1000 )(1000 墙)");
}

TEST_F(XDataValues, EachValueTypeUsesItsOwnField) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  const double point[3] = {1.5, -2, 3};
  ASSERT_TRUE(data.SetxData(L"KEL_T", 1000, L"text"));
  ASSERT_TRUE(data.SetxData(L"KEL_T", 1070, 70000));  // kept in 16 bits
  ASSERT_TRUE(data.SetxData(L"KEL_T", 1071, 70000L));
  ASSERT_TRUE(data.SetxData(L"KEL_T", 1040, 2.25));
  ASSERT_TRUE(data.SetxData(L"KEL_T", 1010, point));
  CString text;
  int small = 0;
  long wide = 0;
  double real = 0;
  double back[3] = {0, 0, 0};
  EXPECT_EQ(data.GetxData(L"KEL_T", 1000, text), 0);
  EXPECT_EQ(data.GetxData(L"KEL_T", 1070, small), 0);
  EXPECT_EQ(data.GetxData(L"KEL_T", 1071, wide), 0);
  EXPECT_EQ(data.GetxData(L"KEL_T", 1040, real), 0);
  EXPECT_EQ(data.GetxData(L"KEL_T", 1010, back), 0);
  EXPECT_EQ(std::wstring(text.GetString()), L"text");
  EXPECT_EQ(small, static_cast<short>(70000));
  EXPECT_EQ(wide, 70000);
  EXPECT_EQ(real, 2.25);
  EXPECT_EQ(back[0], 1.5);
  EXPECT_EQ(back[1], -2);
  EXPECT_EQ(back[2], 3);

  // Entity names are read from (and written to) the entity list.
  ads_name own, owner, read = {0, 0};
  NameOf(line, own);
  NameOf(db->modelSpaceId(), owner);
  EXPECT_EQ(data.GetxData(L"", -1, read), 0);
  EXPECT_TRUE(ads_name_equal(read, own));
  EXPECT_EQ(data.GetxData(L"", 330, read), 0);
  EXPECT_TRUE(ads_name_equal(read, owner));
}

TEST_F(XDataValues, ACodeOfAnotherKindIsRefusedAndChangesNothing) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  EXPECT_FALSE(data.SetxData(L"APP", 1000, 5));
  EXPECT_FALSE(data.SetxData(L"APP", 1070, L"five"));
  EXPECT_FALSE(data.SetxData(L"APP", 1070, 5L));
  EXPECT_FALSE(data.SetxData(L"APP", 1040, 5));
  ads_name name;
  NameOf(line, name);
  EXPECT_FALSE(data.SetxData(L"APP", 1005, name));
  EXPECT_FALSE(data.SetxData(L"APP", 1070, 5, -1));
  EXPECT_EQ(std::wstring(data.GetLastErrorText()), L"eInvalidInput");
  EXPECT_EQ(XData(line), L"");
  EXPECT_FALSE(Registered(L"APP"));
  // Codes of the right kind that xdata cannot hold are the platform's to refuse.
  EXPECT_FALSE(data.SetxData(L"APP", 1, L"text"));
  EXPECT_EQ(std::wstring(data.GetLastErrorText()), L"eInvalidResBuf");
  EXPECT_EQ(XData(line), L"");
  double real = 7;
  EXPECT_EQ(data.GetxData(L"APP", 1070, real), -1);
  EXPECT_EQ(real, 7);
}

TEST_F(XDataValues, MoreThanTheObjectsXDataRoomIsRefusedWithTheDataKept) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  const std::wstring block(1000, L'x');
  int written = 0;
  while (data.SetxData(L"BIG", 1000, block.c_str(), written)) ++written;
  EXPECT_EQ(written, 8);  // 8 strings of 2004 bytes fit in 16383, a ninth does not
  EXPECT_EQ(std::wstring(data.GetLastErrorText()), L"eXdataSizeExceeded");
  CString last;
  EXPECT_EQ(data.GetxData(L"BIG", 1000, last, 20), written - 1);
  EXPECT_EQ(last.GetLength(), 1000);
  // A smaller value still fits in place of an existing one.
  EXPECT_TRUE(data.SetxData(L"BIG", 1000, L"short", 0));
}

TEST_F(XDataValues, AnEmptyApplicationAddressesTheEntityList) {
  const AcDbObjectId line = AddLine(4);
  OxData data(line);
  double start[3] = {0, 0, 0};
  EXPECT_EQ(data.GetxData(L"", 10, start), 0);
  EXPECT_EQ(start[0], 4);
  const double moved[3] = {1, 2, 0};
  ASSERT_TRUE(data.SetxData(L"", 10, moved));
  ASSERT_TRUE(data.SetxData(L"", 8, L"墙"));
  ASSERT_TRUE(data.SetxData(L"", 39, 2.5));  // not in the list yet: appended
  AcDbLine* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, line, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(entity->startPoint(), AcGePoint3d(1, 2, 0));
  ACHAR* layer = entity->layer();  // a copy the caller frees
  EXPECT_EQ(std::wstring(layer), L"墙");
  std::free(layer);
  EXPECT_EQ(entity->thickness(), 2.5);
  entity->close();
  double thickness = 0;
  EXPECT_EQ(data.GetxData(L"", 39, thickness, 3), 0);
  EXPECT_EQ(thickness, 2.5);
  // Nothing to delete in an entity list.
  EXPECT_TRUE(data.DeleteXData(L"", 39, 0));
  // A list the platform's entmod refuses (another entity type).
  EXPECT_FALSE(data.SetxData(L"", 0, L"CIRCLE"));
  CString type;
  EXPECT_EQ(data.GetxData(L"", 0, type), 0);
  EXPECT_EQ(std::wstring(type.GetString()), L"LINE");
}

TEST_F(XDataValues, ErasedUnknownAndDetachedObjectsAreRefused) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  AcDbObject* object = nullptr;
  ASSERT_EQ(acdbOpenObject(object, line, AcDb::kForWrite), Acad::eOk);
  object->erase();
  object->close();
  int value = 3;
  EXPECT_FALSE(data.SetxData(L"APP", 1070, 1));
  EXPECT_EQ(data.GetxData(L"APP", 1070, value), -1);
  EXPECT_EQ(std::wstring(data.GetLastErrorText()), L"eWasErased");
  EXPECT_FALSE(data.DeleteXData(L"APP", 1070, 0));
  CStringArray names;
  EXPECT_EQ(data.GetAllAppName(names), -1);
  EXPECT_EQ(data.GetAllResBuf(), nullptr);
  EXPECT_FALSE(data.IsOK());
  EXPECT_FALSE(OxData(line).IsOK());

  OxData detached;
  EXPECT_FALSE(detached.SetxData(L"APP", 1070, 1));
  EXPECT_EQ(detached.GetxData(L"APP", 1070, value), -1);
  EXPECT_EQ(value, 3);
  ads_name nothing = {0, 0};
  OxData unknown(nothing);
  EXPECT_FALSE(unknown.IsOK());
  EXPECT_FALSE(unknown.DeleteXData());
  EXPECT_STRNE(unknown.GetLastErrorText(), L"eOk");
}

TEST_F(XDataValues, DeletingByIndexAllOfACodeAndWholeApplications) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(data.SetxData(L"APP", 1070, 10 + i, i));
  ASSERT_TRUE(data.SetxData(L"APP", 1000, L"keep"));
  EXPECT_TRUE(data.DeleteXData(L"APP", 1070, 1));
  EXPECT_EQ(XData(line), L"(1001 APP)(1070 10)(1070 12)(1000 keep)");
  EXPECT_TRUE(data.DeleteXData(L"APP", 1070, 5));  // no such occurrence
  EXPECT_FALSE(data.DeleteXData(L"APP", 1070, -2));
  EXPECT_TRUE(data.DeleteXData(L"APP", 1001, 0));  // the leading group stays
  EXPECT_TRUE(data.DeleteXData(L"APP", 1070, -1));
  EXPECT_EQ(XData(line), L"(1001 APP)(1000 keep)");
  EXPECT_TRUE(data.DeleteXData(L"APP", 1000, -1));
  EXPECT_EQ(XData(line), L"");
  EXPECT_TRUE(data.DeleteXData(L"NONE", 1000, -1));
}

TEST_F(XDataValues, PatternDeletionMatchesUpperCasedNamesAndListsThem) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  for (const wchar_t* app : {L"KELA", L"kelB", L"OTHER", L"XKEL"}) ASSERT_TRUE(data.SetxData(app, 1070, 1));
  CStringArray names;
  EXPECT_EQ(data.GetAllAppName(names), 4);
  ASSERT_EQ(names.GetSize(), 4);
  EXPECT_EQ(std::wstring(names[1].GetString()), L"kelB");

  CStringArray removed;
  removed.Add(L"before");
  EXPECT_TRUE(data.DeleteXData(L"KEL*", removed));
  ASSERT_EQ(removed.GetSize(), 3);
  EXPECT_EQ(std::wstring(removed[1].GetString()), L"KELA");
  EXPECT_EQ(std::wstring(removed[2].GetString()), L"kelB");
  EXPECT_EQ(XData(line), L"(1001 OTHER)(1070 1)(1001 XKEL)(1070 1)");
  // Nothing matching is still success; the bare form removes everything.
  EXPECT_TRUE(data.DeleteXData(L"NOPE*", removed));
  EXPECT_EQ(removed.GetSize(), 3);
  EXPECT_TRUE(data.DeleteXData());
  EXPECT_EQ(XData(line), L"");
  EXPECT_EQ(data.GetAllAppName(names), 0);
}

TEST_F(XDataValues, AllResBufIsTheEntityListFollowedByEveryApplication) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  ASSERT_TRUE(data.SetxData(L"FIRST", 1000, L"a"));
  ASSERT_TRUE(data.SetxData(L"SECOND", 1040, 2.0));
  resbuf* all = data.GetAllResBuf();
  ASSERT_NE(all, nullptr);
  EXPECT_EQ(all->restype, -1);
  std::wstring text = Text(all);
  acutRelRb(all);
  const std::wstring tail = L"(1001 FIRST)(1000 a)(1001 SECOND)(1040 2)";
  ASSERT_GE(text.size(), tail.size());
  EXPECT_EQ(text.substr(text.size() - tail.size()), tail);
  EXPECT_EQ(text.find(L"(-3 "), std::wstring::npos);
}

TEST_F(XDataValues, AttachCopyAndStatusTexts) {
  const AcDbObjectId line = AddLine();
  ads_name name;
  NameOf(line, name);
  OxData byName(name);
  EXPECT_TRUE(byName.IsOK(AcDb::kForWrite));
  EXPECT_EQ(std::wstring(byName.GetLastErrorText()), L"eOk");
  OxData copy;
  copy = byName;
  EXPECT_TRUE(copy.SetxData(L"APP", 1000, L"via copy"));
  EXPECT_FALSE(copy.Attach(AcDbObjectId::kNull));
  EXPECT_FALSE(copy.IsOK());
  EXPECT_TRUE(copy.Attach(line));
  EXPECT_EQ(OxData::GetCurDWGPtr(), nullptr);
  EXPECT_EQ(std::wstring(acadErrorStatusText(Acad::eKeyNotFound)), L"eKeyNotFound");
  EXPECT_EQ(std::wstring(acadErrorStatusText(Acad::eNoDatabase)), L"eNoDatabase");
  EXPECT_EQ(std::wstring(acadErrorStatusText(static_cast<Acad::ErrorStatus>(19))), L"");
}

}  // namespace
