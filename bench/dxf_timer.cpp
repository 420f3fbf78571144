// The host's side of the peer comparison (peer_ratios.py): makes the mixed
// drawing as a DXF file, and times reading a file into a database and
// saving a database as a file, the way a user's open and save do.
//
//   kelcad_dxf_timer make COUNT FILE
//   kelcad_dxf_timer read FILE [REPEAT]
//   kelcad_dxf_timer write FILE OUT [REPEAT]
//
// read and write print "seconds S", the processor time of the best of
// REPEAT runs (steady on a shared machine), "wall S", its elapsed time,
// and "entities N" on standard output.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "kelhost/drawing_files.h"
#include "kelhost/text.h"
#include "mixed_drawing.h"

namespace {

int Usage() {
  std::fprintf(stderr,
               "usage: kelcad_dxf_timer make COUNT FILE\n"
               "       kelcad_dxf_timer read FILE [REPEAT]\n"
               "       kelcad_dxf_timer write FILE OUT [REPEAT]\n");
  return 2;
}

bool ParseCount(const char* text, long min, long& out) {
  char* end = nullptr;
  out = std::strtol(text, &end, 10);
  return end && *end == '\0' && out >= min;
}


struct Timing {
  double cpu = 0, wall = 0;
  bool set = false;
  void keepBest(double cpuSeconds, double wallSeconds) {
    if (set && cpuSeconds >= cpu) return;
    cpu = cpuSeconds, wall = wallSeconds, set = true;
  }
};

// Times one action on both clocks.
template <class Action>
bool Timed(Timing& best, Action action) {
  const double cpu = kelbench::CpuSeconds(), wall = kelbench::Now();
  const bool ok = action();
  best.keepBest(kelbench::CpuSeconds() - cpu, kelbench::Now() - wall);
  return ok;
}

void Report(const Timing& best, AcDbDatabase* db) {
  std::printf("seconds %.6f\nwall %.6f\nentities %zu\n", best.cpu, best.wall, kelbench::EntityCount(db));
}

bool Read(const std::string& path, std::unique_ptr<AcDbDatabase>& db, Timing& timing) {
  db = std::make_unique<AcDbDatabase>(false);
  std::wstring error;
  const bool ok =
      Timed(timing, [&] { return kelhost::ReadDrawingFile(db.get(), kelhost::FromUtf8(path), error); });
  if (!ok) std::fprintf(stderr, "kelcad_dxf_timer: %s\n", kelhost::ToUtf8(error).c_str());
  return ok;
}

int Make(const char* countText, const char* path) {
  long count = 0;
  if (!ParseCount(countText, 0, count)) return Usage();
  kelbench::BenchDrawing drawing(static_cast<std::size_t>(count));
  std::wstring error;
  if (!kelhost::WriteDrawingFile(drawing.db(), kelhost::FromUtf8(path), error)) {
    std::fprintf(stderr, "kelcad_dxf_timer: %s\n", kelhost::ToUtf8(error).c_str());
    return 1;
  }
  return 0;
}

int TimeRead(const char* path, long repeat) {
  Timing best;
  std::unique_ptr<AcDbDatabase> db;
  for (long i = 0; i < repeat; ++i) {
    db.reset();  // the previous drawing goes before the next read, untimed
    if (!Read(path, db, best)) return 1;
  }
  Report(best, db.get());
  return 0;
}

int TimeWrite(const char* path, const char* out, long repeat) {
  std::unique_ptr<AcDbDatabase> db;
  Timing reading, best;
  if (!Read(path, db, reading)) return 1;
  for (long i = 0; i < repeat; ++i) {
    std::wstring error;
    if (!Timed(best, [&] { return kelhost::WriteDrawingFile(db.get(), kelhost::FromUtf8(out), error); })) {
      std::fprintf(stderr, "kelcad_dxf_timer: %s\n", kelhost::ToUtf8(error).c_str());
      return 1;
    }
  }
  Report(best, db.get());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return Usage();
  const std::string command = argv[1];
  long repeat = 1;
  if (command == "make" && argc == 4) return Make(argv[2], argv[3]);
  if (command == "read" && (argc == 3 || argc == 4)) {
    if (argc == 4 && !ParseCount(argv[3], 1, repeat)) return Usage();
    return TimeRead(argv[2], repeat);
  }
  if (command == "write" && (argc == 4 || argc == 5)) {
    if (argc == 5 && !ParseCount(argv[4], 1, repeat)) return Usage();
    return TimeWrite(argv[2], argv[3], repeat);
  }
  return Usage();
}
