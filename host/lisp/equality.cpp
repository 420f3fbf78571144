#include "lisp/equality.h"

#include "lisp/machine.h"

#include <cmath>
#include <utility>
#include <vector>

namespace kelhost::lisp {

namespace {

bool SameAtom(const Value* a, const Value* b) {
  if (a == b) return true;
  if (!a || !b || a->kind != b->kind) return false;
  switch (a->kind) {
    case Kind::Int: return static_cast<const IntValue*>(a)->value == static_cast<const IntValue*>(b)->value;
    case Kind::Real: return static_cast<const RealValue*>(a)->value == static_cast<const RealValue*>(b)->value;
    case Kind::Str: return static_cast<const StrValue*>(a)->value == static_cast<const StrValue*>(b)->value;
    case Kind::Ename:
    case Kind::Pickset: {
      auto x = static_cast<const NameValue*>(a), y = static_cast<const NameValue*>(b);
      return x->name[0] == y->name[0] && x->name[1] == y->name[1];
    }
    default: return false;
  }
}

}  // namespace

bool Eq(const ValuePtr& a, const ValuePtr& b) { return SameAtom(a.get(), b.get()); }

// Compares with a work list so that deeply nested lists cannot exhaust
// the native stack.
bool Equal(const ValuePtr& a, const ValuePtr& b, double fuzz, Machine* m) {
  std::vector<std::pair<const Value*, const Value*>> work{{a.get(), b.get()}};
  while (!work.empty()) {
    if (m) m->step();
    auto [x, y] = work.back();
    work.pop_back();
    if (x == y) continue;
    if (!x || !y) return false;
    const bool xNum = x->kind == Kind::Int || x->kind == Kind::Real;
    const bool yNum = y->kind == Kind::Int || y->kind == Kind::Real;
    if (xNum && yNum) {
      auto value = [](const Value* v) {
        return v->kind == Kind::Int ? static_cast<double>(static_cast<const IntValue*>(v)->value)
                                    : static_cast<const RealValue*>(v)->value;
      };
      if (!(std::fabs(value(x) - value(y)) <= fuzz)) return false;
      continue;
    }
    if (x->kind != y->kind) return false;
    if (x->kind == Kind::Cons) {
      auto cx = static_cast<const Cons*>(x), cy = static_cast<const Cons*>(y);
      work.emplace_back(cx->cdr.get(), cy->cdr.get());
      work.emplace_back(cx->car.get(), cy->car.get());
      continue;
    }
    if (!SameAtom(x, y)) return false;
  }
  return true;
}

}  // namespace kelhost::lisp
