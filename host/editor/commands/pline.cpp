// PLINE: a lightweight polyline of line and arc segments with widths.
// Line mode takes points, Length (along the last direction), Close (from
// the second point on), Width and Halfwidth (starting and ending width;
// PLINEWID keeps the last ending width and is the next polyline's width),
// Undo, and Arc for arc mode. Enter at the start point continues from
// the end of the last line, arc or polyline. Enter ends the polyline, and
// so does cancel: the segments drawn stay, as they do on the platform.
#include "arx/acedads.h"
#include "editor/builtin_commands.h"
#include "editor/commands/continuation.h"
#include "editor/commands/draw_prompts.h"
#include "editor/commands/drawing_support.h"
#include "editor/commands/plane_entities.h"
#include "editor/commands/pline_draft.h"

namespace kelhost::editor {
namespace {

double PlineWid() {
  resbuf rb{};
  return acedGetVar(L"PLINEWID", &rb) == RTNORM && rb.restype == RTREAL ? rb.resval.rreal : 0.0;
}

// The start point: a point, or Enter for the end of the last thing drawn.
void AskStart(CommandContext& c, PlineDraft& d) {
  for (;;) {
    const Answer a = c.askPoint(L"\nSpecify start point: ");
    if (a.status == RTNORM) {
      d.start = AcGePoint2d(a.point[0], a.point[1]);
      d.z = a.point[2];
      break;
    }
    Continuation k;
    if (LastContinuation(k)) {
      d.start = AcGePoint2d(k.point[0], k.point[1]);
      d.z = k.point[2];
      d.direction = k.direction;
      break;
    }
    c.print(L"\nNo line or arc to continue.");
  }
  d.current = d.start;
}

// Line mode; true when the command ends.
bool DrawLines(CommandContext& c, PlineDraft& d) {
  for (;;) {
    double here[3];
    d.currentPoint(here);
    const bool canClose = !d.segments.empty();
    const Answer a =
        c.askPoint(canClose ? L"\nSpecify next point or [Arc/Close/Halfwidth/Length/Undo/Width]: "
                            : L"\nSpecify next point or [Arc/Halfwidth/Length/Undo/Width]: ",
                   canClose ? L"Arc Close Halfwidth Length Undo Width" : L"Arc Halfwidth Length Undo Width", 0, here);
    if (a.status == RTNONE) return true;
    if (a.status == RTNORM) {
      d.addLine(AcGePoint2d(a.point[0], a.point[1]));
    } else if (a.text == L"Arc") {
      return false;
    } else if (a.text == L"Close") {
      d.addLine(d.start);
      d.closed = true;
      return true;
    } else if (a.text == L"Halfwidth" || a.text == L"Width") {
      AskWidths(c, d, a.text == L"Halfwidth");
    } else if (a.text == L"Length") {
      const Answer length = c.askDist(L"\nSpecify length of line: ", L"", kNoNull, here);
      d.addLine(d.current + Direction(d.direction) * length.real);
    } else if (!d.undo()) {
      c.print(L"\nAll segments already undone.");
    }
  }
}

void RunPline(CommandContext& c) {
  PlineDraft d;
  AskStart(c, d);
  d.startWidth = d.endWidth = PlineWid();
  c.print(L"\nCurrent line-width is " + DistanceText(d.endWidth));
  try {
    while (!DrawLines(c, d) && !DrawPlineArcs(c, d)) {
    }
  } catch (const CommandCancelled&) {
    d.commit();
    throw;
  }
  d.commit();
}

}  // namespace

// A segment from the current point with the current widths.
PlineSegment PlineDraft::startSegment() const {
  PlineSegment s;
  s.from = current;
  s.startWidth = startWidth;
  s.endWidth = endWidth;
  s.directionBefore = direction;
  return s;
}

void PlineDraft::addLine(const AcGePoint2d& to) {
  PlineSegment s = startSegment();
  s.to = to;
  segments.push_back(s);
  if (!(to - current).isZeroLength()) direction = AngleOf(to - current);
  current = to;
  startWidth = endWidth;
}

void PlineDraft::addArc(const PlaneArc& arc) {
  PlineSegment s = startSegment();
  s.to = arc.end();
  s.isArc = true;
  s.arc = arc;
  segments.push_back(s);
  direction = arc.endTangent();
  current = s.to;
  startWidth = endWidth;
}

bool PlineDraft::undo() {
  if (segments.empty()) return false;
  current = segments.back().from;
  direction = segments.back().directionBefore;
  segments.pop_back();
  return true;
}

void PlineDraft::currentPoint(double p[3]) const {
  p[0] = current.x;
  p[1] = current.y;
  p[2] = z;
}

void PlineDraft::commit() const {
  if (segments.empty()) return;
  auto pline = std::make_unique<AcDbPolyline>(static_cast<unsigned>(segments.size() + 1));
  pline->setNormal(PlaneNormal());
  double elevation = 0;
  unsigned index = 0;
  for (const PlineSegment& s : segments)
    pline->addVertexAt(index++, OcsPointOf(s.from, z, elevation), s.isArc ? s.arc.bulge() : 0.0, s.startWidth,
                       s.endWidth);
  // A closed polyline's last segment returns to its first vertex by itself.
  if (!closed) pline->addVertexAt(index, OcsPointOf(current, z, elevation), 0.0, startWidth, endWidth);
  pline->setElevation(elevation);
  pline->setClosed(closed);
  AppendToCurrentSpace(std::move(pline));
  const PlineSegment& last = segments.back();
  if (last.isArc) {
    RememberArcEnd(last.arc, z);
  } else {
    const double from[3] = {last.from.x, last.from.y, z}, to[3] = {last.to.x, last.to.y, z};
    RememberLineEnd(from, to);
  }
}

void AskWidths(CommandContext& c, PlineDraft& d, bool half) {
  const double scale = half ? 0.5 : 1.0;
  const wchar_t* kind = half ? L"half-width" : L"width";
  double here[3];
  d.currentPoint(here);
  const Answer first =
      c.askDist(L"\nSpecify starting " + std::wstring(kind) + Default(DistanceText(d.startWidth * scale)) + L": ", L"",
                kNoNegative, here);
  const double start = first.status == RTNORM ? first.real / scale : d.startWidth;
  const Answer second = c.askDist(
      L"\nSpecify ending " + std::wstring(kind) + Default(DistanceText(start * scale)) + L": ", L"", kNoNegative, here);
  const double end = second.status == RTNORM ? second.real / scale : start;
  d.startWidth = start;
  d.endWidth = end;
  resbuf rb{};
  rb.restype = RTREAL;
  rb.resval.rreal = end;
  acedSetVar(L"PLINEWID", &rb);
}

KELHOST_BUILTIN_COMMAND(Pline, {L"PLINE", RunPline});

}  // namespace kelhost::editor
