// The undo journal: the memory a step costs for the entities it changed,
// as a ratio to the memory of those entities, and whether UNDO Back stays
// linear in the number of changes it undoes.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "arx/aced_command.h"
#include "editor/undo.h"
#include "editor/undo_journal.h"
#include "kelhost/host.h"
#include "mixed_drawing.h"

namespace {

namespace undo = kelhost::editor::undo;

std::size_t HeapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

std::vector<AcDbObjectId> ModelSpaceIds(AcDbDatabase* db) {
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return {};
  std::vector<AcDbObjectId> ids = space->entityIds();
  space->close();
  return ids;
}

// A drawing of count LINEs, the working database, with a fresh journal;
// lineBytes: the heap the lines took.
struct LineDrawing {
  explicit LineDrawing(std::size_t count) : db(std::make_unique<AcDbDatabase>()) {
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    undo::Reset();
    const std::size_t before = HeapInUse();
    kelbench::AddLines(db.get(), count);
    lineBytes = HeapInUse() - before;
    ids = ModelSpaceIds(db.get());
  }
  ~LineDrawing() {
    undo::Reset();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  }
  std::unique_ptr<AcDbDatabase> db;
  std::vector<AcDbObjectId> ids;
  std::size_t lineBytes = 0;
};

void MoveStart(AcDbObjectId id, double dx) {
  AcDbLine* line = nullptr;
  if (acdbOpenObject(line, id, AcDb::kForWrite) != Acad::eOk) return;
  line->setStartPoint(line->startPoint() + AcGeVector3d(dx, 0, 0));
  line->close();
}

void Erase(AcDbObjectId id) {
  AcDbEntity* e = nullptr;
  if (acdbOpenObject(e, id, AcDb::kForWrite) != Acad::eOk) return;
  e->erase();
  e->close();
}

// One step (an expression at the prompt) that changes every line: the
// journal's heap after the step over the heap the lines take. Moved lines
// keep their whole earlier state, erased ones only their flags; lines
// made in the step cost a reference each.
void BM_UndoJournalMemory(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  double moved = 0, erased = 0, made = 0, perLine = 0;
  for (auto _ : state) {
    LineDrawing drawing(count);
    perLine = static_cast<double>(drawing.lineBytes) / static_cast<double>(count);
    const auto ratio = [&](auto change) {
      const std::size_t before = HeapInUse();
      undo::ExpressionStarted();
      change();
      undo::ExpressionEnded();
      return static_cast<double>(HeapInUse() - before) / static_cast<double>(drawing.lineBytes);
    };
    moved = ratio([&] {
      for (AcDbObjectId id : drawing.ids) MoveStart(id, 1.0);
    });
    erased = ratio([&] {
      for (AcDbObjectId id : drawing.ids) Erase(id);
    });
    // The lines made take heap of their own, not the journal's.
    const std::size_t before = HeapInUse();
    undo::ExpressionStarted();
    kelbench::AddLines(drawing.db.get(), count);
    undo::ExpressionEnded();
    made = (static_cast<double>(HeapInUse() - before) - static_cast<double>(drawing.lineBytes)) /
           static_cast<double>(drawing.lineBytes);
  }
  state.counters["bytes_per_line"] = perLine;
  state.counters["journal_ratio_moved"] = moved;
  state.counters["journal_ratio_erased"] = erased;
  state.counters["journal_ratio_made"] = made;
  state.counters["target_ratio"] = 2;
}
BENCHMARK(BM_UndoJournalMemory)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// count steps after a mark, each moving one line, as count commands would.
void RecordSteps(LineDrawing& drawing) {
  acedCommandS(RTSTR, L"_.UNDO", RTSTR, L"_M", RTNONE);
  for (AcDbObjectId id : drawing.ids) {
    undo::ExpressionStarted();
    MoveStart(id, 1.0);
    undo::ExpressionEnded();
  }
}

// UNDO Back over count steps: the time for one change.
double BackSecondsPerChange(std::size_t count) {
  LineDrawing drawing(count);
  RecordSteps(drawing);
  const double start = kelbench::CpuSeconds();
  acedCommandS(RTSTR, L"_.UNDO", RTSTR, L"_B", RTNONE);
  return (kelbench::CpuSeconds() - start) / static_cast<double>(count);
}

void Quiet() {
  kelhost::Host::instance().setCommandLineSink([](const std::wstring&) {});
  resbuf rb{};
  rb.restype = RTSHORT;
  rb.resval.rint = 0;
  acedSetVar(L"CMDECHO", &rb);
}

void BM_UndoBack(benchmark::State& state) {
  Quiet();
  const auto count = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    LineDrawing drawing(count);
    RecordSteps(drawing);
    state.ResumeTiming();
    acedCommandS(RTSTR, L"_.UNDO", RTSTR, L"_B", RTNONE);
    state.PauseTiming();
    if (undo::StepCount() != 0) state.SkipWithError("UNDO Back left steps");
    state.ResumeTiming();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * count));
  state.SetComplexityN(static_cast<std::int64_t>(count));
}
BENCHMARK(BM_UndoBack)->RangeMultiplier(4)->Range(1 << 10, 1 << 16)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

// The time per change of UNDO Back from 1 000 to 100 000 changes, the best
// of three runs at each size: linear when the largest over the smallest
// stays near 1.
void BM_UndoBackLinearity(benchmark::State& state) {
  Quiet();
  const std::size_t sizes[] = {1000, 10000, 100000};
  std::vector<double> perChange;
  for (auto _ : state) {
    perChange.clear();
    for (std::size_t n : sizes) {
      double best = BackSecondsPerChange(n);
      for (int i = 0; i < 2; ++i) best = std::min(best, BackSecondsPerChange(n));
      perChange.push_back(best);
    }
  }
  const auto [lo, hi] = std::minmax_element(perChange.begin(), perChange.end());
  state.counters["ns_per_change_1000"] = perChange[0] * 1e9;
  state.counters["ns_per_change_10000"] = perChange[1] * 1e9;
  state.counters["ns_per_change_100000"] = perChange[2] * 1e9;
  state.counters["largest_over_smallest"] = *hi / *lo;
  state.counters["target_ratio"] = 2;
}
BENCHMARK(BM_UndoBackLinearity)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
