#include "db/curve_path.h"

#include <algorithm>
#include <cmath>

namespace kelhost::geom {
namespace {

constexpr double kTol = 1e-9;
constexpr double kTwoPi = 6.283185307179586476925;

// Five-point Gauss-Legendre over n equal steps: lengths of free and
// elliptical pieces.
double Integrate(const std::function<double(double)>& f, double a, double b, int n = 64) {
  static const double x[5] = {0.0, -0.5384693101056831, 0.5384693101056831, -0.9061798459386640, 0.9061798459386640};
  static const double w[5] = {0.5688888888888889, 0.4786286704993665, 0.4786286704993665, 0.2369268850561891,
                              0.2369268850561891};
  const double h = (b - a) / n;
  double sum = 0.0;
  for (int i = 0; i < n; ++i) {
    const double mid = a + h * (i + 0.5);
    for (int k = 0; k < 5; ++k) sum += w[k] * f(mid + 0.5 * h * x[k]);
  }
  return sum * 0.5 * h;
}

}  // namespace

AcGePoint3d Piece::point(double t) const {
  const double span = t1 - t0;
  const double f = span != 0.0 ? (t - t0) / span : 0.0;
  switch (kind) {
    case kLine: return a + (b - a) * f;
    case kConic: {
      const double th = angle0 + sweep * f;
      return center + u * std::cos(th) + v * std::sin(th);
    }
    case kFree: return at(t);
  }
  return a;
}

AcGeVector3d Piece::derivative(double t) const {
  const double span = t1 - t0;
  if (span == 0.0) return {};
  switch (kind) {
    case kLine: return (b - a) / span;
    case kConic: {
      const double th = angle0 + sweep * (t - t0) / span;
      return (u * -std::sin(th) + v * std::cos(th)) * (sweep / span);
    }
    case kFree: return deriv(t);
  }
  return {};
}

bool Piece::isCircular() const {
  return kind == kConic && std::fabs(u.length() - v.length()) <= kTol * std::max(1.0, u.length());
}

double Piece::lengthTo(double t) const {
  if (t == t0) return 0.0;
  if (kind == kLine) return a.distanceTo(b) * (t - t0) / (t1 - t0);
  if (isCircular()) return radius() * std::fabs(sweep) * (t - t0) / (t1 - t0);
  return Integrate([this](double s) { return derivative(s).length(); }, t0, t);
}

void Path::addLine(const AcGePoint3d& a, const AcGePoint3d& b, double t0, double t1) {
  Piece p;
  p.kind = Piece::kLine;
  p.a = a;
  p.b = b;
  p.t0 = t0;
  p.t1 = t1;
  mPieces.push_back(p);
}

void Path::addConic(const AcGePoint3d& center, const AcGeVector3d& u, const AcGeVector3d& v, double angle0,
                    double sweep, double t0, double t1) {
  Piece p;
  p.kind = Piece::kConic;
  p.center = center;
  p.u = u;
  p.v = v;
  p.angle0 = angle0;
  p.sweep = sweep;
  p.t0 = t0;
  p.t1 = t1;
  mPieces.push_back(p);
}

void Path::addFree(std::function<AcGePoint3d(double)> at, std::function<AcGeVector3d(double)> deriv, double t0,
                   double t1) {
  Piece p;
  p.kind = Piece::kFree;
  p.at = std::move(at);
  p.deriv = std::move(deriv);
  p.t0 = t0;
  p.t1 = t1;
  mPieces.push_back(p);
}

Path Path::transformed(const AcGeMatrix3d& m) const {
  Path out;
  for (Piece p : mPieces) {
    p.a = m * p.a;
    p.b = m * p.b;
    p.center = m * p.center;
    p.u = m * p.u;
    p.v = m * p.v;
    if (p.kind == Piece::kFree) {
      auto at = p.at;
      auto deriv = p.deriv;
      p.at = [at, m](double t) { return m * at(t); };
      p.deriv = [deriv, m](double t) { return m * deriv(t); };
    }
    out.mPieces.push_back(p);
  }
  return out;
}

const Piece* Path::pieceAt(double& t) const {
  if (mPieces.empty()) return nullptr;
  const double slack = kTol * std::max(1.0, std::fabs(endParam() - startParam()));
  if (t < startParam() - slack || t > endParam() + slack) return nullptr;
  t = std::clamp(t, startParam(), endParam());
  for (const Piece& p : mPieces)
    if (t <= p.t1) return &p;
  return &mPieces.back();
}

bool Path::pointAt(double t, AcGePoint3d& p) const {
  const Piece* piece = pieceAt(t);
  if (piece) p = piece->point(t);
  return piece != nullptr;
}

bool Path::derivAt(double t, AcGeVector3d& d) const {
  const Piece* piece = pieceAt(t);
  if (piece) d = piece->derivative(t);
  return piece != nullptr;
}

bool Path::distAt(double t, double& dist) const {
  const Piece* piece = pieceAt(t);
  if (!piece) return false;
  dist = 0.0;
  for (const Piece& p : mPieces) {
    if (&p == piece) break;
    dist += p.length();
  }
  dist += piece->lengthTo(t);
  return true;
}

double Path::length() const {
  double total = 0.0;
  for (const Piece& p : mPieces) total += p.length();
  return total;
}

bool Path::paramAtDist(double dist, double& t) const {
  const double total = length();
  const double slack = kTol * std::max(1.0, total);
  if (mPieces.empty() || dist < -slack || dist > total + slack) return false;
  dist = std::clamp(dist, 0.0, total);
  for (const Piece& p : mPieces) {
    const double len = p.length();
    if (dist > len && &p != &mPieces.back()) {
      dist -= len;
      continue;
    }
    if (len <= 0.0) {
      t = p.t0;
    } else if (p.kind == Piece::kLine || p.isCircular()) {
      t = p.t0 + (p.t1 - p.t0) * std::min(dist / len, 1.0);
    } else {
      double lo = p.t0, hi = p.t1;  // length grows with the parameter
      for (int i = 0; i < 60; ++i) {
        const double mid = 0.5 * (lo + hi);
        (p.lengthTo(mid) < dist ? lo : hi) = mid;
      }
      t = 0.5 * (lo + hi);
    }
    return true;
  }
  return false;
}

double Path::closestParam(const AcGePoint3d& q) const {
  double bestT = startParam(), bestD = 1e300;
  auto consider = [&](const Piece& p, double t) {
    const double d = p.point(t).distanceTo(q);
    if (d < bestD) bestD = d, bestT = t;
  };
  for (const Piece& p : mPieces) {
    consider(p, p.t0);
    consider(p, p.t1);
    if (p.kind == Piece::kLine) {
      const AcGeVector3d d = p.b - p.a;
      if (d.lengthSqrd() > 0) {
        const double f = std::clamp((q - p.a).dotProduct(d) / d.lengthSqrd(), 0.0, 1.0);
        consider(p, p.t0 + (p.t1 - p.t0) * f);
      }
      continue;
    }
    if (p.isCircular() && p.sweep != 0.0) {
      const AcGeVector3d w = q - p.center;
      const double th = std::atan2(w.dotProduct(p.v), w.dotProduct(p.u));
      double delta = p.sweep > 0 ? th - p.angle0 : p.angle0 - th;
      delta = std::fmod(delta, kTwoPi);
      if (delta < 0) delta += kTwoPi;
      if (delta <= std::fabs(p.sweep)) consider(p, p.t0 + (p.t1 - p.t0) * delta / std::fabs(p.sweep));
      continue;
    }
    // Sampled, then narrowed by golden-section search around the best sample.
    const int n = 256;
    const double h = (p.t1 - p.t0) / n;
    int best = 0;
    double bd = 1e300;
    for (int i = 0; i <= n; ++i) {
      const double d = p.point(p.t0 + h * i).distanceTo(q);
      if (d < bd) bd = d, best = i;
    }
    double lo = p.t0 + h * std::max(best - 1, 0), hi = p.t0 + h * std::min(best + 1, n);
    const double g = 0.6180339887498949;
    for (int i = 0; i < 80; ++i) {
      const double m1 = hi - g * (hi - lo), m2 = lo + g * (hi - lo);
      if (p.point(m1).distanceTo(q) < p.point(m2).distanceTo(q)) hi = m2;
      else lo = m1;
    }
    consider(p, 0.5 * (lo + hi));
  }
  return bestT;
}

void Path::extents(AcDbExtents& ext) const {
  for (const Piece& p : mPieces) {
    ext.addPoint(p.point(p.t0));
    ext.addPoint(p.point(p.t1));
    if (p.kind == Piece::kConic) {
      // Extremes along each axis: where the derivative of that coordinate
      // vanishes, if the arc's sweep reaches there.
      for (unsigned k = 0; k < 3; ++k) {
        const double th = std::atan2(p.v[k], p.u[k]);
        for (double cand : {th, th + kTwoPi / 2}) {
          double delta = p.sweep > 0 ? cand - p.angle0 : p.angle0 - cand;
          delta = std::fmod(delta, kTwoPi);
          if (delta < 0) delta += kTwoPi;
          if (delta <= std::fabs(p.sweep)) ext.addPoint(p.center + p.u * std::cos(cand) + p.v * std::sin(cand));
        }
      }
    } else if (p.kind == Piece::kFree) {
      const int n = 512;
      for (int i = 1; i < n; ++i) ext.addPoint(p.point(p.t0 + (p.t1 - p.t0) * i / n));
    }
  }
}

// ---------------------------------------------------------------- intersections
namespace {

struct Span {
  const Piece* piece;
  bool extendStart, extendEnd;
};

// Whether the point on the conic (known to lie on its circle) is within
// its sweep, or anywhere on the circle when extended.
bool OnConic(const Span& s, const AcGePoint3d& q) {
  const Piece& p = *s.piece;
  if (s.extendStart || s.extendEnd) return true;
  const AcGeVector3d w = q - p.center;
  const double th = std::atan2(w.dotProduct(p.v) / p.v.lengthSqrd(), w.dotProduct(p.u) / p.u.lengthSqrd());
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

// Points where the line through a with direction d meets the circle;
// the line parameters are returned.
std::vector<double> LineCircle(const AcGePoint3d& a, const AcGeVector3d& d, const Piece& c) {
  std::vector<double> out;
  const AcGeVector3d n = c.planeNormal();
  const double r = c.radius();
  const double scale = std::max(1.0, r);
  const double dn = d.dotProduct(n);
  if (std::fabs(dn) <= kTol * d.length()) {
    if (std::fabs((a - c.center).dotProduct(n)) > kTol * scale) return out;
    // In the plane: |a + s d - c|^2 = r^2.
    const AcGeVector3d w = a - c.center;
    const double A = d.lengthSqrd(), B = 2 * w.dotProduct(d), C = w.lengthSqrd() - r * r;
    double disc = B * B - 4 * A * C;
    if (disc < -kTol * scale * A) return out;
    if (std::fabs(disc) <= 1e-12 * scale * scale * A) disc = 0;
    if (disc <= 0) {
      out.push_back(-B / (2 * A));
    } else {
      const double sq = std::sqrt(disc);
      out.push_back((-B - sq) / (2 * A));
      out.push_back((-B + sq) / (2 * A));
    }
    return out;
  }
  const double s = (c.center - a).dotProduct(n) / dn;
  if (std::fabs((a + d * s).distanceTo(c.center) - r) <= kTol * scale * 10) out.push_back(s);
  return out;
}

void AddUnique(AcGePoint3dArray& points, const AcGePoint3d& q) {
  for (const AcGePoint3d& p : points)
    if (p.distanceTo(q) <= 1e-8 * std::max(1.0, q.asVector().length())) return;
  points.append(q);
}

void LineLine(const Span& s1, const Span& s2, AcGePoint3dArray& out) {
  const Piece &p = *s1.piece, &q = *s2.piece;
  const AcGeVector3d d1 = p.b - p.a, d2 = q.b - q.a;
  const AcGeVector3d n = d1.crossProduct(d2);
  if (n.length() <= kTol * d1.length() * d2.length()) return;  // parallel
  const AcGeVector3d w = q.a - p.a;
  if (std::fabs(w.dotProduct(n)) / n.length() > kTol * std::max(1.0, w.length())) return;  // skew
  const double f1 = w.crossProduct(d2).dotProduct(n) / n.lengthSqrd();
  const double f2 = w.crossProduct(d1).dotProduct(n) / n.lengthSqrd();
  if (OnLine(s1, f1) && OnLine(s2, f2)) AddUnique(out, p.a + d1 * f1);
}

void LineArc(const Span& line, const Span& arc, AcGePoint3dArray& out) {
  const Piece& l = *line.piece;
  for (double f : LineCircle(l.a, l.b - l.a, *arc.piece)) {
    const AcGePoint3d q = l.a + (l.b - l.a) * f;
    if (OnLine(line, f) && OnConic(arc, q)) AddUnique(out, q);
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
    for (double f : LineCircle(a, dir, c1)) {
      const AcGePoint3d q = a + dir * f;
      if (std::fabs(q.distanceTo(c2.center) - r2) <= 1e-8 * std::max(1.0, r2)) cands.push_back(q);
    }
  }
  for (const AcGePoint3d& q : cands)
    if (OnConic(s1, q) && OnConic(s2, q)) AddUnique(out, q);
}

std::vector<Span> Spans(const Path& path, bool extend) {
  std::vector<Span> spans;
  const auto& pieces = path.pieces();
  for (size_t i = 0; i < pieces.size(); ++i)
    spans.push_back({&pieces[i], extend && i == 0, extend && i + 1 == pieces.size()});
  return spans;
}

}  // namespace

bool Intersect(const Path& p1, bool extend1, const Path& p2, bool extend2, AcGePoint3dArray& points) {
  const std::vector<Span> a = Spans(p1, extend1), b = Spans(p2, extend2);
  for (const Span& s : a)
    if (s.piece->kind == Piece::kFree || (s.piece->kind == Piece::kConic && !s.piece->isCircular())) return false;
  for (const Span& s : b)
    if (s.piece->kind == Piece::kFree || (s.piece->kind == Piece::kConic && !s.piece->isCircular())) return false;
  for (const Span& s : a)
    for (const Span& t : b) {
      const bool l1 = s.piece->kind == Piece::kLine, l2 = t.piece->kind == Piece::kLine;
      if (l1 && l2) LineLine(s, t, points);
      else if (l1) LineArc(s, t, points);
      else if (l2) LineArc(t, s, points);
      else ArcArc(s, t, points);
    }
  return true;
}

}  // namespace kelhost::geom
