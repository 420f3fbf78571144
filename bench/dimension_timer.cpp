// Dimensions through the module against the host's own paths, in one run:
//   - "kel_createmrotateddim" given POINTS points (POINTS - 1 dimensions in
//     one continuous chain) against the same dimensions made one by one by
//     entmake in an AutoLISP loop, and the chain of 2 * POINTS points
//     against the chain of POINTS (linear: about 2);
//   - redrawing the *D block of each of COUNT dimensions against doing so
//     for COUNT / 2 of them (linear: the time per dimension about equal).
// Each run starts a new drawing; the best of REPEAT runs by processor time
// counts. The module is loaded as the console loads it, in family
// directories of its own.
//
//   kelcad_dimension_timer [POINTS] [COUNT] [REPEAT]
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

// Runs action on a new working drawing (set up by prepare, untimed); its
// processor time, or a negative value when the drawing did not end with
// count entities in model space.
template <class Prepare, class Action>
double TimedOnNewDrawing(std::size_t count, Prepare prepare, Action action) {
  auto db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  KEL::SetCurDWGPtr(nullptr);
  prepare();
  const double start = kelbench::CpuSeconds();
  action();
  const double seconds = kelbench::CpuSeconds() - start;
  const bool ok = kelbench::EntityCount(db.get()) == count;
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  KEL::SetCurDWGPtr(nullptr);
  return ok ? seconds : -1.0;
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

// (setq NAME (list (x y 0.0) ...)): n points along a line that wanders.
std::wstring PointList(const wchar_t* name, long n) {
  std::wstring text = L"(setq " + std::wstring(name) + L" (list";
  for (long i = 0; i < n; ++i)
    text += L" (list " + std::to_wstring(i * 2.5) + L" " + std::to_wstring((i % 5) * 0.75) + L" 0.0)";
  return text + L"))";
}

// count rotated dimensions, each with its block.
void MakeDimensions(long count) {
  for (long i = 0; i < count; ++i) {
    AcDbObjectId id;
    KEL::CreateRotatedDim(0.0, AcGePoint3d(i * 3.0, 0, 0), AcGePoint3d(i * 3.0 + 2.0, 0, 0),
                          AcGePoint3d(i * 3.0, 4.0, 0), id);
  }
}

// Opens each dimension of model space and draws its block anew.
void RedrawAll() {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  AcDbBlockTableRecord* model = nullptr;
  if (acdbOpenObject(model, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return;
  AcDbBlockTableRecordIterator* it = nullptr;
  model->newIterator(it);
  for (; it && !it->done(); it->step()) {
    AcDbDimension* dim = nullptr;
    AcDbObjectId id;
    it->getEntityId(id);
    if (acdbOpenObject(dim, id, AcDb::kForWrite) != Acad::eOk) continue;
    dim->recomputeDimBlock();
    dim->close();
  }
  delete it;
  model->close();
}

}  // namespace

int main(int argc, char** argv) {
  const long points = argc > 1 ? std::atol(argv[1]) : 1000;
  const long count = argc > 2 ? std::atol(argv[2]) : 10000;
  const long repeat = argc > 3 ? std::atol(argv[3]) : 3;
  if (points < 2 || count < 2 || repeat <= 0) {
    std::fprintf(stderr, "usage: kelcad_dimension_timer [POINTS] [COUNT] [REPEAT]\n");
    return 2;
  }
  kelbench::ScratchDir scratch;
  SetFamilyDirectories(scratch.file("family"));
  kelhost::Host& host = kelhost::Host::instance();
  host.setCommandLineSink([](const std::wstring&) {});
  std::wstring why;
  if (!host.loadModule(KELCAD_MODULE_PATH, &why)) {
    std::fprintf(stderr, "kelcad_dimension_timer: cannot load the module: %s\n", kelhost::ToUtf8(why).c_str());
    return 1;
  }
  host.lisp().evalOne(PointList(L"bench-points", points));
  host.lisp().evalOne(PointList(L"bench-points2", 2 * points));
  const std::wstring chain = L"(progn (kel_createmrotateddim 0.0 bench-points '(0.0 -6.0)) nil)";
  const std::wstring chain2 = L"(progn (kel_createmrotateddim 0.0 bench-points2 '(0.0 -6.0)) nil)";
  const std::wstring entmakeLoop =
      L"(progn (setq p (car bench-points)) (foreach q (cdr bench-points) (entmake (list '(0 . \"DIMENSION\") "
      L"'(100 . \"AcDbEntity\") '(100 . \"AcDbDimension\") '(10 0.0 -6.0 0.0) '(70 . 0) '(1 . \"\") "
      L"'(100 . \"AcDbAlignedDimension\") (cons 13 p) (cons 14 q) '(50 . 0.0) '(100 . \"AcDbRotatedDimension\")))"
      L" (setq p q)) nil)";

  const auto steps = static_cast<std::size_t>(points - 1);
  auto nothing = [] {};
  double chained = -1, chained2 = -1, looped = -1, redraw = -1, redrawHalf = -1;
  // One untimed round first: the allocator takes its memory from the
  // system once, so that neither size pays for it in the timed rounds.
  TimedOnNewDrawing(static_cast<std::size_t>(count), [&] { MakeDimensions(count); }, RedrawAll);
  for (long r = 0; r < repeat; ++r) {
    const double c = TimedOnNewDrawing(steps, nothing, [&] { host.lisp().evalOne(chain); });
    const double c2 = TimedOnNewDrawing(2 * steps + 1, nothing, [&] { host.lisp().evalOne(chain2); });
    const double e = TimedOnNewDrawing(steps, nothing, [&] { host.lisp().evalOne(entmakeLoop); });
    const double d = TimedOnNewDrawing(static_cast<std::size_t>(count), [&] { MakeDimensions(count); }, RedrawAll);
    const double h =
        TimedOnNewDrawing(static_cast<std::size_t>(count / 2), [&] { MakeDimensions(count / 2); }, RedrawAll);
    if (c < 0 || c2 < 0 || e < 0 || d < 0 || h < 0) {
      std::fprintf(stderr, "kelcad_dimension_timer: a drawing did not get its dimensions\n");
      return 1;
    }
    chained = Best(chained, c);
    chained2 = Best(chained2, c2);
    looped = Best(looped, e);
    redraw = Best(redraw, d);
    redrawHalf = Best(redrawHalf, h);
  }
  host.unloadAll();
  const double chainRatio = chained / looped, growth = chained2 / chained;
  const double perDim = redraw / count, perDimHalf = redrawHalf / (count / 2);
  const double redrawRatio = perDim / perDimHalf;
  std::printf("kel_createmrotateddim of %ld points   %.3f s (%.2f us a dimension)\n", points, chained,
              chained / steps * 1e6);
  std::printf("kel_createmrotateddim of %ld points   %.3f s\n", 2 * points, chained2);
  std::printf("entmake loop of the dimensions        %.3f s (%.2f us a dimension)\n", looped, looped / steps * 1e6);
  std::printf("redrawing %ld blocks                  %.3f s (%.2f us each)\n", count, redraw, perDim * 1e6);
  std::printf("redrawing %ld blocks                  %.3f s (%.2f us each)\n", count / 2, redrawHalf,
              perDimHalf * 1e6);
  std::printf("chain / entmake loop %.2f (target <= 3): %s\n", chainRatio, chainRatio <= 3.0 ? "met" : "NOT met");
  std::printf("chain of twice the points / chain %.2f (linear: about 2): %s\n", growth,
              growth <= 2.5 ? "met" : "NOT met");
  std::printf("redraw time a dimension, %ld / %ld dimensions %.2f (linear: about 1): %s\n", count, count / 2,
              redrawRatio, redrawRatio <= 1.25 ? "met" : "NOT met");
  return 0;
}
