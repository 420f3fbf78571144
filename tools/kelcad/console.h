// A console session: runs expressions, scripts and typed lines against
// the host, and remembers whether an AutoLISP error happened.
#pragma once

#include <string>

namespace kelcad_console {

class Console {
 public:
  // Evaluates expressions and echoes each value, as typed at the prompt.
  void evalExpressions(const std::wstring& text);
  // Loads a script file; values are not echoed.
  void runScript(const std::string& path);
  // One complete input: an AutoLISP expression, "!symbol", or a command
  // name.
  void handleInput(const std::wstring& input);
  // Interactive prompt with line editing and history.
  void interactive();
  // Lines from a pipe, handled as typed.
  void readPipe();

  bool hadError() const { return mHadError; }

 private:
  std::wstring mPending;  // an expression still missing closing parentheses
  bool mHadError = false;
  void feedLine(const std::wstring& line);
};

}  // namespace kelcad_console
