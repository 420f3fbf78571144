// DIESEL, the string expression language of menus and of menucmd's "M="
// (see lisp/diesel.h).
#include "lisp/diesel.h"

#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <ctime>
#include <vector>

#include "arx/acedads.h"
#include "arx/acutads.h"
#include "kelhost/text.h"

namespace kelhost::lisp {
namespace {

constexpr wchar_t kError[] = L"$?";
constexpr int kMaxDepth = 64;

bool Number(const std::wstring& s, double& out) {
  if (s.empty()) return false;
  wchar_t* end = nullptr;
  out = std::wcstod(s.c_str(), &end);
  while (end && (*end == L' ' || *end == L'\t')) ++end;
  return end && *end == 0;
}

std::wstring FromNumber(double v) {
  wchar_t buf[64];
  if (acutRToS(v, 2, 6, buf, 64) != RTNORM) return kError;
  std::wstring s = buf;
  if (s.find(L'.') != std::wstring::npos) {
    while (s.back() == L'0') s.pop_back();
    if (s.back() == L'.') s.pop_back();
  }
  return s;
}

std::wstring Variable(const std::wstring& name) {
  resbuf rb{};
  if (acedGetVar(name.c_str(), &rb) != RTNORM) return L"";
  switch (rb.restype) {
    case RTSHORT: return std::to_wstring(rb.resval.rint);
    case RTLONG: return std::to_wstring(rb.resval.rlong);
    case RTREAL: return FromNumber(rb.resval.rreal);
    case RTSTR: {
      std::wstring s = rb.resval.rstring ? rb.resval.rstring : L"";
      std::free(rb.resval.rstring);
      return s;
    }
    default: {
      std::wstring s;
      for (int i = 0; i < (rb.restype == RTPOINT ? 2 : 3); ++i) s += (i ? L"," : L"") + FromNumber(rb.resval.rpoint[i]);
      return s;
    }
  }
}

// edtime's picture: D DD DDD DDDD, M MO MON MONTH, YY YYYY, H HH MM SS MSEC,
// AM/PM; anything else is copied.
std::wstring EdTime(double julian, const std::wstring& picture) {
  const double days = julian - 2440587.5;  // from the Unix epoch
  const std::time_t t = static_cast<std::time_t>(std::floor(days * 86400.0));
  const int msec = static_cast<int>(std::lround((days * 86400.0 - std::floor(days * 86400.0)) * 1000)) % 1000;
  std::tm tm{};
  gmtime_r(&t, &tm);
  static const wchar_t* kDays[] = {L"Sunday", L"Monday", L"Tuesday", L"Wednesday", L"Thursday", L"Friday", L"Saturday"};
  static const wchar_t* kMonths[] = {L"January", L"February", L"March",     L"April",   L"May",      L"June",
                                     L"July",    L"August",   L"September", L"October", L"November", L"December"};
  auto two = [](int v) { return (v < 10 ? L"0" : L"") + std::to_wstring(v); };
  std::wstring out;
  const std::wstring up = ToUpper(picture);
  for (size_t i = 0; i < up.size();) {
    auto at = [&](const wchar_t* token) { return up.compare(i, std::wcslen(token), token) == 0; };
    if (at(L"DDDD")) out += kDays[tm.tm_wday], i += 4;
    else if (at(L"DDD")) out += std::wstring(kDays[tm.tm_wday]).substr(0, 3), i += 3;
    else if (at(L"DD")) out += two(tm.tm_mday), i += 2;
    else if (at(L"D")) out += std::to_wstring(tm.tm_mday), i += 1;
    else if (at(L"MONTH")) out += kMonths[tm.tm_mon], i += 5;
    else if (at(L"MON")) out += std::wstring(kMonths[tm.tm_mon]).substr(0, 3), i += 3;
    else if (at(L"MSEC")) out += std::to_wstring(1000 + msec).substr(1), i += 4;
    else if (at(L"MO")) out += two(tm.tm_mon + 1), i += 2;
    else if (at(L"MM")) out += two(tm.tm_min), i += 2;
    else if (at(L"M")) out += std::to_wstring(tm.tm_mon + 1), i += 1;
    else if (at(L"YYYY")) out += std::to_wstring(tm.tm_year + 1900), i += 4;
    else if (at(L"YY")) out += two(tm.tm_year % 100), i += 2;
    else if (at(L"HH")) out += two(tm.tm_hour), i += 2;
    else if (at(L"H")) out += std::to_wstring(tm.tm_hour), i += 1;
    else if (at(L"SS")) out += two(tm.tm_sec), i += 2;
    else if (at(L"AM/PM")) out += tm.tm_hour < 12 ? L"AM" : L"PM", i += 5;
    else out += picture[i], i += 1;
  }
  return out;
}

class Evaluator {
 public:
  explicit Evaluator(const std::wstring& text) : mText(text) {}

  // Text up to the end (or, inside a call, up to the ',' or ')' that ends
  // an argument), with every $(...) replaced by its value.
  std::wstring text(bool inCall, int depth) {
    std::wstring out;
    while (mPos < mText.size()) {
      const wchar_t c = mText[mPos];
      if (inCall && (c == L',' || c == L')')) break;
      if (c == L'"' && inCall) {
        ++mPos;
        while (mPos < mText.size() && mText[mPos] != L'"') out += mText[mPos++];
        if (mPos < mText.size()) ++mPos;
      } else if (c == L'$' && mPos + 1 < mText.size() && mText[mPos + 1] == L'(') {
        mPos += 2;
        out += call(depth + 1);
      } else {
        out += c;
        ++mPos;
      }
    }
    return out;
  }

 private:
  std::wstring call(int depth) {
    std::vector<std::wstring> args;
    for (;;) {
      args.push_back(depth > kMaxDepth ? std::wstring() : text(true, depth));
      if (mPos >= mText.size()) return kError;  // no closing parenthesis
      if (mText[mPos++] == L')') break;
    }
    if (depth > kMaxDepth) return kError;
    return apply(args);
  }

  static std::wstring apply(std::vector<std::wstring>& a) {
    std::wstring fn = ToLower(a[0]);
    while (!fn.empty() && fn.back() == L' ') fn.pop_back();
    while (!fn.empty() && fn.front() == L' ') fn.erase(0, 1);
    const size_t n = a.size() - 1;
    std::vector<double> v;
    auto numbers = [&](size_t from) {
      v.clear();
      for (size_t i = from; i <= n; ++i) {
        double x;
        if (!Number(a[i], x)) return false;
        v.push_back(x);
      }
      return true;
    };
    if (fn == L"+" || fn == L"-" || fn == L"*" || fn == L"/") {
      if (n < 1 || !numbers(1)) return kError;
      double r = v[0];
      for (size_t i = 1; i < v.size(); ++i) {
        if (fn == L"+") r += v[i];
        else if (fn == L"-") r -= v[i];
        else if (fn == L"*") r *= v[i];
        else if (v[i] == 0) return kError;
        else r /= v[i];
      }
      return FromNumber(r);
    }
    if (fn == L"=" || fn == L"<" || fn == L">" || fn == L"!=" || fn == L"<=" || fn == L">=") {
      if (n != 2 || !numbers(1)) return kError;
      const bool r = fn == L"=" ? v[0] == v[1] : fn == L"<" ? v[0] < v[1] : fn == L">" ? v[0] > v[1]
                   : fn == L"!=" ? v[0] != v[1] : fn == L"<=" ? v[0] <= v[1] : v[0] >= v[1];
      return r ? L"1" : L"0";
    }
    if (fn == L"and" || fn == L"or" || fn == L"xor") {
      if (n < 1 || !numbers(1)) return kError;
      long r = static_cast<long>(v[0]);
      for (size_t i = 1; i < v.size(); ++i) {
        const long x = static_cast<long>(v[i]);
        r = fn == L"and" ? (r & x) : fn == L"or" ? (r | x) : (r ^ x);
      }
      return std::to_wstring(r);
    }
    if (fn == L"fix") return n == 1 && numbers(1) ? std::to_wstring(static_cast<long>(v[0])) : kError;
    if (fn == L"eq") return n == 2 ? (a[1] == a[2] ? L"1" : L"0") : kError;
    if (fn == L"if") {
      double c;
      if (n < 2 || n > 3 || !Number(a[1], c)) return kError;
      return c != 0 ? a[2] : (n == 3 ? a[3] : L"");
    }
    if (fn == L"getvar") return n == 1 ? Variable(a[1]) : kError;
    if (fn == L"getenv") {
      if (n != 1) return kError;
      const char* e = std::getenv(ToUtf8(a[1]).c_str());
      return e ? FromUtf8(e) : L"";
    }
    if (fn == L"upper") return n == 1 ? ToUpper(a[1]) : kError;
    if (fn == L"strlen") return n == 1 ? std::to_wstring(a[1].size()) : kError;
    if (fn == L"substr") {
      double start, count = 1e9;
      if (n < 2 || n > 3 || !Number(a[2], start) || (n == 3 && !Number(a[3], count)) || start < 1) return kError;
      const size_t from = static_cast<size_t>(start) - 1;
      return from >= a[1].size() ? L"" : a[1].substr(from, static_cast<size_t>(count));
    }
    if (fn == L"index" || fn == L"nth") {
      double which;
      if (n < 2 || !Number(a[1], which) || which < 0) return kError;
      const size_t k = static_cast<size_t>(which);
      if (fn == L"nth") return k + 2 <= n ? a[k + 2] : L"";
      std::vector<std::wstring> parts;
      std::wstring part;
      for (wchar_t ch : a[2]) {
        if (ch == L',') parts.push_back(part), part.clear();
        else part += ch;
      }
      parts.push_back(part);
      return k < parts.size() ? parts[k] : L"";
    }
    if (fn == L"rtos" || fn == L"angtos") {
      double x, mode = -1, prec = -1;
      if (n < 1 || n > 3 || !Number(a[1], x) || (n >= 2 && !Number(a[2], mode)) || (n == 3 && !Number(a[3], prec)))
        return kError;
      wchar_t buf[128];
      const int s = fn == L"rtos" ? acutRToS(x, static_cast<int>(mode), static_cast<int>(prec), buf, 128)
                                  : acutAngToS(x, static_cast<int>(mode), static_cast<int>(prec), buf, 128);
      return s == RTNORM ? std::wstring(buf) : kError;
    }
    if (fn == L"edtime") {
      double julian;
      if (n != 2 || !Number(a[1], julian)) return kError;
      return EdTime(julian, a[2]);
    }
    if (fn == L"eval") return n == 1 ? EvaluateDiesel(a[1]) : kError;
    return kError + std::wstring(L"(") + a[0] + L")";
  }

  const std::wstring& mText;
  size_t mPos = 0;
};

}  // namespace

std::wstring EvaluateDiesel(const std::wstring& text) {
  Evaluator e(text);
  return e.text(false, 0);
}

}  // namespace kelhost::lisp
