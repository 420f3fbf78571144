// Where two paths meet: exact answers for lines against lines, circles
// and ellipses; a numeric search for every other pair of pieces.
#include <algorithm>
#include <cmath>

#include "db/curve_path.h"

namespace kelhost::geom {
namespace {

constexpr double kTol = 1e-9;
constexpr double kTwoPi = 6.283185307179586476925;

struct Span {
  const Piece* piece;
  bool extendStart, extendEnd;
  bool extended() const { return extendStart || extendEnd; }
};

// Coordinates of w in the conic's frame: w = x u + y v + z n with n the
// plane's unit normal (u and v need not be perpendicular after a
// non-uniform transformation).
AcGeVector3d ConicCoords(const Piece& c, const AcGeVector3d& w) {
  const AcGeVector3d n = c.planeNormal();
  const double det = c.u.dotProduct(c.v.crossProduct(n));
  return {w.dotProduct(c.v.crossProduct(n)) / det, w.dotProduct(n.crossProduct(c.u)) / det,
          w.dotProduct(c.u.crossProduct(c.v)) / det};
}

// Whether the point on the conic is within its sweep, or anywhere on the
// curve when extended.
bool OnConic(const Span& s, const AcGePoint3d& q) {
  const Piece& p = *s.piece;
  if (s.extended()) return true;
  const AcGeVector3d xy = ConicCoords(p, q - p.center);
  const double th = std::atan2(xy.y, xy.x);
  double delta = p.sweep > 0 ? th - p.angle0 : p.angle0 - th;
  delta = std::fmod(delta, kTwoPi);
  if (delta < 0) delta += kTwoPi;
  const double slack = kTol * 10;
  return delta <= std::fabs(p.sweep) + slack || delta >= kTwoPi - slack;
}

bool OnLine(const Span& s, double f) {
  const double slack = kTol * 10;
  return (s.extendStart || f >= -slack) && (s.extendEnd || f <= 1 + slack);
}

// Line parameters where the line through a with direction d meets the
// unit circle about the origin in the XY plane; scale widens the
// tolerances for circles larger than a unit.
std::vector<double> LineUnitCircle(const AcGeVector3d& a, const AcGeVector3d& d, double scale) {
  std::vector<double> out;
  if (std::fabs(d.z) <= kTol * d.length()) {
    if (std::fabs(a.z) > kTol * scale) return out;
    // In the plane: |a + s d|^2 = 1 (z dropped).
    const double A = d.x * d.x + d.y * d.y, B = 2 * (a.x * d.x + a.y * d.y), C = a.x * a.x + a.y * a.y - 1;
    if (A <= 0) return out;
    double disc = B * B - 4 * A * C;
    if (disc < -kTol * A) return out;
    if (std::fabs(disc) <= 1e-12 * A) disc = 0;
    if (disc <= 0) {
      out.push_back(-B / (2 * A));
    } else {
      const double sq = std::sqrt(disc);
      out.push_back((-B - sq) / (2 * A));
      out.push_back((-B + sq) / (2 * A));
    }
    return out;
  }
  const double s = -a.z / d.z;
  const double x = a.x + d.x * s, y = a.y + d.y * s;
  if (std::fabs(std::hypot(x, y) - 1) <= kTol * 10 * scale) out.push_back(s);
  return out;
}

// Points where the line through a with direction d meets the circle or
// ellipse; the line parameters are returned. Mapped to the conic's frame
// the conic is the unit circle and the line stays a line with the same
// parameters.
std::vector<double> LineConic(const AcGePoint3d& a, const AcGeVector3d& d, const Piece& c) {
  const double r = std::max({c.u.length(), c.v.length(), 1e-300});
  AcGeVector3d a2 = ConicCoords(c, a - c.center), d2 = ConicCoords(c, d);
  // The height off the plane in the same unit as the axes.
  a2.z /= r;
  d2.z /= r;
  return LineUnitCircle(a2, d2, std::max(1.0, r) / r);
}

void AddUnique(AcGePoint3dArray& points, const AcGePoint3d& q, double within) {
  for (const AcGePoint3d& p : points)
    if (p.distanceTo(q) <= within) return;
  points.append(q);
}

double ExactTolerance(const AcGePoint3d& q) { return 1e-8 * std::max(1.0, q.asVector().length()); }

void LineLine(const Span& s1, const Span& s2, AcGePoint3dArray& out) {
  const Piece &p = *s1.piece, &q = *s2.piece;
  const AcGeVector3d d1 = p.b - p.a, d2 = q.b - q.a;
  const AcGeVector3d n = d1.crossProduct(d2);
  if (n.length() <= kTol * d1.length() * d2.length()) return;  // parallel
  const AcGeVector3d w = q.a - p.a;
  if (std::fabs(w.dotProduct(n)) / n.length() > kTol * std::max(1.0, w.length())) return;  // skew
  const double f1 = w.crossProduct(d2).dotProduct(n) / n.lengthSqrd();
  const double f2 = w.crossProduct(d1).dotProduct(n) / n.lengthSqrd();
  if (OnLine(s1, f1) && OnLine(s2, f2)) AddUnique(out, p.a + d1 * f1, ExactTolerance(p.a + d1 * f1));
}

void LineArc(const Span& line, const Span& arc, AcGePoint3dArray& out) {
  const Piece& l = *line.piece;
  for (double f : LineConic(l.a, l.b - l.a, *arc.piece)) {
    const AcGePoint3d q = l.a + (l.b - l.a) * f;
    if (OnLine(line, f) && OnConic(arc, q)) AddUnique(out, q, ExactTolerance(q));
  }
}

void ArcArc(const Span& s1, const Span& s2, AcGePoint3dArray& out) {
  const Piece &c1 = *s1.piece, &c2 = *s2.piece;
  const AcGeVector3d n1 = c1.planeNormal(), n2 = c2.planeNormal();
  const double r1 = c1.radius(), r2 = c2.radius();
  std::vector<AcGePoint3d> cands;
  if (n1.isParallelTo(n2, AcGeTol())) {
    const AcGeVector3d w = c2.center - c1.center;
    if (std::fabs(w.dotProduct(n1)) > kTol * std::max(1.0, r1)) return;  // parallel planes
    const double d = w.length();
    if (d <= kTol) return;  // concentric
    const double x = (d * d + r1 * r1 - r2 * r2) / (2 * d);
    double h2 = r1 * r1 - x * x;
    if (h2 < -kTol * std::max(1.0, r1 * r1)) return;
    const AcGeVector3d ex = w / d, ey = n1.crossProduct(ex);
    const AcGePoint3d base = c1.center + ex * x;
    if (h2 <= 1e-12 * std::max(1.0, r1 * r1)) {
      cands.push_back(base);
    } else {
      const double h = std::sqrt(h2);
      cands.push_back(base + ey * h);
      cands.push_back(base - ey * h);
    }
  } else {
    // The line where the planes meet, then that line against the first circle.
    const AcGeVector3d dir = n1.crossProduct(n2);
    const double h1 = n1.dotProduct(c1.center.asVector()), h2 = n2.dotProduct(c2.center.asVector());
    const double dd = n1.dotProduct(n2);
    const double k = 1 - dd * dd;
    const AcGePoint3d a = AcGePoint3d::kOrigin + n1 * ((h1 - h2 * dd) / k) + n2 * ((h2 - h1 * dd) / k);
    for (double f : LineConic(a, dir, c1)) {
      const AcGePoint3d q = a + dir * f;
      if (std::fabs(q.distanceTo(c2.center) - r2) <= 1e-8 * std::max(1.0, r2)) cands.push_back(q);
    }
  }
  for (const AcGePoint3d& q : cands)
    if (OnConic(s1, q) && OnConic(s2, q)) AddUnique(out, q, ExactTolerance(q));
}

// ---------------------------------------------------------------- numeric search

// A piece as the numeric search walks it: its own parameter range, a
// line extended to cover the other curve (by its fraction from a to b),
// or a conic extended to its full turn (by its angle).
struct Track {
  enum Mode { kOwn, kLine, kTurn };
  const Piece* piece = nullptr;
  Mode mode = kOwn;
  double lo = 0.0, hi = 0.0;

  AcGePoint3d point(double s) const {
    const Piece& p = *piece;
    switch (mode) {
      case kLine: return p.a + (p.b - p.a) * s;
      case kTurn: return p.center + p.u * std::cos(s) + p.v * std::sin(s);
      case kOwn: break;
    }
    return p.point(s);
  }
  AcGeVector3d deriv(double s) const {
    const Piece& p = *piece;
    switch (mode) {
      case kLine: return p.b - p.a;
      case kTurn: return p.u * -std::sin(s) + p.v * std::cos(s);
      case kOwn: break;
    }
    return p.derivative(s);
  }
};

// Samples along a track, close enough that each chord stays near the curve.
struct Samples {
  std::vector<double> s;
  std::vector<AcGePoint3d> p;
  std::vector<double> slack;  // how far the curve may stray from chord i
};

Samples Sample(const Track& t) {
  int n = 1;
  if (t.mode == Track::kTurn) n = 96;
  else if (t.piece->kind == Piece::kConic) n = std::max(8, static_cast<int>(std::ceil(std::fabs(t.piece->sweep) / kTwoPi * 96)));
  else if (t.piece->kind == Piece::kFree) n = 48;
  Samples out;
  for (int i = 0; i <= n; ++i) {
    const double s = i == n ? t.hi : t.lo + (t.hi - t.lo) * i / n;
    out.s.push_back(s);
    out.p.push_back(t.point(s));
  }
  for (int i = 0; i < n; ++i) {
    const AcGePoint3d mid = t.point(0.5 * (out.s[i] + out.s[i + 1]));
    const AcGePoint3d chordMid = out.p[i] + (out.p[i + 1] - out.p[i]) * 0.5;
    out.slack.push_back(2 * mid.distanceTo(chordMid));
  }
  return out;
}

// The fractions along segments p0-p1 and q0-q1 of their closest points.
void ClosestOnSegments(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& q0, const AcGePoint3d& q1,
                       double& f, double& g) {
  const AcGeVector3d d1 = p1 - p0, d2 = q1 - q0, r = p0 - q0;
  const double a = d1.lengthSqrd(), e = d2.lengthSqrd(), fdot = d2.dotProduct(r);
  if (a <= 0 && e <= 0) {
    f = g = 0;
    return;
  }
  if (a <= 0) {
    f = 0;
    g = std::clamp(fdot / e, 0.0, 1.0);
    return;
  }
  const double c = d1.dotProduct(r);
  if (e <= 0) {
    g = 0;
    f = std::clamp(-c / a, 0.0, 1.0);
    return;
  }
  const double b = d1.dotProduct(d2), denom = a * e - b * b;
  f = denom > 1e-14 * a * e ? std::clamp((b * fdot - c * e) / denom, 0.0, 1.0) : 0.0;
  g = (b * f + fdot) / e;
  if (g < 0) {
    g = 0;
    f = std::clamp(-c / a, 0.0, 1.0);
  } else if (g > 1) {
    g = 1;
    f = std::clamp((b - c) / a, 0.0, 1.0);
  }
}

// Newton's method on both parameters for A(s) = B(t) (least squares, as
// the curves live in space), kept within the tracks. True when the
// curves meet there.
bool Refine(const Track& A, const Track& B, double& s, double& t, double tolerance) {
  for (int it = 0; it < 100; ++it) {
    const AcGeVector3d r = A.point(s) - B.point(t);
    const AcGeVector3d a = A.deriv(s), b = B.deriv(t);
    const double aa = a.lengthSqrd(), bb = b.lengthSqrd(), ab = a.dotProduct(b);
    // A whisker of damping keeps tangent meetings (a singular system at
    // the answer) from jumping away.
    const double damp = 1e-14 * (aa + bb);
    const double m11 = aa + damp, m22 = bb + damp, m12 = -ab;
    const double det = m11 * m22 - m12 * m12;
    if (!(det > 0)) break;
    const double r1 = -a.dotProduct(r), r2 = b.dotProduct(r);
    double ds = (r1 * m22 - m12 * r2) / det, dt = (m11 * r2 - m12 * r1) / det;
    // No step longer than a quarter of a track.
    const double capS = 0.25 * (A.hi - A.lo), capT = 0.25 * (B.hi - B.lo);
    ds = std::clamp(ds, -capS, capS);
    dt = std::clamp(dt, -capT, capT);
    const double ns = std::clamp(s + ds, A.lo, A.hi), nt = std::clamp(t + dt, B.lo, B.hi);
    const double step = std::fabs(ns - s) / std::max(1e-300, A.hi - A.lo) + std::fabs(nt - t) / std::max(1e-300, B.hi - B.lo);
    s = ns;
    t = nt;
    if (step < 1e-15) break;
  }
  return A.point(s).distanceTo(B.point(t)) <= tolerance;
}

double BoxSize(const AcDbExtents& box) { return box.isEmpty() ? 0.0 : box.minPoint().distanceTo(box.maxPoint()); }

// The stretch of an extended line that can reach the box.
Track LineTrack(const Span& span, const AcDbExtents& box) {
  const Piece& p = *span.piece;
  Track t{&p, Track::kLine, 0.0, 1.0};
  const AcGeVector3d d = p.b - p.a;
  if (d.isZeroLength() || box.isEmpty()) return t;
  const AcGePoint3d lo = box.minPoint(), hi = box.maxPoint();
  const double margin = 0.1 * BoxSize(box) + 1.0;
  double fmin = 1e300, fmax = -1e300;
  for (int corner = 0; corner < 8; ++corner) {
    const AcGePoint3d c((corner & 1) ? hi.x + margin : lo.x - margin, (corner & 2) ? hi.y + margin : lo.y - margin,
                        (corner & 4) ? hi.z + margin : lo.z - margin);
    const double f = (c - p.a).dotProduct(d) / d.lengthSqrd();
    fmin = std::min(fmin, f);
    fmax = std::max(fmax, f);
  }
  if (span.extendStart) t.lo = std::min(0.0, fmin);
  if (span.extendEnd) t.hi = std::max(1.0, fmax);
  return t;
}

Track OwnTrack(const Span& span) {
  const Piece& p = *span.piece;
  if (p.kind == Piece::kConic && span.extended()) return {&p, Track::kTurn, p.angle0, p.angle0 + kTwoPi};
  if (p.kind == Piece::kLine) return {&p, Track::kLine, 0.0, 1.0};
  return {&p, Track::kOwn, p.t0, p.t1};
}

AcDbExtents TrackBox(const Samples& s) {
  AcDbExtents box;
  for (const AcGePoint3d& p : s.p) box.addPoint(p);
  return box;
}

void Numeric(const Span& s1, const Span& s2, AcGePoint3dArray& out) {
  Track A = OwnTrack(s1), B = OwnTrack(s2);
  // An extended line need only reach as far as the other curve.
  if (A.mode == Track::kLine && s1.extended()) A = LineTrack(s1, TrackBox(Sample(B)));
  if (B.mode == Track::kLine && s2.extended()) B = LineTrack(s2, TrackBox(Sample(A)));
  if (!(A.hi > A.lo) || !(B.hi > B.lo)) return;
  const Samples sa = Sample(A), sb = Sample(B);
  const AcDbExtents boxA = TrackBox(sa), boxB = TrackBox(sb);
  const double scale = std::max({1.0, BoxSize(boxA), BoxSize(boxB), boxA.maxPoint().asVector().length(),
                                 boxB.maxPoint().asVector().length()});
  const double tolerance = 1e-9 * scale;
  for (size_t i = 0; i + 1 < sa.s.size(); ++i) {
    const AcGePoint3d &p0 = sa.p[i], &p1 = sa.p[i + 1];
    const double ga = sa.slack[i] + tolerance;
    for (size_t j = 0; j + 1 < sb.s.size(); ++j) {
      const AcGePoint3d &q0 = sb.p[j], &q1 = sb.p[j + 1];
      const double gap = ga + sb.slack[j];
      bool apart = false;
      for (unsigned k = 0; k < 3 && !apart; ++k)
        apart = std::min(p0[k], p1[k]) - gap > std::max(q0[k], q1[k]) || std::min(q0[k], q1[k]) - gap > std::max(p0[k], p1[k]);
      if (apart) continue;
      double f = 0, g = 0;
      ClosestOnSegments(p0, p1, q0, q1, f, g);
      double s = sa.s[i] + (sa.s[i + 1] - sa.s[i]) * f, t = sb.s[j] + (sb.s[j + 1] - sb.s[j]) * g;
      if (!Refine(A, B, s, t, tolerance)) continue;
      const AcGePoint3d a = A.point(s), b = B.point(t);
      const AcGePoint3d q = a + (b - a) * 0.5;
      // Where the curves touch, Newton's method closes in slowly along
      // them: answers this close are one point.
      AddUnique(out, q, 1e-6 * scale);
    }
  }
}

std::vector<Span> Spans(const Path& path, bool extend) {
  std::vector<Span> spans;
  const auto& pieces = path.pieces();
  for (size_t i = 0; i < pieces.size(); ++i) {
    // Free-form pieces are never extended.
    const bool may = extend && pieces[i].kind != Piece::kFree;
    spans.push_back({&pieces[i], may && i == 0, may && i + 1 == pieces.size()});
  }
  return spans;
}

}  // namespace

void Intersect(const Path& p1, bool extend1, const Path& p2, bool extend2, AcGePoint3dArray& points) {
  const std::vector<Span> a = Spans(p1, extend1), b = Spans(p2, extend2);
  for (const Span& s : a)
    for (const Span& t : b) {
      const Piece::Kind k1 = s.piece->kind, k2 = t.piece->kind;
      const bool l1 = k1 == Piece::kLine, l2 = k2 == Piece::kLine;
      if (l1 && l2) LineLine(s, t, points);
      else if (l1 && k2 == Piece::kConic) LineArc(s, t, points);
      else if (l2 && k1 == Piece::kConic) LineArc(t, s, points);
      else if (s.piece->isCircular() && t.piece->isCircular()) ArcArc(s, t, points);
      else Numeric(s, t, points);
    }
}

}  // namespace kelhost::geom
