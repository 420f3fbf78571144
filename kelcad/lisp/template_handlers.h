// AutoLISP handlers that import named records from a template drawing into
// the current drawing (CImportDWT): one record by name, or all of a kind.
#pragma once

#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

int KEL_ImportDwt();     // "kel_importdwt"
int KEL_ImportDwtAll();  // "kel_importdwtall"

// The family's shipped template: <install directory>template\kelstd.dwt
// (read from the .dxf of that name); empty when the install directory is
// not known.
CString FamilyTemplatePath();

}  // namespace Lisp
}  // namespace KEL
