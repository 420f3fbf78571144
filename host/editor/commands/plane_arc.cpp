#include "editor/commands/plane_arc.h"

#include <cmath>

namespace kelhost::editor {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2 * kPi;
// Angles closer than this to zero or a full turn make no arc.
constexpr double kAngleTol = 1e-10;

double Cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

// The angle a - b folded into (-pi, pi].
double Turn(double a, double b) {
  double d = std::fmod(a - b, kTwoPi);
  if (d > kPi) d -= kTwoPi;
  if (d <= -kPi) d += kTwoPi;
  return d;
}

bool UsableAngle(double included) {
  return std::isfinite(included) && std::fabs(included) > kAngleTol && std::fabs(included) < kTwoPi - kAngleTol;
}

}  // namespace

double NormalizedAngle(double a) {
  a = std::fmod(a, kTwoPi);
  if (a < 0) a += kTwoPi;
  return a >= kTwoPi ? 0.0 : a;
}

double AngleOf(const AcGeVector2d& v) { return NormalizedAngle(std::atan2(v.y, v.x)); }

AcGeVector2d Direction(double angle) { return AcGeVector2d(std::cos(angle), std::sin(angle)); }

AcGePoint2d PlaneArc::pointAt(double angle) const { return center + Direction(angle) * radius; }

double PlaneArc::startTangent() const { return NormalizedAngle(startAngle + (sweep > 0 ? kPi / 2 : -kPi / 2)); }

double PlaneArc::endTangent() const { return NormalizedAngle(startAngle + sweep + (sweep > 0 ? kPi / 2 : -kPi / 2)); }

double PlaneArc::bulge() const { return std::tan(sweep / 4); }

void PlaneArc::anticlockwise(double& from, double& to) const {
  from = NormalizedAngle(sweep > 0 ? startAngle : startAngle + sweep);
  to = NormalizedAngle(sweep > 0 ? startAngle + sweep : startAngle);
}

bool ArcThroughPoints(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, PlaneArc& arc) {
  const AcGeVector2d ab = b - a, ac = c - a;
  const double cross = Cross(ab, ac);
  // Collinear (or coincident) points, relative to the size of the figure.
  if (!(std::fabs(cross) > 1e-10 * ab.length() * ac.length())) return false;
  const double ab2 = ab.lengthSqrd(), ac2 = ac.lengthSqrd();
  const AcGeVector2d offset((ac.y * ab2 - ab.y * ac2) / (2 * cross), (ab.x * ac2 - ac.x * ab2) / (2 * cross));
  arc.center = a + offset;
  arc.radius = offset.length();
  arc.startAngle = AngleOf(a - arc.center);
  const double endAngle = AngleOf(c - arc.center);
  arc.sweep = cross > 0 ? NormalizedAngle(endAngle - arc.startAngle) : -NormalizedAngle(arc.startAngle - endAngle);
  arc.endGiven = true;
  arc.givenEnd = c;
  return true;
}

bool ArcStartCenterEnd(const AcGePoint2d& start, const AcGePoint2d& center, const AcGePoint2d& toward, PlaneArc& arc) {
  const AcGeVector2d toEnd = toward - center;
  if (toEnd.isZeroLength()) return false;
  const double sweep = NormalizedAngle(AngleOf(toEnd) - AngleOf(start - center));
  return ArcStartCenterAngle(start, center, sweep, arc);
}

bool ArcStartCenterAngle(const AcGePoint2d& start, const AcGePoint2d& center, double included, PlaneArc& arc) {
  const double r = (start - center).length();
  if (!(r > 0) || !UsableAngle(included)) return false;
  arc.center = center;
  arc.radius = r;
  arc.startAngle = AngleOf(start - center);
  arc.sweep = included;
  arc.endGiven = false;
  return true;
}

bool ArcStartCenterChord(const AcGePoint2d& start, const AcGePoint2d& center, double chord, PlaneArc& arc) {
  const double r = (start - center).length();
  if (!(r > 0) || !(chord != 0) || std::fabs(chord) > 2 * r * (1 + 1e-12)) return false;
  const double minor = 2 * std::asin(std::fmin(1.0, std::fabs(chord) / (2 * r)));
  return ArcStartCenterAngle(start, center, chord > 0 ? minor : kTwoPi - minor, arc);
}

bool ArcStartEndAngle(const AcGePoint2d& start, const AcGePoint2d& end, double included, PlaneArc& arc) {
  const AcGeVector2d chord = end - start;
  const double length = chord.length();
  if (!(length > 0) || !UsableAngle(included)) return false;
  const double half = length / 2;
  const AcGeVector2d left(-chord.y / length, chord.x / length);
  // The center sits left of the chord for an anticlockwise minor arc and
  // crosses over as the arc grows past a half circle or turns clockwise.
  // (A half circle's center is the chord's midpoint exactly.)
  const double cosHalf = std::cos(included / 2);
  const double offset = std::fabs(cosHalf) < 1e-15 ? 0.0 : half * cosHalf / std::sin(included / 2);
  arc.center = start + chord * 0.5 + left * offset;
  arc.radius = half / std::fabs(std::sin(included / 2));
  arc.startAngle = AngleOf(start - arc.center);
  arc.sweep = included;
  arc.endGiven = true;
  arc.givenEnd = end;
  return true;
}

bool ArcStartEndRadius(const AcGePoint2d& start, const AcGePoint2d& end, double radius, PlaneArc& arc) {
  const double half = (end - start).length() / 2;
  if (!(half > 0) || !(std::fabs(radius) >= half * (1 - 1e-12))) return false;
  const double minor = 2 * std::asin(std::fmin(1.0, half / std::fabs(radius)));
  return ArcStartEndAngle(start, end, radius > 0 ? minor : kTwoPi - minor, arc);
}

bool ArcStartTangentEnd(const AcGePoint2d& start, double tangent, const AcGePoint2d& end, PlaneArc& arc,
                        bool* straight) {
  if (straight) *straight = false;
  const AcGeVector2d chord = end - start;
  if (chord.isZeroLength()) return false;
  const double turn = Turn(AngleOf(chord), tangent);
  if (std::fabs(turn) < kAngleTol) {
    if (straight) *straight = true;
    return false;
  }
  // The chord turns half as far as the arc does.
  return ArcStartEndAngle(start, end, 2 * turn, arc);
}

}  // namespace kelhost::editor
