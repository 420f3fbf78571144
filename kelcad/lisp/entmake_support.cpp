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
    if (rb == nullptr && want.missing != nullptr) {
      report(want.missing);
      return false;
    }
    bool fits = false;
    switch (want.kind) {
      case ArgKind::kText: fits = IsTextArg(rb); break;
      case ArgKind::kPoint: fits = IsPointArg(rb); break;
      case ArgKind::kNumber: fits = IsNumberArg(rb); break;
      case ArgKind::kReal: fits = rb != nullptr && rb->restype == RTREAL; break;
      case ArgKind::kEntity: fits = rb != nullptr && rb->restype == RTENAME; break;
    }
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
