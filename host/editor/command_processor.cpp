#include "editor/command_processor.h"

#include <algorithm>

#include "app/command_stack.h"
#include "app/discipline.h"
#include "app/editor.h"
#include "arx/accmd.h"
#include "arx/acedads.h"
#include "db/stub.h"
#include "editor/builtin_commands.h"
#include "editor/prompter.h"
#include "editor/undo.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

// Commands started and not ended, in the order they started; built-in
// commands are owned here, an application's live on its caller's stack.
std::vector<RunningCommand*> gActive;
std::vector<std::unique_ptr<RunningCommand>> gOwned;
std::wstring gLastTyped;

// A name as typed: "_" asks for the global (English) name, "." for the
// built-in command even when an application redefined it, "-" for the
// command-line form of a command that has a dialog; a leading "'" (a
// transparent call) is passed over.
struct CommandName {
  std::wstring upper;   // without "_" and "."; with "-"
  bool globalOnly = false;
  bool builtinOnly = false;
};

CommandName Parse(const std::wstring& typed) {
  CommandName n;
  std::wstring s = ToUpper(typed);
  size_t i = 0;
  // 'NAME at the "Command:" prompt is the command itself.
  if (!s.empty() && s[0] == L'\'') ++i;
  while (i < s.size() && (s[i] == L'_' || s[i] == L'.')) {
    (s[i] == L'_' ? n.globalOnly : n.builtinOnly) = true;
    ++i;
  }
  n.upper = s.substr(i);
  const size_t end = n.upper.find_last_not_of(L" \t");
  n.upper.erase(end == std::wstring::npos ? 0 : end + 1);
  return n;
}

const BuiltinCommand* Builtin(const CommandName& n) {
  if (const BuiltinCommand* b = FindBuiltin(n.upper)) return b;
  if (n.upper.size() > 1 && n.upper[0] == L'-') {
    const BuiltinCommand* b = FindBuiltin(n.upper.substr(1));
    if (b && b->hasDialog) return b;
  }
  return nullptr;
}

AcEdCommand* Registered(const CommandName& n) {
  if (n.builtinOnly || n.upper.empty()) return nullptr;
  return app::FindRegisteredCommand(n.upper, n.globalOnly);
}

int ShortVar(const wchar_t* name, int fallback) {
  resbuf rb{};
  return acedGetVar(name, &rb) == RTNORM && rb.restype == RTSHORT ? rb.resval.rint : fallback;
}

bool Echoes(CommandOrigin origin) { return origin == CommandOrigin::kUser || ShortVar(L"CMDECHO", 1) != 0; }

void Begin(RunningCommand& rc) {
  gActive.push_back(&rc);
  app::NotifyCommandWillStart(rc.global);
  undo::CommandStarted(rc.global);
}

void Finish(RunningCommand& rc) {
  gActive.erase(std::remove(gActive.begin(), gActive.end(), &rc), gActive.end());
  switch (rc.outcome) {
    case RunningCommand::Outcome::kCancelled:
      if (rc.echo || rc.origin == CommandOrigin::kUser) Say(L"\n*Cancel*");
      app::NotifyCommandCancelled(rc.global);
      break;
    case RunningCommand::Outcome::kFailed: app::NotifyCommandFailed(rc.global); break;
    default: app::NotifyCommandEnded(rc.global); break;
  }
  undo::CommandEnded(rc.global);
}

RunningCommand* Own(std::unique_ptr<RunningCommand> rc) {
  gOwned.push_back(std::move(rc));
  return gOwned.back().get();
}

void Release(RunningCommand* rc) {
  gOwned.erase(std::remove_if(gOwned.begin(), gOwned.end(), [rc](const auto& p) { return p.get() == rc; }),
               gOwned.end());
}

// Runs a built-in command until it waits for answers or ends. True when it
// ended (rc is gone then; outcome tells how).
bool Drive(RunningCommand* rc, RunningCommand::Outcome& outcome) {
  rc->waiting = false;
  rc->fiber->resume();
  if (!rc->fiber->finished()) {
    rc->waiting = true;
    return false;
  }
  outcome = rc->outcome;
  Finish(*rc);
  Release(rc);
  return true;
}

RunningCommand* TopWaiting() {
  for (auto it = gActive.rbegin(); it != gActive.rend(); ++it)
    if ((*it)->waiting) return *it;
  return nullptr;
}

enum class Started { kUnknown, kEnded, kWaiting };

Started RunBuiltin(const BuiltinCommand& def, const std::wstring& typed, CommandOrigin origin, TokenFeed* feed,
                   bool transparent, RunningCommand::Outcome& outcome) {
  auto owned = std::make_unique<RunningCommand>();
  RunningCommand* rc = owned.get();
  rc->global = def.name;
  rc->typed = typed;
  rc->origin = origin;
  rc->echo = Echoes(origin);
  rc->transparent = transparent;
  rc->feed = feed;
  auto body = [rc, &def] {
    CommandContext c(*rc);
    try {
      def.run(c);
      rc->outcome = RunningCommand::Outcome::kEnded;
    } catch (const CommandCancelled&) {
      rc->outcome = RunningCommand::Outcome::kCancelled;
    } catch (const CommandFailed&) {
      rc->outcome = RunningCommand::Outcome::kFailed;
    } catch (...) {
      rc->outcome = RunningCommand::Outcome::kFailed;
    }
  };
  Own(std::move(owned));
  if (origin != CommandOrigin::kUser && rc->echo) Say(L"\n" + typed);
  Begin(*rc);
  // Only a command call that may run out of answers (AutoLISP's command)
  // can leave its command waiting: that command gets a fiber of its own;
  // the others run straight through.
  if (feed && feed->whenEmpty() == TokenFeed::WhenEmpty::kWait && !transparent) {
    rc->fiber = std::make_unique<Fiber>(body);
    return Drive(rc, outcome) ? Started::kEnded : Started::kWaiting;
  }
  body();
  outcome = rc->outcome;
  Finish(*rc);
  Release(rc);
  return Started::kEnded;
}

Started RunRegistered(AcEdCommand& cmd, const std::wstring& typed, CommandOrigin origin, TokenFeed* feed,
                      RunningCommand::Outcome& outcome) {
  RunningCommand rc;
  rc.global = ToUpper(cmd.globalName());
  rc.typed = typed;
  rc.origin = origin;
  rc.echo = Echoes(origin);
  rc.application = true;
  rc.transparent = Fiber::current() != nullptr || !gActive.empty();
  rc.feed = feed;
  if (origin != CommandOrigin::kUser && rc.echo) Say(L"\n" + typed);
  const int openBefore = db::OpenObjectCount();
  AcRxFunctionPtr fn = cmd.functionAddr();
  Begin(rc);
  fn();
  rc.outcome = RunningCommand::Outcome::kEnded;
  outcome = rc.outcome;
  Finish(rc);
  app::CheckNothingLeftOpen(openBefore, L"command " + rc.global);
  return Started::kEnded;
}

// A function defined in AutoLISP as C:NAME, run from the prompt.
bool RunLispCommand(const CommandName& n) {
  if (n.upper.empty() || n.upper.find_first_of(L" \t()\"';|") != std::wstring::npos) return false;
  lisp::Interpreter& lisp = Host::instance().lisp();
  const std::wstring symbol = L"C:" + n.upper;
  const lisp::Outcome type = lisp.evalOne(L"(type " + symbol + L")");
  if (!type.ok || (type.valueText != L"USUBR" && type.valueText != L"SUBR" && type.valueText != L"EXRXSUBR"))
    return false;
  undo::ExpressionStarted();
  lisp.evalOne(L"(" + symbol + L")");
  undo::ExpressionEnded();
  return true;
}

Started Start(const std::wstring& typed, CommandOrigin origin, TokenFeed* feed, RunningCommand::Outcome& outcome) {
  const CommandName n = Parse(typed);
  if (AcEdCommand* cmd = Registered(n)) return RunRegistered(*cmd, typed, origin, feed, outcome);
  if (const BuiltinCommand* b = Builtin(n)) return RunBuiltin(*b, typed, origin, feed, false, outcome);
  return Started::kUnknown;
}

}  // namespace

RunningCommand* ExecutingCommand() {
  // The innermost command whose code runs now: the others wait for a call.
  for (auto it = gActive.rbegin(); it != gActive.rend(); ++it)
    if (!(*it)->waiting) return *it;
  return nullptr;
}

std::vector<const RunningCommand*> ActiveCommands() { return {gActive.begin(), gActive.end()}; }

std::wstring UnknownCommandMessage(const std::wstring& typed) {
  return L"\nUnknown command \"" + ToUpper(typed) + L"\".  Press F1 for help.";
}

int RunCommandCall(std::vector<Token> tokens, TokenFeed::WhenEmpty whenEmpty) {
  TokenFeed feed(std::move(tokens), whenEmpty);
  const CommandOrigin origin =
      whenEmpty == TokenFeed::WhenEmpty::kWait ? CommandOrigin::kLisp : CommandOrigin::kSubroutine;
  RunningCommand::Outcome outcome = RunningCommand::Outcome::kEnded;
  if (whenEmpty == TokenFeed::WhenEmpty::kWait) {
    if (RunningCommand* waiting = TopWaiting()) {
      waiting->feed = &feed;
      if (!Drive(waiting, outcome)) {
        waiting->feed = nullptr;
        return RTNORM;
      }
    }
  }
  int status = RTNORM;
  Token t;
  while (feed.next(t)) {
    if (t.kind == Token::kEnter || t.kind == Token::kCancel) continue;  // nothing to end at "Command:"
    if (t.kind != Token::kText) {
      Say(UnknownCommandMessage(t.asText()));
      return RTREJ;
    }
    const Started s = Start(t.text, origin, &feed, outcome);
    if (s == Started::kUnknown) {
      Say(UnknownCommandMessage(t.text));
      return RTREJ;
    }
    if (s == Started::kWaiting) {
      if (RunningCommand* waiting = TopWaiting()) waiting->feed = nullptr;
      return RTNORM;
    }
    if (outcome == RunningCommand::Outcome::kCancelled) {
      status = RTCAN;
      if (whenEmpty == TokenFeed::WhenEmpty::kCancel) return status;
    }
  }
  return status;
}

bool RunTypedCommand(const std::wstring& typed) {
  const CommandName n = Parse(typed);
  RunningCommand::Outcome outcome;
  const Started s = Start(typed, CommandOrigin::kUser, nullptr, outcome);
  if (s == Started::kUnknown && !RunLispCommand(n)) {
    Say(UnknownCommandMessage(typed));
    return false;
  }
  gLastTyped = typed;
  // A command run from the prompt has the user's answers: it never waits.
  FinishWaitingCommandWithUser();
  return true;
}

bool RunTransparentCommand(const std::wstring& typed) {
  const CommandName n = Parse(typed);
  RunningCommand* outer = ExecutingCommand();
  TokenFeed* feed = outer ? outer->feed : nullptr;
  const CommandOrigin origin = outer ? outer->origin : CommandOrigin::kUser;
  RunningCommand::Outcome outcome;
  if (AcEdCommand* cmd = Registered(n)) {
    if (!(cmd->commandFlags() & ACRX_CMD_TRANSPARENT)) return false;
    RunRegistered(*cmd, typed, origin, feed, outcome);
  } else {
    const BuiltinCommand* b = Builtin(n);
    if (!b || !b->transparent) return false;
    // It answers from the interrupted command's call, then from the user.
    RunBuiltin(*b, typed, origin, feed, true, outcome);
  }
  if (outer && outer->echo) Say(L"\nResuming " + outer->global + L" command.");
  return true;
}

bool IsTransparentCommand(const std::wstring& typed) {
  const CommandName n = Parse(typed);
  if (AcEdCommand* cmd = Registered(n)) return (cmd->commandFlags() & ACRX_CMD_TRANSPARENT) != 0;
  const BuiltinCommand* b = Builtin(n);
  return b && b->transparent;
}

bool CommandWaiting() { return TopWaiting() != nullptr; }

void FinishWaitingCommandWithUser() {
  while (RunningCommand* waiting = TopWaiting()) {
    waiting->feed = nullptr;
    RunningCommand::Outcome outcome;
    Drive(waiting, outcome);
  }
}

void CancelWaitingCommands() {
  while (RunningCommand* waiting = TopWaiting()) {
    TokenFeed cancel({Token::Of(Token::kCancel)}, TokenFeed::WhenEmpty::kCancel);
    waiting->feed = &cancel;
    RunningCommand::Outcome outcome;
    if (!Drive(waiting, outcome)) waiting->feed = nullptr;  // cannot happen: cancel ends it
  }
}

bool IsCommandName(const std::wstring& typed) {
  const CommandName n = Parse(typed);
  return Registered(n) != nullptr || Builtin(n) != nullptr;
}

const std::wstring& LastTypedCommand() { return gLastTyped; }

void WaitForAnswers(RunningCommand& command) {
  (void)command;
  Fiber::suspend();
}

}  // namespace kelhost::editor
