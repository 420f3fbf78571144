// The editor's cost per command against making the same entity directly:
// COUNT LINEs drawn by LINE commands run from a command script (two points
// and Enter each), against the same COUNT LINEs made by AutoLISP's entmake
// run from a command script (one expression each, as a program's entmake
// at the prompt), and by acdbEntMake called from C++. Each run starts a new
// drawing; the best of REPEAT runs by processor time counts.
//
//   kelcad_editor_timer [COUNT] [REPEAT]
//
// Prints the times, the time per line, and the ratios with the target: a
// scripted LINE costs at most 5 times an entmake of the same line. The
// stricter ratio to acdbEntMake, which skips the AutoLISP reader and the
// undo journal both, is shown beside it. The command line's text goes
// nowhere: the editor is measured, not a terminal.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

#include "kelhost/editor.h"
#include "kelhost/host.h"
#include "kelhost/text.h"
#include "mixed_drawing.h"

namespace {


// Runs action on a new working drawing; the processor time it took, or a
// negative value when the drawing did not end with count entities.
template <class Action>
double TimedOnNewDrawing(std::size_t count, Action action) {
  auto db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  const double start = kelbench::CpuSeconds();
  action();
  const double seconds = kelbench::CpuSeconds() - start;
  const bool ok = kelbench::EntityCount(db.get()) == count;
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return ok ? seconds : -1.0;
}

// The coordinates of a point group, separated by sep.
std::string PointText(const resbuf* list, int code, const char* sep = ",") {
  for (const resbuf* rb = list; rb; rb = rb->rbnext)
    if (rb->restype == code) {
      char buf[128];
      std::snprintf(buf, sizeof buf, "%.17g%s%.17g%s%.17g", rb->resval.rpoint[0], sep, rb->resval.rpoint[1], sep,
                    rb->resval.rpoint[2]);
      return buf;
    }
  return "0,0";
}

double Best(double best, double run) { return best < 0 || run < best ? run : best; }

}  // namespace

int main(int argc, char** argv) {
  const long count = argc > 1 ? std::atol(argv[1]) : 100000;
  const long repeat = argc > 2 ? std::atol(argv[2]) : 3;
  if (count <= 0 || repeat <= 0) {
    std::fprintf(stderr, "usage: kelcad_editor_timer [COUNT] [REPEAT]\n");
    return 2;
  }
  kelhost::Host::instance().setCommandLineSink([](const std::wstring&) {});
  kelbench::ScratchDir scratch;
  const std::string lineScript = scratch.file("lines.scr"), entmakeScript = scratch.file("entmake.scr");
  std::vector<resbuf*> lists;
  {
    std::ofstream lines(lineScript, std::ios::binary), entmakes(entmakeScript, std::ios::binary);
    for (long i = 0; i < count; ++i) {
      lists.push_back(kelbench::LineList(static_cast<std::size_t>(i)));
      lines << "LINE\n" << PointText(lists.back(), 10) << "\n" << PointText(lists.back(), 11) << "\n\n";
      entmakes << "(entmake '((0 . \"LINE\") (8 . \"0\") (10 " << PointText(lists.back(), 10, " ") << ") (11 "
               << PointText(lists.back(), 11, " ") << ")))\n";
    }
  }
  const auto n = static_cast<std::size_t>(count);
  double direct = -1, entmake = -1, commands = -1;
  for (long r = 0; r < repeat; ++r) {
    const double d = TimedOnNewDrawing(n, [&] {
      for (resbuf* list : lists) acdbEntMake(list);
    });
    const double e = TimedOnNewDrawing(n, [&] { kelhost::editor::RunScript(kelhost::FromUtf8(entmakeScript)); });
    const double c = TimedOnNewDrawing(n, [&] { kelhost::editor::RunScript(kelhost::FromUtf8(lineScript)); });
    if (d < 0 || e < 0 || c < 0) {
      std::fprintf(stderr, "kelcad_editor_timer: a drawing did not get its %ld lines\n", count);
      return 1;
    }
    direct = Best(direct, d);
    entmake = Best(entmake, e);
    commands = Best(commands, c);
  }
  for (resbuf* list : lists) acutRelRb(list);
  const double ratio = commands / entmake;
  std::printf("scripted LINE commands, %ld      %.3f s (%.2f us each)\n", count, commands, commands / count * 1e6);
  std::printf("scripted entmake of the lines      %.3f s (%.2f us each)\n", entmake, entmake / count * 1e6);
  std::printf("acdbEntMake of the lines           %.3f s (%.2f us each)\n", direct, direct / count * 1e6);
  std::printf("LINE / entmake %.2f (target <= 5): %s\n", ratio, ratio <= 5.0 ? "met" : "NOT met");
  std::printf("LINE / acdbEntMake %.2f\n", commands / direct);
  return 0;
}
