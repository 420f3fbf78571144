#include "mixed_drawing.h"

#include <unistd.h>

#include <chrono>
#include <ctime>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace kelbench {
namespace {

const wchar_t* const kLayers[] = {L"0", L"A-WALL", L"A-ANNO"};

// A position on a 1000-wide grid with a fraction that varies in length:
// every seventh value is short ("12.5"), the others need 15-17 digits.
AcGePoint3d GridPoint(std::size_t i, double shift) {
  const double x = static_cast<double>(i % 1000) * 2.5 + shift;
  const double y = static_cast<double>(i / 1000) * 2.5 + shift * 0.5;
  if (i % 7 == 0) return AcGePoint3d(x, y, 0.0);
  return AcGePoint3d(x + 1.0 / 3.0, y + static_cast<double>(i % 13) * 0.0731, 0.0);
}

void EnsureLayers(AcDbDatabase* db) {
  AcDbLayerTable* table = nullptr;
  if (db->getLayerTable(table, AcDb::kForWrite) != Acad::eOk) throw std::runtime_error("no layer table");
  for (const wchar_t* name : kLayers) {
    if (table->has(name)) continue;
    auto* layer = new AcDbLayerTableRecord;
    layer->setName(name);
    if (table->add(layer) != Acad::eOk) {
      delete layer;
      table->close();
      throw std::runtime_error("cannot add a layer");
    }
    layer->close();
  }
  table->close();
}

AcDbEntity* MixedEntity(std::size_t i) {
  const AcGePoint3d p = GridPoint(i, 0.0);
  switch (i % 10) {
    case 0:
    case 1:
    case 2:
    case 3:
      return new AcDbLine(p, GridPoint(i, 1.75));
    case 4:
    case 5:
      return new AcDbCircle(p, AcGeVector3d::kZAxis, 0.5 + static_cast<double>(i % 9) * 0.1);
    case 6:
      return new AcDbArc(p, 1.2, 0.25 * static_cast<double>(i % 4), 3.0);
    case 7: {
      auto* text = new AcDbText(p, (L"Room " + std::to_wstring(i)).c_str());
      text->setHeight(2.5);
      return text;
    }
    case 8: {
      auto* pline = new AcDbPolyline(4);
      for (unsigned v = 0; v < 4; ++v)
        pline->addVertexAt(v, AcGePoint2d(p.x + (v == 1 || v == 2 ? 2.0 : 0.0), p.y + (v >= 2 ? 1.5 : 0.0)));
      pline->setClosed(true);
      return pline;
    }
    default:
      return new AcDbPoint(p);
  }
}

void Append(AcDbDatabase* db, std::size_t count, bool mixed) {
  AcDbBlockTable* blocks = nullptr;
  AcDbBlockTableRecord* space = nullptr;
  if (db->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk) throw std::runtime_error("no block table");
  const Acad::ErrorStatus es = blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
  blocks->close();
  if (es != Acad::eOk) throw std::runtime_error("no model space");
  for (std::size_t i = 0; i < count; ++i) {
    AcDbEntity* entity = mixed ? MixedEntity(i) : new AcDbLine(GridPoint(i, 0.0), GridPoint(i, 1.75));
    entity->setDatabaseDefaults(db);
    if (mixed) entity->setLayer(kLayers[i % 3]);
    if (space->appendAcDbEntity(entity) != Acad::eOk) {
      delete entity;
      space->close();
      throw std::runtime_error("cannot append an entity");
    }
    entity->close();
  }
  space->close();
}

}  // namespace

void AddMixedEntities(AcDbDatabase* db, std::size_t count) {
  EnsureLayers(db);
  Append(db, count, true);
}

void AddLines(AcDbDatabase* db, std::size_t count) { Append(db, count, false); }

resbuf* LineList(std::size_t index) {
  const AcGePoint3d a = GridPoint(index, 0.0), b = GridPoint(index, 1.75);
  const ads_point start = {a.x, a.y, a.z}, end = {b.x, b.y, b.z};
  return acutBuildList(RTDXF0, L"LINE", 8, L"0", 10, start, 11, end, 0);
}

std::size_t EntityCount(AcDbDatabase* db) {
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return 0;
  const std::size_t n = space->entityIds().size();
  space->close();
  return n;
}

BenchDrawing::BenchDrawing(std::size_t count) : mDb(std::make_unique<AcDbDatabase>()) {
  acdbHostApplicationServices()->setWorkingDatabase(mDb.get());
  AddMixedEntities(mDb.get(), count);
}

BenchDrawing::~BenchDrawing() {
  if (acdbHostApplicationServices()->workingDatabase() == mDb.get())
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

ScratchDir::ScratchDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "kelcad_bench_XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary directory");
  mPath = pattern;
}

ScratchDir::~ScratchDir() {
  std::error_code ignored;
  std::filesystem::remove_all(mPath, ignored);
}

double Now() {
  using Clock = std::chrono::steady_clock;
  return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

double CpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

}  // namespace kelbench
