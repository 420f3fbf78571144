#include "editor/commands/continuation.h"

#include <cmath>

#include "ads/entity_names.h"
#include "arx/adsdef.h"
#include "kelhost/sysvars.h"

namespace kelhost::editor {
namespace {

// Kept for the drawing it was drawn in.
struct Kept {
  AcDbDatabase* db = nullptr;
  Continuation value;
};
Kept gKept;

void Keep(const Continuation& c) {
  gKept.db = ads::WorkingDb();
  gKept.value = c;
}

}  // namespace

void RememberLineEnd(const double from[3], const double to[3]) {
  Continuation c;
  for (int i = 0; i < 3; ++i) c.point[i] = to[i];
  const double dx = to[0] - from[0], dy = to[1] - from[1];
  // A line of no length keeps the heading it continued.
  c.direction = dx == 0 && dy == 0 && gKept.db ? gKept.value.direction : AngleOf(AcGeVector2d(dx, dy));
  Keep(c);
}

void RememberArcEnd(const PlaneArc& arc, double z) {
  Continuation c;
  const AcGePoint2d end = arc.end();
  c.point[0] = end.x;
  c.point[1] = end.y;
  c.point[2] = z;
  c.direction = arc.endTangent();
  c.afterArc = true;
  Keep(c);
  resbuf rb{};
  rb.restype = RTREAL;
  rb.resval.rreal = NormalizedAngle(arc.startAngle + arc.sweep);
  sysvars::SetHostVar(L"LASTANGLE", &rb);
}

bool LastContinuation(Continuation& out) {
  if (!gKept.db || gKept.db != ads::WorkingDb()) return false;
  out = gKept.value;
  return true;
}

void ForgetContinuation() { gKept = Kept{}; }

}  // namespace kelhost::editor
