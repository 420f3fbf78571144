#include "editor/answers.h"

#include <charconv>
#include <cmath>
#include <cstdio>

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
bool Distance(const std::wstring& text, double& d, int lunits = -1) {
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

bool WantsNumber(Want w) { return w == Want::kDist || w == Want::kReal || w == Want::kInt; }

// The conditions on a number: nonzero, not negative.
bool NumberAllowed(const Request& r, double v, std::wstring& message) {
  const bool noZero = r.flags & kNoZero, noNeg = r.flags & kNoNegative;
  if ((noZero && v == 0) || (noNeg && v < 0)) {
    message = noZero && noNeg ? L"Value must be positive and nonzero." : noZero ? L"Value must be nonzero."
                                                                               : L"Value must be positive.";
    return false;
  }
  return true;
}

bool WithinLimits(const Request& r, const double p[3], std::wstring& message) {
  if ((r.flags & kNoLimits) || ShortVar(L"LIMCHECK", 0) == 0) return true;
  double lo[3], hi[3];
  if (!PointVar(L"LIMMIN", lo) || !PointVar(L"LIMMAX", hi)) return true;
  if (p[0] >= lo[0] && p[0] <= hi[0] && p[1] >= lo[1] && p[1] <= hi[1]) return true;
  message = L"**Outside limits";
  return false;
}

Resolution Refuse(std::wstring& message, std::wstring text) {
  message = std::move(text);
  return Resolution::kRefused;
}

// A typed keyword, or arbitrary text when the request takes any.
bool KeywordAnswer(const Request& r, const std::wstring& text, Answer& a) {
  const std::wstring global = r.keywords.match(Trim(text));
  if (!global.empty()) {
    a.status = RTKWORD;
    a.text = global;
    return true;
  }
  if (r.flags & kArbitrary) {
    a.status = RTKWORD;
    a.text = text;
    return true;
  }
  return false;
}

Resolution FromPoint(const Request& r, const double p[3], Answer& a, std::wstring& message) {
  switch (r.want) {
    case Want::kPoint:
    case Want::kCorner:
      if (!WithinLimits(r, p, message)) return Resolution::kRefused;
      for (int i = 0; i < 3; ++i) a.point[i] = p[i];
      a.status = RTNORM;
      return Resolution::kDone;
    case Want::kDist:
    case Want::kAngle:
    case Want::kOrient:
      if (r.hasBase) return ResolveSecondPoint(r, r.base, p, a, message);
      for (int i = 0; i < 3; ++i) a.point[i] = p[i];
      return Resolution::kNeedsSecondPoint;
    case Want::kEntity:
      for (int i = 0; i < 3; ++i) a.point[i] = p[i];
      if (!PickEntityAt(p, a.name)) {
        a.status = RTERROR;  // nothing there: the caller reports the missed pick
        return Resolution::kDone;
      }
      a.hasName = true;
      a.status = RTNORM;
      return Resolution::kDone;
    default:
      return Refuse(message, WrongAnswerMessage(r));
  }
}

Resolution FromText(const Request& r, const std::wstring& text, Answer& a, std::wstring& message) {
  switch (r.want) {
    case Want::kString:
      a.status = RTNORM;
      a.text = text;
      return Resolution::kDone;
    case Want::kKword:
      if (KeywordAnswer(r, text, a)) return Resolution::kDone;
      return Refuse(message, WrongAnswerMessage(r));
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
      if (acutDisToF(Trim(text).c_str(), 2, &v) == RTNORM || acutDisToF(Trim(text).c_str(), 1, &v) == RTNORM) {
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
      if (TypedAngle(text, absolute)) {
        a.status = RTNORM;
        a.real = r.want == Want::kOrient ? Normalized(absolute) : Normalized(absolute - RealVar(L"ANGBASE", 0.0));
        return Resolution::kDone;
      }
      break;
    }
    default:
      break;
  }
  // Points answer point, distance, angle and entity prompts.
  double p[3];
  if (r.want != Want::kInt && r.want != Want::kReal && ParsePoint(text, p)) return FromPoint(r, p, a, message);
  if (KeywordAnswer(r, text, a)) return Resolution::kDone;
  return Refuse(message, WrongAnswerMessage(r));
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
      w.abbrev = ToUpper(word.substr(comma + 1));
      word.erase(comma);
    } else {
      // The capital letters mark the shortest form; without any (or with
      // nothing but capitals) the whole word must be typed.
      for (wchar_t c : word)
        if (ToUpperChar(c) == c && ToLowerChar(c) != c) w.abbrev += c;
      if (w.abbrev.empty()) w.abbrev = ToUpper(word);
    }
    w.local = word;
    w.global = k < globals.size() ? globals[k] : word;
    words->push_back(std::move(w));
  }
  if (!words->empty()) mWords = std::move(words);
}

const std::vector<Keyword>& Keywords::words() const {
  static const std::vector<Keyword> none;
  return mWords ? *mWords : none;
}

std::wstring Keywords::match(const std::wstring& typed) const {
  if (typed.empty()) return L"";
  const bool globalOnly = typed[0] == L'_';
  const std::wstring text = ToUpper(globalOnly ? typed.substr(1) : typed);
  if (text.empty()) return L"";
  auto fits = [&](const std::wstring& word, const std::wstring& abbrev) {
    const std::wstring full = ToUpper(word);
    if (text == full || text == abbrev) return true;
    // Longer than the abbreviation: a prefix of the word that starts with it.
    return full.compare(0, abbrev.size(), abbrev) == 0 && text.size() > abbrev.size() &&
           full.compare(0, text.size(), text) == 0;
  };
  for (const Keyword& w : words()) {
    if (!globalOnly && fits(w.local, w.abbrev)) return w.global;
    if (globalOnly) {
      std::wstring abbrev;
      for (wchar_t c : w.global)
        if (ToUpperChar(c) == c && ToLowerChar(c) != c) abbrev += c;
      if (abbrev.empty()) abbrev = ToUpper(w.global);
      if (fits(w.global, abbrev)) return w.global;
    }
  }
  return L"";
}

std::wstring WrongAnswerMessage(const Request& r) {
  switch (r.want) {
    case Want::kPoint:
    case Want::kCorner:
      return r.keywords.empty() ? L"Invalid point." : L"Point or option keyword required.";
    case Want::kDist:
      return r.hasBase ? L"Requires numeric distance or second point." : L"Requires numeric distance or two points.";
    case Want::kAngle:
    case Want::kOrient: return L"Requires valid numeric angle or second point.";
    case Want::kReal: return L"Requires numeric value.";
    case Want::kInt: return L"Requires an integer value.";
    case Want::kKword: return L"Invalid option keyword.";
    case Want::kEntity: return L"Invalid point.";
    default: return L"Invalid input.";
  }
}

bool ParsePoint(const std::wstring& typed, double point[3]) {
  std::wstring text = Trim(typed);
  if (text.empty()) return false;
  double origin[3] = {0.0, 0.0, 0.0};
  bool relative = false;
  if (text[0] == L'@') {
    relative = true;
    PointVar(L"LASTPOINT", origin);
    text = Trim(text.substr(1));
    if (text.empty()) {
      for (int i = 0; i < 3; ++i) point[i] = origin[i];
      return true;
    }
  } else if (text[0] == L'#' || text[0] == L'*') {
    text = Trim(text.substr(1));  // absolute (in the headless host the UCS is the world)
  }
  const int lunits = units::CurrentSettings().lunits;
  const size_t lt = text.find(L'<');
  if (lt != std::wstring::npos) {
    double d = 0, a = 0;
    if (!Distance(text.substr(0, lt), d, lunits) || !TypedAngle(Trim(text.substr(lt + 1)), a)) return false;
    point[0] = origin[0] + d * std::cos(a);
    point[1] = origin[1] + d * std::sin(a);
    point[2] = relative ? origin[2] : RealVar(L"ELEVATION", 0.0);
    return true;
  }
  double v[3] = {0.0, 0.0, 0.0};
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
  if (n < 2) return false;
  if (n == 2) v[2] = relative ? 0.0 : RealVar(L"ELEVATION", 0.0);
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
  } else {
    const double absolute = std::atan2(dy, dx);
    a.real = r.want == Want::kOrient ? Normalized(absolute) : Normalized(absolute - RealVar(L"ANGBASE", 0.0));
  }
  a.status = RTNORM;
  return Resolution::kDone;
}

Resolution Resolve(const Request& r, const Token& t, Answer& a, std::wstring& message) {
  a = Answer{};
  switch (t.kind) {
    case Token::kCancel:
      a.status = RTCAN;
      return Resolution::kDone;
    case Token::kEnter:
      if ((r.flags & kArbitrary)) {
        a.status = RTKWORD;  // any input, the empty one included
        return Resolution::kDone;
      }
      if (r.want == Want::kString) {
        a.status = RTNORM;
        return Resolution::kDone;
      }
      if (r.flags & kNoNull) return Refuse(message, WrongAnswerMessage(r));
      a.status = RTNONE;
      return Resolution::kDone;
    case Token::kText:
      return FromText(r, t.text, a, message);
    case Token::kReal:
    case Token::kInt:
      return FromText(r, t.asText(), a, message);
    case Token::kPoint:
      if (r.want == Want::kString || r.want == Want::kKword || (WantsNumber(r.want) && r.want != Want::kDist))
        return FromText(r, t.asText(), a, message);
      {
        double p[3] = {t.value[0], t.value[1], t.dim == 3 ? t.value[2] : RealVar(L"ELEVATION", 0.0)};
        return FromPoint(r, p, a, message);
      }
    case Token::kPick:
    case Token::kEname:
      if (r.want == Want::kEntity) {
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
      if (r.want != Want::kEntity) return Refuse(message, WrongAnswerMessage(r));
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
