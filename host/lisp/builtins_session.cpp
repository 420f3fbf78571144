// The session and its environment: the interpreter's version, the
// symbols it knows, command names, the drawing's layouts, the shared
// namespaces (blackboard and document), loading into every document, the
// call stack, and the platform's windows, menus, help and external
// programs, which a headless session does not have.
#include <algorithm>
#include <vector>

#include "app/command_stack.h"
#include "ads/entity_names.h"
#include "arx/accmd.h"
#include "arx/acedads.h"
#include "arx/dbdatabase.h"
#include "arx/dbdict.h"
#include "arx/dblayout.h"
#include "db/stub.h"
#include "editor/builtin_commands.h"
#include "kelhost/text.h"
#include "lisp/loading.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

// The interpreter of the R20 generation, in English.
constexpr wchar_t kVersion[] = L"Visual LISP 2016 (en)";

ValuePtr Ver(Machine&, Args&) { return MakeStr(kVersion); }

ValuePtr Nil(Machine&, Args&) { return nullptr; }

// (startapp appcmd [file]): there are no other programs to start.
ValuePtr StartApp(Machine& m, Args& a) {
  StrArg(m, a[0]);
  if (a.size() > 1) StrArg(m, a[1]);
  return nullptr;
}

// (textscr): the text window is the command line, always shown.
ValuePtr TextScr(Machine&, Args&) { return nullptr; }

// (help [file [topic [command]]]): there is no help viewer.
ValuePtr Help(Machine& m, Args& a) {
  for (const ValuePtr& v : a)
    if (v) StrArg(m, v);
  if (a.size() > 2 && a[2]) IntArg(m, a[2]);
  return nullptr;
}

// (menugroup name): no menu group is loaded.
ValuePtr MenuGroup(Machine& m, Args& a) {
  StrArg(m, a[0]);
  return nullptr;
}

// (getcname name): a command's global name ("_LINE") for its local name,
// and its local name for "_LINE".
ValuePtr GetCName(Machine& m, Args& a) {
  std::wstring name = ToUpper(StrArg(m, a[0]));
  const bool global = !name.empty() && name[0] == L'_';
  if (global) name.erase(0, 1);
  if (name.empty()) return nullptr;
  std::wstring found;
  if (const editor::BuiltinCommand* c = editor::FindBuiltin(name)) {
    found = c->name;  // the host's commands have English local names
  } else if (AcEdCommand* cmd = app::FindRegisteredCommand(name, global)) {
    const ACHAR* n = global ? cmd->localName() : cmd->globalName();
    if (n) found = ToUpper(n);
  }
  if (found.empty()) return nullptr;
  return MakeStr(global ? found : L"_" + found);
}

// (atoms-family format [names]): the symbols that have a value, as
// symbols (format 0) or names (1); with names, each one's symbol or nil.
ValuePtr AtomsFamily(Machine& m, Args& a) {
  const std::int32_t format = IntArg(m, a[0]);
  if (format != 0 && format != 1) m.raise(L"bad argument value: " + m.printed(a[0]));
  auto item = [&](const std::shared_ptr<Symbol>& sym) -> ValuePtr {
    return format == 0 ? ValuePtr(sym) : MakeStr(sym->name);
  };
  ListBuilder out;
  if (a.size() > 1 && a[1]) {
    for (const ValuePtr& v : ListArg(m, a[1])) {
      auto it = m.symbols.find(ToUpper(StrArg(m, v)));
      out.add(it != m.symbols.end() && it->second->value ? item(it->second) : nullptr);
    }
    return out.take();
  }
  std::vector<std::shared_ptr<Symbol>> bound;
  for (const auto& entry : m.symbols)
    if (entry.second->value) bound.push_back(entry.second);
  m.step(bound.size());
  // Newest first in the platform; here, by name, so that runs agree.
  std::sort(bound.begin(), bound.end(), [](const auto& x, const auto& y) { return x->name < y->name; });
  for (const auto& sym : bound) out.add(item(sym));
  return out.take();
}

// (layoutlist): the paper-space layouts in tab order.
ValuePtr LayoutList(Machine&, Args&) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) return nullptr;
  auto* dict = db::PeekAs<AcDbDictionary>(db->layoutDictionaryId());
  if (!dict) return nullptr;
  std::vector<std::pair<int, std::wstring>> layouts;
  std::unique_ptr<AcDbDictionaryIterator> it(dict->newIterator());
  for (; it && !it->done(); it->next()) {
    auto* layout = db::PeekAs<AcDbLayout>(it->objectId());
    const ACHAR* name = nullptr;
    if (!layout || layout->getLayoutName(name) != Acad::eOk || !name) continue;
    if (EqualNoCase(name, L"Model")) continue;
    layouts.emplace_back(layout->getTabOrder(), name);
  }
  std::stable_sort(layouts.begin(), layouts.end(),
                   [](const auto& x, const auto& y) { return x.first < y.first; });
  ListBuilder out;
  for (auto& l : layouts) out.add(MakeStr(std::move(l.second)));
  return out.take();
}

// Every document shares one interpreter here, so a document's namespace
// is the interpreter's own symbols.
ValuePtr DocRef(Machine& m, Args& a) { return SymArg(m, a[0])->value; }

ValuePtr DocSet(Machine& m, Args& a) {
  SymArg(m, a[0])->value = a[1];
  return a[1];
}

// (vl-propagate 'sym): the value is already in every open document.
ValuePtr Propagate(Machine& m, Args& a) {
  SymArg(m, a[0]);
  return nullptr;
}

ValuePtr BbRef(Machine& m, Args& a) {
  auto it = m.blackboard.find(SymArg(m, a[0])->name);
  return it == m.blackboard.end() ? nullptr : it->second;
}

ValuePtr BbSet(Machine& m, Args& a) {
  const std::wstring& name = SymArg(m, a[0])->name;
  if (a[1]) m.blackboard[name] = a[1];
  else m.blackboard.erase(name);
  return a[1];
}

// (vl-load-all file): loads the file into every open document (the one
// there is); later documents would load it too.
ValuePtr LoadAll(Machine& m, Args& a) {
  const std::wstring& name = StrArg(m, a[0]);
  LoadFile(m, name, nullptr);
  return nullptr;
}

// (vl-bt): the calls under way, innermost first.
ValuePtr Backtrace(Machine& m, Args&) {
  std::wstring text = L"\nBacktrace:";
  const size_t n = m.callStack.size();
  for (size_t k = 0; k < n; ++k) {
    const Symbol* fn = m.callStack[n - 1 - k];
    text += L"\n[" + std::to_wstring(k) + L"] (" + (fn ? fn->name : std::wstring(L"#<lambda>")) + L")";
  }
  m.write(text);
  return nullptr;
}

}  // namespace

void RegisterSessionBuiltins(Machine& m) {
  m.defineBuiltin(L"VER", Ver, 0, 0);
  m.defineBuiltin(L"GC", Nil, 0, 0);
  m.defineBuiltin(L"TEXTSCR", TextScr, 0, 0);
  m.defineBuiltin(L"STARTAPP", StartApp, 1, 2);
  m.defineBuiltin(L"HELP", Help, 0, 3);
  m.defineBuiltin(L"MENUGROUP", MenuGroup, 1, 1);
  m.defineBuiltin(L"GETCNAME", GetCName, 1, 1);
  m.defineBuiltin(L"ATOMS-FAMILY", AtomsFamily, 1, 2);
  m.defineBuiltin(L"LAYOUTLIST", LayoutList, 0, 0);
  m.defineBuiltin(L"VL-DOC-REF", DocRef, 1, 1);
  m.defineBuiltin(L"VL-DOC-SET", DocSet, 2, 2);
  m.defineBuiltin(L"VL-PROPAGATE", Propagate, 1, 1);
  m.defineBuiltin(L"VL-BB-REF", BbRef, 1, 1);
  m.defineBuiltin(L"VL-BB-SET", BbSet, 2, 2);
  m.defineBuiltin(L"VL-LOAD-ALL", LoadAll, 1, 1);
  m.defineBuiltin(L"VL-BT", Backtrace, 0, 0);
}

}  // namespace kelhost::lisp
