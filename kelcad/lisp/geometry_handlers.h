// AutoLISP handlers of the geometry kernel. Each reads its own arguments
// with acedGetArgs and sets its own result.
#pragma once

namespace KEL {
namespace Lisp {

int KEL_LinePLineInt();  // "kel_lineplineint"

}  // namespace Lisp
}  // namespace KEL
