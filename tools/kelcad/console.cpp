#include "console.h"

#include <editline/readline.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "input_line.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/text.h"

namespace kelcad_console {
namespace {

kelhost::Host& TheHost() { return kelhost::Host::instance(); }

std::wstring Trimmed(const std::wstring& s) {
  size_t b = s.find_first_not_of(L" \t\r\n");
  if (b == std::wstring::npos) return L"";
  size_t e = s.find_last_not_of(L" \t\r\n");
  return s.substr(b, e - b + 1);
}

std::string HistoryFile() {
  const char* home = std::getenv("HOME");
  return home ? std::string(home) + "/.kelcad_history" : std::string();
}

}  // namespace

void Console::evalExpressions(const std::wstring& text) {
  bool ok = TheHost().lisp().evalSource(text, [&](const kelhost::lisp::Outcome& outcome) {
    if (!outcome.ok || !outcome.printable) return;
    if (!TheHost().atLineStart()) TheHost().writeCommandLine(L"\n");
    TheHost().writeCommandLine(outcome.valueText);
  });
  if (!ok) mHadError = true;
}

void Console::runScript(const std::string& path) {
  kelhost::lisp::Outcome outcome = TheHost().lisp().loadFile(kelhost::FromUtf8(path));
  if (!outcome.ok) mHadError = true;
}

void Console::handleInput(const std::wstring& input) {
  std::wstring text = Trimmed(input);
  if (text.empty()) return;
  if (text[0] == L'!') {
    evalExpressions(text.substr(1));
  } else if (IsLispInput(text)) {
    evalExpressions(text);
  } else if (!TheHost().runCommand(text)) {
    TheHost().writeCommandLine(L"\nUnknown command \"" + kelhost::ToUpper(text) + L"\".  Press F1 for help.");
  }
}

// Collects lines until an expression's parentheses are balanced.
void Console::feedLine(const std::wstring& line) {
  if (mPending.empty() && !IsLispInput(line)) {
    handleInput(line);
    return;
  }
  mPending += line;
  mPending += L'\n';
  if (OpenParens(mPending) > 0) return;
  std::wstring text;
  text.swap(mPending);
  handleInput(text);
}

void Console::interactive() {
  std::string history = HistoryFile();
  if (!history.empty()) read_history(history.c_str());
  while (char* raw = readline(mPending.empty() ? "Command: " : "")) {
    std::string line = raw;
    std::free(raw);
    if (!line.empty()) add_history(line.c_str());
    feedLine(kelhost::FromUtf8(line));
    if (!TheHost().atLineStart()) TheHost().writeCommandLine(L"\n");
    std::fflush(stdout);
  }
  if (!history.empty()) write_history(history.c_str());
}

void Console::readPipe() {
  std::string line;
  while (std::getline(std::cin, line)) feedLine(kelhost::FromUtf8(line));
  if (!mPending.empty()) {
    std::wstring text;
    text.swap(mPending);
    handleInput(text);  // unbalanced: the reader reports it
  }
}

}  // namespace kelcad_console
