// The object data store's cost per value against the platform calls it
// stands on. Xdata: OxData::SetxData then GetxData of VALUES values spread
// over VALUES / 10 lines (ten 1070 groups per line, by occurrence index),
// against a direct round trip of the same chain: open for write,
// setXData of the chain the value makes, close, open for read, xData,
// close. Drawing records: OxData::SetDWGxRecord then GetDWGxRecord of
// VALUES / 10 keys on one two-level path, against a direct round trip of
// the same one-group chain through an xrecord of a dictionary already
// open to hand (setFromRbChain, rbChain), and through setXData/xData.
// Each is measured at a tenth of the size as well, to show the cost per
// value does not grow with the count. The best of REPEAT runs by
// processor time counts.
//
//   kelcad_oxdata_timer [VALUES] [REPEAT]
//
// Prints the time per value and the ratios with the target: each value
// costs at most twice the direct round trip.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "kelcad/kelcad.h"
#include "mixed_drawing.h"

namespace {

constexpr int kValuesPerLine = 10;
constexpr const wchar_t* kApp = L"KEL_BENCH";
constexpr const wchar_t* kPath = L"KEL_BENCH\\RECORDS";

double Best(double best, double run) { return best < 0 || run < best ? run : best; }

// count lines in model space of a new working drawing.
std::vector<AcDbObjectId> NewDrawingWithLines(std::unique_ptr<AcDbDatabase>& db, std::size_t count) {
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  std::vector<AcDbObjectId> ids;
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForWrite) != Acad::eOk) return ids;
  for (std::size_t i = 0; i < count; ++i) {
    auto* line = new AcDbLine(AcGePoint3d(i, 0, 0), AcGePoint3d(i, 1, 0));
    AcDbObjectId id;
    space->appendAcDbEntity(id, line);
    line->close();
    ids.push_back(id);
  }
  space->close();
  AcDbRegAppTable* table = nullptr;
  db->getRegAppTable(table, AcDb::kForWrite);
  auto* app = new AcDbRegAppTableRecord();
  app->setName(kApp);
  table->add(app);
  app->close();
  table->close();
  return ids;
}

// The chain an application holds once value v went in at index k: k + 1
// groups of 1070, the last holding v.
resbuf* ChainWith(int k, int v) {
  resbuf* head = acutBuildList(1001, kApp, RTNONE);
  resbuf* tail = head;
  for (int i = 0; i <= k; ++i) {
    tail->rbnext = acutBuildList(1070, i == k ? v : 0, RTNONE);
    tail = tail->rbnext;
  }
  return head;
}

struct Times {
  double store = -1, direct = -1;
};

// Value i goes to line i % lines at occurrence i / lines.
Times XData(std::size_t values) {
  const std::size_t lines = values / kValuesPerLine;
  std::unique_ptr<AcDbDatabase> db;
  std::vector<resbuf*> chains;
  for (std::size_t i = 0; i < values; ++i)
    chains.push_back(ChainWith(static_cast<int>(i / lines), static_cast<int>(i % 30000)));
  Times t;
  std::vector<AcDbObjectId> ids = NewDrawingWithLines(db, lines);
  long failures = 0;
  double start = kelbench::CpuSeconds();
  for (std::size_t i = 0; i < values; ++i) {
    OxData data(ids[i % lines]);
    const int index = static_cast<int>(i / lines);
    int back = -1;
    if (!data.SetxData(kApp, 1070, static_cast<int>(i % 30000), index) ||
        data.GetxData(kApp, 1070, back, index) != index || back != static_cast<int>(i % 30000))
      ++failures;
  }
  t.store = kelbench::CpuSeconds() - start;

  ids = NewDrawingWithLines(db, lines);
  start = kelbench::CpuSeconds();
  for (std::size_t i = 0; i < values; ++i) {
    AcDbObject* object = nullptr;
    const AcDbObjectId id = ids[i % lines];
    if (acdbOpenObject(object, id, AcDb::kForWrite) != Acad::eOk) ++failures;
    if (object->setXData(chains[i]) != Acad::eOk) ++failures;
    object->close();
    acdbOpenObject(object, id, AcDb::kForRead);
    acutRelRb(object->xData(kApp));
    object->close();
  }
  t.direct = kelbench::CpuSeconds() - start;
  for (resbuf* chain : chains) acutRelRb(chain);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  if (failures != 0) std::fprintf(stderr, "kelcad_oxdata_timer: %ld xdata values went wrong\n", failures);
  return failures == 0 ? t : Times{};
}

std::vector<std::wstring> Keys(std::size_t count) {
  std::vector<std::wstring> keys;
  for (std::size_t i = 0; i < count; ++i) keys.push_back(L"KEY" + std::to_wstring(i));
  return keys;
}

// keys records of one 70 group each under the path; and the same through
// an xrecord per key in a dictionary at hand, and through one line's xdata.
Times Records(std::size_t count, double& throughXData) {
  const std::vector<std::wstring> keys = Keys(count);
  std::unique_ptr<AcDbDatabase> db;
  NewDrawingWithLines(db, 0);
  Times t;
  long failures = 0;
  double start = kelbench::CpuSeconds();
  for (std::size_t i = 0; i < count; ++i) {
    int back = -1;
    if (!OxData::SetDWGxRecord(kPath, keys[i].c_str(), 70, static_cast<int>(i % 30000)) ||
        OxData::GetDWGxRecord(kPath, keys[i].c_str(), 70, back) != 0 || back != static_cast<int>(i % 30000))
      ++failures;
  }
  t.store = kelbench::CpuSeconds() - start;

  NewDrawingWithLines(db, 0);
  AcDbDictionary* named = nullptr;
  db->getNamedObjectsDictionary(named, AcDb::kForWrite);
  auto* dict = new AcDbDictionary();
  AcDbObjectId dictId;
  named->setAt(L"KEL_BENCH", dict, dictId);
  dict->close();
  named->close();
  start = kelbench::CpuSeconds();
  for (std::size_t i = 0; i < count; ++i) {
    resbuf* chain = acutBuildList(70, static_cast<int>(i % 30000), RTNONE);
    AcDbDictionary* at = nullptr;
    acdbOpenObject(at, dictId, AcDb::kForWrite);
    auto* record = new AcDbXrecord();
    record->setFromRbChain(*chain);
    AcDbObjectId recordId;
    if (at->setAt(keys[i].c_str(), record, recordId) != Acad::eOk) ++failures;
    record->close();
    at->close();
    acdbOpenObject(at, dictId, AcDb::kForRead);
    AcDbObject* found = nullptr;
    at->getAt(keys[i].c_str(), found, AcDb::kForRead);
    resbuf* back = nullptr;
    AcDbXrecord::cast(found)->rbChain(&back);
    found->close();
    at->close();
    acutRelRb(back);
    acutRelRb(chain);
  }
  t.direct = kelbench::CpuSeconds() - start;

  std::vector<AcDbObjectId> ids = NewDrawingWithLines(db, 1);
  start = kelbench::CpuSeconds();
  for (std::size_t i = 0; i < count; ++i) {
    resbuf* chain = ChainWith(0, static_cast<int>(i % 30000));
    AcDbObject* object = nullptr;
    acdbOpenObject(object, ids[0], AcDb::kForWrite);
    object->setXData(chain);
    object->close();
    acdbOpenObject(object, ids[0], AcDb::kForRead);
    acutRelRb(object->xData(kApp));
    object->close();
    acutRelRb(chain);
  }
  throughXData = kelbench::CpuSeconds() - start;
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  if (failures != 0) std::fprintf(stderr, "kelcad_oxdata_timer: %ld records went wrong\n", failures);
  return failures == 0 ? t : Times{};
}

void Report(const char* what, std::size_t count, const Times& t) {
  const double ratio = t.store / t.direct;
  std::printf("%-34s %7zu  %.3f s (%.2f us each), direct %.3f s (%.2f us each), ratio %.2f (target <= 2): %s\n",
              what, count, t.store, t.store / count * 1e6, t.direct, t.direct / count * 1e6, ratio,
              ratio <= 2.0 ? "met" : "NOT met");
}

}  // namespace

int main(int argc, char** argv) {
  const long values = argc > 1 ? std::atol(argv[1]) : 100000;
  const long repeat = argc > 2 ? std::atol(argv[2]) : 3;
  if (values < 100 || repeat <= 0) {
    std::fprintf(stderr, "usage: kelcad_oxdata_timer [VALUES >= 100] [REPEAT]\n");
    return 2;
  }
  const std::size_t large = static_cast<std::size_t>(values), small = large / 10;
  Times xLarge, xSmall, rLarge, rSmall;
  double viaXData = -1, unused = 0;
  for (long r = 0; r < repeat; ++r) {
    const Times a = XData(large), b = XData(small);
    double x = 0;
    const Times c = Records(large / kValuesPerLine, x), d = Records(small / kValuesPerLine, unused);
    if (a.store < 0 || b.store < 0 || c.store < 0 || d.store < 0) return 1;
    xLarge = {Best(xLarge.store, a.store), Best(xLarge.direct, a.direct)};
    xSmall = {Best(xSmall.store, b.store), Best(xSmall.direct, b.direct)};
    rLarge = {Best(rLarge.store, c.store), Best(rLarge.direct, c.direct)};
    rSmall = {Best(rSmall.store, d.store), Best(rSmall.direct, d.direct)};
    viaXData = Best(viaXData, x);
  }
  Report("SetxData+GetxData", large, xLarge);
  Report("SetxData+GetxData", small, xSmall);
  Report("SetDWGxRecord+GetDWGxRecord", large / kValuesPerLine, rLarge);
  Report("SetDWGxRecord+GetDWGxRecord", small / kValuesPerLine, rSmall);
  const std::size_t keys = large / kValuesPerLine;
  std::printf("drawing records against setXData/xData of the same chain: %.2f us each, ratio %.2f\n",
              viaXData / keys * 1e6, rLarge.store / viaXData);
  std::printf("per-value growth from %zu to %zu values: xdata %.2f, records %.2f (linear: about 1)\n", small, large,
              (xLarge.store / large) / (xSmall.store / small),
              (rLarge.store / keys) / (rSmall.store / (small / kValuesPerLine)));
  return 0;
}
