// A console session: the user's input (a file of answers, a pipe or a
// terminal), the steps given on the command line, and whether an
// AutoLISP error happened or the input ended inside a command.
#pragma once

#include <string>

namespace kelcad_console {

class Console {
 public:
  ~Console();
  // Answers from a file (--input); false when it cannot be opened.
  bool useAnswerFile(const std::string& path);
  // Answers from standard input: a terminal gets line editing and history.
  void useStandardInput();

  void evalExpressions(const std::string& text);
  void loadLisp(const std::string& path);
  void runCommandScript(const std::string& path);
  // The "Command:" prompt until the input ends.
  void commandPrompt();

  bool failed() const;

 private:
  bool mHadError = false;
  bool mInteractive = false;
};

}  // namespace kelcad_console
