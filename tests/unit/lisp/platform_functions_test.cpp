// The platform calls behind the new AutoLISP functions that scenario
// output cannot pin down: unit conversions at their edges, the registry
// stand-in's enumeration and deletion, and the temporary graphics that
// the screen functions leave for a redraw to take away.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <string>

#include "ads/temporary_graphics.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/win32.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"

namespace {

double Convert(double v, const wchar_t* from, const wchar_t* to, int* status = nullptr) {
  double out = -12345;
  const int s = acutCvUnit(v, from, to, &out);
  if (status) *status = s;
  return out;
}

TEST(CvUnit, ScalesOffsetsPowersAndRefusals) {
  EXPECT_DOUBLE_EQ(Convert(1, L"inch", L"mm"), 25.4);
  EXPECT_DOUBLE_EQ(Convert(1, L"FEET", L"Inches"), 12.0);  // any case, plurals
  EXPECT_NEAR(Convert(32, L"fahrenheit", L"celsius"), 0.0, 1e-12);
  EXPECT_NEAR(Convert(-40, L"celsius", L"fahrenheit"), -40.0, 1e-12);
  EXPECT_NEAR(Convert(1, L"sq ft", L"square inches"), 144.0, 1e-9);
  EXPECT_NEAR(Convert(1, L"cu yard", L"ft^3"), 27.0, 1e-9);
  EXPECT_NEAR(Convert(3, L"kilograms", L"grams"), 3000.0, 1e-9);
  EXPECT_NEAR(Convert(180, L"degrees", L"radians"), 3.14159265358979, 1e-12);
  int status = 0;
  const double untouched = Convert(1, L"meter", L"second", &status);
  EXPECT_EQ(status, RTERROR);
  EXPECT_EQ(untouched, -12345);
  Convert(1, L"sq celsius", L"kelvin", &status);  // a temperature has no square
  EXPECT_EQ(status, RTERROR);
  EXPECT_EQ(acutCvUnit(1, nullptr, L"m", nullptr), RTERROR);
}

class RegistryStandIn : public ::testing::Test {
 protected:
  void SetUp() override {
    char tmpl[] = "/tmp/kel_reg_XXXXXX";
    ASSERT_NE(mkdtemp(tmpl), nullptr);
    dir = tmpl;
    setenv("KEL_REGISTRY_FILE", (dir + "/registry.ini").c_str(), 1);
  }
  void TearDown() override {
    unsetenv("KEL_REGISTRY_FILE");
    std::system(("rm -rf '" + dir + "'").c_str());
  }
  std::string dir;
};

TEST_F(RegistryStandIn, EnumeratesSubkeysOnceAndDeletesOnlyLeaves) {
  HKEY a = nullptr, b = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Kel\\A\\Deep", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &a,
                            nullptr),
            ERROR_SUCCESS);
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Kel\\B", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &b,
                            nullptr),
            ERROR_SUCCESS);
  const DWORD one = 1;
  ASSERT_EQ(RegSetValueExW(b, L"Flag", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&one), sizeof one), ERROR_SUCCESS);
  RegCloseKey(a);
  RegCloseKey(b);

  HKEY kel = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Kel", 0, KEY_ALL_ACCESS, &kel), ERROR_SUCCESS);
  std::wstring names;
  for (DWORD i = 0;; ++i) {
    wchar_t name[8];
    DWORD length = 8;
    const LONG rc = RegEnumKeyExW(kel, i, name, &length, nullptr, nullptr, nullptr, nullptr);
    if (rc == ERROR_NO_MORE_ITEMS) break;
    ASSERT_EQ(rc, ERROR_SUCCESS);
    EXPECT_EQ(length, 1u);
    names += name;
  }
  EXPECT_EQ(names, L"AB");  // A once, though only A\Deep holds anything
  wchar_t tiny[1];
  DWORD tinyLength = 1;
  EXPECT_EQ(RegEnumKeyExW(kel, 0, tiny, &tinyLength, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
  EXPECT_EQ(tinyLength, 2u);
  EXPECT_EQ(RegDeleteKeyW(kel, L"A"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteKeyW(kel, L"A\\Deep"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyW(kel, L"A"), ERROR_FILE_NOT_FOUND);  // nothing was ever stored in A itself
  EXPECT_EQ(RegDeleteKeyW(kel, L"B"), ERROR_SUCCESS);
  wchar_t name[8];
  DWORD length = 8;
  EXPECT_EQ(RegEnumKeyExW(kel, 0, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);
  RegCloseKey(kel);
}

TEST(TemporaryGraphics, DrawnVectorsStayUntilTheViewIsRedrawn) {
  auto& lisp = kelhost::Host::instance().lisp();
  kelhost::ads::ClearTemporaryGraphics();
  lisp.evalOne(L"(grdraw '(0 0) '(3 4) 2 1)");
  lisp.evalOne(L"(grvecs '(-3 (0 0) (1 0)) '((2 0 0 10) (0 2 0 20) (0 0 2 0) (0 0 0 1)))");
  const auto& vectors = kelhost::ads::TemporaryVectors();
  ASSERT_EQ(vectors.size(), 2u);
  EXPECT_EQ(vectors[0].color, 2);
  EXPECT_TRUE(vectors[0].highlight);
  EXPECT_DOUBLE_EQ(vectors[1].from[0], 10.0);  // transformed by the matrix
  EXPECT_DOUBLE_EQ(vectors[1].to[0], 12.0);
  EXPECT_DOUBLE_EQ(vectors[1].to[1], 20.0);
  EXPECT_EQ(vectors[1].color, 3);
  EXPECT_TRUE(vectors[1].highlight);
  // A refused grvecs draws none of its vectors.
  lisp.evalOne(L"(grvecs '(1 (0 0) (1 1) (2 2)))");
  EXPECT_EQ(kelhost::ads::TemporaryVectors().size(), 2u);
  lisp.evalOne(L"(grtext -1 \"Status\")");
  EXPECT_EQ(kelhost::ads::ScreenText(-1), L"Status");
  lisp.evalOne(L"(redraw)");
  EXPECT_TRUE(kelhost::ads::TemporaryVectors().empty());
}

}  // namespace
