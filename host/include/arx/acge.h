// AcGe value types: tolerances, 2D and 3D points and vectors.
#pragma once

#include <cmath>

class AcGeTol {
 public:
  constexpr AcGeTol() = default;
  double equalPoint() const { return mEqualPoint; }
  double equalVector() const { return mEqualVector; }
  void setEqualPoint(double val) { mEqualPoint = val; }
  void setEqualVector(double val) { mEqualVector = val; }

 private:
  double mEqualPoint = 1e-10;
  double mEqualVector = 1e-12;
};

struct AcGeContext {
  static AcGeTol gTol;
};

class AcGeVector2d {
 public:
  constexpr AcGeVector2d() = default;
  constexpr AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}
  static const AcGeVector2d kIdentity, kXAxis, kYAxis;
  AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  AcGeVector2d operator-() const { return {-x, -y}; }
  AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
  AcGeVector2d operator/(double s) const { return {x / s, y / s}; }
  AcGeVector2d& operator+=(const AcGeVector2d& v) { x += v.x; y += v.y; return *this; }
  AcGeVector2d& operator-=(const AcGeVector2d& v) { x -= v.x; y -= v.y; return *this; }
  AcGeVector2d& operator*=(double s) { x *= s; y *= s; return *this; }
  double length() const { return std::hypot(x, y); }
  double lengthSqrd() const { return x * x + y * y; }
  double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
  // Angle from the X axis, in [0, 2pi).
  double angle() const;
  // Angle between the vectors, in [0, pi].
  double angleTo(const AcGeVector2d& v) const;
  // A zero-length vector (within tol) is returned or left unchanged.
  AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const;
  AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol);
  bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
  bool isEqualTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
  bool operator==(const AcGeVector2d& v) const { return isEqualTo(v); }
  bool operator!=(const AcGeVector2d& v) const { return !isEqualTo(v); }
  double operator[](unsigned i) const { return i == 0 ? x : y; }
  double& operator[](unsigned i) { return i == 0 ? x : y; }
  double x = 0.0, y = 0.0;
};

class AcGePoint2d {
 public:
  constexpr AcGePoint2d() = default;
  constexpr AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}
  static const AcGePoint2d kOrigin;
  AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
  AcGePoint2d& operator+=(const AcGeVector2d& v) { x += v.x; y += v.y; return *this; }
  AcGePoint2d& operator-=(const AcGeVector2d& v) { x -= v.x; y -= v.y; return *this; }
  AcGeVector2d asVector() const { return {x, y}; }
  double distanceTo(const AcGePoint2d& p) const { return std::hypot(x - p.x, y - p.y); }
  bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(p) <= tol.equalPoint();
  }
  bool operator==(const AcGePoint2d& p) const { return isEqualTo(p); }
  bool operator!=(const AcGePoint2d& p) const { return !isEqualTo(p); }
  AcGePoint2d& set(double xx, double yy) { x = xx; y = yy; return *this; }
  double operator[](unsigned i) const { return i == 0 ? x : y; }
  double& operator[](unsigned i) { return i == 0 ? x : y; }
  double x = 0.0, y = 0.0;
};

class AcGeVector3d {
 public:
  constexpr AcGeVector3d() = default;
  constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  static const AcGeVector3d kIdentity, kXAxis, kYAxis, kZAxis;
  AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  AcGeVector3d operator-() const { return {-x, -y, -z}; }
  AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
  AcGeVector3d& operator+=(const AcGeVector3d& v) { x += v.x; y += v.y; z += v.z; return *this; }
  AcGeVector3d& operator-=(const AcGeVector3d& v) { x -= v.x; y -= v.y; z -= v.z; return *this; }
  AcGeVector3d& operator*=(double s) { x *= s; y *= s; z *= s; return *this; }
  double length() const { return std::sqrt(x * x + y * y + z * z); }
  double lengthSqrd() const { return x * x + y * y + z * z; }
  double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
  AcGeVector3d crossProduct(const AcGeVector3d& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
  }
  // Angle between the vectors, in [0, pi].
  double angleTo(const AcGeVector3d& v) const;
  // Angle from this to v seen from the tip of refVec, in [0, 2pi).
  double angleTo(const AcGeVector3d& v, const AcGeVector3d& refVec) const;
  // A zero-length vector (within tol) is returned or left unchanged.
  AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const;
  AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol);
  // A vector perpendicular to this one, by the arbitrary-axis rule: the Y
  // axis crossed with this vector when x and y are both below 1/64, else
  // the Z axis crossed with it (not normalized).
  AcGeVector3d perpVector() const;
  // Parallel / perpendicular within tol.equalVector() on the unit vectors;
  // false when either vector has zero length.
  bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
  bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
  bool operator==(const AcGeVector3d& v) const { return isEqualTo(v); }
  bool operator!=(const AcGeVector3d& v) const { return !isEqualTo(v); }
  AcGeVector3d& set(double xx, double yy, double zz) { x = xx; y = yy; z = zz; return *this; }
  AcGeVector2d convert2d() const { return {x, y}; }
  double operator[](unsigned i) const { return i == 0 ? x : (i == 1 ? y : z); }
  double& operator[](unsigned i) { return i == 0 ? x : (i == 1 ? y : z); }
  double x = 0.0, y = 0.0, z = 0.0;
};

class AcGePoint3d {
 public:
  constexpr AcGePoint3d() = default;
  constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  static const AcGePoint3d kOrigin;
  AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
  AcGePoint3d& operator+=(const AcGeVector3d& v) { x += v.x; y += v.y; z += v.z; return *this; }
  AcGePoint3d& operator-=(const AcGeVector3d& v) { x -= v.x; y -= v.y; z -= v.z; return *this; }
  AcGeVector3d asVector() const { return {x, y, z}; }
  double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
  bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(p) <= tol.equalPoint();
  }
  bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
  bool operator!=(const AcGePoint3d& p) const { return !isEqualTo(p); }
  AcGePoint3d& set(double xx, double yy, double zz) { x = xx; y = yy; z = zz; return *this; }
  AcGePoint2d convert2d() const { return {x, y}; }
  double operator[](unsigned i) const { return i == 0 ? x : (i == 1 ? y : z); }
  double& operator[](unsigned i) { return i == 0 ? x : (i == 1 ? y : z); }
  double x = 0.0, y = 0.0, z = 0.0;
};

inline AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }
inline AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }

// The platform's conversions between AcGe points and ads_point arrays.
inline const AcGePoint3d& asPnt3d(const double* p) { return *reinterpret_cast<const AcGePoint3d*>(p); }
inline const AcGePoint2d& asPnt2d(const double* p) { return *reinterpret_cast<const AcGePoint2d*>(p); }
inline const AcGeVector3d& asVec3d(const double* p) { return *reinterpret_cast<const AcGeVector3d*>(p); }
inline double* asDblArray(const AcGePoint3d& p) { return const_cast<double*>(&p.x); }
inline double* asDblArray(const AcGeVector3d& v) { return const_cast<double*>(&v.x); }
inline double* asDblArray(const AcGePoint2d& p) { return const_cast<double*>(&p.x); }
