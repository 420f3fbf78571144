#include "editor/commands/tangent_circles.h"

#include <cmath>

namespace kelhost::editor {
namespace {

double Cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

// Relative tolerance for tangency: a line this close to touching a circle touches it.
double Tol(double size) { return 1e-9 * std::fmax(1.0, size); }

void AddDistinct(std::vector<AcGePoint2d>& points, const AcGePoint2d& p) {
  for (const AcGePoint2d& q : points)
    if ((q - p).length() <= Tol(std::fabs(p.x) + std::fabs(p.y))) return;
  points.push_back(p);
}

std::vector<AcGePoint2d> LineLine(const PlaneCurve& l1, const PlaneCurve& l2) {
  const AcGeVector2d d = l1.b - l1.a, e = l2.b - l2.a;
  const double den = Cross(d, e);
  if (std::fabs(den) <= 1e-12 * d.length() * e.length()) return {};
  const double t = Cross(l2.a - l1.a, e) / den;
  return {l1.a + d * t};
}

std::vector<AcGePoint2d> LineCircle(const PlaneCurve& l, const PlaneCurve& c) {
  const AcGeVector2d d = (l.b - l.a).normal();
  const AcGePoint2d foot = l.a + d * (c.center - l.a).dotProduct(d);
  const double dist = (foot - c.center).length();
  if (dist > c.radius + Tol(c.radius)) return {};
  if (dist >= c.radius - Tol(c.radius)) return {foot};
  const double h = std::sqrt(c.radius * c.radius - dist * dist);
  return {foot - d * h, foot + d * h};
}

std::vector<AcGePoint2d> CircleCircle(const PlaneCurve& c1, const PlaneCurve& c2) {
  const AcGeVector2d between = c2.center - c1.center;
  const double d = between.length();
  if (!(d > Tol(c1.radius + c2.radius))) return {};
  const double along = (c1.radius * c1.radius - c2.radius * c2.radius + d * d) / (2 * d);
  double h2 = c1.radius * c1.radius - along * along;
  const double tol = Tol(c1.radius + c2.radius) * (c1.radius + c2.radius);
  if (h2 < -tol) return {};
  const AcGeVector2d u = between / d, left(-u.y, u.x);
  const AcGePoint2d mid = c1.center + u * along;
  if (h2 <= tol) return {mid};
  const double h = std::sqrt(h2);
  return {mid + left * h, mid - left * h};
}

// Where the centers of circles of radius r touching the curve lie.
std::vector<PlaneCurve> CenterLoci(const PlaneCurve& c, double r) {
  if (c.kind == PlaneCurve::kLine) {
    const AcGeVector2d d = (c.b - c.a).normal(), left(-d.y, d.x);
    return {PlaneCurve::Line(c.a + left * r, c.b + left * r), PlaneCurve::Line(c.a - left * r, c.b - left * r)};
  }
  std::vector<PlaneCurve> loci = {PlaneCurve::Circle(c.center, c.radius + r)};
  if (std::fabs(c.radius - r) > Tol(c.radius)) loci.push_back(PlaneCurve::Circle(c.center, std::fabs(c.radius - r)));
  return loci;
}

}  // namespace

PlaneCurve PlaneCurve::Line(const AcGePoint2d& a, const AcGePoint2d& b) {
  PlaneCurve c;
  c.kind = kLine;
  c.a = a;
  c.b = b;
  return c;
}

PlaneCurve PlaneCurve::Circle(const AcGePoint2d& center, double radius) {
  PlaneCurve c;
  c.kind = kCircle;
  c.center = center;
  c.radius = radius;
  return c;
}

AcGePoint2d PlaneCurve::closestPoint(const AcGePoint2d& p) const {
  if (kind == kLine) {
    const AcGeVector2d d = (b - a).normal();
    return a + d * (p - a).dotProduct(d);
  }
  const AcGeVector2d v = p - center;
  return center + (v.isZeroLength() ? AcGeVector2d(radius, 0) : v.normal() * radius);
}

std::vector<AcGePoint2d> Intersections(const PlaneCurve& c1, const PlaneCurve& c2) {
  std::vector<AcGePoint2d> found;
  if (c1.kind == PlaneCurve::kLine && c2.kind == PlaneCurve::kLine)
    found = LineLine(c1, c2);
  else if (c1.kind == PlaneCurve::kLine)
    found = LineCircle(c1, c2);
  else if (c2.kind == PlaneCurve::kLine)
    found = LineCircle(c2, c1);
  else
    found = CircleCircle(c1, c2);
  std::vector<AcGePoint2d> distinct;
  for (const AcGePoint2d& p : found) AddDistinct(distinct, p);
  return distinct;
}

std::vector<TangentCircle> CirclesTangentTo(const PlaneCurve& c1, const PlaneCurve& c2, double r) {
  std::vector<AcGePoint2d> centers;
  for (const PlaneCurve& l1 : CenterLoci(c1, r))
    for (const PlaneCurve& l2 : CenterLoci(c2, r))
      for (const AcGePoint2d& p : Intersections(l1, l2)) AddDistinct(centers, p);
  std::vector<TangentCircle> circles;
  for (const AcGePoint2d& center : centers) {
    // A center on a circle's own center touches it nowhere in particular.
    if ((c1.kind == PlaneCurve::kCircle && (center - c1.center).isZeroLength()) ||
        (c2.kind == PlaneCurve::kCircle && (center - c2.center).isZeroLength()))
      continue;
    circles.push_back({center, c1.closestPoint(center), c2.closestPoint(center)});
  }
  return circles;
}

const TangentCircle* NearestToPicks(const std::vector<TangentCircle>& circles, const AcGePoint2d& pick1,
                                    const AcGePoint2d& pick2) {
  const TangentCircle* best = nullptr;
  double bestScore = 0;
  for (const TangentCircle& c : circles) {
    const double score = (c.touch1 - pick1).length() + (c.touch2 - pick2).length();
    if (!best || score < bestScore) {
      best = &c;
      bestScore = score;
    }
  }
  return best;
}

}  // namespace kelhost::editor
