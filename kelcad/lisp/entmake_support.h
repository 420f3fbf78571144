// What the entity-making handlers share: reading positional arguments by
// their type codes, and handing a built list to acdbEntMake.
#pragma once

#include <initializer_list>

#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

inline bool IsPointArg(const resbuf* rb) { return rb != nullptr && (rb->restype == RTPOINT || rb->restype == RT3DPOINT); }
// A real, or a 16-bit integer (a 32-bit one is not taken).
inline bool IsNumberArg(const resbuf* rb) { return rb != nullptr && (rb->restype == RTREAL || rb->restype == RTSHORT); }
inline double NumberOf(const resbuf* rb) { return rb->restype == RTSHORT ? rb->resval.rint : rb->resval.rreal; }
inline bool IsTextArg(const resbuf* rb) { return rb != nullptr && rb->restype == RTSTR; }

// acdbEntMake of a list from acutBuildList, which it releases; false when
// the list could not be built or the entity was refused.
inline bool MakeFromList(resbuf* list) {
  if (list == nullptr) return false;
  const int made = acdbEntMake(list);
  acutRelRb(list);
  return made == RTNORM;
}

// The two ways the handlers report: on the command line as it stands, or
// as the platform's application error.
inline void Say(const wchar_t* message) { acutPrintf(L"%s", message); }
inline void Fail(const wchar_t* message) { acdbFail(message); }

using Report = void (*)(const wchar_t*);

// One expected argument: its kind and the message when it is missing or
// of another kind.
enum class ArgKind { kText, kPoint, kNumber };
struct ExpectedArg {
  ArgKind kind;
  const wchar_t* message;
};

// Checks args in order against expected (the layer first). Stops at the
// first argument missing or of the wrong kind and reports its message (the
// noArgs message when there are no arguments at all); false then.
// Otherwise found[i] is the i-th argument, and arguments after the last
// expected one are not looked at.
bool CheckPositional(const resbuf* args, const wchar_t* noArgs, std::initializer_list<ExpectedArg> expected,
                     Report report, const resbuf* found[]);

}  // namespace Lisp
}  // namespace KEL
