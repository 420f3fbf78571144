// A curve as a run of pieces over its parameter range: straight lines,
// conics (circular or elliptical arcs) and free-form pieces evaluated by a
// function (splines). Every AcDbCurve answers its point, distance and
// parameter queries, its extents and its intersections through one of these.
#pragma once

#include <functional>
#include <vector>

#include "arx/acarray.h"
#include "arx/dbextents.h"

class AcDbCurve;

namespace kelhost::geom {

struct Piece {
  enum Kind { kLine, kConic, kFree };
  Kind kind = kLine;
  double t0 = 0.0, t1 = 1.0;  // parameter range
  // Line: from a (at t0) to b (at t1).
  AcGePoint3d a, b;
  // Conic: center + cos(th) u + sin(th) v, th running linearly from
  // angle0 (at t0) through sweep (signed) to t1.
  AcGePoint3d center;
  AcGeVector3d u, v;
  double angle0 = 0.0, sweep = 0.0;
  // Free: position and first derivative by parameter.
  std::function<AcGePoint3d(double)> at;
  std::function<AcGeVector3d(double)> deriv;

  AcGePoint3d point(double t) const;
  AcGeVector3d derivative(double t) const;
  // A conic whose axes have one length and are perpendicular.
  bool isCircular() const;
  double radius() const { return u.length(); }
  AcGeVector3d planeNormal() const { return u.crossProduct(v).normal(); }
  // Length from t0 to t.
  double lengthTo(double t) const;
  double length() const { return lengthTo(t1); }
};

class Path {
 public:
  void addLine(const AcGePoint3d& a, const AcGePoint3d& b, double t0, double t1);
  void addConic(const AcGePoint3d& center, const AcGeVector3d& u, const AcGeVector3d& v, double angle0,
                double sweep, double t0, double t1);
  void addFree(std::function<AcGePoint3d(double)> at, std::function<AcGeVector3d(double)> deriv, double t0,
               double t1);
  // The same path placed by an affine transformation.
  Path transformed(const AcGeMatrix3d& m) const;
  bool empty() const { return mPieces.empty(); }
  const std::vector<Piece>& pieces() const { return mPieces; }

  double startParam() const { return mPieces.empty() ? 0.0 : mPieces.front().t0; }
  double endParam() const { return mPieces.empty() ? 0.0 : mPieces.back().t1; }
  // False when t lies outside the range (within a small tolerance).
  bool pointAt(double t, AcGePoint3d& p) const;
  bool derivAt(double t, AcGeVector3d& d) const;
  bool distAt(double t, double& dist) const;
  bool paramAtDist(double dist, double& t) const;
  double length() const;
  // The parameter of the point of the path nearest p.
  double closestParam(const AcGePoint3d& p) const;
  void extents(AcDbExtents& ext) const;

 private:
  // The piece holding t; null outside the range.
  const Piece* pieceAt(double& t) const;
  // The distance along the path to the start of each piece, and the whole
  // length last: measured once, on the first query that needs it.
  const std::vector<double>& starts() const;
  std::vector<Piece> mPieces;
  mutable std::vector<double> mStarts;
};

// The path of a curve: built anew each time, except for a curve of a
// database open only for reading, whose path is kept until the curve is
// opened for write or its database goes (the last such curve only). Null
// when the curve has no geometry; scratch holds a path built anew.
const Path* PathOf(const AcDbCurve& curve, Path& scratch);

// Where two paths meet, in WCS, appended to points; each may be extended
// beyond its ends (lines as far as they go, circular and elliptical arcs
// to the full curve; free-form pieces never). Lines against circles and
// ellipses are solved exactly, other pairs numerically: chords narrow
// down the crossings, then Newton's method on both parameters refines
// them.
void Intersect(const Path& p1, bool extend1, const Path& p2, bool extend2, AcGePoint3dArray& points);

}  // namespace kelhost::geom
