// The sibling module's AutoLISP functions.
#pragma once

#include "kelcad/kelcad.h"

namespace kelsib {
int Draw();  // (kelsib_draw)
}  // namespace kelsib
