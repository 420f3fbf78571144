// arxload, arxunload, arx and autoarxload: AutoLISP's side of loading
// applications. autoarxload defines C: command functions that load their
// application the first time they run and then run the command it defines.
#include "app/arx_loading.h"
#include "app/app_state.h"
#include "editor/command_processor.h"
#include "lisp/loading.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

const wchar_t* kStubHelper = L"_AUTOARXLOAD";

// (arxload application [onfailure]): the application as given.
ValuePtr ArxLoad(Machine& m, Args& a) {
  if (app::LoadArx(StrArg(m, a[0]))) return a[0];
  if (a.size() > 1) return FailureValue(m, a[1]);
  m.raise(L"ARXLOAD failed");
}

// (arxunload application [onfailure]): the application as given.
ValuePtr ArxUnload(Machine& m, Args& a) {
  if (app::UnloadArx(StrArg(m, a[0]))) return a[0];
  if (a.size() > 1) return FailureValue(m, a[1]);
  m.raise(L"ARXUNLOAD failed");
}

// (arx): the file names of the loaded applications, in load order.
ValuePtr Arx(Machine&, Args&) {
  ListBuilder list;
  for (const auto& module : app::Modules()) list.add(MakeStr(module->fileName));
  return list.take();
}

// Whether a C: function is still the stub autoarxload made.
bool IsStub(const ValuePtr& fn) {
  if (!Is(fn, Kind::USubr)) return false;
  const ValuePtr& body = As<USubr>(fn)->body;
  if (!IsCons(body) || !IsCons(AsCons(body)->car)) return false;
  const ValuePtr& head = AsCons(AsCons(body)->car)->car;
  return Is(head, Kind::Sym) && As<Symbol>(head)->name == kStubHelper;
}

// (autoarxload filename cmdlist): a C: function for each command not yet
// defined; nil.
ValuePtr AutoArxLoad(Machine& m, Args& a) {
  const std::wstring& file = StrArg(m, a[0]);
  for (const ValuePtr& item : ListArg(m, a[1])) {
    const std::wstring& command = StrArg(m, item);
    std::shared_ptr<Symbol> symbol = m.intern(L"C:" + command);
    if (symbol->value) continue;
    const ValuePtr call = ListOf({m.intern(kStubHelper), MakeStr(file), MakeStr(command)});
    symbol->value = m.makeFunction(symbol->name, nullptr, ListOf({call}));
  }
  return nullptr;
}

// What an autoarxload stub does: loads the application unless it is
// loaded, then runs the command: the application's own C: function when
// it defined one, else the command it registered (an unknown one gets
// the command line's message).
ValuePtr AutoArxLoadStub(Machine& m, Args& a) {
  const std::wstring& file = StrArg(m, a[0]);
  const std::wstring& command = StrArg(m, a[1]);
  if (!app::IsArxLoaded(file)) {
    if (!app::FindArxFile(file)) {
      m.write(L"\nThe file " + file + L"(.lsp/.exe/.arx) was not found in your search path folders.");
      m.write(L"\nCheck the installation of the support files and try again.");
      return m.symQuiet;
    }
    if (!app::LoadArx(file)) m.raise(L"ARXLOAD failed");
  }
  const ValuePtr defined = m.intern(L"C:" + command)->value;
  if (defined && !IsStub(defined)) {
    Args none;
    return m.apply(defined, none);
  }
  editor::RunCommandCall({editor::Token::Text(command)}, editor::TokenFeed::WhenEmpty::kWait);
  return nullptr;
}

}  // namespace

void RegisterArxBuiltins(Machine& m) {
  m.defineBuiltin(L"ARXLOAD", ArxLoad, 1, 2);
  m.defineBuiltin(L"ARXUNLOAD", ArxUnload, 1, 2);
  m.defineBuiltin(L"ARX", Arx, 0, 0);
  m.defineBuiltin(L"AUTOARXLOAD", AutoArxLoad, 2, 2);
  m.defineBuiltin(kStubHelper, AutoArxLoadStub, 2, 2);
}

}  // namespace kelhost::lisp
