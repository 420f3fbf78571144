// KEL::DivideCurve along a long polyline: POINTS points on a polyline of
// VERTICES vertices (straight and bulged segments in turn), and the same
// at a tenth of the points and at a tenth of the vertices, to show the
// time grows in proportion to each and no faster. The best of REPEAT
// runs by processor time counts.
//
//   kelcad_curve_timer [POINTS] [VERTICES] [REPEAT]
//
// Prints the time per point and the ratios of the cost per point (ten
// times the points) and per point and vertex (ten times the vertices):
// linear growth gives ratios near 1.
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "kelcad/kelcad.h"
#include "mixed_drawing.h"

namespace {

// A zigzag of vertices with every other segment a shallow arc.
AcDbObjectId NewPolyline(std::unique_ptr<AcDbDatabase>& db, int vertices) {
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  db = std::make_unique<AcDbDatabase>();
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
  auto* pline = new AcDbPolyline(static_cast<unsigned>(vertices));
  for (int i = 0; i < vertices; ++i)
    pline->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(i, (i % 2) * 0.5), (i % 2) ? 0.2 : 0.0);
  AcDbObjectId id;
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForWrite) != Acad::eOk) return id;
  space->appendAcDbEntity(id, pline);
  pline->close();
  space->close();
  return id;
}

// Processor seconds of one division: the best of repeat runs, each
// dividing as often as it takes to last a fifth of a second at least (the
// first division also builds the polyline's path). -1 on a failure.
double Divide(int points, int vertices, int repeat) {
  std::unique_ptr<AcDbDatabase> db;
  const AcDbObjectId id = NewPolyline(db, vertices);
  double best = -1;
  for (int r = 0; r < repeat; ++r) {
    int runs = 0;
    const double start = kelbench::CpuSeconds();
    double took = 0;
    do {
      AcArray<AcGePoint3d> out;
      if (!KEL::DivideCurve(out, id, points) || out.length() < points) {
        std::fprintf(stderr, "kelcad_curve_timer: %d points asked, %d given\n", points, out.length());
        return -1;
      }
      ++runs;
      took = kelbench::CpuSeconds() - start;
    } while (took < 0.2);
    if (best < 0 || took / runs < best) best = took / runs;
  }
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return best;
}

}  // namespace

int main(int argc, char** argv) {
  const int points = argc > 1 ? std::atoi(argv[1]) : 100000;
  const int vertices = argc > 2 ? std::atoi(argv[2]) : 10000;
  const int repeat = argc > 3 ? std::atoi(argv[3]) : 3;
  if (points < 10 || vertices < 20 || repeat < 1) {
    std::fprintf(stderr, "usage: kelcad_curve_timer [POINTS>=10] [VERTICES>=20] [REPEAT>=1]\n");
    return 2;
  }
  // Once untimed first: the allocator learns the sizes of large arrays.
  if (Divide(points, vertices, 1) < 0) return 1;
  const double full = Divide(points, vertices, repeat);
  const double fewerPoints = Divide(points / 10, vertices, repeat);
  const double fewerVertices = Divide(points, vertices / 10, repeat);
  if (full < 0 || fewerPoints < 0 || fewerVertices < 0) return 1;
  std::printf("DivideCurve, %d points on %d vertices: %.4f s, %.3f us a point\n", points, vertices, full,
              full / points * 1e6);
  std::printf("  %d points: %.4f s; %d vertices: %.4f s\n", points / 10, fewerPoints, vertices / 10, fewerVertices);
  std::printf("  cost per point, %dx the points: ratio %.2f\n", 10, (full / points) / (fewerPoints / (points / 10)));
  std::printf("  cost per point, %dx the vertices: ratio %.2f (1 = independent of the vertices)\n", 10,
              full / fewerVertices);
  return 0;
}
