// List construction, access and traversal.
#include "lisp/equality.h"
#include "lisp/machine.h"
#include "lisp/printer.h"

namespace kelhost::lisp {
namespace {

ValuePtr List(Machine& m, Args& a) {
  m.step(a.size());
  return ListOf(a);
}

ValuePtr ConsFn(Machine& m, Args& a) {
  m.step();
  return MakeCons(a[0], a[1]);
}

// car, cdr and their compositions: the letters apply from right to left.
template <char... Path>
ValuePtr Cxr(Machine& m, Args& a) {
  static constexpr char path[] = {Path...};
  ValuePtr v = a[0];
  for (int i = static_cast<int>(sizeof...(Path)) - 1; i >= 0; --i) {
    if (!v) return nullptr;
    if (!IsCons(v)) m.badArgument(L"consp ", v);
    v = path[i] == 'a' ? AsCons(v)->car : AsCons(v)->cdr;
  }
  return v;
}

// Walks a list argument cell by cell; f returns false to stop.
template <class F>
void Walk(Machine& m, const ValuePtr& list, F f) {
  if (list && !IsCons(list)) m.badArgument(L"listp ", list);
  for (ValuePtr p = list; p; p = AsCons(p)->cdr) {
    if (!IsCons(p)) m.raise(L"bad list: " + m.printed(list));
    m.step();
    if (!f(p)) return;
  }
}

ValuePtr Nth(Machine& m, Args& a) {
  std::int32_t n = IntArg(m, a[0]);
  if (n < 0) return nullptr;
  ValuePtr found;
  Walk(m, a[1], [&](const ValuePtr& cell) {
    if (n-- > 0) return true;
    found = AsCons(cell)->car;
    return false;
  });
  return found;
}

ValuePtr Length(Machine& m, Args& a) {
  std::int32_t n = 0;
  Walk(m, a[0], [&](const ValuePtr&) { return ++n, true; });
  return MakeInt(n);
}

// Every list but the last is copied; the last one is shared.
ValuePtr Append(Machine& m, Args& a) {
  if (a.empty()) return nullptr;
  ListBuilder b;
  for (size_t i = 0; i + 1 < a.size(); ++i) {
    Walk(m, a[i], [&](const ValuePtr& cell) {
      m.step();
      b.add(AsCons(cell)->car);
      return true;
    });
  }
  if (a.back() && !IsCons(a.back())) m.badArgument(L"listp ", a.back());
  b.setTail(a.back());
  return b.take();
}

ValuePtr Reverse(Machine& m, Args& a) {
  ValuePtr out;
  Walk(m, a[0], [&](const ValuePtr& cell) {
    m.step();
    out = MakeCons(AsCons(cell)->car, out);
    return true;
  });
  return out;
}

ValuePtr Assoc(Machine& m, Args& a) {
  ValuePtr found;
  Walk(m, a[1], [&](const ValuePtr& cell) {
    const ValuePtr& entry = AsCons(cell)->car;
    if (IsCons(entry) && Equal(AsCons(entry)->car, a[0], 0.0, &m)) {
      found = entry;
      return false;
    }
    return true;
  });
  return found;
}

ValuePtr Member(Machine& m, Args& a) {
  ValuePtr found;
  Walk(m, a[1], [&](const ValuePtr& cell) {
    if (!Equal(AsCons(cell)->car, a[0], 0.0, &m)) return true;
    found = cell;
    return false;
  });
  return found;
}

// (subst new old list): every element of the list equal to old replaced.
ValuePtr Subst(Machine& m, Args& a) {
  ListBuilder b;
  Walk(m, a[2], [&](const ValuePtr& cell) {
    m.step();
    const ValuePtr& item = AsCons(cell)->car;
    b.add(Equal(item, a[1], 0.0, &m) ? a[0] : item);
    return true;
  });
  return b.take();
}

ValuePtr Last(Machine& m, Args& a) {
  ValuePtr last;
  Walk(m, a[0], [&](const ValuePtr& cell) {
    last = AsCons(cell)->car;
    return true;
  });
  return last;
}

ValuePtr Mapcar(Machine& m, Args& a) {
  std::vector<ValuePtr> cursors(a.begin() + 1, a.end());
  for (const ValuePtr& list : cursors)
    if (list && !IsCons(list)) m.badArgument(L"listp ", list);
  ListBuilder out;
  for (;;) {
    Args callArgs;
    for (ValuePtr& c : cursors) {
      if (!IsCons(c)) return out.take();
      callArgs.push_back(AsCons(c)->car);
      c = AsCons(c)->cdr;
    }
    out.add(m.apply(a[0], callArgs));
  }
}

ValuePtr Apply(Machine& m, Args& a) {
  Args callArgs = ListArg(m, a[1]);
  return m.apply(a[0], callArgs);
}

}  // namespace

void RegisterListBuiltins(Machine& m) {
  m.defineBuiltin(L"LIST", List, 0, -1);
  m.defineBuiltin(L"CONS", ConsFn, 2, 2);
  m.defineBuiltin(L"CAR", Cxr<'a'>, 1, 1);
  m.defineBuiltin(L"CDR", Cxr<'d'>, 1, 1);
  m.defineBuiltin(L"CAAR", Cxr<'a', 'a'>, 1, 1);
  m.defineBuiltin(L"CADR", Cxr<'a', 'd'>, 1, 1);
  m.defineBuiltin(L"CDAR", Cxr<'d', 'a'>, 1, 1);
  m.defineBuiltin(L"CDDR", Cxr<'d', 'd'>, 1, 1);
  m.defineBuiltin(L"CAAAR", Cxr<'a', 'a', 'a'>, 1, 1);
  m.defineBuiltin(L"CAADR", Cxr<'a', 'a', 'd'>, 1, 1);
  m.defineBuiltin(L"CADAR", Cxr<'a', 'd', 'a'>, 1, 1);
  m.defineBuiltin(L"CADDR", Cxr<'a', 'd', 'd'>, 1, 1);
  m.defineBuiltin(L"CDAAR", Cxr<'d', 'a', 'a'>, 1, 1);
  m.defineBuiltin(L"CDADR", Cxr<'d', 'a', 'd'>, 1, 1);
  m.defineBuiltin(L"CDDAR", Cxr<'d', 'd', 'a'>, 1, 1);
  m.defineBuiltin(L"CDDDR", Cxr<'d', 'd', 'd'>, 1, 1);
  m.defineBuiltin(L"CAAAAR", Cxr<'a', 'a', 'a', 'a'>, 1, 1);
  m.defineBuiltin(L"CAAADR", Cxr<'a', 'a', 'a', 'd'>, 1, 1);
  m.defineBuiltin(L"CAADAR", Cxr<'a', 'a', 'd', 'a'>, 1, 1);
  m.defineBuiltin(L"CAADDR", Cxr<'a', 'a', 'd', 'd'>, 1, 1);
  m.defineBuiltin(L"CADAAR", Cxr<'a', 'd', 'a', 'a'>, 1, 1);
  m.defineBuiltin(L"CADADR", Cxr<'a', 'd', 'a', 'd'>, 1, 1);
  m.defineBuiltin(L"CADDAR", Cxr<'a', 'd', 'd', 'a'>, 1, 1);
  m.defineBuiltin(L"CADDDR", Cxr<'a', 'd', 'd', 'd'>, 1, 1);
  m.defineBuiltin(L"CDAAAR", Cxr<'d', 'a', 'a', 'a'>, 1, 1);
  m.defineBuiltin(L"CDAADR", Cxr<'d', 'a', 'a', 'd'>, 1, 1);
  m.defineBuiltin(L"CDADAR", Cxr<'d', 'a', 'd', 'a'>, 1, 1);
  m.defineBuiltin(L"CDADDR", Cxr<'d', 'a', 'd', 'd'>, 1, 1);
  m.defineBuiltin(L"CDDAAR", Cxr<'d', 'd', 'a', 'a'>, 1, 1);
  m.defineBuiltin(L"CDDADR", Cxr<'d', 'd', 'a', 'd'>, 1, 1);
  m.defineBuiltin(L"CDDDAR", Cxr<'d', 'd', 'd', 'a'>, 1, 1);
  m.defineBuiltin(L"CDDDDR", Cxr<'d', 'd', 'd', 'd'>, 1, 1);
  m.defineBuiltin(L"NTH", Nth, 2, 2);
  m.defineBuiltin(L"LENGTH", Length, 1, 1);
  m.defineBuiltin(L"APPEND", Append, 0, -1);
  m.defineBuiltin(L"REVERSE", Reverse, 1, 1);
  m.defineBuiltin(L"ASSOC", Assoc, 2, 2);
  m.defineBuiltin(L"MEMBER", Member, 2, 2);
  m.defineBuiltin(L"SUBST", Subst, 3, 3);
  m.defineBuiltin(L"LAST", Last, 1, 1);
  m.defineBuiltin(L"MAPCAR", Mapcar, 2, -1);
  m.defineBuiltin(L"APPLY", Apply, 2, 2);
}

}  // namespace kelhost::lisp
