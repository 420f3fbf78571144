// FixLenStr with an alignment: padding only, never cutting.
#include "kelbase/strings.h"

namespace KEL {
CString FixLenStr(const wchar_t* text, int length, bool rightAligned) {
  const CString source(text != nullptr ? text : L"");
  const int missing = length - source.GetLength();
  if (missing <= 0) return source;
  const CString blanks(L' ', missing);
  return rightAligned ? blanks + source : source + blanks;
}
}  // namespace KEL
