// Stand-ins for the host's commands in tests. While a CommandRecorder
// lives, each command it names (LAYER, UNDO, ZOOM, ...) is replaced by one
// that records how it was called and takes every answer of its call, so a
// test sees exactly what a caller asked of the command, including calls of
// the built-in form (".undo") that an application's command could not
// intercept. What was there before comes back when the recorder goes.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "arx/acedads.h"
#include "editor/builtin_commands.h"
#include "editor/command_processor.h"

struct RecordedCommand {
  std::wstring line;  // the name as called, then each answer: text as it
                      // is, Enter as "", a value (not text) in <>
  bool subroutine = false;  // run by acedCommandS, acedCmdS or command-s
  std::vector<kelhost::editor::Token> answers;
  int cmdecho = -1;  // CMDECHO and OSMODE while it ran
  int osmode = -1;
};

class CommandRecorder {
 public:
  explicit CommandRecorder(const std::vector<std::wstring>& upperNames) {
    Current() = this;
    for (const std::wstring& name : upperNames) {
      const kelhost::editor::BuiltinCommand* before = kelhost::editor::FindBuiltin(name);
      auto it = mReplaced.emplace(name, before ? std::optional<kelhost::editor::BuiltinCommand>(*before) : std::nullopt)
                    .first;
      kelhost::editor::RegisterBuiltin({it->first.c_str(), Run, false, false});
    }
  }
  ~CommandRecorder() {
    for (const auto& [name, before] : mReplaced) {
      if (before) kelhost::editor::RegisterBuiltin(*before);
      else kelhost::editor::UnregisterBuiltin(name);
    }
    Current() = nullptr;
  }
  CommandRecorder(const CommandRecorder&) = delete;
  CommandRecorder& operator=(const CommandRecorder&) = delete;

  const std::vector<RecordedCommand>& calls() const { return mCalls; }
  // The calls' lines; those not run as subroutines are marked "(not a subroutine)".
  std::vector<std::wstring> lines() const {
    std::vector<std::wstring> out;
    for (const RecordedCommand& c : mCalls) out.push_back(c.subroutine ? c.line : c.line + L" (not a subroutine)");
    return out;
  }
  void clear() { mCalls.clear(); }

 private:
  static CommandRecorder*& Current() {
    static CommandRecorder* current = nullptr;
    return current;
  }
  static int ShortVar(const wchar_t* name) {
    resbuf rb{};
    return acedGetVar(name, &rb) == RTNORM && rb.restype == RTSHORT ? rb.resval.rint : -1;
  }
  static void Run(kelhost::editor::CommandContext&) {
    using kelhost::editor::Token;
    kelhost::editor::RunningCommand* running = kelhost::editor::ExecutingCommand();
    if (Current() == nullptr || running == nullptr) return;
    RecordedCommand call;
    call.line = running->typed;
    call.subroutine = running->origin == kelhost::editor::CommandOrigin::kSubroutine;
    call.cmdecho = ShortVar(L"CMDECHO");
    call.osmode = ShortVar(L"OSMODE");
    Token t;
    while (running->feed != nullptr && running->feed->next(t)) {
      call.line += t.kind == Token::kEnter ? L" \"\"" : t.kind == Token::kText ? L" " + t.text : L" <" + t.asText() + L">";
      call.answers.push_back(t);
    }
    Current()->mCalls.push_back(call);
  }

  std::map<std::wstring, std::optional<kelhost::editor::BuiltinCommand>> mReplaced;
  std::vector<RecordedCommand> mCalls;
};
