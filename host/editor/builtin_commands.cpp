#include "editor/builtin_commands.h"

#include <map>

namespace kelhost::editor {
namespace {
std::map<std::wstring, BuiltinCommand>& Table() {
  static std::map<std::wstring, BuiltinCommand> table;
  return table;
}
}  // namespace

bool RegisterBuiltin(const BuiltinCommand& command) {
  Table()[command.name] = command;
  return true;
}

const BuiltinCommand* FindBuiltin(const std::wstring& upperName) {
  auto it = Table().find(upperName);
  return it == Table().end() ? nullptr : &it->second;
}

void UnregisterBuiltin(const std::wstring& upperName) { Table().erase(upperName); }

}  // namespace kelhost::editor
