// Evaluation on demand, assignment through a value, leaving a program,
// and catching errors as values.
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

ValuePtr Eval(Machine& m, Args& a) { return m.eval(a[0]); }

ValuePtr Set(Machine& m, Args& a) {
  SymArg(m, a[0])->value = a[1];
  return a[1];
}

ValuePtr Exit(Machine& m, Args&) { m.raise(L"quit / exit abort"); }

// (vl-catch-all-apply fn list): the result, or an error object carrying
// the message when the call failed. Nothing is reported.
ValuePtr CatchAllApply(Machine& m, Args& a) {
  Args callArgs = ListArg(m, a[1]);
  CatchScope scope(m);
  try {
    return m.apply(a[0], callArgs);
  } catch (const LispError& e) {
    return std::make_shared<CatchErrorValue>(e.message);
  }
}

ValuePtr CatchAllErrorP(Machine& m, Args& a) { return m.truth(Is(a[0], Kind::CatchError)); }

ValuePtr CatchAllErrorMessage(Machine& m, Args& a) {
  if (!Is(a[0], Kind::CatchError)) m.badArgument(L"vl-catch-all-apply-error ", a[0]);
  return MakeStr(As<CatchErrorValue>(a[0])->message);
}

}  // namespace

void RegisterControlBuiltins(Machine& m) {
  m.defineBuiltin(L"EVAL", Eval, 1, 1);
  m.defineBuiltin(L"SET", Set, 2, 2);
  m.defineBuiltin(L"EXIT", Exit, 0, 0);
  m.defineBuiltin(L"QUIT", Exit, 0, 0);
  m.defineBuiltin(L"VL-CATCH-ALL-APPLY", CatchAllApply, 2, 2);
  m.defineBuiltin(L"VL-CATCH-ALL-ERROR-P", CatchAllErrorP, 1, 1);
  m.defineBuiltin(L"VL-CATCH-ALL-ERROR-MESSAGE", CatchAllErrorMessage, 1, 1);
}

}  // namespace kelhost::lisp
