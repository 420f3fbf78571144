#include "kelcad/lisp/dimension_args.h"

namespace KEL {
namespace Lisp {

bool TakePoint(const resbuf*& rb, AcGePoint3d& point) {
  if (!rb || (rb->restype != RTPOINT && rb->restype != RT3DPOINT)) return false;
  point.set(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->restype == RT3DPOINT ? rb->resval.rpoint[2] : 0.0);
  rb = rb->rbnext;
  return true;
}

bool TakeNumber(const resbuf*& rb, double& value) {
  if (!rb || (rb->restype != RTREAL && rb->restype != RTSHORT)) return false;
  value = rb->restype == RTSHORT ? rb->resval.rint : rb->resval.rreal;
  rb = rb->rbnext;
  return true;
}

bool TakeShort(const resbuf*& rb, int& value) {
  if (!rb || rb->restype != RTSHORT) return false;
  value = rb->resval.rint;
  rb = rb->rbnext;
  return true;
}

bool TakeText(const resbuf*& rb, const wchar_t*& text) {
  if (!rb || rb->restype != RTSTR) return false;
  text = rb->resval.rstring ? rb->resval.rstring : L"";
  rb = rb->rbnext;
  return true;
}

bool TakeEntity(const resbuf*& rb, AcDbObjectId& id) {
  if (!rb || rb->restype != RTENAME || acdbGetObjectId(id, rb->resval.rlname) != Acad::eOk) return false;
  rb = rb->rbnext;
  return true;
}

bool TakeSelection(const resbuf*& rb, ads_name selection) {
  if (!rb || rb->restype != RTPICKS) return false;
  ads_name_set(rb->resval.rlname, selection);
  rb = rb->rbnext;
  return true;
}

bool TakePointList(const resbuf*& rb, AcArray<AcGePoint3d>& points) {
  if (rb && rb->restype == RTNIL) {
    rb = rb->rbnext;
    return true;
  }
  if (!rb || rb->restype != RTLB) return false;
  const resbuf* at = rb->rbnext;
  AcGePoint3d p;
  while (TakePoint(at, p)) points.append(p);
  if (!at || at->restype != RTLE) return false;
  rb = at->rbnext;
  return true;
}

void ReturnEntity(AcDbObjectId id) {
  ads_name name;
  if (acdbGetAdsName(name, id) == Acad::eOk)
    acedRetName(name, RTENAME);
  else
    acedRetNil();
}

void ReturnSelection(const AcArray<AcDbObjectId>& ids) {
  ads_name set = {0, 0};
  bool made = false;
  for (int i = 0; i < ids.length(); ++i) {
    ads_name member;
    if (acdbGetAdsName(member, ids[i]) != Acad::eOk) continue;
    if (!made) {
      made = acedSSAdd(member, nullptr, set) == RTNORM;
    } else {
      acedSSAdd(member, set, set);
    }
  }
  // The set is handed to AutoLISP: the handler does not free it.
  if (made)
    acedRetName(set, RTPICKS);
  else
    acedRetNil();
}

}  // namespace Lisp
}  // namespace KEL
