#include "db/nurbs.h"

#include <algorithm>
#include <cmath>

namespace kelhost::geom {
namespace {

constexpr int kMaxDegree = 25;

// The knot span [U[s], U[s+1]) holding t, for s from p to n - 1 (n control
// points); the domain's end belongs to the last non-empty span.
size_t FindSpan(const std::vector<double>& U, int p, size_t n, double t) {
  size_t lo = static_cast<size_t>(p), hi = n;  // U[lo] <= t < U[hi]
  if (t >= U[n]) {
    size_t s = n - 1;
    while (s > lo && !(U[s] < U[s + 1])) --s;
    return s;
  }
  if (t <= U[lo]) {
    size_t s = lo;
    while (s + 1 < n && !(U[s] < U[s + 1])) ++s;
    return s;
  }
  while (hi - lo > 1) {
    const size_t mid = (lo + hi) / 2;
    (t < U[mid] ? hi : lo) = mid;
  }
  return lo;
}

// The p + 1 basis functions that do not vanish on span s at t, and their
// first derivatives (N[i] and D[i] belong to control point s - p + i).
void Basis(const std::vector<double>& U, int p, size_t s, double t, double* N, double* D) {
  // ndu: knot differences below the diagonal, basis values of rising
  // degree on and above it.
  double ndu[kMaxDegree + 1][kMaxDegree + 1];
  double left[kMaxDegree + 1], right[kMaxDegree + 1];
  ndu[0][0] = 1.0;
  for (int j = 1; j <= p; ++j) {
    left[j] = t - U[s + 1 - static_cast<size_t>(j)];
    right[j] = U[s + static_cast<size_t>(j)] - t;
    double saved = 0.0;
    for (int r = 0; r < j; ++r) {
      ndu[j][r] = right[r + 1] + left[j - r];
      const double temp = ndu[r][j - 1] / ndu[j][r];
      ndu[r][j] = saved + right[r + 1] * temp;
      saved = left[j - r] * temp;
    }
    ndu[j][j] = saved;
  }
  for (int r = 0; r <= p; ++r) {
    N[r] = ndu[r][p];
    if (!D) continue;
    double d = 0.0;
    if (r >= 1) d += ndu[r - 1][p - 1] / ndu[p][r - 1];
    if (r <= p - 1) d -= ndu[r][p - 1] / ndu[p][r];
    D[r] = p * d;
  }
}

bool Finite(const AcGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

}  // namespace

void Nurbs::evaluate(double t, AcGePoint3d* point, AcGeVector3d* deriv) const {
  const size_t n = points.size();
  t = std::clamp(t, startParam(), endParam());
  const size_t s = FindSpan(knots, degree, n, t);
  double N[kMaxDegree + 1], D[kMaxDegree + 1];
  Basis(knots, degree, s, t, N, deriv ? D : nullptr);
  // Homogeneous sums: A = sum N w P, W = sum N w and their derivatives.
  AcGeVector3d A, dA;
  double W = 0.0, dW = 0.0;
  for (int i = 0; i <= degree; ++i) {
    const size_t k = s - static_cast<size_t>(degree) + static_cast<size_t>(i);
    const double w = weights.empty() ? 1.0 : weights[k];
    const AcGeVector3d P = points[k].asVector();
    A += P * (N[i] * w);
    W += N[i] * w;
    if (deriv) {
      dA += P * (D[i] * w);
      dW += D[i] * w;
    }
  }
  const AcGeVector3d C = A / W;
  if (point) *point = AcGePoint3d::kOrigin + C;
  if (deriv) *deriv = (dA - C * dW) / W;
}

std::vector<std::pair<double, double>> Nurbs::spans() const {
  std::vector<std::pair<double, double>> out;
  for (size_t s = static_cast<size_t>(degree); s < points.size(); ++s)
    if (knots[s] < knots[s + 1]) out.emplace_back(knots[s], knots[s + 1]);
  return out;
}

std::wstring Check(const Nurbs& c) {
  if (c.degree < 1 || c.degree > kMaxDegree) return L"the degree must be from 1 to 25";
  const size_t p = static_cast<size_t>(c.degree), n = c.points.size();
  if (n < p + 1)
    return L"a spline of degree " + std::to_wstring(p) + L" needs at least " + std::to_wstring(p + 1) +
           L" control points";
  if (c.knots.size() != n + p + 1)
    return std::to_wstring(n) + L" control points of degree " + std::to_wstring(p) + L" need " +
           std::to_wstring(n + p + 1) + L" knots, not " + std::to_wstring(c.knots.size());
  for (const AcGePoint3d& pt : c.points)
    if (!Finite(pt)) return L"a control point is not a number";
  for (size_t i = 0; i < c.knots.size(); ++i) {
    if (!std::isfinite(c.knots[i])) return L"a knot is not a number";
    if (i > 0 && c.knots[i] < c.knots[i - 1]) return L"knot " + std::to_wstring(i + 1) + L" is less than the one before";
  }
  if (!(c.startParam() < c.endParam())) return L"the knots leave no parameter range";
  // A knot repeated more than the degree inside the range would break the
  // curve apart; more than degree + 1 anywhere is meaningless.
  for (size_t i = 0; i < c.knots.size();) {
    size_t j = i;
    while (j < c.knots.size() && c.knots[j] == c.knots[i]) ++j;
    const size_t run = j - i;
    const bool inside = c.knots[i] > c.startParam() && c.knots[i] < c.endParam();
    if (run > p + 1 || (inside && run > p)) return L"a knot is repeated more often than the degree allows";
    i = j;
  }
  if (!c.weights.empty()) {
    if (c.weights.size() != n)
      return std::to_wstring(n) + L" control points need as many weights, not " + std::to_wstring(c.weights.size());
    for (double w : c.weights)
      if (!(w > 0) || !std::isfinite(w)) return L"weights must be positive";
  }
  return L"";
}

namespace {

// The derivative at the first of three points of the parabola through
// them at parameters 0, h1, h1 + h2.
AcGeVector3d ParabolaStart(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, double h1, double h2) {
  const AcGeVector3d d1 = (b - a) / h1, d2 = (c - b) / h2;
  return (d1 * (2 * h1 + h2) - d2 * h1) / (h1 + h2);
}

// The same parabola's derivative at its middle point.
AcGeVector3d ParabolaMiddle(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, double h1, double h2) {
  const AcGeVector3d d1 = (b - a) / h1, d2 = (c - b) / h2;
  return (d1 * h2 + d2 * h1) / (h1 + h2);
}

}  // namespace

std::wstring InterpolateCubic(const std::vector<AcGePoint3d>& D, const AcGeVector3d& startTangent,
                              const AcGeVector3d& endTangent, Nurbs& out) {
  if (D.size() < 2) return L"a spline needs at least two fit points";
  for (const AcGePoint3d& pt : D)
    if (!Finite(pt)) return L"a fit point is not a number";
  const size_t n = D.size() - 1;
  std::vector<double> u(n + 1, 0.0), h(n + 1, 0.0);  // h[k]: chord from k - 1 to k
  for (size_t k = 1; k <= n; ++k) {
    h[k] = D[k].distanceTo(D[k - 1]);
    if (!(h[k] > 0)) return L"fit points " + std::to_wstring(k) + L" and " + std::to_wstring(k + 1) + L" coincide";
    u[k] = u[k - 1] + h[k];
  }
  // With chord-length parameters the curve moves at about unit speed: a
  // given tangent is a direction of length one.
  const double scale = std::max(1.0, u[n]);
  const bool loop = n >= 3 && D.front().distanceTo(D.back()) <= 1e-12 * scale;
  AcGeVector3d Ts, Te;
  if (!startTangent.isZeroLength()) {
    Ts = startTangent.normal();
  } else if (loop) {
    Ts = ParabolaMiddle(D[n - 1], D[0], D[1], h[n], h[1]);
  } else if (n >= 2) {
    Ts = ParabolaStart(D[0], D[1], D[2], h[1], h[2]);
  } else {
    Ts = (D[1] - D[0]) / h[1];
  }
  if (!endTangent.isZeroLength()) {
    Te = endTangent.normal();
  } else if (loop) {
    Te = Ts;
  } else if (n >= 2) {
    Te = -ParabolaStart(D[n], D[n - 1], D[n - 2], h[n], h[n - 1]);
  } else {
    Te = (D[1] - D[0]) / h[1];
  }

  Nurbs c;
  c.degree = 3;
  c.knots.assign(4, 0.0);
  for (size_t k = 1; k < n; ++k) c.knots.push_back(u[k]);
  c.knots.insert(c.knots.end(), 4, u[n]);
  c.points.assign(n + 3, AcGePoint3d());
  c.points[0] = D[0];
  c.points[1] = D[0] + Ts * (h[1] / 3);
  c.points[n + 1] = D[n] - Te * (h[n] / 3);
  c.points[n + 2] = D[n];

  // The curve through each inner fit point: row k holds control points
  // k, k + 1, k + 2; the unknowns are points 2 to n, a tridiagonal system
  // solved without pivoting (B-spline collocation matrices allow it).
  const size_t m = n - 1;
  std::vector<double> sub(m), diag(m), sup(m);
  std::vector<AcGeVector3d> rhs(m);
  for (size_t k = 1; k <= m; ++k) {
    double N[kMaxDegree + 1];
    Basis(c.knots, 3, k + 3, u[k], N, nullptr);
    const size_t r = k - 1;
    sub[r] = N[0];
    diag[r] = N[1];
    sup[r] = N[2];
    rhs[r] = D[k].asVector();
    if (k == 1) rhs[r] -= c.points[1].asVector() * N[0];
    if (k == m) rhs[r] -= c.points[n + 1].asVector() * N[2];
  }
  for (size_t r = 1; r < m; ++r) {
    const double f = sub[r] / diag[r - 1];
    diag[r] -= f * sup[r - 1];
    rhs[r] -= rhs[r - 1] * f;
  }
  for (size_t r = m; r-- > 0;) {
    AcGeVector3d x = rhs[r];
    if (r + 1 < m) x -= c.points[r + 3].asVector() * sup[r];
    c.points[r + 2] = AcGePoint3d::kOrigin + x / diag[r];
  }
  out = std::move(c);
  return L"";
}

}  // namespace kelhost::geom
