// The command processor: starts commands by name, feeds them the answers
// of a command call or of the user, keeps a command that waits for more
// (the coroutine of AutoLISP's command), and surrounds every command with
// the editor reactors' notifications, CMDACTIVE and CMDNAMES and its undo
// group.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "editor/fiber.h"
#include "editor/requests.h"

namespace kelhost::editor {

// Answers given with a command call. What happens when they run out while
// the command still asks depends on the call.
class TokenFeed {
 public:
  enum class WhenEmpty {
    kWait,       // command / vl-cmdf: the command waits for the next call
    kCancel,     // command-s, acedCommandS, acedCmdS: the command is cancelled
    kAskUser,    // an application's command: the user answers the rest
  };
  TokenFeed(std::vector<Token> tokens, WhenEmpty whenEmpty) : mTokens(std::move(tokens)), mWhenEmpty(whenEmpty) {}
  bool next(Token& t) {
    if (mPos >= mTokens.size()) return false;
    t = mTokens[mPos++];
    return true;
  }
  bool empty() const { return mPos >= mTokens.size(); }
  WhenEmpty whenEmpty() const { return mWhenEmpty; }

 private:
  std::vector<Token> mTokens;
  size_t mPos = 0;
  WhenEmpty mWhenEmpty;
};

enum class CommandOrigin {
  kUser,        // typed at the "Command:" prompt, a script, queued input
  kLisp,        // command / vl-cmdf
  kSubroutine,  // command-s, acedCommandS, acedCmdS
};

// A command that has started and not yet ended.
struct RunningCommand {
  std::wstring global;  // upper case, as CMDNAMES lists it
  std::wstring typed;   // as given
  CommandOrigin origin = CommandOrigin::kUser;
  bool echo = true;         // prompts and answers shown (CMDECHO for calls)
  bool transparent = false;
  bool application = false;  // registered by an application (ObjectARX)
  TokenFeed* feed = nullptr;  // null: the user answers
  std::unique_ptr<Fiber> fiber;  // built-in commands
  bool waiting = false;          // suspended until a call (or the user) answers
  enum class Outcome { kRunning, kEnded, kCancelled, kFailed } outcome = Outcome::kRunning;
};

// The command whose code is running now (innermost), or null.
RunningCommand* ExecutingCommand();
// Commands started and not ended, outermost first (CMDNAMES).
std::vector<const RunningCommand*> ActiveCommands();

// Runs a command call's answers. Returns RTNORM; RTCAN when a command was
// cancelled (a subroutine call that did not finish its command included);
// RTREJ for an unknown command name.
int RunCommandCall(std::vector<Token> tokens, TokenFeed::WhenEmpty whenEmpty);
// A command typed at the prompt (or read from a script): runs to its end
// with the user's answers. False, with the platform's message, when no
// command has that name.
bool RunTypedCommand(const std::wstring& typed);
// A transparent command typed at a prompt ('ZOOM): runs with the answers
// of the command it interrupts. False when it is not one.
bool RunTransparentCommand(const std::wstring& typed);
// Whether the name names a command that may run transparently.
bool IsTransparentCommand(const std::wstring& typed);
// Whether a command started by a call waits for more answers.
bool CommandWaiting();
// The waiting command goes on with the user's answers until it ends.
void FinishWaitingCommandWithUser();
// Cancels the waiting commands (Escape, an AutoLISP error).
void CancelWaitingCommands();
// Whether the name (with its prefixes) names a command.
bool IsCommandName(const std::wstring& typed);

// The last command run from the prompt (Enter at "Command:" repeats it).
const std::wstring& LastTypedCommand();

// Suspends the executing built-in command until a new call (or the user)
// gives answers; called by the prompts when a waiting call ran out.
void WaitForAnswers(RunningCommand& command);

// The platform's message for a name that is no command.
std::wstring UnknownCommandMessage(const std::wstring& typed);

}  // namespace kelhost::editor
