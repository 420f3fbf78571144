// The plane-geometry kernel's records: a line or segment, a circle and an
// arc. They are plain C-style aggregates of doubles, passed by pointer or
// by value across the module boundary, so their layouts are fixed.
#pragma once

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
// start to end, angles in radians. Its leading fields are a circ, so an
// arc is accepted wherever a circle is.
struct atype : circ {
  double start;
  double end;
};

static_assert(sizeof(linfo) == 12 * sizeof(double), "linfo is twelve doubles");
static_assert(sizeof(circ) == 4 * sizeof(double), "circ is four doubles");
static_assert(sizeof(atype) == 6 * sizeof(double), "atype is a circ and two angles");
