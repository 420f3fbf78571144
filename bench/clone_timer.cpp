// Cloning a template's blocks into a drawing, as a family's ImportBlockAll
// does (for each block a new record, then wblockCloneObjects of its
// entities with kDrcIgnore), against making the same entities with
// acdbEntMake (the block's BLOCK list, its entities' lists, ENDBLK), and
// the same cloning at a tenth of the size, for linearity.
//
//   kelcad_clone_timer [BLOCKS] [REPEAT]     (1000 blocks of 100 entities, best of 3)
//
// The entities are LINEs on three layers (one with a linetype of its own)
// and CIRCLEs, the records they name coming along with the first block.
// Prints processor times, the time per entity, and the ratios with their
// targets: a cloned entity costs at most 3 times an entmake of it; the
// time per cloned entity at BLOCKS within 2 times that at BLOCKS / 10.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "arx/arxheaders.h"
#include "mixed_drawing.h"

namespace {

constexpr int kPerBlock = 100;

// The list of the i-th entity of a block.
resbuf* EntityList(int i) {
  const ads_point a = {i * 1.25, (i % 7) * 0.5, 0.0}, b = {i * 1.25 + 3.0, (i % 5) * 0.75, 0.0};
  const wchar_t* layer = i % 3 == 0 ? L"WALL" : i % 3 == 1 ? L"AXIS" : L"0";
  if (i % 4 == 3) return acutBuildList(RTDXF0, L"CIRCLE", 8, layer, 10, a, 40, 1.5 + i % 3, 0);
  return acutBuildList(RTDXF0, L"LINE", 8, layer, 10, a, 11, b, 0);
}

// The layers and linetype the entities use, in a drawing.
void AddRecords(AcDbDatabase* db) {
  AcDbLinetypeTable* linetypes = nullptr;
  db->getLinetypeTable(linetypes, AcDb::kForWrite);
  auto* dashed = new AcDbLinetypeTableRecord;
  dashed->setName(L"DASHED");
  dashed->setNumDashes(2);
  dashed->setDashLengthAt(0, 5.0);
  dashed->setDashLengthAt(1, -2.5);
  dashed->setPatternLength(7.5);
  AcDbObjectId dashedId;
  linetypes->add(dashedId, dashed);
  dashed->close();
  linetypes->close();
  AcDbLayerTable* layers = nullptr;
  db->getLayerTable(layers, AcDb::kForWrite);
  for (const wchar_t* name : {L"WALL", L"AXIS"}) {
    auto* layer = new AcDbLayerTableRecord;
    layer->setName(name);
    if (name[0] == L'A') layer->setLinetypeObjectId(dashedId);
    layers->add(layer);
    layer->close();
  }
  layers->close();
}

// blocks blocks of kPerBlock entities made by acdbEntMake in the working
// drawing; false when one was refused.
bool EntmakeBlocks(int blocks) {
  for (int b = 0; b < blocks; ++b) {
    const std::wstring name = L"B" + std::to_wstring(b);
    const ads_point base = {0, 0, 0};
    resbuf* head = acutBuildList(RTDXF0, L"BLOCK", 2, name.c_str(), 70, 0, 10, base, 0);
    bool ok = acdbEntMake(head) == RTNORM;
    acutRelRb(head);
    for (int i = 0; ok && i < kPerBlock; ++i) {
      resbuf* list = EntityList(i);
      ok = acdbEntMake(list) == RTNORM;
      acutRelRb(list);
    }
    resbuf* end = acutBuildList(RTDXF0, L"ENDBLK", 0);
    ok = ok && acdbEntMake(end) == RTNORM;
    acutRelRb(end);
    if (!ok) return false;
  }
  return true;
}

// The blocks of source, each brought into target as a new record filled
// by wblockCloneObjects; false when one failed.
bool CloneBlocks(AcDbDatabase* source, AcDbDatabase* target) {
  AcDbBlockTable* table = nullptr;
  source->getBlockTable(table, AcDb::kForRead);
  AcDbSymbolTableIterator* it = nullptr;
  table->newIterator(it);
  std::vector<AcDbObjectId> blocks;
  for (; !it->done(); it->step()) {
    AcDbObjectId id;
    it->getRecordId(id);
    blocks.push_back(id);
  }
  delete it;
  table->close();
  for (const AcDbObjectId& id : blocks) {
    AcDbBlockTableRecord* from = nullptr;
    acdbOpenObject(from, id, AcDb::kForRead);
    if (from->isLayout()) {
      from->close();
      continue;
    }
    AcDbObjectIdArray entities;
    for (const AcDbObjectId& e : from->entityIds()) entities.append(e);
    auto* record = new AcDbBlockTableRecord;
    record->setName(from->getName());
    from->close();
    AcDbBlockTable* into = nullptr;
    target->getBlockTable(into, AcDb::kForWrite);
    AcDbObjectId made;
    const Acad::ErrorStatus es = into->add(made, record);
    into->close();
    if (es != Acad::eOk) {
      delete record;
      return false;
    }
    record->close();
    AcDbIdMapping map;
    if (target->wblockCloneObjects(entities, made, map, AcDb::kDrcIgnore) != Acad::eOk) return false;
  }
  return true;
}

double Best(double best, double run) { return best < 0 || run < best ? run : best; }

// The best processor time of repeat runs of entmake, and of cloning, of
// blocks blocks; negative when a run failed.
void Measure(int blocks, int repeat, double& entmake, double& clone) {
  entmake = clone = -1.0;
  for (int r = 0; r < repeat; ++r) {
    {
      auto db = std::make_unique<AcDbDatabase>();
      AddRecords(db.get());
      acdbHostApplicationServices()->setWorkingDatabase(db.get());
      const double start = kelbench::CpuSeconds();
      const bool ok = EntmakeBlocks(blocks);
      const double took = kelbench::CpuSeconds() - start;
      acdbHostApplicationServices()->setWorkingDatabase(nullptr);
      if (!ok) return void(entmake = -1.0);
      entmake = Best(entmake, took);
    }
    {
      auto source = std::make_unique<AcDbDatabase>();
      AddRecords(source.get());
      acdbHostApplicationServices()->setWorkingDatabase(source.get());
      const bool made = EntmakeBlocks(blocks);
      acdbHostApplicationServices()->setWorkingDatabase(nullptr);
      auto target = std::make_unique<AcDbDatabase>();
      const double start = kelbench::CpuSeconds();
      const bool ok = made && CloneBlocks(source.get(), target.get());
      const double took = kelbench::CpuSeconds() - start;
      if (!ok) return void(clone = -1.0);
      clone = Best(clone, took);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int blocks = argc > 1 ? std::atoi(argv[1]) : 1000;
  const int repeat = argc > 2 ? std::atoi(argv[2]) : 3;
  if (blocks < 10 || repeat < 1) {
    std::fprintf(stderr, "usage: kelcad_clone_timer [BLOCKS >= 10] [REPEAT]\n");
    return 2;
  }
  double entmake = 0, clone = 0, smallEntmake = 0, smallClone = 0;
  Measure(blocks / 10, repeat, smallEntmake, smallClone);
  Measure(blocks, repeat, entmake, clone);
  if (entmake < 0 || clone < 0 || smallEntmake < 0 || smallClone < 0) {
    std::fprintf(stderr, "kelcad_clone_timer: a run failed\n");
    return 1;
  }
  const double n = static_cast<double>(blocks) * kPerBlock, small = n / 10;
  std::printf("%d blocks x %d entities, best of %d\n", blocks, kPerBlock, repeat);
  std::printf("entmake   %8.3f s  %7.2f us/entity\n", entmake, entmake / n * 1e6);
  std::printf("clone     %8.3f s  %7.2f us/entity\n", clone, clone / n * 1e6);
  std::printf("clone at %d blocks %8.3f s  %7.2f us/entity\n", blocks / 10, smallClone, smallClone / small * 1e6);
  const double ratio = clone / entmake;
  const double linear = (clone / n) / (smallClone / small);
  std::printf("cloned entity / entmake %.2f (target <= 3): %s\n", ratio, ratio <= 3.0 ? "met" : "NOT met");
  std::printf("per entity at %d / at %d blocks %.2f (target <= 2): %s\n", blocks, blocks / 10, linear,
              linear <= 2.0 ? "met" : "NOT met");
  return 0;
}
