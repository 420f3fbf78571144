// getvar and setvar: system variables from AutoLISP; trans, whose
// coordinate systems the drawing's variables define.
#include <cstdlib>

#include "arx/acedads.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

ValuePtr GetVar(Machine& m, Args& a) {
  resbuf rb{};
  if (acedGetVar(StrArg(m, a[0]).c_str(), &rb) != RTNORM) return nullptr;
  switch (rb.restype) {
    case RTSHORT: return MakeInt(rb.resval.rint);
    case RTLONG: return MakeInt(rb.resval.rlong);
    case RTREAL: return MakeReal(rb.resval.rreal);
    case RTSTR: {
      ValuePtr text = MakeStr(rb.resval.rstring ? rb.resval.rstring : L"");
      std::free(rb.resval.rstring);
      return text;
    }
    case RTPOINT:
    case RT3DPOINT: {
      ListBuilder pt;
      for (int i = 0; i < (rb.restype == RTPOINT ? 2 : 3); ++i) pt.add(MakeReal(rb.resval.rpoint[i]));
      return pt.take();
    }
    default: return nullptr;
  }
}

// The value as the result buffer setvar hands over; false for a value no
// variable can take.
bool ToResbuf(const ValuePtr& v, resbuf& rb) {
  if (Is(v, Kind::Int)) {
    const std::int32_t x = As<IntValue>(v)->value;
    if (x >= -32768 && x <= 32767) {
      rb.restype = RTSHORT;
      rb.resval.rint = static_cast<short>(x);
    } else {
      rb.restype = RTLONG;
      rb.resval.rlong = x;
    }
    return true;
  }
  if (Is(v, Kind::Real)) {
    rb.restype = RTREAL;
    rb.resval.rreal = As<RealValue>(v)->value;
    return true;
  }
  Args coords;
  if (!ListElements(v, coords) || coords.size() < 2 || coords.size() > 3) return false;
  for (size_t i = 0; i < coords.size(); ++i) {
    if (!IsNumber(coords[i])) return false;
    rb.resval.rpoint[i] = NumberOf(coords[i]);
  }
  rb.restype = coords.size() == 2 ? RTPOINT : RT3DPOINT;
  return true;
}

ValuePtr SetVar(Machine& m, Args& a) {
  const std::wstring& name = StrArg(m, a[0]);
  resbuf rb{};
  bool ok;
  if (Is(a[1], Kind::Str)) {
    rb.restype = RTSTR;
    rb.resval.rstring = const_cast<ACHAR*>(As<StrValue>(a[1])->value.c_str());
    ok = acedSetVar(name.c_str(), &rb) == RTNORM;
  } else {
    ok = ToResbuf(a[1], rb) && acedSetVar(name.c_str(), &rb) == RTNORM;
  }
  if (!ok) m.raise(L"AutoCAD variable setting rejected: " + m.printed(a[0]) + L" " + m.printed(a[1]));
  return a[1];
}

// A coordinate system argument: a code, an entity name or an extrusion.
void SystemOf(Machine& m, const ValuePtr& v, resbuf& rb) {
  Args coords;
  if (Is(v, Kind::Int)) {
    const std::int32_t code = As<IntValue>(v)->value;
    if (code < 0 || code > 2) m.raise(L"bad argument value: " + m.printed(v));
    rb.restype = RTSHORT;
    rb.resval.rint = static_cast<short>(code);
  } else if (Is(v, Kind::Ename)) {
    rb.restype = RTENAME;
    rb.resval.rlname[0] = As<NameValue>(v)->name[0];
    rb.resval.rlname[1] = As<NameValue>(v)->name[1];
  } else if (ListElements(v, coords) && coords.size() == 3 && IsNumber(coords[0]) && IsNumber(coords[1]) &&
             IsNumber(coords[2])) {
    rb.restype = RT3DPOINT;
    for (int i = 0; i < 3; ++i) rb.resval.rpoint[i] = NumberOf(coords[static_cast<size_t>(i)]);
  } else {
    m.badArgument(L"coordinate system: ", v);
  }
}

// (trans pt from to [disp])
ValuePtr Trans(Machine& m, Args& a) {
  Args coords;
  if (!ListElements(a[0], coords) || coords.size() < 2 || coords.size() > 3) m.badArgument(L"point: ", a[0]);
  ads_point pt = {0, 0, 0}, out;
  for (size_t i = 0; i < coords.size(); ++i) {
    if (!IsNumber(coords[i])) m.badArgument(L"point: ", a[0]);
    pt[i] = NumberOf(coords[i]);
  }
  resbuf from{}, to{};
  SystemOf(m, a[1], from);
  SystemOf(m, a[2], to);
  if (acedTrans(pt, &from, &to, a.size() > 3 && a[3] ? 1 : 0, out) != RTNORM) return nullptr;
  ListBuilder list;
  for (double c : out) list.add(MakeReal(c));
  return list.take();
}

}  // namespace

void RegisterSysvarBuiltins(Machine& m) {
  m.defineBuiltin(L"GETVAR", GetVar, 1, 1);
  m.defineBuiltin(L"SETVAR", SetVar, 2, 2);
  m.defineBuiltin(L"TRANS", Trans, 3, 4);
}

}  // namespace kelhost::lisp
