// command, vl-cmdf and command-s: AutoLISP's way of running commands.
// command and vl-cmdf hand their arguments to the document's command
// processor, which keeps a command that wants more for the next call;
// command-s runs its command to the end within the call.
#include "editor/command_processor.h"
#include "editor/command_tokens.h"
#include "lisp/chain.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

using editor::TokenFeed;

int Run(Machine& m, Args& a, TokenFeed::WhenEmpty whenEmpty) {
  resbuf* chain = nullptr;
  std::wstring error;
  if (!ArgsToChain(m, a, chain, error)) m.raise(error);
  ChainHolder hold(chain);
  std::vector<editor::Token> tokens;
  if (!editor::TokensFromChain(chain, tokens)) m.raise(L"bad argument type for a command: " + m.printed(ListOf(a)));
  return editor::RunCommandCall(std::move(tokens), whenEmpty);
}

// (command [arguments...]): without arguments it is Escape.
ValuePtr Command(Machine& m, Args& a) {
  if (a.empty()) {
    editor::CancelWaitingCommands();
    return nullptr;
  }
  Run(m, a, TokenFeed::WhenEmpty::kWait);
  return nullptr;
}

ValuePtr VlCmdf(Machine& m, Args& a) {
  if (a.empty()) {
    editor::CancelWaitingCommands();
    return m.symT;
  }
  Run(m, a, TokenFeed::WhenEmpty::kWait);
  return m.symT;
}

// (command-s [cmdname [arguments...]]): a command that does not finish
// with the arguments given is cancelled, and that is an error.
ValuePtr CommandS(Machine& m, Args& a) {
  if (a.empty()) return nullptr;
  if (Run(m, a, TokenFeed::WhenEmpty::kCancel) == RTCAN) m.raise(L"Function cancelled");
  return nullptr;
}

}  // namespace

void RegisterCommandBuiltins(Machine& m) {
  m.defineBuiltin(L"COMMAND", Command, 0, -1);
  m.defineBuiltin(L"VL-CMDF", VlCmdf, 0, -1);
  m.defineBuiltin(L"COMMAND-S", CommandS, 0, -1);
}

}  // namespace kelhost::lisp
