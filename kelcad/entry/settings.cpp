// The module-wide settings objects.
#include "kelcad/entry/settings.h"

namespace KEL {

INISetting& SysINI() {
  static INISetting settings;
  return settings;
}

INISetting& UserINI() {
  static INISetting settings;
  return settings;
}

}  // namespace KEL
