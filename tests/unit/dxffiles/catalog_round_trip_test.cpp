// Every drawing variable of the catalog that the DXF header carries comes
// back from a saved file with the value it was given; every catalog
// variable reads with its type; read-only ones refuse programs.
#include <cstdlib>

#include "ads/sysvar_catalog.h"
#include "kelhost/sysvars.h"
#include "tests/unit/dxffiles/dxf_fixture.h"

namespace {

using kelhost::sysvars::Catalog;
using kelhost::sysvars::CatalogVar;

// A value other than the default that the variable's range allows.
resbuf Changed(const CatalogVar& v) {
  resbuf rb{};
  rb.restype = static_cast<short>(v.type);
  const bool ranged = v.lo <= v.hi;
  switch (v.type) {
    case RTSHORT: rb.resval.rint = static_cast<short>(ranged ? (v.value[0] == v.hi ? v.lo : v.hi) : v.value[0] + 3); break;
    case RTLONG: rb.resval.rlong = static_cast<long>(ranged ? (v.value[0] == v.hi ? v.lo : v.hi) : v.value[0] + 3); break;
    case RTREAL: rb.resval.rreal = ranged ? (v.value[0] == v.hi ? v.lo : v.hi) : v.value[0] + 0.25; break;
    case RTSTR: rb.resval.rstring = const_cast<ACHAR*>(L"Kel"); break;
    default:
      for (int i = 0; i < 3; ++i) rb.resval.rpoint[i] = v.value[i] + i + 1;
      if (v.type == RTPOINT) rb.resval.rpoint[2] = 0;
  }
  return rb;
}

bool Same(const resbuf& a, const resbuf& b) {
  if (a.restype != b.restype) return false;
  switch (a.restype) {
    case RTSHORT: return a.resval.rint == b.resval.rint;
    case RTLONG: return a.resval.rlong == b.resval.rlong;
    case RTREAL: return std::abs(a.resval.rreal - b.resval.rreal) < 1e-9;
    case RTSTR: return std::wstring(a.resval.rstring) == b.resval.rstring;
    default:
      for (int i = 0; i < 3; ++i)
        if (std::abs(a.resval.rpoint[i] - b.resval.rpoint[i]) > 1e-9) return false;
      return true;
  }
}

class CatalogTest : public DxfFileTest {
 protected:
  void TearDown() override {
    kelhost::sysvars::ResetSession();
    DxfFileTest::TearDown();
  }
};

TEST_F(CatalogTest, HeaderVariablesSurviveSaveAndReopen) {
  std::vector<std::pair<const CatalogVar*, resbuf>> set;
  for (const CatalogVar& v : Catalog()) {
    if (v.place != 'H' || v.readOnly) continue;
    resbuf before{};
    if (acedGetVar(v.name.c_str(), &before) != RTNORM) continue;  // held by the database's own fields
    if (before.restype == RTSTR) std::free(before.resval.rstring);
    if (before.restype != v.type) continue;  // a host definition of its own
    const resbuf value = Changed(v);
    if (acedSetVar(v.name.c_str(), &value) != RTNORM) continue;  // a host rule refuses it (a record name...)
    set.emplace_back(&v, value);
  }
  ASSERT_GT(set.size(), 80u);
  saveAndReopen();
  for (const auto& [v, value] : set) {
    resbuf after{};
    ASSERT_EQ(acedGetVar(v->name.c_str(), &after), RTNORM) << kelhost::ToUtf8(v->name);
    EXPECT_TRUE(Same(value, after)) << kelhost::ToUtf8(v->name);
    if (after.restype == RTSTR) std::free(after.resval.rstring);
  }
}

TEST_F(CatalogTest, EveryVariableReadsWithItsTypeAndReadOnlyOnesRefusePrograms) {
  for (const CatalogVar& v : Catalog()) {
    resbuf rb{};
    if (acedGetVar(v.name.c_str(), &rb) != RTNORM) {
      ADD_FAILURE() << "no " << kelhost::ToUtf8(v.name);
      continue;
    }
    const bool bothPoints = (rb.restype == RTPOINT || rb.restype == RT3DPOINT) && (v.type == RTPOINT || v.type == RT3DPOINT);
    EXPECT_TRUE(rb.restype == v.type || bothPoints) << kelhost::ToUtf8(v.name);
    if (v.readOnly) {
      EXPECT_NE(acedSetVar(v.name.c_str(), &rb), RTNORM) << kelhost::ToUtf8(v.name);
    }
    if (rb.restype == RTSTR) std::free(rb.resval.rstring);
  }
}

TEST_F(CatalogTest, VariablesRealCodeReads) {
  EXPECT_EQ(eval(L"(getvar \"LISPSYS\")"), L"1");
  EXPECT_EQ(eval(L"(getvar \"INSUNITS\")"), L"4");
  EXPECT_EQ(eval(L"(getvar \"CVPORT\")"), L"2");
  EXPECT_EQ(eval(L"(type (getvar \"MILLISECS\"))"), L"INT");
  EXPECT_EQ(eval(L"(setvar \"OSMODE\" 16384)"), L"16384");
  EXPECT_EQ(eval(L"(setvar \"OSMODE\" 32768)"), L"error: AutoCAD variable setting rejected: \"OSMODE\" 32768");
  EXPECT_EQ(eval(L"(getvar \"ACADVER\")"), L"\"20.1s (LMS Tech)\"");
  EXPECT_EQ(eval(L"(setvar \"PICKSTYLE\" 4)"), L"error: AutoCAD variable setting rejected: \"PICKSTYLE\" 4");
  // A variable kept with the drawing but outside the DXF header stays in
  // the session's drawing and is not written.
  EXPECT_EQ(eval(L"(setvar \"MIRRHATCH\" 1)"), L"1");
  saveAndReopen();
  EXPECT_EQ(eval(L"(getvar \"MIRRHATCH\")"), L"0");
  EXPECT_EQ(readText("drawing.dxf").find("$MIRRHATCH"), std::string::npos);
}

}  // namespace
