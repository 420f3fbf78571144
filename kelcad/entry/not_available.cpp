// Answers of the functions that are not part of this build yet.
#include "kelcad/entry/not_available.h"

#include "kelcad/entry/lisp_table.h"
#include "kelcad/platform.h"

namespace KEL {

void ReportNotAvailable(const wchar_t* name) {
  acutPrintf(L"\n%s: not available in this build", name != nullptr ? name : L"?");
}

int LispNotAvailable() {
  ReportNotAvailable(LispFunctionName(acedGetFunCode()));
  acedRetNil();
  return RTNORM;
}

}  // namespace KEL
