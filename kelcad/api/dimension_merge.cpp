// Merging a chain of linear dimensions into one, and splitting one into a
// chain.
#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "kelcad/api/current_space.h"
#include "kelcad/api/dimensions.h"
#include "kelcad/api/entity_edits.h"

namespace KEL {

namespace {

constexpr double kPi = 3.14159265358979323846;
// Directions closer than this (radians) are one direction.
constexpr double kSameDirection = 1e-6;

struct ChainDeleter {
  void operator()(resbuf* rb) const { acutRelRb(rb); }
};

// What merging and splitting need of an aligned or rotated dimension, and
// what the new dimensions take over from it.
struct LinearDim {
  bool rotated = false;
  AcGePoint3d x1, x2, line;
  double angle = 0.0;      // of x2 - x1 on the XY plane
  double direction = 0.0;  // the rotation of a rotated one, else angle
  AcDbObjectId style, layer;
  std::shared_ptr<resbuf> own;  // its "ACAD" xdata: its own settings
};

double PlanAngle(const AcGePoint3d& from, const AcGePoint3d& to) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  return dx == 0 && dy == 0 ? 0.0 : std::atan2(dy, dx);
}

// An angle brought into [0, pi): a direction without its sense.
double HalfTurn(double a) {
  while (a < 0) a += kPi;
  while (a >= kPi) a -= kPi;
  return a;
}

Acad::ErrorStatus ReadLinear(AcDbObjectId id, LinearDim& out) {
  AcDbDimension* dim = nullptr;
  const Acad::ErrorStatus es = acdbOpenObject(dim, id, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  if (auto* aligned = AcDbAlignedDimension::cast(dim)) {
    out.x1 = aligned->xLine1Point();
    out.x2 = aligned->xLine2Point();
    out.line = aligned->dimLinePoint();
    out.angle = out.direction = PlanAngle(out.x1, out.x2);
  } else if (auto* rotated = AcDbRotatedDimension::cast(dim)) {
    out.rotated = true;
    out.x1 = rotated->xLine1Point();
    out.x2 = rotated->xLine2Point();
    out.line = rotated->dimLinePoint();
    out.angle = PlanAngle(out.x1, out.x2);
    out.direction = rotated->rotation();
  } else {
    dim->close();
    return Acad::eNotThatKindOfClass;
  }
  out.style = dim->dimensionStyle();
  out.layer = dim->layerId();
  out.own.reset(dim->xData(L"ACAD"), ChainDeleter());
  dim->close();
  return Acad::eOk;
}

// Appends ent to model space of db.
Acad::ErrorStatus AppendToModelSpace(AcDbDatabase* db, AcDbEntity* ent, AcDbObjectId& id) {
  AcDbBlockTable* table = nullptr;
  Acad::ErrorStatus es = db->getBlockTable(table, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  AcDbBlockTableRecord* model = nullptr;
  es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite);
  table->close();
  if (es != Acad::eOk) return es;
  es = model->appendAcDbEntity(id, ent);
  model->close();
  return es;
}

// Appends dim with from's style, layer and own settings, to model space of
// the current drawing (KEL::Append) or of db when given, and closes it;
// deletes it when the append fails.
Acad::ErrorStatus AppendLike(AcDbDimension* dim, const LinearDim& from, AcDbObjectId& id, AcDbDatabase* db = nullptr) {
  dim->setDimensionStyle(from.style);
  Acad::ErrorStatus es = db ? AppendToModelSpace(db, dim, id) : Append(dim, id);
  if (es != Acad::eOk) {
    delete dim;
    return es;
  }
  dim->setLayer(from.layer);
  if (from.own) dim->setXData(from.own.get());
  dim->close();
  return es;
}

}  // namespace

Acad::ErrorStatus ManyDimEntToOne(const AcArray<AcDbObjectId>& dims, AcDbObjectId& id) {
  if (dims.length() == 0) return Acad::eInvalidInput;
  std::vector<LinearDim> read(static_cast<size_t>(dims.length()));
  for (int i = 0; i < dims.length(); ++i) {
    const Acad::ErrorStatus es = ReadLinear(dims[i], read[static_cast<size_t>(i)]);
    if (es != Acad::eOk) return es;
  }
  const double direction = HalfTurn(read[0].direction);
  for (const LinearDim& d : read) {
    const double angle = HalfTurn(d.angle), own = HalfTurn(d.direction);
    acutPrintf(L"\nangle:%f , rotation:%f", angle, own);
    const double apart = std::fabs(own - direction);
    if (std::min(apart, kPi - apart) > kSameDirection) return Acad::eNotApplicable;
  }
  // The two extension-line points that lie farthest apart, in input order.
  std::vector<AcGePoint3d> ends;
  for (const LinearDim& d : read) {
    ends.push_back(d.x1);
    ends.push_back(d.x2);
  }
  size_t from = 0, to = 1;
  double farthest = -1.0;
  for (size_t i = 0; i < ends.size(); ++i)
    for (size_t j = i + 1; j < ends.size(); ++j)
      if (ends[i].distanceTo(ends[j]) > farthest) {
        farthest = ends[i].distanceTo(ends[j]);
        from = i;
        to = j;
      }
  const LinearDim& first = read[0];
  AcDbDimension* merged = nullptr;
  if (first.rotated)
    merged = new AcDbRotatedDimension(first.direction, ends[from], ends[to], first.line);
  else
    merged = new AcDbAlignedDimension(ends[from], ends[to], first.line);
  const Acad::ErrorStatus es = AppendLike(merged, first, id);
  if (es == Acad::eOk) Erase(dims);
  return es;
}

Acad::ErrorStatus ManyDimEntToOne(const ads_name selection, AcDbObjectId& id) {
  AcArray<AcDbObjectId> dims;
  Adesk::Int32 count = 0;
  if (acedSSLength(selection, &count) != RTNORM) return Acad::eInvalidInput;
  for (Adesk::Int32 i = 0; i < count; ++i) {
    ads_name member;
    AcDbObjectId dim;
    if (acedSSName(selection, i, member) == RTNORM && acdbGetObjectId(dim, member) == Acad::eOk) dims.append(dim);
  }
  return ManyDimEntToOne(dims, id);
}

Acad::ErrorStatus OneDimEntToMany(AcDbObjectId dim, const AcArray<AcGePoint3d>& points, AcArray<AcDbObjectId>& ids) {
  LinearDim d;
  Acad::ErrorStatus es = ReadLinear(dim, d);
  if (es != Acad::eOk) return es;
  // Each point goes onto the measured line along the square to the
  // dimension's direction.
  const AcGeVector3d along(std::cos(d.direction), std::sin(d.direction), 0.0);
  const AcGeVector3d across(-along.y, along.x, 0.0);
  const AcGeVector3d measured = d.x2 - d.x1;
  std::vector<AcGePoint3d> cuts = {d.x1, d.x2};
  for (const AcGePoint3d& p : points) {
    // x1 + t * measured = p + s * across, in the XY plane.
    const double det = measured.x * -across.y + across.x * measured.y;
    if (std::fabs(det) < 1e-12) continue;
    const AcGeVector3d w = p - d.x1;
    const double t = (w.x * -across.y + across.x * w.y) / det;
    cuts.push_back(d.x1 + measured * t);
  }
  std::stable_sort(cuts.begin(), cuts.end(), [&](const AcGePoint3d& a, const AcGePoint3d& b) {
    return d.x1.distanceTo(a) < d.x1.distanceTo(b);
  });
  // The pieces go to model space of the working drawing.
  AcDbDatabase* working = acdbHostApplicationServices()->workingDatabase();
  if (!working) return Acad::eNoDatabase;
  const double tiny = 1e-9 * std::max(1.0, measured.length());
  const int before = ids.length();
  for (size_t i = 0; i + 1 < cuts.size(); ++i) {
    if (cuts[i].distanceTo(cuts[i + 1]) <= tiny) continue;
    AcDbObjectId id;
    es = AppendLike(new AcDbRotatedDimension(d.direction, cuts[i], cuts[i + 1], d.line), d, id, working);
    if (es == Acad::eOk) ids.append(id);
  }
  // A dimension that measures nothing has no piece and stays.
  if (es == Acad::eOk && ids.length() == before) return Acad::eInvalidInput;
  if (es == Acad::eOk) Erase(dim);
  return es;
}

}  // namespace KEL
