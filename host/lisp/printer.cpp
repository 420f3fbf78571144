#include "lisp/printer.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <vector>

namespace kelhost::lisp {
namespace {

std::wstring Widen(const std::string& s) { return std::wstring(s.begin(), s.end()); }

std::wstring Hex(std::uint64_t v, int width) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%0*llx", width, static_cast<unsigned long long>(v));
  return Widen(buf);
}

std::wstring Address(const Value* v) { return L"@" + Hex(reinterpret_cast<std::uintptr_t>(v), 16); }

void PrintAtom(const Value* v, bool escape, std::wstring& out) {
  if (!v) {
    out += L"nil";
    return;
  }
  switch (v->kind) {
    case Kind::Int:
      out += std::to_wstring(static_cast<const IntValue*>(v)->value);
      return;
    case Kind::Real:
      out += FormatReal(static_cast<const RealValue*>(v)->value);
      return;
    case Kind::Str: {
      const std::wstring& s = static_cast<const StrValue*>(v)->value;
      out += escape ? QuoteString(s) : s;
      return;
    }
    case Kind::Sym:
      out += static_cast<const Symbol*>(v)->name;
      return;
    case Kind::Subr:
      out += L"#<SUBR " + Address(v) + L" " + static_cast<const Subr*>(v)->name + L">";
      return;
    case Kind::USubr: {
      const std::wstring& name = static_cast<const USubr*>(v)->name;
      out += L"#<USUBR " + Address(v) + L" " + (name.empty() ? L"-lambda-" : name) + L">";
      return;
    }
    case Kind::ExSubr:
      out += L"#<EXRXSUBR " + Address(v) + L" " + static_cast<const ExSubr*>(v)->name + L">";
      return;
    case Kind::Ename:
      out += L"<Entity name: " + Hex(static_cast<std::uint64_t>(static_cast<const NameValue*>(v)->name[0]), 1) + L">";
      return;
    case Kind::Pickset:
      out += L"<Selection set: " + Hex(static_cast<std::uint64_t>(static_cast<const NameValue*>(v)->name[0]), 1) +
             L">";
      return;
    case Kind::File:
      out += L"#<file " + QuoteString(static_cast<const FileValue*>(v)->name) + L">";
      return;
    case Kind::CatchError:
      out += L"#<%catch-all-apply-error%>";
      return;
    case Kind::Cons:
      break;  // lists are walked by PrintValue
  }
}

}  // namespace

std::wstring FormatReal(double d) {
  if (std::isnan(d)) return std::signbit(d) ? L"-1.#IND" : L"1.#QNAN";
  if (std::isinf(d)) return d > 0 ? L"1.#INF" : L"-1.#INF";
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, d, std::chars_format::general, 6);
  std::string s(buf, res.ptr);
  size_t e = s.find('e');
  std::string mantissa = e == std::string::npos ? s : s.substr(0, e);
  if (mantissa.find('.') == std::string::npos) mantissa += ".0";
  if (e == std::string::npos) return Widen(mantissa);
  std::string exponent = s.substr(e + 1);  // "+06" / "-05"
  char sign = exponent[0];
  std::string digits = exponent.substr(1);
  while (digits.size() < 3) digits.insert(digits.begin(), '0');
  return Widen(mantissa + "e" + sign + digits);
}

std::wstring QuoteString(const std::wstring& s) {
  std::wstring out = L"\"";
  for (wchar_t c : s) {
    switch (c) {
      case L'"': out += L"\\\""; break;
      case L'\\': out += L"\\\\"; break;
      case L'\n': out += L"\\n"; break;
      case L'\r': out += L"\\r"; break;
      case L'\t': out += L"\\t"; break;
      case 27: out += L"\\e"; break;
      default:
        if (c >= 0 && c < 32) {
          wchar_t oct[5] = {L'\\', static_cast<wchar_t>(L'0' + ((c >> 6) & 7)), static_cast<wchar_t>(L'0' + ((c >> 3) & 7)),
                            static_cast<wchar_t>(L'0' + (c & 7)), 0};
          out += oct;
        } else {
          out += c;
        }
    }
  }
  out += L'"';
  return out;
}

// Walks lists with an explicit stack: printing never recurses, however
// deeply a value nests.
bool PrintValue(const Value* v, bool escape, std::wstring& out, size_t limit) {
  std::vector<const Cons*> open;
  const Value* pending = v;
  bool havePending = true;
  for (;;) {
    if (out.size() > limit) return false;
    if (havePending) {
      havePending = false;
      if (pending && pending->kind == Kind::Cons) {
        out += L'(';
        open.push_back(static_cast<const Cons*>(pending));
        pending = open.back()->car.get();
        havePending = true;
        continue;
      }
      PrintAtom(pending, escape, out);
    }
    if (open.empty()) return out.size() <= limit;
    const Value* next = open.back()->cdr.get();
    if (!next) {
      out += L')';
      open.pop_back();
    } else if (next->kind == Kind::Cons) {
      out += L' ';
      open.back() = static_cast<const Cons*>(next);
      pending = open.back()->car.get();
      havePending = true;
    } else {
      out += L" . ";
      PrintAtom(next, escape, out);
      out += L')';
      open.pop_back();
    }
  }
}

std::wstring Prin1(const ValuePtr& v) {
  std::wstring out;
  PrintValue(v, true, out);
  return out;
}

std::wstring Princ(const ValuePtr& v) {
  std::wstring out;
  PrintValue(v, false, out);
  return out;
}

}  // namespace kelhost::lisp
