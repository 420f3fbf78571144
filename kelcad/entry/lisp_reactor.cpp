// "kel_enableeditorreactor": switches the editor reactor on or off.
#include "kelcad/entry/lisp_handlers.h"
#include "kelcad/entry/module_state.h"
#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

// nil alone switches off; anything else, or nothing, switches on.
int KEL_EnableEditorReactor() {
  const resbuf* args = acedGetArgs();
  const bool off = args != nullptr && args->restype == RTNIL && args->rbnext == nullptr;
  SwitchEditorReactor(!off);
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
