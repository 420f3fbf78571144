// Strings: building, slicing, case, conversions to and from numbers and
// character codes, searching, trimming, wild-card matching, reading.
#include <algorithm>
#include <charconv>
#include <climits>

#include "arx/acutads.h"
#include "kelhost/text.h"
#include "lisp/machine.h"
#include "lisp/printer.h"
#include "lisp/reader.h"

namespace kelhost::lisp {
namespace {

ValuePtr Str(Machine& m, std::wstring s) {
  m.step(s.size() / 16 + 1);
  return MakeStr(std::move(s));
}

ValuePtr Strcat(Machine& m, Args& a) {
  size_t total = 0;
  for (const ValuePtr& v : a) total += StrArg(m, v).size();
  m.step(total / 16);
  std::wstring out;
  out.reserve(total);
  for (const ValuePtr& v : a) out += As<StrValue>(v)->value;
  return MakeStr(std::move(out));
}

ValuePtr Strlen(Machine& m, Args& a) {
  size_t total = 0;
  for (const ValuePtr& v : a) total += StrArg(m, v).size();
  return MakeInt(static_cast<std::int32_t>(total));
}

// (substr str start [length]): start counts from 1.
ValuePtr Substr(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  std::int32_t start = IntArg(m, a[1]);
  if (start < 1) m.raise(L"bad argument value: positive " + m.printed(a[1]));
  size_t count = std::wstring::npos;
  if (a.size() > 2) {
    std::int32_t length = IntArg(m, a[2]);
    if (length < 0) m.raise(L"bad argument value: non-negative " + m.printed(a[2]));
    count = static_cast<size_t>(length);
  }
  size_t from = static_cast<size_t>(start) - 1;
  if (from >= s.size()) return MakeStr(L"");
  return Str(m, s.substr(from, count));
}

ValuePtr Strcase(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  bool lower = a.size() > 1 && a[1];
  return Str(m, lower ? ToLower(s) : ToUpper(s));
}

ValuePtr Itoa(Machine& m, Args& a) { return MakeStr(std::to_wstring(IntArg(m, a[0]))); }

// Like the C library's atoi: leading blanks, a sign, then digits.
ValuePtr Atoi(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  size_t i = 0;
  while (i < s.size() && IsBlankChar(s[i])) ++i;
  bool negative = false;
  if (i < s.size() && (s[i] == L'+' || s[i] == L'-')) negative = s[i++] == L'-';
  std::int64_t v = 0;
  for (; i < s.size() && s[i] >= L'0' && s[i] <= L'9'; ++i) {
    v = v * 10 + (s[i] - L'0');
    if (v > std::int64_t{INT_MAX} + 1) break;
  }
  v = negative ? -v : v;
  if (v > INT_MAX) v = INT_MAX;
  if (v < INT_MIN) v = INT_MIN;
  return MakeInt(static_cast<std::int32_t>(v));
}

// The longest prefix (after blanks) that reads as a number; 0.0 if none.
double LeadingReal(const std::wstring& s) {
  size_t i = 0;
  while (i < s.size() && IsBlankChar(s[i])) ++i;
  std::string ascii;
  for (size_t k = i; k < s.size() && s[k] < 128; ++k) ascii += static_cast<char>(s[k]);
  size_t skip = !ascii.empty() && ascii[0] == '+' ? 1 : 0;
  double d = 0;
  std::from_chars(ascii.data() + skip, ascii.data() + ascii.size(), d);
  return d;
}

ValuePtr Atof(Machine& m, Args& a) { return MakeReal(LeadingReal(StrArg(m, a[0]))); }

ValuePtr Rtos(Machine& m, Args& a) {
  double v = NumArg(m, a[0]);
  int mode = a.size() > 1 ? IntArg(m, a[1]) : -1;
  int prec = a.size() > 2 ? IntArg(m, a[2]) : -1;
  wchar_t buf[512];
  if (acutRToS(v, mode, prec, buf, sizeof buf / sizeof buf[0]) != RTNORM)
    m.raise(L"bad argument value: " + m.printed(a.size() > 2 ? a[2] : a[1]));
  return MakeStr(buf);
}

ValuePtr Distof(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  int mode = a.size() > 1 ? IntArg(m, a[1]) : -1;
  ads_real v = 0;
  if (acutDisToF(s.c_str(), mode, &v) != RTNORM) return nullptr;
  return MakeReal(v);
}

ValuePtr Angtos(Machine& m, Args& a) {
  double v = NumArg(m, a[0]);
  int mode = a.size() > 1 ? IntArg(m, a[1]) : -1;
  int prec = a.size() > 2 ? IntArg(m, a[2]) : -1;
  wchar_t buf[512];
  if (acutAngToS(v, mode, prec, buf, sizeof buf / sizeof buf[0]) != RTNORM) return nullptr;
  return MakeStr(buf);
}

ValuePtr Chr(Machine& m, Args& a) {
  std::int32_t code = IntArg(m, a[0]);
  if (code < 0 || code > 0x10FFFF) m.raise(L"bad argument value: " + m.printed(a[0]));
  if (code == 0) return MakeStr(L"");
  return MakeStr(std::wstring(1, static_cast<wchar_t>(code)));
}

ValuePtr Ascii(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  return MakeInt(s.empty() ? 0 : static_cast<std::int32_t>(s[0]));
}

ValuePtr Read(Machine& m, Args& a) {
  if (a.empty()) return nullptr;
  Reader reader(m, StrArg(m, a[0]));
  ValuePtr v;
  try {
    reader.next(v);
  } catch (const ReadError& e) {
    m.raise(e.message);
  }
  return v;
}

ValuePtr Wcmatch(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  const std::wstring& pattern = StrArg(m, a[1]);
  m.step(s.size() / 16 + pattern.size() / 16);
  return m.truth(acutWcMatch(s.c_str(), pattern.c_str()) == RTNORM);
}

size_t StartArg(Machine& m, Args& a, size_t index) {
  if (a.size() <= index || !a[index]) return 0;
  std::int32_t start = IntArg(m, a[index]);
  return start < 0 ? 0 : static_cast<size_t>(start);
}

// (vl-string-search pattern string [start]): a 0-based position or nil.
ValuePtr StringSearch(Machine& m, Args& a) {
  const std::wstring& pattern = StrArg(m, a[0]);
  const std::wstring& s = StrArg(m, a[1]);
  size_t start = StartArg(m, a, 2);
  if (start > s.size()) return nullptr;
  size_t at = s.find(pattern, start);
  return at == std::wstring::npos ? nullptr : MakeInt(static_cast<std::int32_t>(at));
}

// (vl-string-subst new pattern string [start]): the first occurrence only.
ValuePtr StringSubst(Machine& m, Args& a) {
  const std::wstring& replacement = StrArg(m, a[0]);
  const std::wstring& pattern = StrArg(m, a[1]);
  std::wstring s = StrArg(m, a[2]);
  size_t start = StartArg(m, a, 3);
  size_t at = start > s.size() ? std::wstring::npos : s.find(pattern, start);
  if (at != std::wstring::npos) s.replace(at, pattern.size(), replacement);
  return Str(m, std::move(s));
}

template <bool Left, bool Right>
ValuePtr StringTrim(Machine& m, Args& a) {
  const std::wstring& set = StrArg(m, a[0]);
  const std::wstring& s = StrArg(m, a[1]);
  size_t from = 0, to = s.size();
  if (Left)
    while (from < to && set.find(s[from]) != std::wstring::npos) ++from;
  if (Right)
    while (to > from && set.find(s[to - 1]) != std::wstring::npos) --to;
  return Str(m, s.substr(from, to - from));
}

ValuePtr StringToList(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  m.step(s.size());
  ListBuilder b;
  for (wchar_t c : s) b.add(MakeInt(static_cast<std::int32_t>(c)));
  return b.take();
}

ValuePtr ListToString(Machine& m, Args& a) {
  std::wstring s;
  for (const ValuePtr& v : ListArg(m, a[0])) {
    std::int32_t code = IntArg(m, v);
    if (code < 0 || code > 0x10FFFF) m.raise(L"bad argument value: " + m.printed(v));
    if (code) s += static_cast<wchar_t>(code);
  }
  return Str(m, std::move(s));
}

// (vl-string-position code string [start [from-end]]).
ValuePtr StringPosition(Machine& m, Args& a) {
  wchar_t c = static_cast<wchar_t>(IntArg(m, a[0]));
  const std::wstring& s = StrArg(m, a[1]);
  size_t start = StartArg(m, a, 2);
  bool fromEnd = a.size() > 3 && a[3];
  size_t at = std::wstring::npos;
  if (start < s.size()) at = fromEnd ? s.rfind(c) : s.find(c, start);
  if (at == std::wstring::npos || at < start) return nullptr;
  return MakeInt(static_cast<std::int32_t>(at));
}

// (vl-string-translate source-set dest-set str): each character of str
// found in source-set becomes the character at the same place of dest-set
// (the last one of dest-set when it is shorter; kept when it is empty).
ValuePtr StringTranslate(Machine& m, Args& a) {
  const std::wstring& from = StrArg(m, a[0]);
  const std::wstring& to = StrArg(m, a[1]);
  std::wstring s = StrArg(m, a[2]);
  m.step(s.size() / 16 + 1);
  for (wchar_t& c : s) {
    const size_t at = from.find(c);
    if (at != std::wstring::npos && !to.empty()) c = to[std::min(at, to.size() - 1)];
  }
  return MakeStr(std::move(s));
}

// (vl-string-elt str position): the code of the character at a 0-based
// position.
ValuePtr StringElt(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  const std::int32_t at = IntArg(m, a[1]);
  if (at < 0 || static_cast<size_t>(at) >= s.size())
    m.raise(L"bad argument value: string position out of range " + m.printed(a[1]));
  return MakeInt(static_cast<std::int32_t>(s[static_cast<size_t>(at)]));
}

// (vl-string-mismatch str1 str2 [pos1 pos2 ignore-case]): the length of
// the common prefix of the two strings from those positions.
ValuePtr StringMismatch(Machine& m, Args& a) {
  const std::wstring& s1 = StrArg(m, a[0]);
  const std::wstring& s2 = StrArg(m, a[1]);
  size_t i = a.size() > 2 && a[2] ? static_cast<size_t>(std::max(0, IntArg(m, a[2]))) : 0;
  size_t j = a.size() > 3 && a[3] ? static_cast<size_t>(std::max(0, IntArg(m, a[3]))) : 0;
  const bool ignoreCase = a.size() > 4 && a[4];
  std::int32_t n = 0;
  for (; i < s1.size() && j < s2.size(); ++i, ++j, ++n) {
    const wchar_t c1 = ignoreCase ? ToUpperChar(s1[i]) : s1[i];
    const wchar_t c2 = ignoreCase ? ToUpperChar(s2[j]) : s2[j];
    if (c1 != c2) break;
  }
  return MakeInt(n);
}

// (acad_strlsort list): the strings in alphabetical order; nil when an
// element is not a string.
ValuePtr StrlSort(Machine& m, Args& a) {
  Args items = ListArg(m, a[0]);
  std::vector<std::wstring> texts;
  texts.reserve(items.size());
  for (const ValuePtr& v : items) {
    if (!Is(v, Kind::Str)) return nullptr;
    texts.push_back(As<StrValue>(v)->value);
  }
  m.step(texts.size());
  std::stable_sort(texts.begin(), texts.end(), [](const std::wstring& x, const std::wstring& y) {
    const int c = CompareNoCase(x, y);
    return c != 0 ? c < 0 : x < y;
  });
  ListBuilder b;
  for (std::wstring& t : texts) b.add(MakeStr(std::move(t)));
  return b.take();
}

// (angtof string [units]): an angle text in radians; nil when it does not
// read in those units.
ValuePtr Angtof(Machine& m, Args& a) {
  const std::wstring& s = StrArg(m, a[0]);
  const int units = a.size() > 1 && a[1] ? IntArg(m, a[1]) : -1;
  if (units < -1 || units > 4) return nullptr;
  ads_real v = 0;
  if (acutAngToF(s.c_str(), units, &v) != RTNORM) return nullptr;
  return MakeReal(v);
}

ValuePtr PrincToString(Machine& m, Args& a) { return Str(m, m.printed(a[0], false)); }
ValuePtr Prin1ToString(Machine& m, Args& a) { return Str(m, m.printed(a[0])); }

ValuePtr SymbolName(Machine& m, Args& a) { return MakeStr(SymArg(m, a[0])->name); }
ValuePtr SymbolValue(Machine& m, Args& a) { return SymArg(m, a[0])->value; }

}  // namespace

void RegisterStringBuiltins(Machine& m) {
  m.defineBuiltin(L"STRCAT", Strcat, 0, -1);
  m.defineBuiltin(L"STRLEN", Strlen, 0, -1);
  m.defineBuiltin(L"SUBSTR", Substr, 2, 3);
  m.defineBuiltin(L"STRCASE", Strcase, 1, 2);
  m.defineBuiltin(L"ITOA", Itoa, 1, 1);
  m.defineBuiltin(L"ATOI", Atoi, 1, 1);
  m.defineBuiltin(L"ATOF", Atof, 1, 1);
  m.defineBuiltin(L"RTOS", Rtos, 1, 3);
  m.defineBuiltin(L"DISTOF", Distof, 1, 2);
  m.defineBuiltin(L"ANGTOS", Angtos, 1, 3);
  m.defineBuiltin(L"CHR", Chr, 1, 1);
  m.defineBuiltin(L"ASCII", Ascii, 1, 1);
  m.defineBuiltin(L"READ", Read, 0, 1);
  m.defineBuiltin(L"WCMATCH", Wcmatch, 2, 2);
  m.defineBuiltin(L"VL-STRING-SEARCH", StringSearch, 2, 3);
  m.defineBuiltin(L"VL-STRING-SUBST", StringSubst, 3, 4);
  m.defineBuiltin(L"VL-STRING-TRIM", StringTrim<true, true>, 2, 2);
  m.defineBuiltin(L"VL-STRING-LEFT-TRIM", StringTrim<true, false>, 2, 2);
  m.defineBuiltin(L"VL-STRING-RIGHT-TRIM", StringTrim<false, true>, 2, 2);
  m.defineBuiltin(L"VL-STRING->LIST", StringToList, 1, 1);
  m.defineBuiltin(L"VL-LIST->STRING", ListToString, 1, 1);
  m.defineBuiltin(L"VL-STRING-POSITION", StringPosition, 2, 4);
  m.defineBuiltin(L"VL-PRINC-TO-STRING", PrincToString, 1, 1);
  m.defineBuiltin(L"VL-PRIN1-TO-STRING", Prin1ToString, 1, 1);
  m.defineBuiltin(L"VL-SYMBOL-NAME", SymbolName, 1, 1);
  m.defineBuiltin(L"VL-SYMBOL-VALUE", SymbolValue, 1, 1);
  m.defineBuiltin(L"VL-STRING-TRANSLATE", StringTranslate, 3, 3);
  m.defineBuiltin(L"VL-STRING-ELT", StringElt, 2, 2);
  m.defineBuiltin(L"VL-STRING-MISMATCH", StringMismatch, 2, 5);
  m.defineBuiltin(L"ACAD_STRLSORT", StrlSort, 1, 1);
  m.defineBuiltin(L"XSTRCASE", Strcase, 1, 2);
  m.defineBuiltin(L"ANGTOF", Angtof, 1, 2);
}

}  // namespace kelhost::lisp
