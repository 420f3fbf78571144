// The largest fillet radius between two lines or arcs at their pick
// points, worked out in plan.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <vector>

#include "kelcad/api/curves.h"

namespace KEL {

namespace {

constexpr double kPi = 3.14159265358979323846;

struct Vec {
  double x = 0.0, y = 0.0;
};
Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y}; }
Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y}; }
Vec operator*(Vec a, double s) { return {a.x * s, a.y * s}; }
double Dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y; }
double Cross(Vec a, Vec b) { return a.x * b.y - a.y * b.x; }
double Length(Vec a) { return std::hypot(a.x, a.y); }
Vec Unit(Vec a) { return a * (1.0 / Length(a)); }

// A LINE (from a to b) or an ARC (centre, radius, counter-clockwise from
// start to end), as its entity list gives it.
struct Shape {
  bool arc = false;
  Vec a, b;
  Vec centre;
  double radius = 0.0, start = 0.0, end = 0.0;
  double size() const { return arc ? 2 * radius : Length(b - a); }
};

enum class Read { kOk, kUnreadable, kWrongKind };

Read ReadShape(const ads_name name, Shape& shape) {
  resbuf* list = acdbEntGet(name);
  if (list == nullptr) return Read::kUnreadable;
  Read result = Read::kWrongKind;
  for (const resbuf* rb = list; rb; rb = rb->rbnext) {
    switch (rb->restype) {
      case 0:
        if (wcscmp(rb->resval.rstring, L"LINE") == 0) result = Read::kOk;
        if (wcscmp(rb->resval.rstring, L"ARC") == 0) result = Read::kOk, shape.arc = true;
        break;
      case 10: shape.a = shape.centre = {rb->resval.rpoint[0], rb->resval.rpoint[1]}; break;
      case 11: shape.b = {rb->resval.rpoint[0], rb->resval.rpoint[1]}; break;
      case 40: shape.radius = rb->resval.rreal; break;
      case 50: shape.start = rb->resval.rreal; break;
      case 51: shape.end = rb->resval.rreal; break;
      default: break;
    }
  }
  acutRelRb(list);
  if (result == Read::kOk && (shape.arc ? !(shape.radius > 0) : Length(shape.b - shape.a) == 0.0))
    return Read::kWrongKind;
  return result;
}

// Where two carriers meet: the infinite line through a line, the whole
// circle of an arc. Offsets move a line sideways and grow or shrink a
// circle, so one routine serves the corner and the fillet centres.
struct Carrier {
  bool circle = false;
  Vec p, d;  // line: a point and the unit direction
  Vec c;
  double r = 0.0;
};

Carrier CarrierOf(const Shape& s) {
  Carrier k;
  k.circle = s.arc;
  if (s.arc) {
    k.c = s.centre;
    k.r = s.radius;
  } else {
    k.p = s.a;
    k.d = Unit(s.b - s.a);
  }
  return k;
}

std::vector<Vec> LineCircle(const Carrier& line, const Carrier& circle) {
  const Vec foot = line.p + line.d * Dot(circle.c - line.p, line.d);
  const double h = Length(circle.c - foot);
  if (h > circle.r) return {};
  const double half = std::sqrt(std::max(circle.r * circle.r - h * h, 0.0));
  return {foot - line.d * half, foot + line.d * half};
}

std::vector<Vec> Meet(const Carrier& m, const Carrier& n) {
  if (!m.circle && !n.circle) {
    const double den = Cross(m.d, n.d);
    if (den == 0.0) return {};
    return {m.p + m.d * (Cross(n.p - m.p, n.d) / den)};
  }
  if (!m.circle) return LineCircle(m, n);
  if (!n.circle) return LineCircle(n, m);
  const Vec between = n.c - m.c;
  const double d = Length(between);
  if (d == 0.0 || d > m.r + n.r || d < std::fabs(m.r - n.r)) return {};
  const double along = (d * d + m.r * m.r - n.r * n.r) / (2 * d);
  const double half = std::sqrt(std::max(m.r * m.r - along * along, 0.0));
  const Vec u = between * (1.0 / d), mid = m.c + u * along, side = {-u.y, u.x};
  return {mid - side * half, mid + side * half};
}

// The corner the picks show: the centre of a fillet lies on the side of
// each entity where the other entity's pick is.
struct Corner {
  Vec meet;
  double side1 = 1.0, side2 = 1.0;  // line: +1 left of its direction; arc: +1 outside
};

double SideOf(const Carrier& k, Vec p) {
  const double s = k.circle ? Length(p - k.c) - k.r : Cross(k.d, p - k.p);
  return s < 0 ? -1.0 : 1.0;
}

Carrier Offset(const Carrier& k, double side, double r) {
  Carrier o = k;
  if (k.circle)
    o.r = k.r + side * r;
  else
    o.p = k.p + Vec{-k.d.y, k.d.x} * (side * r);
  return o;
}

Vec TangentPoint(const Carrier& k, Vec centre) {
  if (k.circle) return k.c + Unit(centre - k.c) * k.r;
  return k.p + k.d * Dot(centre - k.p, k.d);
}

// A line may be lengthened up to the corner, as FILLET lengthens it, but
// not beyond its far end; an arc is taken as drawn.
bool Reaches(const Shape& s, Vec meet, Vec pick, Vec t) {
  constexpr double kSlack = 1e-9;
  if (s.arc) {
    double a = std::atan2(t.y - s.centre.y, t.x - s.centre.x) - s.start;
    double sweep = s.end - s.start;
    a = std::fmod(std::fmod(a, 2 * kPi) + 2 * kPi, 2 * kPi);
    sweep = std::fmod(std::fmod(sweep, 2 * kPi) + 2 * kPi, 2 * kPi);
    if (sweep == 0.0) sweep = 2 * kPi;
    return a <= sweep + kSlack || a >= 2 * kPi - kSlack;
  }
  const Vec toPick = Unit(pick - meet);
  const double reach = std::max(Dot(s.a - meet, toPick), Dot(s.b - meet, toPick));
  const double along = Dot(t - meet, toPick);
  const double size = s.size() + Length(meet - s.a);
  return along >= -kSlack * size && along <= reach + kSlack * size;
}

bool FitsRadius(const Shape& s1, Vec pick1, const Shape& s2, Vec pick2, const Corner& corner, double r) {
  const Carrier k1 = CarrierOf(s1), k2 = CarrierOf(s2);
  if ((k1.circle && corner.side1 < 0 && r >= k1.r) || (k2.circle && corner.side2 < 0 && r >= k2.r)) return false;
  const std::vector<Vec> centres = Meet(Offset(k1, corner.side1, r), Offset(k2, corner.side2, r));
  if (centres.empty()) return false;
  const Vec centre = *std::min_element(centres.begin(), centres.end(), [&](Vec a, Vec b) {
    return Length(a - corner.meet) < Length(b - corner.meet);
  });
  return Reaches(s1, corner.meet, pick1, TangentPoint(k1, centre)) &&
         Reaches(s2, corner.meet, pick2, TangentPoint(k2, centre));
}

// Lines: the tangent points lie r / tan(theta / 2) from the corner, theta
// being the angle between the rays to the picks, and the nearer far end
// bounds them. With an arc the radius is searched: the largest radius of a
// fine geometric scan that fits, narrowed by bisection towards the next.
double LargestRadius(const Shape& s1, Vec pick1, const Shape& s2, Vec pick2, const Corner& corner) {
  if (!s1.arc && !s2.arc) {
    const Vec u1 = Unit(pick1 - corner.meet), u2 = Unit(pick2 - corner.meet);
    const double theta = std::acos(std::clamp(Dot(u1, u2), -1.0, 1.0));
    auto reach = [&](const Shape& s, Vec u) { return std::max(Dot(s.a - corner.meet, u), Dot(s.b - corner.meet, u)); };
    const double along = std::min(reach(s1, u1), reach(s2, u2));
    return along > 0 ? along * std::tan(theta / 2) : 0.0;
  }
  const double top = 4.0 * (s1.size() + s2.size() + Length(pick1 - pick2));
  constexpr int kSteps = 400;
  const double ratio = std::pow(1e-9, 1.0 / kSteps);
  double fits = 0.0, fails = top;
  for (int i = 0; i <= kSteps; ++i) {
    const double r = top * std::pow(ratio, i);
    if (FitsRadius(s1, pick1, s2, pick2, corner, r)) {
      fits = r;
      break;
    }
    fails = r;
  }
  if (fits == 0.0) return 0.0;
  for (int i = 0; i < 60; ++i) {
    const double mid = 0.5 * (fits + fails);
    (FitsRadius(s1, pick1, s2, pick2, corner, mid) ? fits : fails) = mid;
  }
  return fits;
}

}  // namespace

bool js_f_max(const ads_name e1, const double pick1[3], const ads_name e2, const double pick2[3], double& radius) {
  Shape s1, s2;
  switch (ReadShape(e1, s1)) {
    case Read::kUnreadable: acutPrintf(L"\n(js_f_max)ENT1 无效"); return false;
    case Read::kWrongKind: acutPrintf(L"\n(js_f_max)ENT1 必须是线或弧"); return false;
    case Read::kOk: break;
  }
  switch (ReadShape(e2, s2)) {
    case Read::kUnreadable: acutPrintf(L"\n(js_f_max)ENT2 无效"); return false;
    case Read::kWrongKind: acutPrintf(L"\n(js_f_max)ENT2 必须是线或弧"); return false;
    case Read::kOk: break;
  }
  const Carrier k1 = CarrierOf(s1), k2 = CarrierOf(s2);
  if (!s1.arc && !s2.arc && std::fabs(Cross(k1.d, k2.d)) < 1e-12) {
    acutPrintf(L"\n两线平行");
    return false;
  }
  const Vec p1 = {pick1[0], pick1[1]}, p2 = {pick2[0], pick2[1]};
  const std::vector<Vec> meets = Meet(k1, k2);
  double r = 0.0;
  if (!meets.empty()) {
    const Vec middle = (p1 + p2) * 0.5;
    Corner corner;
    corner.meet = *std::min_element(meets.begin(), meets.end(),
                                    [&](Vec a, Vec b) { return Length(a - middle) < Length(b - middle); });
    corner.side1 = SideOf(k1, p2);
    corner.side2 = SideOf(k2, p1);
    r = LargestRadius(s1, p1, s2, p2, corner);
  }
  if (!(r > 0) || !std::isfinite(r)) {
    acutPrintf(L"\n两实体不相交");
    return false;
  }
  radius = r;
  resbuf value{};
  value.restype = RTREAL;
  value.resval.rreal = r;
  acedPutSym(L"t1", &value);
  acedCommandS(RTSTR, L"fillet", RTSTR, L"r", RTREAL, r, RTNONE);
  return true;
}

}  // namespace KEL
