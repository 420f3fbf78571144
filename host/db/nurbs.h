// Non-uniform rational B-spline curves: the geometry behind AcDbSpline.
// A curve of degree p has n control points, n + p + 1 non-decreasing
// knots and, when rational, n positive weights; it is defined over the
// knots from index p to index n.
#pragma once

#include <string>
#include <vector>

#include "arx/acge.h"

namespace kelhost::geom {

struct Nurbs {
  int degree = 3;
  std::vector<AcGePoint3d> points;
  std::vector<double> knots;
  std::vector<double> weights;  // empty for a non-rational curve

  double startParam() const { return knots[static_cast<size_t>(degree)]; }
  double endParam() const { return knots[points.size()]; }
  // Position and first derivative by parameter at t (clamped to the
  // domain); either output may be null. The curve must pass Check().
  void evaluate(double t, AcGePoint3d* point, AcGeVector3d* deriv) const;
  // The parameter ranges of the curve's polynomial pieces, in order.
  std::vector<std::pair<double, double>> spans() const;
};

// Why the data cannot make a curve (too few control points for the
// degree, a knot count that does not fit, knots that decrease or repeat
// too often, weights that are missing or not positive); empty when it can.
std::wstring Check(const Nurbs& curve);

// The cubic through the fit points, parameterised by chord length, with
// the given end tangents (directions; a zero vector lets the curve choose
// its own from the neighbouring points). Empty message on success.
std::wstring InterpolateCubic(const std::vector<AcGePoint3d>& fit, const AcGeVector3d& startTangent,
                              const AcGeVector3d& endTangent, Nurbs& out);

}  // namespace kelhost::geom
