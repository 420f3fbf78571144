#include "lisp/chain.h"

#include <cstdio>
#include <vector>

#include "arx/acutads.h"
#include "lisp/machine.h"
#include "lisp/printer.h"

namespace kelhost::lisp {
namespace {

// Appends nodes to a chain under construction.
class ChainWriter {
 public:
  ~ChainWriter() { acutRelRb(mHead); }
  resbuf* add(int type) {
    resbuf* rb = acutNewRb(type);
    if (!rb) return nullptr;
    *mTail = rb;
    mTail = &rb->rbnext;
    return rb;
  }
  resbuf* take() {
    resbuf* head = mHead;
    mHead = nullptr;
    mTail = &mHead;
    return head;
  }

 private:
  resbuf* mHead = nullptr;
  resbuf** mTail = &mHead;
};

const wchar_t kNoMemory[] = L"insufficient memory";

// 2 for (x y), 3 for (x y z): a proper list of two or three numbers.
int PointSize(const Value* v) {
  int n = 0;
  for (const Value* p = v; p; p = static_cast<const Cons*>(p)->cdr.get()) {
    if (p->kind != Kind::Cons || ++n > 3) return 0;
    const Value* item = static_cast<const Cons*>(p)->car.get();
    if (!item || (item->kind != Kind::Int && item->kind != Kind::Real)) return 0;
  }
  return n >= 2 ? n : 0;
}

double NumberAt(const Value* item) {
  return item->kind == Kind::Int ? static_cast<const IntValue*>(item)->value
                                 : static_cast<const RealValue*>(item)->value;
}

bool WriteAtom(Machine& m, ChainWriter& w, const Value* v, std::wstring& error) {
  resbuf* rb = nullptr;
  if (!v) {
    rb = w.add(RTNIL);
  } else {
    switch (v->kind) {
      case Kind::Int: {
        std::int32_t i = static_cast<const IntValue*>(v)->value;
        if (i >= -32768 && i <= 32767) {
          if ((rb = w.add(RTSHORT))) rb->resval.rint = static_cast<short>(i);
        } else if ((rb = w.add(RTLONG))) {
          rb->resval.rlong = i;
        }
        break;
      }
      case Kind::Real:
        if ((rb = w.add(RTREAL))) rb->resval.rreal = static_cast<const RealValue*>(v)->value;
        break;
      case Kind::Str:
        if ((rb = w.add(RTSTR)) && acutNewString(static_cast<const StrValue*>(v)->value.c_str(), rb->resval.rstring) != RTNORM)
          rb = nullptr;
        break;
      case Kind::Sym:
        // T travels as RTT; any other symbol as its (upper-case) name.
        if (v == m.symT.get()) {
          rb = w.add(RTT);
        } else if ((rb = w.add(RTSTR)) &&
                   acutNewString(static_cast<const Symbol*>(v)->name.c_str(), rb->resval.rstring) != RTNORM) {
          rb = nullptr;
        }
        break;
      case Kind::Ename:
      case Kind::Pickset:
        if ((rb = w.add(v->kind == Kind::Ename ? RTENAME : RTPICKS))) {
          rb->resval.rlname[0] = static_cast<const NameValue*>(v)->name[0];
          rb->resval.rlname[1] = static_cast<const NameValue*>(v)->name[1];
        }
        break;
      default: {
        std::wstring text;
        PrintValue(v, true, text);
        error = L"bad argument type: " + text;
        return false;
      }
    }
  }
  if (!rb) error = kNoMemory;
  return rb != nullptr;
}

// Walks nested lists with an explicit stack, like the printer.
bool WriteValue(Machine& m, ChainWriter& w, const ValuePtr& value, std::wstring& error) {
  std::vector<const Cons*> open;
  const Value* pending = value.get();
  bool havePending = true;
  for (;;) {
    if (havePending) {
      havePending = false;
      m.step();  // shared structure writes out in full
      if (pending && pending->kind == Kind::Cons) {
        if (int n = PointSize(pending)) {
          resbuf* rb = w.add(n == 2 ? RTPOINT : RT3DPOINT);
          if (!rb) return error = kNoMemory, false;
          int k = 0;
          for (const Value* p = pending; p; p = static_cast<const Cons*>(p)->cdr.get())
            rb->resval.rpoint[k++] = NumberAt(static_cast<const Cons*>(p)->car.get());
        } else {
          if (!w.add(RTLB)) return error = kNoMemory, false;
          open.push_back(static_cast<const Cons*>(pending));
          pending = open.back()->car.get();
          havePending = true;
          continue;
        }
      } else if (!WriteAtom(m, w, pending, error)) {
        return false;
      }
    }
    if (open.empty()) return true;
    const Value* next = open.back()->cdr.get();
    if (!next) {
      if (!w.add(RTLE)) return error = kNoMemory, false;
      open.pop_back();
    } else if (next->kind == Kind::Cons) {
      open.back() = static_cast<const Cons*>(next);
      pending = open.back()->car.get();
      havePending = true;
    } else {
      if (!w.add(RTDOTE) || !WriteAtom(m, w, next, error) || !w.add(RTLE)) {
        if (error.empty()) error = kNoMemory;
        return false;
      }
      open.pop_back();
    }
  }
}

// What a DXF group code's node holds.
enum class Group { Text, Real, Point, Short, Long, Int64, Name, Binary, Marker, Unknown };

Group GroupOf(int code) {
  auto in = [code](int lo, int hi) { return code >= lo && code <= hi; };
  if (code == -1 || code == -2 || in(330, 369) || in(390, 399) || in(480, 481)) return Group::Name;
  if (code == -3) return Group::Marker;
  if (code == -4 || in(0, 9) || in(100, 102) || code == 105 || in(300, 309) || in(320, 329) || in(410, 419) ||
      in(430, 439) || in(470, 479) || code == 999 || in(1000, 1003) || in(1005, 1009))
    return Group::Text;
  if (in(10, 18) || in(110, 112) || code == 210 || in(1010, 1013)) return Group::Point;
  if (in(19, 59) || in(113, 149) || in(211, 239) || in(460, 469) || in(1014, 1059)) return Group::Real;
  if (in(60, 79) || in(170, 179) || in(270, 299) || in(370, 389) || in(400, 409) || in(1060, 1070))
    return Group::Short;
  if (in(90, 99) || in(420, 429) || in(440, 459) || code == 1071) return Group::Long;
  if (in(160, 169)) return Group::Int64;
  if (in(310, 319) || code == 1004) return Group::Binary;
  return Group::Unknown;
}

ValuePtr Int64Value(std::int64_t v) {
  if (v >= INT32_MIN && v <= INT32_MAX) return MakeInt(static_cast<std::int32_t>(v));
  return MakeReal(static_cast<double>(v));
}

ValuePtr PointList(const double* p, int n) {
  ListBuilder b;
  for (int k = 0; k < n; ++k) b.add(MakeReal(p[k]));
  return b.take();
}

std::wstring Text(const resbuf* rb) { return rb->resval.rstring ? rb->resval.rstring : L""; }

bool GroupPair(const resbuf* rb, ValuePtr& out, std::wstring& error) {
  const int code = rb->restype;
  ValuePtr value;
  switch (GroupOf(code)) {
    case Group::Text: value = MakeStr(Text(rb)); break;
    case Group::Real: value = MakeReal(rb->resval.rreal); break;
    case Group::Point:
      out = MakeCons(MakeInt(code), PointList(rb->resval.rpoint, 3));
      return true;
    case Group::Short: value = MakeInt(rb->resval.rint); break;
    case Group::Long: value = MakeInt(rb->resval.rlong); break;
    case Group::Int64: value = Int64Value(rb->resval.mnInt64); break;
    case Group::Name: value = std::make_shared<NameValue>(Kind::Ename, rb->resval.rlname); break;
    case Group::Binary: {
      std::wstring hex;
      for (short k = 0; k < rb->resval.rbinary.clen && rb->resval.rbinary.buf; ++k) {
        wchar_t two[3];
        std::swprintf(two, 3, L"%02X", static_cast<unsigned char>(rb->resval.rbinary.buf[k]));
        hex += two;
      }
      value = MakeStr(hex);
      break;
    }
    case Group::Marker:
      out = MakeCons(MakeInt(code), nullptr);
      return true;
    case Group::Unknown:
      error = L"bad result type: " + std::to_wstring(code);
      return false;
  }
  out = MakeCons(MakeInt(code), std::move(value));
  return true;
}

// One node's value; none is set for nodes that carry no value.
bool NodeValue(Machine& m, const resbuf* rb, ValuePtr& out, bool& none, std::wstring& error) {
  none = false;
  switch (rb->restype) {
    case RTNONE:
    case RTVOID: none = true; return true;
    case RTREAL:
    case RTANG:
    case RTORINT: out = MakeReal(rb->resval.rreal); return true;
    case RTPOINT: out = PointList(rb->resval.rpoint, 2); return true;
    case RT3DPOINT: out = PointList(rb->resval.rpoint, 3); return true;
    case RTSHORT: out = MakeInt(rb->resval.rint); return true;
    case RTLONG: out = MakeInt(rb->resval.rlong); return true;
    case RTINT64: out = Int64Value(rb->resval.mnInt64); return true;
    case RTSTR: out = MakeStr(Text(rb)); return true;
    case RTENAME: out = std::make_shared<NameValue>(Kind::Ename, rb->resval.rlname); return true;
    case RTPICKS: out = std::make_shared<NameValue>(Kind::Pickset, rb->resval.rlname); return true;
    case RTNIL: out = nullptr; return true;
    case RTT: out = m.symT; return true;
    case RTDXF0: out = MakeCons(MakeInt(0), MakeStr(Text(rb))); return true;
    default:
      if (rb->restype >= 5000 && rb->restype < 6000) {
        error = L"bad result type: " + std::to_wstring(rb->restype);
        return false;
      }
      return GroupPair(rb, out, error);
  }
}

struct OpenList {
  ListBuilder items;
  bool hasItems = false;
  bool dotted = false;
  bool gotTail = false;
};

}  // namespace

ChainHolder::~ChainHolder() { acutRelRb(mChain); }

bool ArgsToChain(Machine& m, const Args& args, resbuf*& chain, std::wstring& error) {
  ChainWriter w;
  for (const ValuePtr& v : args)
    if (!WriteValue(m, w, v, error)) return false;
  chain = w.take();
  return true;
}

bool ValueToChain(Machine& m, const ValuePtr& v, resbuf*& chain, std::wstring& error) {
  ChainWriter w;
  if (!WriteValue(m, w, v, error)) return false;
  chain = w.take();
  return true;
}

bool ChainToItems(Machine& m, const resbuf* chain, Args& items, std::wstring& error) {
  const wchar_t kBadList[] = L"bad list in result chain";
  std::vector<OpenList> open;
  for (const resbuf* rb = chain; rb; rb = rb->rbnext) {
    ValuePtr value;
    if (rb->restype == RTLB) {
      open.emplace_back();
      continue;
    }
    if (rb->restype == RTDOTE) {
      if (open.empty() || !open.back().hasItems || open.back().dotted) return error = kBadList, false;
      open.back().dotted = true;
      continue;
    }
    if (rb->restype == RTLE) {
      if (open.empty() || (open.back().dotted && !open.back().gotTail)) return error = kBadList, false;
      value = open.back().items.take();
      open.pop_back();
    } else {
      bool none = false;
      if (!NodeValue(m, rb, value, none, error)) return false;
      if (none) continue;
    }
    if (open.empty()) {
      items.push_back(std::move(value));
    } else if (open.back().dotted) {
      if (open.back().gotTail) return error = kBadList, false;
      open.back().items.setTail(std::move(value));
      open.back().gotTail = true;
    } else {
      open.back().items.add(std::move(value));
      open.back().hasItems = true;
    }
  }
  if (!open.empty()) return error = kBadList, false;
  return true;
}

bool ChainToValue(Machine& m, const resbuf* chain, ValuePtr& out, std::wstring& error) {
  Args items;
  if (!ChainToItems(m, chain, items, error)) return false;
  out = items.empty() ? nullptr : items.size() == 1 ? items[0] : ListOf(items);
  return true;
}

}  // namespace kelhost::lisp
