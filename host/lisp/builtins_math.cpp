// Arithmetic with the platform's 32-bit integers (which wrap around) and
// reals, and the bitwise functions.
#include <cmath>
#include <limits>

#include "arx/acutads.h"
#include "lisp/machine.h"
#include "lisp/printer.h"

namespace kelhost::lisp {
namespace {

std::int32_t Wrap(std::int64_t v) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(v)); }

// A running result: an integer until the first real joins in.
struct Number {
  bool real = false;
  std::int32_t i = 0;
  double r = 0;
  double asReal() const { return real ? r : static_cast<double>(i); }
  ValuePtr value() const { return real ? MakeReal(r) : MakeInt(i); }
};

Number ToNumber(Machine& m, const ValuePtr& v) {
  Number n;
  if (Is(v, Kind::Int)) {
    n.i = As<IntValue>(v)->value;
  } else if (Is(v, Kind::Real)) {
    n.real = true;
    n.r = As<RealValue>(v)->value;
  } else {
    m.badArgument(L"numberp: ", v);
  }
  return n;
}

template <class IntOp, class RealOp>
Number Combine(const Number& a, const Number& b, IntOp intOp, RealOp realOp) {
  Number out;
  if (a.real || b.real) {
    out.real = true;
    out.r = realOp(a.asReal(), b.asReal());
  } else {
    out.i = intOp(a.i, b.i);
  }
  return out;
}

ValuePtr Add(Machine& m, Args& a) {
  Number acc;
  for (const ValuePtr& v : a)
    acc = Combine(acc, ToNumber(m, v), [](std::int64_t x, std::int64_t y) { return Wrap(x + y); },
                  [](double x, double y) { return x + y; });
  return acc.value();
}

ValuePtr Subtract(Machine& m, Args& a) {
  if (a.empty()) return MakeInt(0);
  Number acc = ToNumber(m, a[0]);
  if (a.size() == 1) {
    if (acc.real) return MakeReal(-acc.r);
    return MakeInt(Wrap(-static_cast<std::int64_t>(acc.i)));
  }
  for (size_t k = 1; k < a.size(); ++k)
    acc = Combine(acc, ToNumber(m, a[k]), [](std::int64_t x, std::int64_t y) { return Wrap(x - y); },
                  [](double x, double y) { return x - y; });
  return acc.value();
}

ValuePtr Multiply(Machine& m, Args& a) {
  if (a.empty()) return MakeInt(0);
  Number acc = ToNumber(m, a[0]);
  for (size_t k = 1; k < a.size(); ++k)
    acc = Combine(acc, ToNumber(m, a[k]), [](std::int64_t x, std::int64_t y) { return Wrap(x * y); },
                  [](double x, double y) { return x * y; });
  return acc.value();
}

// Integer division truncates until a real takes part, left to right.
ValuePtr Divide(Machine& m, Args& a) {
  if (a.empty()) return MakeInt(0);
  Number acc = ToNumber(m, a[0]);
  for (size_t k = 1; k < a.size(); ++k) {
    Number d = ToNumber(m, a[k]);
    if (d.asReal() == 0.0) m.raise(L"divide by zero");
    acc = Combine(acc, d, [](std::int64_t x, std::int64_t y) { return Wrap(x / y); },
                  [](double x, double y) { return x / y; });
  }
  return acc.value();
}

ValuePtr Remainder(Machine& m, Args& a) {
  if (a.empty()) return MakeInt(0);
  Number acc = ToNumber(m, a[0]);
  for (size_t k = 1; k < a.size(); ++k) {
    Number d = ToNumber(m, a[k]);
    if (d.asReal() == 0.0) m.raise(L"divide by zero");
    acc = Combine(acc, d, [](std::int64_t x, std::int64_t y) { return Wrap(x % y); },
                  [](double x, double y) { return std::fmod(x, y); });
  }
  return acc.value();
}

ValuePtr OnePlus(Machine& m, Args& a) {
  Number n = ToNumber(m, a[0]);
  return n.real ? MakeReal(n.r + 1) : MakeInt(Wrap(std::int64_t{n.i} + 1));
}

ValuePtr OneMinus(Machine& m, Args& a) {
  Number n = ToNumber(m, a[0]);
  return n.real ? MakeReal(n.r - 1) : MakeInt(Wrap(std::int64_t{n.i} - 1));
}

ValuePtr Abs(Machine& m, Args& a) {
  Number n = ToNumber(m, a[0]);
  return n.real ? MakeReal(std::fabs(n.r)) : MakeInt(Wrap(n.i < 0 ? -std::int64_t{n.i} : n.i));
}

template <bool IsMax>
ValuePtr Extreme(Machine& m, Args& a) {
  if (a.empty()) return MakeInt(0);
  bool anyReal = false;
  Number best = ToNumber(m, a[0]);
  for (const ValuePtr& v : a) {
    Number n = ToNumber(m, v);
    anyReal = anyReal || n.real;
    if (IsMax ? n.asReal() > best.asReal() : n.asReal() < best.asReal()) best = n;
  }
  return anyReal ? MakeReal(best.asReal()) : best.value();
}

// Truncates toward zero; beyond the integer range the result stays real.
ValuePtr Fix(Machine& m, Args& a) {
  Number n = ToNumber(m, a[0]);
  if (!n.real) return n.value();
  double t = std::trunc(n.r);
  if (t >= -2147483648.0 && t <= 2147483647.0) return MakeInt(static_cast<std::int32_t>(t));
  return MakeReal(t);
}

ValuePtr Float(Machine& m, Args& a) { return MakeReal(NumArg(m, a[0])); }

[[noreturn]] void Undefined(Machine& m, const ValuePtr& v) {
  m.raise(L"function undefined for argument: " + m.printed(v));
}

ValuePtr Sqrt(Machine& m, Args& a) {
  double x = NumArg(m, a[0]);
  if (x < 0) Undefined(m, a[0]);
  return MakeReal(std::sqrt(x));
}

ValuePtr Sin(Machine& m, Args& a) { return MakeReal(std::sin(NumArg(m, a[0]))); }
ValuePtr Cos(Machine& m, Args& a) { return MakeReal(std::cos(NumArg(m, a[0]))); }

ValuePtr Atan(Machine& m, Args& a) {
  double y = NumArg(m, a[0]);
  if (a.size() == 1) return MakeReal(std::atan(y));
  return MakeReal(std::atan2(y, NumArg(m, a[1])));
}

ValuePtr Exp(Machine& m, Args& a) { return MakeReal(std::exp(NumArg(m, a[0]))); }

ValuePtr Log(Machine& m, Args& a) {
  double x = NumArg(m, a[0]);
  if (!(x > 0)) Undefined(m, a[0]);
  return MakeReal(std::log(x));
}

// Integer powers stay integers (wrapping like every integer result).
ValuePtr Expt(Machine& m, Args& a) {
  Number base = ToNumber(m, a[0]), power = ToNumber(m, a[1]);
  if (!base.real && !power.real) {
    if (power.i < 0) {
      if (base.i == 0) m.raise(L"divide by zero");
      if (base.i == 1) return MakeInt(1);
      if (base.i == -1) return MakeInt(power.i % 2 ? -1 : 1);
      return MakeInt(0);
    }
    std::uint32_t result = 1, factor = static_cast<std::uint32_t>(base.i);
    for (std::uint32_t e = static_cast<std::uint32_t>(power.i); e; e >>= 1) {
      if (e & 1) result *= factor;
      factor *= factor;
    }
    return MakeInt(static_cast<std::int32_t>(result));
  }
  double r = std::pow(base.asReal(), power.asReal());
  if (std::isnan(r) && !std::isnan(base.asReal()) && !std::isnan(power.asReal())) Undefined(m, a[0]);
  return MakeReal(r);
}

ValuePtr Gcd(Machine& m, Args& a) {
  std::int64_t x = IntArg(m, a[0]), y = IntArg(m, a[1]);
  x = x < 0 ? -x : x;
  y = y < 0 ? -y : y;
  while (y) {
    std::int64_t t = x % y;
    x = y;
    y = t;
  }
  return MakeInt(Wrap(x));
}

ValuePtr LogAnd(Machine& m, Args& a) {
  if (a.empty()) return MakeInt(0);
  std::int32_t acc = IntArg(m, a[0]);
  for (const ValuePtr& v : a) acc &= IntArg(m, v);
  return MakeInt(acc);
}

ValuePtr LogIor(Machine& m, Args& a) {
  std::int32_t acc = 0;
  for (const ValuePtr& v : a) acc |= IntArg(m, v);
  return MakeInt(acc);
}

// A logical shift: left for positive counts, right for negative ones.
ValuePtr Lsh(Machine& m, Args& a) {
  std::uint32_t v = a.empty() ? 0 : static_cast<std::uint32_t>(IntArg(m, a[0]));
  std::int32_t bits = a.size() < 2 ? 0 : IntArg(m, a[1]);
  if (bits >= 32 || bits <= -32) return MakeInt(0);
  v = bits >= 0 ? v << bits : v >> -bits;
  return MakeInt(static_cast<std::int32_t>(v));
}

ValuePtr BitNot(Machine& m, Args& a) { return MakeInt(~IntArg(m, a[0])); }

// (boole op int1 int2 ...): op's bits 8 4 2 1 give the result bit for the
// input bit pairs 00 01 10 11.
ValuePtr Boole(Machine& m, Args& a) {
  std::int32_t op = IntArg(m, a[0]);
  std::uint32_t acc = static_cast<std::uint32_t>(IntArg(m, a[1]));
  for (size_t k = 2; k < a.size(); ++k) {
    std::uint32_t b = static_cast<std::uint32_t>(IntArg(m, a[k]));
    std::uint32_t r = 0;
    if (op & 8) r |= ~acc & ~b;
    if (op & 4) r |= ~acc & b;
    if (op & 2) r |= acc & ~b;
    if (op & 1) r |= acc & b;
    acc = r;
  }
  return MakeInt(static_cast<std::int32_t>(acc));
}

// (cvunit value from to): a number, or each coordinate of a point, in
// other units; nil when a unit is unknown or the two measure different
// things.
ValuePtr CvUnit(Machine& m, Args& a) {
  const std::wstring& from = StrArg(m, a[1]);
  const std::wstring& to = StrArg(m, a[2]);
  auto convert = [&](const ValuePtr& v, double& out) {
    return acutCvUnit(NumberOf(v), from.c_str(), to.c_str(), &out) == RTNORM;
  };
  double out = 0;
  if (IsNumber(a[0])) return convert(a[0], out) ? MakeReal(out) : nullptr;
  Args coords;
  if (!IsCons(a[0]) || !ListElements(a[0], coords) || coords.size() < 2 || coords.size() > 3)
    m.badArgument(L"numberp: ", a[0]);
  ListBuilder b;
  for (const ValuePtr& c : coords) {
    if (!IsNumber(c)) m.badArgument(L"numberp: ", c);
    if (!convert(c, out)) return nullptr;
    b.add(MakeReal(out));
  }
  return b.take();
}

}  // namespace

void RegisterMathBuiltins(Machine& m) {
  m.defineBuiltin(L"CVUNIT", CvUnit, 3, 3);
  m.defineBuiltin(L"+", Add, 0, -1);
  m.defineBuiltin(L"-", Subtract, 0, -1);
  m.defineBuiltin(L"*", Multiply, 0, -1);
  m.defineBuiltin(L"/", Divide, 0, -1);
  m.defineBuiltin(L"REM", Remainder, 0, -1);
  m.defineBuiltin(L"1+", OnePlus, 1, 1);
  m.defineBuiltin(L"1-", OneMinus, 1, 1);
  m.defineBuiltin(L"ABS", Abs, 1, 1);
  m.defineBuiltin(L"MAX", Extreme<true>, 0, -1);
  m.defineBuiltin(L"MIN", Extreme<false>, 0, -1);
  m.defineBuiltin(L"FIX", Fix, 1, 1);
  m.defineBuiltin(L"FLOAT", Float, 1, 1);
  m.defineBuiltin(L"SQRT", Sqrt, 1, 1);
  m.defineBuiltin(L"SIN", Sin, 1, 1);
  m.defineBuiltin(L"COS", Cos, 1, 1);
  m.defineBuiltin(L"ATAN", Atan, 1, 2);
  m.defineBuiltin(L"EXP", Exp, 1, 1);
  m.defineBuiltin(L"LOG", Log, 1, 1);
  m.defineBuiltin(L"EXPT", Expt, 2, 2);
  m.defineBuiltin(L"GCD", Gcd, 2, 2);
  m.defineBuiltin(L"LOGAND", LogAnd, 0, -1);
  m.defineBuiltin(L"LOGIOR", LogIor, 0, -1);
  m.defineBuiltin(L"LSH", Lsh, 0, 2);
  m.defineBuiltin(L"~", BitNot, 1, 1);
  m.defineBuiltin(L"BOOLE", Boole, 2, -1);
}

}  // namespace kelhost::lisp
