#include "gi/recorder.h"

#include <cmath>
#include <cstdlib>

#include "arx/dbapserv.h"
#include "arx/dbents.h"
#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"
#include "db/curve_path.h"
#include "gi/path_drawing.h"

namespace kelhost::gi {
namespace {

constexpr double kTwoPi = 6.283185307179586476925;
constexpr double kTol = 1e-9;
// A block that holds a reference to itself (a broken drawing) stops here.
constexpr int kMaxNesting = 64;

class Traits : public AcGiDrawableTraits {
 public:
  void setColor(const Adesk::UInt16 color) override { properties.color = color; }
  void setLayer(const AcDbObjectId layerId) override { properties.layer = layerId; }
  void setLineType(const AcDbObjectId linetypeId) override { properties.linetype = linetypeId; }
  void setSelectionMarker(const Adesk::LongPtr markerId) override { properties.marker = markerId; }
  void setFillType(const AcGiFillType fillType) override { properties.fill = fillType; }
  void setLineWeight(const AcDb::LineWeight lineWeight) override { properties.lineWeight = lineWeight; }
  void setLineTypeScale(double scale) override { properties.linetypeScale = scale; }
  void setThickness(double thickness) override { properties.thickness = thickness; }
  Adesk::UInt16 color() const override { return properties.color; }
  AcDbObjectId layerId() const override { return properties.layer; }
  AcDbObjectId lineTypeId() const override { return properties.linetype; }
  AcGiFillType fillType() const override { return properties.fill; }
  AcDb::LineWeight lineWeight() const override { return properties.lineWeight; }
  double lineTypeScale() const override { return properties.linetypeScale; }
  double thickness() const override { return properties.thickness; }

  Properties properties;
};

AcDbDatabase* WorkingDb() {
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  return services ? services->workingDatabase() : nullptr;
}

class Context : public AcGiContext {
 public:
  Adesk::Boolean isPsOut() const override { return false; }
  Adesk::Boolean isPlotGeneration() const override { return false; }
  AcDbDatabase* database() const override { return WorkingDb(); }
};

struct State {
  Picture picture;
  Traits traits;
  Context context;
  DrawOptions options;
  std::vector<AcGeMatrix3d> transforms{AcGeMatrix3d::kIdentity};  // back(): model to world
  int nesting = 0;

  const AcGeMatrix3d& model() const { return transforms.back(); }
  void add(Primitive p) {
    p.properties = traits.properties;
    picture.push_back(std::move(p));
  }
};

// The points of an arc through three points: its center, radius, the
// normal about which it runs anticlockwise from first to last, and sweep.
bool ArcThrough(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, AcGePoint3d& center,
                double& radius, AcGeVector3d& normal, double& sweep) {
  const AcGeVector3d ab = b - a, ac = c - a;
  const AcGeVector3d n = ab.crossProduct(ac);
  const double n2 = n.lengthSqrd();
  if (n2 <= kTol * kTol * ab.lengthSqrd() * ac.lengthSqrd() || n2 == 0.0) return false;
  const AcGeVector3d toCenter =
      (n.crossProduct(ab) * ac.lengthSqrd() + ac.crossProduct(n) * ab.lengthSqrd()) / (2.0 * n2);
  center = a + toCenter;
  radius = toCenter.length();
  normal = n.normal();
  sweep = (a - center).angleTo(c - center, normal);
  return true;
}

class Geometry : public AcGiWorldGeometry {
 public:
  explicit Geometry(State& s) : mState(s) {}

  void getModelToWorldTransform(AcGeMatrix3d& xform) const override { xform = mState.model(); }
  void getWorldToModelTransform(AcGeMatrix3d& xform) const override { xform = mState.model().inverse(); }
  Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) override {
    return pushModelTransform(AcGeMatrix3d::planeToWorld(normal));
  }
  Adesk::Boolean pushModelTransform(const AcGeMatrix3d& xform) override {
    mState.transforms.push_back(mState.model() * xform);
    return false;
  }
  Adesk::Boolean popModelTransform() override {
    if (mState.transforms.size() > 1) mState.transforms.pop_back();
    return false;
  }

  Adesk::Boolean circle(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal) const override {
    conic(center, radius, normal, normal.perpVector(), kTwoPi, kAcGiArcSimple, true);
    return false;
  }
  Adesk::Boolean circle(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3) const override {
    AcGePoint3d center;
    double radius, sweep;
    AcGeVector3d normal;
    if (ArcThrough(p1, p2, p3, center, radius, normal, sweep)) circle(center, radius, normal);
    return false;
  }
  Adesk::Boolean circularArc(const AcGePoint3d& center, const double radius, const AcGeVector3d& normal,
                             const AcGeVector3d& startVector, const double sweepAngle,
                             const AcGiArcType arcType) const override {
    conic(center, radius, normal, startVector, sweepAngle, arcType, false);
    return false;
  }
  Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point, const AcGePoint3d& end,
                             const AcGiArcType arcType) const override {
    AcGePoint3d center;
    double radius, sweep;
    AcGeVector3d normal;
    if (!ArcThrough(start, point, end, center, radius, normal, sweep)) {
      const AcGePoint3d line[2] = {start, end};
      return polyline(2, line, nullptr, -1);
    }
    conic(center, radius, normal, start - center, sweep, arcType, false);
    return false;
  }
  Adesk::Boolean polyline(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList, const AcGeVector3d*,
                          Adesk::LongPtr) const override {
    points(Primitive::kPolyline, nbPoints, pVertexList);
    return false;
  }
  Adesk::Boolean polygon(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList) const override {
    points(Primitive::kPolygon, nbPoints, pVertexList);
    return false;
  }
  Adesk::Boolean polypoint(const Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList, const AcGeVector3d*,
                           const Adesk::LongPtr*) const override {
    points(Primitive::kPoints, nbPoints, pVertexList);
    return false;
  }
  Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                      const double height, const double width, const double oblique,
                      const ACHAR* pMsg) const override {
    const AcGeMatrix3d& m = mState.model();
    const AcGeVector3d along = m * direction.normal();
    const AcGeVector3d up = m * normal.normal().crossProduct(direction.normal());
    Primitive p;
    p.kind = Primitive::kText;
    p.points.push_back(m * position);
    p.direction = along.normal();
    p.normal = along.crossProduct(up).normal();
    const double upLength = up.length();
    p.height = height * upLength;
    p.widthFactor = upLength > 0.0 ? width * along.length() / upLength : width;
    p.oblique = oblique;
    p.text = pMsg ? pMsg : L"";
    mState.add(std::move(p));
    return false;
  }
  Adesk::Boolean xline(const AcGePoint3d& one, const AcGePoint3d& two) const override {
    const AcGePoint3d pts[2] = {one, two};
    points(Primitive::kXline, 2, pts);
    return false;
  }
  Adesk::Boolean ray(const AcGePoint3d& origin, const AcGePoint3d& through) const override {
    const AcGePoint3d pts[2] = {origin, through};
    points(Primitive::kRay, 2, pts);
    return false;
  }
  Adesk::Boolean pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex, Adesk::UInt32 numSegs) const override;
  Adesk::Boolean draw(AcGiDrawable* pDrawable) const override;
  Adesk::Boolean worldLine(const AcGePoint3d pnts[2]) override {
    // In world coordinates whatever the model transformation.
    Primitive p;
    p.kind = Primitive::kPolyline;
    p.points.assign(pnts, pnts + 2);
    mState.add(std::move(p));
    return false;
  }
  void setExtents(AcGePoint3d*) const override {}

 private:
  void points(Primitive::Kind kind, Adesk::UInt32 n, const AcGePoint3d* list) const {
    if (!list) return;
    Primitive p;
    p.kind = kind;
    p.points.reserve(n);
    for (Adesk::UInt32 i = 0; i < n; ++i) p.points.push_back(mState.model() * list[i]);
    mState.add(std::move(p));
  }
  // A circle or arc placed by the model transformation: still one when the
  // transformation keeps its shape, else the ellipse it became as points.
  void conic(const AcGePoint3d& center, double radius, const AcGeVector3d& normal, const AcGeVector3d& startVector,
             double sweep, AcGiArcType arcType, bool full) const;
  // The band a wide segment covers, as a filled polygon.
  void band(const geom::Piece& piece, const AcGeVector3d& planeNormal, double startWidth, double endWidth) const;

  State& mState;
};

void Geometry::conic(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                     const AcGeVector3d& startVector, double sweep, AcGiArcType arcType, bool full) const {
  const AcGeVector3d n = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
  AcGeVector3d u = startVector - n * startVector.dotProduct(n);
  if (u.isZeroLength()) u = n.perpVector();
  u = u.normal() * radius;
  const AcGeVector3d v = n.crossProduct(u);
  const AcGeMatrix3d& m = mState.model();
  const AcGePoint3d c = m * center;
  const AcGeVector3d mu = m * u, mv = m * v;
  const double r = mu.length();
  const bool circular = std::fabs(r - mv.length()) <= kTol * std::max(1.0, r) &&
                        std::fabs(mu.dotProduct(mv)) <= kTol * std::max(1.0, r * r);
  if (circular && r > 0.0) {
    Primitive p;
    p.kind = full ? Primitive::kCircle : Primitive::kArc;
    p.center = c;
    p.radius = r;
    p.normal = mu.crossProduct(mv).normal();
    p.startVector = mu.normal();
    p.sweep = sweep;
    p.arcType = arcType;
    mState.add(std::move(p));
    return;
  }
  geom::Piece piece;
  piece.kind = geom::Piece::kConic;
  piece.center = c;
  piece.u = mu;
  piece.v = mv;
  piece.sweep = sweep;
  Primitive p;
  p.kind = Primitive::kPolyline;
  p.points = Approximate(piece);
  if (!full && arcType == kAcGiArcSector) p.points.push_back(c);
  if (!full && arcType != kAcGiArcSimple) p.points.push_back(p.points.front());
  mState.add(std::move(p));
}

void Geometry::band(const geom::Piece& piece, const AcGeVector3d& planeNormal, double startWidth,
                    double endWidth) const {
  const std::vector<AcGePoint3d> centre = Approximate(piece);
  const size_t n = centre.size();
  std::vector<AcGePoint3d> outline(2 * n);
  for (size_t k = 0; k < n; ++k) {
    const double f = n > 1 ? static_cast<double>(k) / (n - 1) : 0.0;
    const double t = piece.t0 + (piece.t1 - piece.t0) * f;
    const AcGeVector3d side = planeNormal.crossProduct(piece.derivative(t)).normal();
    const double half = (startWidth + (endWidth - startWidth) * f) / 2.0;
    outline[k] = centre[k] + side * half;
    outline[2 * n - 1 - k] = centre[k] - side * half;
  }
  const AcGiFillType saved = mState.traits.properties.fill;
  mState.traits.properties.fill = kAcGiFillAlways;
  polygon(static_cast<Adesk::UInt32>(outline.size()), outline.data());
  mState.traits.properties.fill = saved;
}

Adesk::Boolean Geometry::pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex, Adesk::UInt32 numSegs) const {
  geom::Path path;
  if (!lwBuf.buildPath(path)) return false;
  const double to = numSegs == 0 ? path.endParam() : static_cast<double>(fromIndex) + numSegs;
  Geometry& self = const_cast<Geometry&>(*this);
  // Runs of segments without width draw as lines and arcs; a wide segment
  // covers its band.
  double runStart = fromIndex;
  for (const geom::Piece& p : path.pieces()) {
    if (p.t0 < fromIndex - kTol || p.t1 > to + kTol) continue;
    double startWidth = 0.0, endWidth = 0.0;
    lwBuf.getWidthsAt(static_cast<unsigned>(std::lround(p.t0)), startWidth, endWidth);
    if (startWidth == 0.0 && endWidth == 0.0) continue;
    DrawPath(path, self, runStart, p.t0);
    band(p, lwBuf.normal(), startWidth, endWidth);
    runStart = p.t1;
  }
  DrawPath(path, self, runStart, to);
  return false;
}

class WorldDraw : public AcGiWorldDraw {
 public:
  WorldDraw(State& s, Geometry& g) : mState(s), mGeometry(g) {}
  AcGiRegenType regenType() const override { return mState.options.regenType; }
  Adesk::Boolean regenAbort() const override { return false; }
  AcGiSubEntityTraits& subEntityTraits() const override { return mState.traits; }
  AcGiGeometry* rawGeometry() const override { return &mGeometry; }
  Adesk::Boolean isDragging() const override { return mState.options.dragging; }
  AcGiContext* context() override { return &mState.context; }
  Adesk::UInt32 numberOfIsolines() const override { return 4; }
  double deviation(const AcGiDeviationType, const AcGePoint3d&) const override { return 0.0; }
  AcGiWorldGeometry& geometry() const override { return mGeometry; }

 private:
  State& mState;
  Geometry& mGeometry;
};

// The colour index something drawn with these properties shows: BYLAYER
// is its layer's colour, BYBLOCK outside any block white.
Adesk::UInt16 ShownColor(const Properties& p) {
  if (p.color == 0) return 7;
  if (p.color != 256) return p.color;
  AcDbLayerTableRecord* layer = nullptr;
  if (p.layer.isNull() || acdbOpenObject(layer, p.layer, AcDb::kForRead) != Acad::eOk) return 7;
  const int index = std::abs(layer->colorIndex());  // negative: the layer is off
  layer->close();
  return static_cast<Adesk::UInt16>(index);
}

// The drawable's attributes over the enclosing ones, then its geometry.
// Inside a block, what is on layer 0 goes on the reference's layer and
// what is BYBLOCK takes the reference's colour and lineweight.
void DrawNested(State& state, Geometry& geometry, AcGiDrawable& drawable) {
  if (state.nesting >= kMaxNesting) return;
  const Properties enclosing = state.traits.properties;
  const Adesk::UInt32 flags = drawable.setAttributes(&state.traits);
  Properties& p = state.traits.properties;
  if (state.nesting > 0) {
    AcDbDatabase* db = WorkingDb();
    if (db && p.layer == db->layerZero() && !enclosing.layer.isNull()) p.layer = enclosing.layer;
    if (p.color == 0) p.color = ShownColor(enclosing);
    if (p.lineWeight == AcDb::kLnWtByBlock) p.lineWeight = enclosing.lineWeight;
  }
  if (!(flags & AcGiDrawable::kDrawableIsInvisible)) {
    ++state.nesting;
    WorldDraw wd(state, geometry);
    drawable.worldDraw(&wd);
    --state.nesting;
  }
  state.traits.properties = enclosing;
}

Adesk::Boolean Geometry::draw(AcGiDrawable* pDrawable) const {
  if (pDrawable) DrawNested(mState, const_cast<Geometry&>(*this), *pDrawable);
  return false;
}

}  // namespace

Picture Draw(AcGiDrawable& drawable, const DrawOptions& options) {
  State state;
  state.options = options;
  Geometry geometry(state);
  DrawNested(state, geometry, drawable);
  return std::move(state.picture);
}

}  // namespace kelhost::gi
