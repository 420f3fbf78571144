#include "editor/input_calls.h"

#include "arx/adsdef.h"
#include "editor/prompter.h"

namespace kelhost::editor {
namespace {

struct InputCallState {
  int flags = 0;
  std::wstring keywords;
  int latestStatus = RTNORM;
  std::wstring latestText;
};

InputCallState& State() {
  static InputCallState state;
  return state;
}

}  // namespace

void SetInitGet(int flags, const std::wstring& keywords) {
  State().flags = flags;
  State().keywords = keywords;
}

bool InitGetTakesKeywords() { return (State().flags & kArbitrary) || !Keywords(State().keywords).empty(); }

Answer AskUser(Want want, const wchar_t* prompt, const double* base, bool spaces) {
  InputCallState& s = State();
  Request r;
  r.want = want;
  r.prompt = prompt ? prompt : L"";
  if (want != Want::kString) {
    r.flags = s.flags;
    r.keywords = Keywords(s.keywords);
  }
  r.spaces = spaces;
  if (base) {
    r.hasBase = true;
    for (int i = 0; i < 3; ++i) r.base[i] = base[i];
  }
  s.flags = 0;
  s.keywords.clear();
  s.latestStatus = RTERROR;
  s.latestText.clear();
  Answer a = Ask(r);
  if (a.status == RTCAN) Say(L"*Cancel*");
  s.latestStatus = a.status;
  if (a.status == RTKWORD) s.latestText = a.text;
  return a;
}

bool LatestKeyword(std::wstring& text) {
  if (State().latestStatus != RTKWORD) return false;
  text = State().latestText;
  return true;
}

int CopyToBuffer(const std::wstring& text, wchar_t* buffer, size_t size) {
  if (!buffer || size == 0) return RTERROR;
  const bool fits = text.size() < size;
  const size_t n = fits ? text.size() : size - 1;
  text.copy(buffer, n);
  buffer[n] = 0;
  return fits ? RTNORM : RTINPUTTRUNCATED;
}

}  // namespace kelhost::editor
