// Loading AutoLISP files and finding them on the search path.
#pragma once

#include <optional>
#include <string>

#include "lisp/value.h"

namespace kelhost::lisp {

// The file as named, else (for a bare name) on the support file search
// path, else beside the files being loaded.
std::optional<std::wstring> FindFile(Machine& m, const std::wstring& name);
// (load name [onfailure]): the value of the file's last expression. On
// failure, onfailure's value (called if it is a function), or the error
// "LOAD failed: ..." without it.
ValuePtr LoadFile(Machine& m, const std::wstring& name, const ValuePtr* onFailure);
// What a failed load gives back: onfailure's value, called first when it
// is a function.
ValuePtr FailureValue(Machine& m, const ValuePtr& onFailure);

// arxload, arxunload, arx and autoarxload.
void RegisterArxBuiltins(Machine& m);

}  // namespace kelhost::lisp
