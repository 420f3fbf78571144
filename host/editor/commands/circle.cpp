// CIRCLE: a center with a radius or a diameter, three points (3P), the
// two ends of a diameter (2P), or tangent to two picked lines, arcs or
// circles with a radius (Ttr). The radius it offers is CIRCLERAD, which
// every circle drawn sets; while it is 0 the radius prompt has no
// default. A circle that cannot exist draws nothing.
#include <cmath>

#include "ads/entity_names.h"
#include "arx/acedads.h"
#include "editor/builtin_commands.h"
#include "editor/commands/draw_prompts.h"
#include "editor/commands/drawing_support.h"
#include "editor/commands/plane_entities.h"
#include "editor/commands/tangent_circles.h"

namespace kelhost::editor {
namespace {

const wchar_t kNoCircle[] = L"\nCircle does not exist.";

AcGePoint2d Flat(const double p[3]) { return AcGePoint2d(p[0], p[1]); }

double CircleRad() {
  resbuf rb{};
  return acedGetVar(L"CIRCLERAD", &rb) == RTNORM && rb.restype == RTREAL ? rb.resval.rreal : 0.0;
}

// A positive distance; Enter takes the default when there is one.
double AskSize(CommandContext& c, const std::wstring& prompt, double fallback, const std::wstring& keywords,
               const double* base, bool& keyword) {
  const bool hasDefault = fallback > 0;
  const Answer a = c.askDist(prompt + (hasDefault ? Default(DistanceText(fallback)) : L"") + L": ", keywords,
                             kNoZero | kNoNegative | (hasDefault ? 0 : kNoNull), base);
  keyword = a.status == RTKWORD;
  return a.status == RTNORM ? a.real : fallback;
}

// A picked line, arc or circle for the tangent form, in the drawing plane.
PlaneEntity AskTangentObject(CommandContext& c, const std::wstring& prompt, AcGePoint2d& pick) {
  for (;;) {
    const Answer a = c.askEntity(prompt);
    PlaneEntity e;
    if (a.status != RTNORM || !a.hasName) continue;
    const ads_name name = {a.name[0], a.name[1]};
    if (!ReadPlaneEntity(ads::IdOfName(name), e)) continue;
    pick = e.curve().closestPoint(Flat(a.point));
    return e;
  }
}

void RunCircle(CommandContext& c) {
  const Answer first =
      c.askPoint(L"\nSpecify center point for circle or [3P/2P/Ttr (tan tan radius)]: ", L"3P,3P 2P,2P Ttr", kNoNull);
  AcGePoint2d center;
  double radius = 0, z = first.point[2];
  if (first.status == RTNORM) {
    center = Flat(first.point);
    bool diameter = false;
    radius = AskSize(c, L"\nSpecify radius of circle or [Diameter]", CircleRad(), L"Diameter", first.point, diameter);
    if (diameter) radius = AskSize(c, L"\nSpecify diameter of circle", 2 * CircleRad(), L"", first.point, diameter) / 2;
  } else if (first.text == L"3P") {
    const Answer p1 = c.askPoint(L"\nSpecify first point on circle: ", L"", kNoNull);
    const Answer p2 = c.askPoint(L"\nSpecify second point on circle: ", L"", kNoNull, p1.point);
    const Answer p3 = c.askPoint(L"\nSpecify third point on circle: ", L"", kNoNull, p2.point);
    z = p1.point[2];
    PlaneArc through;
    if (!ArcThroughPoints(Flat(p1.point), Flat(p2.point), Flat(p3.point), through)) c.fail(kNoCircle);
    center = through.center;
    radius = through.radius;
  } else if (first.text == L"2P") {
    const Answer p1 = c.askPoint(L"\nSpecify first end point of circle's diameter: ", L"", kNoNull);
    const Answer p2 = c.askPoint(L"\nSpecify second end point of circle's diameter: ", L"", kNoNull, p1.point);
    z = p1.point[2];
    center = AcGePoint2d((p1.point[0] + p2.point[0]) / 2, (p1.point[1] + p2.point[1]) / 2);
    radius = (Flat(p2.point) - Flat(p1.point)).length() / 2;
    if (!(radius > 0)) c.fail(kNoCircle);
  } else {
    AcGePoint2d pick1, pick2;
    const PlaneEntity e1 = AskTangentObject(c, L"\nSpecify point on object for first tangent of circle: ", pick1);
    const PlaneEntity e2 = AskTangentObject(c, L"\nSpecify point on object for second tangent of circle: ", pick2);
    bool unused = false;
    radius = AskSize(c, L"\nSpecify radius of circle", CircleRad(), L"", nullptr, unused);
    const std::vector<TangentCircle> found = CirclesTangentTo(e1.curve(), e2.curve(), radius);
    const TangentCircle* best = NearestToPicks(found, pick1, pick2);
    if (!best) c.fail(kNoCircle);
    center = best->center;
    z = e1.z;
  }
  AppendToCurrentSpace(MakeCircle(center, radius, z));
  resbuf rb{};
  rb.restype = RTREAL;
  rb.resval.rreal = radius;
  acedSetVar(L"CIRCLERAD", &rb);
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Circle, {L"CIRCLE", RunCircle});

}  // namespace kelhost::editor
