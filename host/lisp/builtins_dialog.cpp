// Programmable dialogs from AutoLISP: load_dialog, new_dialog,
// start_dialog and the tile functions, over the headless dialog runtime
// (editor/dialog_runtime.h). The tile functions work on the current
// dialog: the newest one made and not yet finished.
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

}  // namespace

void RegisterDialogBuiltins(Machine& m) {
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
