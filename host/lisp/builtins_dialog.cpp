// Programmable dialogs from AutoLISP: load_dialog, new_dialog,
// start_dialog and the tile functions, over the headless dialog runtime
// (editor/dialog_runtime.h). The tile functions work on the current
// dialog: the newest one made and not yet finished.
#include <cwchar>
#include <cwctype>

#include "editor/dialog_runtime.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

namespace dcl = kelhost::editor::dcl;

ValuePtr LoadDialog(Machine& m, Args& a) { return MakeInt(dcl::LoadDialogFile(StrArg(m, a[0]))); }

ValuePtr UnloadDialog(Machine& m, Args& a) {
  dcl::UnloadDialogFile(IntArg(m, a[0]));
  return nullptr;
}

// (new_dialog name dcl_id [action [screen-pt]])
ValuePtr NewDialog(Machine& m, Args& a) {
  const std::wstring& name = StrArg(m, a[0]);
  const int id = IntArg(m, a[1]);
  dcl::Action fallback;
  if (a.size() > 2 && a[2]) fallback.expression = StrArg(m, a[2]);
  int x = -1, y = -1;
  if (a.size() > 3 && a[3]) {
    Args pt = ListArg(m, a[3]);
    if (pt.size() < 2 || !IsNumber(pt[0]) || !IsNumber(pt[1])) m.badArgument(L"2D/3D point: ", a[3]);
    x = static_cast<int>(NumberOf(pt[0]));
    y = static_cast<int>(NumberOf(pt[1]));
  }
  return m.truth(dcl::NewDialog(name, id, fallback, x, y) != nullptr);
}

ValuePtr StartDialog(Machine&, Args&) {
  dcl::Dialog* d = dcl::CurrentDialog();
  if (!d || d->started()) return nullptr;
  return MakeInt(dcl::StartDialog(d));
}

// (done_dialog [status]): the dialog's position as (x y).
ValuePtr DoneDialog(Machine& m, Args& a) {
  dcl::Dialog* d = dcl::CurrentDialog();
  const int status = a.empty() || !a[0] ? DLGCANCEL : IntArg(m, a[0]);
  if (!d) return nullptr;
  d->finish(status);
  ListBuilder pt;
  pt.add(MakeInt(d->x()));
  pt.add(MakeInt(d->y()));
  return pt.take();
}

ValuePtr TermDialog(Machine&, Args&) {
  dcl::TerminateDialogs();
  return nullptr;
}

ValuePtr ActionTile(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  const std::wstring& expression = StrArg(m, a[1]);
  dcl::Dialog* d = dcl::CurrentDialog();
  const int i = d ? d->find(key) : -1;
  if (i < 0) return nullptr;
  d->tile(i).action = dcl::Action();
  d->tile(i).action.expression = expression;
  return m.truth(true);
}

ValuePtr SetTile(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  const std::wstring& value = StrArg(m, a[1]);
  dcl::Dialog* d = dcl::CurrentDialog();
  return d && d->setValue(key, value) ? a[1] : nullptr;
}

ValuePtr GetTile(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  dcl::Dialog* d = dcl::CurrentDialog();
  const int i = d ? d->find(key) : -1;
  return i < 0 ? nullptr : MakeStr(d->tile(i).value);
}

ValuePtr ModeTile(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  const int mode = IntArg(m, a[1]);
  if (dcl::Dialog* d = dcl::CurrentDialog()) d->mode(key, mode);
  return nullptr;
}

ValuePtr ClientDataTile(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  const std::wstring& data = StrArg(m, a[1]);
  dcl::Dialog* d = dcl::CurrentDialog();
  const int i = d ? d->find(key) : -1;
  if (i >= 0) d->tile(i).data = data;
  return nullptr;
}

// The list or image a program is filling: its dialog and tile, while the
// dialog lives.
struct Filling {
  dcl::Dialog* dialog = nullptr;
  int tile = -1;
  int operation = 3;
  int index = 0;
  dcl::Dialog::TileState* state() const {
    if (!dialog || tile < 0 || !dcl::IsLiveDialog(dialog) || tile >= dialog->tileCount()) return nullptr;
    return &dialog->tile(tile);
  }
};
Filling gList, gImage;

// The current dialog's tile of that key when pred accepts it.
template <class Pred>
int TileOf(const std::wstring& key, Pred pred, dcl::Dialog*& d) {
  d = dcl::CurrentDialog();
  const int i = d ? d->find(key) : -1;
  return i >= 0 && pred(d->tile(i)) ? i : -1;
}

// (start_list key [operation [index]]): 1 changes the item at index, 2
// appends, 3 (the default) starts a new list.
ValuePtr StartList(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  const int operation = a.size() > 1 && a[1] ? IntArg(m, a[1]) : 3;
  const int index = a.size() > 2 && a[2] ? IntArg(m, a[2]) : 0;
  if (operation < 1 || operation > 3) m.raise(L"bad argument value: " + m.printed(a[1]));
  dcl::Dialog* d = nullptr;
  const int i = TileOf(key, [](const dcl::Dialog::TileState& t) { return t.isList(); }, d);
  if (i < 0) return nullptr;
  gList = Filling{d, i, operation, index};
  if (operation == 3) {
    d->tile(i).items.clear();
    d->tile(i).value.clear();
  }
  return a[0];
}

ValuePtr AddList(Machine& m, Args& a) {
  const std::wstring& item = StrArg(m, a[0]);
  dcl::Dialog::TileState* t = gList.state();
  if (!t) return nullptr;
  if (gList.operation == 1) {
    if (gList.index < 0 || static_cast<size_t>(gList.index) >= t->items.size()) return nullptr;
    t->items[static_cast<size_t>(gList.index++)] = item;
  } else {
    t->items.push_back(item);
  }
  return a[0];
}

ValuePtr EndList(Machine&, Args&) {
  gList = Filling{};
  return nullptr;
}

ValuePtr StartImage(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  dcl::Dialog* d = nullptr;
  const int i = TileOf(key, [](const dcl::Dialog::TileState& t) { return t.isImage(); }, d);
  if (i < 0) return nullptr;
  gImage = Filling{d, i, 0, 0};
  return a[0];
}

ValuePtr AddImageOp(Machine& m, Args& a, dcl::ImageOp::Kind kind) {
  dcl::ImageOp op{kind, IntArg(m, a[0]), IntArg(m, a[1]), IntArg(m, a[2]), IntArg(m, a[3]), 0, L""};
  if (kind == dcl::ImageOp::kSlide) op.slide = StrArg(m, a[4]);
  else op.color = IntArg(m, a[4]);
  dcl::Dialog::TileState* t = gImage.state();
  if (!t) return nullptr;
  t->image.push_back(op);
  return a[4];
}

ValuePtr FillImage(Machine& m, Args& a) { return AddImageOp(m, a, dcl::ImageOp::kFill); }
ValuePtr VectorImage(Machine& m, Args& a) { return AddImageOp(m, a, dcl::ImageOp::kVector); }
ValuePtr SlideImage(Machine& m, Args& a) { return AddImageOp(m, a, dcl::ImageOp::kSlide); }

ValuePtr EndImage(Machine&, Args&) {
  gImage = Filling{};
  return nullptr;
}

// A tile's size in the units image coordinates use: a character cell of
// 8 by 16 for each unit of its width and height.
template <bool Width>
ValuePtr TileDimension(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  dcl::Dialog* d = nullptr;
  const int i = TileOf(key, [](const dcl::Dialog::TileState&) { return true; }, d);
  if (i < 0) return nullptr;
  const std::wstring& text = d->tile(i).tile->attribute(Width ? L"width" : L"height");
  const double units = text.empty() ? (Width ? 10.0 : 5.0) : std::wcstod(text.c_str(), nullptr);
  return MakeInt(static_cast<std::int32_t>(units * (Width ? 8.0 : 16.0) + 0.5));
}

// (get_attr key attribute): the attribute as the DCL file gives it.
ValuePtr GetAttr(Machine& m, Args& a) {
  const std::wstring& key = StrArg(m, a[0]);
  std::wstring attribute = StrArg(m, a[1]);
  for (wchar_t& c : attribute) c = static_cast<wchar_t>(std::towlower(c));
  dcl::Dialog* d = nullptr;
  const int i = TileOf(key, [](const dcl::Dialog::TileState&) { return true; }, d);
  if (i < 0) return nullptr;
  return MakeStr(d->tile(i).tile->attribute(attribute));
}

}  // namespace

void RegisterDialogBuiltins(Machine& m) {
  m.defineBuiltin(L"START_LIST", StartList, 1, 3);
  m.defineBuiltin(L"ADD_LIST", AddList, 1, 1);
  m.defineBuiltin(L"END_LIST", EndList, 0, 0);
  m.defineBuiltin(L"START_IMAGE", StartImage, 1, 1);
  m.defineBuiltin(L"FILL_IMAGE", FillImage, 5, 5);
  m.defineBuiltin(L"VECTOR_IMAGE", VectorImage, 5, 5);
  m.defineBuiltin(L"SLIDE_IMAGE", SlideImage, 5, 5);
  m.defineBuiltin(L"END_IMAGE", EndImage, 0, 0);
  m.defineBuiltin(L"DIMX_TILE", TileDimension<true>, 1, 1);
  m.defineBuiltin(L"DIMY_TILE", TileDimension<false>, 1, 1);
  m.defineBuiltin(L"GET_ATTR", GetAttr, 2, 2);
  m.defineBuiltin(L"LOAD_DIALOG", LoadDialog, 1, 1);
  m.defineBuiltin(L"UNLOAD_DIALOG", UnloadDialog, 1, 1);
  m.defineBuiltin(L"NEW_DIALOG", NewDialog, 2, 4);
  m.defineBuiltin(L"START_DIALOG", StartDialog, 0, 0);
  m.defineBuiltin(L"DONE_DIALOG", DoneDialog, 0, 1);
  m.defineBuiltin(L"TERM_DIALOG", TermDialog, 0, 0);
  m.defineBuiltin(L"ACTION_TILE", ActionTile, 2, 2);
  m.defineBuiltin(L"SET_TILE", SetTile, 2, 2);
  m.defineBuiltin(L"GET_TILE", GetTile, 1, 1);
  m.defineBuiltin(L"MODE_TILE", ModeTile, 2, 2);
  m.defineBuiltin(L"CLIENT_DATA_TILE", ClientDataTile, 2, 2);
}

}  // namespace kelhost::lisp
