// The module's template import of blocks (CImportDWT::ImportBlockAll) from
// a template file of BLOCKS blocks of 100 entities each, against making
// the same entities with acdbEntMake, and the same import at a tenth of
// the size, for linearity.
//
//   kelcad_import_timer [BLOCKS] [REPEAT]     (1000 blocks of 100 entities, best of 3)
//
// The entities are LINEs and CIRCLEs on three layers (one with a linetype
// of its own) and TEXTs in a style of the template, so the first block
// brings those records along. The template is read before the clock
// starts (its reading time is printed apart). Prints processor times, the
// time per entity and the ratios with their targets: an imported entity
// costs at most 3 times an entmake of it; the time per entity at BLOCKS
// within 2 times that at BLOCKS / 10.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "kelcad/kelcad.h"
#include "kelhost/text.h"
#include "mixed_drawing.h"

namespace {

constexpr int kPerBlock = 100;

resbuf* EntityList(int i) {
  const ads_point a = {i * 1.25, (i % 7) * 0.5, 0.0}, b = {i * 1.25 + 3.0, (i % 5) * 0.75, 0.0};
  const wchar_t* layer = i % 3 == 0 ? L"U-ANNO-TTLB" : i % 3 == 1 ? L"U-ANNO-AXIS" : L"0";
  if (i % 10 == 9) return acutBuildList(RTDXF0, L"TEXT", 8, layer, 10, a, 40, 2.5, 1, L"KEL", 7, L"KEL-HZ", 0);
  if (i % 4 == 3) return acutBuildList(RTDXF0, L"CIRCLE", 8, layer, 10, a, 40, 1.5 + i % 3, 0);
  return acutBuildList(RTDXF0, L"LINE", 8, layer, 10, a, 11, b, 0);
}

bool Make(resbuf* list) {
  const bool ok = acdbEntMake(list) == RTNORM;
  acutRelRb(list);
  return ok;
}

// The records the entities name, in the working drawing.
bool MakeRecords() {
  return Make(acutBuildList(RTDXF0, L"LTYPE", 2, L"DASHED", 70, 0, 3, L"Dashed", 72, 65, 73, 2, 40, 7.5, 49, 5.0,
                            49, -2.5, 0)) &&
         Make(acutBuildList(RTDXF0, L"LAYER", 2, L"U-ANNO-TTLB", 70, 0, 62, 7, 6, L"Continuous", 0)) &&
         Make(acutBuildList(RTDXF0, L"LAYER", 2, L"U-ANNO-AXIS", 70, 0, 62, 1, 6, L"DASHED", 0)) &&
         Make(acutBuildList(RTDXF0, L"STYLE", 2, L"KEL-HZ", 70, 0, 40, 0.0, 41, 0.7, 3, L"gbenor.shx", 0));
}

// blocks blocks made by acdbEntMake in the working drawing.
bool MakeBlocks(int blocks) {
  for (int b = 0; b < blocks; ++b) {
    const std::wstring name = L"B" + std::to_wstring(b);
    const ads_point base = {0, 0, 0};
    bool ok = Make(acutBuildList(RTDXF0, L"BLOCK", 2, name.c_str(), 70, 0, 10, base, 0));
    for (int i = 0; ok && i < kPerBlock; ++i) ok = Make(EntityList(i));
    if (!ok || !Make(acutBuildList(RTDXF0, L"ENDBLK", 0))) return false;
  }
  return true;
}

double Best(double best, double run) { return best < 0 || run < best ? run : best; }

struct Times {
  double entmake = -1, import = -1, read = -1;
};

// The best of repeat runs; negative times when a run failed.
Times Measure(int blocks, int repeat, const std::string& dir) {
  Times t;
  const std::wstring path = kelhost::FromUtf8(dir + "/blocks" + std::to_string(blocks) + ".dxf");
  {
    auto db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    const bool made = MakeRecords() && MakeBlocks(blocks);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    if (!made || db->saveAs(path.c_str()) != Acad::eOk) return t;
  }
  Times best;
  for (int r = 0; r < repeat; ++r) {
    auto db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    double start = kelbench::CpuSeconds();
    bool ok = MakeRecords() && MakeBlocks(blocks);
    const double entmake = kelbench::CpuSeconds() - start;
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    if (!ok) return t;

    auto target = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(target.get());
    start = kelbench::CpuSeconds();
    CImportDWT importer(path.c_str());
    std::unique_ptr<AcDbDatabase> source(importer.m_pSourceDB);
    const double read = kelbench::CpuSeconds() - start;
    AcDbObjectIdArray ids;
    start = kelbench::CpuSeconds();
    ok = importer.ImportBlockAll(ids, false) == Acad::eOk && ids.length() == blocks;
    const double import = kelbench::CpuSeconds() - start;
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    if (!ok) return t;
    best.entmake = Best(best.entmake, entmake);
    best.import = Best(best.import, import);
    best.read = Best(best.read, read);
  }
  return best;
}

}  // namespace

int main(int argc, char** argv) {
  const int blocks = argc > 1 ? std::atoi(argv[1]) : 1000;
  const int repeat = argc > 2 ? std::atoi(argv[2]) : 3;
  if (blocks < 10 || repeat < 1) {
    std::fprintf(stderr, "usage: kelcad_import_timer [BLOCKS >= 10] [REPEAT]\n");
    return 2;
  }
  char pattern[] = "/tmp/kelcad-import-timer-XXXXXX";
  if (mkdtemp(pattern) == nullptr) return 1;
  const std::string dir = pattern;
  const Times small = Measure(blocks / 10, repeat, dir);
  const Times full = Measure(blocks, repeat, dir);
  std::remove((dir + "/blocks" + std::to_string(blocks / 10) + ".dxf").c_str());
  std::remove((dir + "/blocks" + std::to_string(blocks) + ".dxf").c_str());
  rmdir(dir.c_str());
  if (small.import < 0 || full.import < 0) {
    std::fprintf(stderr, "kelcad_import_timer: a run failed\n");
    return 1;
  }
  const double n = static_cast<double>(blocks) * kPerBlock, nSmall = n / 10;
  std::printf("ImportBlockAll of %d blocks x %d entities, best of %d\n", blocks, kPerBlock, repeat);
  std::printf("entmake            %8.3f s  %7.2f us/entity\n", full.entmake, full.entmake / n * 1e6);
  std::printf("ImportBlockAll     %8.3f s  %7.2f us/entity\n", full.import, full.import / n * 1e6);
  std::printf("template read      %8.3f s  (not counted)\n", full.read);
  std::printf("ImportBlockAll at %d blocks %8.3f s  %7.2f us/entity\n", blocks / 10, small.import,
              small.import / nSmall * 1e6);
  const double ratio = full.import / full.entmake;
  const double linear = (full.import / n) / (small.import / nSmall);
  std::printf("imported entity / entmake %.2f (target <= 3): %s\n", ratio, ratio <= 3.0 ? "met" : "NOT met");
  std::printf("per entity at %d / at %d blocks %.2f (target <= 2): %s\n", blocks, blocks / 10, linear,
              linear <= 2.0 ? "met" : "NOT met");
  return 0;
}
