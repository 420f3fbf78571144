// The Visual LISP list functions: sorting, searching and filtering with
// predicates.
#include <algorithm>

#include "lisp/equality.h"
#include "lisp/machine.h"
#include "lisp/printer.h"

namespace kelhost::lisp {
namespace {

bool Call(Machine& m, const ValuePtr& fn, ValuePtr a) {
  Args args{std::move(a)};
  return m.apply(fn, args) != nullptr;
}

// Bottom-up merge sort: every comparison has defined bounds, so a
// comparison function that contradicts itself cannot upset it. valueOf
// gives the AutoLISP value an item stands for.
template <class T, class ValueOf>
void MergeSort(Machine& m, std::vector<T>& items, const ValuePtr& precedes, ValueOf valueOf) {
  const size_t n = items.size();
  std::vector<T> merged(n);
  for (size_t width = 1; width < n; width *= 2) {
    for (size_t lo = 0; lo < n; lo += 2 * width) {
      size_t mid = std::min(lo + width, n), hi = std::min(lo + 2 * width, n);
      size_t i = lo, j = mid, k = lo;
      while (i < mid && j < hi) {
        Args args{valueOf(items[j]), valueOf(items[i])};
        merged[k++] = m.apply(precedes, args) ? items[j++] : items[i++];
      }
      while (i < mid) merged[k++] = items[i++];
      while (j < hi) merged[k++] = items[j++];
    }
    items.swap(merged);
  }
}

// The same object twice (integers count as one object per value), as the
// platform's sort drops them.
bool Identical(const ValuePtr& a, const ValuePtr& b) {
  if (a == b) return true;
  return Is(a, Kind::Int) && Is(b, Kind::Int) && As<IntValue>(a)->value == As<IntValue>(b)->value;
}

ValuePtr Sort(Machine& m, Args& a) {
  Args items = ListArg(m, a[0]);
  m.step(items.size());
  MergeSort(m, items, a[1], [](const ValuePtr& v) { return v; });
  ListBuilder out;
  for (size_t k = 0; k < items.size(); ++k)
    if (k == 0 || !Identical(items[k], items[k - 1])) out.add(items[k]);
  return out.take();
}

// (vl-sort-i list less): the positions of the elements in sorted order;
// equal elements all keep their places.
ValuePtr SortIndices(Machine& m, Args& a) {
  Args items = ListArg(m, a[0]);
  m.step(items.size());
  std::vector<size_t> order(items.size());
  for (size_t k = 0; k < order.size(); ++k) order[k] = k;
  MergeSort(m, order, a[1], [&items](size_t k) { return items[k]; });
  ListBuilder out;
  for (size_t k : order) out.add(MakeInt(static_cast<std::int32_t>(k)));
  return out.take();
}

ValuePtr Position(Machine& m, Args& a) {
  Args items = ListArg(m, a[1]);
  for (size_t k = 0; k < items.size(); ++k)
    if (Equal(items[k], a[0], 0.0, &m)) return MakeInt(static_cast<std::int32_t>(k));
  return nullptr;
}

ValuePtr Remove(Machine& m, Args& a) {
  ListBuilder out;
  for (const ValuePtr& v : ListArg(m, a[1]))
    if (!Equal(v, a[0], 0.0, &m)) out.add(v);
  return out.take();
}

template <bool Keep>
ValuePtr RemoveIf(Machine& m, Args& a) {
  ListBuilder out;
  for (const ValuePtr& v : ListArg(m, a[1]))
    if (Call(m, a[0], v) == Keep) out.add(v);
  return out.take();
}

template <bool Wanted>
ValuePtr MemberIf(Machine& m, Args& a) {
  ListArg(m, a[1]);  // validates
  for (ValuePtr p = a[1]; p; p = AsCons(p)->cdr)
    if (Call(m, a[0], AsCons(p)->car) == Wanted) return p;
  return nullptr;
}

// Calls fn on the elements of the lists side by side until the shortest
// ends or stop(result) says so; returns the result that stopped it.
template <class Stop>
ValuePtr Lockstep(Machine& m, Args& a, Stop stop, bool& stopped) {
  std::vector<ValuePtr> cursors(a.begin() + 1, a.end());
  for (const ValuePtr& list : cursors)
    if (list && !IsCons(list)) m.badArgument(L"listp ", list);
  stopped = false;
  for (;;) {
    Args callArgs;
    for (ValuePtr& c : cursors) {
      if (!IsCons(c)) return nullptr;
      callArgs.push_back(AsCons(c)->car);
      c = AsCons(c)->cdr;
    }
    ValuePtr r = m.apply(a[0], callArgs);
    if (stop(r)) {
      stopped = true;
      return r;
    }
  }
}

ValuePtr Some(Machine& m, Args& a) {
  bool stopped;
  return Lockstep(m, a, [](const ValuePtr& r) { return r != nullptr; }, stopped);
}

ValuePtr Every(Machine& m, Args& a) {
  bool stopped;
  Lockstep(m, a, [](const ValuePtr& r) { return r == nullptr; }, stopped);
  return m.truth(!stopped);
}

// (vl-list* a b ... z): like list, with z as the tail.
ValuePtr ListStar(Machine& m, Args& a) {
  m.step(a.size());
  ListBuilder out;
  for (size_t k = 0; k + 1 < a.size(); ++k) out.add(a[k]);
  out.setTail(a.back());
  return out.take();
}

ValuePtr ListLength(Machine& m, Args& a) {
  if (a[0] && !IsCons(a[0])) m.badArgument(L"listp ", a[0]);
  Args items;
  if (!ListElements(a[0], items)) return nullptr;
  return MakeInt(static_cast<std::int32_t>(items.size()));
}

}  // namespace

void RegisterSequenceBuiltins(Machine& m) {
  m.defineBuiltin(L"VL-SORT", Sort, 2, 2);
  m.defineBuiltin(L"VL-SORT-I", SortIndices, 2, 2);
  m.defineBuiltin(L"VL-POSITION", Position, 2, 2);
  m.defineBuiltin(L"VL-REMOVE", Remove, 2, 2);
  m.defineBuiltin(L"VL-REMOVE-IF", RemoveIf<false>, 2, 2);
  m.defineBuiltin(L"VL-REMOVE-IF-NOT", RemoveIf<true>, 2, 2);
  m.defineBuiltin(L"VL-MEMBER-IF", MemberIf<true>, 2, 2);
  m.defineBuiltin(L"VL-MEMBER-IF-NOT", MemberIf<false>, 2, 2);
  m.defineBuiltin(L"VL-SOME", Some, 2, -1);
  m.defineBuiltin(L"VL-EVERY", Every, 2, -1);
  m.defineBuiltin(L"VL-LIST*", ListStar, 1, -1);
  m.defineBuiltin(L"VL-LIST-LENGTH", ListLength, 1, 1);
}

}  // namespace kelhost::lisp
