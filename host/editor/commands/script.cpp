// SCRIPT: a command script runs once the editor is back at the "Command:"
// prompt, in place of the script that ran SCRIPT (if one did). The file
// name is always asked on the command line (FILEDIA does not apply: the
// host has no dialogs); Enter takes the drawing's name with ".scr".
#include <cstdlib>

#include "arx/acedads.h"
#include "editor/builtin_commands.h"
#include "editor/input_sources.h"
#include "editor/user_input.h"

namespace kelhost::editor {
namespace {

std::wstring DefaultScriptName() {
  resbuf rb{};
  std::wstring name = L"Drawing1.dwg";
  if (acedGetVar(L"DWGNAME", &rb) == RTNORM && rb.restype == RTSTR && rb.resval.rstring) {
    name = rb.resval.rstring;
    std::free(rb.resval.rstring);
  }
  const size_t dot = name.find_last_of(L'.');
  if (dot != std::wstring::npos) name.erase(dot);
  return name + L".scr";
}

// The answer without the blanks around it and the quotes a name with
// spaces may be given in.
std::wstring FileNameOf(std::wstring text) {
  const size_t b = text.find_first_not_of(L" \t");
  const size_t e = text.find_last_not_of(L" \t");
  text = b == std::wstring::npos ? L"" : text.substr(b, e - b + 1);
  if (text.size() >= 2 && text.front() == L'"' && text.back() == L'"') text = text.substr(1, text.size() - 2);
  return text;
}

void RunScriptCommand(CommandContext& c) {
  const std::wstring fallback = DefaultScriptName();
  std::wstring name = FileNameOf(c.askString(L"\nEnter script file name <" + fallback + L">: ", true).text);
  if (name.empty()) name = fallback;
  std::wstring message;
  std::unique_ptr<ScriptSource> script = FindScript(name, message);
  if (!script) c.fail(L"\n" + message);
  StartScriptAtPrompt(std::move(script));
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Script, {L"SCRIPT", RunScriptCommand});

}  // namespace kelhost::editor
