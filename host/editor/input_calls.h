// The user-input calls of applications and AutoLISP (acedGetXxx and
// acedEntSel, getxxx and entsel): the conditions initget sets for the next
// call, the prompt asked through Ask like any command's, and the keyword
// that acedGetInput hands back afterwards.
#pragma once

#include <string>

#include "editor/requests.h"

namespace kelhost::editor {

// initget: flags and keywords for the next input call only.
void SetInitGet(int flags, const std::wstring& keywords);
// Whether the pending conditions let a keyword prompt take anything:
// keywords, or arbitrary input (getkword without either returns at once).
bool InitGetTakesKeywords();

// Asks for want with the pending initget conditions, which this call uses
// up whatever happens. prompt may be null (nothing is shown); base is the
// rubber band's start point (UCS) or null. getstring ignores the
// conditions (spaces: a space belongs to the answer).
Answer AskUser(Want want, const wchar_t* prompt, const double* base = nullptr, bool spaces = false);

// The keyword (or arbitrary text) of the latest input call, when that call
// returned RTKWORD; false otherwise.
bool LatestKeyword(std::wstring& text);

// Copies text into a caller's buffer of size elements: RTNORM, or
// RTINPUTTRUNCATED with as much as fits (RTERROR for no buffer at all).
int CopyToBuffer(const std::wstring& text, wchar_t* buffer, size_t size);

}  // namespace kelhost::editor
