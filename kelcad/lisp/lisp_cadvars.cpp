// AutoLISP access to the saved system-variable set and the undo helpers.
#include "kelcad/api/cadvar.h"
#include "kelcad/api/undo_groups.h"
#include "kelcad/lisp/cadvar_handlers.h"
#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

int KEL_SV() {
  SaveCADVar();
  return RTNORM;
}

int KEL_RV() {
  RestoreCADVar();
  return RTNORM;
}

int KEL_Set0() {
  Set0();
  return RTNORM;
}

int KEL_Set1() {
  Set1();
  return RTNORM;
}

int KEL_UndoB() {
  UndoB();
  return RTNORM;
}

int KEL_UndoM() {
  UndoM();
  return RTNORM;
}

int KEL_ClearUNDO() {
  acedRetInt(ClearUNDO());
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
