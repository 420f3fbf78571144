// Settings files read and written a section or a list of keys at a time.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// With keys empty: every key of the section with its value, in file order
// (false when the section is absent or empty). Otherwise: the value of
// each key in keys, in order, an absent key reading as empty (false when
// the file does not exist). values is emptied first in both cases.
bool ReadIni(const wchar_t* section, CStringArray& keys, CStringArray& values, const wchar_t* file);

// Sets keys[i] to values[i] in the section, creating the file (not its
// directory) and the section when missing. Nothing is written, and the
// result is false, when the arrays differ in size, are empty, or a key is
// empty. Each key is written atomically, in order; false when one could
// not be written (the keys before it stay written).
bool WriteIni(const wchar_t* section, const CStringArray& keys, const CStringArray& values, const wchar_t* file);

// With keys empty: removes the whole section. Otherwise removes each key
// of keys from the section. Removing what is not there succeeds; false when
// the file does not exist or could not be written, or a key is empty.
bool DeleteIni(const wchar_t* section, const CStringArray& keys, const wchar_t* file);

}  // namespace KEL
