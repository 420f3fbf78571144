// System variables: defaults and types of a new metric drawing, setting
// with type and range checks, read-only refusal, where values live (the
// drawing's header store or the session), and AutoLISP getvar/setvar.
#include <cstdlib>

#include "arx/acedads.h"
#include "db/database_state.h"
#include "kelhost/sysvars.h"
#include "tests/unit/database/database_fixture.h"

namespace {

class SysvarTest : public DrawingTest {
 protected:
  void SetUp() override {
    DrawingTest::SetUp();
    kelhost::sysvars::ResetSession();
  }
  void TearDown() override {
    kelhost::sysvars::ResetSession();
    DrawingTest::TearDown();
  }
  resbuf get(const wchar_t* name) {
    resbuf rb{};
    EXPECT_EQ(acedGetVar(name, &rb), RTNORM) << name;
    return rb;
  }
  std::wstring getText(const wchar_t* name) {
    resbuf rb = get(name);
    EXPECT_EQ(rb.restype, RTSTR) << name;
    std::wstring text = rb.restype == RTSTR && rb.resval.rstring ? rb.resval.rstring : L"";
    if (rb.restype == RTSTR) std::free(rb.resval.rstring);
    return text;
  }
  int setShort(const wchar_t* name, short v) {
    resbuf rb{};
    rb.restype = RTSHORT;
    rb.resval.rint = v;
    return acedSetVar(name, &rb);
  }
  int setReal(const wchar_t* name, double v) {
    resbuf rb{};
    rb.restype = RTREAL;
    rb.resval.rreal = v;
    return acedSetVar(name, &rb);
  }
  int setText(const wchar_t* name, const wchar_t* v) {
    resbuf rb{};
    rb.restype = RTSTR;
    rb.resval.rstring = const_cast<wchar_t*>(v);
    return acedSetVar(name, &rb);
  }
  int setPoint(const wchar_t* name, int type, double x, double y, double z) {
    resbuf rb{};
    rb.restype = static_cast<short>(type);
    rb.resval.rpoint[0] = x;
    rb.resval.rpoint[1] = y;
    rb.resval.rpoint[2] = z;
    return acedSetVar(name, &rb);
  }
};

TEST_F(SysvarTest, NewDrawingDefaultsHaveThePlatformTypes) {
  resbuf rb = get(L"LUNITS");
  EXPECT_EQ(rb.restype, RTSHORT);
  EXPECT_EQ(rb.resval.rint, 2);
  rb = get(L"osmode");  // any case
  EXPECT_EQ(rb.restype, RTSHORT);
  EXPECT_EQ(rb.resval.rint, 4133);
  rb = get(L"TEXTSIZE");
  EXPECT_EQ(rb.restype, RTREAL);
  EXPECT_DOUBLE_EQ(rb.resval.rreal, 2.5);
  rb = get(L"DIMZIN");
  EXPECT_EQ(rb.resval.rint, 8);  // the metric dimension style's
  rb = get(L"LIMMAX");
  EXPECT_EQ(rb.restype, RTPOINT);
  EXPECT_DOUBLE_EQ(rb.resval.rpoint[0], 420.0);
  EXPECT_DOUBLE_EQ(rb.resval.rpoint[1], 297.0);
  rb = get(L"VIEWDIR");
  EXPECT_EQ(rb.restype, RT3DPOINT);
  EXPECT_DOUBLE_EQ(rb.resval.rpoint[2], 1.0);
  rb = get(L"EXTMIN");
  EXPECT_DOUBLE_EQ(rb.resval.rpoint[0], 1e20);
  rb = get(L"WORLDUCS");
  EXPECT_EQ(rb.resval.rint, 1);
  EXPECT_EQ(getText(L"CLAYER"), L"0");
  EXPECT_EQ(getText(L"CELTYPE"), L"ByLayer");
  EXPECT_EQ(getText(L"CECOLOR"), L"BYLAYER");
  EXPECT_EQ(getText(L"TEXTSTYLE"), L"Standard");
  EXPECT_EQ(getText(L"DIMSTYLE"), L"ISO-25");
  EXPECT_EQ(getText(L"CTAB"), L"Model");
  EXPECT_EQ(getText(L"USERS1"), L"");
  EXPECT_EQ(getText(L"DWGNAME"), L"Drawing1.dwg");

  rb = get(L"CDATE");
  EXPECT_EQ(rb.restype, RTREAL);
  EXPECT_GT(rb.resval.rreal, 20000101.0);
  const double cdate = rb.resval.rreal;
  rb = get(L"DATE");
  EXPECT_GT(rb.resval.rreal, 2451545.0);  // after 1 January 2000
  // The two dates name the same day (Julian day 2440588 is 1 January 1970).
  const long days = static_cast<long>(rb.resval.rreal) - 2440588;
  std::time_t t = static_cast<std::time_t>(days) * 86400;
  std::tm utc{};
  gmtime_r(&t, &utc);
  EXPECT_EQ(static_cast<long>(cdate), (utc.tm_year + 1900) * 10000L + (utc.tm_mon + 1) * 100L + utc.tm_mday);

  resbuf none{};
  EXPECT_EQ(acedGetVar(L"NOSUCHVAR", &none), RTERROR);
  EXPECT_EQ(acedGetVar(nullptr, &none), RTERROR);
  EXPECT_EQ(acedGetVar(L"LUNITS", nullptr), RTERROR);
}

TEST_F(SysvarTest, SettingChecksTypeAndRange) {
  EXPECT_EQ(setShort(L"OSMODE", 16383), RTNORM);
  EXPECT_EQ(setShort(L"OSMODE", 16384 + 33), RTNORM);  // running snaps off, modes kept
  EXPECT_EQ(setShort(L"OSMODE", -1), RTREJ);
  EXPECT_EQ(setReal(L"OSMODE", 3.0), RTREJ);  // an integer variable takes no real
  EXPECT_EQ(get(L"OSMODE").resval.rint, 16384 + 33);

  EXPECT_EQ(setShort(L"FILLETRAD", 5), RTNORM);  // a real variable takes an integer
  EXPECT_DOUBLE_EQ(get(L"FILLETRAD").resval.rreal, 5.0);
  EXPECT_EQ(setReal(L"FILLETRAD", -1.0), RTREJ);
  EXPECT_EQ(setText(L"FILLETRAD", L"2"), RTREJ);
  EXPECT_DOUBLE_EQ(get(L"FILLETRAD").resval.rreal, 5.0);

  EXPECT_EQ(setPoint(L"INSBASE", RTPOINT, 1, 2, 99), RTNORM);  // a 2D point: Z is 0
  resbuf rb = get(L"INSBASE");
  EXPECT_EQ(rb.restype, RT3DPOINT);
  EXPECT_DOUBLE_EQ(rb.resval.rpoint[1], 2.0);
  EXPECT_DOUBLE_EQ(rb.resval.rpoint[2], 0.0);
  EXPECT_EQ(setShort(L"INSBASE", 1), RTREJ);

  EXPECT_EQ(setText(L"USERS2", L"中文"), RTNORM);
  EXPECT_EQ(getText(L"USERS2"), L"中文");

  EXPECT_EQ(setReal(L"TEXTSIZE", 0.0), RTREJ);
  EXPECT_EQ(setReal(L"TEXTSIZE", 3.5), RTNORM);
  EXPECT_DOUBLE_EQ(db->textsize(), 3.5);  // the database's own field
  EXPECT_EQ(setShort(L"LUNITS", 6), RTREJ);
  EXPECT_EQ(setShort(L"NOSUCHVAR", 1), RTERROR);
  EXPECT_EQ(acedSetVar(L"LUNITS", nullptr), RTERROR);
}

TEST_F(SysvarTest, ReadOnlyVariablesAreRefused) {
  for (const wchar_t* name : {L"VIEWCTR", L"EXTMIN", L"UCSORG", L"VIEWDIR", L"TARGET"})
    EXPECT_EQ(setPoint(name, RT3DPOINT, 1, 2, 3), RTREJ) << name;
  for (const wchar_t* name : {L"VIEWSIZE", L"FRONTZ", L"BACKZ", L"LENSLENGTH", L"DATE", L"CDATE"})
    EXPECT_EQ(setReal(name, 1.0), RTREJ) << name;
  for (const wchar_t* name : {L"UNDOCTL", L"UNDOMARKS", L"VIEWMODE", L"WORLDUCS"})
    EXPECT_EQ(setShort(name, 0), RTREJ) << name;
  for (const wchar_t* name : {L"DWGNAME", L"DWGPREFIX", L"DIMSTYLE", L"ACADVER", L"PLATFORM", L"MENUNAME"})
    EXPECT_EQ(setText(name, L"Standard"), RTREJ) << name;
  EXPECT_DOUBLE_EQ(get(L"VIEWCTR").resval.rpoint[0], 210.0);
  EXPECT_EQ(getText(L"DIMSTYLE"), L"ISO-25");

  // The host itself may move the view (after a zoom), still type-checked.
  resbuf centre{};
  centre.restype = RT3DPOINT;
  centre.resval.rpoint[0] = 5;
  EXPECT_EQ(kelhost::sysvars::SetHostVar(L"VIEWCTR", &centre), RTNORM);
  EXPECT_DOUBLE_EQ(get(L"VIEWCTR").resval.rpoint[0], 5.0);
  resbuf wrong{};
  wrong.restype = RTSTR;
  wrong.resval.rstring = const_cast<wchar_t*>(L"x");
  EXPECT_EQ(kelhost::sysvars::SetHostVar(L"VIEWCTR", &wrong), RTREJ);
  kelhost::sysvars::SetDrawingName(L"/tmp/", L"plan.dwg");
  EXPECT_EQ(getText(L"DWGNAME"), L"plan.dwg");
  EXPECT_EQ(getText(L"DWGPREFIX"), L"/tmp/");
}

TEST_F(SysvarTest, DrawingVariablesLiveInTheHeaderStoreSessionOnesDoNot) {
  EXPECT_EQ(setReal(L"FILLETRAD", 7.5), RTNORM);
  EXPECT_EQ(setShort(L"USERI3", -12), RTNORM);
  EXPECT_EQ(setShort(L"CMDECHO", 0), RTNORM);
  const auto& store = db->state().headerVars;
  ASSERT_EQ(store.count(L"FILLETRAD"), 1u);
  EXPECT_EQ(store.at(L"FILLETRAD").code, 40);  // written as $FILLETRAD with a 40 group
  EXPECT_DOUBLE_EQ(store.at(L"FILLETRAD").real, 7.5);
  EXPECT_EQ(store.at(L"USERI3").code, 70);
  EXPECT_EQ(store.count(L"CMDECHO"), 0u);

  // Another drawing has its own header; the session stays.
  AcDbDatabase other;
  acdbHostApplicationServices()->setWorkingDatabase(&other);
  EXPECT_DOUBLE_EQ(get(L"FILLETRAD").resval.rreal, 0.0);
  EXPECT_EQ(get(L"CMDECHO").resval.rint, 0);
  // A value a file gave the store is what getvar reads.
  kelhost::db::HeaderValue read;
  read.type = RTSHORT;
  read.code = 70;
  read.integer = 3;
  other.state().headerVars[L"LUPREC"] = read;
  EXPECT_EQ(get(L"LUPREC").resval.rint, 3);
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  EXPECT_DOUBLE_EQ(get(L"FILLETRAD").resval.rreal, 7.5);
  EXPECT_EQ(get(L"LUPREC").resval.rint, 4);
}

TEST_F(SysvarTest, CurrentRecordsAndColour) {
  EXPECT_EQ(setText(L"CLAYER", L"WALLS"), RTREJ);  // no such layer yet
  EXPECT_EQ(eval(L"(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") "
                 L"(2 . \"WALLS\") (70 . 0) (62 . 1) (6 . \"Continuous\")))") != L"nil",
            true);
  EXPECT_EQ(setText(L"clayer", L"walls"), RTNORM);
  EXPECT_EQ(getText(L"CLAYER"), L"WALLS");
  EXPECT_EQ(setText(L"CELTYPE", L"Continuous"), RTNORM);
  EXPECT_EQ(db->celtype(), db->continuousLinetype());
  EXPECT_EQ(setText(L"TEXTSTYLE", L"NoStyle"), RTREJ);

  EXPECT_EQ(setText(L"CECOLOR", L"red"), RTNORM);
  EXPECT_EQ(getText(L"CECOLOR"), L"1");
  EXPECT_EQ(setText(L"CECOLOR", L"42"), RTNORM);
  EXPECT_EQ(db->cecolorIndex(), 42);
  EXPECT_EQ(setText(L"CECOLOR", L"ByBlock"), RTNORM);
  EXPECT_EQ(getText(L"CECOLOR"), L"BYBLOCK");
  for (const wchar_t* bad : {L"256", L"0", L"4x", L"", L"pink"}) EXPECT_EQ(setText(L"CECOLOR", bad), RTREJ) << bad;

  EXPECT_EQ(setText(L"CTAB", L"Layout1"), RTNORM);
  EXPECT_EQ(get(L"TILEMODE").resval.rint, 0);
  EXPECT_EQ(db->currentSpaceId(), db->paperSpaceId());
  EXPECT_EQ(setShort(L"TILEMODE", 1), RTNORM);
  EXPECT_EQ(getText(L"CTAB"), L"Model");
  EXPECT_EQ(setText(L"CTAB", L"Nowhere"), RTREJ);
}

TEST_F(SysvarTest, AutoLispGetvarAndSetvar) {
  EXPECT_EQ(eval(L"(getvar \"lunits\")"), L"2");
  EXPECT_EQ(eval(L"(getvar \"LIMMAX\")"), L"(420.0 297.0)");
  EXPECT_EQ(eval(L"(getvar \"clayer\")"), L"\"0\"");
  EXPECT_EQ(eval(L"(getvar \"nosuch\")"), L"nil");
  EXPECT_EQ(eval(L"(setvar \"USERR1\" 2)"), L"2");
  EXPECT_EQ(eval(L"(getvar \"USERR1\")"), L"2.0");
  EXPECT_EQ(eval(L"(setvar \"INSBASE\" '(1 2 3))"), L"(1 2 3)");
  EXPECT_EQ(eval(L"(getvar \"INSBASE\")"), L"(1.0 2.0 3.0)");
  EXPECT_EQ(eval(L"(setvar \"dwgname\" \"x\")"), L"error: AutoCAD variable setting rejected: \"dwgname\" \"x\"");
  EXPECT_EQ(eval(L"(setvar \"OSMODE\" 99999)"), L"error: AutoCAD variable setting rejected: \"OSMODE\" 99999");
  EXPECT_EQ(eval(L"(setvar \"NOSUCH\" 1)"), L"error: AutoCAD variable setting rejected: \"NOSUCH\" 1");
  EXPECT_EQ(eval(L"(setvar \"LUNITS\" '(1 2 3 4))"), L"error: AutoCAD variable setting rejected: \"LUNITS\" (1 2 3 4)");
  EXPECT_EQ(eval(L"(getvar 1)"), L"error: bad argument type: stringp 1");

  // Number formatting follows the drawing's unit variables.
  // (the metric drawing's DIMZIN 8 drops trailing zeros)
  EXPECT_EQ(eval(L"(rtos 1.5)"), L"\"1.5\"");
  eval(L"(setvar \"DIMZIN\" 0)");
  EXPECT_EQ(eval(L"(rtos 1.5)"), L"\"1.5000\"");
  eval(L"(setvar \"LUPREC\" 2)");
  EXPECT_EQ(eval(L"(rtos 1.5)"), L"\"1.50\"");
}

}  // namespace
