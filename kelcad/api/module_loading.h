// The family's other modules: loading them, and the files and the product
// type the running application declares.
#pragma once

#include "kelcad/platform.h"

// Which application of the family is running: a 32-bit value whose members
// the applications assign among themselves.
enum KEL_SOFTTYPE : Adesk::Int32 {};

namespace KEL {

// Loads the module at path (acedArxLoad) unless a module of the same file
// name is loaded already. The path when the module is loaded (now or
// before); an empty string when it could not be, and when the file does
// not exist, which also prints " ***没有找到要加载的ARX ： %s\n" (path).
CString LoadArx(const wchar_t* path);
// LoadArx of "<install directory><subDir>\<name>", ".ARX" added to a name
// that does not end in it (in any case).
CString LoadDirArx(const wchar_t* subDir, const wchar_t* name);

// Whether every file named in section "SystemFiles" of the system settings
// (the values; each relative to the installation directory) exists. True
// when the section is missing or empty. The first missing file is reported
// to the debugger output (DebugARXPrintf) as "\n ***不存在文件 %s".
bool CheckSystemFiles();

// The application type the running application declared (0 until then).
KEL_SOFTTYPE GetSoftType();
void SetSoftType(KEL_SOFTTYPE type);

}  // namespace KEL
