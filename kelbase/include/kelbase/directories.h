// The family's directories and settings files. Each can be set by an
// environment variable and has a default that works on a fresh install.
// An empty variable counts as unset; a set variable is used as it stands
// (no fallback to the default when it names a missing directory).
//
//   directory     variable         default
//   install       KEL_INSTALL_DIR  <prefix>/share/kelcad/, where <prefix> is
//                                  found from the location of libkelbase
//                                  (<libdir>/..), else the data directory
//                                  chosen at configure time
//   local         KEL_LOCAL_DIR    $XDG_DATA_HOME/kelcad/ (when absolute),
//                                  else ~/.local/share/kelcad/
//   work          KEL_WORK_DIR     <local>/work/
//   common files  KEL_COMMON_DIR   <install>/common/
//   CAD R14, R15  KEL_ACAD14_DIR,  none: only when configured
//                 KEL_ACAD15_DIR
//
//   settings file     variable      default
//   initialisation    KEL_INIT_INI  <local>/KelInit.ini
//   system            KEL_SYS_INI   <local>/KelSys.ini
//   user              KEL_USER_INI  <local>/KelUser.ini
//   project ("GC")    KEL_GC_INI    the value of key "GCINIFile" in section
//                                   "GC-Path" of the initialisation file;
//                                   empty: no project
//
// Directories are returned ending in a separator (a '/' is added to a
// variable that lacks one; a trailing backslash is kept), so that names
// such as "User\\kelrnxpz.ini" can be appended directly. A getter returns
// false, with dir emptied, when it cannot give an existing directory; the
// local directory, and the work directory when asked to, are created
// first. Variables are read on every call.
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
// Prepends dir, in native form (kelhost::NativePath, without a trailing
// '/'), to the process PATH unless an entry of PATH already names it.
// False for an empty dir, a dir containing ':' or a failed update. The
// directory need not exist.
bool AddPathEnvironmentVariable(const wchar_t* dir);

// The paths of the settings files; empty when no path can be given (no
// variable and no local directory, or no project set).
CString SysINIFilePath();
CString UserINIFilePath();
// The current project settings file; empty when no project is set.
CString GCINIFilePath();
// Makes path the current project settings file for the rest of the
// session (it becomes the process's KEL_GC_INI, so GCINIFilePath and
// CGCSetting follow it). False for a null or empty path.
bool SetGCINIFilePath(const wchar_t* path);
CString InitINIFilePath();

// The family's initialisation settings ("Precision", "GC", debug switches)
// and the current project settings. Process-wide objects whose file path
// is looked up again on every call (InitINIFilePath, GCINIFilePath), so a
// changed variable takes effect at once; a path set on them with
// SetFilePath lasts only until the next call.
INISetting& CInitSetting();
INISetting& CGCSetting();
}  // namespace KEL
