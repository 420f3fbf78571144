// Comparisons, type tests and the type function.
#include "lisp/equality.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

bool Comparable(const ValuePtr& v) { return IsNumber(v) || Is(v, Kind::Str); }

// Numbers compare by value, strings by character codes.
int Compare(Machine& m, const ValuePtr& a, const ValuePtr& b) {
  if (IsNumber(a) && IsNumber(b)) {
    double x = NumberOf(a), y = NumberOf(b);
    return x < y ? -1 : (x > y ? 1 : 0);
  }
  if (Is(a, Kind::Str) && Is(b, Kind::Str)) {
    int c = As<StrValue>(a)->value.compare(As<StrValue>(b)->value);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
  }
  m.badArgument(L"numberp: ", Comparable(a) ? b : a);
}

bool Same(const ValuePtr& a, const ValuePtr& b) {
  if (IsNumber(a) && IsNumber(b)) return NumberOf(a) == NumberOf(b);
  return Eq(a, b);
}

ValuePtr NumEqual(Machine& m, Args& a) {
  for (size_t k = 1; k < a.size(); ++k)
    if (!Same(a[k - 1], a[k])) return nullptr;
  return m.truth(true);
}

// T when no two successive arguments are equal.
ValuePtr NotEqual(Machine& m, Args& a) {
  for (size_t k = 1; k < a.size(); ++k)
    if (Same(a[k - 1], a[k])) return nullptr;
  return m.truth(true);
}

template <class Holds>
ValuePtr Ordered(Machine& m, Args& a, Holds holds) {
  for (size_t k = 1; k < a.size(); ++k)
    if (!holds(Compare(m, a[k - 1], a[k]))) return nullptr;
  return m.truth(true);
}

ValuePtr Less(Machine& m, Args& a) { return Ordered(m, a, [](int c) { return c < 0; }); }
ValuePtr LessEq(Machine& m, Args& a) { return Ordered(m, a, [](int c) { return c <= 0; }); }
ValuePtr Greater(Machine& m, Args& a) { return Ordered(m, a, [](int c) { return c > 0; }); }
ValuePtr GreaterEq(Machine& m, Args& a) { return Ordered(m, a, [](int c) { return c >= 0; }); }

ValuePtr EqFn(Machine& m, Args& a) { return m.truth(Eq(a[0], a[1])); }

ValuePtr EqualFn(Machine& m, Args& a) {
  double fuzz = a.size() > 2 ? NumArg(m, a[2]) : 0.0;
  return m.truth(Equal(a[0], a[1], fuzz, &m));
}

ValuePtr Minusp(Machine& m, Args& a) { return m.truth(NumArg(m, a[0]) < 0); }
ValuePtr Zerop(Machine& m, Args& a) { return m.truth(NumArg(m, a[0]) == 0); }
ValuePtr Numberp(Machine& m, Args& a) { return m.truth(IsNumber(a[0])); }
ValuePtr Listp(Machine& m, Args& a) { return m.truth(!a[0] || IsCons(a[0])); }
ValuePtr Atom(Machine& m, Args& a) { return m.truth(!IsCons(a[0])); }
ValuePtr Null(Machine& m, Args& a) { return m.truth(!a[0]); }
ValuePtr Consp(Machine& m, Args& a) { return m.truth(IsCons(a[0])); }
ValuePtr Symbolp(Machine& m, Args& a) { return m.truth(!a[0] || Is(a[0], Kind::Sym)); }

ValuePtr Boundp(Machine& m, Args& a) {
  if (!a[0]) return nullptr;
  return m.truth(SymArg(m, a[0])->value != nullptr);
}

ValuePtr Type(Machine& m, Args& a) {
  if (!a[0]) return nullptr;
  const wchar_t* name = L"";
  switch (a[0]->kind) {
    case Kind::Int: name = L"INT"; break;
    case Kind::Real: name = L"REAL"; break;
    case Kind::Str: name = L"STR"; break;
    case Kind::Sym: name = L"SYM"; break;
    case Kind::Cons: name = L"LIST"; break;
    case Kind::Subr: name = L"SUBR"; break;
    case Kind::USubr: name = L"USUBR"; break;
    case Kind::ExSubr: name = L"EXRXSUBR"; break;
    case Kind::Ename: name = L"ENAME"; break;
    case Kind::Pickset: name = L"PICKSET"; break;
    case Kind::File: name = L"FILE"; break;
    case Kind::CatchError: name = L"VL-CATCH-ALL-APPLY-ERROR"; break;
  }
  return m.intern(name);
}

}  // namespace

void RegisterPredicateBuiltins(Machine& m) {
  m.defineBuiltin(L"=", NumEqual, 1, -1);
  m.defineBuiltin(L"/=", NotEqual, 1, -1);
  m.defineBuiltin(L"<", Less, 1, -1);
  m.defineBuiltin(L"<=", LessEq, 1, -1);
  m.defineBuiltin(L">", Greater, 1, -1);
  m.defineBuiltin(L">=", GreaterEq, 1, -1);
  m.defineBuiltin(L"EQ", EqFn, 2, 2);
  m.defineBuiltin(L"EQUAL", EqualFn, 2, 3);
  m.defineBuiltin(L"MINUSP", Minusp, 1, 1);
  m.defineBuiltin(L"ZEROP", Zerop, 1, 1);
  m.defineBuiltin(L"NUMBERP", Numberp, 1, 1);
  m.defineBuiltin(L"LISTP", Listp, 1, 1);
  m.defineBuiltin(L"ATOM", Atom, 1, 1);
  m.defineBuiltin(L"NULL", Null, 1, 1);
  m.defineBuiltin(L"NOT", Null, 1, 1);
  m.defineBuiltin(L"VL-CONSP", Consp, 1, 1);
  m.defineBuiltin(L"VL-SYMBOLP", Symbolp, 1, 1);
  m.defineBuiltin(L"BOUNDP", Boundp, 1, 1);
  m.defineBuiltin(L"TYPE", Type, 1, 1);
}

}  // namespace kelhost::lisp
