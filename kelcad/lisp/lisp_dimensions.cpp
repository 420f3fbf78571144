// "kel_create...dim", "kel_manydimenttoone" and "kel_onedimenttomany":
// dimensions made, merged and split through the KEL dimension functions.
// Points are taken as WCS; chains use the drawing's current dimension
// style and show their measurements.
#include "kelcad/api/dimensions.h"
#include "kelcad/lisp/dimension_args.h"
#include "kelcad/lisp/dimension_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {

// The chain functions as one kind: the rotation is ignored by the aligned
// ones.
using ChainMaker = Acad::ErrorStatus (*)(double, const AcArray<AcGePoint3d>&, const AcGePoint3d&,
                                         const CStringArray&, AcArray<AcDbObjectId>&, AcDbObjectId);

Acad::ErrorStatus MAligned(double, const AcArray<AcGePoint3d>& pts, const AcGePoint3d& line, const CStringArray& texts,
                           AcArray<AcDbObjectId>& ids, AcDbObjectId style) {
  return CreateMAlignedDim(pts, line, texts, ids, style);
}
Acad::ErrorStatus MBAligned(double, const AcArray<AcGePoint3d>& pts, const AcGePoint3d& line,
                            const CStringArray& texts, AcArray<AcDbObjectId>& ids, AcDbObjectId style) {
  return CreateMBAlignedDim(pts, line, texts, ids, style);
}
Acad::ErrorStatus MRotated(double rotation, const AcArray<AcGePoint3d>& pts, const AcGePoint3d& line,
                           const CStringArray& texts, AcArray<AcDbObjectId>& ids, AcDbObjectId style) {
  return CreateMRotatedDim(rotation, pts, line, texts, ids, style);
}
Acad::ErrorStatus MBRotated(double rotation, const AcArray<AcGePoint3d>& pts, const AcGePoint3d& line,
                            const CStringArray& texts, AcArray<AcDbObjectId>& ids, AcDbObjectId style) {
  return CreateMBRotatedDim(rotation, pts, line, texts, ids, style);
}

// (name [rotation] points line): a selection set of the new dimensions,
// nil when none was made.
int Chain(bool rotated, ChainMaker make, std::initializer_list<const wchar_t*> usage) {
  const resbuf* rb = acedGetArgs();
  acedRetNil();
  double rotation = 0.0;
  AcArray<AcGePoint3d> points;
  AcGePoint3d line;
  if ((rotated && !TakeNumber(rb, rotation)) || !TakePointList(rb, points) || !TakePoint(rb, line) || rb) {
    PrintUsageLines(usage);
    return RTNORM;
  }
  AcArray<AcDbObjectId> ids;
  make(rotation, points, line, CStringArray(), ids, AcDbObjectId::kNull);
  ReturnSelection(ids);
  return RTNORM;
}

}  // namespace

// (kel_createaligneddim p1 p2 line)
int KEL_CreateAlignedDim() {
  const resbuf* rb = acedGetArgs();
  acedRetNil();
  AcGePoint3d p1, p2, line;
  if (!TakePoint(rb, p1) || !TakePoint(rb, p2) || !TakePoint(rb, line) || rb) {
    PrintUsageLines({L"\n KEL_CreateAlignedDim", L"\n 功能：创建单个的对齐标注",
                     L"\n 用法：KEL_CreateAlignedDim 第一个标注点,第二个标注点,尺寸线通过点",
                     L"\n 返回：新生成的实体名,失败返回Nil"});
    return RTNORM;
  }
  AcDbObjectId id;
  if (CreateAlignedDim(p1, p2, line, id) == Acad::eOk) ReturnEntity(id);
  return RTNORM;
}

// (kel_createrotateddim rotation p1 p2 line)
int KEL_CreateRotatedDim() {
  const resbuf* rb = acedGetArgs();
  acedRetNil();
  double rotation = 0.0;
  AcGePoint3d p1, p2, line;
  if (!TakeNumber(rb, rotation) || !TakePoint(rb, p1) || !TakePoint(rb, p2) || !TakePoint(rb, line) || rb) {
    PrintUsageLines({L"\n KEL_CreateRotatedDim", L"\n 功能：创建单个的线性标注",
                     L"\n 用法：KEL_CreateRotatedDim 旋转角(弧度),第一个标注点,第二个标注点,尺寸线通过点"});
    return RTNORM;
  }
  AcDbObjectId id;
  if (CreateRotatedDim(rotation, p1, p2, line, id) == Acad::eOk) ReturnEntity(id);
  return RTNORM;
}

int KEL_CreateMAlignedDim() {
  return Chain(false, MAligned,
               {L"\n KEL_CreateMAlignedDim", L"\n 功能：以第一个对齐标注为基线,创建连续标注",
                L"\n 用法：KEL_CreateMAlignedDim 标注点表,尺寸线通过点", L"\n 返回：新生成的实体选择集,失败返回Nil"});
}

int KEL_CreateMBAlignedDim() {
  return Chain(false, MBAligned,
               {L"\n KEL_CreateMBAlignedDim", L"\n 用法：KEL_CreateMBAlignedDim 标注点表,尺寸线通过点"});
}

int KEL_CreateMRotatedDim() {
  return Chain(true, MRotated,
               {L"\n KEL_CreateMRotatedDim", L"\n 功能：以第一个线性标注为基线,创建连续标注",
                L"\n 用法：KEL_CreateMRotatedDim 旋转角(弧度),标注点表,尺寸线通过点"});
}

int KEL_CreateMBRotatedDim() {
  return Chain(true, MBRotated,
               {L"\n KEL_CreateMBRotatedDim", L"\n 功能：以第一个线性标注为基线,创建基线标注",
                L"\n 用法：KEL_CreateMBRotatedDim 旋转角(弧度),标注点表,尺寸线通过点"});
}

// (kel_manydimenttoone selection): the merged dimension, or nil after
// "\nError:%d" with the status.
int KEL_ManyDimEntToOne() {
  const resbuf* rb = acedGetArgs();
  acedRetNil();
  ads_name selection;
  if (!TakeSelection(rb, selection) || rb) {
    PrintUsageLines({L"\n KEL_ManyDimEntToOne", L"\n 功能：多个连续的尺寸标注合并为一个尺寸标注",
                     L"\n 用法：KEL_ManyDimEntToOne 选择集", L"\n 返回：成功返回新生成的实体名,失败返回Nil"});
    return RTNORM;
  }
  AcDbObjectId id;
  const Acad::ErrorStatus es = ManyDimEntToOne(selection, id);
  if (es == Acad::eOk)
    ReturnEntity(id);
  else
    acutPrintf(L"\nError:%d", static_cast<int>(es));
  return RTNORM;
}

// (kel_onedimenttomany dimension points): a selection set of the pieces,
// or nil.
int KEL_OneDimEntToMany() {
  const resbuf* rb = acedGetArgs();
  acedRetNil();
  AcDbObjectId dim;
  AcArray<AcGePoint3d> points;
  if (!TakeEntity(rb, dim) || !TakePointList(rb, points) || rb) {
    PrintUsageLines({L"\n KEL_OneDimEntToMany", L"\n 功能：把一个尺寸标注分割为多个连续的尺寸标注",
                     L"\n 用法：KEL_OneDimEntToMany 实体名,分割点表"});
    return RTNORM;
  }
  AcArray<AcDbObjectId> ids;
  if (OneDimEntToMany(dim, points, ids) == Acad::eOk) ReturnSelection(ids);
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
