// The C calls of programmable dialogs over the headless dialog runtime.
#include <algorithm>
#include <cwchar>
#include <cwctype>

#include "arx/adsdlg.h"
#include "editor/dialog_runtime.h"

using kelhost::editor::dcl::Action;
using kelhost::editor::dcl::Dialog;

namespace {

Dialog* Live(ads_hdlg hdlg) {
  return kelhost::editor::dcl::IsLiveDialog(hdlg) ? static_cast<Dialog*>(hdlg) : nullptr;
}

// A tile of a live dialog by its key.
Dialog::TileState* TileOf(ads_hdlg hdlg, const ACHAR* key) {
  Dialog* d = Live(hdlg);
  if (!d || !key) return nullptr;
  const int i = d->find(key);
  return i < 0 ? nullptr : &d->tile(i);
}

template <typename F>
int Guarded(F&& f) {
  try {
    return f();
  } catch (...) {
    return RTERROR;
  }
}

}  // namespace

int ads_load_dialog(const ACHAR* dclfile, int* dcl_id) {
  return Guarded([&] {
    if (!dcl_id) return RTERROR;
    *dcl_id = dclfile ? kelhost::editor::dcl::LoadDialogFile(dclfile) : -1;
    return *dcl_id > 0 ? RTNORM : RTERROR;
  });
}

int ads_unload_dialog(int dcl_id) {
  return Guarded([&] { return kelhost::editor::dcl::UnloadDialogFile(dcl_id) ? RTNORM : RTERROR; });
}

int ads_new_positioned_dialog(const ACHAR* dlgname, int dcl_id, CLIENTFUNC def_callback, int x, int y,
                              ads_hdlg* hdlg) {
  return Guarded([&] {
    if (!hdlg) return RTERROR;
    *hdlg = nullptr;
    if (!dlgname) return RTERROR;
    Action fallback;
    fallback.function = def_callback;
    *hdlg = kelhost::editor::dcl::NewDialog(dlgname, dcl_id, fallback, x, y);
    return *hdlg ? RTNORM : RTERROR;
  });
}

int ads_new_dialog(const ACHAR* dlgname, int dcl_id, CLIENTFUNC def_callback, ads_hdlg* hdlg) {
  return ads_new_positioned_dialog(dlgname, dcl_id, def_callback, -1, -1, hdlg);
}

int ads_start_dialog(ads_hdlg hdlg, int* status) {
  return Guarded([&] {
    Dialog* d = Live(hdlg);
    if (!d || d->started()) return RTERROR;
    const int result = kelhost::editor::dcl::StartDialog(d);
    if (status) *status = result;
    return RTNORM;
  });
}

int ads_done_positioned_dialog(ads_hdlg hdlg, int status, int* x_result, int* y_result) {
  return Guarded([&] {
    Dialog* d = Live(hdlg);
    if (!d) return RTERROR;
    d->finish(status);
    if (x_result) *x_result = d->x();
    if (y_result) *y_result = d->y();
    return RTNORM;
  });
}

int ads_done_dialog(ads_hdlg hdlg, int status) { return ads_done_positioned_dialog(hdlg, status, nullptr, nullptr); }

int ads_term_dialog() {
  return Guarded([] {
    kelhost::editor::dcl::TerminateDialogs();
    return RTNORM;
  });
}

int ads_action_tile(ads_hdlg hdlg, const ACHAR* key, CLIENTFUNC tilefunc) {
  return Guarded([&] {
    Dialog::TileState* t = TileOf(hdlg, key);
    if (!t) return RTERROR;
    t->action = Action();
    t->action.function = tilefunc;
    return RTNORM;
  });
}

int ads_set_tile(ads_hdlg hdlg, const ACHAR* key, const ACHAR* value) {
  return Guarded([&] {
    Dialog* d = Live(hdlg);
    return d && key && value && d->setValue(key, value) ? RTNORM : RTERROR;
  });
}

int ads_get_tile(ads_hdlg hdlg, const ACHAR* key, ACHAR* value, int maxlen) {
  return Guarded([&] {
    Dialog::TileState* t = TileOf(hdlg, key);
    if (!t || !value || maxlen <= 0) return RTERROR;
    const size_t n = std::min(t->value.size(), static_cast<size_t>(maxlen - 1));
    std::wmemcpy(value, t->value.data(), n);
    value[n] = L'\0';
    return RTNORM;
  });
}

int ads_mode_tile(ads_hdlg hdlg, const ACHAR* key, short mode) {
  return Guarded([&] {
    Dialog* d = Live(hdlg);
    return d && key && d->mode(key, mode) ? RTNORM : RTERROR;
  });
}

int ads_client_data_tile(ads_hdlg hdlg, const ACHAR* key, void* clientdata) {
  return Guarded([&] {
    Dialog::TileState* t = TileOf(hdlg, key);
    if (!t) return RTERROR;
    t->clientData = clientdata;
    return RTNORM;
  });
}

int ads_get_attr_string(ads_htile tilehandle, const ACHAR* attr, ACHAR* value, int len) {
  return Guarded([&] {
    if (!tilehandle || !attr || !value || len <= 0) return RTERROR;
    const auto* t = static_cast<const Dialog::TileState*>(tilehandle);
    std::wstring name = attr;
    for (wchar_t& c : name) c = static_cast<wchar_t>(std::towlower(c));
    const std::wstring& text = t->tile->attribute(name);
    const size_t n = std::min(text.size(), static_cast<size_t>(len - 1));
    std::wmemcpy(value, text.data(), n);
    value[n] = L'\0';
    return RTNORM;
  });
}
