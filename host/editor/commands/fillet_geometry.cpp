#include "editor/commands/fillet_geometry.h"

#include <cmath>

namespace kelhost::editor {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTol = 1e-10;

double Cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }
AcGeVector2d Left(const AcGeVector2d& v) { return AcGeVector2d(-v.y, v.x); }

// A line kept on the side dir points to from t, with t its new end.
bool TrimLine(PlaneEntity& e, const AcGePoint2d& t, const AcGeVector2d& dir) {
  const double ds = (e.start - t).dotProduct(dir), de = (e.end - t).dotProduct(dir);
  const double size = std::fmax(1.0, (e.end - e.start).length());
  if (std::fmax(ds, de) <= kTol * size) return false;
  (de >= ds ? e.start : e.end) = t;
  return true;
}

// Trims or extends e so that it ends at t on the fillet's side and keeps
// the part picked; kept is the direction into what remains, at t.
bool TrimTo(PlaneEntity& e, const AcGePoint2d& t, const AcGePoint2d& pick, AcGeVector2d& kept) {
  if (e.kind == PlaneEntity::kLine) {
    const AcGeVector2d u = (e.end - e.start).normal();
    double side = (pick - t).dotProduct(u);
    if (std::fabs(side) <= kTol) side = (e.start - t).dotProduct(u) + (e.end - t).dotProduct(u);
    kept = side >= 0 ? u : -u;
    return TrimLine(e, t, kept);
  }
  const AcGeVector2d radial = (t - e.center).normal();
  if (e.kind == PlaneEntity::kCircle) {
    kept = Cross(t - e.center, pick - e.center) >= 0 ? Left(radial) : -Left(radial);
    return true;
  }
  // An arc: t replaces whichever end leaves the pick on the arc, and of
  // two such, the one that changes the arc least.
  const double at = AngleOf(t - e.center), picked = AngleOf(pick - e.center);
  const double span = NormalizedAngle(e.to - e.from);
  const double spanFrom = NormalizedAngle(e.to - at), spanTo = NormalizedAngle(at - e.from);
  const bool fromCovers = spanFrom > kTol && NormalizedAngle(picked - at) <= spanFrom;
  const bool toCovers = spanTo > kTol && NormalizedAngle(picked - e.from) <= spanTo;
  if (!fromCovers && !toCovers) return false;
  const bool replaceFrom = fromCovers && (!toCovers || std::fabs(spanFrom - span) <= std::fabs(spanTo - span));
  (replaceFrom ? e.from : e.to) = at;
  kept = replaceFrom ? Left(radial) : -Left(radial);
  return true;
}

// The fillet arc: it leaves the first object at t1 against the direction
// the first object is kept in, and ends at t2.
bool ArcBetween(const AcGePoint2d& center, const AcGePoint2d& t1, const AcGeVector2d& kept1, const AcGePoint2d& t2,
                PlaneArc& arc) {
  const double r = (t1 - center).length();
  if (!(r > kTol) || (t2 - t1).isZeroLength()) return false;
  const bool anticlockwise = Left(t1 - center).dotProduct(-kept1) > 0;
  const double a1 = AngleOf(t1 - center), a2 = AngleOf(t2 - center);
  arc.center = center;
  arc.radius = r;
  arc.startAngle = a1;
  arc.sweep = anticlockwise ? NormalizedAngle(a2 - a1) : -NormalizedAngle(a1 - a2);
  return std::fabs(arc.sweep) > kTol;
}

// The direction from x into the part of a line that the pick keeps.
AcGeVector2d KeptFrom(const PlaneEntity& line, const AcGePoint2d& x, const AcGePoint2d& pick) {
  const AcGeVector2d u = (line.end - line.start).normal();
  double side = (pick - x).dotProduct(u);
  if (std::fabs(side) <= kTol) side = (line.start - x).dotProduct(u) + (line.end - x).dotProduct(u);
  return side >= 0 ? u : -u;
}

double Reach(const PlaneEntity& line, const AcGePoint2d& x, const AcGeVector2d& dir) {
  return std::fmax((line.start - x).dotProduct(dir), (line.end - x).dotProduct(dir));
}

FilletProblem ParallelLines(const PlaneEntity& l1, const AcGePoint2d& pick1, const PlaneEntity& l2, double radius,
                            Fillet& out) {
  const AcGeVector2d u = (l1.end - l1.start).normal();
  const double gap = std::fabs(Cross(u, l2.start - l1.start));
  if (radius == 0 || !(gap > kTol * std::fmax(1.0, (l1.end - l1.start).length()))) return FilletProblem::kParallel;
  const bool atEnd = (pick1 - l1.end).length() <= (pick1 - l1.start).length();
  const AcGePoint2d e1 = atEnd ? l1.end : l1.start;
  const AcGeVector2d outward = atEnd ? u : -u;
  const AcGePoint2d p2 = l2.start + u * (e1 - l2.start).dotProduct(u);
  // The second line's outer end moves level with the first's.
  if (!TrimLine(out.second, p2, -outward)) return FilletProblem::kNoFillet;
  const AcGePoint2d center = e1 + (p2 - e1) * 0.5;
  out.hasArc = true;
  out.arc.center = center;
  out.arc.radius = gap / 2;
  out.arc.startAngle = AngleOf(e1 - center);
  out.arc.sweep = Cross(e1 - center, outward) > 0 ? kPi : -kPi;
  return FilletProblem::kNone;
}

FilletProblem TwoLines(const PlaneEntity& l1, const AcGePoint2d& pick1, const PlaneEntity& l2, const AcGePoint2d& pick2,
                       double radius, Fillet& out) {
  const std::vector<AcGePoint2d> x = Intersections(l1.curve(), l2.curve());
  if (x.empty()) return ParallelLines(l1, pick1, l2, radius, out);
  const AcGeVector2d d1 = KeptFrom(l1, x[0], pick1), d2 = KeptFrom(l2, x[0], pick2);
  const double reach1 = Reach(l1, x[0], d1), reach2 = Reach(l2, x[0], d2);
  if (!(reach1 > 0) || !(reach2 > 0)) return FilletProblem::kNoFillet;
  if (radius == 0) {
    TrimLine(out.first, x[0], d1);
    TrimLine(out.second, x[0], d2);
    return FilletProblem::kNone;
  }
  const double angle = std::acos(std::fmax(-1.0, std::fmin(1.0, d1.dotProduct(d2))));
  if (!(angle > kTol) || !(angle < kPi - kTol)) return FilletProblem::kNoFillet;
  const double along = radius / std::tan(angle / 2);
  const double slack = kTol * std::fmax(1.0, along);
  if (along > reach1 + slack || along > reach2 + slack) return FilletProblem::kRadiusTooLarge;
  const AcGePoint2d t1 = x[0] + d1 * along, t2 = x[0] + d2 * along;
  const AcGePoint2d center = x[0] + (d1 + d2).normal() * (radius / std::sin(angle / 2));
  // A radius that uses a whole line leaves it as a point: too large.
  if (!TrimLine(out.first, t1, d1) || !TrimLine(out.second, t2, d2)) return FilletProblem::kRadiusTooLarge;
  out.hasArc = ArcBetween(center, t1, d1, t2, out.arc);
  return FilletProblem::kNone;
}

}  // namespace

FilletProblem MakeFillet(const PlaneEntity& first, const AcGePoint2d& pick1, const PlaneEntity& second,
                         const AcGePoint2d& pick2, double radius, Fillet& out) {
  out = Fillet{};
  out.first = first;
  out.second = second;
  if (first.id == second.id && !first.id.isNull()) return FilletProblem::kNoFillet;
  if (first.kind == PlaneEntity::kLine && second.kind == PlaneEntity::kLine)
    return TwoLines(first, pick1, second, pick2, radius, out);
  if (radius == 0) {
    // The corner: the crossing nearest the picks.
    const AcGePoint2d* best = nullptr;
    const std::vector<AcGePoint2d> x = Intersections(first.curve(), second.curve());
    for (const AcGePoint2d& p : x)
      if (!best || (p - pick1).length() + (p - pick2).length() < (*best - pick1).length() + (*best - pick2).length())
        best = &p;
    AcGeVector2d kept;
    if (!best || !TrimTo(out.first, *best, pick1, kept) || !TrimTo(out.second, *best, pick2, kept))
      return FilletProblem::kNoFillet;
    return FilletProblem::kNone;
  }
  // Of the tangent circles, those that leave something of both objects,
  // and of those the one nearest the picks.
  std::vector<TangentCircle> usable;
  for (const TangentCircle& c : CirclesTangentTo(first.curve(), second.curve(), radius)) {
    PlaneEntity a = first, b = second;
    AcGeVector2d k1, k2;
    if (TrimTo(a, c.touch1, pick1, k1) && TrimTo(b, c.touch2, pick2, k2)) usable.push_back(c);
  }
  const TangentCircle* best = NearestToPicks(usable, pick1, pick2);
  if (!best) return FilletProblem::kRadiusTooLarge;
  AcGeVector2d kept1, kept2;
  TrimTo(out.first, best->touch1, pick1, kept1);
  TrimTo(out.second, best->touch2, pick2, kept2);
  out.hasArc = ArcBetween(best->center, best->touch1, kept1, best->touch2, out.arc);
  return FilletProblem::kNone;
}

}  // namespace kelhost::editor
