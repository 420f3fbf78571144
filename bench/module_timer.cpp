// The module's entity makers against the host's own paths, in one run:
//   - KEL::CreateLine COUNT times against the same LINEs appended directly
//     (the block table opened for read, model space for write,
//     appendAcDbEntity, everything closed), each LINE on its own;
//   - "kel_entmakeline" given POINTS points (POINTS - 1 LINEs in one call)
//     against the same LINEs made by entmake in an AutoLISP loop.
// Each run starts a new drawing; the best of REPEAT runs by processor time
// counts. The module is loaded as the console loads it, in family
// directories of its own.
//
//   kelcad_module_timer [COUNT] [POINTS] [REPEAT]
//
// Prints the times and the ratios with their targets: CreateLine at most
// 2 times the direct append, kel_entmakeline at most 3 times the loop.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "kelcad/kelcad.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/text.h"
#include "mixed_drawing.h"

namespace {

double Best(double best, double run) { return best < 0 || run < best ? run : best; }

// Runs action on a new working drawing; its processor time, or a negative
// value when the drawing did not end with count entities.
template <class Action>
double TimedOnNewDrawing(std::size_t count, Action action) {
  auto db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  KEL::SetCurDWGPtr(nullptr);
  const double start = kelbench::CpuSeconds();
  action();
  const double seconds = kelbench::CpuSeconds() - start;
  const bool ok = kelbench::EntityCount(db.get()) == count;
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  KEL::SetCurDWGPtr(nullptr);
  return ok ? seconds : -1.0;
}

AcGePoint3d Point(long i) { return AcGePoint3d(i * 1.25, (i % 7) * 0.5, 0.0); }

void AppendDirectly(AcDbDatabase* db, const AcGePoint3d& from, const AcGePoint3d& to) {
  AcDbBlockTable* table = nullptr;
  if (db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return;
  AcDbBlockTableRecord* model = nullptr;
  const Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite);
  table->close();
  if (es != Acad::eOk) return;
  auto* line = new AcDbLine(from, to);
  if (model->appendAcDbEntity(line) == Acad::eOk)
    line->close();
  else
    delete line;
  model->close();
}

void SetFamilyDirectories(const std::string& root) {
  for (const char* sub : {"install", "local", "work", "common", "home"})
    std::filesystem::create_directories(root + "/" + sub);
  setenv("HOME", (root + "/home").c_str(), 1);
  setenv("KEL_INSTALL_DIR", (root + "/install/").c_str(), 1);
  setenv("KEL_LOCAL_DIR", (root + "/local/").c_str(), 1);
  setenv("KEL_WORK_DIR", (root + "/work/").c_str(), 1);
  setenv("KEL_COMMON_DIR", (root + "/common/").c_str(), 1);
  setenv("KEL_REGISTRY_FILE", (root + "/home/registry.ini").c_str(), 1);
}

}  // namespace

int main(int argc, char** argv) {
  const long count = argc > 1 ? std::atol(argv[1]) : 100000;
  const long points = argc > 2 ? std::atol(argv[2]) : 10000;
  const long repeat = argc > 3 ? std::atol(argv[3]) : 3;
  if (count <= 0 || points < 2 || repeat <= 0) {
    std::fprintf(stderr, "usage: kelcad_module_timer [COUNT] [POINTS] [REPEAT]\n");
    return 2;
  }
  kelbench::ScratchDir scratch;
  SetFamilyDirectories(scratch.file("family"));
  kelhost::Host& host = kelhost::Host::instance();
  host.setCommandLineSink([](const std::wstring&) {});
  std::wstring why;
  if (!host.loadModule(KELCAD_MODULE_PATH, &why)) {
    std::fprintf(stderr, "kelcad_module_timer: cannot load the module: %s\n", kelhost::ToUtf8(why).c_str());
    return 1;
  }

  // The AutoLISP calls: one kel_entmakeline of all the points, and a loop
  // of entmake over the same points.
  std::wstring pointList = L"(setq bench-points (list";
  for (long i = 0; i < points; ++i) {
    const AcGePoint3d p = Point(i);
    pointList += L" (list " + std::to_wstring(p.x) + L" " + std::to_wstring(p.y) + L" 0.0)";
  }
  pointList += L"))";
  host.lisp().evalOne(pointList);
  const std::wstring makeLines = L"(apply 'kel_entmakeline (cons \"0\" bench-points))";
  const std::wstring entmakeLoop =
      L"(progn (setq p (car bench-points)) (foreach q (cdr bench-points) (entmake (list '(0 . \"LINE\") "
      L"'(8 . \"0\") (cons 10 p) (cons 11 q))) (setq p q)) nil)";

  const auto n = static_cast<std::size_t>(count);
  const auto lines = static_cast<std::size_t>(points - 1);
  double create = -1, direct = -1, lisp = -1, loop = -1;
  for (long r = 0; r < repeat; ++r) {
    const double c = TimedOnNewDrawing(n, [&] {
      AcDbObjectId id;
      for (long i = 0; i < count; ++i) KEL::CreateLine(Point(i), Point(i + 1), id);
    });
    const double d = TimedOnNewDrawing(n, [&] {
      AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
      for (long i = 0; i < count; ++i) AppendDirectly(db, Point(i), Point(i + 1));
    });
    const double l = TimedOnNewDrawing(lines, [&] { host.lisp().evalOne(makeLines); });
    const double e = TimedOnNewDrawing(lines, [&] { host.lisp().evalOne(entmakeLoop); });
    if (c < 0 || d < 0 || l < 0 || e < 0) {
      std::fprintf(stderr, "kelcad_module_timer: a drawing did not get its lines\n");
      return 1;
    }
    create = Best(create, c);
    direct = Best(direct, d);
    lisp = Best(lisp, l);
    loop = Best(loop, e);
  }
  host.unloadAll();
  const double createRatio = create / direct, lispRatio = lisp / loop;
  std::printf("KEL::CreateLine, %ld               %.3f s (%.2f us each)\n", count, create, create / count * 1e6);
  std::printf("appendAcDbEntity of the lines      %.3f s (%.2f us each)\n", direct, direct / count * 1e6);
  std::printf("kel_entmakeline of %ld points    %.3f s (%.2f us a line)\n", points, lisp, lisp / lines * 1e6);
  std::printf("entmake loop of the lines          %.3f s (%.2f us a line)\n", loop, loop / lines * 1e6);
  std::printf("CreateLine / appendAcDbEntity %.2f (target <= 2): %s\n", createRatio,
              createRatio <= 2.0 ? "met" : "NOT met");
  std::printf("kel_entmakeline / entmake loop %.2f (target <= 3): %s\n", lispRatio, lispRatio <= 3.0 ? "met" : "NOT met");
  return 0;
}
