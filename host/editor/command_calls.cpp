// acedCommandS and acedCmdS: an application runs a command as a
// subroutine.
#include <cstdarg>

#include "ads/build_list.h"
#include "arx/aced_command.h"
#include "arx/acutads.h"
#include "editor/command_processor.h"
#include "editor/command_tokens.h"

namespace {

int RunChain(const resbuf* rb) {
  std::vector<kelhost::editor::Token> tokens;
  if (!rb || !kelhost::editor::TokensFromChain(rb, tokens)) return RTERROR;
  return kelhost::editor::RunCommandCall(std::move(tokens), kelhost::editor::TokenFeed::WhenEmpty::kCancel);
}

}  // namespace

int acedCommandS(int rtype, ...) {
  try {
    va_list ap;
    va_start(ap, rtype);
    resbuf* chain = kelhost::ads::BuildListV(rtype, ap);
    va_end(ap);
    const int status = RunChain(chain);
    acutRelRb(chain);
    return status;
  } catch (...) {
    return RTERROR;
  }
}

int acedCmdS(const resbuf* rb, bool, AcApDocument*) {
  try {
    return RunChain(rb);
  } catch (...) {
    return RTERROR;
  }
}
