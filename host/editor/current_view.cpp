// acedSetCurrentView: a view record shown in the current viewport.
#include <cmath>

#include "arx/aced_view.h"
#include "arx/dbsymtb.h"
#include "editor/view.h"

Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* pVwRec, AcDbViewport* pVP) {
  try {
    if (!pVwRec || pVP) return Acad::eInvalidInput;
    kelhost::db::ActiveView v;
    v.center = pVwRec->centerPoint();
    v.height = pVwRec->height();
    v.width = pVwRec->width();
    v.target = pVwRec->target();
    v.direction = pVwRec->viewDirection();
    v.twist = pVwRec->viewTwist();
    v.lens = pVwRec->lensLength();
    v.front = pVwRec->frontClipDistance();
    v.back = pVwRec->backClipDistance();
    v.mode = static_cast<short>((pVwRec->perspectiveEnabled() ? 1 : 0) | (pVwRec->frontClipEnabled() ? 2 : 0) |
                                (pVwRec->backClipEnabled() ? 4 : 0) | (pVwRec->frontClipAtEye() ? 0 : 16));
    const bool sized = std::isfinite(v.height) && std::isfinite(v.width) && (v.height > 0 || v.width > 0);
    if (!sized || v.direction.isZeroLength()) return Acad::eInvalidInput;
    return kelhost::editor::ShowView(v) ? Acad::eOk : Acad::eNotApplicable;
  } catch (...) {
    return Acad::eNotApplicable;
  }
}
