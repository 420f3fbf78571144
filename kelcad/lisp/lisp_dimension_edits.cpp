// The dimension setters' handlers: T when the setter answered eOk, else
// nil; the usage and nil for arguments other than the usage says.
#include "kelcad/api/dimensions.h"
#include "kelcad/api/entity_edits.h"
#include "kelcad/lisp/dimension_args.h"
#include "kelcad/lisp/dimension_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {

// (name entity value) with a value that take reads: apply's status as T
// or nil.
template <class Value, class Take, class Apply>
int EntityAndValue(Take take, Apply apply, std::initializer_list<const wchar_t*> usage) {
  const resbuf* rb = acedGetArgs();
  acedRetNil();
  AcDbObjectId id;
  Value value{};
  if (!TakeEntity(rb, id) || !take(rb, value) || rb) {
    PrintUsageLines(usage);
    return RTNORM;
  }
  ReturnBool(apply(id, value) == Acad::eOk);
  return RTNORM;
}

bool TakeName(const resbuf*& rb, const wchar_t*& text) { return TakeText(rb, text); }

}  // namespace

int KEL_SetEntDimStyle() {
  return EntityAndValue<const wchar_t*>(
      TakeName, [](AcDbObjectId id, const wchar_t* name) { return SetEntDimStyle(id, CString(name)); },
      {L"\n KEL_SetEntDimStyle", L"\n 功能：设置标注实体的标注样式", L"\n 用法：KEL_SetEntDimStyle 实体名,标注样式名",
       L"\n 返回：成功返回T,失败返回Nil"});
}

int KEL_SetDimEntTxtStyle() {
  return EntityAndValue<const wchar_t*>(
      TakeName, [](AcDbObjectId id, const wchar_t* name) { return SetEntTxtStyle(id, CString(name)); },
      {L"\n KEL_SetDimEntTxtStyle", L"\n 功能：设置标注实体的文字样式",
       L"\n 用法：KEL_SetDimEntTxtStyle 实体名,文字样式名"});
}

int KEL_SetDimEntTxtHigh() {
  return EntityAndValue<double>(
      TakeNumber, [](AcDbObjectId id, double height) { return SetEntTxtHigh(id, height); },
      {L"\n KEL_SetDimEntTxtHigh", L"\n 功能：设置标注实体的文字高度", L"\n 用法：KEL_SetDimEntTxtHigh 实体名,文字高度"});
}

int KEL_SetEntDimText() {
  return EntityAndValue<const wchar_t*>(
      TakeName, [](AcDbObjectId id, const wchar_t* text) { return SetEntDimText(id, text); },
      {L"\n KEL_SetEntDimText", L"\n 功能：编辑标注文本内容", L"\n 用法：KEL_SetEntDimText 实体名,文字内容"});
}

int KEL_SetEntDimRnd() {
  return EntityAndValue<double>(
      TakeNumber, [](AcDbObjectId id, double rounding) { return SetEntDimRnd(id, rounding); },
      {L"\n KEL_SetEntDimRnd", L"\n 功能：编辑标注舍入", L"\n 用法：(KEL_SetEntDimRnd 实体名 舍入值(double)"});
}

int KEL_SetEntDimDec() {
  return EntityAndValue<int>(
      TakeShort, [](AcDbObjectId id, int places) { return SetEntDimDec(id, places); },
      {L"\n KEL_SetEntDimDec", L"\n 功能：编辑标注精度", L"\n 用法：(KEL_SetEntDimDec 实体名 精度值(int)"});
}

// (kel_setdimentproperty entity [gap [arrow [line [extension [block]]]]]):
// arguments left off from the end keep their defaults.
int KEL_SetDimEntProperty() {
  const resbuf* rb = acedGetArgs();
  acedRetNil();
  auto usage = [] {
    PrintUsageLines({L"\n KEL_SetDimEntProperty",
                     L"\n 功能：设置标注的文字偏移,箭头大小,尺寸线范围,尺寸界限范围,箭头样式等属性",
                     L"\n 用法：(KEL_SetDimEntProperty 实体名 文字偏移 箭头大小 尺寸线范围 尺寸界限范围 箭头样式名)"});
  };
  AcDbObjectId id;
  if (!TakeEntity(rb, id)) {
    usage();
    return RTNORM;
  }
  double values[4] = {150.0, 150.0, 150.0, 200.0};
  const wchar_t* const names[4] = {L"参数类型错误: 文字偏移", L"参数类型错误: 箭头大小", L"参数类型错误: 尺寸线范围",
                                   L"参数类型错误: 尺寸界限范围"};
  for (int i = 0; i < 4 && rb; ++i) {
    if (!TakeNumber(rb, values[i])) {
      usage();
      acutPrintf(L"%s", names[i]);
      return RTNORM;
    }
  }
  const wchar_t* block = L"_ARCHTICK";
  if (rb && (!TakeText(rb, block) || rb)) {
    usage();
    acutPrintf(L"%s", L"参数类型错误: 箭头样式");
    return RTNORM;
  }
  ReturnBool(SetDimEntProperty(id, values[0], values[1], values[2], values[3], block) == Acad::eOk);
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
