// Text forms of AutoLISP values: prin1 (strings quoted and escaped, as
// read back by the reader) and princ (strings as they are).
#pragma once

#include <string>

#include "lisp/value.h"

namespace kelhost::lisp {

// False when the text grew beyond limit characters (printing stops there:
// values that share structure can print exponentially long).
bool PrintValue(const Value* v, bool escape, std::wstring& out, size_t limit = std::wstring::npos);
inline bool PrintValue(const ValuePtr& v, bool escape, std::wstring& out, size_t limit = std::wstring::npos) {
  return PrintValue(v.get(), escape, out, limit);
}
std::wstring Prin1(const ValuePtr& v);
std::wstring Princ(const ValuePtr& v);

// A real as AutoLISP prints it: six significant digits, always a decimal
// point, three-digit exponents (0.333333, 100.0, 1.0e+010).
std::wstring FormatReal(double d);
// A string in double quotes with the reader's escapes.
std::wstring QuoteString(const std::wstring& s);

}  // namespace kelhost::lisp
