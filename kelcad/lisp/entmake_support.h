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

// One expected argument: its kind and the message when it is of another
// kind, and when it is missing (by default the same message). kReal takes
// a real only, kEntity an entity name.
enum class ArgKind { kText, kPoint, kNumber, kReal, kEntity };
struct ExpectedArg {
  ArgKind kind;
  const wchar_t* message;
  const wchar_t* missing = nullptr;
};

// Checks args in order against expected (the layer first). Stops at the
// first argument missing or of the wrong kind and reports its message (the
// noArgs message when there are no arguments at all); false then.
// Otherwise found[i] is the i-th argument, and arguments after the last
// expected one are not looked at.
bool CheckPositional(const resbuf* args, const wchar_t* noArgs, std::initializer_list<ExpectedArg> expected,
                     Report report, const resbuf* found[]);

// The messages of the makers that draw LINEs along a run of points.
struct LineRunMessages {
  const wchar_t* noArgs;
  const wchar_t* noLayer;
  const wchar_t* noPoints;
  const wchar_t* refused;
  const wchar_t* noLinetype = nullptr;
};
constexpr int kRunMade = 1;
constexpr int kRunRefused = 0;
// A LINE from each point of the first run of points to the next, on the
// layer named by the first string anywhere among args, in linetype (null:
// the layer's). With a noLinetype message the linetype must be in the
// drawing first. Lines made before a refused one stay.
int MakeLineRun(const resbuf* args, const LineRunMessages& messages, Report report, const wchar_t* linetype);

}  // namespace Lisp
}  // namespace KEL
