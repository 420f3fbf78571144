// AcGeMatrix3d and AcDbExtents.
#include <algorithm>
#include <cmath>

#include "arx/dbextents.h"

const AcGeMatrix3d AcGeMatrix3d::kIdentity;

AcGeMatrix3d::AcGeMatrix3d() { setToIdentity(); }

AcGeMatrix3d& AcGeMatrix3d::setToIdentity() {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) entry[r][c] = r == c ? 1.0 : 0.0;
  return *this;
}

bool AcGeMatrix3d::isIdentity() const { return isEqualTo(kIdentity); }

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& m) const {
  AcGeMatrix3d out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      double s = 0.0;
      for (int k = 0; k < 4; ++k) s += entry[r][k] * m.entry[k][c];
      out.entry[r][c] = s;
    }
  return out;
}

AcGeMatrix3d& AcGeMatrix3d::postMultBy(const AcGeMatrix3d& m) { return *this = *this * m; }
AcGeMatrix3d& AcGeMatrix3d::preMultBy(const AcGeMatrix3d& m) { return *this = m * *this; }

double AcGeMatrix3d::det() const {
  // Affine matrices: the determinant of the linear part.
  const auto& e = entry;
  return e[0][0] * (e[1][1] * e[2][2] - e[1][2] * e[2][1]) - e[0][1] * (e[1][0] * e[2][2] - e[1][2] * e[2][0]) +
         e[0][2] * (e[1][0] * e[2][1] - e[1][1] * e[2][0]);
}

AcGeMatrix3d AcGeMatrix3d::inverse() const {
  // Gauss-Jordan elimination with partial pivoting on the full 4x4.
  double a[4][8];
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 8; ++c) a[r][c] = c < 4 ? entry[r][c] : (c - 4 == r ? 1.0 : 0.0);
  for (int col = 0; col < 4; ++col) {
    int pivot = col;
    for (int r = col + 1; r < 4; ++r)
      if (std::fabs(a[r][col]) > std::fabs(a[pivot][col])) pivot = r;
    if (std::fabs(a[pivot][col]) < 1e-300) return AcGeMatrix3d();
    for (int c = 0; c < 8; ++c) std::swap(a[col][c], a[pivot][c]);
    const double d = a[col][col];
    for (int c = 0; c < 8; ++c) a[col][c] /= d;
    for (int r = 0; r < 4; ++r) {
      if (r == col) continue;
      const double f = a[r][col];
      for (int c = 0; c < 8; ++c) a[r][c] -= f * a[col][c];
    }
  }
  AcGeMatrix3d out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) out.entry[r][c] = a[r][c + 4];
  return out;
}

double AcGeMatrix3d::scale() const {
  double s = 0.0;
  for (int c = 0; c < 3; ++c) s = std::max(s, AcGeVector3d(entry[0][c], entry[1][c], entry[2][c]).length());
  return s;
}

bool AcGeMatrix3d::isUniScaledOrtho() const {
  AcGeVector3d cols[3];
  for (int c = 0; c < 3; ++c) cols[c] = AcGeVector3d(entry[0][c], entry[1][c], entry[2][c]);
  const double s = cols[0].length();
  if (s < 1e-12) return false;
  const double tol = 1e-9 * s * s;
  for (int i = 0; i < 3; ++i) {
    if (std::fabs(cols[i].lengthSqrd() - s * s) > tol) return false;
    for (int j = i + 1; j < 3; ++j)
      if (std::fabs(cols[i].dotProduct(cols[j])) > tol) return false;
  }
  return true;
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& v) {
  setToIdentity();
  entry[0][3] = v.x;
  entry[1][3] = v.y;
  entry[2][3] = v.z;
  return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
  setToIdentity();
  if (axis.isZeroLength()) return *this;
  const AcGeVector3d u = axis.normal();
  const double c = std::cos(angle), s = std::sin(angle), t = 1.0 - c;
  double r[3][3] = {{t * u.x * u.x + c, t * u.x * u.y - s * u.z, t * u.x * u.z + s * u.y},
                    {t * u.x * u.y + s * u.z, t * u.y * u.y + c, t * u.y * u.z - s * u.x},
                    {t * u.x * u.z - s * u.y, t * u.y * u.z + s * u.x, t * u.z * u.z + c}};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) entry[i][j] = r[i][j];
    // Keeps the centre fixed: p' = R (p - c) + c.
    entry[i][3] = center[i] - (r[i][0] * center.x + r[i][1] * center.y + r[i][2] * center.z);
  }
  return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double scale, const AcGePoint3d& center) {
  setToIdentity();
  for (int i = 0; i < 3; ++i) {
    entry[i][i] = scale;
    entry[i][3] = center[i] * (1.0 - scale);
  }
  return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& point) { return setToScaling(-1.0, point); }

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& p, const AcGeVector3d& planeNormal) {
  setToIdentity();
  if (planeNormal.isZeroLength()) return *this;
  const AcGeVector3d n = planeNormal.normal();
  const double d = n.dotProduct(p.asVector());
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) entry[i][j] = (i == j ? 1.0 : 0.0) - 2.0 * n[i] * n[j];
    entry[i][3] = 2.0 * d * n[i];
  }
  return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& o, const AcGeVector3d& x, const AcGeVector3d& y,
                                           const AcGeVector3d& z) {
  setToIdentity();
  for (int i = 0; i < 3; ++i) {
    entry[i][0] = x[i];
    entry[i][1] = y[i];
    entry[i][2] = z[i];
    entry[i][3] = o[i];
  }
  return *this;
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& v) { return AcGeMatrix3d().setToTranslation(v); }
AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
  return AcGeMatrix3d().setToRotation(angle, axis, center);
}
AcGeMatrix3d AcGeMatrix3d::scaling(double scale, const AcGePoint3d& center) {
  return AcGeMatrix3d().setToScaling(scale, center);
}
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePoint3d& p, const AcGeVector3d& n) {
  return AcGeMatrix3d().setToMirroring(p, n);
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
  const AcGeVector3d n = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
  const AcGeVector3d x = n.perpVector().normal();
  return AcGeMatrix3d().setCoordSystem(AcGePoint3d::kOrigin, x, n.crossProduct(x), n);
}

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol) const {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (std::fabs(entry[r][c] - m.entry[r][c]) > tol.equalPoint()) return false;
  return true;
}

AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
  const auto& e = m.entry;
  return {e[0][0] * p.x + e[0][1] * p.y + e[0][2] * p.z + e[0][3],
          e[1][0] * p.x + e[1][1] * p.y + e[1][2] * p.z + e[1][3],
          e[2][0] * p.x + e[2][1] * p.y + e[2][2] * p.z + e[2][3]};
}

AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) {
  const auto& e = m.entry;
  return {e[0][0] * v.x + e[0][1] * v.y + e[0][2] * v.z, e[1][0] * v.x + e[1][1] * v.y + e[1][2] * v.z,
          e[2][0] * v.x + e[2][1] * v.y + e[2][2] * v.z};
}

// ---------------------------------------------------------------- extents
AcDbExtents::AcDbExtents() = default;
AcDbExtents::AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : mMin(min), mMax(max), mEmpty(false) {}

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& min, const AcGePoint3d& max) {
  if (min.x > max.x || min.y > max.y || min.z > max.z) return Acad::eInvalidExtents;
  mMin = min;
  mMax = max;
  mEmpty = false;
  return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& pt) {
  if (mEmpty) {
    mMin = mMax = pt;
    mEmpty = false;
    return;
  }
  for (unsigned i = 0; i < 3; ++i) {
    mMin[i] = std::min(mMin[i], pt[i]);
    mMax[i] = std::max(mMax[i], pt[i]);
  }
}

void AcDbExtents::addExt(const AcDbExtents& src) {
  if (src.mEmpty) return;
  addPoint(src.mMin);
  addPoint(src.mMax);
}

Acad::ErrorStatus AcDbExtents::transformBy(const AcGeMatrix3d& mat) {
  if (mEmpty) return Acad::eOk;
  AcDbExtents out;
  for (int i = 0; i < 8; ++i)
    out.addPoint(mat * AcGePoint3d(i & 1 ? mMax.x : mMin.x, i & 2 ? mMax.y : mMin.y, i & 4 ? mMax.z : mMin.z));
  *this = out;
  return Acad::eOk;
}
