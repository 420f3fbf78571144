// Where the user's answers come from: a file of answers or a pipe (one
// answer a line), a command script (.scr: a space or a line end is Enter),
// text queued for the command line (sendStringToExecute, WM_CHAR), or a
// person at a terminal (the console's prompt). A source gives answers one
// at a time; the user input stack (user_input.h) decides which is read.
#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

namespace kelhost::editor {

class InputSource {
 public:
  virtual ~InputSource() = default;
  // The next answer, without its line end; false at the end. With spaces
  // true a space belongs to the answer (text prompts); otherwise a
  // script's space ends it.
  virtual bool read(std::wstring& text, bool spaces) = 0;
  // True when the person sees what they type (a terminal): the command
  // line then does not repeat the answer.
  virtual bool echoes() const { return false; }
  // Whether the source is a script (CMDACTIVE's script bit).
  virtual bool isScript() const { return false; }
};

// One answer per line from a stream (a file of answers, a pipe). Lines end
// at "\n"; a "\r" before it is dropped. Text is UTF-8.
class LineSource : public InputSource {
 public:
  // Takes ownership of file when own is true.
  LineSource(std::FILE* file, bool own);
  ~LineSource() override;
  bool read(std::wstring& text, bool spaces) override;

 private:
  bool readLine(std::wstring& text);
  std::FILE* mFile;
  bool mOwn;
};

// Command-script text: every space and every line end is an Enter, except
// inside an AutoLISP expression (read whole, over lines, until its
// parentheses close) and where the prompt takes spaces (then only the line
// end ends the answer). A line starting with ";" is a comment.
class ScriptSource : public InputSource {
 public:
  explicit ScriptSource(std::wstring text, bool script = true) : mText(std::move(text)), mScript(script) {}
  bool read(std::wstring& text, bool spaces) override;
  bool isScript() const override { return mScript; }
  // More text at the end (queued command-line input).
  void append(const std::wstring& text) { mText += text; }
  bool empty() const { return mPos >= mText.size(); }
  void clear() {
    mText.clear();
    mPos = 0;
  }

 private:
  std::wstring mText;
  size_t mPos = 0;
  bool mScript;
  bool mAtLineStart = true;
};

// A line from readLine; one that starts an AutoLISP expression goes on
// over the next lines until its parentheses close.
bool ReadBalancedLines(const std::function<bool(std::wstring&)>& readLine, std::wstring& text);

// Reads a script file in UTF-8 (a byte-order mark is skipped); null when
// it cannot be read.
std::unique_ptr<ScriptSource> OpenScript(const std::wstring& familyPath);
// A command script named as SCRIPT takes it: ".scr" added to a name
// without an extension (one with another is tried as given first), a name
// without a directory looked for on the support file search path. Null,
// with the message the command line shows, when there is none to read.
std::unique_ptr<ScriptSource> FindScript(const std::wstring& name, std::wstring& message);

// The number of parentheses an AutoLISP text leaves open (strings and
// comments skipped): a typed expression goes on over lines until it is 0.
int OpenParentheses(const std::wstring& text);

}  // namespace kelhost::editor
