// The user's input as the editor reads it: text queued for the command
// line first, then the running scripts (the last started first), then the
// base source (the console's --input file, standard input or the person at
// the terminal). The end of the base source, a line "^C" or Escape is
// cancel.
#pragma once

#include <memory>
#include <string>

#include "editor/input_sources.h"
#include "editor/requests.h"

namespace kelhost::editor {

// Where the base source is set; without one, input ends at once.
void SetBaseInput(std::unique_ptr<InputSource> source);
// Runs a script before anything else that is read (--script).
void PushScript(std::unique_ptr<InputSource> script);
// The SCRIPT command's script: it starts when the editor is next back at
// the "Command:" prompt (after the command, and after the AutoLISP
// expression that ran it), in place of the script that was running: a
// script that starts another does not go on after it.
void StartScriptAtPrompt(std::unique_ptr<InputSource> script);
// Scripts running, and one waiting to start at the prompt.
int ScriptDepth();
// Text typed into the command line by a program: a space or line end in
// it is Enter, as in a menu macro. With echo false what it answers is not
// repeated on the command line. With afterLisp true (sendStringToExecute)
// it waits until AutoLISP has returned: a prompt asked during an AutoLISP
// call does not read it.
void QueueInput(const std::wstring& text, bool echo = true, bool afterLisp = false);
// Escape: queued text is dropped and the next answer is cancel.
void EscapeInput();
// True when text queued for the command line waits to be read.
bool QueuedInputPending();

struct ReadInput {
  Token token;        // kText, kEnter or kCancel
  bool echoed = false;  // the source showed it already (a terminal)
  bool ended = false;   // kCancel because a source ended (not Escape or ^C)
  bool fromScript = false;
};

// The next answer. Inside a command (atCommandPrompt false) the end of a
// script is cancel for that command; at the "Command:" prompt an ended
// script just gives way to what was read before it, and ended tells the
// caller that a script finished.
ReadInput NextInput(bool spaces, bool atCommandPrompt);

// Whether some command was cancelled because its input ended (the
// console's exit status).
bool InputEndedInsideCommand();
void ResetInputState();

}  // namespace kelhost::editor
