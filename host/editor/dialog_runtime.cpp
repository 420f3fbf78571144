#include "editor/dialog_runtime.h"

#include <cstdio>
#include <map>
#include <sstream>

#include "app/support_path.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "editor/user_input.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"

namespace kelhost::editor::dcl {
namespace {

// Edit boxes take at most this many characters unless edit_limit says.
constexpr size_t kDefaultEditLimit = 132;

std::map<int, std::unique_ptr<DclLibrary>>& Files() {
  static std::map<int, std::unique_ptr<DclLibrary>> files;
  return files;
}

std::vector<std::unique_ptr<Dialog>>& Dialogs() {
  static std::vector<std::unique_ptr<Dialog>> dialogs;
  return dialogs;
}

bool IsRadioCluster(const std::wstring& type) {
  return type == L"radio_row" || type == L"radio_column" || type == L"boxed_radio_row" ||
         type == L"boxed_radio_column";
}

void Report(const Dialog& d, const std::wstring& why) {
  const std::string line = "dialog \"" + ToUtf8(d.name()) + "\": " + ToUtf8(why) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
}

void PutString(const wchar_t* symbol, const std::wstring& value) {
  resbuf rb{};
  rb.restype = RTSTR;
  rb.resval.rstring = const_cast<wchar_t*>(value.c_str());
  Host::instance().lisp().putSymbol(symbol, &rb);
}

void PutInt(const wchar_t* symbol, int value) {
  resbuf rb{};
  rb.restype = RTSHORT;
  rb.resval.rint = static_cast<short>(value);
  Host::instance().lisp().putSymbol(symbol, &rb);
}

// An AutoLISP action sees the event as $key, $value, $reason, $data, $x
// and $y; an error in it is reported and the dialog goes on.
void RunLispAction(const std::wstring& expression, const std::wstring& key, const std::wstring& value, int reason,
                   const std::wstring& data) {
  PutString(L"$key", key);
  PutString(L"$value", value);
  PutInt(L"$reason", reason);
  PutString(L"$data", data);
  PutInt(L"$x", 0);
  PutInt(L"$y", 0);
  Host::instance().lisp().evalSource(expression, nullptr);
}

std::wstring Trim(const std::wstring& s) {
  const size_t a = s.find_first_not_of(L" \t\r");
  if (a == std::wstring::npos) return L"";
  const size_t b = s.find_last_not_of(L" \t\r");
  return s.substr(a, b - a + 1);
}

}  // namespace

// ------------------------------------------------------------------ Dialog

Dialog::Dialog(std::wstring name, std::unique_ptr<Tile> root, Action defaultAction, int x, int y)
    : mName(std::move(name)), mRoot(std::move(root)), mDefault(std::move(defaultAction)), mX(x), mY(y) {
  collect(*mRoot, -1);
  for (size_t i = 0; i < mTiles.size(); ++i) {
    TileState& t = mTiles[i];
    if (t.type == L"radio_button" && t.value == L"1" && t.cluster >= 0) mTiles[t.cluster].value = t.key;
  }
}

void Dialog::collect(const Tile& t, int cluster) {
  TileState s;
  s.tile = &t;
  s.key = t.key();
  s.type = t.type;
  s.value = t.attribute(L"value");
  if (s.type == L"toggle" && s.value.empty()) s.value = L"0";
  s.cluster = cluster;
  s.enabled = t.attribute(L"is_enabled").empty() || t.flag(L"is_enabled");
  s.action.expression = t.attribute(L"action");
  if (s.isList()) {
    // The list attribute's lines ("\n" between them; "\t" stays a tab).
    const std::wstring& list = t.attribute(L"list");
    size_t from = 0;
    while (!list.empty() && from <= list.size()) {
      size_t nl = list.find(L'\n', from);
      if (nl == std::wstring::npos) nl = list.size();
      s.items.push_back(list.substr(from, nl - from));
      from = nl + 1;
    }
  }
  mTiles.push_back(s);
  const int index = static_cast<int>(mTiles.size()) - 1;
  const int inner = IsRadioCluster(t.type) ? index : cluster;
  for (const Tile& child : t.children) collect(child, inner);
}

int Dialog::find(const std::wstring& key) const {
  if (key.empty()) return -1;
  for (size_t i = 0; i < mTiles.size(); ++i)
    if (mTiles[i].key == key) return static_cast<int>(i);
  return -1;
}

void Dialog::select(int index, const std::wstring& value) {
  TileState& t = tile(index);
  if (t.type != L"radio_button" || t.cluster < 0) {
    t.value = value;
    return;
  }
  TileState& cluster = tile(t.cluster);
  if (value == L"1") {
    for (TileState& other : mTiles)
      if (other.type == L"radio_button" && other.cluster == t.cluster) other.value = L"0";
    t.value = L"1";
    cluster.value = t.key;
  } else {
    t.value = value;
    if (cluster.value == t.key) cluster.value.clear();
  }
}

bool Dialog::setValue(const std::wstring& key, const std::wstring& value) {
  const int i = find(key);
  if (i < 0) return false;
  if (IsRadioCluster(tile(i).type)) {
    for (size_t k = 0; k < mTiles.size(); ++k)
      if (mTiles[k].cluster == i && mTiles[k].type == L"radio_button" && mTiles[k].key == value) {
        select(static_cast<int>(k), L"1");
        return true;
      }
    tile(i).value = value;
    return true;
  }
  select(i, value);
  return true;
}

bool Dialog::mode(const std::wstring& key, int mode) {
  const int i = find(key);
  if (i < 0 || mode < MODE_ENABLE || mode > MODE_FLIP) return false;
  if (mode == MODE_ENABLE || mode == MODE_DISABLE) tile(i).enabled = mode == MODE_ENABLE;
  return true;
}

void Dialog::finish(int status) {
  if (mFinished) return;
  mFinished = true;
  mStatus = status;
}

// The tile's own action (action_tile, else its action attribute), else
// its radio cluster's, else the dialog's default action.
const Action* Dialog::actionOf(int index) const {
  const TileState& t = mTiles[static_cast<size_t>(index)];
  if (!t.action.empty()) return &t.action;
  if (t.cluster >= 0 && !mTiles[static_cast<size_t>(t.cluster)].action.empty())
    return &mTiles[static_cast<size_t>(t.cluster)].action;
  return mDefault.empty() ? nullptr : &mDefault;
}

void Dialog::act(int index, int reason) {
  const Action* action = actionOf(index);
  if (!action) return;
  // A radio cluster's action sees the cluster and the button picked.
  int from = index;
  if (tile(index).action.empty() && tile(index).cluster >= 0 && !tile(tile(index).cluster).action.empty())
    from = tile(index).cluster;
  TileState& t = tile(from);
  const Action run = *action;  // the action may replace itself
  if (run.function) {
    std::wstring value = t.value;
    ads_callback_packet packet{this, &t, &value[0], t.clientData, reason, 0, 0};
    run.function(&packet);
  } else {
    RunLispAction(run.expression, t.key, t.value, reason, t.data);
  }
}

void Dialog::press(int index) {
  TileState& t = tile(index);
  const bool ownAction = !t.action.empty();
  const bool isCancel = t.tile->flag(L"is_cancel");
  const std::wstring key = t.key;
  if (t.type == L"toggle") {
    t.value = t.value == L"1" ? L"0" : L"1";
  } else if (t.type == L"radio_button") {
    select(index, L"1");
  }
  act(index, CBR_SELECT);
  if (mFinished) return;
  // The standard exit buttons close the dialog by themselves unless the
  // program gave them an action; a cancel button closes it after its
  // action whatever that did.
  if (!ownAction && key == L"accept") finish(DLGOK);
  else if ((!ownAction && key == L"cancel") || isCancel) finish(DLGCANCEL);
}

void Dialog::pressDefault() {
  int chosen = -1;
  for (size_t i = 0; i < mTiles.size() && chosen < 0; ++i)
    if (mTiles[i].enabled && mTiles[i].tile->flag(L"is_default")) chosen = static_cast<int>(i);
  if (chosen < 0) chosen = find(L"accept");
  if (chosen >= 0 && tile(chosen).enabled) press(chosen);
}

void Dialog::pressCancel() {
  int chosen = -1;
  for (size_t i = 0; i < mTiles.size() && chosen < 0; ++i)
    if (mTiles[i].tile->flag(L"is_cancel")) chosen = static_cast<int>(i);
  if (chosen < 0) chosen = find(L"cancel");
  if (chosen >= 0) press(chosen);
  else finish(DLGCANCEL);
}

bool Dialog::answer(const std::wstring& line, std::wstring& why) {
  if (Trim(line).empty()) {
    pressDefault();
    return true;
  }
  const size_t eq = line.find(L'=');
  const std::wstring key = Trim(line.substr(0, eq));
  const int i = find(key);
  if (i < 0) {
    why = L"no tile \"" + key + L"\"";
    return false;
  }
  TileState& t = tile(i);
  if (!t.enabled) {
    why = L"tile \"" + key + L"\" is disabled";
    return false;
  }
  if (eq == std::wstring::npos) {
    press(i);
    return true;
  }
  std::wstring value = line.substr(eq + 1);
  if (!value.empty() && value.back() == L'\r') value.pop_back();
  const std::wstring& type = t.type;
  int target = i, reason = CBR_SELECT;
  if (type == L"edit_box") {
    const long limit = std::wcstol(t.tile->attribute(L"edit_limit").c_str(), nullptr, 10);
    const size_t max = limit > 0 ? static_cast<size_t>(limit) : kDefaultEditLimit;
    if (value.size() > max) value.resize(max);
    t.value = value;
    reason = CBR_LOST_FOCUS;
  } else if (type == L"toggle" || type == L"radio_button") {
    if (value != L"0" && value != L"1") {
      why = L"tile \"" + key + L"\" takes 0 or 1";
      return false;
    }
    select(i, value);
  } else if (IsRadioCluster(type)) {
    target = -1;
    for (size_t k = 0; k < mTiles.size() && target < 0; ++k)
      if (mTiles[k].cluster == i && mTiles[k].type == L"radio_button" && mTiles[k].key == value && mTiles[k].enabled)
        target = static_cast<int>(k);
    if (target < 0) {
      why = L"tile \"" + key + L"\" has no radio button \"" + value + L"\"";
      return false;
    }
    select(target, L"1");
  } else if (t.isList()) {
    // Item indices ("0 2"; a popup list takes one) within the list.
    std::wistringstream indices(value);
    std::wstring word;
    int count = 0;
    while (indices >> word) {
      wchar_t* end = nullptr;
      const long n = std::wcstol(word.c_str(), &end, 10);
      if (*end || n < 0 || static_cast<size_t>(n) >= t.items.size() || (type == L"popup_list" && count > 0)) {
        why = L"tile \"" + key + L"\" has no item " + word;
        return false;
      }
      ++count;
    }
    t.value = Trim(value);
  } else if (type == L"slider") {
    t.value = value;
  } else {
    why = L"tile \"" + key + L"\" takes no value";
    return false;
  }
  act(target, reason);
  return true;
}

// ------------------------------------------------------------------ files and dialogs

int LoadDialogFile(const std::wstring& name) {
  std::wstring file = name;
  const size_t slash = file.find_last_of(L"/\\");
  const size_t dot = file.find_last_of(L'.');
  if (dot == std::wstring::npos || (slash != std::wstring::npos && dot < slash)) file += L".dcl";
  const auto found = app::FindSupportFile(file);
  std::string bytes;
  if (!found || !ReadWholeFile(NativePath(*found), bytes)) return -1;
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) bytes.erase(0, 3);
  auto library = std::make_unique<DclLibrary>();
  Error error;
  if (!library->read(FromUtf8(bytes), *found, error)) {
    acedAlert(error.text().c_str());
    return -1;
  }
  static int lastId = 0;
  const int id = ++lastId;
  Files()[id] = std::move(library);
  return id;
}

bool UnloadDialogFile(int id) { return Files().erase(id) != 0; }

Dialog* NewDialog(const std::wstring& name, int fileId, Action defaultAction, int x, int y) {
  auto file = Files().find(fileId);
  if (file == Files().end()) return nullptr;
  auto root = std::make_unique<Tile>();
  Error error;
  if (!file->second->make(name, *root, error)) {
    if (!error.message.empty()) acedAlert(error.text().c_str());
    return nullptr;
  }
  if (root->type != L"dialog") return nullptr;
  auto dialog = std::make_unique<Dialog>(name, std::move(root), std::move(defaultAction), x, y);
  // The user must be able to leave it.
  bool closable = dialog->find(L"accept") >= 0 || dialog->find(L"cancel") >= 0;
  for (int i = 0; !closable && i < dialog->tileCount(); ++i) closable = dialog->tile(i).tile->flag(L"is_cancel");
  if (!closable) {
    Error e;
    const Tile& t = *dialog->tile(0).tile;
    e.file = t.file;
    e.line = t.line;
    e.message = L"Dialog has neither an OK nor a CANCEL button.";
    acedAlert(e.text().c_str());
    return nullptr;
  }
  Dialogs().push_back(std::move(dialog));
  return Dialogs().back().get();
}

Dialog* CurrentDialog() { return Dialogs().empty() ? nullptr : Dialogs().back().get(); }

bool IsLiveDialog(const void* dialog) {
  for (const auto& d : Dialogs())
    if (d.get() == dialog) return true;
  return false;
}

int StartDialog(Dialog* dialog) {
  // The dialog, and any made during it and never started, goes when it
  // is finished, however start_dialog is left.
  struct Remove {
    Dialog* dialog;
    ~Remove() {
      auto& all = Dialogs();
      for (size_t i = 0; i < all.size(); ++i)
        if (all[i].get() == dialog) {
          all.erase(all.begin() + static_cast<long>(i), all.end());
          break;
        }
    }
  } remove{dialog};
  dialog->setStarted();
  while (!dialog->finished()) {
    const ReadInput in = NextInput(true, false);
    if (in.token.kind == Token::kCancel) {
      dialog->pressCancel();
      if (in.ended) dialog->finish(DLGCANCEL);
    } else {
      std::wstring why;
      if (!dialog->answer(in.token.kind == Token::kText ? in.token.text : L"", why)) Report(*dialog, why);
    }
  }
  return dialog->status();
}

void TerminateDialogs() {
  for (auto& d : Dialogs()) d->finish(DLGALLDONE);
}

}  // namespace kelhost::editor::dcl
