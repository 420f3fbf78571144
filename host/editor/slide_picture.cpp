#include "editor/slide_picture.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "ads/entity_names.h"
#include "arx/acedads.h"
#include "arx/dbblkref.h"
#include "arx/dbents.h"
#include "arx/dbmtext.h"
#include "arx/dbsymtb.h"
#include "db/curve_path.h"
#include "db/database_state.h"
#include "db/frames.h"
#include "db/sequences.h"
#include "db/text_box.h"

namespace kelhost::editor {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kMostPieces = 4096;  // per curve piece: enough for any screen

// What an entity inherits from the block reference that shows it.
struct Inherited {
  AcDbObjectId layer;  // for entities on layer 0; null at the top
  int color = 7;       // for BYBLOCK
};

class Painter {
 public:
  Painter(double tolerance, const db::Frame& display, bool fill)
      : mTolerance(tolerance), mDisplay(display), mFill(fill) {}

  void entity(const AcDbEntity* e, const Inherited& from);
  std::vector<SlideMark> take() { return std::move(mMarks); }

 private:
  AcGePoint2d onDisplay(const AcGePoint3d& p) const {
    const double w[3] = {p.x, p.y, p.z};
    double d[3];
    db::FromWorld(mDisplay, w, false, d);
    return AcGePoint2d(d[0], d[1]);
  }
  void chain(int color, const std::vector<AcGePoint3d>& points, bool closed = false);
  void area(int color, const std::vector<AcGePoint3d>& corners);
  void path(int color, const geom::Path& p);
  bool widePolyline(int color, const AcDbPolyline& pl);
  void children(const AcDbEntity* owner, int color, AcDbObjectId layer);
  int pieces(double sweep, double radius) const;

  double mTolerance;
  db::Frame mDisplay;
  bool mFill;
  std::vector<SlideMark> mMarks;
};

const AcDbLayerTableRecord* Layer(AcDbObjectId id) { return db::PeekAs<AcDbLayerTableRecord>(id); }

bool IsLayerZero(AcDbObjectId id) {
  AcDbDatabase* db = id.database();
  return db && id == db->state().layerZero;
}

int ShortVar(const wchar_t* name, int fallback) {
  resbuf rb{};
  return acedGetVar(name, &rb) == RTNORM && rb.restype == RTSHORT ? rb.resval.rint : fallback;
}

// Enough straight pieces for an arc of that sweep to stay within the
// tolerance of it.
int Painter::pieces(double sweep, double radius) const {
  const double a = std::fabs(sweep);
  if (!(radius > mTolerance)) return std::max(1, static_cast<int>(std::ceil(a / (kPi / 2))));
  const double step = 2 * std::acos(1 - mTolerance / radius);
  return std::clamp(static_cast<int>(std::ceil(a / step)), 1, kMostPieces);
}

void Painter::chain(int color, const std::vector<AcGePoint3d>& points, bool closed) {
  if (points.empty()) return;
  SlideMark m;
  m.color = color;
  for (const AcGePoint3d& p : points) m.points.push_back(onDisplay(p));
  if (closed) m.points.push_back(m.points.front());
  if (m.points.size() == 1) m.points.push_back(m.points.front());  // a dot
  mMarks.push_back(std::move(m));
}

void Painter::area(int color, const std::vector<AcGePoint3d>& corners) {
  chain(color, corners, true);
  if (!mFill) return;
  SlideMark m;
  m.color = color;
  m.filled = true;
  for (const AcGePoint3d& p : corners) m.points.push_back(onDisplay(p));
  mMarks.push_back(std::move(m));
}

void Painter::path(int color, const geom::Path& p) {
  std::vector<AcGePoint3d> points;
  auto add = [&points](const AcGePoint3d& q) {
    if (points.empty() || !(points.back() == q)) points.push_back(q);
  };
  for (const geom::Piece& piece : p.pieces()) {
    int n = 1;
    if (piece.kind == geom::Piece::kConic) n = pieces(piece.sweep, std::max(piece.u.length(), piece.v.length()));
    else if (piece.kind == geom::Piece::kFree)
      n = std::clamp(static_cast<int>(std::ceil(piece.length() / (4 * mTolerance))), 8, kMostPieces);
    for (int i = 0; i <= n; ++i) add(piece.point(piece.t0 + (piece.t1 - piece.t0) * i / n));
  }
  chain(color, points);
}

// Each segment of a polyline with a width as its outline (and filled):
// a straight segment a quadrilateral, an arc segment a band of them.
bool Painter::widePolyline(int color, const AcDbPolyline& pl) {
  bool wide = false;
  for (unsigned i = 0; i < pl.numVerts() && !wide; ++i) {
    double w0 = 0, w1 = 0;
    pl.getWidthsAt(i, w0, w1);
    wide = w0 > 0 || w1 > 0;
  }
  if (!wide) return false;
  db::Frame ocs;
  const AcGeVector3d n = pl.normal();
  const double normal[3] = {n.x, n.y, n.z};
  if (!db::OcsFrame(normal, ocs)) return false;
  auto world = [&](double x, double y) {
    const double p[3] = {x, y, pl.elevation()};
    double w[3];
    db::ToWorld(ocs, p, false, w);
    return AcGePoint3d(w[0], w[1], w[2]);
  };
  for (unsigned i = 0; i < pl.numVerts(); ++i) {
    if (!pl.onSegment(i)) continue;
    AcGePoint2d a, b;
    double bulge = 0, w0 = 0, w1 = 0;
    pl.getPointAt(i, a);
    pl.getPointAt((i + 1) % pl.numVerts(), b);
    pl.getBulgeAt(i, bulge);
    pl.getWidthsAt(i, w0, w1);
    const double chord = std::hypot(b.x - a.x, b.y - a.y);
    if (chord == 0) continue;
    if (std::fabs(bulge) < 1e-12) {
      const double nx = -(b.y - a.y) / chord, ny = (b.x - a.x) / chord;
      area(color, {world(a.x + nx * w0 / 2, a.y + ny * w0 / 2), world(b.x + nx * w1 / 2, b.y + ny * w1 / 2),
                   world(b.x - nx * w1 / 2, b.y - ny * w1 / 2), world(a.x - nx * w0 / 2, a.y - ny * w0 / 2)});
      continue;
    }
    // The arc through a and b: its sweep is four times the bulge's arctangent.
    const double sweep = 4 * std::atan(bulge);
    const double radius = chord / (2 * std::sin(std::fabs(sweep) / 2));
    const double mx = (a.x + b.x) / 2, my = (a.y + b.y) / 2;
    const double toCenter = radius * std::cos(sweep / 2) * (sweep > 0 ? 1 : -1);
    const double cx = mx - (b.y - a.y) / chord * toCenter, cy = my + (b.x - a.x) / chord * toCenter;
    const double start = std::atan2(a.y - cy, a.x - cx);
    const int k = pieces(sweep, radius + std::max(w0, w1) / 2);
    std::vector<AcGePoint3d> outer, inner;
    for (int j = 0; j <= k; ++j) {
      const double t = static_cast<double>(j) / k, ang = start + sweep * t, half = (w0 + (w1 - w0) * t) / 2;
      outer.push_back(world(cx + (radius + half) * std::cos(ang), cy + (radius + half) * std::sin(ang)));
      inner.push_back(world(cx + (radius - half) * std::cos(ang), cy + (radius - half) * std::sin(ang)));
    }
    std::vector<AcGePoint3d> outline(outer);
    outline.insert(outline.end(), inner.rbegin(), inner.rend());
    chain(color, outline, true);
    if (mFill)
      for (int j = 0; j < k; ++j) {
        SlideMark m;
        m.color = color;
        m.filled = true;
        for (const AcGePoint3d& p : {outer[j], outer[j + 1], inner[j + 1], inner[j]}) m.points.push_back(onDisplay(p));
        mMarks.push_back(std::move(m));
      }
  }
  return true;
}

// A block reference's pieces (without the definitions of its attributes)
// and its attributes; a dimension's picture; what any other entity
// explodes into.
void Painter::children(const AcDbEntity* owner, int color, AcDbObjectId layer) {
  AcDbVoidPtrArray parts;
  if (owner->explode(parts) != Acad::eOk) {
    for (void* part : parts) delete static_cast<AcDbEntity*>(part);
    AcDbExtents box;
    if (owner->getGeomExtents(box) != Acad::eOk || box.isEmpty()) return;
    const AcGePoint3d a = box.minPoint(), b = box.maxPoint();
    chain(color, {a, AcGePoint3d(b.x, a.y, a.z), AcGePoint3d(b.x, b.y, a.z), AcGePoint3d(a.x, b.y, a.z)}, true);
    return;
  }
  const Inherited inside{layer, color};
  for (void* part : parts) {
    std::unique_ptr<AcDbEntity> piece(static_cast<AcDbEntity*>(part));
    if (AcDbBlockReference::cast(owner) && AcDbAttributeDefinition::cast(piece.get())) continue;
    entity(piece.get(), inside);
  }
  if (auto* ref = AcDbBlockReference::cast(owner))
    for (AcDbEntity* attribute : db::LiveSubentities(const_cast<AcDbBlockReference*>(ref)->sequence())) entity(attribute, inside);
}

void Painter::entity(const AcDbEntity* e, const Inherited& from) {
  if (e->visibility() != AcDb::kVisible) return;
  if (auto* attribute = AcDbAttribute::cast(e); attribute && attribute->isInvisible()) return;
  const AcDbObjectId layerId = !from.layer.isNull() && IsLayerZero(e->layerId()) ? from.layer : e->layerId();
  const AcDbLayerTableRecord* layer = Layer(layerId);
  const bool reference = AcDbBlockReference::cast(e) != nullptr;
  if (layer && (layer->isFrozen() || (layer->isOff() && !reference))) return;
  int color = e->colorIndex();
  if (color == 256) color = layer ? std::abs(layer->colorIndex()) : 7;
  else if (color == 0) color = from.color;
  if (color < 1 || color > 255) color = 7;

  if (auto* pl = AcDbPolyline::cast(e); pl && widePolyline(color, *pl)) return;
  if (auto* curve = AcDbCurve::cast(e)) {
    geom::Path p;
    if (curve->buildPath(p)) path(color, p);
    return;
  }
  if (auto* point = AcDbPoint::cast(e)) return chain(color, {point->position()});
  if (auto* text = AcDbText::cast(e)) {
    AcGePoint3d corners[4];
    if (db::TextBoxCorners(*text, corners)) chain(color, {corners[0], corners[1], corners[2], corners[3]}, true);
    return;
  }
  if (auto* mtext = AcDbMText::cast(e)) {
    AcGePoint3dArray frame;  // top left, top right, bottom left, bottom right
    if (mtext->getBoundingPoints(frame) == Acad::eOk && frame.length() == 4)
      chain(color, {frame[0], frame[1], frame[3], frame[2]}, true);
    return;
  }
  children(e, color, layerId);
}

}  // namespace

std::vector<SlideMark> DrawCurrentSpace(double tolerance) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) return {};
  db::Frame display;
  if (!db::DcsFrame(db->state(), display)) return {};
  Painter painter(tolerance, display, ShortVar(L"FILLMODE", 1) != 0);
  const auto* space = db::PeekAs<AcDbBlockTableRecord>(db->currentSpaceId());
  if (!space) return {};
  for (const AcDbObjectId& id : space->entityIds()) {
    if (id.isErased()) continue;
    if (const auto* e = db::PeekAs<AcDbEntity>(id)) painter.entity(e, Inherited{});
  }
  return painter.take();
}

}  // namespace kelhost::editor
