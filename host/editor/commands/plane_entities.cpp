#include "editor/commands/plane_entities.h"

#include <cmath>

#include "arx/acedads.h"
#include "db/curve_geometry.h"
#include "editor/commands/drawing_support.h"

namespace kelhost::editor {
namespace {

constexpr double kPi = 3.14159265358979323846;

// A UCS displacement in the world.
AcGeVector3d VectorToWorld(double x, double y, double z) {
  const double origin[3] = {0, 0, 0}, tip[3] = {x, y, z};
  return ToWorld(tip) - ToWorld(origin);
}

// Whether an entity with that normal lies in a plane parallel to the
// drawing plane, and which way round it faces.
bool FacesPlane(const AcGeVector3d& normal, bool& reversed) {
  const double dot = normal.normal().dotProduct(PlaneNormal());
  reversed = dot < 0;
  return std::fabs(dot) > 1 - 1e-9;
}

AcGePoint2d Flat(const AcGePoint3d& p) { return AcGePoint2d(p.x, p.y); }

}  // namespace

AcGePoint3d PlaneToWorld(const AcGePoint2d& p, double z) {
  const double ucs[3] = {p.x, p.y, z};
  return ToWorld(ucs);
}

AcGePoint3d WorldToUcs(const AcGePoint3d& world) {
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = 0;
  to.resval.rint = 1;
  const ads_point wcs = {world.x, world.y, world.z};
  ads_point ucs;
  if (acedTrans(wcs, &from, &to, 0, ucs) != RTNORM) return world;
  return AcGePoint3d(ucs[0], ucs[1], ucs[2]);
}

AcGeVector3d PlaneNormal() { return VectorToWorld(0, 0, 1).normal(); }

double OcsAngleOf(double planeAngle) {
  return geom::OcsAngle(PlaneNormal(), VectorToWorld(std::cos(planeAngle), std::sin(planeAngle), 0));
}

AcGePoint2d OcsPointOf(const AcGePoint2d& p, double z, double& elevation) {
  const AcGeVector3d n = PlaneNormal(), x = geom::OcsXAxis(n), y = n.crossProduct(x);
  const AcGeVector3d w = PlaneToWorld(p, z).asVector();
  elevation = w.dotProduct(n);
  return AcGePoint2d(w.dotProduct(x), w.dotProduct(y));
}

std::unique_ptr<AcDbLine> MakeLine(const double from[3], const double to[3]) {
  auto line = std::make_unique<AcDbLine>(ToWorld(from), ToWorld(to));
  line->setNormal(PlaneNormal());
  return line;
}

std::unique_ptr<AcDbArc> MakeArc(const PlaneArc& arc, double z) {
  double from = 0, to = 0;
  arc.anticlockwise(from, to);
  auto entity = std::make_unique<AcDbArc>(PlaneToWorld(arc.center, z), arc.radius, 0.0, 0.0);
  entity->setNormal(PlaneNormal());
  entity->setStartAngle(OcsAngleOf(from));
  entity->setEndAngle(OcsAngleOf(to));
  return entity;
}

std::unique_ptr<AcDbCircle> MakeCircle(const AcGePoint2d& center, double radius, double z) {
  return std::make_unique<AcDbCircle>(PlaneToWorld(center, z), PlaneNormal(), radius);
}

PlaneCurve PlaneEntity::curve() const {
  return kind == kLine ? PlaneCurve::Line(start, end) : PlaneCurve::Circle(center, radius);
}

bool PlaneEntity::arcCovers(double angle) const {
  if (kind == kCircle) return true;
  const double span = NormalizedAngle(to - from), at = NormalizedAngle(angle - from);
  return at <= span + 1e-10 || at >= 2 * kPi - 1e-10;
}

bool ReadPlaneEntity(AcDbObjectId id, PlaneEntity& out) {
  AcDbEntity* e = nullptr;
  if (acdbOpenAcDbEntity(e, id, AcDb::kForRead) != Acad::eOk) return false;
  bool ok = true;
  out = PlaneEntity{};
  out.id = id;
  out.layer = e->layerId();
  if (AcDbLine* line = AcDbLine::cast(e)) {
    const AcGePoint3d s = WorldToUcs(line->startPoint()), t = WorldToUcs(line->endPoint());
    out.kind = PlaneEntity::kLine;
    out.start = Flat(s);
    out.end = Flat(t);
    out.startZ = s.z;
    out.endZ = t.z;
    out.z = s.z;
    ok = !(out.end - out.start).isZeroLength();
  } else if (AcDbCircle* circle = AcDbCircle::cast(e)) {
    bool reversed = false;
    ok = FacesPlane(circle->normal(), reversed) && circle->radius() > 0;
    const AcGePoint3d c = WorldToUcs(circle->center());
    out.center = Flat(c);
    out.z = c.z;
    out.radius = circle->radius();
    out.kind = PlaneEntity::kCircle;
    if (AcDbArc* arc = AcDbArc::cast(e)) {
      AcGePoint3d s, t;
      arc->getStartPoint(s);
      arc->getEndPoint(t);
      double a = AngleOf(Flat(WorldToUcs(s)) - out.center), b = AngleOf(Flat(WorldToUcs(t)) - out.center);
      if (reversed) std::swap(a, b);  // seen from the other side it runs the other way
      out.kind = PlaneEntity::kArc;
      out.from = a;
      out.to = b;
    }
  } else {
    ok = false;
  }
  e->close();
  return ok;
}

bool WritePlaneEntity(const PlaneEntity& p) {
  AcDbEntity* e = nullptr;
  if (acdbOpenAcDbEntity(e, p.id, AcDb::kForWrite) != Acad::eOk) return false;
  bool ok = true;
  if (AcDbLine* line = AcDbLine::cast(e)) {
    ok = line->setStartPoint(PlaneToWorld(p.start, p.startZ)) == Acad::eOk &&
         line->setEndPoint(PlaneToWorld(p.end, p.endZ)) == Acad::eOk;
  } else if (AcDbArc* arc = AcDbArc::cast(e)) {
    // Angles in the arc's own coordinate system, from the points they name.
    const AcGeVector3d n = arc->normal();
    const AcGePoint3d c = arc->center();
    const AcGePoint3d a = PlaneToWorld(p.center + Direction(p.from) * p.radius, p.z);
    const AcGePoint3d b = PlaneToWorld(p.center + Direction(p.to) * p.radius, p.z);
    bool reversed = false;
    FacesPlane(n, reversed);
    const double start = geom::OcsAngle(n, (reversed ? b : a) - c), end = geom::OcsAngle(n, (reversed ? a : b) - c);
    ok = arc->setStartAngle(start) == Acad::eOk && arc->setEndAngle(end) == Acad::eOk;
  }
  e->close();
  return ok;
}

}  // namespace kelhost::editor
