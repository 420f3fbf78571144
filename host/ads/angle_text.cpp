// Angles read back from text (acutAngToF): what a user may type at an
// angle prompt, in any of the unit modes. A bare number is read in the
// given mode (degrees for 0, 1 and 4, grads for 2, radians for 3); a
// number may also say its own unit: 45d30'15", 50g, 1.2r. Surveyor's
// bearings (N45d30'E, S20W, and N, S, E, W alone) are turned into
// directions measured from east, anticlockwise. The result is reduced to
// one turn, as angtof's is.
#include <cmath>
#include <string>

#include "ads/number_reader.h"
#include "ads/units.h"
#include "arx/acutads.h"
#include "kelhost/text.h"

namespace {

using kelhost::units::Cursor;
using kelhost::units::ReadNumber;

constexpr double kPi = 3.14159265358979323846;

double Unit(int unit) {
  switch (unit) {
    case 2: return kPi / 200.0;
    case 3: return 1.0;
    default: return kPi / 180.0;
  }
}

// An unsigned angle: a number with or without its unit letter, or
// degrees, minutes and seconds (any of them may be left out from the
// front: 30'15" is half a degree and a bit).
bool ReadAngle(Cursor& c, int unit, double& radians) {
  double v = 0;
  bool integral = false;
  if (!ReadNumber(c, v, integral)) return false;
  c.skipBlanks();
  const wchar_t u = kelhost::ToLowerChar(c.peek());
  if (u == L'g' || u == L'r') {
    ++c.i;
    radians = u == L'g' ? v * kPi / 200.0 : v;
    return true;
  }
  if (u != L'd' && u != 0x00B0 && u != L'\'' && u != L'"') {
    radians = v * Unit(unit);
    return true;
  }
  static const double kPerDegree[3] = {1.0, 60.0, 3600.0};
  double degrees = 0;
  int next = 0;  // 0: degrees may come, 1: minutes, 2: seconds
  for (;;) {
    const wchar_t mark = kelhost::ToLowerChar(c.peek());
    const int at = mark == L'd' || mark == 0x00B0 ? 0 : mark == L'\'' ? 1 : mark == L'"' ? 2 : -1;
    if (at < next) return false;
    ++c.i;
    degrees += v / kPerDegree[at];
    next = at + 1;
    c.skipBlanks();
    if (next > 2 || !ReadNumber(c, v, integral)) break;
    c.skipBlanks();
  }
  radians = degrees * kPi / 180.0;
  return true;
}

// Angles come back as directions: from 0 up to (not including) 2 pi.
double Normalized(double radians) {
  double a = std::fmod(radians, 2 * kPi);
  if (a < 0) a += 2 * kPi;
  return a >= 2 * kPi ? 0.0 : a;
}

bool IsBearingLetter(wchar_t c) { return c == L'N' || c == L'S' || c == L'E' || c == L'W'; }

// N, S, E or W alone, or N|S angle E|W.
bool ReadBearing(const std::wstring& upper, double& radians) {
  if (upper.size() == 1 && IsBearingLetter(upper[0])) {
    radians = upper[0] == L'E' ? 0 : upper[0] == L'N' ? kPi / 2 : upper[0] == L'W' ? kPi : 1.5 * kPi;
    return true;
  }
  if (upper.size() < 3 || (upper.front() != L'N' && upper.front() != L'S') ||
      (upper.back() != L'E' && upper.back() != L'W'))
    return false;
  const std::wstring inner = upper.substr(1, upper.size() - 2);
  std::wstring lower = kelhost::ToLower(inner);
  Cursor c{lower};
  c.skipBlanks();
  double a = 0;
  if (!ReadAngle(c, 0, a)) return false;
  c.skipBlanks();
  if (!c.end() || a > kPi / 2 + 1e-12) return false;
  const double north = kPi / 2, south = 1.5 * kPi;
  if (upper.front() == L'N') radians = upper.back() == L'E' ? north - a : north + a;
  else radians = upper.back() == L'E' ? south + a : south - a;
  return true;
}

}  // namespace

int acutAngToF(const ACHAR* str, int unit, ads_real* v) {
  if (!str || !v) return RTERROR;
  if (unit == -1) unit = kelhost::units::CurrentSettings().aunits;
  if (unit < 0 || unit > 4) return RTERROR;
  std::wstring text(str);
  const size_t b = text.find_first_not_of(L" \t");
  const size_t e = text.find_last_not_of(L" \t");
  if (b == std::wstring::npos) return RTERROR;
  text = text.substr(b, e - b + 1);
  const std::wstring upper = kelhost::ToUpper(text);
  double radians = 0;
  if (ReadBearing(upper, radians)) {
    *v = Normalized(radians);
    return RTNORM;
  }
  std::wstring lower = kelhost::ToLower(text);
  Cursor c{lower};
  bool negative = false;
  if (c.peek() == L'-' || c.peek() == L'+') negative = lower[c.i++] == L'-';
  c.skipBlanks();
  if (!ReadAngle(c, unit, radians)) return RTERROR;
  c.skipBlanks();
  if (!c.end() || !std::isfinite(radians)) return RTERROR;
  *v = Normalized(negative ? -radians : radians);
  return RTNORM;
}
