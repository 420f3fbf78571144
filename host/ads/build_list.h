// The argument protocol of acutBuildList, shared with acedCommandS: pairs
// of a type code and its value, ended by 0 or RTNONE.
#pragma once

#include <cstdarg>

#include "arx/adsdef.h"

namespace kelhost::ads {
// Null (with a message on standard error) when an argument cannot be used.
resbuf* BuildListV(int rtype, va_list ap);
}  // namespace kelhost::ads
