// PLINE's arc mode: each arc starts at the current point, tangent to the
// last segment unless an option fixes its shape otherwise: an end point
// (tangent), Angle (with an end point, a center or a radius), CEnter
// (with an end point, an angle or a chord length), Direction, Radius
// (with an end point or an angle), Second pt, and CLose (tangent back to
// the start). An end point straight ahead makes a line segment; other
// geometry that makes no arc says "*Invalid*" and asks again.
#include <cmath>

#include "editor/commands/draw_prompts.h"
#include "editor/commands/pline_draft.h"

namespace kelhost::editor {
namespace {

AcGePoint2d Flat(const double p[3]) { return AcGePoint2d(p[0], p[1]); }

AcGePoint2d AskPlanePoint(CommandContext& c, const std::wstring& prompt, const double* base) {
  return Flat(c.askPoint(prompt, L"", kNoNull, base).point);
}

// The chord's direction after a radius and an included angle: by default
// the one that keeps the arc tangent to the last segment.
double AskChordDirection(CommandContext& c, const PlineDraft& d, double included, const double here[3]) {
  const double tangentChord = NormalizedAngle(d.direction + included / 2);
  const Answer a =
      AskDirection(c, L"\nSpecify direction of chord for arc" + Default(AngleText(tangentChord)) + L": ", here);
  return a.status == RTNORM ? a.real : tangentChord;
}

// The arc of given radius and included angle leaving the current point
// along a chord direction.
bool ArcByRadiusAngle(const PlineDraft& d, double radius, double included, double chordDirection, PlaneArc& arc) {
  const double chord = 2 * std::fabs(radius) * std::sin(std::fabs(included) / 2);
  return ArcStartEndAngle(d.current, d.current + Direction(chordDirection) * chord, included, arc);
}

bool AngleOption(CommandContext& c, PlineDraft& d, const double here[3], PlaneArc& arc) {
  const double included = AskIncludedAngle(c, L"\nSpecify included angle: ", here);
  const Answer a = c.askPoint(L"\nSpecify endpoint of arc or [Center/Radius]: ", L"Center Radius", kNoNull, here);
  if (a.status == RTNORM) return ArcStartEndAngle(d.current, Flat(a.point), included, arc);
  if (a.text == L"Center") {
    const AcGePoint2d center = AskPlanePoint(c, L"\nSpecify center point of arc: ", here);
    return ArcStartCenterAngle(d.current, center, included, arc);
  }
  const Answer r = c.askDist(L"\nSpecify radius of arc: ", L"", kNoNull | kNoZero, here);
  return ArcByRadiusAngle(d, r.real, included, AskChordDirection(c, d, included, here), arc);
}

bool CenterOption(CommandContext& c, PlineDraft& d, const double here[3], PlaneArc& arc) {
  const Answer center = c.askPoint(L"\nSpecify center point of arc: ", L"", kNoNull, here);
  const Answer a = c.askPoint(L"\nSpecify endpoint of arc or [Angle/Length]: ", L"Angle Length", kNoNull, center.point);
  if (a.status == RTNORM) return ArcStartCenterEnd(d.current, Flat(center.point), Flat(a.point), arc);
  if (a.text == L"Angle") {
    const double included = AskIncludedAngle(c, L"\nSpecify included angle: ", center.point);
    return ArcStartCenterAngle(d.current, Flat(center.point), included, arc);
  }
  const Answer chord = c.askDist(L"\nSpecify length of chord: ", L"", kNoNull, here);
  return ArcStartCenterChord(d.current, Flat(center.point), chord.real, arc);
}

bool RadiusOption(CommandContext& c, PlineDraft& d, const double here[3], PlaneArc& arc) {
  const Answer r = c.askDist(L"\nSpecify radius of arc: ", L"", kNoNull | kNoZero, here);
  const Answer a = c.askPoint(L"\nSpecify endpoint of arc or [Angle]: ", L"Angle", kNoNull, here);
  if (a.status == RTKWORD) {
    const double included = AskIncludedAngle(c, L"\nSpecify included angle: ", here);
    return ArcByRadiusAngle(d, r.real, included, AskChordDirection(c, d, included, here), arc);
  }
  // The arc bends the way the end point lies from the last direction
  // (there is no tangency to keep); a negative radius takes the major arc.
  const AcGePoint2d end = Flat(a.point);
  const AcGeVector2d ahead = Direction(d.direction), chord = end - d.current;
  const bool leftTurn = ahead.x * chord.y - ahead.y * chord.x >= 0;
  if (!ArcStartEndRadius(d.current, end, r.real, arc)) return false;
  return leftTurn || ArcStartEndAngle(d.current, end, -arc.sweep, arc);
}

}  // namespace

bool DrawPlineArcs(CommandContext& c, PlineDraft& d) {
  for (;;) {
    double here[3];
    d.currentPoint(here);
    const bool canClose = !d.segments.empty();
    const Answer a =
        c.askPoint(canClose ? L"\nSpecify endpoint of arc (hold Ctrl to switch direction) or\n"
                              L"[Angle/CEnter/CLose/Direction/Halfwidth/Line/Radius/Second pt/Undo/Width]: "
                            : L"\nSpecify endpoint of arc (hold Ctrl to switch direction) or\n"
                              L"[Angle/CEnter/Direction/Halfwidth/Line/Radius/Second pt/Undo/Width]: ",
                   canClose ? L"Angle CEnter CLose Direction Halfwidth Line Radius Second Undo Width"
                            : L"Angle CEnter Direction Halfwidth Line Radius Second Undo Width",
                   0, here);
    if (a.status == RTNONE) return true;
    PlaneArc arc;
    bool made = false, straight = false;
    if (a.status == RTNORM) {
      made = ArcStartTangentEnd(d.current, d.direction, Flat(a.point), arc, &straight);
      if (straight) d.addLine(Flat(a.point));
    } else if (a.text == L"Line") {
      return false;
    } else if (a.text == L"Halfwidth" || a.text == L"Width") {
      AskWidths(c, d, a.text == L"Halfwidth");
      continue;
    } else if (a.text == L"Undo") {
      if (!d.undo()) c.print(L"\nAll segments already undone.");
      continue;
    } else if (a.text == L"CLose") {
      // The start straight ahead closes with a line.
      if (ArcStartTangentEnd(d.current, d.direction, d.start, arc, &straight) || straight) {
        if (straight)
          d.addLine(d.start);
        else
          d.addArc(arc);
        d.closed = true;
        return true;
      }
    } else if (a.text == L"Angle") {
      made = AngleOption(c, d, here, arc);
    } else if (a.text == L"CEnter") {
      made = CenterOption(c, d, here, arc);
    } else if (a.text == L"Direction") {
      const Answer dir =
          AskDirection(c, L"\nSpecify the tangent direction for the start point of arc: ", here, L"", kNoNull);
      const AcGePoint2d end = AskPlanePoint(c, L"\nSpecify endpoint of the arc: ", here);
      made = ArcStartTangentEnd(d.current, dir.real, end, arc, &straight);
      if (straight) d.addLine(end);
    } else if (a.text == L"Radius") {
      made = RadiusOption(c, d, here, arc);
    } else {
      const Answer second = c.askPoint(L"\nSpecify second point on arc: ", L"", kNoNull, here);
      const AcGePoint2d end = AskPlanePoint(c, L"\nSpecify end point of arc: ", second.point);
      made = ArcThroughPoints(d.current, Flat(second.point), end, arc);
    }
    if (made)
      d.addArc(arc);
    else if (!straight)
      c.print(L"\n*Invalid*");
  }
}

}  // namespace kelhost::editor
