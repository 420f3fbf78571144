#include "editor/answers.h"

#include <charconv>
#include <cmath>
#include <string_view>

#include "arx/acedads.h"
#include "ads/units.h"
#include "arx/acutads.h"
#include "editor/picking.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2 * kPi;

std::wstring Trim(const std::wstring& s) {
  const size_t b = s.find_first_not_of(L" \t");
  if (b == std::wstring::npos) return L"";
  const size_t e = s.find_last_not_of(L" \t");
  return s.substr(b, e - b + 1);
}

double RealVar(const wchar_t* name, double fallback) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM) return fallback;
  if (rb.restype == RTREAL) return rb.resval.rreal;
  if (rb.restype == RTSHORT) return rb.resval.rint;
  return fallback;
}

int ShortVar(const wchar_t* name, int fallback) {
  resbuf rb{};
  return acedGetVar(name, &rb) == RTNORM && rb.restype == RTSHORT ? rb.resval.rint : fallback;
}

bool PointVar(const wchar_t* name, double pt[3]) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM || (rb.restype != RTPOINT && rb.restype != RT3DPOINT)) return false;
  for (int i = 0; i < 3; ++i) pt[i] = rb.restype == RTPOINT && i == 2 ? 0.0 : rb.resval.rpoint[i];
  return true;
}

double Normalized(double a) {
  a = std::fmod(a, kTwoPi);
  if (a < 0) a += kTwoPi;
  return a >= kTwoPi ? 0.0 : a;
}

// A typed angle (measured from ANGBASE in the ANGDIR sense) as a
// direction from east, anticlockwise.
bool TypedAngle(const std::wstring& text, double& absolute) {
  double a = 0;
  if (acutAngToF(text.c_str(), -1, &a) != RTNORM) return false;
  const double base = RealVar(L"ANGBASE", 0.0);
  absolute = base + (ShortVar(L"ANGDIR", 0) == 1 ? -a : a);
  return true;
}

// A distance in the drawing's linear units (LUNITS, read once by the caller
// that reads several).
// A plain decimal number means the same in every unit mode: read it
// without the unit parser (points are typed by the thousand in scripts).
bool PlainNumber(const std::wstring& text, double& d) {
  const size_t b = text.find_first_not_of(L" \t");
  if (b == std::wstring::npos) return false;
  const size_t e = text.find_last_not_of(L" \t") + 1;
  char buf[64];
  size_t n = 0;
  for (size_t i = b; i < e; ++i) {
    const wchar_t c = text[i];
    if (n == sizeof buf || !((c >= L'0' && c <= L'9') || c == L'.' || c == L'e' || c == L'E' || c == L'-' || c == L'+'))
      return false;
    buf[n++] = static_cast<char>(c);
  }
  const char* p = buf[0] == '+' ? buf + 1 : buf;
  const auto r = std::from_chars(p, buf + n, d);
  return r.ec == std::errc() && r.ptr == buf + n;
}

bool Distance(const std::wstring& text, double& d, int lunits = -1) {
  if (PlainNumber(text, d)) return true;
  return acutDisToF(Trim(text).c_str(), lunits, &d) == RTNORM;
}

bool IsInteger(const std::wstring& text, long long& v) {
  const std::string ascii = ToUtf8(Trim(text));
  if (ascii.empty()) return false;
  const char* b = ascii.data();
  if (*b == '+') ++b;
  auto r = std::from_chars(b, ascii.data() + ascii.size(), v);
  return r.ec == std::errc() && r.ptr == ascii.data() + ascii.size();
}

std::wstring Shortest(double v) {
  char buf[64];
  auto r = std::to_chars(buf, buf + sizeof buf, v);
  return FromUtf8(std::string(buf, r.ptr));
}

Resolution Refuse(std::wstring& message, std::wstring text) {
  message = std::move(text);
  return Resolution::kRefused;
}

// The conditions on a number: nonzero, not negative.
bool NumberAllowed(const Request& r, double v, std::wstring& message) {
  const bool noZero = (r.flags & kNoZero) && v == 0;
  const bool noNegative = (r.flags & kNoNegative) && v < 0;
  if (!noZero && !noNegative) return true;
  const bool both = (r.flags & kNoZero) && (r.flags & kNoNegative);
  message = both ? L"Value must be positive and nonzero." : noZero ? L"Value must be nonzero." : L"Value must be positive.";
  return false;
}

// LIMCHECK keeps points within LIMMIN..LIMMAX (in X and Y), unless the
// request says otherwise.
bool WithinLimits(const Request& r, const double p[3], std::wstring& message) {
  if ((r.flags & kNoLimits) || ShortVar(L"LIMCHECK", 0) == 0) return true;
  double lo[3], hi[3];
  if (!PointVar(L"LIMMIN", lo) || !PointVar(L"LIMMAX", hi)) return true;
  if (p[0] >= lo[0] && p[0] <= hi[0] && p[1] >= lo[1] && p[1] <= hi[1]) return true;
  message = L"**Outside limits";
  return false;
}

Resolution KeywordAnswer(Answer& a, std::wstring text) {
  a.status = RTKWORD;
  a.text = std::move(text);
  return Resolution::kDone;
}

Resolution AngleAnswer(const Request& r, double absolute, Answer& a, std::wstring& message) {
  // getorient keeps the direction from east; getangle measures from ANGBASE.
  a.real = r.want == Want::kOrient ? Normalized(absolute) : Normalized(absolute - RealVar(L"ANGBASE", 0.0));
  if ((r.flags & kNoZero) && a.real == 0) return Refuse(message, L"Value must be nonzero.");
  a.status = RTNORM;
  return Resolution::kDone;
}

Resolution FromPoint(const Request& r, const double p[3], Answer& a, std::wstring& message) {
  for (int i = 0; i < 3; ++i) a.point[i] = p[i];
  switch (r.want) {
    case Want::kPoint:
    case Want::kCorner:
      if (!WithinLimits(r, p, message)) return Resolution::kRefused;
      a.status = RTNORM;
      return Resolution::kDone;
    case Want::kDist:
    case Want::kAngle:
    case Want::kOrient:
      if (r.hasBase) return ResolveSecondPoint(r, r.base, p, a, message);
      return Resolution::kNeedsSecondPoint;
    case Want::kEntity:
      if (!PickEntityAt(p, a.name)) {
        a.status = RTERROR;  // nothing there: the caller reports the missed pick
        return Resolution::kDone;
      }
      a.hasName = true;
      a.status = RTNORM;
      return Resolution::kDone;
    case Want::kSelect:
      a.status = RTNORM;  // the selection decides what a point takes
      return Resolution::kDone;
    default:
      return Refuse(message, WrongAnswerMessage(r));
  }
}

// A number at a point prompt that has a base point: the point that far
// from the base toward the cursor. A host without a screen has its cursor
// resting on the X axis of the base, so the point lies that way.
bool DirectDistance(const Request& r, const std::wstring& text, double p[3]) {
  if (!r.hasBase || (r.want != Want::kPoint && r.want != Want::kCorner)) return false;
  if ((r.flags & kArbitrary) && !(r.flags & kDirectDistance)) return false;  // arbitrary input comes first
  double d = 0;
  if (!Distance(text, d)) return false;
  p[0] = r.base[0] + d;
  p[1] = r.base[1];
  p[2] = r.base[2];
  return true;
}

Resolution FromText(const Request& r, const std::wstring& typed, Answer& a, std::wstring& message) {
  if (r.want == Want::kString) {
    a.status = RTNORM;
    a.text = typed;
    return Resolution::kDone;
  }
  const std::wstring text = Trim(typed);
  // The program's keywords come before any reading of the text.
  const std::wstring global = r.keywords.match(text);
  if (!global.empty()) return KeywordAnswer(a, global);
  switch (r.want) {
    case Want::kInt: {
      long long v = 0;
      if (IsInteger(text, v)) {
        if (v < -32768 || v > 32767) return Refuse(message, L"Requires an integer between -32768 and 32767.");
        if (!NumberAllowed(r, static_cast<double>(v), message)) return Resolution::kRefused;
        a.status = RTNORM;
        a.integer = static_cast<int>(v);
        return Resolution::kDone;
      }
      break;
    }
    case Want::kReal: {
      double v = 0;
      if (acutDisToF(text.c_str(), 2, &v) == RTNORM || acutDisToF(text.c_str(), 1, &v) == RTNORM) {
        if (!NumberAllowed(r, v, message)) return Resolution::kRefused;
        a.status = RTNORM;
        a.real = v;
        return Resolution::kDone;
      }
      break;
    }
    case Want::kDist: {
      double v = 0;
      if (Distance(text, v)) {
        if (!NumberAllowed(r, v, message)) return Resolution::kRefused;
        a.status = RTNORM;
        a.real = v;
        return Resolution::kDone;
      }
      break;
    }
    case Want::kAngle:
    case Want::kOrient: {
      double absolute = 0;
      if (TypedAngle(text, absolute)) return AngleAnswer(r, absolute, a, message);
      break;
    }
    default:
      break;
  }
  // Points answer point, distance, angle, entity and selection prompts.
  double p[3];
  const bool takesPoints = r.want != Want::kInt && r.want != Want::kReal && r.want != Want::kKword;
  if (takesPoints && (DirectDistance(r, text, p) || ParsePoint(text, p))) return FromPoint(r, p, a, message);
  if (r.flags & kArbitrary) return KeywordAnswer(a, typed);
  return Refuse(message, WrongAnswerMessage(r));
}

bool IsUpperLetter(wchar_t c) { return ToUpperChar(c) == c && ToLowerChar(c) != c; }

// The shortest form of a word: its capital letters; without any (or with
// nothing but capitals) the whole word.
std::wstring Abbreviation(const std::wstring& word) {
  std::wstring abbrev;
  for (wchar_t c : word)
    if (IsUpperLetter(c)) abbrev += c;
  return abbrev.empty() ? ToUpper(word) : abbrev;
}

}  // namespace

std::wstring Token::asText() const {
  switch (kind) {
    case kText: return text;
    case kReal: return Shortest(value[0]);
    case kInt: return std::to_wstring(integer);
    case kPoint:
    case kPick: {
      std::wstring s = Shortest(value[0]) + L"," + Shortest(value[1]);
      if (dim == 3) s += L"," + Shortest(value[2]);
      return s;
    }
    default: return L"";
  }
}

Keywords::Keywords(const std::wstring& list) {
  std::vector<std::wstring> locals, globals;
  bool inGlobals = false;
  size_t i = 0;
  while (i < list.size()) {
    while (i < list.size() && (list[i] == L' ' || list[i] == L'\t')) ++i;
    size_t j = i;
    while (j < list.size() && list[j] != L' ' && list[j] != L'\t') ++j;
    if (j > i) {
      std::wstring word = list.substr(i, j - i);
      if (word == L"_") inGlobals = true;
      else (inGlobals ? globals : locals).push_back(word);
    }
    i = j;
  }
  auto words = std::make_shared<std::vector<Keyword>>();
  for (size_t k = 0; k < locals.size(); ++k) {
    Keyword w;
    std::wstring word = locals[k];
    const size_t comma = word.find(L',');
    if (comma != std::wstring::npos) {
      // "LTYPE,LT": the abbreviation is spelled out after the comma.
      w.abbrev = ToUpper(word.substr(comma + 1));
      word.erase(comma);
    } else {
      w.abbrev = Abbreviation(word);
    }
    w.local = word;
    w.global = k < globals.size() ? globals[k] : word;
    w.upperLocal = ToUpper(w.local);
    w.upperGlobal = ToUpper(w.global);
    w.globalAbbrev = Abbreviation(w.global);
    words->push_back(std::move(w));
  }
  if (!words->empty()) mWords = std::move(words);
}

const std::vector<Keyword>& Keywords::words() const {
  static const std::vector<Keyword> none;
  return mWords ? *mWords : none;
}

std::wstring Keywords::match(const std::wstring& typed) const {
  if (typed.empty() || !mWords) return L"";
  const bool globalOnly = typed[0] == L'_';
  const std::wstring_view text = std::wstring_view(typed).substr(globalOnly ? 1 : 0);
  if (text.empty()) return L"";
  // Whether the first n characters of text, upper-cased, are those of word.
  auto sameStart = [&](const std::wstring& word, size_t n) {
    if (n > word.size() || n > text.size()) return false;
    for (size_t i = 0; i < n; ++i)
      if (ToUpperChar(text[i]) != word[i]) return false;
    return true;
  };
  // The word itself, its abbreviation, or anything between the two.
  auto fits = [&](const std::wstring& full, const std::wstring& abbrev) {
    if (text.size() == abbrev.size() && sameStart(abbrev, abbrev.size())) return true;
    if (text.size() == full.size() && sameStart(full, full.size())) return true;
    return text.size() > abbrev.size() && full.compare(0, abbrev.size(), abbrev) == 0 && sameStart(full, text.size());
  };
  for (const Keyword& w : *mWords) {
    if (globalOnly ? fits(w.upperGlobal, w.globalAbbrev) : fits(w.upperLocal, w.abbrev)) return w.global;
  }
  return L"";
}

namespace {

const wchar_t* SelectionOptionsMessage() {
  return L"*Invalid selection*\nExpects a point or\n"
         L"Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Group/Add/Remove/Multiple/Previous/Undo/AUto/"
         L"SIngle/SUbobject/Object";
}

}  // namespace

std::wstring WrongAnswerMessage(const Request& r) {
  switch (r.want) {
    case Want::kPoint:
    case Want::kCorner:
    case Want::kEntity:
      return r.keywords.empty() ? L"Invalid point." : L"Point or option keyword required.";
    case Want::kDist:
      return r.hasBase ? L"Requires numeric distance or second point." : L"Requires numeric distance or two points.";
    case Want::kAngle:
    case Want::kOrient: return L"Requires valid numeric angle or second point.";
    case Want::kReal: return L"Requires numeric value.";
    case Want::kInt: return L"Requires an integer value.";
    case Want::kKword: return L"Invalid option keyword.";
    case Want::kSelect: return SelectionOptionsMessage();
    default: return L"Invalid input.";
  }
}

namespace {

// The body of a typed point (without "@" and "*"): x,y[,z], or polar
// d<a, cylindrical d<a,z, spherical d<a<b. twoD tells that no z was given.
bool ParseCoordinates(const std::wstring& text, double v[3], bool& twoD) {
  twoD = false;
  const int lunits = units::CurrentSettings().lunits;  // read once for all the numbers
  const size_t lt = text.find(L'<');
  if (lt != std::wstring::npos) {
    double d = 0, a = 0;
    if (!Distance(text.substr(0, lt), d, lunits)) return false;
    std::wstring rest = text.substr(lt + 1);
    const size_t lt2 = rest.find(L'<');
    if (lt2 != std::wstring::npos) {
      // Spherical: the second angle rises from the XY plane.
      double rise = 0;
      if (!TypedAngle(Trim(rest.substr(0, lt2)), a) ||
          acutAngToF(Trim(rest.substr(lt2 + 1)).c_str(), -1, &rise) != RTNORM)
        return false;
      v[0] = d * std::cos(rise) * std::cos(a);
      v[1] = d * std::cos(rise) * std::sin(a);
      v[2] = d * std::sin(rise);
      return true;
    }
    const size_t comma = rest.find(L',');
    if (comma != std::wstring::npos) {
      if (!Distance(rest.substr(comma + 1), v[2], lunits)) return false;
      rest.erase(comma);
    } else {
      twoD = true;
    }
    if (!TypedAngle(Trim(rest), a)) return false;
    v[0] = d * std::cos(a);
    v[1] = d * std::sin(a);
    return true;
  }
  int n = 0;
  size_t from = 0;
  for (;;) {
    const size_t comma = text.find(L',', from);
    const std::wstring part = text.substr(from, comma == std::wstring::npos ? std::wstring::npos : comma - from);
    if (n == 3 || !Distance(part, v[n], lunits)) return false;
    ++n;
    if (comma == std::wstring::npos) break;
    from = comma + 1;
  }
  twoD = n == 2;
  return n >= 2;
}

bool WcsToUcs(const double in[3], bool displacement, double out[3]) {
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = 0;
  to.resval.rint = 1;
  return acedTrans(in, &from, &to, displacement ? 1 : 0, out) == RTNORM;
}

}  // namespace

bool ParsePoint(const std::wstring& typed, double point[3]) {
  std::wstring text = Trim(typed);
  if (text.empty()) return false;
  bool relative = false, world = false;
  if (text[0] == L'@') {
    relative = true;
    text = Trim(text.substr(1));
  }
  if (!text.empty() && (text[0] == L'*' || (!relative && text[0] == L'#'))) {
    world = text[0] == L'*';  // "#" only insists on absolute input
    text = Trim(text.substr(1));
  }
  double origin[3] = {0.0, 0.0, 0.0};
  if (relative) PointVar(L"LASTPOINT", origin);
  if (text.empty()) {
    if (!relative) return false;
    for (int i = 0; i < 3; ++i) point[i] = origin[i];  // "@": the last point itself
    return true;
  }
  double v[3] = {0.0, 0.0, 0.0};
  bool twoD = false;
  if (!ParseCoordinates(text, v, twoD)) return false;
  // A 2D point lies at the current elevation; a 2D offset keeps the z.
  if (twoD && !relative) v[2] = RealVar(L"ELEVATION", 0.0);
  if (world) {
    double ucs[3];
    if (!WcsToUcs(v, relative, ucs)) return false;
    for (int i = 0; i < 3; ++i) v[i] = ucs[i];
  }
  for (int i = 0; i < 3; ++i) point[i] = origin[i] + v[i];
  return true;
}

Resolution ResolveSecondPoint(const Request& r, const double first[3], const double second[3], Answer& a,
                              std::wstring& message) {
  const double dx = second[0] - first[0], dy = second[1] - first[1];
  const double dz = (r.flags & kIgnoreZ) ? 0.0 : second[2] - first[2];
  if (r.want == Want::kDist) {
    const double d = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (!NumberAllowed(r, d, message)) return Resolution::kRefused;
    a.real = d;
    a.status = RTNORM;
    return Resolution::kDone;
  }
  return AngleAnswer(r, std::atan2(dy, dx), a, message);
}

Resolution Resolve(const Request& r, const Token& t, Answer& a, std::wstring& message) {
  a = Answer{};
  switch (t.kind) {
    case Token::kCancel:
      a.status = RTCAN;
      return Resolution::kDone;
    case Token::kEnter:
      if (r.want == Want::kString) {
        a.status = RTNORM;
        return Resolution::kDone;
      }
      // Arbitrary input outranks "no null": Enter is then the empty text.
      if ((r.flags & kArbitrary) && (r.flags & kNoNull)) return KeywordAnswer(a, L"");
      if (r.flags & kNoNull) return Refuse(message, WrongAnswerMessage(r));
      a.status = RTNONE;
      return Resolution::kDone;
    case Token::kText:
      return FromText(r, t.text, a, message);
    case Token::kReal:
    case Token::kInt:
      return FromText(r, t.asText(), a, message);
    case Token::kPoint:
      if (r.want == Want::kString || r.want == Want::kKword || r.want == Want::kInt || r.want == Want::kReal)
        return FromText(r, t.asText(), a, message);
      {
        double p[3] = {t.value[0], t.value[1], t.dim == 3 ? t.value[2] : RealVar(L"ELEVATION", 0.0)};
        return FromPoint(r, p, a, message);
      }
    case Token::kPick:
    case Token::kEname:
      if (r.want == Want::kEntity || r.want == Want::kSelect) {
        a.status = RTNORM;
        a.hasName = true;
        a.name[0] = t.name[0];
        a.name[1] = t.name[1];
        for (int i = 0; i < 3; ++i) a.point[i] = t.value[i];
        return Resolution::kDone;
      }
      if (t.kind == Token::kPick && (r.want == Want::kPoint || r.want == Want::kCorner)) {
        double p[3] = {t.value[0], t.value[1], t.value[2]};
        return FromPoint(r, p, a, message);
      }
      return Refuse(message, WrongAnswerMessage(r));
    case Token::kPickset:
      if (r.want != Want::kSelect) return Refuse(message, WrongAnswerMessage(r));
      a.status = RTNORM;
      a.hasName = a.isSet = true;
      a.name[0] = t.name[0];
      a.name[1] = t.name[1];
      return Resolution::kDone;
    default:
      return Refuse(message, WrongAnswerMessage(r));
  }
}

}  // namespace kelhost::editor
