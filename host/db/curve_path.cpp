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
  // Equal axes at right angles: a circle (a transformed one may have
  // equal but skewed axes: an ellipse).
  const double r = std::max(1.0, u.length());
  return kind == kConic && std::fabs(u.length() - v.length()) <= kTol * r &&
         std::fabs(u.dotProduct(v)) <= kTol * r * r;
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
  mStarts.clear();
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
  mStarts.clear();
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
  mStarts.clear();
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
  // The first piece that ends at t or after it (pieces follow each other).
  const auto it = std::lower_bound(mPieces.begin(), mPieces.end(), t,
                                   [](const Piece& p, double value) { return p.t1 < value; });
  return it == mPieces.end() ? &mPieces.back() : &*it;
}

const std::vector<double>& Path::starts() const {
  if (mStarts.size() != mPieces.size() + 1) {
    mStarts.assign(1, 0.0);
    for (const Piece& p : mPieces) mStarts.push_back(mStarts.back() + p.length());
  }
  return mStarts;
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
  dist = starts()[static_cast<std::size_t>(piece - mPieces.data())] + piece->lengthTo(t);
  return true;
}

double Path::length() const { return starts().back(); }

bool Path::paramAtDist(double dist, double& t) const {
  const double total = length();
  const double slack = kTol * std::max(1.0, total);
  if (mPieces.empty() || dist < -slack || dist > total + slack) return false;
  dist = std::clamp(dist, 0.0, total);
  // The first piece whose end lies at dist or beyond it.
  const std::vector<double>& start = starts();
  std::size_t i = static_cast<std::size_t>(std::lower_bound(start.begin() + 1, start.end(), dist) - start.begin()) - 1;
  i = std::min(i, mPieces.size() - 1);
  const Piece& p = mPieces[i];
  const double len = start[i + 1] - start[i];
  dist = std::max(dist - start[i], 0.0);
  if (len <= 0.0) {
    t = p.t0;
  } else if (p.kind == Piece::kLine || p.isCircular()) {
    t = p.t0 + (p.t1 - p.t0) * std::min(dist / len, 1.0);
  } else {
    double lo = p.t0, hi = p.t1;  // length grows with the parameter
    for (int k = 0; k < 60; ++k) {
      const double mid = 0.5 * (lo + hi);
      (p.lengthTo(mid) < dist ? lo : hi) = mid;
    }
    t = 0.5 * (lo + hi);
  }
  return true;
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
      // Extremes along each axis where that coordinate's derivative
      // changes sign between samples, found by bisection.
      const int n = 32;
      const double h = (p.t1 - p.t0) / n;
      AcGeVector3d prev = p.derivative(p.t0);
      for (int i = 1; i <= n; ++i) {
        const double a = p.t0 + h * (i - 1), b = i == n ? p.t1 : p.t0 + h * i;
        const AcGeVector3d next = p.derivative(b);
        ext.addPoint(p.point(b));
        for (unsigned k = 0; k < 3; ++k) {
          if (!(prev[k] < 0 && next[k] > 0) && !(prev[k] > 0 && next[k] < 0)) continue;
          double lo = a, hi = b;
          const bool rising = prev[k] < 0;
          for (int it = 0; it < 60; ++it) {
            const double mid = 0.5 * (lo + hi);
            ((p.derivative(mid)[k] < 0) == rising ? lo : hi) = mid;
          }
          ext.addPoint(p.point(0.5 * (lo + hi)));
        }
        prev = next;
      }
    }
  }
}
}  // namespace kelhost::geom
