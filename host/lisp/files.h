// Open files of the AutoLISP file functions, shared by the output
// functions that take an optional file argument.
#pragma once

#include <string>

#include "lisp/value.h"

namespace kelhost::lisp {

// Writes text (UTF-8) to a file open for writing or appending;
// "bad argument type: streamp ..." for anything else.
void WriteToFile(Machine& m, const ValuePtr& file, const std::wstring& text);

}  // namespace kelhost::lisp
