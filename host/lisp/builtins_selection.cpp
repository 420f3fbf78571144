// Selection sets from AutoLISP: ssget ssadd ssdel ssname sslength ssmemb,
// and the pick-first set: sssetfirst ssgetfirst.
#include <array>
#include <cmath>
#include <cwctype>

#include "arx/acedads.h"
#include "arx/acutads.h"
#include "kelhost/resbuf_kinds.h"
#include "lisp/chain.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

ValuePtr Pickset(const ads_name name) { return std::make_shared<NameValue>(Kind::Pickset, name); }
ValuePtr Ename(const ads_name name) { return std::make_shared<NameValue>(Kind::Ename, name); }

const std::int64_t* SetArg(Machine& m, const ValuePtr& v) {
  if (!Is(v, Kind::Pickset)) m.badArgument(L"lselsetp ", v);
  return As<NameValue>(v)->name;
}

const std::int64_t* EnameArg(Machine& m, const ValuePtr& v) {
  if (!Is(v, Kind::Ename)) m.badArgument(L"lentityp ", v);
  return As<NameValue>(v)->name;
}

// A point argument: a list of two or three numbers.
bool PointOf(const ValuePtr& v, double pt[3]) {
  Args coords;
  if (!ListElements(v, coords) || coords.size() < 2 || coords.size() > 3) return false;
  pt[2] = 0.0;
  for (size_t i = 0; i < coords.size(); ++i) {
    if (!IsNumber(coords[i])) return false;
    pt[i] = NumberOf(coords[i]);
  }
  return true;
}

// Appends the filter groups of a list such as ((0 . "LINE") (-4 . "<OR")
// (10 1.0 2.0 0.0) (-3 ("APP*")) ...) to a chain being built.
class FilterChain {
 public:
  explicit FilterChain(Machine& m) : mMachine(m) {}
  ~FilterChain() { acutRelRb(mHead); }
  const resbuf* head() const { return mHead; }

  void addGroup(const ValuePtr& group) {
    if (!IsCons(group) || !Is(AsCons(group)->car, Kind::Int)) bad(group);
    const int code = As<IntValue>(AsCons(group)->car)->value;
    const ValuePtr& v = AsCons(group)->cdr;
    if (code == -3) return addXData(group, v);
    if (code < -32768 || code > 32767) bad(group);
    switch (ResbufKind(code)) {
      case RbKind::kString:
        if (!Is(v, Kind::Str)) bad(group);
        if (acutNewString(As<StrValue>(v)->value.c_str(), add(code, group)->resval.rstring) != RTNORM) bad(group);
        return;
      case RbKind::kReal:
        if (!IsNumber(v)) bad(group);
        add(code, group)->resval.rreal = NumberOf(v);
        return;
      case RbKind::kShort:
      case RbKind::kLong:
      case RbKind::kInt64:
        if (!Is(v, Kind::Int)) bad(group);
        if (ResbufKind(code) == RbKind::kShort) add(code, group)->resval.rint = static_cast<short>(As<IntValue>(v)->value);
        else if (ResbufKind(code) == RbKind::kLong) add(code, group)->resval.rlong = As<IntValue>(v)->value;
        else add(code, group)->resval.mnInt64 = As<IntValue>(v)->value;
        return;
      case RbKind::kName: {
        if (!Is(v, Kind::Ename)) bad(group);
        resbuf* rb = add(code, group);
        rb->resval.rlname[0] = As<NameValue>(v)->name[0];
        rb->resval.rlname[1] = As<NameValue>(v)->name[1];
        return;
      }
      case RbKind::kPoint: {
        double pt[3];
        if (!PointOf(v, pt)) bad(group);
        resbuf* rb = add(code, group);
        for (int i = 0; i < 3; ++i) rb->resval.rpoint[i] = pt[i];
        return;
      }
      default: bad(group);
    }
  }

 private:
  // (-3 ("APP1") ("APP2" ...)): the application names.
  void addXData(const ValuePtr& group, const ValuePtr& apps) {
    Args items;
    if (!ListElements(apps, items) || items.empty()) bad(group);
    add(-3, group);
    for (const ValuePtr& app : items) {
      Args parts;
      if (!ListElements(app, parts) || parts.empty() || !Is(parts[0], Kind::Str)) bad(group);
      if (acutNewString(As<StrValue>(parts[0])->value.c_str(), add(1001, group)->resval.rstring) != RTNORM) bad(group);
    }
  }
  resbuf* add(int code, const ValuePtr& group) {
    resbuf* rb = acutNewRb(code);
    if (!rb) bad(group);
    *mTail = rb;
    mTail = &rb->rbnext;
    return rb;
  }
  [[noreturn]] void bad(const ValuePtr& group) { mMachine.raise(L"bad SSGET list value: " + mMachine.printed(group)); }

  Machine& mMachine;
  resbuf* mHead = nullptr;
  resbuf** mTail = &mHead;
};

bool LooksLikeFilter(const ValuePtr& v) {
  Args items;
  return ListElements(v, items) && !items.empty() && IsCons(items[0]) && Is(AsCons(items[0])->car, Kind::Int) &&
         !PointOf(items[0], std::array<double, 3>().data());
}

// The letters that name a mode ("_WP" is WP, ":S" none).
std::wstring ModeName(const std::wstring& mode) {
  std::wstring name;
  for (size_t i = 0; i < mode.size(); ++i) {
    if (mode[i] == L':') ++i;  // an option letter follows
    else if (std::iswalpha(mode[i])) name += static_cast<wchar_t>(std::towupper(mode[i]));
  }
  return name;
}

// A chain of RTPOINT / RT3DPOINT nodes from a list of points.
resbuf* PointChain(Machine& m, const ValuePtr& list) {
  Args pts;
  if (!ListElements(list, pts) || pts.empty()) m.badArgument(L"listp ", list);
  resbuf** tail = nullptr;
  resbuf* head = nullptr;
  for (const ValuePtr& v : pts) {
    double p[3];
    if (!PointOf(v, p)) {
      acutRelRb(head);
      m.badArgument(L"2D/3D point: ", v);
    }
    resbuf* rb = acutNewRb(RT3DPOINT);
    if (!rb) {
      acutRelRb(head);
      m.raise(L"insufficient memory");
    }
    for (int i = 0; i < 3; ++i) rb->resval.rpoint[i] = p[i];
    if (tail) *tail = rb;
    else head = rb;
    tail = &rb->rbnext;
  }
  return head;
}

// (ssget [mode] [pt1 [pt2]] [filter]): F, WP and CP take a list of points,
// W and C two points, no mode one point (a pick there) or none (the
// "Select objects:" prompt).
ValuePtr SsGet(Machine& m, Args& a) {
  size_t i = 0;
  std::wstring mode;
  if (i < a.size() && Is(a[i], Kind::Str)) mode = As<StrValue>(a[i++])->value;
  const std::wstring name = ModeName(mode);
  double pts[2][3];
  int npts = 0;
  const bool takesPolygon = name == L"F" || name == L"WP" || name == L"CP";
  if (takesPolygon && i >= a.size()) m.raise(L"too few arguments");
  ChainHolder polygon(takesPolygon ? PointChain(m, a[i++]) : nullptr);
  FilterChain filter(m);
  bool haveFilter = false;
  for (; i < a.size(); ++i) {
    if (i + 1 == a.size() && LooksLikeFilter(a[i])) {
      for (const ValuePtr& g : ListArg(m, a[i])) filter.addGroup(g);
      haveFilter = true;
    } else if (!polygon.get() && npts < 2 && PointOf(a[i], pts[npts])) {
      ++npts;
    } else {
      m.badArgument(L"point: ", a[i]);
    }
  }
  const void* pt1 = polygon.get() ? static_cast<const void*>(polygon.get()) : npts > 0 ? pts[0] : nullptr;
  ads_name ss;
  const int status = acedSSGet(mode.empty() ? nullptr : mode.c_str(), pt1, npts > 1 ? pts[1] : nullptr,
                               haveFilter ? filter.head() : nullptr, ss);
  if (status == RTCAN) m.raise(L"Function cancelled");
  return status == RTNORM ? Pickset(ss) : nullptr;
}

// (sssetfirst gripset [pickset]): the grip set is ignored.
ValuePtr SsSetFirst(Machine& m, Args& a) {
  const ValuePtr set = a.size() > 1 ? a[1] : nullptr;
  const std::int64_t* name = set ? SetArg(m, set) : nullptr;
  if (acedSSSetFirst(name, nullptr) != RTNORM) return nullptr;
  return ListOf({nullptr, set});
}

ValuePtr SsGetFirst(Machine&, Args&) {
  resbuf* grips = nullptr;
  resbuf* picked = nullptr;
  if (acedSSGetFirst(&grips, &picked) != RTNORM) return nullptr;
  ChainHolder holdGrips(grips), holdPicked(picked);
  return ListOf({nullptr, picked ? Pickset(picked->resval.rlname) : nullptr});
}

ValuePtr SsAdd(Machine& m, Args& a) {
  ads_name none = {0, 0}, result;
  const std::int64_t* ent = a.size() > 0 && a[0] ? EnameArg(m, a[0]) : none;
  const std::int64_t* set = a.size() > 1 && a[1] ? SetArg(m, a[1]) : none;
  if (acedSSAdd(ent, set, result) != RTNORM) return nullptr;
  return a.size() > 1 && a[1] ? a[1] : Pickset(result);
}

ValuePtr SsDel(Machine& m, Args& a) {
  const std::int64_t* ent = EnameArg(m, a[0]);
  return acedSSDel(ent, SetArg(m, a[1])) == RTNORM ? a[1] : nullptr;
}

ValuePtr SsName(Machine& m, Args& a) {
  const std::int64_t* set = SetArg(m, a[0]);
  if (!IsNumber(a[1])) m.badArgument(L"numberp: ", a[1]);
  const double index = NumberOf(a[1]);
  if (!(index >= 0) || index > 2147483647.0) return nullptr;
  ads_name name;
  return acedSSName(set, static_cast<Adesk::Int32>(std::floor(index)), name) == RTNORM ? Ename(name) : nullptr;
}

ValuePtr SsLength(Machine& m, Args& a) {
  Adesk::Int32 n = 0;
  return acedSSLength(SetArg(m, a[0]), &n) == RTNORM ? MakeInt(n) : nullptr;
}

ValuePtr SsMemb(Machine& m, Args& a) {
  const std::int64_t* ent = EnameArg(m, a[0]);
  return acedSSMemb(ent, SetArg(m, a[1])) == RTNORM ? a[0] : nullptr;
}

}  // namespace

void RegisterSelectionBuiltins(Machine& m) {
  m.defineBuiltin(L"SSGET", SsGet, 0, 4);
  m.defineBuiltin(L"SSADD", SsAdd, 0, 2);
  m.defineBuiltin(L"SSDEL", SsDel, 2, 2);
  m.defineBuiltin(L"SSNAME", SsName, 2, 2);
  m.defineBuiltin(L"SSLENGTH", SsLength, 1, 1);
  m.defineBuiltin(L"SSMEMB", SsMemb, 2, 2);
  m.defineBuiltin(L"SSSETFIRST", SsSetFirst, 1, 2);
  m.defineBuiltin(L"SSGETFIRST", SsGetFirst, 0, 0);
}

}  // namespace kelhost::lisp
