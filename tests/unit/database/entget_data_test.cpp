// The module's KEL::EntGetRb and KEL::EntGetData over the host's entity
// lists.
#include "database_fixture.h"
#include "kelcad/resbuf/rbchain.h"

namespace {

class EntGetData : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    acdbRegApp(L"KELAPP");
    resbuf* list = acutBuildList(RTDXF0, L"TEXT", 10, pt, 40, 3.5, 1, L"标注", 71, 2, -3, 1001, L"KELAPP", 1000,
                                 L"xd", 1071, 70000, 1070, -5, 1040, 0.25, RTNONE);
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(acdbEntMakeX(list, ent), RTNORM);
    acutRelRb(list);
  }
  ads_point pt = {1.0, 2.0, 0.0};
  ads_name ent = {0, 0};
};

TEST_F(EntGetData, PlainListOrListWithOneApplication) {
  resbuf* plain = KEL::EntGetRb(ent, nullptr);
  ASSERT_NE(plain, nullptr);
  EXPECT_EQ(KEL::GetRbXDXF(plain, -3), nullptr);
  acutRelRb(plain);
  resbuf* empty = KEL::EntGetRb(ent, L"");
  EXPECT_EQ(KEL::GetRbXDXF(empty, -3), nullptr);
  acutRelRb(empty);
  resbuf* withApp = KEL::EntGetRb(ent, L"KELAPP");
  ASSERT_NE(KEL::GetRbXDXF(withApp, 1001), nullptr);
  EXPECT_STREQ(KEL::GetRbXDXF(withApp, 1001)->resval.rstring, L"KELAPP");
  acutRelRb(withApp);
  ads_name bad = {0x10, 0};
  EXPECT_EQ(KEL::EntGetRb(bad, nullptr), nullptr);
}

TEST_F(EntGetData, EachOverloadCopiesItsMember) {
  int i = 99;
  EXPECT_TRUE(KEL::EntGetData(ent, 71, i));
  EXPECT_EQ(i, 2);
  EXPECT_TRUE(KEL::EntGetData(ent, 1070, i, L"KELAPP"));
  EXPECT_EQ(i, -5);  // sign-extended from 16 bits
  long l = 0;
  EXPECT_TRUE(KEL::EntGetData(ent, 1071, l, L"KELAPP"));
  EXPECT_EQ(l, 70000);
  double d = 0;
  EXPECT_TRUE(KEL::EntGetData(ent, 40, d));
  EXPECT_EQ(d, 3.5);
  EXPECT_TRUE(KEL::EntGetData(ent, 1040, d, L"KELAPP"));
  EXPECT_EQ(d, 0.25);
  CString s;
  EXPECT_TRUE(KEL::EntGetData(ent, 1, s));
  EXPECT_EQ(s, CString(L"标注"));
  ads_point p = {0, 0, 0};
  EXPECT_TRUE(KEL::EntGetData(ent, 10, p));
  EXPECT_EQ(p[0], 1.0);
  EXPECT_EQ(p[1], 2.0);
}

TEST_F(EntGetData, MissingGroupsLeaveTheValueAlone) {
  int i = 42;
  EXPECT_FALSE(KEL::EntGetData(ent, 1070, i));  // xdata only with the application
  EXPECT_EQ(i, 42);
  double d = -1;
  EXPECT_FALSE(KEL::EntGetData(ent, 41 + 1000, d, L"OTHER"));
  EXPECT_EQ(d, -1);
  ads_name gone;
  ads_name_set(ent, gone);
  acdbEntDel(gone);
  CString s(L"keep");
  EXPECT_FALSE(KEL::EntGetData(gone, 1, s));
  EXPECT_EQ(s, CString(L"keep"));
}

}  // namespace
