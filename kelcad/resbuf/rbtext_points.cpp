// Point arrays as a numbered table for diagnostics.
#include "kelcad/resbuf/rbtext.h"

namespace KEL {
const wchar_t* PtArrayToStr(const AcArray<AcGePoint2d>& points) {
  static CString text;
  text = L"\n\n  序号        X                Y\n";
  for (int i = 0; i < points.length(); ++i)
    text.AppendFormat(L"\n  %d          %-8f        %-8f\n", i, points[i].x, points[i].y);
  return text.GetString();
}

const wchar_t* PtArrayToStr(const AcArray<AcGePoint3d>& points) {
  static CString text;
  text = L"\n\n  序号        X                Y                Z\n";
  for (int i = 0; i < points.length(); ++i)
    text.AppendFormat(L"\n  %d          %-8f        %-8f        %-8f\n", i, points[i].x, points[i].y, points[i].z);
  return text.GetString();
}
}  // namespace KEL
