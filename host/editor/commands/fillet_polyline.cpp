#include "editor/commands/fillet_polyline.h"

#include <cmath>
#include <vector>

namespace kelhost::editor {
namespace {

constexpr double kPi = 3.14159265358979323846;

struct Vertex {
  AcGePoint2d point;
  double bulge = 0.0, startWidth = 0.0, endWidth = 0.0;
};

}  // namespace

PolylineFillets FilletPolylineVertices(AcDbPolyline& pline, double radius) {
  PolylineFillets result;
  const unsigned n = pline.numVerts();
  const bool closed = pline.isClosed();
  if (!(radius > 0) || n < 3) return result;
  std::vector<Vertex> v(n);
  for (unsigned i = 0; i < n; ++i) {
    pline.getPointAt(i, v[i].point);
    pline.getBulgeAt(i, v[i].bulge);
    pline.getWidthsAt(i, v[i].startWidth, v[i].endWidth);
  }
  // Segment i runs from vertex i to the next; consumed: the length the
  // fillets at its ends took from it.
  std::vector<double> consumed(n, 0.0), cut(n, 0.0);
  std::vector<bool> rounded(n, false);
  auto length = [&](unsigned seg) { return (v[(seg + 1) % n].point - v[seg].point).length(); };
  for (unsigned k = closed ? 0 : 1; k < (closed ? n : n - 1); ++k) {
    const unsigned in = (k + n - 1) % n, out = k;
    if (v[in].bulge != 0 || v[out].bulge != 0 || !(length(in) > 0) || !(length(out) > 0)) continue;
    const AcGeVector2d d1 = (v[in].point - v[k].point).normal(), d2 = (v[(k + 1) % n].point - v[k].point).normal();
    const double angle = std::acos(std::fmax(-1.0, std::fmin(1.0, d1.dotProduct(d2))));
    if (angle < 1e-10 || angle > kPi - 1e-10) continue;  // no corner here
    const double t = radius / std::tan(angle / 2);
    const double slack = 1e-10 * std::fmax(1.0, t);
    if (consumed[in] + t > length(in) + slack || consumed[out] + t > length(out) + slack) {
      ++result.tooShort;
      continue;
    }
    consumed[in] += t;
    consumed[out] += t;
    cut[k] = t;
    rounded[k] = true;
    ++result.filleted;
  }
  if (result.filleted == 0) return result;
  std::vector<Vertex> out;
  for (unsigned k = 0; k < n; ++k) {
    if (!rounded[k]) {
      out.push_back(v[k]);
      continue;
    }
    const Vertex& before = v[(k + n - 1) % n];
    const AcGeVector2d d1 = (before.point - v[k].point).normal(), d2 = (v[(k + 1) % n].point - v[k].point).normal();
    const AcGeVector2d in = v[k].point - before.point;
    const double turn = in.x * d2.y - in.y * d2.x;
    const double sweep = kPi - std::acos(std::fmax(-1.0, std::fmin(1.0, d1.dotProduct(d2))));
    Vertex arcStart;
    arcStart.point = v[k].point + d1 * cut[k];
    arcStart.bulge = std::tan((turn > 0 ? sweep : -sweep) / 4);
    arcStart.startWidth = arcStart.endWidth = before.endWidth;
    Vertex arcEnd = v[k];
    arcEnd.point = v[k].point + d2 * cut[k];
    out.push_back(arcStart);
    out.push_back(arcEnd);
  }
  while (pline.numVerts() > 0) pline.removeVertexAt(pline.numVerts() - 1);
  for (unsigned i = 0; i < out.size(); ++i)
    pline.addVertexAt(i, out[i].point, out[i].bulge, out[i].startWidth, out[i].endWidth);
  return result;
}

}  // namespace kelhost::editor
