// AutoLISP handlers of the settings files: lists of keys and values, and
// the user, system and project ("GC") settings objects.
#pragma once

namespace KEL {
namespace Lisp {

int KEL_ReadIni();             // "kel_readini"
int KEL_WriteIni();            // "kel_writeini"
int KEL_DelIniItem();          // "kel_deliniitem"

int KEL_SetUserINI();          // "kel_setuserini"
int KEL_SetSysINI();           // "kel_setsysini"
int KEL_SetGCINI();            // "kel_setgcini"
int KEL_GetUserINIItem();      // "kel_getuseriniitem"
int KEL_GetSysINIItem();       // "kel_getsysiniitem"
int KEL_GetGCINIItem();        // "kel_getgciniitem"
int KEL_SetUserINIItem();      // "kel_setuseriniitem"
int KEL_SetSysINIItem();       // "kel_setsysiniitem"
int KEL_SetGCINIItem();        // "kel_setgciniitem"
int KEL_UserINIFilePath();     // "kel_userinifilepath"
int KEL_SysINIFilePath();      // "kel_sysinifilepath"
int KEL_GCINIFilePath();       // "kel_gcinifilepath"

}  // namespace Lisp
}  // namespace KEL
