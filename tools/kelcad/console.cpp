#include "console.h"

#include <editline/readline.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "kelhost/editor.h"
#include "kelhost/text.h"

namespace kelcad_console {
namespace {

std::string HistoryFile() {
  const char* home = std::getenv("HOME");
  return home ? std::string(home) + "/.kelcad_history" : std::string();
}

// The host writes the prompt; the person types after it.
bool ReadTerminalLine(std::wstring& line) {
  std::fflush(stdout);
  char* raw = readline("");
  if (!raw) return false;
  if (*raw) add_history(raw);
  line = kelhost::FromUtf8(raw);
  std::free(raw);
  return true;
}

}  // namespace

Console::~Console() {
  if (mInteractive) {
    const std::string history = HistoryFile();
    if (!history.empty()) write_history(history.c_str());
  }
}

bool Console::useAnswerFile(const std::string& path) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return false;
  kelhost::editor::SetInputFile(f, true);
  return true;
}

void Console::useStandardInput() {
  if (isatty(STDIN_FILENO)) {
    mInteractive = true;
    const std::string history = HistoryFile();
    if (!history.empty()) read_history(history.c_str());
    kelhost::editor::SetInputReader(ReadTerminalLine);
  } else {
    kelhost::editor::SetInputFile(stdin, false);
  }
}

void Console::evalExpressions(const std::string& text) {
  if (!kelhost::editor::EvaluateAtPrompt(kelhost::FromUtf8(text))) mHadError = true;
}

void Console::loadLisp(const std::string& path) {
  if (!kelhost::editor::LoadAtPrompt(kelhost::FromUtf8(path))) mHadError = true;
}

void Console::runCommandScript(const std::string& path) {
  if (!kelhost::editor::RunScript(kelhost::FromUtf8(path))) mHadError = true;
}

void Console::commandPrompt() { kelhost::editor::RunCommandLoop(); }

bool Console::failed() const { return mHadError || kelhost::editor::InputEndedInsideCommand(); }

}  // namespace kelcad_console
