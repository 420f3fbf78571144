// Real numbers and angles as text in the platform's unit modes, and
// distances read back from text.
//   linear: 1 scientific, 2 decimal, 3 engineering, 4 architectural,
//           5 fractional
//   angular: 0 degrees, 1 degrees/minutes/seconds, 2 grads, 3 radians,
//            4 surveyor's units
#include "ads/units.h"
#include "ads/number_reader.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <numeric>
#include <string>

#include "arx/acutads.h"

namespace kelhost::units {
namespace {

std::function<Settings()>& Source() {
  static std::function<Settings()> source;
  return source;
}

}  // namespace

void SetSettingsSource(std::function<Settings()> source) { Source() = std::move(source); }

Settings CurrentSettings() { return Source() ? Source()() : Settings{}; }

}  // namespace kelhost::units

namespace {

using kelhost::units::Settings;
using kelhost::units::Cursor;
using kelhost::units::IsDigit;
using kelhost::units::ReadNumber;

const double kPi = 3.14159265358979323846;

std::string Fixed(double v, int prec) {
  char buf[400];
  auto res = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed, prec);
  return res.ec == std::errc() ? std::string(buf, res.ptr) : std::string("0");
}

double ToDouble(const std::string& s) {
  double v = 0;
  std::from_chars(s.data(), s.data() + s.size(), v);
  return v;
}

bool AllZeros(const std::string& s) { return s.find_first_not_of("0.") == std::string::npos; }

// DIMZIN 4 drops a leading zero (0.5 -> .5), 8 trailing zeros (1.50 -> 1.5).
std::string SuppressZeros(std::string s, int dimzin) {
  if ((dimzin & 8) && s.find('.') != std::string::npos) {
    while (s.back() == '0') s.pop_back();
    if (s.back() == '.') s.pop_back();
  }
  if ((dimzin & 4) && s.size() > 1 && s[0] == '0' && s[1] == '.') s.erase(0, 1);
  return s;
}

std::string Scientific(double v, int prec) {
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific, prec);
  std::string s(buf, res.ptr);
  for (char& c : s)
    if (c == 'e') c = 'E';
  return s;
}

std::string Fraction(long long whole, long long num, long long den, bool typed) {
  if (num == 0) return std::to_string(whole);
  long long g = std::gcd(num, den);
  std::string frac = std::to_string(num / g) + "/" + std::to_string(den / g);
  if (whole == 0) return frac;
  return std::to_string(whole) + (typed ? "-" : " ") + frac;
}

// Feet and inches with DIMZIN's rules for zero feet and zero inches.
std::string FeetInches(long long feet, const std::string& inches, bool inchesZero, const Settings& s) {
  const int zin = s.dimzin & 3;
  const bool dropFeet = feet == 0 && (zin == 0 || zin == 3);
  const bool dropInches = inchesZero && (zin == 0 || zin == 2);
  if (dropFeet && dropInches) return "0\"";
  if (dropFeet) return inches + "\"";
  if (dropInches) return std::to_string(feet) + "'";
  return std::to_string(feet) + (s.unitmode == 1 ? "'" : "'-") + inches + "\"";
}

std::string Linear(double v, int unit, int prec, const Settings& s) {
  const bool negative = v < 0;
  const double a = std::fabs(v);
  std::string body;
  bool zero = false;
  switch (unit) {
    case 1:
      body = Scientific(a, prec);
      zero = a == 0;
      break;
    case 2:
      body = Fixed(a, prec);
      zero = AllZeros(body);
      body = SuppressZeros(body, s.dimzin);
      break;
    case 3: {
      long long feet = static_cast<long long>(std::floor(a / 12));
      std::string inches = Fixed(a - 12.0 * static_cast<double>(feet), prec);
      if (ToDouble(inches) >= 12.0) {  // rounded up to a whole foot
        ++feet;
        inches = Fixed(0.0, prec);
      }
      zero = feet == 0 && AllZeros(inches);
      body = FeetInches(feet, SuppressZeros(inches, s.dimzin & 12), AllZeros(inches), s);
      break;
    }
    case 4:
    case 5: {
      const long long den = 1LL << prec;
      const long long n = std::llround(a * static_cast<double>(den));
      zero = n == 0;
      if (unit == 5) {
        body = Fraction(n / den, n % den, den, s.unitmode == 1);
      } else {
        const long long rest = n % (12 * den);
        body = FeetInches(n / (12 * den), Fraction(rest / den, rest % den, den, s.unitmode == 1), rest == 0, s);
      }
      break;
    }
  }
  return (negative && !zero ? "-" : "") + body;
}

// Degrees as d, minutes ' and seconds ", rounded to the precision: 0 whole
// degrees, 1-2 minutes, 3-4 seconds, more for decimals of seconds.
std::string Dms(double degrees, int prec) {
  if (prec <= 0) return std::to_string(std::llround(degrees)) + "d";
  if (prec <= 2) {
    long long minutes = std::llround(degrees * 60);
    return std::to_string(minutes / 60) + "d" + std::to_string(minutes % 60) + "'";
  }
  const int decimals = prec > 4 ? prec - 4 : 0;
  const double scale = std::pow(10.0, decimals);
  long long units = std::llround(degrees * 3600 * scale);
  long long perDegree = static_cast<long long>(3600 * scale), perMinute = static_cast<long long>(60 * scale);
  long long d = units / perDegree, m = units % perDegree / perMinute;
  double sec = static_cast<double>(units % perMinute) / scale;
  return std::to_string(d) + "d" + std::to_string(m) + "'" + Fixed(sec, decimals) + "\"";
}

std::string Angular(double radians, int unit, int prec) {
  double a = std::fmod(radians, 2 * kPi);
  if (a < 0) a += 2 * kPi;
  const double degrees = a * 180 / kPi;
  switch (unit) {
    case 0: {
      std::string s = Fixed(degrees, prec);
      return ToDouble(s) >= 360.0 ? Fixed(0.0, prec) : s;
    }
    case 1: {
      std::string s = Dms(degrees, prec);
      return s.rfind("360d", 0) == 0 ? Dms(0.0, prec) : s;
    }
    case 2: {
      std::string s = Fixed(a * 200 / kPi, prec);
      return (ToDouble(s) >= 400.0 ? Fixed(0.0, prec) : s) + "g";
    }
    case 3: return Fixed(a, prec) + "r";
    default: {
      // Bearings: from north or south, toward east or west.
      const bool north = degrees < 180;
      const bool east = degrees < 90 || degrees > 270;
      const std::string b = Dms(std::fabs((north ? 90.0 : 270.0) - degrees), prec);
      if (b == Dms(0.0, prec)) return north ? "N" : "S";
      if (b == Dms(90.0, prec)) return east ? "E" : "W";
      return std::string(north ? "N " : "S ") + b + (east ? " E" : " W");
    }
  }
}

int Deliver(const std::string& text, ACHAR* str, size_t len) {
  if (text.size() + 1 > len) return RTERROR;
  for (size_t k = 0; k < text.size(); ++k) str[k] = static_cast<ACHAR>(static_cast<unsigned char>(text[k]));
  str[text.size()] = 0;
  return RTNORM;
}

// A number, a fraction N/D, or a whole number and a fraction ("17 1/2",
// "17-1/2").
bool ReadMagnitude(Cursor& c, double& v) {
  bool integral = false;
  if (!ReadNumber(c, v, integral)) return false;
  if (!integral) return true;
  size_t mark = c.i;
  double num = 0, den = 0;
  if (c.peek() == L'/') {
    ++c.i;
    if (ReadNumber(c, den, integral) && integral && den != 0) {
      v /= den;
      return true;
    }
    c.i = mark;
    return false;
  }
  if (c.peek() == L' ' || c.peek() == L'-') {
    ++c.i;
    c.skipBlanks();
    if (ReadNumber(c, num, integral) && integral && c.peek() == L'/') {
      ++c.i;
      if (ReadNumber(c, den, integral) && integral && den != 0) {
        v += num / den;
        return true;
      }
    }
    c.i = mark;
  }
  return true;
}

// Feet and inches as typed: 1'-5.5", 1'5-1/2", 1', 5.5" or 5.5 (inches).
bool ReadFeetInches(Cursor& c, double& v) {
  double first = 0;
  size_t start = c.i;
  if (!ReadMagnitude(c, first)) return false;
  c.skipBlanks();
  if (c.peek() != L'\'') {
    if (c.peek() == L'"') ++c.i;
    v = first;
    return true;
  }
  // The feet may not carry a fraction read as inches: re-read as a number.
  c.i = start;
  bool integral = false;
  if (!ReadNumber(c, first, integral)) return false;
  c.skipBlanks();
  if (c.peek() != L'\'') return false;
  ++c.i;
  v = first * 12;
  c.skipBlanks();
  if (c.peek() == L'-') ++c.i;
  c.skipBlanks();
  if (c.end()) return true;
  double inches = 0;
  if (!ReadMagnitude(c, inches)) return false;
  c.skipBlanks();
  if (c.peek() == L'"') ++c.i;
  v += inches;
  return true;
}

}  // namespace

std::wstring kelhost::units::PromptDistance(double value) {
  Settings s = CurrentSettings();
  s.dimzin = 0;
  if (s.lunits < 1 || s.lunits > 5 || s.luprec < 0 || s.luprec > 8 || !std::isfinite(value)) return std::to_wstring(value);
  const std::string text = Linear(value, s.lunits, s.luprec, s);
  return std::wstring(text.begin(), text.end());
}

int acutRToS(ads_real val, int unit, int prec, ACHAR* str, size_t nBufLen) {
  if (!str || nBufLen == 0) return RTERROR;
  const Settings s = kelhost::units::CurrentSettings();
  if (unit == -1) unit = s.lunits;
  if (prec == -1) prec = s.luprec;
  if (unit < 1 || unit > 5 || prec < 0 || prec > 8 || !std::isfinite(val)) return RTERROR;
  // Feet and fractions are counted in 64-bit integers of 1/256 inch.
  if (unit >= 3 && std::fabs(val) >= 1e15) return RTERROR;
  return Deliver(Linear(val, unit, prec, s), str, nBufLen);
}

int acutAngToS(ads_real val, int unit, int prec, ACHAR* str, size_t nBufLen) {
  if (!str || nBufLen == 0) return RTERROR;
  const Settings s = kelhost::units::CurrentSettings();
  if (unit == -1) unit = s.aunits;
  if (prec == -1) prec = s.auprec;
  if (unit < 0 || unit > 4 || prec < 0 || prec > 8 || !std::isfinite(val)) return RTERROR;
  return Deliver(Angular(val, unit, prec), str, nBufLen);
}

int acutDisToF(const ACHAR* str, int unit, ads_real* v) {
  if (!str || !v) return RTERROR;
  if (unit == -1) unit = kelhost::units::CurrentSettings().lunits;
  if (unit < 1 || unit > 5) return RTERROR;
  Cursor c{std::wstring_view(str)};
  c.skipBlanks();
  bool negative = false;
  if (c.peek() == L'-' || c.peek() == L'+') negative = c.s[c.i++] == L'-';
  double value = 0;
  bool ok = unit == 3 || unit == 4 ? ReadFeetInches(c, value) : ReadMagnitude(c, value);
  c.skipBlanks();
  if (!ok || !c.end()) return RTERROR;
  *v = negative ? -value : value;
  return RTNORM;
}
