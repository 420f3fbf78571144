// The plane-geometry kernel's records: a line or segment, a circle and an
// arc. They are plain C-style aggregates of doubles, passed by pointer or
// by value across the module boundary, so their layouts are fixed.
#pragma once

#include <cstddef>

// A line through two points, or the segment between them.
struct linfo {
  double pt1[3];  // first point, start of the segment
  double pt2[3];  // second point, end of the segment
  double dir[3];  // unit vector from pt1 to pt2 (normalised in 3D)
  // The infinite line a*x + b*y + c = 0 through both points, with
  // a = y2 - y1, b = x1 - x2, c = -(a*x1 + b*y1). Filled by gl_line_coef
  // only: gl_line leaves them alone.
  double a;
  double b;
  double c;
};

struct circ {
  double center[3];
  double radius;
};

// An arc as the platform's ARC entity stores it: counter-clockwise from
// start to end, angles in radians. It is a flat record of six doubles, so
// callers write `atype a = {{x, y, z}, r, start, end};`. Its leading fields
// are laid out as a circ: an arc converts to its circle, and the kernel's
// functions that read a circ* also take an atype* (plane.h).
struct atype {
  double center[3];
  double radius;
  double start;
  double end;

  operator circ() const { return {{center[0], center[1], center[2]}, radius}; }
};

static_assert(sizeof(linfo) == 12 * sizeof(double), "linfo is twelve doubles");
static_assert(sizeof(circ) == 4 * sizeof(double), "circ is four doubles");
static_assert(sizeof(atype) == 6 * sizeof(double), "atype is a circ and two angles");
static_assert(offsetof(atype, center) == offsetof(circ, center) && offsetof(atype, radius) == offsetof(circ, radius),
              "an atype begins with the fields of a circ");
