// The parse-only peer: dxflib reading a DXF file into a creation interface
// that keeps nothing, so that its time is the cost of parsing alone.
//
//   dxflib_parse FILE [REPEAT]
//
// Prints "seconds S", the processor time of the best of REPEAT passes, and
// "wall S", its elapsed time.
#include <dl_creationadapter.h>
#include <dl_dxf.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

// Every callback of the adapter already ignores what it is given.
class Discard : public DL_CreationAdapter {};

double CpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double WallSeconds() {
  using Clock = std::chrono::steady_clock;
  return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fprintf(stderr, "usage: dxflib_parse FILE [REPEAT]\n");
    return 2;
  }
  const long repeat = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 1;
  if (repeat < 1) {
    std::fprintf(stderr, "dxflib_parse: REPEAT must be a positive number\n");
    return 2;
  }
  double bestCpu = 0, bestWall = 0;
  for (long i = 0; i < repeat; ++i) {
    Discard discard;
    DL_Dxf dxf;
    const double cpu = CpuSeconds(), wall = WallSeconds();
    const bool ok = dxf.in(argv[1], &discard);
    const double cpuSeconds = CpuSeconds() - cpu, wallSeconds = WallSeconds() - wall;
    if (!ok) {
      std::fprintf(stderr, "dxflib_parse: cannot read %s\n", argv[1]);
      return 1;
    }
    if (i == 0 || cpuSeconds < bestCpu) bestCpu = cpuSeconds, bestWall = wallSeconds;
  }
  std::printf("seconds %.6f\nwall %.6f\n", bestCpu, bestWall);
  return 0;
}
