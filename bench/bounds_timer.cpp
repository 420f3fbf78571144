// The extents of a selection set: KEL::GetEntBound over a set of ENTITIES
// entities of the benchmark drawing's mix (lines, circles, arcs, text,
// polylines, points), against the platform calls it stands on (for each
// member: acedSSName, acdbGetObjectId, open for read, getGeomExtents,
// close). Measured at a tenth of the size as well, to show that the cost
// per entity does not grow with the set. The best of REPEAT runs by
// processor time counts.
//
//   kelcad_bounds_timer [ENTITIES] [REPEAT]
//
// Prints the time per entity, the ratio with the direct calls and the
// growth of the cost per entity from the small set to the large one.
#include <cstdio>
#include <cstdlib>

#include "kelcad/kelcad.h"
#include "mixed_drawing.h"

namespace {

double Best(double best, double run) { return best < 0 || run < best ? run : best; }

struct Times {
  double bound = -1, direct = -1;
};

// The set's extents member by member, without the module.
bool DirectBound(const ads_name set, double min[3], double max[3]) {
  AcDbExtents united;
  ads_name ent;
  for (Adesk::Int32 i = 0; acedSSName(set, i, ent) == RTNORM; ++i) {
    AcDbObjectId id;
    AcDbEntity* entity = nullptr;
    if (acdbGetObjectId(id, ent) != Acad::eOk || acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    AcDbExtents part;
    if (entity->getGeomExtents(part) == Acad::eOk) united.addExt(part);
    entity->close();
  }
  for (int k = 0; k < 3; ++k) {
    min[k] = united.minPoint()[k];
    max[k] = united.maxPoint()[k];
  }
  return true;
}

Times Measure(std::size_t count, long repeat) {
  kelbench::BenchDrawing drawing(count);
  ads_name all;
  if (acedSSGet(L"X", nullptr, nullptr, nullptr, all) != RTNORM) return {};
  Adesk::Int32 length = 0;
  acedSSLength(all, &length);
  if (static_cast<std::size_t>(length) != count) {
    acedSSFree(all);
    return {};
  }
  Times t;
  double min[3], max[3], directMin[3], directMax[3];
  for (long r = 0; r < repeat; ++r) {
    double start = kelbench::CpuSeconds();
    const int rc = KEL::GetEntBound(all, min, max);
    t.bound = Best(t.bound, kelbench::CpuSeconds() - start);
    start = kelbench::CpuSeconds();
    DirectBound(all, directMin, directMax);
    t.direct = Best(t.direct, kelbench::CpuSeconds() - start);
    bool same = rc == 1;
    for (int k = 0; k < 3; ++k) same = same && min[k] == directMin[k] && max[k] == directMax[k];
    if (!same) {
      std::fprintf(stderr, "kelcad_bounds_timer: the module's extents differ from the direct ones\n");
      acedSSFree(all);
      return {};
    }
  }
  acedSSFree(all);
  return t;
}

void Report(std::size_t count, const Times& t) {
  std::printf("GetEntBound of a set of %7zu: %.3f s (%.2f us each), direct %.3f s (%.2f us each), ratio %.2f\n",
              count, t.bound, t.bound / count * 1e6, t.direct, t.direct / count * 1e6, t.bound / t.direct);
}

}  // namespace

int main(int argc, char** argv) {
  const long entities = argc > 1 ? std::atol(argv[1]) : 100000;
  const long repeat = argc > 2 ? std::atol(argv[2]) : 3;
  if (entities < 100 || repeat <= 0) {
    std::fprintf(stderr, "usage: kelcad_bounds_timer [ENTITIES >= 100] [REPEAT]\n");
    return 2;
  }
  const std::size_t large = static_cast<std::size_t>(entities), small = large / 10;
  const Times big = Measure(large, repeat), little = Measure(small, repeat);
  if (big.bound < 0 || little.bound < 0) return 1;
  Report(large, big);
  Report(small, little);
  const double growth = (big.bound / large) / (little.bound / small);
  std::printf("per-entity growth from %zu to %zu entities: %.2f (linear: about 1): %s\n", small, large, growth,
              growth <= 1.5 ? "linear" : "NOT linear");
  return 0;
}
