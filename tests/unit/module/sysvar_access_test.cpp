// Typed access to system variables: the sentinels of failed reads, 16-bit
// integers, and the two point forms the family's code relies on as they
// are (one sends only x, the other reads into nowhere).
#include <gtest/gtest.h>

#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

using SysvarAccess = EditorModuleTest;

TEST_F(SysvarAccess, FailedReadsGiveSentinelsAndIntegersTravelIn16Bits) {
  EXPECT_EQ(KEL::GetCADIntVar(L"NOSUCHVAR"), -1);
  EXPECT_EQ(KEL::GetCADDblVar(L"NOSUCHVAR"), -1.0);
  EXPECT_EQ(KEL::GetCADStrVar(L"NOSUCHVAR"), L"");
  CString kept = L"kept";
  EXPECT_EQ(KEL::GetCADVar(L"NOSUCHVAR", kept), RTERROR);
  EXPECT_EQ(kept, L"kept");
  EXPECT_EQ(KEL::SetCADVar(L"USERS1", static_cast<const wchar_t*>(nullptr)), RTERROR);

  EXPECT_EQ(KEL::SetCADVar(L"USERI1", -5), RTNORM);
  EXPECT_EQ(KEL::GetCADIntVar(L"useri1"), -5);
  EXPECT_EQ(KEL::SetCADVar(L"USERI1", 70000), RTNORM);
  EXPECT_EQ(KEL::GetCADIntVar(L"USERI1"), 4464);
  EXPECT_EQ(KEL::SetCADVar(L"CMDECHO", 7), RTREJ);
  EXPECT_EQ(KEL::SetCADVar(L"USERS1", L"图层 A"), RTNORM);
  EXPECT_EQ(KEL::GetCADStrVar(L"USERS1"), L"图层 A");
  // A text variable read as a number: RTNORM, and its text released.
  int number = 0;
  EXPECT_EQ(KEL::GetCADVar(L"CLAYER", number), RTNORM);
}

TEST_F(SysvarAccess, ThePointFormsKeepTheirQuirks) {
  ads_point sent = {1.0, 2.0, 3.0};
  EXPECT_EQ(KEL::SetCADVar(L"INSBASE", sent), RTNORM);
  EXPECT_EQ(Var(L"INSBASE"), L"(1.0 0.0 0.0)");
  EXPECT_EQ(KEL::SetCADVar(L"INSBASE", AcGePoint3d(4.0, 5.0, 6.0)), RTNORM);
  EXPECT_EQ(Var(L"INSBASE"), L"(4.0 5.0 6.0)");
  // The ads_point form's buffer is its own: the whole point just sent
  // through the shared one does not reach it.
  ads_point again = {7.0, 8.0, 9.0};
  EXPECT_EQ(KEL::SetCADVar(L"INSBASE", again), RTNORM);
  ads_point read = {0.0, 0.0, 0.0};
  EXPECT_EQ(KEL::GetCADVar(L"INSBASE", read), RTNORM);
  EXPECT_EQ(read[0], 7.0);
  EXPECT_EQ(read[1], 0.0);

  AcGePoint3d untouched(-1.0, -2.0, -3.0);
  EXPECT_EQ(KEL::GetCADVar(L"INSBASE", untouched), RTNORM);
  EXPECT_EQ(untouched.y, -2.0);
  const AcGePoint3d origin = KEL::GetCADPtVar(L"INSBASE");
  EXPECT_EQ(origin.x, 0.0);
}

}  // namespace
