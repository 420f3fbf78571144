// Feeds arbitrary bytes, as UTF-8 source, to a fresh AutoLISP interpreter:
// reader, evaluator, built-ins and the chain conversions must answer with
// AutoLISP errors, never crash, hang or leak. Files, setenv and runaway
// programs are fenced off by the interpreter's options.
#include <cstddef>
#include <cstdint>
#include <string>

#include "ads/rbkind.h"
#include "arx/acutads.h"
#include "kelhost/lisp.h"
#include "kelhost/text.h"

namespace {

// An external function that answers with its own arguments, so values go
// out as chains and come back.
class Echo : public kelhost::lisp::ExternalHandler {
 public:
  kelhost::lisp::ExternalResult invoke(void*, int code, const std::wstring&, resbuf* args) override {
    kelhost::lisp::ExternalResult r;
    r.isVoid = code == 2;
    r.value = kelhost::rb::CopyChain(args);
    return r;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Echo echo;
  static int owner;
  kelhost::lisp::Interpreter lisp;
  lisp.setOutput([](const std::wstring&) {});
  kelhost::lisp::Options options;
  options.allowFiles = false;
  options.allowSetenv = false;
  options.maxSteps = 100000;
  lisp.setOptions(options);
  lisp.setExternalHandler(&echo);
  lisp.defineExternal(L"echo", &owner, 1);
  lisp.defineExternal(L"void", &owner, 2);

  const std::wstring source = kelhost::FromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  lisp.evalSource(source, nullptr);
  // Whatever the program left in a few likely names makes the round trip
  // through the symbol interface.
  for (const wchar_t* name : {L"A", L"B", L"X", L"L"}) {
    if (resbuf* rb = lisp.getSymbol(name)) {
      lisp.putSymbol(name, rb);
      acutRelRb(rb);
    }
  }
  return 0;
}
