#include "plot/painter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "arx/dbblkref.h"
#include "arx/dbcolor.h"
#include "arx/dbdatabase.h"
#include "arx/dbdim.h"
#include "arx/dbents.h"
#include "arx/dbmtext.h"
#include "arx/dbpoly.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/stub.h"
#include "dxf/kept_object.h"
#include "gi/recorder.h"
#include "kelhost/text.h"
#include "plot/drawing_settings.h"
#include "plot/entity_colour.h"
#include "plot/linetype_dashes.h"
#include "plot/painter_state.h"
#include "plot/wide_polyline.h"

namespace kelhost::plot {
namespace {

constexpr double kTwoPi = 6.283185307179586476925;
constexpr int kMaxNesting = 64;  // a block that holds itself stops here
constexpr double kCurveTolerance = 0.15;  // device units a curve's chords may stray

template <class T>
const T* Live(AcDbObjectId id) {
  AcDbObject* o = db::Peek(id);
  if (!o || o->isErased()) return nullptr;
  return T::cast(o);
}

// The mean scale of a placement's plane part.
double PlaneScale(const AcGeMatrix3d& m) {
  const AcGeVector3d x = m * AcGeVector3d::kXAxis, y = m * AcGeVector3d::kYAxis;
  return std::sqrt(std::fabs(x.x * y.y - x.y * y.x));
}

}  // namespace

double Affine::unit() const { return std::sqrt(std::fabs(xx * yy - xy * yx)); }

Affine Affine::then(const Affine& o) const {
  Affine r;
  r.xx = o.xx * xx + o.xy * yx;
  r.yx = o.yx * xx + o.yy * yx;
  r.xy = o.xx * xy + o.xy * yy;
  r.yy = o.yx * xy + o.yy * yy;
  r.x0 = o.xx * x0 + o.xy * y0 + o.x0;
  r.y0 = o.yx * x0 + o.yy * y0 + o.y0;
  return r;
}

Painter::Painter(cairo_t* cr, AcDbDatabase* db, const PaintOptions& options)
    : mCr(cr), mDb(db), mOptions(options), mCaches(new Caches) {
  mLtscale = db->ltscale();
  mLwDefault = static_cast<int>(DrawingSetting(db, L"LWDEFAULT", 25));
  mFill = DrawingSetting(db, L"FILLMODE", 1) != 0;
  mPdmode = static_cast<int>(DrawingSetting(db, L"PDMODE", 0));
  mPdsize = DrawingSetting(db, L"PDSIZE", 0);
  cairo_set_line_cap(mCr, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(mCr, CAIRO_LINE_JOIN_ROUND);
}

Painter::~Painter() { delete mCaches; }

void Painter::paintSpace(AcDbObjectId space, const Affine& toDevice, double linetypeUnit,
                         const std::set<AcDbObjectId>* frozen) {
  const AcDbBlockTableRecord* block = Live<AcDbBlockTableRecord>(space);
  if (!block) return;
  Context c;
  c.device = toDevice;
  c.dashUnit = toDevice.unit() * linetypeUnit;
  c.frozen = frozen;
  for (AcDbObjectId id : block->entityIds())
    if (const AcDbEntity* e = Live<AcDbEntity>(id)) entity(e, c);
}

bool Painter::resolve(const AcDbEntity* e, const Context& c, Look& look) const {
  if (e->visibility() == AcDb::kInvisible) return false;
  look.layer = e->layerId();
  if (c.outer && look.layer == mDb->layerZero()) look.layer = c.outer->layer;
  const AcDbLayerTableRecord* layer = Live<AcDbLayerTableRecord>(look.layer);
  if (layer && (layer->isFrozen() || layer->isOff())) return false;
  // Dimensions' definition points live on DEFPOINTS, which never plots.
  if (layer && EqualNoCase(layer->getName(), L"DEFPOINTS")) return false;
  if (c.frozen && c.frozen->count(look.layer)) return false;

  const Adesk::UInt16 index = e->colorIndex();
  if (index == 0) look.rgb = c.outer ? c.outer->byBlock : PlottedRgb(7);
  else if (index == 256) look.rgb = PlottedRgb(layer ? std::abs(layer->colorIndex()) : 7);
  else look.rgb = PlottedRgb(index);
  const AcCmEntityColor shown = e->entityColor();
  if (shown.isByColor()) look.rgb = (shown.red() << 16) | (shown.green() << 8) | shown.blue();
  if (mOptions.monochrome) look.rgb = 0;
  look.byBlock = look.rgb;

  const AcDbObjectId lt = e->linetypeId();
  if (lt.isNull() || lt == mDb->byLayerLinetype()) look.linetype = layer ? layer->linetypeObjectId() : AcDbObjectId();
  else if (lt == mDb->byBlockLinetype()) look.linetype = c.outer ? c.outer->linetype : AcDbObjectId();
  else look.linetype = lt;
  look.linetypeScale = e->linetypeScale();

  int weight = e->lineWeight();
  if (weight == AcDb::kLnWtByLayer) weight = layer ? layer->lineWeight() : AcDb::kLnWtByLwDefault;
  if (weight == AcDb::kLnWtByBlock) weight = c.outer ? c.outer->lineWeight : AcDb::kLnWtByLwDefault;
  if (weight < 0) weight = mLwDefault;
  look.lineWeight = weight;
  return true;
}

void Painter::setPen(const Look& look, const Context& c, bool dashed) {
  cairo_set_source_rgb(mCr, ((look.rgb >> 16) & 255) / 255.0, ((look.rgb >> 8) & 255) / 255.0,
                       (look.rgb & 255) / 255.0);
  double width = mOptions.thinnest;
  if (mOptions.lineweights) width = std::max(width, look.lineWeight / 100.0 * mOptions.devicePerMm);
  cairo_set_line_width(mCr, width);
  if (!dashed || look.linetype.isNull()) {
    cairo_set_dash(mCr, nullptr, 0, 0);
    return;
  }
  auto found = mCaches->dashes.find(look.linetype);
  if (found == mCaches->dashes.end())
    found = mCaches->dashes.emplace(look.linetype, DashesOf(Live<AcDbLinetypeTableRecord>(look.linetype))).first;
  const double unit = c.dashUnit * PlaneScale(c.model) * look.linetypeScale * mLtscale;
  std::vector<double> lengths;
  double offset = 0;
  if (found->second.forDevice(unit, width, lengths, offset))
    cairo_set_dash(mCr, lengths.data(), static_cast<int>(lengths.size()), offset);
  else
    cairo_set_dash(mCr, nullptr, 0, 0);
}

void Painter::moveTo(const AcGePoint3d& p, const Context& c) {
  const AcGePoint3d q = c.model * p;
  double x, y;
  c.device.apply(q.x, q.y, x, y);
  cairo_move_to(mCr, x, y);
}

void Painter::lineTo(const AcGePoint3d& p, const Context& c) {
  const AcGePoint3d q = c.model * p;
  double x, y;
  c.device.apply(q.x, q.y, x, y);
  cairo_line_to(mCr, x, y);
}

void Painter::chain(const std::vector<AcGePoint3d>& points, bool closed, const Context& c) {
  if (points.empty()) return;
  moveTo(points[0], c);
  if (points.size() == 1) lineTo(points[0], c);  // a dot
  for (size_t i = 1; i < points.size(); ++i) lineTo(points[i], c);
  if (closed) cairo_close_path(mCr);
}

// center + u cos t + v sin t for t from 0 to sweep, in chords short enough
// to stay within the tolerance on the device.
void Painter::conic(const AcGePoint3d& center, const AcGeVector3d& u, const AcGeVector3d& v, double sweep,
                    const Context& c) {
  // A circle that stays a circle on the device goes as cairo's arc: a few
  // curves in a page instead of many chords.
  double cx, cy, ux, uy, vx, vy;
  const AcGePoint3d mc = c.model * center, mu = c.model * (center + u), mv = c.model * (center + v);
  c.device.apply(mc.x, mc.y, cx, cy);
  c.device.apply(mu.x, mu.y, ux, uy);
  c.device.apply(mv.x, mv.y, vx, vy);
  ux -= cx, uy -= cy, vx -= cx, vy -= cy;
  const double ru = std::hypot(ux, uy), rv = std::hypot(vx, vy);
  if (ru > 0 && std::fabs(ru - rv) <= 1e-9 * ru && std::fabs(ux * vx + uy * vy) <= 1e-9 * ru * ru) {
    const double start = std::atan2(uy, ux);
    cairo_move_to(mCr, cx + ux, cy + uy);
    if (ux * vy - uy * vx > 0) cairo_arc(mCr, cx, cy, ru, start, start + sweep);
    else cairo_arc_negative(mCr, cx, cy, ru, start, start - sweep);
    return;
  }
  const double radius = std::max(u.length(), v.length()) * PlaneScale(c.model) * c.device.unit();
  int n = 4;
  if (radius > kCurveTolerance) {
    const double step = 2 * std::acos(1 - kCurveTolerance / radius);
    n = std::clamp(static_cast<int>(std::ceil(std::fabs(sweep) / step)), 4, 4096);
  }
  moveTo(center + u, c);
  for (int i = 1; i <= n; ++i) {
    const double t = sweep * i / n;
    lineTo(center + u * std::cos(t) + v * std::sin(t), c);
  }
}

void Painter::entity(const AcDbEntity* e, const Context& c) {
  if (const dxf::KeptData* kept = dxf::KeptDataOf(e)) {
    ++mSkipped[kept->type];
    return;
  }
  Look look;
  if (!resolve(e, c, look)) return;
  if (const AcDbDimension* dim = AcDbDimension::cast(e)) {
    block(dim->dimBlockId(), dim->dimBlockTransform(), look, c);
  } else if (const AcDbMInsertBlock* grid = AcDbMInsertBlock::cast(e)) {
    const AcGeMatrix3d placed = grid->blockTransform();
    for (int row = 0; row < grid->rows(); ++row)
      for (int column = 0; column < grid->columns(); ++column)
        block(grid->blockTableRecord(), AcGeMatrix3d::translation(grid->elementOffset(column, row)) * placed, look,
              c);
    reference(*grid, look, c);
  } else if (const AcDbBlockReference* ref = AcDbBlockReference::cast(e)) {
    block(ref->blockTableRecord(), ref->blockTransform(), look, c);
    reference(*ref, look, c);
  } else if (const AcDbAttributeDefinition* def = AcDbAttributeDefinition::cast(e)) {
    // Shown by its tag where it stands; inside a block only a constant
    // one shows, with its value.
    if (!c.outer) text(*def, look, c);
    else if (def->isConstant()) text(*def, look, c);
  } else if (const AcDbText* t = AcDbText::cast(e)) {
    if (const AcDbAttribute* a = AcDbAttribute::cast(e); a && a->isInvisible()) return;
    text(*t, look, c);
  } else if (const AcDbMText* m = AcDbMText::cast(e)) {
    mtext(*m, look, c);
  } else if (const AcDbPoint* p = AcDbPoint::cast(e)) {
    point(*p, look, c);
  } else {
    primitives(e, look, c);
  }
}

// The attributes a reference owns, placed where they stand.
void Painter::reference(const AcDbBlockReference& ref, const Look& look, const Context& c) {
  Context inner = c;
  inner.outer = &look;
  for (AcDbObjectId id : ref.attributeIds())
    if (const AcDbEntity* a = Live<AcDbEntity>(id)) entity(a, inner);
}

void Painter::block(AcDbObjectId blockId, const AcGeMatrix3d& xform, const Look& look, const Context& c) {
  if (c.depth >= kMaxNesting) return;
  const AcDbBlockTableRecord* def = Live<AcDbBlockTableRecord>(blockId);
  if (!def) return;
  Context inner = c;
  inner.model = c.model * xform;
  inner.outer = &look;
  inner.depth = c.depth + 1;
  for (AcDbObjectId id : def->entityIds())
    if (const AcDbEntity* e = Live<AcDbEntity>(id)) entity(e, inner);
}

// Curves, polylines and whatever else draws itself: its graphics
// primitives. A heavy polyline with widths draws as the lightweight one
// it equals, whose wide segments are filled bands.
void Painter::primitives(const AcDbEntity* e, const Look& look, const Context& c) {
  std::unique_ptr<AcDbPolyline> wide;
  if (const AcDb2dPolyline* heavy = AcDb2dPolyline::cast(e)) wide = WidePolylineOf(*heavy);
  AcGiDrawable& drawable = wide ? static_cast<AcGiDrawable&>(*wide) : const_cast<AcDbEntity&>(*e);
  const gi::Picture picture = gi::Draw(drawable);
  for (const gi::Primitive& p : picture) {
    cairo_new_path(mCr);
    switch (p.kind) {
      case gi::Primitive::kPolyline:
        setPen(look, c, true);
        chain(p.points, false, c);
        cairo_stroke(mCr);
        break;
      case gi::Primitive::kPolygon:
        setPen(look, c, p.properties.fill != kAcGiFillAlways);
        chain(p.points, true, c);
        if (p.properties.fill == kAcGiFillAlways && mFill) {
          cairo_fill_preserve(mCr);
          cairo_set_line_width(mCr, mOptions.thinnest);
        }
        cairo_stroke(mCr);
        break;
      case gi::Primitive::kPoints:
        setPen(look, c, false);
        for (const AcGePoint3d& q : p.points) chain({q}, false, c);
        cairo_stroke(mCr);
        break;
      case gi::Primitive::kCircle:
      case gi::Primitive::kArc: {
        setPen(look, c, true);
        const AcGeVector3d u = p.startVector * p.radius;
        const AcGeVector3d v = p.normal.crossProduct(u);
        const bool full = p.kind == gi::Primitive::kCircle;
        conic(p.center, u, v, full ? kTwoPi : p.sweep, c);
        if (full) cairo_close_path(mCr);
        else if (p.arcType == kAcGiArcSector) lineTo(p.center, c);
        if (!full && p.arcType != kAcGiArcSimple) cairo_close_path(mCr);
        cairo_stroke(mCr);
        break;
      }
      default:  // text of other drawables, infinite lines: not plotted
        break;
    }
  }
}

void Painter::point(const AcDbPoint& p, const Look& look, const Context& c) {
  const AcGePoint3d q = c.model * p.position();
  double x, y;
  c.device.apply(q.x, q.y, x, y);
  setPen(look, c, false);
  cairo_new_path(mCr);
  const int shape = mPdmode & 7;
  // PDSIZE: positive in drawing units, negative a percentage of the
  // plotted area's height, zero five percent of it.
  double size = mOptions.pointSize;
  if (mPdsize > 0) size = mPdsize * PlaneScale(c.model) * c.device.unit();
  else if (mPdsize < 0) size = mOptions.pointSize * -mPdsize / 5.0;
  const double h = size / 2;
  if (shape == 0) {
    cairo_arc(mCr, x, y, std::max(cairo_get_line_width(mCr), 1.0) / 2, 0, kTwoPi);
    cairo_fill(mCr);
  } else if (shape == 2) {
    cairo_move_to(mCr, x - h, y);
    cairo_line_to(mCr, x + h, y);
    cairo_move_to(mCr, x, y - h);
    cairo_line_to(mCr, x, y + h);
  } else if (shape == 3) {
    cairo_move_to(mCr, x - h, y - h);
    cairo_line_to(mCr, x + h, y + h);
    cairo_move_to(mCr, x - h, y + h);
    cairo_line_to(mCr, x + h, y - h);
  } else if (shape == 4) {
    cairo_move_to(mCr, x, y);
    cairo_line_to(mCr, x, y - h);
  }
  if (mPdmode & 32) {
    cairo_new_sub_path(mCr);
    cairo_arc(mCr, x, y, h, 0, kTwoPi);
  }
  if (mPdmode & 64) cairo_rectangle(mCr, x - h, y - h, size, size);
  cairo_stroke(mCr);
}

}  // namespace kelhost::plot
