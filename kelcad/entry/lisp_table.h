// The LISP function table: the module's AutoLISP functions, one row per
// function code, registered by name in every drawing and dispatched by
// code when AutoLISP calls one.
#pragma once

namespace KEL {

// Reads its own arguments with acedGetArgs; returns RTNORM or an error code.
typedef int (*LispHandler)();

struct LispFunctionRow {
  const wchar_t* name;     // the AutoLISP name
  LispHandler handler;
  int registerAsFunction;  // non-zero: also acedRegFunc (no row sets it)
};

constexpr int kLispFunctionCount = 149;

// The rows in code order: row i carries function code i + 1.
const LispFunctionRow* LispFunctionTable();
// The name registered under code; null when no row carries it.
const wchar_t* LispFunctionName(int code);

// acedDefun of every name in code order, stopping at the first failure:
// RTNORM, or RTERROR with the names after the failing one unregistered.
int RegisterLispFunctions();
// acedUndef of every name; results are not consulted.
void UnregisterLispFunctions();
// Runs the handler of the function being invoked, after setting a void
// result so that a handler that sets none returns nothing to AutoLISP.
void DispatchLispFunction();

}  // namespace KEL
