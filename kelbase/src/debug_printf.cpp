// The base library's debugger output for the family's diagnostics.
#include <cstdarg>

#include "kelbase/debug.h"
#include "kelcad/platform.h"

void DebugPrintf(const wchar_t* format, ...) {
  if (format == nullptr) return;
  va_list args;
  va_start(args, format);
  CString text;
  text.FormatV(format, args);
  va_end(args);
  OutputDebugStringW(text);
}
