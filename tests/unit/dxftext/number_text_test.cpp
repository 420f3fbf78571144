// Numbers as files hold them: FormatReal against the definition it must
// follow (printf's "%.15g", then 16 and 17 digits until the text reads
// back, ".0" added to whole numbers), and the parsers against strtod and
// strtoll, over values picked to reach every path of the fast code.
#include <gtest/gtest.h>

#include <cerrno>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "dxf/raw_group.h"

namespace {

using kelhost::dxf::FormatReal;
using kelhost::dxf::ParseInteger;
using kelhost::dxf::ParseReal;

std::string PrintfReal(double v) {
  char buf[40];
  for (int precision = 15; precision <= 17; ++precision) {
    std::snprintf(buf, sizeof buf, "%.*g", precision, v);
    if (std::strtod(buf, nullptr) == v) break;
  }
  std::string s = buf;
  if (s.find_first_of(".eEn") == std::string::npos) s += ".0";
  return s;
}

std::string Trim(const std::string& s) {
  const size_t b = s.find_first_not_of(" \t");
  return b == std::string::npos ? "" : s.substr(b, s.find_last_not_of(" \t") - b + 1);
}

bool StrtodReal(const std::string& text, double& out) {
  const std::string t = Trim(text);
  if (t.empty()) return false;
  char* end = nullptr;
  errno = 0;
  out = std::strtod(t.c_str(), &end);
  // Underflow reads as the subnormal value or zero; overflow is refused.
  return *end == '\0' && std::isfinite(out) && (errno != ERANGE || std::fabs(out) < DBL_MIN);
}

bool StrtollInteger(const std::string& text, long long& out) {
  const std::string t = Trim(text);
  if (t.empty()) return false;
  char* end = nullptr;
  errno = 0;
  out = std::strtoll(t.c_str(), &end, 10);
  return *end == '\0' && errno != ERANGE;
}

double FromBits(std::uint64_t bits) {
  double v;
  std::memcpy(&v, &bits, sizeof v);
  return v;
}

TEST(NumberText, RealsAreWrittenAsPrintfsShortestSearch) {
  std::mt19937_64 rng(20240611);
  // Infinities and NaNs, which no reader takes, are noted for the writer
  // to refuse the save, and stand as 0.0.
  auto check = [](double v) {
    if (std::isfinite(v)) {
      ASSERT_EQ(FormatReal(v), PrintfReal(v)) << "bits " << std::hexfloat << v;
    } else {
      ASSERT_EQ(FormatReal(v), "0.0") << "bits " << std::hexfloat << v;
      ASSERT_EQ(kelhost::dxf::TakeNonFiniteGroup(), -1);
    }
  };
  // Any bit pattern: every magnitude, subnormals, infinities and NaNs.
  for (int i = 0; i < 200000; ++i) check(FromBits(rng()));
  // Coordinates as drawings hold them: long fractions and short decimals.
  for (int i = 0; i < 200000; ++i) {
    check(static_cast<double>(i) * 2.5 + 1.0 / 3.0);
    const auto mantissa = static_cast<double>(static_cast<std::int64_t>(rng() % 2000000001) - 1000000000);
    check(mantissa / std::pow(10.0, static_cast<int>(rng() % 24) - 6));
  }
  // Powers of two, whose lower neighbour is nearer than the upper, and
  // their neighbours; the edges of the fast range and of notation.
  for (int e = -1074; e < 1024; ++e) {
    const double p = std::ldexp(1.0, e);
    check(p);
    check(-p);
    check(std::nextafter(p, 0.0));
    check(std::nextafter(p, INFINITY));
  }
  for (double v : {0.0, -0.0, 1e-3, 0.001, 9.999999999999999e-4, 1e14, 99999999999999.98, 1e15, 1e16, 1e17,
                   123456789012345678.0, 0.0001, 0.00001, 1e-5, 0.1, 0.3, 2.0 / 3.0, 100.0, 1e21, 1e22, 1e100,
                   std::numeric_limits<double>::max(), std::numeric_limits<double>::min(),
                   std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::quiet_NaN(),
                   std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()})
    check(v);
}

TEST(NumberText, RealsShowTheirLayout) {
  EXPECT_EQ(FormatReal(0.0), "0.0");
  EXPECT_EQ(FormatReal(-0.0), "-0.0");
  EXPECT_EQ(FormatReal(200.0), "200.0");
  EXPECT_EQ(FormatReal(12.5), "12.5");
  EXPECT_EQ(FormatReal(0.1), "0.1");
  EXPECT_EQ(FormatReal(1.0 / 3.0), "0.3333333333333333");
  EXPECT_EQ(FormatReal(1e15), "1e+15");
  EXPECT_EQ(FormatReal(0.0001), "0.0001");
  EXPECT_EQ(FormatReal(1e-5), "1e-05");
  EXPECT_EQ(FormatReal(1e100), "1e+100");
}

TEST(NumberText, RealsAreReadAsStrtodReadsThem) {
  const char* const samples[] = {
      "1", " 2.5 ", "\t7\t", "+3", "-0", "0.0", "-0.000", "1e5", "1E-5", ".5", "5.", "-.5e-3", "00012.50",
      "1e400", "-1e400", "1e-400", "4.9e-324", "2.2250738585072011e-308", "2.2250738585072014e-308",
      "123456789012345678901234567890", "0.1234567890123456789012", "9007199254740993", "1e22", "1e23",
      "0x10", "inf", "nan", "1,5", "", " ", "-", ".", "1e", "1e+", "1 2", "1e5x", "--1", "1.2.3",
      // Exactly halfway between two doubles: ties go to the even one.
      "9007199254740995", "9007199254740997", "18014398509481986", "18014398509481990", "4503599627370497.5",
      "4503599627370498.5", "-4503599627370499.5", "1.8014398509481985e16", "9.007199254740993e-7",
      // Nineteen digits whose value rounded to 64 bits lands on a halfway
      // point that the exact value is not on.
      "7.318506222971201236", "831.5947896112341482", "-803836164043051683e4", "2779090112935843636e14"};
  for (const char* s : samples) {
    double fast = -1, reference = -2;
    const bool ok = ParseReal(s, fast);
    ASSERT_EQ(ok, StrtodReal(s, reference)) << '"' << s << '"';
    if (ok) {
      EXPECT_EQ(fast, reference) << '"' << s << '"';
      EXPECT_EQ(std::signbit(fast), std::signbit(reference)) << '"' << s << '"';
    }
  }
  // Random decimal text, shaped and unshaped.
  std::mt19937_64 rng(7);
  const char alphabet[] = "0123456789000.-+eE 9";
  for (int i = 0; i < 300000; ++i) {
    std::string s;
    if (rng() % 2) {
      if (rng() % 4 == 0) s += '-';
      for (int k = static_cast<int>(rng() % 22); k > 0; --k) s += static_cast<char>('0' + rng() % 10);
      if (rng() % 3) {
        s += '.';
        for (int k = static_cast<int>(rng() % 22); k > 0; --k) s += static_cast<char>('0' + (rng() % 3 ? rng() % 10 : 0));
      }
      if (rng() % 5 == 0) s += "e" + std::string(rng() % 2 ? "-" : "") + std::to_string(rng() % 400);
    } else {
      for (int k = 1 + static_cast<int>(rng() % 25); k > 0; --k) s += alphabet[rng() % (sizeof alphabet - 1)];
    }
    double fast = 0, reference = 0;
    const bool ok = ParseReal(s, fast);
    ASSERT_EQ(ok, StrtodReal(s, reference)) << '"' << s << '"';
    if (ok) {
      ASSERT_EQ(fast, reference) << '"' << s << '"';
    }
    long long n = 0, m = 0;
    const bool integer = ParseInteger(s, n);
    ASSERT_EQ(integer, StrtollInteger(s, m)) << '"' << s << '"';
    if (integer) {
      ASSERT_EQ(n, m) << '"' << s << '"';
    }
  }
}

TEST(NumberText, IntegersKeepTheirRangeChecks) {
  long long n = 0;
  EXPECT_TRUE(ParseInteger("9223372036854775807", n));
  EXPECT_EQ(n, std::numeric_limits<long long>::max());
  EXPECT_TRUE(ParseInteger("-9223372036854775808", n));
  EXPECT_EQ(n, std::numeric_limits<long long>::min());
  EXPECT_FALSE(ParseInteger("9223372036854775808", n));
  EXPECT_TRUE(ParseInteger("+42", n));
  EXPECT_EQ(n, 42);
  EXPECT_TRUE(ParseInteger(" 000000000000000000000007 ", n));
  EXPECT_EQ(n, 7);
  EXPECT_FALSE(ParseInteger("7.0", n));
}

TEST(NumberText, HandlesAndGroupLines) {
  EXPECT_EQ(kelhost::dxf::HandleText(0), "0");
  EXPECT_EQ(kelhost::dxf::HandleText(0x1F), "1F");
  EXPECT_EQ(kelhost::dxf::HandleText(0xFFFFFFFFFFFFFFFFULL), "FFFFFFFFFFFFFFFF");
  std::uint64_t h = 0;
  EXPECT_TRUE(kelhost::dxf::ParseHandle(" a0 ", h));
  EXPECT_EQ(h, 0xA0u);
  EXPECT_FALSE(kelhost::dxf::ParseHandle("10000000000000000", h));  // 17 digits

  // Codes right-aligned in three columns; wider codes take what they need.
  const kelhost::dxf::RawGroups groups = {{0, "LINE"}, {8, "0"}, {10, "1.5"}, {100, "AcDbLine"},
                                          {1001, "APP"}, {-3, ""}, {5, std::string(40, 'x')}};
  std::string text = "head\n";
  kelhost::dxf::AppendGroupLines(groups.data(), groups.data() + groups.size(), text);
  EXPECT_EQ(text, "head\n  0\nLINE\n  8\n0\n 10\n1.5\n100\nAcDbLine\n1001\nAPP\n -3\n\n  5\n" + std::string(40, 'x') + "\n");
}

}  // namespace
