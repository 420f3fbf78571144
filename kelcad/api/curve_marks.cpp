// The points that mark an arc and a line on a drawing.
#include <cmath>
#include <cwchar>

#include "kelcad/api/curves.h"
#include "kelcad/api/opened.h"
#include "kelcad/api/readable_angles.h"

namespace KEL {

namespace {
void Copy(const AcGePoint3d& p, double out[3]) {
  out[0] = p.x;
  out[1] = p.y;
  out[2] = p.z;
}
}  // namespace

bool GetARCVertex(const ads_name name, double start[3], double vertex[3], double end[3]) {
  Opened<AcDbArc> arc(IdOfName(name), AcDb::kForRead);
  if (!arc) return false;
  double first = 0.0, last = 0.0;
  AcGePoint3d a, m, b;
  if (arc->getStartParam(first) != Acad::eOk || arc->getEndParam(last) != Acad::eOk ||
      arc->getPointAtParam(first, a) != Acad::eOk || arc->getPointAtParam(0.5 * (first + last), m) != Acad::eOk ||
      arc->getPointAtParam(last, b) != Acad::eOk)
    return false;
  Copy(a, start);
  Copy(m, vertex);
  Copy(b, end);
  return true;
}

bool GetLAMarkPoint(const ads_name name, double middle[3], double left[3], double right[3], double& angle,
                    double& length) {
  resbuf* list = acdbEntGet(name);
  if (list == nullptr) return false;
  bool isLine = false;
  ads_point s = {0, 0, 0}, e = {0, 0, 0};
  for (const resbuf* rb = list; rb; rb = rb->rbnext) {
    if (rb->restype == 0) isLine = wcscmp(rb->resval.rstring, L"LINE") == 0;
    if (rb->restype == 10 || rb->restype == 11) {
      double* p = rb->restype == 10 ? s : e;
      for (int i = 0; i < 3; ++i) p[i] = rb->resval.rpoint[i];
    }
  }
  acutRelRb(list);
  if (!isLine) return false;
  constexpr double kPi = 3.14159265358979323846;
  ads_point mid = {(s[0] + e[0]) / 2, (s[1] + e[1]) / 2, (s[2] + e[2]) / 2};
  const double direction = acutAngle(s, e);
  length = acutDistance(s, e);
  ads_point l, r;
  acutPolar(mid, direction + kPi / 2, length / 10, l);
  acutPolar(mid, direction - kPi / 2, length / 10, r);
  for (int i = 0; i < 3; ++i) middle[i] = mid[i], left[i] = l[i], right[i] = r[i];
  // Text along the line reads from left to right (the vertical upwards).
  double across = 0.0;
  GetRightTopAngles(direction, angle, across);
  return true;
}

}  // namespace KEL
