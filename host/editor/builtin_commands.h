// The host's own commands (LINE, LAYER, UNDO, ZOOM, ...): each file of
// editor/commands/ registers its commands here when the library loads.
#pragma once

#include <string>

#include "editor/command_context.h"

namespace kelhost::editor {

struct BuiltinCommand {
  const wchar_t* name;     // global (English) name, upper case
  void (*run)(CommandContext& c);
  bool hasDialog = false;  // "-NAME" names its command-line form (the only one here)
  bool transparent = false;  // may run inside another command ('ZOOM)
};

// Called from a static initializer of each command file.
bool RegisterBuiltin(const BuiltinCommand& command);
// By upper-case name without prefixes; null when there is none.
const BuiltinCommand* FindBuiltin(const std::wstring& upperName);
// Takes a command away (tests that stand in for one put it back).
void UnregisterBuiltin(const std::wstring& upperName);

}  // namespace kelhost::editor

// Registers a built-in command from a command file:
//   KELHOST_BUILTIN_COMMAND(Line, {L"LINE", RunLine});
#define KELHOST_BUILTIN_COMMAND(tag, ...) \
  static const bool kRegistered##tag = ::kelhost::editor::RegisterBuiltin(::kelhost::editor::BuiltinCommand __VA_ARGS__)
