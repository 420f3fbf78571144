// The headless host as the console and the tests drive it: the command
// line, the open document with its AutoLISP environment, loaded modules
// and registered commands.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kelhost {
namespace lisp {
class Interpreter;
}

class Host {
 public:
  static Host& instance();

  // Everything printed on the command line (acutPrintf, princ, errors).
  // Without a sink the text goes to standard output as UTF-8.
  void setCommandLineSink(std::function<void(const std::wstring&)> sink);
  void writeCommandLine(const std::wstring& text);
  // True when nothing was written yet or the last text ended a line.
  bool atLineStart() const;

  // The document's AutoLISP interpreter.
  lisp::Interpreter& lisp();

  // Loads a module: dlopen, its DllMain attach, the API version check,
  // kInitAppMsg, then kLoadDwgMsg for the open document. False with a
  // message when the file is not a loadable module.
  bool loadModule(const std::string& nativePath, std::wstring* error = nullptr);
  // Unloads one module (kUnloadDwgMsg, kUnloadAppMsg, DllMain detach,
  // dlclose), if it is unlockable.
  bool unloadModule(const std::string& nativePath, std::wstring* error = nullptr);
  // At exit: every module in reverse load order.
  void unloadAll();
  std::vector<std::string> loadedModules() const;

  // Runs a command typed at the prompt (a registered or built-in command,
  // with its "_", "." and "-" prefixes, or a C: function of AutoLISP) with
  // the user's answers. False, with the platform's message, when nothing
  // has that name. isCommand: registered or built-in.
  bool runCommand(const std::wstring& name);
  bool isCommand(const std::wstring& name) const;

  // Objects opened and not yet closed (discipline check after each call).
  int openObjectCount() const;
  // External functions and commands that returned with objects still open;
  // each is reported on standard error with the objects it left.
  int disciplineViolations() const;

 private:
  Host();
};
}  // namespace kelhost
