// The handlers' usage blocks: each line goes out through its own
// acutPrintf, as the family's programs have always printed them.
#pragma once

#include <initializer_list>

#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

inline void PrintUsageLines(std::initializer_list<const wchar_t*> lines) {
  for (const wchar_t* line : lines) acutPrintf(L"%s", line);
}

// T for true, nil for false.
inline void ReturnBool(bool value) {
  if (value)
    acedRetT();
  else
    acedRetNil();
}

// Two 3D points as an AutoLISP list: corners of a view or of a box.
inline void ReturnPointPair(const double first[3], const double second[3]) {
  resbuf* list = acutBuildList(RT3DPOINT, first, RT3DPOINT, second, 0);
  if (list == nullptr) return;
  acedRetList(list);
  acutRelRb(list);
}

}  // namespace Lisp
}  // namespace KEL
