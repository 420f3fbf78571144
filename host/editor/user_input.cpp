#include "editor/user_input.h"

#include <deque>
#include <vector>

#include "kelhost/host.h"
#include "kelhost/lisp.h"

namespace kelhost::editor {
namespace {

// Queued text in runs of the same echo, read in the order queued.
struct QueuedRun {
  ScriptSource text{L"", false};
  bool echo = true;
  bool afterLisp = false;
};

// Text sent to be executed waits while AutoLISP runs.
bool Held(const QueuedRun& run) { return run.afterLisp && Host::instance().lisp().evaluating(); }

struct InputState {
  std::unique_ptr<InputSource> base;
  std::vector<std::unique_ptr<InputSource>> scripts;
  std::unique_ptr<InputSource> startAtPrompt;  // SCRIPT's, until the prompt reads
  std::deque<QueuedRun> queued;
  bool escape = false;
  bool endedInsideCommand = false;
};

InputState& State() {
  static InputState state;
  return state;
}

Token FromText(std::wstring& text) {
  if (text == L"^C") return Token::Of(Token::kCancel);
  return Token::Text(std::move(text));
}

ReadInput Ended(bool atCommandPrompt, bool fromScript) {
  ReadInput r;
  r.token = Token::Of(Token::kCancel);
  r.ended = true;
  r.fromScript = fromScript;
  if (!atCommandPrompt) State().endedInsideCommand = true;
  return r;
}

}  // namespace

void SetBaseInput(std::unique_ptr<InputSource> source) { State().base = std::move(source); }

void PushScript(std::unique_ptr<InputSource> script) {
  if (script) State().scripts.push_back(std::move(script));
}

void StartScriptAtPrompt(std::unique_ptr<InputSource> script) { State().startAtPrompt = std::move(script); }

int ScriptDepth() {
  const InputState& s = State();
  // A waiting script takes the running one's place, or adds one.
  return static_cast<int>(s.scripts.size()) + (s.startAtPrompt && s.scripts.empty() ? 1 : 0);
}

void QueueInput(const std::wstring& text, bool echo, bool afterLisp) {
  std::deque<QueuedRun>& queued = State().queued;
  // Characters typed after text that waits for AutoLISP come after it, so
  // they wait with it.
  if (queued.empty() || queued.back().echo != echo || (afterLisp && !queued.back().afterLisp)) {
    queued.emplace_back();
    queued.back().echo = echo;
    queued.back().afterLisp = afterLisp;
  }
  queued.back().text.append(text);
}

void EscapeInput() {
  State().queued.clear();
  State().escape = true;
}

bool QueuedInputPending() {
  for (const QueuedRun& run : State().queued)
    if (!run.text.empty()) return !Held(run);
  return false;
}

ReadInput NextInput(bool spaces, bool atCommandPrompt) {
  InputState& s = State();
  if (atCommandPrompt && s.startAtPrompt) {
    if (!s.scripts.empty()) s.scripts.pop_back();
    s.scripts.push_back(std::move(s.startAtPrompt));
  }
  ReadInput r;
  if (s.escape) {
    s.escape = false;
    r.token = Token::Of(Token::kCancel);
    return r;
  }
  std::wstring text;
  while (!s.queued.empty() && !Held(s.queued.front())) {
    QueuedRun& run = s.queued.front();
    if (run.text.read(text, spaces)) {
      r.token = FromText(text);
      r.echoed = !run.echo;  // text queued without echo is not repeated
      return r;
    }
    s.queued.pop_front();
  }
  if (!s.scripts.empty()) {
    if (s.scripts.back()->read(text, spaces)) {
      r.token = FromText(text);
      r.fromScript = true;
      return r;
    }
    s.scripts.pop_back();
    return Ended(atCommandPrompt, true);
  }
  if (s.base && s.base->read(text, spaces)) {
    r.token = FromText(text);
    r.echoed = s.base->echoes();
    return r;
  }
  return Ended(atCommandPrompt, false);
}

bool InputEndedInsideCommand() { return State().endedInsideCommand; }

void ResetInputState() {
  InputState& s = State();
  s.scripts.clear();
  s.startAtPrompt.reset();
  s.queued.clear();
  s.escape = false;
  s.endedInsideCommand = false;
}

}  // namespace kelhost::editor
