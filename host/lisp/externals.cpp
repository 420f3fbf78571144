// Calls of external (EXRXSUBR) functions: arguments out as a chain, the
// application's answer back as a value.
#include "lisp/chain.h"
#include "lisp/machine.h"

namespace kelhost::lisp {

ValuePtr Interpreter::Impl::applyExternal(ExSubr& fn, Args& args) {
  if (fn.defunct || !handler) raise(L"no function definition: " + fn.name);
  resbuf* chain = nullptr;
  std::wstring error;
  if (!ArgsToChain(*this, args, chain, error)) raise(error);
  ChainHolder argChain(chain);
  ExternalResult result;
  try {
    result = handler->invoke(fn.owner, fn.code, fn.name, chain);
  } catch (...) {
    raise(L"external function failed: " + fn.name);
  }
  ChainHolder resultChain(result.value);
  if (result.isVoid) {
    lastWasVoid = true;
    return nullptr;
  }
  ValuePtr value;
  if (!ChainToValue(*this, result.value, value, error)) raise(error);
  lastWasVoid = false;
  return value;
}

}  // namespace kelhost::lisp
