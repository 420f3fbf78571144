// "kel_lineplineint": where a LINE crosses a polyline.
#include "kelcad/geom/line_pline_int.h"
#include "kelcad/lisp/geometry_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {

// The crossings as an AutoLISP list of points; null when there are none
// or memory ran short.
resbuf* PointList(const std::vector<Geom::Point3>& points) {
  resbuf* list = nullptr;
  resbuf** tail = &list;
  for (const Geom::Point3& p : points) {
    *tail = acutNewRb(RT3DPOINT);
    if (*tail == nullptr) {
      acutRelRb(list);
      return nullptr;
    }
    for (int k = 0; k < 3; ++k) (*tail)->resval.rpoint[k] = p[k];
    tail = &(*tail)->rbnext;
  }
  return list;
}

}  // namespace

// Arguments: the LINE's entity name, then the polyline's (lightweight or
// heavy). The crossings in the order of the polyline's segments, or nil.
int KEL_LinePLineInt() {
  const resbuf* line = acedGetArgs();
  const resbuf* pline = line != nullptr ? line->rbnext : nullptr;
  std::vector<Geom::Point3> crossings;
  const bool namesGiven = line != nullptr && line->restype == RTENAME && pline != nullptr &&
                          pline->restype == RTENAME && pline->rbnext == nullptr;
  if (!namesGiven || !Geom::LinePolylineCrossings(line->resval.rlname, pline->resval.rlname, crossings)) {
    PrintUsageLines({L"\n KEL_LinePLineInt 参数错", L"\n KEL_LinePLineInt",
                     L"\n 功能：求直线与多段线（轻量或重量多段线）的交点，按多段线各段的顺序返回交点表",
                     L"\n 用法：KEL_LinePLineInt 直线图元名 多段线图元名"});
    acedRetNil();
    return RTNORM;
  }
  resbuf* list = PointList(crossings);
  if (list != nullptr) {
    acedRetList(list);
    acutRelRb(list);
  } else {
    acedRetNil();
  }
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
