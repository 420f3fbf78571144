// AutoLISP functions beyond the function table: names the family's newer
// LISP code uses, registered per drawing after the table's names. Their
// codes lie above every code the table's dispatcher accepts, so each is
// registered with its handler (acedRegFunc) and called directly.
#pragma once

#include "kelcad/entry/lisp_table.h"

namespace KEL {

struct ExtraLispFunction {
  const wchar_t* name;  // the AutoLISP name
  int code;             // above the table's codes
  LispHandler handler;
};

// The rows, and how many there are.
const ExtraLispFunction* ExtraLispFunctions();
int ExtraLispFunctionCount();

// acedDefun and acedRegFunc of every row: RTNORM, or RTERROR at the first
// name refused (the later ones stay unregistered).
int RegisterExtraLispFunctions();
// acedUndef of every row; results are not consulted.
void UnregisterExtraLispFunctions();

}  // namespace KEL
