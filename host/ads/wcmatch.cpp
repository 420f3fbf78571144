// acutWcMatch: the platform's wild-card patterns (# @ . * ? ~ [...] [~...]
// ranges, ` escapes and comma-separated alternatives), case-sensitive.
#include <string>
#include <vector>

#include "arx/acutads.h"

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// ASCII and Latin-1 letters by table; beyond Latin-1 almost every
// character a name holds is a letter of some script.
bool IsAlpha(wchar_t c) {
  if ((c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z')) return true;
  if (c >= 0xC0 && c <= 0xFF) return c != 0xD7 && c != 0xF7;
  return c > 0xFF;
}

struct Element {
  enum Type { Literal, Digit, Alpha, NonAlnum, AnyOne, AnyRun, Set };
  explicit Element(Type t = Literal) : type(t) {}
  Type type;
  wchar_t ch = 0;
  bool negated = false;
  std::vector<std::pair<wchar_t, wchar_t>> ranges;

  bool matches(wchar_t c) const {
    switch (type) {
      case Literal: return c == ch;
      case Digit: return IsDigit(c);
      case Alpha: return IsAlpha(c);
      case NonAlnum: return !IsDigit(c) && !IsAlpha(c);
      case AnyOne: return true;
      case AnyRun: return true;
      case Set: {
        bool in = false;
        for (auto& r : ranges) in = in || (c >= r.first && c <= r.second);
        return in != negated;
      }
    }
    return false;
  }
};

struct Alternative {
  bool negated = false;
  std::vector<Element> elements;
};

// Inside brackets every character is literal except a leading ~ (negation),
// a ] right at the start (literal), and - between two characters (range).
size_t ParseSet(const std::wstring& p, size_t i, Element& e) {
  e.type = Element::Set;
  size_t k = i + 1;
  if (k < p.size() && p[k] == L'~') {
    e.negated = true;
    ++k;
  }
  size_t first = k;
  while (k < p.size() && (p[k] != L']' || k == first)) {
    wchar_t lo = p[k], hi = lo;
    if (k + 2 < p.size() && p[k + 1] == L'-' && p[k + 2] != L']') {
      hi = p[k + 2];
      k += 2;
    }
    e.ranges.emplace_back(lo, hi);
    ++k;
  }
  return k;  // at the closing bracket, or at the end when unclosed
}

std::vector<Alternative> Parse(const std::wstring& p) {
  std::vector<Alternative> alternatives(1);
  bool atStart = true;
  for (size_t i = 0; i < p.size(); ++i) {
    wchar_t c = p[i];
    Alternative& alt = alternatives.back();
    if (c == L',') {
      alternatives.emplace_back();
      atStart = true;
      continue;
    }
    if (c == L'~' && atStart) {
      alt.negated = true;
      atStart = false;
      continue;
    }
    atStart = false;
    Element e;
    switch (c) {
      case L'#': e.type = Element::Digit; break;
      case L'@': e.type = Element::Alpha; break;
      case L'.': e.type = Element::NonAlnum; break;
      case L'?': e.type = Element::AnyOne; break;
      case L'*': e.type = Element::AnyRun; break;
      case L'`':
        e.ch = i + 1 < p.size() ? p[++i] : c;
        break;
      case L'[': {
        size_t close = ParseSet(p, i, e);
        if (close >= p.size()) {  // unclosed: the bracket is an ordinary character
          e = Element();
          e.ch = c;
        } else {
          i = close;
        }
        break;
      }
      default: e.ch = c; break;
    }
    alt.elements.push_back(std::move(e));
  }
  return alternatives;
}

// Dynamic programming over pattern positions: linear in the pattern for
// each character, whatever the number of stars.
bool Matches(const std::vector<Element>& pattern, const std::wstring& s) {
  const size_t n = pattern.size();
  std::vector<char> reach(n + 1, 0), next(n + 1, 0);
  reach[0] = 1;
  for (size_t k = 0; k < n && pattern[k].type == Element::AnyRun; ++k) reach[k + 1] = 1;
  for (wchar_t c : s) {
    std::fill(next.begin(), next.end(), 0);
    for (size_t k = 0; k < n; ++k) {
      if (!reach[k]) continue;
      if (pattern[k].type == Element::AnyRun)
        next[k] = 1;
      else if (pattern[k].matches(c))
        next[k + 1] = 1;
    }
    // A star can also match nothing: carry reachability past it.
    for (size_t k = 0; k < n; ++k)
      if (next[k] && pattern[k].type == Element::AnyRun) next[k + 1] = 1;
    reach.swap(next);
  }
  return reach[n] != 0;
}

}  // namespace

int acutWcMatch(const ACHAR* string, const ACHAR* pattern) {
  if (!string || !pattern) return RTERROR;
  const std::wstring s(string);
  for (const Alternative& alt : Parse(pattern))
    if (Matches(alt.elements, s) != alt.negated) return RTNORM;
  return RTERROR;
}
