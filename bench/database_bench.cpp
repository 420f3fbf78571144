// The database's hot paths as AutoLISP and modules drive them: making
// entities from lists, reading their lists, finding them by handle,
// walking them with entnext; the memory a LINE takes; and whether walking
// and handle lookup stay linear in the size of the drawing.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "mixed_drawing.h"

namespace {

using kelbench::BenchDrawing;

// Drawings are expensive to make: one per size, shared by the cases.
BenchDrawing& DrawingOf(std::size_t count) {
  static std::map<std::size_t, std::unique_ptr<BenchDrawing>> drawings;
  auto& slot = drawings[count];
  if (!slot) slot = std::make_unique<BenchDrawing>(count);
  acdbHostApplicationServices()->setWorkingDatabase(slot->db());
  return *slot;
}

// The names of the drawing's main entities in entnext order.
std::vector<AcDbObjectId> EntityIds(AcDbDatabase* db) {
  std::vector<AcDbObjectId> ids;
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return ids;
  ids = space->entityIds();
  space->close();
  return ids;
}

std::vector<std::wstring> HandleTexts(const std::vector<AcDbObjectId>& ids) {
  std::vector<std::wstring> texts;
  texts.reserve(ids.size());
  for (AcDbObjectId id : ids) {
    ACHAR buf[20];
    id.handle().getIntoAsciiBuffer(buf, 20);
    texts.emplace_back(buf);
  }
  return texts;
}

// acdbEntMake of LINE lists into a fresh drawing, a batch per iteration.
void BM_EntMakeLine(benchmark::State& state) {
  const auto batch = static_cast<std::size_t>(state.range(0));
  std::vector<resbuf*> lists;
  for (std::size_t i = 0; i < batch; ++i) lists.push_back(kelbench::LineList(i));
  for (auto _ : state) {
    state.PauseTiming();
    auto db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    state.ResumeTiming();
    for (resbuf* list : lists)
      if (acdbEntMake(list) != RTNORM) state.SkipWithError("acdbEntMake refused a LINE");
    state.PauseTiming();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
    state.ResumeTiming();
  }
  for (resbuf* list : lists) acutRelRb(list);
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * batch));
}
BENCHMARK(BM_EntMakeLine)->Arg(10000)->Unit(benchmark::kMillisecond);

// acdbEntGet of every entity of a mixed drawing in turn.
void BM_EntGet(benchmark::State& state) {
  BenchDrawing& drawing = DrawingOf(static_cast<std::size_t>(state.range(0)));
  const std::vector<AcDbObjectId> ids = EntityIds(drawing.db());
  std::size_t next = 0;
  for (auto _ : state) {
    ads_name name;
    acdbGetAdsName(name, ids[next]);
    resbuf* list = acdbEntGet(name);
    if (!list) state.SkipWithError("acdbEntGet gave nothing");
    benchmark::DoNotOptimize(list);
    acutRelRb(list);
    if (++next == ids.size()) next = 0;
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(BM_EntGet)->Arg(100000);

// acdbHandEnt of every handle of the drawing: linear in its size.
void BM_HandEntAll(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  BenchDrawing& drawing = DrawingOf(count);
  const std::vector<std::wstring> handles = HandleTexts(EntityIds(drawing.db()));
  for (auto _ : state) {
    for (const std::wstring& h : handles) {
      ads_name name;
      if (acdbHandEnt(h.c_str(), name) != RTNORM) state.SkipWithError("acdbHandEnt missed a handle");
      benchmark::DoNotOptimize(name[0]);
    }
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * handles.size()));
  state.SetComplexityN(static_cast<std::int64_t>(count));
}
BENCHMARK(BM_HandEntAll)->RangeMultiplier(4)->Range(1 << 12, 1 << 18)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

// acdbEntNext from the first entity to past the last: linear in its size.
void BM_EntNextWalk(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  DrawingOf(count);
  for (auto _ : state) {
    ads_name name = {0, 0}, next;
    std::size_t seen = 0;
    while (acdbEntNext(seen ? name : nullptr, next) == RTNORM) {
      name[0] = next[0];
      name[1] = next[1];
      ++seen;
    }
    if (seen != count) state.SkipWithError("the walk missed entities");
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * count));
  state.SetComplexityN(static_cast<std::int64_t>(count));
}
BENCHMARK(BM_EntNextWalk)->RangeMultiplier(4)->Range(1 << 12, 1 << 18)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

// The heap a LINE takes in the database: glibc's count of bytes in use
// (chunk overheads included, and memory-mapped blocks for large arrays)
// before and after adding the lines, per line.
std::size_t HeapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

void BM_MemoryPerLine(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  double perLine = 0;
  for (auto _ : state) {
    auto db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    const std::size_t before = HeapInUse();
    kelbench::AddLines(db.get(), count);
    const std::size_t after = HeapInUse();
    perLine = static_cast<double>(after - before) / static_cast<double>(count);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  }
  state.counters["bytes_per_line"] = perLine;
  state.counters["target_bytes"] = 300;
}
BENCHMARK(BM_MemoryPerLine)->Arg(100000)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
