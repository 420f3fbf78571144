#include "kelbase/directories.h"
#include "kelbase/tolerance.h"
#include "scratch_environment.h"

using Tolerances = ScratchEnvironment;

TEST_F(Tolerances, DefaultsApplyWithoutSettings) {
  EXPECT_DOUBLE_EQ(KEL::ZERO(), 1e-10);
  EXPECT_DOUBLE_EQ(KEL::GetDoubleEQ(), 1e-6);
  EXPECT_TRUE(KEL::ISZERO(-5e-11));
  EXPECT_FALSE(KEL::ISZERO(1e-10));  // strict
  EXPECT_TRUE(KEL::IsDoubleEQ(1.0, 1.0000005));
  EXPECT_FALSE(KEL::IsDoubleEQ(1.0, 1.000002, -7.0));  // any negative: the setting
  EXPECT_TRUE(KEL::IsDoubleEQ(1.0, 1.4, 0.5));
  EXPECT_FALSE(KEL::IsDoubleEQ(0.0, 0.5, 0.5));  // exactly tol apart is unequal
}

TEST_F(Tolerances, SettingsAreReadAndWritten) {
  const std::wstring init = Wide(root + "/init.ini");
  Set("KEL_INIT_INI", root + "/init.ini");
  KEL::SetDoubleEQ(0.01);
  EXPECT_EQ(INISetting(init.c_str()).GetSetting(L"DoubleEQ", L"", L"Precision").str(), L"0.0100000000");
  EXPECT_DOUBLE_EQ(KEL::GetDoubleEQ(), 0.01);
  EXPECT_TRUE(KEL::IsDoubleEQ(2.0, 2.009));
  KEL::SetDoubleEQ(0.02);  // a second write of the same length is seen too
  EXPECT_DOUBLE_EQ(KEL::GetDoubleEQ(), 0.02);

  // Changed behind the library's back: the next reading sees it.
  ASSERT_TRUE(WritePrivateProfileStringW(L"Precision", L"ZERO", L"0.001", init.c_str()));
  EXPECT_DOUBLE_EQ(KEL::ZERO(), 0.001);
  EXPECT_TRUE(KEL::ISZERO(0.0005));
  WriteFile("init.ini", "[Precision]\nZERO=0.002\n");
  EXPECT_DOUBLE_EQ(KEL::ZERO(), 0.002);

  // Text that is not a number reads as 0, and then nothing is zero.
  ASSERT_TRUE(WritePrivateProfileStringW(L"Precision", L"ZERO", L"tiny", init.c_str()));
  EXPECT_EQ(KEL::ZERO(), 0.0);
  EXPECT_FALSE(KEL::ISZERO(0.0));

  // Another settings file is another set of values.
  Set("KEL_INIT_INI", root + "/other.ini");
  EXPECT_DOUBLE_EQ(KEL::ZERO(), 1e-10);
  EXPECT_DOUBLE_EQ(KEL::GetDoubleEQ(), 1e-6);
  WriteFile("OTHER.INI", "[Precision]\nZERO=0.5\n");  // appears, in another case
  EXPECT_DOUBLE_EQ(KEL::ZERO(), 0.5);
}
