// Plain access to a settings file by section, keys and values.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// With keys empty: every key of the section with its value, in file order
// (false when the section is absent or empty). Otherwise: the value of
// each key in keys, in order, an absent key reading as empty (false when
// the file does not exist). values is emptied first in both cases.
bool ReadIni(const wchar_t* section, CStringArray& keys, CStringArray& values, const wchar_t* file);

}  // namespace KEL
