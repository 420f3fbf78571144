// ARC: through three points, or from a start point with a center (then an
// end point, an included angle or a chord length) or with an end point
// (then a center, an included angle, a tangent direction or a radius).
// Enter at the first prompt starts at the end of the last line, arc or
// polyline, tangent to it. Impossible geometry (three points in a line, a
// chord longer than the diameter, ...) ends the command with "*Invalid*"
// and draws nothing.
#include "editor/builtin_commands.h"
#include "editor/commands/continuation.h"
#include "editor/commands/draw_prompts.h"
#include "editor/commands/drawing_support.h"
#include "editor/commands/plane_entities.h"

namespace kelhost::editor {
namespace {

AcGePoint2d Flat(const double p[3]) { return AcGePoint2d(p[0], p[1]); }

AcGePoint2d AskPlanePoint(CommandContext& c, const std::wstring& prompt, const double* base) {
  return Flat(c.askPoint(prompt, L"", kNoNull, base).point);
}

// After a start point and a center.
bool EndFromCenter(CommandContext& c, const double start[3], const double center[3], PlaneArc& arc) {
  const Answer a = c.askPoint(L"\nSpecify end point of arc (hold Ctrl to switch direction) or [Angle/chord Length]: ",
                              L"Angle Length", kNoNull, center);
  if (a.status == RTKWORD && a.text == L"Angle") {
    const double angle = AskIncludedAngle(c, L"\nSpecify included angle (hold Ctrl to switch direction): ", center);
    return ArcStartCenterAngle(Flat(start), Flat(center), angle, arc);
  }
  if (a.status == RTKWORD) {
    const Answer chord = c.askDist(L"\nSpecify length of chord (hold Ctrl to switch direction): ", L"", kNoNull, start);
    return ArcStartCenterChord(Flat(start), Flat(center), chord.real, arc);
  }
  return ArcStartCenterEnd(Flat(start), Flat(center), Flat(a.point), arc);
}

// After a start point and an end point.
bool FromEnds(CommandContext& c, const double start[3], const double end[3], PlaneArc& arc) {
  const Answer a =
      c.askPoint(L"\nSpecify center point of arc (hold Ctrl to switch direction) or [Angle/Direction/Radius]: ",
                 L"Angle Direction Radius", kNoNull, end);
  if (a.status == RTNORM) return ArcStartCenterEnd(Flat(start), Flat(a.point), Flat(end), arc);
  if (a.text == L"Angle") {
    const double angle = AskIncludedAngle(c, L"\nSpecify included angle (hold Ctrl to switch direction): ", start);
    return ArcStartEndAngle(Flat(start), Flat(end), angle, arc);
  }
  if (a.text == L"Direction") {
    const Answer d =
        AskDirection(c, L"\nSpecify tangent direction for the start point of arc (hold Ctrl to switch direction): ",
                     start, L"", kNoNull);
    return ArcStartTangentEnd(Flat(start), d.real, Flat(end), arc);
  }
  const Answer r = c.askDist(L"\nSpecify radius of arc (hold Ctrl to switch direction): ", L"", kNoNull, end);
  return ArcStartEndRadius(Flat(start), Flat(end), r.real, arc);
}

// The arc the answers describe, and the height of its plane; false for
// impossible geometry.
bool AskArc(CommandContext& c, PlaneArc& arc, double& z) {
  for (;;) {
    const Answer first = c.askPoint(L"\nSpecify start point of arc or [Center]: ", L"Center");
    if (first.status == RTNONE) {
      Continuation k;
      if (!LastContinuation(k)) {
        c.print(L"\nNo line or arc to continue.");
        continue;
      }
      z = k.point[2];
      const AcGePoint2d end =
          AskPlanePoint(c, L"\nSpecify end point of arc (hold Ctrl to switch direction): ", k.point);
      return ArcStartTangentEnd(Flat(k.point), k.direction, end, arc);
    }
    if (first.status == RTKWORD) {
      const Answer center = c.askPoint(L"\nSpecify center point of arc: ", L"", kNoNull);
      const Answer start = c.askPoint(L"\nSpecify start point of arc: ", L"", kNoNull, center.point);
      z = start.point[2];
      return EndFromCenter(c, start.point, center.point, arc);
    }
    z = first.point[2];
    const Answer second =
        c.askPoint(L"\nSpecify second point of arc or [Center/End]: ", L"Center End", kNoNull, first.point);
    if (second.status == RTNORM) {
      const AcGePoint2d end = AskPlanePoint(c, L"\nSpecify end point of arc: ", second.point);
      return ArcThroughPoints(Flat(first.point), Flat(second.point), end, arc);
    }
    if (second.text == L"Center") {
      const Answer center = c.askPoint(L"\nSpecify center point of arc: ", L"", kNoNull, first.point);
      return EndFromCenter(c, first.point, center.point, arc);
    }
    const Answer end = c.askPoint(L"\nSpecify end point of arc: ", L"", kNoNull, first.point);
    return FromEnds(c, first.point, end.point, arc);
  }
}

void RunArc(CommandContext& c) {
  PlaneArc arc;
  double z = 0;
  if (!AskArc(c, arc, z)) c.fail(L"\n*Invalid*");
  AppendToCurrentSpace(MakeArc(arc, z));
  RememberArcEnd(arc, z);
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Arc, {L"ARC", RunArc});

}  // namespace kelhost::editor
