// OxData on xrecords: dictionary paths under an object's extension
// dictionary and under the named-object dictionary, the lookup that falls
// back to the deepest dictionary there is, and the drawing they go to.
#include <string>
#include <vector>

#include "oxdata_fixture.h"

namespace {

class XRecords : public OxDataTest {
 protected:
  // The entry names of a dictionary, in its order.
  static std::vector<std::wstring> Entries(AcDbObjectId dict) {
    std::vector<std::wstring> names;
    AcDbDictionary* dictionary = nullptr;
    if (acdbOpenObject(dictionary, dict, AcDb::kForRead) != Acad::eOk) return names;
    AcDbDictionaryIterator* it = dictionary->newIterator();
    for (; !it->done(); it->next()) names.push_back(it->name());
    delete it;
    dictionary->close();
    return names;
  }
  static AcDbObjectId Entry(AcDbObjectId dict, const wchar_t* name) {
    AcDbDictionary* dictionary = nullptr;
    AcDbObjectId id;
    if (acdbOpenObject(dictionary, dict, AcDb::kForRead) != Acad::eOk) return id;
    dictionary->getAt(name, id);
    dictionary->close();
    return id;
  }
  static AcDbObjectId ExtensionDictionary(AcDbObjectId id) {
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, id, AcDb::kForRead) != Acad::eOk) return AcDbObjectId::kNull;
    const AcDbObjectId dict = object->extensionDictionary();
    object->close();
    return dict;
  }
  static std::wstring Chain(AcDbObjectId record) {
    AcDbXrecord* xrecord = nullptr;
    if (acdbOpenObject(xrecord, record, AcDb::kForRead) != Acad::eOk) return L"<not an xrecord>";
    resbuf* chain = nullptr;
    xrecord->rbChain(&chain);
    xrecord->close();
    std::wstring text = Text(chain);
    acutRelRb(chain);
    return text;
  }
  AcDbObjectId NamedObjects() const {
    AcDbDictionary* named = nullptr;
    EXPECT_EQ(db->getNamedObjectsDictionary(named, AcDb::kForRead), Acad::eOk);
    const AcDbObjectId id = named->objectId();
    named->close();
    return id;
  }
};

TEST_F(XRecords, APathMakesOneDictionaryPerLevel) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  ASSERT_TRUE(data.SetxRecord(L"K", 1, L"值", 0, L"A\\B"));
  const AcDbObjectId ext = ExtensionDictionary(line);
  ASSERT_FALSE(ext.isNull());
  EXPECT_EQ(Entries(ext), std::vector<std::wstring>{L"A"});
  const AcDbObjectId a = Entry(ext, L"A");
  EXPECT_EQ(Entries(a), std::vector<std::wstring>{L"B"});
  const AcDbObjectId b = Entry(a, L"B");
  EXPECT_EQ(Entries(b), std::vector<std::wstring>{L"K"});
  EXPECT_EQ(Chain(Entry(b, L"K")), L"(1 值)");

  // Doubled and leading separators name the same dictionaries.
  ASSERT_TRUE(data.SetxRecord(L"K", 40, 1.5, 1, L"\\A\\\\B\\"));
  EXPECT_EQ(Chain(Entry(b, L"K")), L"(1 值)(40 0)(40 1.5)");
  CString text;
  EXPECT_EQ(data.GetxRecord(L"K", 1, text, 0, L"A\\B"), 0);
  EXPECT_EQ(std::wstring(text.GetString()), L"值");
  double real = 0;
  EXPECT_EQ(data.GetxRecord(L"K", 40, real, 9, L"A\\B"), 1);
  EXPECT_EQ(real, 1.5);
  resbuf* whole = data.GetxRecordResBuf(L"K", L"A\\B");
  EXPECT_EQ(Text(whole), L"(1 值)(40 0)(40 1.5)");
  acutRelRb(whole);
}

TEST_F(XRecords, AMissingLevelIsLookedUpInTheDeepestDictionaryThere) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  ASSERT_TRUE(data.SetxRecord(L"K", 70, 4, 0, L"A"));
  int value = 0;
  EXPECT_EQ(data.GetxRecord(L"K", 70, value, 0, L"A\\Z"), 0);
  EXPECT_EQ(value, 4);
  EXPECT_EQ(data.GetxRecord(L"K", 70, value, 0, L"Q\\R"), -1);  // the root has no K
  // Deleting under the missing level takes the record of A.
  EXPECT_TRUE(data.DeletexRecord(L"K", L"A\\Z"));
  EXPECT_EQ(data.GetxRecord(L"K", 70, value, 0, L"A"), -1);
  EXPECT_TRUE(data.DeletexRecord(L"K", L"A"));
}

TEST_F(XRecords, ObjectsWithoutRecordsAndKeysThatAreEmpty) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  int value = 8;
  // No extension dictionary: the object's status, eOk, is the answer.
  EXPECT_EQ(data.GetxRecord(L"K", 70, value), 0);
  EXPECT_EQ(value, 8);
  EXPECT_EQ(data.GetxRecord(L"", 70, value), -1);
  EXPECT_EQ(data.GetxRecordResBuf(L"K"), nullptr);
  EXPECT_TRUE(data.DeletexRecord(L"K"));
  EXPECT_FALSE(data.SetxRecord(L"", 70, 1));
  EXPECT_TRUE(ExtensionDictionary(line).isNull());
  // An empty path is the extension dictionary itself.
  ASSERT_TRUE(data.SetxRecord(L"K", 70, 1));
  EXPECT_EQ(Entries(ExtensionDictionary(line)), std::vector<std::wstring>{L"K"});
  EXPECT_EQ(data.GetxRecord(L"K", 70, value), 0);
  EXPECT_EQ(value, 1);
}

TEST_F(XRecords, RefusedValuesAndPathsLeaveTheObjectAsItWas) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  EXPECT_FALSE(data.SetxRecord(L"K", 1, 5));           // a string code
  EXPECT_FALSE(data.SetxRecord(L"K", 70, L"text"));    // a 16-bit code
  EXPECT_FALSE(data.SetxRecord(L"K", 1000, L"text"));  // no xrecord holds 1000
  EXPECT_FALSE(data.SetxRecord(L"K", 70, 1, -1));
  const std::wstring tooLong(260, L'P');
  const std::wstring longest(259, L'P');
  EXPECT_FALSE(data.SetxRecord(L"K", 70, 1, 0, tooLong.c_str()));
  EXPECT_TRUE(ExtensionDictionary(line).isNull());

  ASSERT_TRUE(data.SetxRecord(L"K", 70, 1, 0, longest.c_str()));
  int value = 0;
  EXPECT_EQ(data.GetxRecord(L"K", 70, value, 0, longest.c_str()), 0);
  EXPECT_EQ(data.GetxRecord(L"K", 70, value, 0, tooLong.c_str()), -1);
  EXPECT_EQ(data.GetxRecordResBuf(L"K", tooLong.c_str()), nullptr);
  EXPECT_FALSE(data.DeletexRecord(L"K", tooLong.c_str()));
  // A refused value for a record that exists changes neither it nor the path.
  EXPECT_FALSE(data.SetxRecord(L"K", 1000, L"text", 0, longest.c_str()));
  EXPECT_FALSE(data.SetxRecord(L"N", 1000, L"text", 0, (longest.substr(0, 10) + L"\\NEW").c_str()));
  const AcDbObjectId ext = ExtensionDictionary(line);
  EXPECT_EQ(Entries(ext).size(), 1u);
  EXPECT_EQ(Entries(Entry(ext, longest.c_str())), std::vector<std::wstring>{L"K"});
}

TEST_F(XRecords, ErasedObjectsAnswerWithTheirStatus) {
  const AcDbObjectId line = AddLine();
  OxData data(line);
  ASSERT_TRUE(data.SetxRecord(L"K", 70, 1));
  AcDbObject* object = nullptr;
  ASSERT_EQ(acdbOpenObject(object, line, AcDb::kForWrite), Acad::eOk);
  object->erase();
  object->close();
  int value = 5;
  EXPECT_FALSE(data.SetxRecord(L"K", 70, 2));
  EXPECT_EQ(data.GetxRecord(L"K", 70, value), -1);
  EXPECT_EQ(value, 5);
  EXPECT_FALSE(data.DeletexRecord(L"K"));
  EXPECT_EQ(std::wstring(data.GetLastErrorText()), L"eWasErased");
}

TEST_F(XRecords, DrawingRecordsLiveUnderTheNamedObjectDictionary) {
  const double point[3] = {1, 2, 3};
  ASSERT_TRUE(OxData::SetDWGxRecord(L"KEL\\设置", L"范围", 10, point, 1));
  ASSERT_TRUE(OxData::SetDWGxRecord(L"KEL\\设置", L"范围", 90, 123456L));
  const AcDbObjectId kel = Entry(NamedObjects(), L"KEL");
  const AcDbObjectId settings = Entry(kel, L"设置");
  EXPECT_EQ(Chain(Entry(settings, L"范围")), L"(10 0,0,0)(10 1,2,3)(90 123456)");
  double back[3] = {0, 0, 0};
  EXPECT_EQ(OxData::GetDWGxRecord(L"KEL\\设置", L"范围", 10, back, 1), 1);
  EXPECT_EQ(back[2], 3);
  long wide = 0;
  EXPECT_EQ(OxData::GetDWGxRecord(L"KEL\\设置", L"范围", 90, wide), 0);
  EXPECT_EQ(wide, 123456);
  EXPECT_EQ(OxData::GetDWGxRecord(L"KEL\\设置\\更深", L"范围", 90, wide), 0);
  EXPECT_EQ(OxData::GetDWGxRecord(L"KEL", L"", 90, wide), -1);
  EXPECT_FALSE(OxData::SetDWGxRecord(L"KEL", L"", 90, 1L));
  resbuf* whole = OxData::GetDWGxRecordResBuf(L"KEL\\设置", L"范围");
  EXPECT_EQ(Text(whole), L"(10 0,0,0)(10 1,2,3)(90 123456)");
  acutRelRb(whole);
  EXPECT_TRUE(OxData::DeleteDWGxRecord(L"KEL\\设置", L"范围"));
  EXPECT_EQ(OxData::GetDWGxRecordResBuf(L"KEL\\设置", L"范围"), nullptr);
  EXPECT_TRUE(OxData::DeleteDWGxRecord(L"KEL\\设置", L"范围"));  // nothing left to erase
  EXPECT_TRUE(OxData::DeleteDWGxRecord(L"NONE\\AT\\ALL", L"K"));
  EXPECT_FALSE(OxData::DeleteDWGxRecord(std::wstring(300, L'x').c_str(), L"K"));
}

TEST_F(XRecords, TheRecordsDrawingIsItsOwnPointerElseTheWorkingOne) {
  AcDbDatabase other;
  OxData::m_pCurDWG = &other;
  EXPECT_EQ(OxData::GetCurDWGPtr(), &other);
  ASSERT_TRUE(OxData::SetDWGxRecord(L"P", L"K", 1, L"other"));
  OxData::m_pCurDWG = nullptr;
  CString text = L"untouched";
  EXPECT_EQ(OxData::GetDWGxRecord(L"P", L"K", 1, text), -1);
  OxData::m_pCurDWG = &other;
  EXPECT_EQ(OxData::GetDWGxRecord(L"P", L"K", 1, text), 0);
  EXPECT_EQ(std::wstring(text.GetString()), L"other");
  EXPECT_TRUE(Entry(NamedObjects(), L"P").isNull());
  OxData::m_pCurDWG = nullptr;

  // The module's current drawing is not the records' drawing.
  ASSERT_TRUE(KEL::SetCurDWGPtr(&other));
  EXPECT_EQ(OxData::GetCurDWGPtr(), nullptr);
  EXPECT_EQ(OxData::GetDWGxRecord(L"P", L"K", 1, text), -1);
  // And the module's functions follow the module's drawing, not OxData's.
  resbuf* chain = acutBuildList(1, L"module", RTNONE);
  EXPECT_EQ(KEL::SetXRecord(L"M", L"R", chain), 1);
  acutRelRb(chain);
  OxData::m_pCurDWG = &other;
  EXPECT_EQ(OxData::GetDWGxRecord(L"M", L"R", 1, text), 0);
  EXPECT_EQ(std::wstring(text.GetString()), L"module");
  OxData::m_pCurDWG = nullptr;
  EXPECT_EQ(OxData::GetDWGxRecord(L"M", L"R", 1, text), -1);
}

}  // namespace
