// The ellipse: its parameters and angles, its geometry and its DXF groups.
#include <cmath>

#include "arx/dbelipse.h"
#include "db/curve_geometry.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;
using kelhost::geom::kPi;

KELHOST_RX_DEFINE(AcDbEllipse, AcDbCurve, L"ELLIPSE")

namespace {

constexpr double kTwoPi = 2 * kPi;
constexpr double kMinRatio = 1e-6;
// How far from perpendicular a major axis may lean on the normal (cosine).
constexpr double kSkew = 1e-6;
// Sweeps this close to zero or a full turn are a full turn.
constexpr double kFullTurnSlack = 1e-10;

// value moved by whole turns to lie within half a turn of reference.
double NearestTurn(double value, double reference) {
  return value + kTwoPi * std::round((reference - value) / kTwoPi);
}

// The counter-clockwise sweep from start to end, in (0, 2pi].
double Sweep(double start, double end) {
  double s = std::fmod(end - start, kTwoPi);
  if (s < 0) s += kTwoPi;
  if (s <= kFullTurnSlack || s >= kTwoPi - kFullTurnSlack) s = kTwoPi;
  return s;
}

bool RatioInRange(double r) { return r >= kMinRatio && r <= 1.0 + 1e-9; }

bool AxesUsable(const AcGeVector3d& normal, const AcGeVector3d& major) {
  if (normal.isZeroLength() || major.isZeroLength()) return false;
  return std::fabs(normal.normal().dotProduct(major.normal())) <= kSkew;
}

}  // namespace

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
                         double radiusRatio, double startAngle, double endAngle) {
  set(center, unitNormal, majorAxis, radiusRatio, startAngle, endAngle);
}

AcGeVector3d AcDbEllipse::minorAxis() const { return mNormal.normal().crossProduct(mMajor) * mRatio; }

Acad::ErrorStatus AcDbEllipse::setCenter(const AcGePoint3d& center) { KELHOST_SET(mCenter, center); }

Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
  if (!kelhost::db::Finite(ratio)) return Acad::eInvalidInput;
  if (!RatioInRange(ratio)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  // The arc keeps its parameters (the points at its ends move with the
  // minor axis), as the stored form has it.
  mRatio = std::min(ratio, 1.0);
  return Acad::eOk;
}

double AcDbEllipse::paramAtAngle(double angle) const {
  return NearestTurn(std::atan2(std::sin(angle), mRatio * std::cos(angle)), angle);
}

double AcDbEllipse::angleAtParam(double param) const {
  return NearestTurn(std::atan2(mRatio * std::sin(param), std::cos(param)), param);
}

double AcDbEllipse::startAngle() const { return angleAtParam(mStartParam); }
double AcDbEllipse::endAngle() const { return angleAtParam(mEndParam); }

namespace {
// Start in [0, 2pi) and the end after it, kept within [0, 2pi] unless
// the ellipse is full and starts past zero.
void Normalize(double& start, double& end) {
  const double sweep = Sweep(start, end);
  start = std::fmod(start, kTwoPi);
  if (start < 0) start += kTwoPi;
  end = start + sweep;
  if (end > kTwoPi + kFullTurnSlack && sweep < kTwoPi) end -= kTwoPi;
}
}  // namespace

Acad::ErrorStatus AcDbEllipse::setStartParam(double param) {
  if (!kelhost::db::Finite(param)) return Acad::eInvalidInput;
  if (!std::isfinite(param)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  // A full ellipse keeps its extent: moving its start moves its end.
  const bool full = isClosed();
  mStartParam = param;
  if (full) mEndParam = param + kTwoPi;
  Normalize(mStartParam, mEndParam);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::setEndParam(double param) {
  if (!kelhost::db::Finite(param)) return Acad::eInvalidInput;
  if (!std::isfinite(param)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mEndParam = param;
  Normalize(mStartParam, mEndParam);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::setStartAngle(double angle) { return setStartParam(paramAtAngle(angle)); }
Acad::ErrorStatus AcDbEllipse::setEndAngle(double angle) { return setEndParam(paramAtAngle(angle)); }

Acad::ErrorStatus AcDbEllipse::get(AcGePoint3d& center, AcGeVector3d& unitNormal, AcGeVector3d& majorAxis,
                                   double& radiusRatio, double& startAngle, double& endAngle) const {
  center = mCenter;
  unitNormal = mNormal.normal();
  majorAxis = mMajor;
  radiusRatio = mRatio;
  startAngle = this->startAngle();
  endAngle = this->endAngle();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                                   const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                                   double endAngle) {
  if (!AxesUsable(unitNormal, majorAxis) || !RatioInRange(radiusRatio) || !std::isfinite(startAngle) ||
      !std::isfinite(endAngle))
    return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mCenter = center;
  mNormal = unitNormal.normal();
  mMajor = majorAxis;
  mRatio = std::min(radiusRatio, 1.0);
  mStartParam = paramAtAngle(startAngle);
  // Angles a whole number of turns apart (equal ones too) make a full
  // ellipse; otherwise the end follows the start.
  const bool full = Sweep(startAngle, endAngle) == kTwoPi;
  mEndParam = full ? mStartParam + kTwoPi : paramAtAngle(endAngle);
  Normalize(mStartParam, mEndParam);
  return Acad::eOk;
}

bool AcDbEllipse::isClosed() const { return Sweep(mStartParam, mEndParam) == kTwoPi; }

bool AcDbEllipse::buildPath(kelhost::geom::Path& path) const {
  if (isNull()) return false;
  const double sweep = Sweep(mStartParam, mEndParam);
  path.addConic(mCenter, mMajor, minorAxis(), mStartParam, sweep, mStartParam, mStartParam + sweep);
  return true;
}

Acad::ErrorStatus AcDbEllipse::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  // The axes' images are conjugate semi-diameters u, v of the new
  // ellipse: c + u cos t + v sin t. Its own axes lie where |u cos t +
  // v sin t| is extreme: tan 2t = 2 u.v / (u.u - v.v).
  const AcGeVector3d u = m * mMajor, v = m * minorAxis();
  const AcGeVector3d across = u.crossProduct(v);
  if (!(across.length() > 1e-300) || !std::isfinite(across.length())) return Acad::eDegenerateGeometry;
  const double twoUv = 2 * u.dotProduct(v), diff = u.lengthSqrd() - v.lengthSqrd();
  const double size = u.lengthSqrd() + v.lengthSqrd();
  // A circle's image under a similarity has no preferred axis: keep the
  // old one.
  double shift = std::fabs(twoUv) <= 1e-12 * size && std::fabs(diff) <= 1e-12 * size ? 0.0
                                                                                      : 0.5 * std::atan2(twoUv, diff);
  AcGeVector3d major = u * std::cos(shift) + v * std::sin(shift);
  AcGeVector3d minor = v * std::cos(shift) - u * std::sin(shift);
  if (minor.length() > major.length()) {
    shift += kPi / 2;
    std::swap(major, minor);
    minor = -minor;
  }
  const double ratio = minor.length() / major.length();
  if (ratio < kMinRatio) return Acad::eDegenerateGeometry;
  mCenter = m * mCenter;
  mMajor = major;
  mNormal = across.normal();
  mRatio = std::min(ratio, 1.0);
  // The same points: the new parameter is the old one less the shift.
  mStartParam -= shift;
  mEndParam -= shift;
  Normalize(mStartParam, mEndParam);
  return Acad::eOk;
}

void AcDbEllipse::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  f.subclass(L"AcDbEllipse");
  f.point(10, mCenter, Presence::kRequired);
  f.vector(11, mMajor, AcGeVector3d::kXAxis, Presence::kRequired);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
  f.real(40, mRatio, 1.0, Presence::kRequired);
  f.real(41, mStartParam, 0.0, Presence::kAlways);
  f.real(42, mEndParam, kTwoPi, Presence::kAlways);
  if (!f.reading()) return;
  if (!RatioInRange(mRatio)) f.fail(L"the ratio of the axes in group 40 must be from 1e-6 to 1");
  if (!AxesUsable(mNormal, mMajor)) f.fail(L"the major axis (group 11) must be perpendicular to the normal (210)");
  if (!std::isfinite(mStartParam) || !std::isfinite(mEndParam)) f.fail(L"bad parameter in group 41 or 42");
}
