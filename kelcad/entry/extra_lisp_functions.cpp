#include "kelcad/entry/extra_lisp_functions.h"

#include "kelcad/lisp/template_handlers.h"
#include "kelcad/platform.h"

namespace KEL {

namespace {

const ExtraLispFunction kExtra[] = {
    {L"kel_importdwt", 1001, Lisp::KEL_ImportDwt},
    {L"kel_importdwtall", 1002, Lisp::KEL_ImportDwtAll},
};

}  // namespace

const ExtraLispFunction* ExtraLispFunctions() { return kExtra; }
int ExtraLispFunctionCount() { return static_cast<int>(sizeof kExtra / sizeof kExtra[0]); }

int RegisterExtraLispFunctions() {
  for (const ExtraLispFunction& row : kExtra) {
    if (acedDefun(row.name, row.code) != RTNORM) return RTERROR;
    acedRegFunc(row.handler, row.code);
  }
  return RTNORM;
}

void UnregisterExtraLispFunctions() {
  for (const ExtraLispFunction& row : kExtra) acedUndef(row.name, row.code);
}

}  // namespace KEL
