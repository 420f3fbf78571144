// The spline: NURBS data, fit data, flags, geometry and DXF groups.
#include <algorithm>
#include <cmath>

#include "db/setters.h"
#include "arx/dbspline.h"
#include "db/curve_path.h"
#include "db/nurbs.h"
#include "db/rx_define.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;
using kelhost::geom::Nurbs;

KELHOST_RX_DEFINE(AcDbSpline, AcDbCurve, L"SPLINE")

namespace {

enum Flag : short { kClosed = 1, kPeriodic = 2, kRational = 4, kPlanar = 8, kLinear = 16 };

short WithFlag(short flags, short flag, bool on) {
  return static_cast<short>(on ? (flags | flag) : (flags & ~flag));
}

std::vector<AcGePoint3d> ToVector(const AcGePoint3dArray& a) { return {a.begin(), a.end()}; }

// Tolerances nobody gave are not written; asked for, they are the values
// the DXF reference gives for absent groups.
constexpr double kUnset = -1.0;
double Given(double value, double absent) { return value >= 0 ? value : absent; }

bool DegreeInRange(int degree) { return degree >= 1 && degree <= 25; }

}  // namespace

AcDbSpline::AcDbSpline() = default;
AcDbSpline::~AcDbSpline() = default;

double AcDbSpline::fitTolerance() const { return Given(mFitTolerance, 1e-10); }

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, int order, double fitTolerance)
    : AcDbSpline(fitPoints, AcGeVector3d(), AcGeVector3d(), order, fitTolerance) {}

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent,
                       const AcGeVector3d& endTangent, int order, double fitTolerance) {
  setFitData(fitPoints, order - 1, fitTolerance, startTangent, endTangent);
}

AcDbSpline::AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
                       const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
                       const AcGeDoubleArray& weights, double controlPtTol, double knotTol) {
  setNurbsData(degree, rational, closed, periodic, controlPoints, knots, weights, controlPtTol, knotTol);
}

// ---------------------------------------------------------------- state
void AcDbSpline::adopt(Nurbs&& curve) {
  mFlags = WithFlag(mFlags, kRational, !curve.weights.empty());
  mCurve = std::make_shared<const Nurbs>(std::move(curve));
  updatePlanarity();
}

bool AcDbSpline::refit(const std::vector<AcGePoint3d>& fit, const AcGeVector3d& startTangent,
                       const AcGeVector3d& endTangent) {
  Nurbs curve;
  if (!kelhost::geom::InterpolateCubic(fit, startTangent, endTangent, curve).empty()) return false;
  mFit = fit;
  mStartTangent = startTangent.isZeroLength() ? AcGeVector3d() : startTangent.normal();
  mEndTangent = endTangent.isZeroLength() ? AcGeVector3d() : endTangent.normal();
  mFlags = WithFlag(mFlags, kPeriodic, false);
  adopt(std::move(curve));
  return true;
}

void AcDbSpline::updatePlanarity() {
  const std::vector<AcGePoint3d>& pts = mCurve ? mCurve->points : mFit;
  if (pts.empty()) return;
  // The point farthest from the first, then the one farthest from the
  // line through both: the plane they span, if the others lie in it.
  const AcGePoint3d& a = pts.front();
  AcGePoint3d b = a;
  for (const AcGePoint3d& p : pts)
    if (p.distanceTo(a) > b.distanceTo(a)) b = p;
  const double size = std::max(1.0, a.distanceTo(b));
  const double tol = 1e-9 * size;
  const AcGeVector3d along = b - a;
  AcGeVector3d across;
  for (const AcGePoint3d& p : pts) {
    const AcGeVector3d c = along.crossProduct(p - a);
    if (c.length() > across.length()) across = c;
  }
  const AcGeVector3d hint = mNormal.isZeroLength() ? AcGeVector3d::kZAxis : mNormal;
  if (along.length() <= tol || across.length() <= tol * along.length()) {
    // On a line (or a point): planar in any plane through it.
    mFlags = WithFlag(WithFlag(mFlags, kPlanar, true), kLinear, true);
    if (!along.isZeroLength() && std::fabs(hint.normal().dotProduct(along.normal())) > 1e-9)
      mNormal = along.perpVector().normal();
    return;
  }
  AcGeVector3d n = across.normal();
  bool planar = true;
  for (const AcGePoint3d& p : pts) planar = planar && std::fabs((p - a).dotProduct(n)) <= tol;
  mFlags = WithFlag(WithFlag(mFlags, kPlanar, planar), kLinear, false);
  if (planar) mNormal = n.dotProduct(hint) < 0 ? -n : n;
}

// ---------------------------------------------------------------- queries
bool AcDbSpline::isNull() const { return !mCurve; }
bool AcDbSpline::isRational() const { return (mFlags & kRational) != 0 || (mCurve && !mCurve->weights.empty()); }
int AcDbSpline::degree() const { return mCurve ? mCurve->degree : 3; }
int AcDbSpline::numControlPoints() const { return mCurve ? static_cast<int>(mCurve->points.size()) : 0; }

bool AcDbSpline::isClosed() const {
  if (!mCurve) return false;
  AcGePoint3d s, e;
  mCurve->evaluate(mCurve->startParam(), &s, nullptr);
  mCurve->evaluate(mCurve->endParam(), &e, nullptr);
  return s.distanceTo(e) <= 1e-10 * std::max(1.0, s.asVector().length());
}

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
  if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
  point = mCurve->points[static_cast<size_t>(index)];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setControlPointAt(int index, const AcGePoint3d& point) {
  if (!kelhost::db::Finite(point)) return Acad::eInvalidInput;
  if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
  if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  Nurbs curve = *mCurve;
  curve.points[static_cast<size_t>(index)] = point;
  purgeFitData();
  adopt(std::move(curve));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getWeightAt(int index, double& weight) const {
  if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
  weight = mCurve->weights.empty() ? 1.0 : mCurve->weights[static_cast<size_t>(index)];
  return Acad::eOk;
}

double AcDbSpline::weightAt(int index) const {
  double w = -1.0;
  getWeightAt(index, w);
  return w;
}

Acad::ErrorStatus AcDbSpline::setWeightAt(int index, double weight) {
  if (!kelhost::db::Finite(weight)) return Acad::eInvalidInput;
  if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
  if (!(weight > 0) || !std::isfinite(weight)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  Nurbs curve = *mCurve;
  if (curve.weights.empty()) curve.weights.assign(curve.points.size(), 1.0);
  curve.weights[static_cast<size_t>(index)] = weight;
  purgeFitData();
  adopt(std::move(curve));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                           Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints,
                                           AcGeDoubleArray& knots, AcGeDoubleArray& weights, double& controlPtTol,
                                           double& knotTol) const {
  if (!mCurve) return Acad::eDegenerateGeometry;
  degree = mCurve->degree;
  rational = isRational();
  closed = (mFlags & kClosed) != 0 || isClosed();
  periodic = isPeriodic();
  controlPoints.removeAll();
  for (const AcGePoint3d& p : mCurve->points) controlPoints.append(p);
  knots.removeAll();
  for (double k : mCurve->knots) knots.append(k);
  weights.removeAll();
  for (double w : mCurve->weights) weights.append(w);
  controlPtTol = Given(mControlTolerance, 1e-7);
  knotTol = Given(mKnotTolerance, 1e-7);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                                           Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                                           const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                           double controlPtTol, double knotTol) {
  Nurbs curve;
  curve.degree = degree;
  curve.points = ToVector(controlPoints);
  curve.knots.assign(knots.begin(), knots.end());
  if (rational) {
    if (weights.length() != controlPoints.length()) return Acad::eInvalidInput;
    curve.weights.assign(weights.begin(), weights.end());
  }
  if (!kelhost::geom::Check(curve).empty()) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mFlags = WithFlag(WithFlag(mFlags, kClosed, closed), kPeriodic, periodic);
  if (controlPtTol > 0) mControlTolerance = controlPtTol;
  if (knotTol > 0) mKnotTolerance = knotTol;
  purgeFitData();
  adopt(std::move(curve));
  return Acad::eOk;
}

// ---------------------------------------------------------------- fit data
Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
  if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
  point = mFit[static_cast<size_t>(index)];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setFitPointAt(int index, const AcGePoint3d& point) {
  if (!kelhost::db::Finite(point)) return Acad::eInvalidInput;
  if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
  if (!writable()) return Acad::eNotOpenForWrite;
  std::vector<AcGePoint3d> fit = mFit;
  fit[static_cast<size_t>(index)] = point;
  return refit(fit, mStartTangent, mEndTangent) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbSpline::insertFitPointAt(int index, const AcGePoint3d& point) {
  if (!hasFitData()) return Acad::eNotApplicable;
  if (index < 0 || index > numFitPoints()) return Acad::eInvalidIndex;
  if (!writable()) return Acad::eNotOpenForWrite;
  std::vector<AcGePoint3d> fit = mFit;
  fit.insert(fit.begin() + index, point);
  return refit(fit, mStartTangent, mEndTangent) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbSpline::removeFitPointAt(int index) {
  if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
  if (!writable()) return Acad::eNotOpenForWrite;
  std::vector<AcGePoint3d> fit = mFit;
  fit.erase(fit.begin() + index);
  return refit(fit, mStartTangent, mEndTangent) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbSpline::getFitData(AcGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                                         Adesk::Boolean& tangentsExist, AcGeVector3d& startTangent,
                                         AcGeVector3d& endTangent) const {
  if (!hasFitData()) return Acad::eNotApplicable;
  fitPoints.removeAll();
  for (const AcGePoint3d& p : mFit) fitPoints.append(p);
  degree = this->degree();
  fitTolerance = this->fitTolerance();
  tangentsExist = !mStartTangent.isZeroLength() || !mEndTangent.isZeroLength();
  startTangent = mStartTangent;
  endTangent = mEndTangent;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setFitData(const AcGePoint3dArray& fitPoints, int degree, double fitTolerance,
                                         const AcGeVector3d& startTangent, const AcGeVector3d& endTangent) {
  if (!kelhost::db::Finite(fitPoints) || !kelhost::db::Finite(fitTolerance) || !kelhost::db::Finite(startTangent) || !kelhost::db::Finite(endTangent)) return Acad::eInvalidInput;
  if (!DegreeInRange(degree) || !(fitTolerance >= 0)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!refit(ToVector(fitPoints), startTangent, endTangent)) return Acad::eInvalidInput;
  mFitTolerance = fitTolerance;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitTangents(AcGeVector3d& startTangent, AcGeVector3d& endTangent) const {
  if (!hasFitData()) return Acad::eNotApplicable;
  startTangent = mStartTangent;
  endTangent = mEndTangent;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setFitTangents(const AcGeVector3d& startTangent, const AcGeVector3d& endTangent) {
  if (!kelhost::db::Finite(startTangent) || !kelhost::db::Finite(endTangent)) return Acad::eInvalidInput;
  if (!hasFitData()) return Acad::eNotApplicable;
  if (!writable()) return Acad::eNotOpenForWrite;
  return refit(mFit, startTangent, endTangent) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbSpline::setFitTol(double tolerance) {
  if (!kelhost::db::Finite(tolerance)) return Acad::eInvalidInput;
  if (!(tolerance >= 0)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mFitTolerance = tolerance;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::purgeFitData() {
  if (!writable()) return Acad::eNotOpenForWrite;
  mFit.clear();
  mStartTangent = mEndTangent = AcGeVector3d();
  return Acad::eOk;
}

// ---------------------------------------------------------------- geometry
bool AcDbSpline::buildPath(kelhost::geom::Path& path) const {
  if (!mCurve) return false;
  std::shared_ptr<const Nurbs> curve = mCurve;
  for (const auto& span : curve->spans())
    path.addFree(
        [curve](double t) {
          AcGePoint3d p;
          curve->evaluate(t, &p, nullptr);
          return p;
        },
        [curve](double t) {
          AcGeVector3d d;
          curve->evaluate(t, nullptr, &d);
          return d;
        },
        span.first, span.second);
  return true;
}

Acad::ErrorStatus AcDbSpline::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  for (AcGePoint3d& p : mFit) p = m * p;
  for (AcGeVector3d* t : {&mStartTangent, &mEndTangent}) {
    const AcGeVector3d moved = m * *t;
    *t = moved.isZeroLength() ? AcGeVector3d() : moved.normal();
  }
  // The plane's normal goes with the inverse transpose: the image of two
  // vectors in the plane, crossed, kept on the side it was on.
  const AcGeVector3d a = mNormal.perpVector(), b = mNormal.crossProduct(a);
  const AcGeVector3d n = (m * a).crossProduct(m * b) * (m.det() < 0 ? -1.0 : 1.0);
  if (!n.isZeroLength()) mNormal = n.normal();
  if (mCurve) {
    Nurbs curve = *mCurve;
    for (AcGePoint3d& p : curve.points) p = m * p;
    adopt(std::move(curve));
  }
  return Acad::eOk;
}

// ---------------------------------------------------------------- DXF groups
namespace {

// A run of one group per item (knots, weights). A reader that finds none
// while modifying keeps what there was.
void Reals(kelhost::dxf::GroupFiler& f, int code, std::vector<double>& values) {
  const size_t n = f.beginRepeat(code, values.size());
  if (f.reading() && !(n == 0 && f.keepsAbsent())) values.assign(n, 0.0);
  for (size_t i = 0; i < values.size() && i < n; ++i) {
    f.enterRecord(i);
    f.real(code, values[i], 0.0, Presence::kRequired);
  }
  f.endRepeat();
}

void Points(kelhost::dxf::GroupFiler& f, int code, std::vector<AcGePoint3d>& values) {
  const size_t n = f.beginRepeat(code, values.size());
  if (f.reading() && !(n == 0 && f.keepsAbsent())) values.assign(n, AcGePoint3d());
  for (size_t i = 0; i < values.size() && i < n; ++i) {
    f.enterRecord(i);
    f.point(code, values[i], Presence::kRequired);
  }
  f.endRepeat();
}

// A count group (72-74): what the writer has; -1 when a reader finds none.
void Count(kelhost::dxf::GroupFiler& f, int code, size_t actual, short& read) {
  read = static_cast<short>(std::min<size_t>(actual, 32767));
  f.int16(code, read, -1, Presence::kAlways);
}

}  // namespace

void AcDbSpline::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  f.subclass(L"AcDbSpline");
  Nurbs curve = mCurve ? *mCurve : Nurbs();
  std::vector<AcGePoint3d> fit = mFit;
  if (f.reading() || isPlanar()) f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
  short flags = mFlags;  // -1 when a reader finds none
  f.int16(70, flags, -1, Presence::kAlways);
  short degree = static_cast<short>(curve.degree);
  f.int16(71, degree, 3, Presence::kAlways);
  short knotCount = 0, pointCount = 0, fitCount = 0;
  Count(f, 72, curve.knots.size(), knotCount);
  Count(f, 73, curve.points.size(), pointCount);
  Count(f, 74, fit.size(), fitCount);
  f.real(42, mKnotTolerance, kUnset, Presence::kUnlessDefault);
  f.real(43, mControlTolerance, kUnset, Presence::kUnlessDefault);
  f.real(44, mFitTolerance, kUnset, Presence::kUnlessDefault);
  AcGePoint3d start = AcGePoint3d::kOrigin + mStartTangent, end = AcGePoint3d::kOrigin + mEndTangent;
  f.point(12, start, Presence::kUnlessDefault);
  f.point(13, end, Presence::kUnlessDefault);
  Reals(f, 40, curve.knots);
  Reals(f, 41, curve.weights);
  Points(f, 10, curve.points);
  Points(f, 11, fit);
  if (!f.reading() || f.failed()) return;

  // The counts must agree with the groups that follow them.
  const struct {
    int code;
    short said;
    size_t found;
  } counts[] = {{72, knotCount, curve.knots.size()}, {73, pointCount, curve.points.size()}, {74, fitCount, fit.size()}};
  for (const auto& c : counts)
    if (c.said >= 0 && static_cast<size_t>(c.said) != c.found)
      return f.fail(L"group " + std::to_wstring(c.code) + L" counts " + std::to_wstring(c.said) + L" but " +
                    std::to_wstring(c.found) + L" follow");
  curve.degree = degree;
  std::wstring why;
  if (curve.points.empty()) {
    // Fit points alone: the curve is fitted through them.
    why = fit.size() < 2 ? L"a spline needs control points or at least two fit points"
                         : kelhost::geom::InterpolateCubic(fit, start.asVector(), end.asVector(), curve);
  } else {
    why = kelhost::geom::Check(curve);
  }
  if (!why.empty()) return f.fail(why);
  mFit = std::move(fit);
  mStartTangent = start.asVector();
  mEndTangent = end.asVector();
  // Flags are kept as given; without them they follow the data.
  mCurve = std::make_shared<const Nurbs>(std::move(curve));
  if (flags >= 0) {
    mFlags = flags;
  } else {
    mFlags = WithFlag(0, kRational, !mCurve->weights.empty());
    updatePlanarity();
  }
}
