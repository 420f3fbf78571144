// What a built-in command works with: its prompts, the command line, and
// the way it ends. A built-in command is a plain function written from
// top to bottom; when it needs an answer that has not been given yet (a
// (command "PLINE" p1) that returns to AutoLISP) it waits on its fiber.
#pragma once

#include <string>
#include <vector>

#include "arx/dbid.h"
#include "editor/requests.h"

namespace kelhost::editor {

struct RunningCommand;

// Thrown by CommandContext when the command is cancelled (Escape, the end
// of the input, or a call that did not finish it): the processor catches
// it, so a command only cleans up through destructors.
struct CommandCancelled {};
// Thrown by fail(): the command ends as failed (commandFailed).
struct CommandFailed {};

class CommandContext {
 public:
  explicit CommandContext(RunningCommand& command) : mCommand(command) {}

  // The answer to a prompt: RTNORM, RTNONE (Enter) or RTKWORD; cancel
  // does not return (CommandCancelled).
  Answer ask(const Request& request);
  // The usual prompts. keywords: "Undo Close" and the like (an empty
  // string for none); base: the rubber band's start point, or null.
  Answer askPoint(std::wstring prompt, const std::wstring& keywords = L"", int flags = 0,
                  const double* base = nullptr);
  Answer askCorner(std::wstring prompt, const double base[3], int flags = 0);
  Answer askDist(std::wstring prompt, const std::wstring& keywords = L"", int flags = 0,
                 const double* base = nullptr);
  Answer askAngle(std::wstring prompt, const std::wstring& keywords = L"", int flags = 0,
                  const double* base = nullptr);
  Answer askReal(std::wstring prompt, const std::wstring& keywords = L"", int flags = 0);
  Answer askInt(std::wstring prompt, const std::wstring& keywords = L"", int flags = 0);
  Answer askKeyword(std::wstring prompt, const std::wstring& keywords, int flags = 0);
  // Text: with spaces a space belongs to the answer (only Enter ends it).
  Answer askString(std::wstring prompt, bool spaces = false);
  Answer askEntity(std::wstring prompt, const std::wstring& keywords = L"");
  // "Select objects:" until Enter; the entities chosen, in order.
  std::vector<AcDbObjectId> selectObjects(const std::wstring& prompt = L"\nSelect objects: ");

  // Command-line text of the command (shown when its prompts are).
  void print(const std::wstring& text);
  bool echoes() const;
  // The command's global name, upper case.
  const std::wstring& name() const;
  // Run inside another command ('ZOOM): its prompts start with ">>".
  bool transparent() const;

  [[noreturn]] void cancel();
  // Prints message (when not empty) and ends the command as failed.
  [[noreturn]] void fail(const std::wstring& message = L"");

 private:
  RunningCommand& mCommand;
};

}  // namespace kelhost::editor
