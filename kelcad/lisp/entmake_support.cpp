#include "kelcad/lisp/entmake_support.h"

namespace KEL {
namespace Lisp {

bool CheckPositional(const resbuf* args, const wchar_t* noArgs, std::initializer_list<ExpectedArg> expected,
                     Report report, const resbuf* found[]) {
  if (args == nullptr) {
    report(noArgs);
    return false;
  }
  const resbuf* rb = args;
  int i = 0;
  for (const ExpectedArg& want : expected) {
    const bool fits = want.kind == ArgKind::kText    ? IsTextArg(rb)
                      : want.kind == ArgKind::kPoint ? IsPointArg(rb)
                                                     : IsNumberArg(rb);
    if (!fits) {
      report(want.message);
      return false;
    }
    found[i++] = rb;
    rb = rb->rbnext;
  }
  return true;
}

}  // namespace Lisp
}  // namespace KEL
