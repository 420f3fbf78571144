// The drawing every benchmark works on: a fixed mix of simple entities in
// model space, the same on every run, so that the host's numbers and the
// peers' numbers describe the same work.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "arx/arxheaders.h"

namespace kelbench {

// Of every ten entities: four LINEs, two CIRCLEs, an ARC, a TEXT, a
// four-vertex LWPOLYLINE and a POINT, on three layers, with coordinates
// that need from two to seventeen significant digits.
void AddMixedEntities(AcDbDatabase* db, std::size_t count);

// count LINEs on layer 0.
void AddLines(AcDbDatabase* db, std::size_t count);

// The entity list of the index-th LINE of the mix (the caller releases it).
resbuf* LineList(std::size_t index);

// How many entities model space holds.
std::size_t EntityCount(AcDbDatabase* db);

// A new drawing holding count entities of the mix; it is the working
// database while it lives.
class BenchDrawing {
 public:
  explicit BenchDrawing(std::size_t count);
  ~BenchDrawing();
  BenchDrawing(const BenchDrawing&) = delete;
  BenchDrawing& operator=(const BenchDrawing&) = delete;
  AcDbDatabase* db() const { return mDb.get(); }

 private:
  std::unique_ptr<AcDbDatabase> mDb;
};

// A directory of its own under the system's temporary directory, removed
// with what it holds when the object goes.
class ScratchDir {
 public:
  ScratchDir();
  ~ScratchDir();
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  std::string file(const char* name) const { return mPath + "/" + name; }

 private:
  std::string mPath;
};

// Seconds on a monotonic clock, and the processor time this process has
// used: on a shared machine the second is the steadier measure.
double Now();
double CpuSeconds();

}  // namespace kelbench
