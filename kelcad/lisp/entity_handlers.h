// AutoLISP handlers that make one kind of entity each from positional
// arguments, through entity lists and acdbEntMake. Each answers nil to
// AutoLISP; the drawing shows what it made.
#pragma once

namespace KEL {
namespace Lisp {

int KEL_EntMakeLine();    // "kel_entmakeline"
int KEL_EntMakePoint();   // "kel_entmakepoint"
int KEL_EntMakeNut();     // "kel_entmakenut"
int KEL_EntMakeCircle();  // "kel_entmakecircle"
int KEL_EntMakeText();    // "kel_entmaketext"
int KEL_EntMakeArc();     // "kel_entmakearc"
int KEL_EntMakePLine();   // "kel_entmakepline"
// These two answer the dispatcher 1 when they made their entity, 3 when not.
int KEL_MkTop();          // "kel_mktop"
int MkIns();              // "mkins" and "kel_mkins"

}  // namespace Lisp
}  // namespace KEL
