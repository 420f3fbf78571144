// The one formatter of the platform's wide printf convention, behind
// acutPrintf, acdbFail, CString::Format and every other formatting call:
//   %s %c   wide string / wide character (in a wide format)
//   %hs %hc narrow (UTF-8) string / character;  %ls %lc wide;  %S %C narrow
//   %d %i %u %x %X %o   int;  %ld %lu %lx  32-bit (the platform's long)
//   %hd  short;  %lld %I64d %I64u %I64x  64-bit;  %zd %Id  pointer-sized
//   %f %e %g %a (upper-case forms too) double;  %p pointer;  %%  percent
// Flags - + space # 0, width and precision (with *) as in C.
#pragma once

#include <cstdarg>
#include <string>

namespace kelhost {
std::wstring WFormatV(const wchar_t* format, va_list args);
std::wstring WFormat(const wchar_t* format, ...);
}  // namespace kelhost
