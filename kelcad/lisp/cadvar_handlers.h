// AutoLISP handlers of the saved system-variable set and the undo helpers.
// None reads arguments; all but "kel_clearundo" return nothing.
#pragma once

namespace KEL {
namespace Lisp {

int KEL_SV();         // "kel_sv"
int KEL_RV();         // "kel_rv"
int KEL_Set0();       // "kel_set0"
int KEL_Set1();       // "kel_set1"
int KEL_UndoB();      // "kel_undob"
int KEL_UndoM();      // "kel_undom"
int KEL_ClearUNDO();  // "kel_clearundo": the number of undo marks

}  // namespace Lisp
}  // namespace KEL
