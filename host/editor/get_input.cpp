// acedInitGet and the acedGetXxx calls: each is one prompt asked through
// the editor, so that a command's call, a script or the user answers it
// as they answer a command's prompts.
#include "arx/acedads.h"
#include "editor/input_calls.h"

namespace kelhost::editor {
namespace {

// The documented result buffers of the calls without a size.
constexpr size_t kStringBuffer = 133;
constexpr size_t kKeywordBuffer = 132;

// A call that asks nothing still uses up the initget conditions.
int BadCall() {
  SetInitGet(0, L"");
  return RTERROR;
}

int GetPoint(Want want, const ads_point pt, const ACHAR* prompt, ads_point result) {
  if (!result || (want == Want::kCorner && !pt)) return BadCall();
  const Answer a = AskUser(want, prompt, pt);
  if (a.status == RTNORM)
    for (int i = 0; i < 3; ++i) result[i] = a.point[i];
  return a.status;
}

int GetReal(Want want, const ads_point pt, const ACHAR* prompt, ads_real* result) {
  if (!result) return BadCall();
  const Answer a = AskUser(want, prompt, pt);
  if (a.status == RTNORM) *result = a.real;
  return a.status;
}

int GetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t size, bool limited) {
  if (!result || size == 0) return BadCall();
  const Answer a = AskUser(Want::kString, prompt, nullptr, cronly != 0);
  if (a.status != RTNORM) return a.status;
  const int copied = CopyToBuffer(a.text, result, size);
  return limited && copied == RTINPUTTRUNCATED ? RTNORM : copied;  // the old form cuts silently
}

int GetKword(const ACHAR* prompt, ACHAR* result, size_t size, bool limited) {
  if (!result || size == 0 || !InitGetTakesKeywords()) return BadCall();
  const Answer a = AskUser(Want::kKword, prompt);
  // Arbitrary text (and Enter when null input is refused) comes back as
  // the keyword itself.
  if (a.status != RTNORM && a.status != RTKWORD) return a.status;
  const int copied = CopyToBuffer(a.text, result, size);
  return limited && copied == RTINPUTTRUNCATED ? RTNORM : copied;
}

int GetInput(ACHAR* str, size_t size, bool limited) {
  std::wstring text;
  if (!str || size == 0 || !LatestKeyword(text)) return RTERROR;
  const int copied = CopyToBuffer(text, str, size);
  return limited && copied == RTINPUTTRUNCATED ? RTNORM : copied;
}

template <class F>
int Guarded(F&& call) {
  try {
    return call();
  } catch (...) {
    return RTERROR;
  }
}

}  // namespace
}  // namespace kelhost::editor

using kelhost::editor::BadCall;
using kelhost::editor::Guarded;
using kelhost::editor::Want;

int acedInitGet(int val, const ACHAR* kwl) {
  return Guarded([&] {
    kelhost::editor::SetInitGet(val, kwl ? kwl : L"");
    return RTNORM;
  });
}

int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result) {
  return Guarded([&] { return kelhost::editor::GetPoint(Want::kPoint, pt, prompt, result); });
}

int acedGetCorner(const ads_point pt, const ACHAR* prompt, ads_point result) {
  return Guarded([&] { return kelhost::editor::GetPoint(Want::kCorner, pt, prompt, result); });
}

int acedGetDist(const ads_point pt, const ACHAR* prompt, ads_real* result) {
  return Guarded([&] { return kelhost::editor::GetReal(Want::kDist, pt, prompt, result); });
}

int acedGetAngle(const ads_point pt, const ACHAR* prompt, ads_real* result) {
  return Guarded([&] { return kelhost::editor::GetReal(Want::kAngle, pt, prompt, result); });
}

int acedGetOrient(const ads_point pt, const ACHAR* prompt, ads_real* result) {
  return Guarded([&] { return kelhost::editor::GetReal(Want::kOrient, pt, prompt, result); });
}

int acedGetReal(const ACHAR* prompt, ads_real* result) {
  return Guarded([&] { return kelhost::editor::GetReal(Want::kReal, nullptr, prompt, result); });
}

int acedGetInt(const ACHAR* prompt, int* result) {
  return Guarded([&] {
    if (!result) return BadCall();
    const kelhost::editor::Answer a = kelhost::editor::AskUser(Want::kInt, prompt);
    if (a.status == RTNORM) *result = a.integer;
    return a.status;
  });
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result) {
  return Guarded(
      [&] { return kelhost::editor::GetString(cronly, prompt, result, kelhost::editor::kStringBuffer, true); });
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t bufsize) {
  return Guarded([&] { return kelhost::editor::GetString(cronly, prompt, result, bufsize, false); });
}

int acedGetKword(const ACHAR* prompt, ACHAR* result) {
  return Guarded([&] { return kelhost::editor::GetKword(prompt, result, kelhost::editor::kKeywordBuffer, true); });
}

int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t bufsize) {
  return Guarded([&] { return kelhost::editor::GetKword(prompt, result, bufsize, false); });
}

int acedGetInput(ACHAR* str) {
  return Guarded([&] { return kelhost::editor::GetInput(str, kelhost::editor::kKeywordBuffer, true); });
}

int acedGetInput(ACHAR* str, size_t bufsize) {
  return Guarded([&] { return kelhost::editor::GetInput(str, bufsize, false); });
}
