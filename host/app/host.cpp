#include "kelhost/host.h"

#include <cstdio>
#include <memory>

#include "app/app_state.h"
#include "app/command_line.h"
#include "app/discipline.h"
#include "app/command_stack.h"
#include "editor/command_processor.h"
#include "app/module_loader.h"
#include "db/stub.h"
#include "kelhost/lisp.h"
#include "kelhost/text.h"
#include "lisp/external_calls.h"

namespace kelhost {
namespace {
std::function<void(const std::wstring&)>& Sink() {
  static std::function<void(const std::wstring&)> sink;
  return sink;
}
bool gAtLineStart = true;
}  // namespace

namespace app {
void WriteCommandLine(const std::wstring& text) {
  if (text.empty()) return;
  gAtLineStart = text.back() == L'\n';
  if (Sink()) {
    Sink()(text);
  } else {
    std::string bytes = ToUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  }
}
bool AtLineStart() { return gAtLineStart; }
}  // namespace app

Host::Host() = default;

Host& Host::instance() {
  static Host host;
  return host;
}

void Host::setCommandLineSink(std::function<void(const std::wstring&)> sink) { Sink() = std::move(sink); }
void Host::writeCommandLine(const std::wstring& text) { app::WriteCommandLine(text); }
bool Host::atLineStart() const { return app::AtLineStart(); }

lisp::Interpreter& Host::lisp() {
  static std::unique_ptr<lisp::Interpreter> interpreter = [] {
    auto interp = std::make_unique<lisp::Interpreter>();
    interp->setOutput([](const std::wstring& text) { app::WriteCommandLine(text); });
    interp->setExternalHandler(&lispbridge::ModuleCalls());
    return interp;
  }();
  return *interpreter;
}

bool Host::loadModule(const std::string& nativePath, std::wstring* error) {
  lisp();  // the document's AutoLISP environment exists before any module
  return app::LoadModule(nativePath, error);
}

bool Host::unloadModule(const std::string& nativePath, std::wstring* error) {
  return app::UnloadModule(nativePath, false, error);
}

void Host::unloadAll() { app::UnloadAllModules(); }

std::vector<std::string> Host::loadedModules() const {
  std::vector<std::string> paths;
  for (auto& m : app::Modules()) paths.push_back(m->path);
  return paths;
}

bool Host::runCommand(const std::wstring& name) { return editor::RunTypedCommand(name); }

bool Host::isCommand(const std::wstring& name) const { return editor::IsCommandName(name); }

// Objects of every database opened and not yet closed.
int Host::openObjectCount() const { return db::OpenObjectCount(); }
int Host::disciplineViolations() const { return app::DisciplineViolations(); }

}  // namespace kelhost
