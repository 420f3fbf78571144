// The editor as the console drives it: where the user's answers come from,
// the "Command:" prompt, command scripts, and AutoLISP typed at the prompt.
#pragma once

#include <cstdio>
#include <functional>
#include <string>

namespace kelhost::editor {

// The user's input: one answer per line from a file or a pipe (owned when
// own is true), or a terminal through readLine (false at the end of the
// input), which shows what the person types itself. The end of the input
// is cancel.
void SetInputFile(std::FILE* file, bool own);
void SetInputReader(std::function<bool(std::wstring& line)> readLine);

// The "Command:" prompt until the input ends: command names (Enter repeats
// the last), AutoLISP expressions and !symbol, as typed.
void RunCommandLoop();
// A command script (.scr), as the platform's SCRIPT runs it. False (with
// a message) when it cannot be read.
bool RunScript(const std::wstring& path);

// AutoLISP typed at the prompt: each expression is evaluated in turn with
// its value echoed (echo true); then text queued for the command line
// runs, and a command the expression left waiting goes on with the user's
// answers. False when an AutoLISP error happened.
bool EvaluateAtPrompt(const std::wstring& text, bool echo = true);
// (load path) at the prompt, values not echoed.
bool LoadAtPrompt(const std::wstring& path);

// Whether some command was cancelled because the input ended in it.
bool InputEndedInsideCommand();

}  // namespace kelhost::editor
