#include <gtest/gtest.h>

#include <string>

#include "ads/units.h"
#include "arx/acutads.h"

namespace {

std::wstring RToS(double v, int unit, int prec) {
  wchar_t buf[128];
  return acutRToS(v, unit, prec, buf, 128) == RTNORM ? std::wstring(buf) : L"<error>";
}

std::wstring AngToS(double v, int unit, int prec) {
  wchar_t buf[128];
  return acutAngToS(v, unit, prec, buf, 128) == RTNORM ? std::wstring(buf) : L"<error>";
}

double DisToF(const wchar_t* s, int unit) {
  ads_real v = -999;
  return acutDisToF(s, unit, &v) == RTNORM ? v : -999;
}

const double kPi = 3.14159265358979323846;

// Restores the defaults after a test that supplies its own settings.
struct SettingsScope {
  explicit SettingsScope(kelhost::units::Settings s) {
    kelhost::units::SetSettingsSource([s] { return s; });
  }
  ~SettingsScope() { kelhost::units::SetSettingsSource(nullptr); }
};

}  // namespace

TEST(Units, LinearModes) {
  SettingsScope defaults{kelhost::units::Settings{}};  // no zero suppression
  EXPECT_EQ(RToS(17.5, 1, 4), L"1.7500E+01");
  EXPECT_EQ(RToS(17.5, 2, 2), L"17.50");
  EXPECT_EQ(RToS(17.5, 3, 2), L"1'-5.50\"");
  EXPECT_EQ(RToS(17.5, 4, 2), L"1'-5 1/2\"");
  EXPECT_EQ(RToS(17.5, 5, 2), L"17 1/2");
  EXPECT_EQ(RToS(-17.5, 4, 2), L"-1'-5 1/2\"");
  EXPECT_EQ(RToS(2.0 / 3, 2, 3), L"0.667");
  EXPECT_EQ(RToS(-0.00001, 2, 2), L"0.00");  // no sign on a rounded zero
  EXPECT_EQ(RToS(0.3, 5, 3), L"1/4");        // 2.4 eighths round to 2, reduced
}

TEST(Units, FeetAndInchesFollowZeroSuppression) {
  // Default DIMZIN 0 drops zero feet and zero inches.
  EXPECT_EQ(RToS(12, 4, 2), L"1'");
  EXPECT_EQ(RToS(0.5, 4, 2), L"1/2\"");
  EXPECT_EQ(RToS(0, 4, 2), L"0\"");
  EXPECT_EQ(RToS(23.999, 3, 2), L"2'");
  kelhost::units::Settings s;
  s.dimzin = 1;  // keep both
  s.unitmode = 1;
  SettingsScope scope(s);
  EXPECT_EQ(RToS(12, 4, 2), L"1'0\"");
  EXPECT_EQ(RToS(17.5, 4, 2), L"1'5-1/2\"");
  EXPECT_EQ(RToS(17.5, 5, 2), L"17-1/2");
  EXPECT_EQ(RToS(5.25, 3, 2), L"0'5.25\"");
}

TEST(Units, DefaultsComeFromTheSettings) {
  {
    SettingsScope defaults{kelhost::units::Settings{}};
    EXPECT_EQ(RToS(3, -1, -1), L"3.0000");  // LUNITS 2, LUPREC 4
  }
  kelhost::units::Settings s;
  s.lunits = 5;
  s.luprec = 1;
  s.dimzin = 8;
  SettingsScope scope(s);
  EXPECT_EQ(RToS(3.5, -1, -1), L"3 1/2");
  EXPECT_EQ(RToS(3.5, 2, 3), L"3.5");  // trailing zeros suppressed
  EXPECT_EQ(DisToF(L"1/2", -1), 0.5);
}

TEST(Units, InvalidArgumentsAreErrors) {
  wchar_t small[4];
  EXPECT_EQ(acutRToS(12345.0, 2, 4, small, 4), RTERROR);
  EXPECT_EQ(acutRToS(1.0, 0, 4, small, 4), RTERROR);
  EXPECT_EQ(acutRToS(1.0, 2, 9, small, 4), RTERROR);
  EXPECT_EQ(acutRToS(1.0, 2, 2, nullptr, 4), RTERROR);
  EXPECT_EQ(RToS(1e20, 4, 2), L"<error>");  // beyond what feet and fractions count
  EXPECT_EQ(RToS(1e20, 2, 0), L"100000000000000000000");
  EXPECT_EQ(acutAngToS(1.0, 5, 2, small, 4), RTERROR);
  ads_real v;
  EXPECT_EQ(acutDisToF(L"1", 6, &v), RTERROR);
  EXPECT_EQ(acutDisToF(nullptr, 2, &v), RTERROR);
}

TEST(Units, DistancesReadBack) {
  EXPECT_EQ(DisToF(L"1.7500E+01", 1), 17.5);
  EXPECT_EQ(DisToF(L" -17.5 ", 2), -17.5);
  EXPECT_EQ(DisToF(L"1'-5.50\"", 3), 17.5);
  EXPECT_EQ(DisToF(L"1'-5 1/2\"", 4), 17.5);
  EXPECT_EQ(DisToF(L"1'5-1/2\"", 4), 17.5);
  EXPECT_EQ(DisToF(L"1'-5 1/2\"", 3), 17.5);  // modes 3 and 4 read alike
  EXPECT_EQ(DisToF(L"2'", 4), 24);
  EXPECT_EQ(DisToF(L"5.5\"", 4), 5.5);
  EXPECT_EQ(DisToF(L"17.5", 4), 17.5);
  EXPECT_EQ(DisToF(L"17 1/2", 5), 17.5);
  EXPECT_EQ(DisToF(L"17-1/2", 5), 17.5);
  EXPECT_EQ(DisToF(L"-1'", 4), -12);
  EXPECT_EQ(DisToF(L"1'", 2), -999);  // no feet in decimal units
  EXPECT_EQ(DisToF(L"1/0", 5), -999);
  EXPECT_EQ(DisToF(L"12abc", 2), -999);
  EXPECT_EQ(DisToF(L"", 2), -999);
  // What rtos writes, distof reads.
  for (int unit = 1; unit <= 5; ++unit) EXPECT_NEAR(DisToF(RToS(123.375, unit, 5).c_str(), unit), 123.375, 1e-9);
}

TEST(Units, AngleModes) {
  EXPECT_EQ(AngToS(kPi / 4, 0, 4), L"45.0000");
  EXPECT_EQ(AngToS(-kPi / 4, 0, 4), L"315.0000");
  EXPECT_EQ(AngToS(kPi / 4, 0, -1), L"45");  // AUPREC 0
  EXPECT_EQ(AngToS(kPi / 4 + 1e-4, 1, 4), L"45d0'21\"");
  EXPECT_EQ(AngToS(kPi / 4, 1, 0), L"45d");
  EXPECT_EQ(AngToS(kPi / 4, 2, 2), L"50.00g");
  EXPECT_EQ(AngToS(kPi / 4, 3, 3), L"0.785r");
  EXPECT_EQ(AngToS(kPi / 4, 4, 4), L"N 45d0'0\" E");
  EXPECT_EQ(AngToS(kPi * 1.25, 4, 0), L"S 45d W");
  EXPECT_EQ(AngToS(kPi / 2, 4, 2), L"N");
  EXPECT_EQ(AngToS(kPi, 4, 2), L"W");
  EXPECT_EQ(AngToS(2 * kPi - 1e-9, 0, 2), L"0.00");
}
