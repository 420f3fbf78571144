// Circles of a given radius tangent to two lines or circles of the
// drawing plane: the fillet arcs of FILLET and the circles of CIRCLE's
// tangent-tangent-radius form. A line counts as the whole line through
// its points and an arc as its whole circle; the caller picks among the
// solutions by where the user pointed.
#pragma once

#include <vector>

#include "arx/acge.h"

namespace kelhost::editor {

struct PlaneCurve {
  enum Kind { kLine, kCircle };
  Kind kind = kLine;
  AcGePoint2d a, b;  // a line through a and b
  AcGePoint2d center;
  double radius = 0.0;

  static PlaneCurve Line(const AcGePoint2d& a, const AcGePoint2d& b);
  static PlaneCurve Circle(const AcGePoint2d& center, double radius);
  // The point of the curve nearest p.
  AcGePoint2d closestPoint(const AcGePoint2d& p) const;
};

// Where two curves cross (a line touching a circle crosses it once).
std::vector<AcGePoint2d> Intersections(const PlaneCurve& c1, const PlaneCurve& c2);

struct TangentCircle {
  AcGePoint2d center;
  AcGePoint2d touch1, touch2;  // where it touches the first and the second curve
};

// Every circle of radius r (r > 0) touching both curves; none for two
// parallel lines further apart than 2r, or curves that cannot both be reached.
std::vector<TangentCircle> CirclesTangentTo(const PlaneCurve& c1, const PlaneCurve& c2, double r);

// The solution whose touching points lie nearest the two points the user
// picked (null for none).
const TangentCircle* NearestToPicks(const std::vector<TangentCircle>& circles, const AcGePoint2d& pick1,
                                    const AcGePoint2d& pick2);

}  // namespace kelhost::editor
