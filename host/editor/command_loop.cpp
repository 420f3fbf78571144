// The "Command:" prompt: what the user types there, from a terminal, a
// file of answers, a script or text queued by a program.
#include <memory>

#include "app/command_line.h"
#include "editor/command_processor.h"
#include "editor/prompter.h"
#include "editor/undo.h"
#include "editor/user_input.h"
#include "kelhost/editor.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"

namespace kelhost::editor {
namespace {

// A terminal: the person sees what they type.
class ReaderSource : public InputSource {
 public:
  explicit ReaderSource(std::function<bool(std::wstring&)> read) : mRead(std::move(read)) {}
  bool read(std::wstring& text, bool) override { return ReadBalancedLines(mRead, text); }
  bool echoes() const override { return true; }

 private:
  std::function<bool(std::wstring&)> mRead;
};

enum class Until { kInputEnds, kPendingRead, kScriptEnds };

// Loops reading the prompt that also read the scripts started meanwhile:
// while one runs, AutoLISP returning to the prompt leaves scripts to it.
int gServingLoops = 0;

bool Pending() { return QueuedInputPending() || (gServingLoops == 0 && ScriptDepth() > 0); }

// After AutoLISP returns to the prompt: a command it left waiting goes on
// with the user's answers, then what was queued for the command line runs.
void AfterLisp();

void RunTyped(const ReadInput& in) {
  const std::wstring text = in.token.kind == Token::kText ? in.token.text : L"";
  if (!in.echoed) Say(text);
  if (in.token.kind == Token::kEnter) {
    if (!LastTypedCommand().empty()) RunTypedCommand(LastTypedCommand());
    return;
  }
  if (text[0] == L'(') EvaluateAtPrompt(text);
  else if (text[0] == L'!') EvaluateAtPrompt(text.substr(1));
  else RunTypedCommand(text);
}

void Loop(Until until, int scriptDepth = 0) {
  struct Serving {
    bool on;
    explicit Serving(bool serving) : on(serving) { gServingLoops += on; }
    ~Serving() { gServingLoops -= on; }
  } serving(until != Until::kPendingRead);
  for (;;) {
    if (until == Until::kPendingRead && !Pending()) return;
    if (!app::AtLineStart()) Say(L"\n");
    Say(L"Command: ");
    ReadInput in = NextInput(false, true);
    if (in.token.kind == Token::kCancel) {
      if (!in.ended) {
        Say(L"*Cancel*");
        continue;
      }
      if (in.fromScript) {
        if (until == Until::kScriptEnds && ScriptDepth() < scriptDepth) return;
        continue;
      }
      return;  // the base input ended
    }
    RunTyped(in);
  }
}

void AfterLisp() {
  FinishWaitingCommandWithUser();
  Loop(Until::kPendingRead);
}

template <class F>
bool AtPrompt(F&& evaluate) {
  undo::ExpressionStarted();
  const bool ok = evaluate();
  undo::ExpressionEnded();
  if (!ok) CancelWaitingCommands();
  AfterLisp();
  return ok;
}

}  // namespace

void SetInputFile(std::FILE* file, bool own) { SetBaseInput(std::make_unique<LineSource>(file, own)); }

void SetInputReader(std::function<bool(std::wstring& line)> readLine) {
  SetBaseInput(std::make_unique<ReaderSource>(std::move(readLine)));
}

void RunCommandLoop() { Loop(Until::kInputEnds); }

bool RunScript(const std::wstring& path) {
  std::wstring message;
  std::unique_ptr<ScriptSource> script = FindScript(path, message);
  if (!script) {
    Say(L"\n" + message);
    return false;
  }
  PushScript(std::move(script));
  Loop(Until::kScriptEnds, ScriptDepth());
  return true;
}

bool EvaluateAtPrompt(const std::wstring& text, bool echo) {
  lisp::Interpreter& lisp = Host::instance().lisp();
  bool ok = true;
  undo::ExpressionStarted();
  ok = lisp.evalSource(text, [&](const lisp::Outcome& o) {
    if (o.ok && o.printable && echo) {
      if (!app::AtLineStart()) Say(L"\n");
      Say(o.valueText);
    }
    // Each expression is one step at the prompt.
    undo::ExpressionEnded();
    if (!o.ok) CancelWaitingCommands();
    AfterLisp();
    undo::ExpressionStarted();
  });
  undo::ExpressionEnded();
  return ok;
}

bool LoadAtPrompt(const std::wstring& path) {
  return AtPrompt([&] { return Host::instance().lisp().loadFile(path).ok; });
}

}  // namespace kelhost::editor
