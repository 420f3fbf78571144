// Settings files through result-buffer lists, as the family's AutoLISP
// programs and sibling modules pass them: the file, the section, then keys
// (and values). A section name that the project field map knows as a short
// name is replaced by its full name.
#pragma once

#include "kelbase/inilists.h"  // the section and key-array forms
#include "kelcad/platform.h"

namespace KEL {

// When file is given, it stands in front of args, which then start with
// the section. The caller keeps args.

// args: file (RTSTR), section (RTSTR), keys (RTSTR; other nodes skipped).
// Without any node after the section the whole section is read into keys
// and values; otherwise the value of each key. False when the file does
// not exist, the file or section is not a string, or keys were expected
// and none could be read.
bool ReadIni(resbuf* args, CStringArray& keys, CStringArray& values, const wchar_t* file = nullptr);

// args: file, section, then key and value pairs; a value is a string, a
// 16-bit integer (written as it is) or a real (written with four
// decimals). A wrong type or an odd count prints its message and writes
// nothing.
bool WriteIni(resbuf* args, const wchar_t* file = nullptr);

// args: file, section, then the keys to remove; without keys the whole
// section goes. Wrong types print the messages WriteIni prints.
bool DelIniItem(resbuf* args, const wchar_t* file = nullptr);

}  // namespace KEL
