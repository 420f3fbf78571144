// The family's directories and settings files. Each can be set by an
// environment variable (KEL_INSTALL_DIR, KEL_LOCAL_DIR, KEL_WORK_DIR,
// KEL_COMMON_DIR, KEL_ACAD14_DIR, KEL_ACAD15_DIR; KEL_INIT_INI,
// KEL_SYS_INI, KEL_USER_INI, KEL_GC_INI) and has a default that works on a
// fresh install. Directories end in a separator.
#pragma once

#include "kelcad/platform.h"
#include "kelbase/inisetting.h"

namespace KEL {
bool GetInstallDir(CString& dir);
bool GetLocalDir(CString& dir);
// create: make the directory when it does not exist yet.
bool GetWorkDir(CString& dir, bool create);
bool GetAcadR14Path(CString& dir);
bool GetAcadR15Path(CString& dir);
bool GetKELCommonFilesDir(CString& dir);
// Prepends dir to the process PATH unless it is already on it.
bool AddPathEnvironmentVariable(const wchar_t* dir);

CString SysINIFilePath();
CString UserINIFilePath();
// The current project settings file; empty when no project is set.
CString GCINIFilePath();
CString InitINIFilePath();

// The family's initialisation settings ("Precision", "GC", debug switches)
// and the current project settings.
INISetting& CInitSetting();
INISetting& CGCSetting();
}  // namespace KEL
