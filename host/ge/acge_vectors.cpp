// Out-of-line members and constants of the AcGe value types.
#include <cmath>

#include "arx/acge.h"

AcGeTol AcGeContext::gTol;

const AcGePoint2d AcGePoint2d::kOrigin(0.0, 0.0);
const AcGePoint3d AcGePoint3d::kOrigin(0.0, 0.0, 0.0);
const AcGeVector2d AcGeVector2d::kIdentity(0.0, 0.0);
const AcGeVector2d AcGeVector2d::kXAxis(1.0, 0.0);
const AcGeVector2d AcGeVector2d::kYAxis(0.0, 1.0);
const AcGeVector3d AcGeVector3d::kIdentity(0.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kXAxis(1.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kYAxis(0.0, 1.0, 0.0);
const AcGeVector3d AcGeVector3d::kZAxis(0.0, 0.0, 1.0);

namespace {
constexpr double kPi = 3.14159265358979323846;

// The angle between two vectors from atan2 of |u x v| and u . v: accurate
// for nearly parallel vectors, where acos of the cosine is not.
double AngleBetween(double cross, double dot) { return std::atan2(std::fabs(cross), dot); }
}  // namespace

double AcGeVector2d::angle() const {
  double a = std::atan2(y, x);
  if (a < 0.0) a += 2.0 * kPi;
  return a >= 2.0 * kPi ? 0.0 : a;
}

double AcGeVector2d::angleTo(const AcGeVector2d& v) const {
  return AngleBetween(x * v.y - y * v.x, dotProduct(v));
}

AcGeVector2d AcGeVector2d::normal(const AcGeTol& tol) const {
  AcGeVector2d r(*this);
  return r.normalize(tol);
}

AcGeVector2d& AcGeVector2d::normalize(const AcGeTol& tol) {
  double len = length();
  if (len > tol.equalVector()) {
    x /= len;
    y /= len;
  }
  return *this;
}

bool AcGeVector2d::isEqualTo(const AcGeVector2d& v, const AcGeTol& tol) const {
  return (*this - v).length() <= tol.equalVector();
}

double AcGeVector3d::angleTo(const AcGeVector3d& v) const {
  return AngleBetween(crossProduct(v).length(), dotProduct(v));
}

double AcGeVector3d::angleTo(const AcGeVector3d& v, const AcGeVector3d& refVec) const {
  double a = angleTo(v);
  if (refVec.dotProduct(crossProduct(v)) >= 0.0) return a;
  return 2.0 * kPi - a;
}

AcGeVector3d AcGeVector3d::normal(const AcGeTol& tol) const {
  AcGeVector3d r(*this);
  return r.normalize(tol);
}

AcGeVector3d& AcGeVector3d::normalize(const AcGeTol& tol) {
  double len = length();
  if (len > tol.equalVector()) {
    x /= len;
    y /= len;
    z /= len;
  }
  return *this;
}

AcGeVector3d AcGeVector3d::perpVector() const {
  const double limit = 1.0 / 64.0;
  if (std::fabs(x) < limit && std::fabs(y) < limit) return kYAxis.crossProduct(*this);
  return kZAxis.crossProduct(*this);
}

bool AcGeVector3d::isParallelTo(const AcGeVector3d& v, const AcGeTol& tol) const {
  if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
  return normal(tol).crossProduct(v.normal(tol)).length() <= tol.equalVector();
}

bool AcGeVector3d::isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol) const {
  if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
  return std::fabs(normal(tol).dotProduct(v.normal(tol))) <= tol.equalVector();
}

bool AcGeVector3d::isEqualTo(const AcGeVector3d& v, const AcGeTol& tol) const {
  return (*this - v).length() <= tol.equalVector();
}
