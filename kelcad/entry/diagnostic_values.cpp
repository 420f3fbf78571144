// The value overloads of the developers' diagnostics: each only chooses a
// format (or makes a text that serves as the format) and hands the value
// to its family's core.
#include "kelcad/entry/diagnostic.h"
#include "kelcad/resbuf/rbtext.h"

namespace {
// %x prints the low half of the name's first word, as the platform's
// 32-bit int conversion does.
unsigned int FirstWord(const ads_name name) { return static_cast<unsigned int>(name[0]); }

typedef void (*Core)(const wchar_t* format, ...);

// A text used as a format brings no arguments, yet a '%' in a printed
// string starts a conversion that reads one. It reads one of these zeros
// (a number 0, a string "(null)") instead of whatever lies beyond the
// call. A text that could read more than they cover is printed as it
// stands.
constexpr int kZeroWords = 32;
int PossibleReads(const wchar_t* text) {
  int reads = 0;
  for (; *text != L'\0'; ++text)
    if (*text == L'%' || *text == L'*') ++reads;
  return reads;
}

void PrintTextAsFormat(Core core, const wchar_t* text) {
  if (PossibleReads(text) > kZeroWords) {
    core(L"%s", text);
    return;
  }
  const long long z = 0;
  const double d = 0.0;
  core(text, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z, z,
       d, d, d, d, d, d, d, d);
}
}  // namespace

void DebugARXPrintf(int value) { DebugARXPrintf(L"\n 调试信息.整数：[%d] ", value); }
void DebugARXPrintf(double value) { DebugARXPrintf(L"\n 调试信息.实数：[%f]", value); }
void DebugARXPrintf(const ads_point point) {
  DebugARXPrintf(L"\n 调试信息.点：[%f,%f,%f]", point[X], point[Y], point[Z]);
}
void DebugARXPrintf(const ads_name name) { DebugARXPrintf(L"\n 调试信息.实体名：[%x]", FirstWord(name)); }
void DebugARXPrintf(AcGePoint2d point) { DebugARXPrintf(L"\n 调试信息.二维点：[%f,%f]", point.x, point.y); }
void DebugARXPrintf(AcGePoint3d point) {
  DebugARXPrintf(L"\n 调试信息.三维点：[%f,%f,%f]", point.x, point.y, point.z);
}
void DebugARXPrintf(const AcArray<AcGePoint2d>& points) {
  PrintTextAsFormat(DebugARXPrintf, KEL::PtArrayToStr(points));
}
void DebugARXPrintf(const AcArray<AcGePoint3d>& points) {
  PrintTextAsFormat(DebugARXPrintf, KEL::PtArrayToStr(points));
}
void DebugARXPrintf(const resbuf* chain) { PrintTextAsFormat(DebugARXPrintf, KEL::RbToStrEx(chain)); }

void DebugARXMsgBox(int value) { DebugARXMsgBox(L"整数：%d", value); }
void DebugARXMsgBox(double value) { DebugARXMsgBox(L"实数：%f", value); }
void DebugARXMsgBox(const ads_point point) { DebugARXMsgBox(L"点：%f,%f,%f", point[X], point[Y], point[Z]); }
void DebugARXMsgBox(const ads_name name) { DebugARXMsgBox(L"实体名：%x", FirstWord(name)); }
void DebugARXMsgBox(AcGePoint2d point) { DebugARXMsgBox(L"二维点：%f,%f", point.x, point.y); }
void DebugARXMsgBox(AcGePoint3d point) { DebugARXMsgBox(L"三维点： %f,%f,%f", point.x, point.y, point.z); }
void DebugARXMsgBox(const AcArray<AcGePoint2d>& points) {
  PrintTextAsFormat(DebugARXMsgBox, KEL::PtArrayToStr(points));
}
void DebugARXMsgBox(const AcArray<AcGePoint3d>& points) {
  PrintTextAsFormat(DebugARXMsgBox, KEL::PtArrayToStr(points));
}
void DebugARXMsgBox(const resbuf* chain) { PrintTextAsFormat(DebugARXMsgBox, KEL::RbToStr(chain)); }
