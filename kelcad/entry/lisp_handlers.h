// AutoLISP handlers of the module frame: the help listing, the tolerance
// functions, the project field file and the editor reactor's switch. Each reads its own arguments with
// acedGetArgs and sets its own result.
#pragma once

namespace KEL {
namespace Lisp {

int KEL_Help();             // "kel_help"
int KelHtmlHelp();          // "kelhtmlhelp"

int KEL_GetPointEQ();       // "kel_getpointeq"
int KEL_SetPointEQ();       // "kel_setpointeq"
int KEL_GetVectorEQ();      // "kel_getvectoreq"
int KEL_SetVectorEQ();      // "kel_setvectoreq"
int KEL_GetDoubleEQ();      // "kel_getdoubleeq"
int KEL_SetDoubleEQ();      // "kel_setdoubleeq"
int KEL_IsPointEQ();        // "kel_ispointeq"
int KEL_IsPoint2dEQ();      // "kel_ispoint2deq"
int KEL_IsDoubleEQ();       // "kel_isdoubleeq"
int KEL_IsZero();           // "kel_iszero"

int KEL_SetGCIniPath();     // "kel_setgcinipath"

int KEL_EnableEditorReactor();  // "kel_enableeditorreactor"

}  // namespace Lisp
}  // namespace KEL
