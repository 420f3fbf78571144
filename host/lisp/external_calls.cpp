#include "lisp/external_calls.h"

#include <map>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "app/discipline.h"
#include "db/stub.h"
#include "arx/acutads.h"

namespace kelhost::lispbridge {
namespace {

std::vector<CallFrame*>& Frames() {
  static std::vector<CallFrame*> frames;
  return frames;
}

std::map<std::pair<void*, int>, int (*)()>& DirectHandlers() {
  static std::map<std::pair<void*, int>, int (*)()> handlers;
  return handlers;
}

class ModuleCallHandler : public lisp::ExternalHandler {
 public:
  lisp::ExternalResult invoke(void* owner, int code, const std::wstring& name, resbuf* args) override {
    lisp::ExternalResult result;
    app::LoadedModule* module = app::FindModule(owner);
    if (!module) return result;
    CallFrame frame;
    frame.code = code;
    frame.args = args;
    Frames().push_back(&frame);
    const int openBefore = db::OpenObjectCount();
    auto direct = DirectHandlers().find({owner, code});
    if (direct != DirectHandlers().end())
      direct->second();
    else
      app::SendMessage(*module, AcRx::kInvkSubrMsg);
    Frames().pop_back();
    app::CheckNothingLeftOpen(openBefore, L"(" + name + L")");
    result.isVoid = frame.isVoid;
    result.value = frame.result;
    return result;
  }
};

}  // namespace

CallFrame* CurrentFrame() { return Frames().empty() ? nullptr : Frames().back(); }

void RegisterDirectHandler(void* owner, int code, int (*fn)()) {
  if (fn)
    DirectHandlers()[{owner, code}] = fn;
  else
    DirectHandlers().erase({owner, code});
}

void ForgetOwner(void* owner) {
  auto& all = DirectHandlers();
  for (auto it = all.begin(); it != all.end();) it = it->first.first == owner ? all.erase(it) : std::next(it);
}

lisp::ExternalHandler& ModuleCalls() {
  static ModuleCallHandler handler;
  return handler;
}

}  // namespace kelhost::lispbridge
