// Drawing files: saving a drawing of mixed entities as DXF and reading the
// file back into a database, at 100 000 and 1 000 000 entities, and
// whether saving stays linear in the size of the drawing.
#include <benchmark/benchmark.h>
#include <sys/stat.h>

#include <map>
#include <memory>
#include <string>

#include "kelhost/drawing_files.h"
#include "kelhost/text.h"
#include "mixed_drawing.h"

namespace {

using kelbench::BenchDrawing;

kelbench::ScratchDir& Scratch() {
  static kelbench::ScratchDir dir;
  return dir;
}

double FileBytes(const std::string& path) {
  struct stat st {};
  return stat(path.c_str(), &st) == 0 ? static_cast<double>(st.st_size) : 0.0;
}

void BM_DxfWrite(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  auto drawing = std::make_unique<BenchDrawing>(count);
  const std::string path = Scratch().file("write.dxf");
  const std::wstring wpath = kelhost::FromUtf8(path);
  for (auto _ : state) {
    std::wstring error;
    if (!kelhost::WriteDrawingFile(drawing->db(), wpath, error)) state.SkipWithError(kelhost::ToUtf8(error).c_str());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * count));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * FileBytes(path)));
  state.SetComplexityN(static_cast<std::int64_t>(count));
}
BENCHMARK(BM_DxfWrite)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
// Saving at growing sizes: linear.
BENCHMARK(BM_DxfWrite)
    ->Name("BM_DxfWriteComplexity")
    ->RangeMultiplier(4)
    ->Range(1 << 12, 1 << 18)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// A file of count mixed entities, written once per size.
const std::string& FileOf(std::size_t count) {
  static std::map<std::size_t, std::string> files;
  std::string& path = files[count];
  if (path.empty()) {
    path = Scratch().file(("read" + std::to_string(count) + ".dxf").c_str());
    BenchDrawing drawing(count);
    std::wstring error;
    if (!kelhost::WriteDrawingFile(drawing.db(), kelhost::FromUtf8(path), error)) path.clear();
  }
  return path;
}

void BM_DxfRead(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const std::string path = FileOf(count);
  if (path.empty()) {
    state.SkipWithError("cannot write the drawing to read");
    return;
  }
  const std::wstring wpath = kelhost::FromUtf8(path);
  for (auto _ : state) {
    auto db = std::make_unique<AcDbDatabase>(false);
    std::wstring error;
    if (!kelhost::ReadDrawingFile(db.get(), wpath, error)) state.SkipWithError(kelhost::ToUtf8(error).c_str());
    state.PauseTiming();  // not the drawing's destruction
    db.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * count));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * FileBytes(path)));
}
BENCHMARK(BM_DxfRead)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
