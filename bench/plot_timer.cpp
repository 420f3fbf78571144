// The host's side of the plotting comparison (plot_ratios.py): reads a
// drawing and times plotting its model space extents, fitted to an A3
// sheet, to a PDF or a PNG.
//
//   kelcad_plot_timer FILE.dxf OUT.pdf|OUT.png [DPI] [REPEAT]
//
// Prints "seconds S", the processor time of the best of REPEAT plots,
// "wall S", its elapsed time, "entities N", "peak_kb K", the largest
// resident size while plotting, and "read_kb K", the resident size once the
// drawing was read (before plotting).
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "arx/dbapserv.h"
#include "kelhost/drawing_files.h"
#include "kelhost/plot.h"
#include "kelhost/text.h"
#include "mixed_drawing.h"

namespace {

// A size /proc/self/status gives in kB, or 0.
long StatusKb(const char* field) {
  FILE* f = std::fopen("/proc/self/status", "r");
  if (!f) return 0;
  char line[256];
  long kb = 0;
  const size_t n = std::strlen(field);
  while (std::fgets(line, sizeof line, f))
    if (std::strncmp(line, field, n) == 0) kb = std::atol(line + n);
  std::fclose(f);
  return kb;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: kelcad_plot_timer FILE.dxf OUT.pdf|OUT.png [DPI] [REPEAT]\n");
    return 2;
  }
  const double dpi = argc > 3 ? std::atof(argv[3]) : 150.0;
  const int repeat = argc > 4 ? std::max(1, std::atoi(argv[4])) : 1;
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  std::wstring error;
  if (!kelhost::ReadDrawingFile(db, kelhost::FromUtf8(argv[1]), error)) {
    std::fprintf(stderr, "%s\n", kelhost::ToUtf8(error).c_str());
    return 1;
  }
  // The plot's own peak: the high-water mark starts again from what the
  // drawing holds once read.
  const long readKb = StatusKb("VmRSS:");
  if (FILE* f = std::fopen("/proc/self/clear_refs", "w")) {
    std::fputs("5", f);
    std::fclose(f);
  }
  kelhost::plot::Settings settings;
  settings.paperWidth = 420;
  settings.paperHeight = 297;
  settings.dpi = dpi;
  double bestCpu = 1e300, bestWall = 0;
  for (int i = 0; i < repeat; ++i) {
    const double cpu = kelbench::CpuSeconds(), wall = kelbench::Now();
    if (!kelhost::plot::PlotDrawing(db, settings, kelhost::FromUtf8(argv[2]), error)) {
      std::fprintf(stderr, "%s\n", kelhost::ToUtf8(error).c_str());
      return 1;
    }
    const double usedCpu = kelbench::CpuSeconds() - cpu;
    if (usedCpu < bestCpu) bestCpu = usedCpu, bestWall = kelbench::Now() - wall;
  }
  std::printf("seconds %.6f\nwall %.6f\nentities %zu\npeak_kb %ld\nread_kb %ld\n", bestCpu, bestWall,
              kelbench::EntityCount(db), StatusKb("VmHWM:"), readKb);
  return 0;
}
