// Object snaps: the point of an object near a given point that a snap
// mode names (its end, middle, centre, intersection...), as the osnap
// function and the running snaps find it. Objects count when they come
// within the aperture box (APERTURE pixels of the view) of the point; of
// the snap points found, the nearest to the point wins.
#include "ads/object_snap.h"

#include <cmath>
#include <limits>
#include <vector>

#include "arx/acedads.h"
#include "arx/dbblkref.h"
#include "arx/dbents.h"
#include "arx/dbmtext.h"
#include "db/stub.h"
#include "editor/picking.h"
#include "kelhost/text.h"

namespace kelhost::ads {
namespace {

struct ModeName {
  const wchar_t* prefix;
  unsigned bit;
};
const ModeName kModes[] = {{L"END", kSnapEnd}, {L"MID", kSnapMid},   {L"CEN", kSnapCen}, {L"NOD", kSnapNode},
                           {L"QUA", kSnapQuad}, {L"INT", kSnapInt},  {L"INS", kSnapIns}, {L"PER", kSnapPerp},
                           {L"TAN", kSnapTan},  {L"NEA", kSnapNear}, {L"APP", kSnapInt}, {L"NON", kSnapNone},
                           {L"QUI", 0}};

double Planar(const AcGePoint3d& a, const AcGePoint3d& b) { return std::hypot(a.x - b.x, a.y - b.y); }

void EndsAndMiddles(const AcDbCurve* c, unsigned modes, std::vector<AcGePoint3d>& out) {
  double start = 0, end = 0;
  if (c->getStartParam(start) != Acad::eOk || c->getEndParam(end) != Acad::eOk) return;
  // A polyline's vertices are at whole parameters, its segments between.
  const bool segmented = AcDbPolyline::cast(c) != nullptr;
  const int pieces = segmented ? static_cast<int>(std::lround(end - start)) : 1;
  for (int k = 0; k <= pieces; ++k) {
    AcGePoint3d p;
    const double at = start + (end - start) * k / std::max(pieces, 1);
    if ((modes & kSnapEnd) && !(AcDbCircle::cast(c) && !AcDbArc::cast(c)) && c->getPointAtParam(at, p) == Acad::eOk)
      out.push_back(p);
    if ((modes & kSnapMid) && k < pieces && !(AcDbCircle::cast(c) && !AcDbArc::cast(c))) {
      // The middle by length: a parameter midway is not midway along an arc
      // of a polyline's bulge, but its length is.
      double from = 0, to = 0, mid = 0;
      const double next = start + (end - start) * (k + 1) / std::max(pieces, 1);
      if (c->getDistAtParam(at, from) == Acad::eOk && c->getDistAtParam(next, to) == Acad::eOk &&
          c->getParamAtDist((from + to) / 2, mid) == Acad::eOk && c->getPointAtParam(mid, p) == Acad::eOk)
        out.push_back(p);
    }
  }
}

void CircleSnaps(const AcDbCircle* c, unsigned modes, const AcGePoint3d* last, std::vector<AcGePoint3d>& out) {
  const AcGePoint3d o = c->center();
  const double r = c->radius();
  const AcDbArc* arc = AcDbArc::cast(c);
  auto onArc = [&](double angle) {
    if (!arc) return true;
    const double twoPi = 6.28318530717958647692;
    double span = std::fmod(arc->endAngle() - arc->startAngle(), twoPi);
    if (span <= 0) span += twoPi;
    double a = std::fmod(angle - arc->startAngle(), twoPi);
    if (a < 0) a += twoPi;
    return a <= span + 1e-12;
  };
  if (modes & kSnapCen) out.push_back(o);
  if (modes & kSnapQuad)
    for (int q = 0; q < 4; ++q) {
      const double a = q * 1.57079632679489661923;
      if (onArc(a)) out.emplace_back(o.x + r * std::cos(a), o.y + r * std::sin(a), o.z);
    }
  if ((modes & kSnapTan) && last) {
    const double d = Planar(*last, o);
    if (d > r) {
      const double base = std::atan2(last->y - o.y, last->x - o.x), spread = std::acos(r / d);
      for (double a : {base + spread, base - spread})
        if (onArc(a)) out.emplace_back(o.x + r * std::cos(a), o.y + r * std::sin(a), o.z);
    }
  }
}

void SnapsOf(const AcDbEntity* e, unsigned modes, const AcGePoint3d& at, const AcGePoint3d* last,
             std::vector<AcGePoint3d>& out) {
  if (const AcDbCurve* c = AcDbCurve::cast(e)) {
    EndsAndMiddles(c, modes, out);
    if (const AcDbCircle* circle = AcDbCircle::cast(c)) CircleSnaps(circle, modes, last, out);
    AcGePoint3d p;
    if ((modes & kSnapNear) && c->getClosestPointTo(at, p) == Acad::eOk) out.push_back(p);
    if ((modes & kSnapPerp) && last && c->getClosestPointTo(*last, p) == Acad::eOk) out.push_back(p);
  }
  if (const AcDbPoint* pt = AcDbPoint::cast(e))
    if (modes & (kSnapNode | kSnapNear)) out.push_back(pt->position());
  if (modes & kSnapIns) {
    if (const AcDbText* t = AcDbText::cast(e)) out.push_back(t->position());
    if (const AcDbMText* t = AcDbMText::cast(e)) out.push_back(t->location());
    if (const AcDbBlockReference* b = AcDbBlockReference::cast(e)) out.push_back(b->position());
  }
}

}  // namespace

bool ParseSnapModes(const std::wstring& text, unsigned& modes) {
  modes = 0;
  const std::wstring upper = ToUpper(text);
  size_t from = 0;
  while (from <= upper.size()) {
    size_t comma = upper.find(L',', from);
    if (comma == std::wstring::npos) comma = upper.size();
    std::wstring word = upper.substr(from, comma - from);
    while (!word.empty() && (word[0] == L'_' || word[0] == L' ')) word.erase(0, 1);
    while (!word.empty() && word.back() == L' ') word.pop_back();
    from = comma + 1;
    if (word.empty()) continue;
    bool known = false;
    for (const ModeName& m : kModes)
      if (word.size() >= 3 && std::wstring(m.prefix).compare(0, 3, word, 0, 3) == 0) {
        modes |= m.bit;
        known = true;
      }
    if (!known) return false;
  }
  return true;
}

bool ObjectSnap(const AcGePoint3d& at, unsigned modes, double aperture, const AcGePoint3d* last,
                AcGePoint3d& snapped) {
  if (modes == 0 || (modes & kSnapNone)) return false;
  std::vector<const AcDbEntity*> near;
  for (const AcDbObjectId& id : editor::SelectableEntities()) {
    const AcDbEntity* e = AcDbEntity::cast(db::Peek(id));
    if (e && editor::DistanceTo(e, at) <= aperture) near.push_back(e);
  }
  // An object under the aperture snaps to its nearest such point wherever
  // it is; an intersection must lie under the aperture itself.
  std::vector<AcGePoint3d> found;
  for (const AcDbEntity* e : near) SnapsOf(e, modes, at, last, found);
  const size_t ofObjects = found.size();
  if (modes & kSnapInt)
    for (size_t i = 0; i < near.size(); ++i)
      for (size_t j = i + 1; j < near.size(); ++j) {
        AcGePoint3dArray points;
        if (near[i]->intersectWith(near[j], AcDb::kOnBothOperands, points) != Acad::eOk) continue;
        for (int k = 0; k < points.length(); ++k) found.push_back(points[k]);
      }
  double best = std::numeric_limits<double>::infinity();
  for (size_t k = 0; k < found.size(); ++k) {
    const AcGePoint3d& p = found[k];
    const double d = Planar(p, at);
    if ((k < ofObjects || d <= aperture) && d < best) {
      best = d;
      snapped = p;
    }
  }
  return best < std::numeric_limits<double>::infinity();
}

}  // namespace kelhost::ads
