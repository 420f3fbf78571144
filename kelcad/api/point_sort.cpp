// Points sorted by one coordinate.
#include <algorithm>

#include "kelcad/api/curves.h"

namespace KEL {

void SortCArrayAcGePoint3d(int mode, CArray<AcGePoint3d, AcGePoint3d&>& points) {
  if (mode < 0 || mode > 3) return;
  const bool byX = mode == 0 || mode == 2;
  const bool ascending = mode < 2;
  auto before = [&](const AcGePoint3d& a, const AcGePoint3d& b) {
    const double a1 = byX ? a.x : a.y, b1 = byX ? b.x : b.y;
    const double a2 = byX ? a.y : a.x, b2 = byX ? b.y : b.x;
    if (a1 != b1) return ascending ? a1 < b1 : a1 > b1;
    return ascending ? a2 < b2 : a2 > b2;
  };
  std::stable_sort(points.GetData(), points.GetData() + points.GetSize(), before);
}

}  // namespace KEL
