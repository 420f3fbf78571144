// LINE: segments from point to point, with Undo and Close; Enter at the
// first point continues from the end of the last line drawn.
#include <vector>

#include "editor/builtin_commands.h"
#include "editor/commands/drawing_support.h"

namespace kelhost::editor {
namespace {

struct Segment {
  AcDbObjectId id;
  double from[3];
};

// Where the last LINE ended (UCS), for Enter at "Specify first point:".
bool gHaveLastEnd = false;
double gLastEnd[3];

void Copy(const double from[3], double to[3]) {
  for (int i = 0; i < 3; ++i) to[i] = from[i];
}

void RunLine(CommandContext& c) {
  double start[3], current[3];
  for (;;) {
    Answer a = c.askPoint(L"\nSpecify first point: ");
    if (a.status == RTNORM) {
      Copy(a.point, start);
      break;
    }
    if (gHaveLastEnd) {
      Copy(gLastEnd, start);
      break;
    }
    c.print(L"\nNo line or arc to continue.");
  }
  Copy(start, current);
  std::vector<Segment> segments;
  for (;;) {
    const wchar_t* prompt = segments.size() >= 2 ? L"\nSpecify next point or [Close/Undo]: "
                                                 : L"\nSpecify next point or [Undo]: ";
    const wchar_t* keywords = segments.size() >= 2 ? L"Close Undo" : L"Undo";
    Answer a = c.askPoint(prompt, keywords, 0, current);
    if (a.status == RTNONE) break;
    if (a.status == RTKWORD && a.text == L"Undo") {
      if (segments.empty()) {
        c.print(L"\nAll segments already undone.");
        continue;
      }
      EraseEntity(segments.back().id);
      Copy(segments.back().from, current);
      segments.pop_back();
      continue;
    }
    double to[3];
    if (a.status == RTKWORD && a.text == L"Close") Copy(start, to);
    else Copy(a.point, to);
    Segment s;
    Copy(current, s.from);
    s.id = AppendToCurrentSpace(std::make_unique<AcDbLine>(ToWorld(current), ToWorld(to)));
    segments.push_back(s);
    Copy(to, current);
    if (a.status == RTKWORD) break;  // Close ends the command
  }
  if (!segments.empty()) {
    gHaveLastEnd = true;
    Copy(current, gLastEnd);
  }
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Line, {L"LINE", RunLine});

}  // namespace kelhost::editor
