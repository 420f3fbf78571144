// Splitting curves into pieces of their own kind at parameters or points.
#include <algorithm>
#include <cmath>
#include <vector>

#include "arx/dbents.h"
#include "db/curve_geometry.h"

using kelhost::geom::kPi;

namespace {

void DeletePieces(AcDbVoidPtrArray& pieces, int from) {
  for (int i = from; i < pieces.length(); ++i) delete static_cast<AcDbEntity*>(pieces[i]);
  pieces.setLogicalLength(from);
}

}  // namespace

AcDbCurve* AcDbCurve::pieceBetween(double, double) const { return nullptr; }

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& curveSegments) const {
  double t0 = 0.0, t1 = 0.0;
  if (getStartParam(t0) != Acad::eOk || getEndParam(t1) != Acad::eOk) return Acad::eDegenerateGeometry;
  const double eps = 1e-9 * std::max(1.0, std::fabs(t1 - t0));
  const bool closed = isClosed();
  std::vector<double> cuts;
  for (int i = 0; i < params.length(); ++i) {
    double t = params[i];
    if (!std::isfinite(t) || t < t0 - eps || t > t1 + eps) return Acad::eInvalidInput;
    t = std::clamp(t, t0, t1);
    if (closed && t >= t1 - eps) t = t0;  // the end of a closed curve is its start
    if (!closed && (t <= t0 + eps || t >= t1 - eps)) continue;  // an open curve's ends cut nothing
    cuts.push_back(t);
  }
  std::sort(cuts.begin(), cuts.end());
  cuts.erase(std::unique(cuts.begin(), cuts.end(), [eps](double a, double b) { return b - a <= eps; }), cuts.end());
  std::vector<double> bounds;
  if (closed) {
    if (cuts.size() < 2) return Acad::eInvalidInput;
    bounds = cuts;
    bounds.push_back(cuts.front() + (t1 - t0));
  } else {
    if (cuts.empty()) return Acad::eInvalidInput;
    bounds.push_back(t0);
    bounds.insert(bounds.end(), cuts.begin(), cuts.end());
    bounds.push_back(t1);
  }
  const int first = curveSegments.length();
  for (size_t i = 0; i + 1 < bounds.size(); ++i) {
    AcDbCurve* piece = pieceBetween(bounds[i], bounds[i + 1]);
    if (!piece) {
      DeletePieces(curveSegments, first);
      return Acad::eNotImplementedYet;
    }
    piece->setPropertiesFrom(this);
    curveSegments.append(piece);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGePoint3dArray& points, AcDbVoidPtrArray& curveSegments) const {
  AcGeDoubleArray params;
  for (int i = 0; i < points.length(); ++i) {
    double t = 0.0;
    if (getParamAtPoint(points[i], t) != Acad::eOk) return Acad::eInvalidInput;
    params.append(t);
  }
  return getSplitCurves(params, curveSegments);
}

AcDbCurve* AcDbLine::pieceBetween(double a, double b) const {
  AcGePoint3d p, q;
  if (getPointAtParam(a, p) != Acad::eOk || getPointAtParam(b, q) != Acad::eOk) return nullptr;
  auto* line = new AcDbLine(p, q);
  line->setNormal(mNormal);
  line->setThickness(mThickness);
  return line;
}

// A circle's and an arc's parameter is the angle in their plane.
AcDbCurve* AcDbCircle::pieceBetween(double a, double b) const {
  auto* arc = new AcDbArc(mCenter, mRadius, std::fmod(a, 2 * kPi), std::fmod(b, 2 * kPi));
  arc->setNormal(mNormal);
  arc->setThickness(mThickness);
  return arc;
}

AcDbCurve* AcDbArc::pieceBetween(double a, double b) const { return AcDbCircle::pieceBetween(a, b); }

// Vertices at the cut parameters and at the whole ones between them; a
// cut bulge segment keeps its curvature (the bulge is the tangent of a
// quarter of the sweep, and the sweep runs with the parameter), widths
// run on as they taper.
AcDbCurve* AcDbPolyline::pieceBetween(double a, double b) const {
  const unsigned int n = numVerts();
  if (n == 0) return nullptr;
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(mNormal);
  const double end = isClosed() ? n : n - 1.0;
  auto planePoint = [&](double t) {
    AcGePoint3d w;
    getPointAtParam(t > end ? t - end : t, w);
    w = toPlane * w;
    return AcGePoint2d(w.x, w.y);
  };
  auto* piece = new AcDbPolyline();
  unsigned int k = 0;
  const double eps = 1e-9 * std::max(1.0, b);
  for (double t = a; t < b - eps;) {
    const double segment = std::floor(t + eps);
    const double next = std::min(segment + 1.0, b);
    const Vertex& v = mVertices[static_cast<size_t>(segment) % n];
    const double f0 = std::max(t - segment, 0.0), f1 = next - segment;
    const double bulge = std::tan(std::atan(v.bulge) * (f1 - f0));
    const double w = v.endWidth - v.startWidth;
    piece->addVertexAt(k++, planePoint(t), bulge, v.startWidth + w * f0, v.startWidth + w * f1);
    t = next;
  }
  piece->addVertexAt(k, planePoint(b));
  piece->setElevation(mElevation);
  piece->setNormal(mNormal);
  piece->setThickness(mThickness);
  piece->setPlinegen(hasPlinegen());
  return piece;
}
