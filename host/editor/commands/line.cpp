// LINE: segments from point to point, with Undo and Close. Enter at the
// first point continues from the end of the last line, arc or polyline
// drawn; after an arc the first segment leaves tangent to it, as long as
// "Length of line:" says.
#include <cmath>
#include <vector>

#include "editor/builtin_commands.h"
#include "editor/commands/continuation.h"
#include "editor/commands/drawing_support.h"
#include "editor/commands/plane_entities.h"

namespace kelhost::editor {
namespace {

struct Segment {
  AcDbObjectId id;
  double from[3];
};

void Copy(const double from[3], double to[3]) {
  for (int i = 0; i < 3; ++i) to[i] = from[i];
}

// The first point; a first segment already decided (tangent to an arc) is
// drawn by the caller from start to firstEnd.
bool AskStart(CommandContext& c, double start[3], double firstEnd[3]) {
  for (;;) {
    const Answer a = c.askPoint(L"\nSpecify first point: ");
    if (a.status == RTNORM) {
      Copy(a.point, start);
      return false;
    }
    Continuation k;
    if (!LastContinuation(k)) {
      c.print(L"\nNo line or arc to continue.");
      continue;
    }
    Copy(k.point, start);
    if (!k.afterArc) return false;
    const Answer length = c.askDist(L"\nLength of line: ", L"", kNoNull, start);
    Copy(start, firstEnd);
    firstEnd[0] += length.real * std::cos(k.direction);
    firstEnd[1] += length.real * std::sin(k.direction);
    return true;
  }
}

void RunLine(CommandContext& c) {
  double start[3], current[3], to[3];
  std::vector<Segment> segments;
  auto draw = [&](const double end[3]) {
    Segment s;
    Copy(current, s.from);
    s.id = AppendToCurrentSpace(MakeLine(current, end));
    segments.push_back(s);
    RememberLineEnd(current, end);
    Copy(end, current);
  };
  const bool tangentFirst = AskStart(c, start, to);
  Copy(start, current);
  if (tangentFirst) draw(to);
  for (;;) {
    const bool canClose = segments.size() >= 2;
    const Answer a =
        c.askPoint(canClose ? L"\nSpecify next point or [Close/Undo]: " : L"\nSpecify next point or [Undo]: ",
                   canClose ? L"Close Undo" : L"Undo", 0, current);
    if (a.status == RTNONE) break;
    if (a.status == RTKWORD && a.text == L"Undo") {
      if (segments.empty()) {
        c.print(L"\nAll segments already undone.");
        continue;
      }
      EraseEntity(segments.back().id);
      Copy(segments.back().from, current);
      segments.pop_back();
      if (!segments.empty()) RememberLineEnd(segments.back().from, current);
      continue;
    }
    if (a.status == RTKWORD && a.text == L"Close") {
      draw(start);
      break;
    }
    draw(a.point);
  }
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Line, {L"LINE", RunLine});

}  // namespace kelhost::editor
