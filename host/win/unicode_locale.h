// A locale with the C library's Unicode (UTF-8) character tables, for the
// few calls that must not depend on the locale the process runs in.
#pragma once

#include <locale.h>

namespace kelhost {
// Null when the system has no UTF-8 locale at all.
locale_t UnicodeLocale();
}  // namespace kelhost
