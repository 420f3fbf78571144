// AutoLISP handlers of the query, view and settings functions. Each reads
// its own arguments with acedGetArgs and sets its own result.
#pragma once

namespace KEL {
namespace Lisp {

int KEL_GetTextHigh();          // "kel_gettexthigh"
int KEL_SetTextHigh();          // "kel_settexthigh"
int KEL_GetBZXSW();             // "kel_getbzxsw"
int KEL_SetBZXSW();             // "kel_setbzxsw"
int KEL_GetTextWidthFactor();   // "kel_gettextwidthfactor"

int KEL_GetPickBoxWidth();      // "kel_getpickboxwidth"
int KEL_GetScreenLBRT();        // "kel_getscreenlbrt"
int KEL_IsPtInView();           // "kel_isptinview"
int KEL_GetPMPt();              // "kel_getpmpt"
int KEL_SSRedraw();             // "kel_ssredraw"

int KEL_SetEntColorIndex();     // "kel_setentcolorindex"
int KEL_EntIsType();            // "kel_entistype"
int KEL_GetSSRect();            // "kel_getssrect"

int KEL_GetRightPointAtDist();  // "kel_getrightpointatdist"

}  // namespace Lisp
}  // namespace KEL
