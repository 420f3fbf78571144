// The module's two settings files: the system settings and the user
// settings of the application family. Their paths are set at start-up and
// can be changed from AutoLISP.
#pragma once

#include "kelbase/inisetting.h"

namespace KEL {
INISetting& SysINI();
INISetting& UserINI();
}  // namespace KEL
