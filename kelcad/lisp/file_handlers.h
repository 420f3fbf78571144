// AutoLISP handlers of files, directories, the family's paths, the date
// and a few string services.
#pragma once

#include <ctime>

#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

int KEL_FindFile();            // "kel_findfile"
int KEL_DelFile();             // "kel_delfile"
int KEL_DeleteFiles();         // "kel_deletefiles"
int KEL_DeleteTree();          // "kel_deletetree"
int KEL_MkMDir();              // "kel_mkmdir"

int KEL_GetInstallDir();       // "kel_getsoftpath" and "kel_getinstalldir"
int KEL_GetLocalDir();         // "kel_getlocaldir"
int KEL_GetSoftUserPath();     // "kel_getsoftuserpath"
int KEL_GetWorkDir();          // "kel_getworkdir"

int KEL_GetDate();             // "kel_getdate"
int KEL_FixLenStr();           // "kel_fixlenstr"
int KEL_Str2StrLst();          // "kel_str2strlst"
int KEL_Waiting();             // "kel_waiting"

int KEL_RestoreCADMenu();      // "kel_restorecadmenu"
int KEL_GetRNXPart();          // "kel_getrnxpart"
int KEL_SoftInfo();            // "kel_softinfo"

// The text "kel_getdate" gives for a local time: "HH:MM  mm/dd/YYYY".
CString DateText(const std::tm& local);

}  // namespace Lisp
}  // namespace KEL
