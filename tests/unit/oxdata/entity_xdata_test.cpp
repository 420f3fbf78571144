// Entities' applications by name and pattern, and the list-driven editor
// of an entity's groups and xdata.
#include <cstdlib>
#include <string>

#include "oxdata_fixture.h"

namespace {

class EntityXData : public OxDataTest {
 protected:
  void SetUp() override {
    OxDataTest::SetUp();
    line = AddLine();
    NameOf(line, name);
  }
  // (name app-or-nil code value ...): the arguments as AutoLISP passes them.
  resbuf* Args(const wchar_t* app) {
    resbuf* args = acutBuildList(RTENAME, name, RTNONE);
    if (app != nullptr)
      args->rbnext = acutBuildList(RTSTR, app, RTNONE);
    else
      args->rbnext = acutNewRb(RTNIL);
    return args;
  }
  int Edit(resbuf* args) {
    const int result = KEL::KZSJXZ(args);
    acutRelRb(args);
    return result;
  }
  double Thickness() {
    AcDbLine* entity = nullptr;
    if (acdbOpenObject(entity, line, AcDb::kForRead) != Acad::eOk) return -1;
    const double thickness = entity->thickness();
    entity->close();
    return thickness;
  }
  int Color() {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, line, AcDb::kForRead) != Acad::eOk) return -1;
    const int color = entity->colorIndex();
    entity->close();
    return color;
  }

  AcDbObjectId line;
  ads_name name;
};

TEST_F(EntityXData, ApplicationNamesByPattern) {
  EXPECT_EQ(KEL::EntHaveAppName(name, L"*"), 0);
  CString app = L"*";
  EXPECT_FALSE(KEL::GetEntAppName(name, app));
  EXPECT_EQ(std::wstring(app.GetString()), L"*");
  OxData data(line);
  ASSERT_TRUE(data.SetxData(L"KEL_ONE", 1070, 1));
  ASSERT_TRUE(data.SetxData(L"KEL_TWO", 1070, 2));
  EXPECT_EQ(KEL::EntHaveAppName(name, L"KEL_T*"), 1);
  EXPECT_EQ(KEL::EntHaveAppName(name, L"OTHER,KEL_O??"), 1);
  EXPECT_EQ(KEL::EntHaveAppName(name, L"KEL_X*"), 0);
  app = L"*_TWO";
  EXPECT_TRUE(KEL::GetEntAppName(name, app));
  EXPECT_EQ(std::wstring(app.GetString()), L"KEL_TWO");
  app = L"KEL*";
  EXPECT_TRUE(KEL::GetEntAppName(name, app));
  EXPECT_EQ(std::wstring(app.GetString()), L"KEL_ONE");
}

TEST_F(EntityXData, ANewApplicationGetsItsValuesBeforeTheBraces) {
  resbuf* args = Args(L"KZ");
  args->rbnext->rbnext = acutBuildList(RTSHORT, 39, RTSHORT, 5, RTSHORT, 1000, RTSTR, L"甲", RTSHORT, 1040, RTSHORT, 2,
                                       RTSHORT, 1010, RTPOINT, asDblArray(AcGePoint3d(1, 2, 0)), RTNONE);
  ASSERT_EQ(Edit(args), 1);
  EXPECT_EQ(Thickness(), 5.0);  // an integer for a real
  EXPECT_EQ(XData(line), L"(1001 KZ)(1000 甲)(1040 2)(1010 1,2,0)(1002 {)(1002 })");
  EXPECT_TRUE(Registered(L"KZ"));

  // Codes already there are replaced in place; a new one goes before the braces.
  args = Args(L"KZ");
  args->rbnext->rbnext =
      acutBuildList(RTSHORT, 1000, RTSTR, L"乙", RTSHORT, 1070, RTSHORT, 9, RTSHORT, 1071, RTLONG, 100000, RTNONE);
  ASSERT_EQ(Edit(args), 1);
  EXPECT_EQ(XData(line), L"(1001 KZ)(1000 乙)(1040 2)(1010 1,2,0)(1070 9)(1071 100000)(1002 {)(1002 })");
  EXPECT_EQ(out, L"");

  // No pairs: the application's data goes.
  ASSERT_EQ(Edit(Args(L"KZ")), 1);
  EXPECT_EQ(XData(line), L"");
}

TEST_F(EntityXData, WithoutAnApplicationOnlyTheEntitysGroupsChange) {
  OxData(line).SetxData(L"KEEP", 1000, L"kept");
  resbuf* args = Args(nullptr);
  args->rbnext->rbnext =
      acutBuildList(RTSHORT, 39, RTREAL, 0.5, RTSHORT, 1000, RTSTR, L"skipped", RTSHORT, 8, RTSTR, L"墙", RTNONE);
  ASSERT_EQ(Edit(args), 1);
  EXPECT_EQ(Thickness(), 0.5);
  EXPECT_EQ(XData(line), L"(1001 KEEP)(1000 kept)");
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, line, AcDb::kForRead), Acad::eOk);
  ACHAR* layer = entity->layer();  // a copy the caller frees
  EXPECT_EQ(std::wstring(layer), L"墙");
  std::free(layer);
  entity->close();
}

TEST_F(EntityXData, WrongListsAreRefusedWithTheEntityUnchanged) {
  const std::wstring refused = L"\n (KZSJXZ)参数错!";
  struct Case {
    const char* what;
    resbuf* pairs;
  } cases[] = {
      {"code not a short", acutBuildList(RTREAL, 62.0, RTSHORT, 1, RTNONE)},
      {"code outside the table", acutBuildList(RTSHORT, 100, RTSTR, L"x", RTNONE)},
      {"string for a colour", acutBuildList(RTSHORT, 62, RTSTR, L"1", RTNONE)},
      {"real for a colour", acutBuildList(RTSHORT, 62, RTREAL, 1.0, RTNONE)},
      {"number for a point", acutBuildList(RTSHORT, 10, RTREAL, 1.0, RTNONE)},
      {"value missing", acutBuildList(RTSHORT, 62, RTSHORT, 1, RTSHORT, 70, RTNONE)},
  };
  for (Case& c : cases) {
    out.clear();
    resbuf* args = Args(L"KZ");
    args->rbnext->rbnext = c.pairs;
    EXPECT_EQ(Edit(args), 0) << c.what;
    EXPECT_EQ(out, refused) << c.what;
    EXPECT_EQ(Color(), 256) << c.what;
    EXPECT_EQ(XData(line), L"") << c.what;
  }
  out.clear();
  resbuf* noApp = acutBuildList(RTENAME, name, RTSHORT, 1, RTNONE);
  EXPECT_EQ(Edit(noApp), 0);
  EXPECT_EQ(Edit(nullptr), 0);
  EXPECT_EQ(out, refused + refused);

  // A name the application table cannot take.
  out.clear();
  EXPECT_EQ(Edit(Args(L"BAD<NAME")), 0);
  EXPECT_EQ(out, L"\n (KZSJXZ)Can't register XDATA for BAD<NAME.");
}

}  // namespace
