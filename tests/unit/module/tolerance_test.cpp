// The point and vector tolerances in the initialisation settings, the
// comparisons that use them, and their AutoLISP functions.
#include <gtest/gtest.h>

#include "family_environment.h"
#include "kelcad/kelcad.h"

namespace {

using Tolerances = FamilyEnvironment;

TEST_F(Tolerances, AbsentOrUnreadableSettings) {
  WriteFile("install/KelInit.ini", "[Precision]\n");
  EXPECT_DOUBLE_EQ(KEL::GetPointEQ(), 1e-6);
  EXPECT_DOUBLE_EQ(KEL::GetVectorEQ(), 1e-6);
  WriteFile("install/KelInit.ini", "[Precision]\nPointEQ=fine\n");
  EXPECT_EQ(KEL::GetPointEQ(), 0.0);
}

TEST_F(Tolerances, SettersWriteTenDecimalsAndTheVectorGetterReadsDoubleEQ) {
  WriteFile("install/KelInit.ini", "[Precision]\nDoubleEQ=0.0002\nPointEQ=0.5\n");
  KEL::SetPointEQ(0.001);
  EXPECT_DOUBLE_EQ(KEL::GetPointEQ(), 0.001);
  KEL::SetVectorEQ(0.01);
  EXPECT_DOUBLE_EQ(KEL::GetVectorEQ(), 0.0002);  // not the 0.01 just set
  const std::string file = ReadFile("install/KelInit.ini");
  EXPECT_NE(file.find("PointEQ=0.0010000000"), std::string::npos) << file;
  EXPECT_NE(file.find("VectorEQ=0.0100000000"), std::string::npos) << file;
  // Both Tol getters hand out one object.
  EXPECT_EQ(&KEL::GetPointEQTol(), &KEL::GetVectorEQTol());
  EXPECT_DOUBLE_EQ(KEL::GetPointEQTol().equalVector(), 0.0002);
  EXPECT_DOUBLE_EQ(KEL::GetVectorEQTol().equalPoint(), 0.001);
}

TEST_F(Tolerances, PointComparisonsAreStrict) {
  WriteFile("install/KelInit.ini", "[Precision]\nPointEQ=5\n");
  const ads_point origin = {0, 0, 0}, far = {3, 4, 0}, above = {0, 0, 5};
  EXPECT_FALSE(KEL::IsPointEQ(origin, far, 5.0));  // exactly tol apart
  EXPECT_TRUE(KEL::IsPointEQ(origin, far, 5.000001));
  EXPECT_FALSE(KEL::IsPointEQ(origin, far, -1.0));  // the setting: 5
  EXPECT_TRUE(KEL::IsPoint2dEQ(origin, above, 1e-9));  // z is ignored
  WriteFile("install/KelInit.ini", "[Precision]\nPointEQ=5.5\n");
  EXPECT_TRUE(KEL::IsPointEQ(origin, far, -1.0));
}

TEST_F(Tolerances, DesignLibrariesAreLookedUpAmongLoadedModules) {
  EXPECT_TRUE(KEL::IsDL());
  // Any application will do as a stand-in for the design library.
  const std::string library = root + "/work/RNXGXLib.arx";
  std::filesystem::copy_file(FIXTURE_MODULE_PATH, library);
  std::wstring error;
  ASSERT_TRUE(kelhost::Host::instance().loadModule(library, &error)) << kelhost::ToUtf8(error);
  EXPECT_FALSE(KEL::IsDL());
}

TEST_F(Tolerances, LispSettersTakeOnlyRealsAndReturnNothing) {
  WriteFile("install/KelInit.ini", "[Precision]\nPointEQ=0.01\nDoubleEQ=0.001\n");
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(Printed(L"(kel_setvectoreq 1)"),
            L"\n KEL_SetVectorEQ 参数错\n 功能：设置向量比较精度(用全局点比较精度生成)\n 用法：KEL_SetVectorEQ 0.001");
  Eval(L"(kel_setpointeq 1)");
  Eval(L"(kel_setdoubleeq \"0.1\")");
  EXPECT_EQ(Eval(L"(list (kel_getpointeq) (kel_getdoubleeq))"), L"(0.01 0.001)");  // unchanged
  const auto outcome = kelhost::Host::instance().lisp().evalOne(L"(kel_setpointeq 0.5)");
  EXPECT_FALSE(outcome.printable);
  Eval(L"(kel_setdoubleeq 0.25)");
  Eval(L"(kel_setvectoreq 0.125)");
  EXPECT_EQ(Eval(L"(list (kel_getpointeq) (kel_getdoubleeq) (kel_getvectoreq))"), L"(0.5 0.25 0.25)");
}

TEST_F(Tolerances, LispComparisonsCheckTheirArguments) {
  WriteFile("install/KelInit.ini", "[Precision]\nPointEQ=0.01\nDoubleEQ=0.001\nZERO=0.0001\n");
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(Eval(L"(kel_ispointeq '(1 1 1) '(1 1 1.005))"), L"T");
  EXPECT_EQ(Eval(L"(kel_ispointeq '(1 1 1) '(1 1 1.01))"), L"nil");
  EXPECT_EQ(Eval(L"(kel_ispointeq '(0 0 0) '(0 0))"), L"T");  // the second is read as it comes
  EXPECT_EQ(Printed(L"(kel_ispointeq '(0 0) '(0 0 0))"),  // the first must be 3D
            L"\n KEL_IsPointEQ 参数错\n 功能：判断两个三维点是否相等\n 用法：KEL_IsPointEQ 点1 点2 ");
  EXPECT_EQ(Eval(L"(kel_ispointeq '(0 0 0))"), L"nil");
  EXPECT_EQ(Eval(L"(kel_ispoint2deq '(0 0) '(0.005 0 7))"), L"T");
  EXPECT_EQ(Eval(L"(kel_ispoint2deq \"a\" '(0 0))"), L"nil");
  EXPECT_EQ(Eval(L"(kel_isdoubleeq 1 1.0)"), L"T");
  EXPECT_EQ(Eval(L"(kel_isdoubleeq 70000 70000.0005)"), L"T");
  EXPECT_EQ(Eval(L"(kel_isdoubleeq 1 1.002)"), L"nil");
  EXPECT_EQ(Eval(L"(kel_iszero 0.00001)"), L"T");
  EXPECT_EQ(Eval(L"(kel_iszero 0.1)"), L"nil");
  EXPECT_FALSE(kelhost::Host::instance().lisp().evalOne(L"(kel_iszero 0)").printable);  // integers refused
}

}  // namespace
