// Entity, table and dictionary functions: entmake, entget, entmod...
// Entity lists travel as flat chains; here they become AutoLISP lists of
// dotted pairs, with the xdata nested as (-3 ("APP" (1000 . "x") ...)).
#include <cstdio>

#include "arx/acdbads.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "kelhost/resbuf_kinds.h"
#include "kelhost/text.h"
#include "ads/entity_make.h"
#include "lisp/chain.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

// ---------------------------------------------------------------- AutoLISP list to chain

class Builder {
 public:
  explicit Builder(Machine& m) : mMachine(m) {}
  ~Builder() { acutRelRb(mHead); }
  resbuf* add(int code) {
    resbuf* rb = acutNewRb(code);
    if (!rb) mMachine.raise(L"insufficient memory");
    *mTail = rb;
    mTail = &rb->rbnext;
    return rb;
  }
  void addText(int code, const std::wstring& text) {
    resbuf* rb = add(code);
    if (acutNewString(text.c_str(), rb->resval.rstring) != RTNORM) mMachine.raise(L"insufficient memory");
  }
  resbuf* take() {
    resbuf* head = mHead;
    mHead = nullptr;
    mTail = &mHead;
    return head;
  }

 private:
  Machine& mMachine;
  resbuf* mHead = nullptr;
  resbuf** mTail = &mHead;
};

[[noreturn]] void BadGroup(Machine& m, const ValuePtr& group) { m.raise(L"bad DXF group: " + m.printed(group)); }

// One (code . value) or (code x y [z]) group.
void AddGroup(Machine& m, Builder& b, const ValuePtr& group) {
  if (!IsCons(group) || !Is(AsCons(group)->car, Kind::Int)) BadGroup(m, group);
  const int code = As<IntValue>(AsCons(group)->car)->value;
  const ValuePtr& v = AsCons(group)->cdr;
  if (code < -32768 || code > 32767) BadGroup(m, group);
  switch (ResbufKind(code)) {
    case RbKind::kString:
      if (!Is(v, Kind::Str)) BadGroup(m, group);
      b.addText(code, As<StrValue>(v)->value);
      return;
    case RbKind::kReal:
      if (!IsNumber(v)) BadGroup(m, group);
      b.add(code)->resval.rreal = NumberOf(v);
      return;
    case RbKind::kShort:
      if (!Is(v, Kind::Int) || As<IntValue>(v)->value < -32768 || As<IntValue>(v)->value > 32767) BadGroup(m, group);
      b.add(code)->resval.rint = static_cast<short>(As<IntValue>(v)->value);
      return;
    case RbKind::kLong:
      if (!Is(v, Kind::Int)) BadGroup(m, group);
      b.add(code)->resval.rlong = As<IntValue>(v)->value;
      return;
    case RbKind::kInt64:
      if (!Is(v, Kind::Int)) BadGroup(m, group);
      b.add(code)->resval.mnInt64 = As<IntValue>(v)->value;
      return;
    case RbKind::kName: {
      if (!Is(v, Kind::Ename)) BadGroup(m, group);
      resbuf* rb = b.add(code);
      rb->resval.rlname[0] = As<NameValue>(v)->name[0];
      rb->resval.rlname[1] = As<NameValue>(v)->name[1];
      return;
    }
    case RbKind::kPoint: {
      Args coords;
      if (!ListElements(v, coords) || coords.size() < 2 || coords.size() > 3) BadGroup(m, group);
      resbuf* rb = b.add(code);
      for (size_t i = 0; i < coords.size(); ++i) {
        if (!IsNumber(coords[i])) BadGroup(m, group);
        rb->resval.rpoint[i] = NumberOf(coords[i]);
      }
      return;
    }
    default:
      BadGroup(m, group);
  }
}

// (-3 ("APP" groups...) ...): a -3 node, then per application its 1001
// node and groups.
void AddXData(Machine& m, Builder& b, const ValuePtr& group, bool sentinel) {
  Args apps;
  if (!ListElements(group, apps)) BadGroup(m, group);
  if (sentinel) b.add(-3);
  for (size_t i = sentinel ? 1 : 0; i < apps.size(); ++i) {
    Args items;
    if (!ListElements(apps[i], items) || items.empty() || !Is(items[0], Kind::Str)) BadGroup(m, apps[i]);
    b.addText(1001, As<StrValue>(items[0])->value);
    for (size_t k = 1; k < items.size(); ++k) AddGroup(m, b, items[k]);
  }
}

bool IsXDataGroup(const ValuePtr& group) {
  return IsCons(group) && Is(AsCons(group)->car, Kind::Int) && As<IntValue>(AsCons(group)->car)->value == -3;
}

resbuf* ListToChain(Machine& m, const ValuePtr& list) {
  Args groups = ListArg(m, list);
  Builder b(m);
  for (const ValuePtr& g : groups) {
    if (IsXDataGroup(g)) AddXData(m, b, g, true);
    else AddGroup(m, b, g);
  }
  return b.take();
}

// ---------------------------------------------------------------- chain to AutoLISP list

ValuePtr NameOf(const std::int64_t name[2]) { return std::make_shared<NameValue>(Kind::Ename, name); }

ValuePtr GroupValue(const resbuf* rb, bool twoD) {
  const int code = rb->restype;
  ValuePtr value;
  switch (ResbufKind(code)) {
    case RbKind::kString: value = MakeStr(rb->resval.rstring ? rb->resval.rstring : L""); break;
    case RbKind::kReal: value = MakeReal(rb->resval.rreal); break;
    case RbKind::kShort: value = MakeInt(rb->resval.rint); break;
    case RbKind::kLong: value = MakeInt(rb->resval.rlong); break;
    case RbKind::kInt64: value = MakeReal(static_cast<double>(rb->resval.mnInt64)); break;
    case RbKind::kName: value = NameOf(rb->resval.rlname); break;
    case RbKind::kPoint: {
      ListBuilder pt;
      for (int i = 0; i < (twoD ? 2 : 3); ++i) pt.add(MakeReal(rb->resval.rpoint[i]));
      return MakeCons(MakeInt(code), pt.take());
    }
    case RbKind::kBinary: {
      std::wstring hex;
      for (short k = 0; k < rb->resval.rbinary.clen && rb->resval.rbinary.buf; ++k) {
        wchar_t two[3];
        std::swprintf(two, 3, L"%02X", static_cast<unsigned char>(rb->resval.rbinary.buf[k]));
        hex += two;
      }
      value = MakeStr(hex);
      break;
    }
    default: break;
  }
  return MakeCons(MakeInt(code), value);
}

ValuePtr ChainToList(const resbuf* chain) {
  ListBuilder list;
  bool lwpolyline = false;
  const resbuf* rb = chain;
  for (; rb && rb->restype != -3; rb = rb->rbnext) {
    if (rb->restype == 0 && rb->resval.rstring && std::wstring(rb->resval.rstring) == L"LWPOLYLINE") lwpolyline = true;
    list.add(GroupValue(rb, lwpolyline && rb->restype == 10));
  }
  if (rb) {
    ListBuilder xdata;
    xdata.add(MakeInt(-3));
    rb = rb->rbnext;
    while (rb) {
      ListBuilder app;
      app.add(MakeStr(rb->resval.rstring ? rb->resval.rstring : L""));
      for (rb = rb->rbnext; rb && rb->restype != 1001; rb = rb->rbnext) app.add(GroupValue(rb, false));
      xdata.add(app.take());
    }
    list.add(xdata.take());
  }
  return list.take();
}

ValuePtr ListResult(resbuf* chain) {
  ChainHolder hold(chain);
  return chain ? ChainToList(chain) : nullptr;
}

// ---------------------------------------------------------------- arguments

const std::int64_t* EnameArg(Machine& m, const ValuePtr& v) {
  if (!Is(v, Kind::Ename)) m.badArgument(L"lentityp ", v);
  return As<NameValue>(v)->name;
}

bool Flag(const Args& a, size_t i) { return a.size() > i && a[i]; }

// ---------------------------------------------------------------- built-ins

ValuePtr EntGet(Machine& m, Args& a) {
  const std::int64_t* name = EnameArg(m, a[0]);
  if (a.size() < 2) return ListResult(acdbEntGet(name));
  Builder apps(m);
  for (const ValuePtr& app : ListArg(m, a[1])) apps.addText(RTSTR, StrArg(m, app));
  ChainHolder appChain(apps.take());
  return ListResult(acdbEntGetX(name, appChain.get()));
}

ValuePtr EntMake(Machine& m, Args& a) {
  if (a.empty() || !a[0]) return nullptr;
  ChainHolder chain(ListToChain(m, a[0]));
  const int rc = acdbEntMake(chain.get());
  // The ENDBLK of an anonymous block answers with the block's new name.
  if (rc == RTKWORD) return MakeStr(kelhost::ads::LastBlockName());
  return rc == RTNORM ? a[0] : nullptr;
}

ValuePtr EntMakeX(Machine& m, Args& a) {
  if (a.empty() || !a[0]) return nullptr;
  ChainHolder chain(ListToChain(m, a[0]));
  ads_name made;
  // Parts of a complex entity before its SEQEND make nothing yet: nil.
  return acdbEntMakeX(chain.get(), made) == RTNORM && !ads_name_nil(made) ? NameOf(made) : nullptr;
}

ValuePtr EntMod(Machine& m, Args& a) {
  ChainHolder chain(ListToChain(m, a[0]));
  return acdbEntMod(chain.get()) == RTNORM ? a[0] : nullptr;
}

// (textbox elist): the corners of the text's ink box, nil when it cannot
// be measured.
ValuePtr TextBox(Machine& m, Args& a) {
  ChainHolder chain(ListToChain(m, a[0]));
  ads_point lowerLeft, upperRight;
  if (acedTextBox(chain.get(), lowerLeft, upperRight) != RTNORM) return nullptr;
  ListBuilder corners;
  for (const ads_real* p : {lowerLeft, upperRight}) {
    ListBuilder pt;
    for (int i = 0; i < 3; ++i) pt.add(MakeReal(p[i]));
    corners.add(pt.take());
  }
  return corners.take();
}

ValuePtr EntUpd(Machine& m, Args& a) { return acdbEntUpd(EnameArg(m, a[0])) == RTNORM ? a[0] : nullptr; }
ValuePtr EntDel(Machine& m, Args& a) { return acdbEntDel(EnameArg(m, a[0])) == RTNORM ? a[0] : nullptr; }

ValuePtr EntLast(Machine&, Args&) {
  ads_name name;
  return acdbEntLast(name) == RTNORM ? NameOf(name) : nullptr;
}

ValuePtr EntNext(Machine& m, Args& a) {
  ads_name name;
  const std::int64_t* from = a.empty() || !a[0] ? nullptr : EnameArg(m, a[0]);
  return acdbEntNext(from, name) == RTNORM ? NameOf(name) : nullptr;
}

ValuePtr HandEnt(Machine& m, Args& a) {
  ads_name name;
  return acdbHandEnt(StrArg(m, a[0]).c_str(), name) == RTNORM ? NameOf(name) : nullptr;
}

ValuePtr TblSearch(Machine& m, Args& a) {
  return ListResult(acdbTblSearch(StrArg(m, a[0]).c_str(), StrArg(m, a[1]).c_str(), Flag(a, 2) ? 1 : 0));
}

ValuePtr TblNext(Machine& m, Args& a) { return ListResult(acdbTblNext(StrArg(m, a[0]).c_str(), Flag(a, 1) ? 1 : 0)); }

ValuePtr TblObjName(Machine& m, Args& a) {
  ads_name name;
  return acdbTblObjName(StrArg(m, a[0]).c_str(), StrArg(m, a[1]).c_str(), name) == RTNORM ? NameOf(name) : nullptr;
}

ValuePtr RegApp(Machine& m, Args& a) { return acdbRegApp(StrArg(m, a[0]).c_str()) == RTNORM ? a[0] : nullptr; }

ValuePtr NamedObjDict(Machine&, Args&) {
  ads_name name;
  return acdbNamedObjDict(name) == RTNORM ? NameOf(name) : nullptr;
}

ValuePtr DictSearch(Machine& m, Args& a) {
  return ListResult(acdbDictSearch(EnameArg(m, a[0]), StrArg(m, a[1]).c_str(), Flag(a, 2) ? 1 : 0));
}

ValuePtr DictNext(Machine& m, Args& a) { return ListResult(acdbDictNext(EnameArg(m, a[0]), Flag(a, 1) ? 1 : 0)); }

ValuePtr DictAdd(Machine& m, Args& a) {
  const std::int64_t* dict = EnameArg(m, a[0]);
  const std::wstring& key = StrArg(m, a[1]);
  return acdbDictAdd(dict, key.c_str(), EnameArg(m, a[2])) == RTNORM ? a[2] : nullptr;
}

ValuePtr DictRemove(Machine& m, Args& a) {
  const std::int64_t* dict = EnameArg(m, a[0]);
  const std::wstring& key = StrArg(m, a[1]);
  // The entry's name, found before it goes.
  ChainHolder entry(acdbDictSearch(dict, key.c_str(), 0));
  if (!entry.get() || acdbDictRemove(dict, key.c_str()) != RTNORM) return nullptr;
  return NameOf(entry.get()->resval.rlname);
}

ValuePtr DictRename(Machine& m, Args& a) {
  const std::int64_t* dict = EnameArg(m, a[0]);
  return acdbDictRename(dict, StrArg(m, a[1]).c_str(), StrArg(m, a[2]).c_str()) == RTNORM ? a[2] : nullptr;
}

ValuePtr XdRoom(Machine& m, Args& a) {
  long room = 0;
  return acdbXdRoom(EnameArg(m, a[0]), &room) == RTNORM ? MakeInt(static_cast<std::int32_t>(room)) : nullptr;
}

ValuePtr XdSize(Machine& m, Args& a) {
  Args items = ListArg(m, a[0]);
  Builder b(m);
  if (!items.empty() && Is(items[0], Kind::Int) && As<IntValue>(items[0])->value == -3) AddXData(m, b, a[0], true);
  else AddXData(m, b, a[0], false);
  ChainHolder chain(b.take());
  long size = 0;
  return acdbXdSize(chain.get(), &size) == RTNORM ? MakeInt(static_cast<std::int32_t>(size)) : nullptr;
}

ValuePtr SnValid(Machine& m, Args& a) {
  const int flag = a.size() > 1 && a[1] ? IntArg(m, a[1]) : 0;
  return m.truth(acdbSNValid(StrArg(m, a[0]).c_str(), flag) == RTNORM);
}

}  // namespace

void RegisterEntityBuiltins(Machine& m) {
  m.defineBuiltin(L"ENTGET", EntGet, 1, 2);
  m.defineBuiltin(L"ENTMAKE", EntMake, 0, 1);
  m.defineBuiltin(L"ENTMAKEX", EntMakeX, 0, 1);
  m.defineBuiltin(L"ENTMOD", EntMod, 1, 1);
  m.defineBuiltin(L"ENTUPD", EntUpd, 1, 1);
  m.defineBuiltin(L"TEXTBOX", TextBox, 1, 1);
  m.defineBuiltin(L"ENTDEL", EntDel, 1, 1);
  m.defineBuiltin(L"ENTLAST", EntLast, 0, 0);
  m.defineBuiltin(L"ENTNEXT", EntNext, 0, 1);
  m.defineBuiltin(L"HANDENT", HandEnt, 1, 1);
  m.defineBuiltin(L"TBLSEARCH", TblSearch, 2, 3);
  m.defineBuiltin(L"TBLNEXT", TblNext, 1, 2);
  m.defineBuiltin(L"TBLOBJNAME", TblObjName, 2, 2);
  m.defineBuiltin(L"REGAPP", RegApp, 1, 1);
  m.defineBuiltin(L"NAMEDOBJDICT", NamedObjDict, 0, 0);
  m.defineBuiltin(L"DICTSEARCH", DictSearch, 2, 3);
  m.defineBuiltin(L"DICTNEXT", DictNext, 1, 2);
  m.defineBuiltin(L"DICTADD", DictAdd, 3, 3);
  m.defineBuiltin(L"DICTREMOVE", DictRemove, 2, 2);
  m.defineBuiltin(L"DICTRENAME", DictRename, 3, 3);
  m.defineBuiltin(L"XDROOM", XdRoom, 1, 1);
  m.defineBuiltin(L"XDSIZE", XdSize, 1, 1);
  m.defineBuiltin(L"SNVALID", SnValid, 1, 2);
}

}  // namespace kelhost::lisp
