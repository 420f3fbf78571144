#include "gi/path_drawing.h"

#include <algorithm>
#include <cmath>

namespace kelhost::gi {
namespace {

constexpr double kTwoPi = 6.283185307179586476925;
constexpr double kStep = kTwoPi / 72;  // five degrees
constexpr int kFreeSegments = 32;
constexpr double kTol = 1e-9;

// Points of consecutive pieces, drawn as one polyline when the run breaks.
class Run {
 public:
  explicit Run(AcGiGeometry& g) : mGeometry(g) {}
  void add(const AcGePoint3d& p) {
    if (mPoints.empty() || !mPoints.back().isEqualTo(p)) mPoints.push_back(p);
  }
  void flush() {
    if (mPoints.size() >= 2) mGeometry.polyline(static_cast<Adesk::UInt32>(mPoints.size()), mPoints.data());
    mPoints.clear();
  }

 private:
  AcGiGeometry& mGeometry;
  std::vector<AcGePoint3d> mPoints;
};

void DrawCircular(const geom::Piece& p, AcGiGeometry& g) {
  AcGeVector3d normal = p.u.crossProduct(p.v).normal();
  double sweep = p.sweep;
  if (sweep < 0) {
    normal = -normal;
    sweep = -sweep;
  }
  if (sweep >= kTwoPi - kTol) {
    g.circle(p.center, p.radius(), normal);
    return;
  }
  const AcGeVector3d start = (p.point(p.t0) - p.center).normal();
  g.circularArc(p.center, p.radius(), normal, start, sweep);
}

}  // namespace

std::vector<AcGePoint3d> Approximate(const geom::Piece& piece) {
  int n = 1;
  if (piece.kind == geom::Piece::kConic)
    n = std::max(1, static_cast<int>(std::ceil(std::fabs(piece.sweep) / kStep - kTol)));
  else if (piece.kind == geom::Piece::kFree)
    n = kFreeSegments;
  std::vector<AcGePoint3d> points;
  points.reserve(n + 1);
  for (int i = 0; i <= n; ++i) points.push_back(piece.point(piece.t0 + (piece.t1 - piece.t0) * i / n));
  return points;
}

void DrawPath(const geom::Path& path, AcGiGeometry& geometry, double fromParam, double toParam) {
  Run run(geometry);
  for (const geom::Piece& p : path.pieces()) {
    if (p.t0 < fromParam - kTol || p.t1 > toParam + kTol) continue;
    if (p.kind == geom::Piece::kConic && p.isCircular()) {
      run.flush();
      DrawCircular(p, geometry);
      continue;
    }
    for (const AcGePoint3d& q : Approximate(p)) run.add(q);
  }
  run.flush();
}

}  // namespace kelhost::gi
