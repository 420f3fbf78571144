// Multiline text: its properties, its DXF groups (long contents split in
// 250-character chunks, the direction as 11 or as the angle 50), and its
// estimated size, extents, transformation and explosion.
#include <cmath>
#include <cstdlib>
#include <limits>

#include "arx/acutads.h"
#include "arx/dbapserv.h"
#include "arx/dbdatabase.h"
#include "arx/dbmtext.h"
#include "arx/dbsymtb.h"
#include "db/curve_geometry.h"
#include "db/mtext_codes.h"
#include "db/mtext_layout.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "db/stub.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbMText, AcDbEntity, L"MTEXT")

namespace {

constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();
constexpr size_t kChunk = 250;

// A real a list or file may leave out: NaN while absent, and then not
// written back.
void OptionalReal(kelhost::dxf::GroupFiler& f, int code, double& v) {
  if (f.reading()) {
    double got = kAbsent;
    f.real(code, got, kAbsent, Presence::kAlways);
    if (!std::isnan(got) || !f.keepsAbsent()) v = got;
  } else if (!std::isnan(v)) {
    f.real(code, v, 0.0, Presence::kAlways);
  }
}

double OrZero(double v) { return std::isnan(v) ? 0.0 : v; }

AcGeVector3d DirectionAt(const AcGeVector3d& normal, double angle) {
  return AcGeMatrix3d::planeToWorld(normal) * AcGeVector3d(std::cos(angle), std::sin(angle), 0.0);
}

// A direction projected into the plane of normal; zero when it is along it.
AcGeVector3d InPlane(const AcGeVector3d& normal, const AcGeVector3d& dir) {
  const AcGeVector3d n = normal.normal();
  const AcGeVector3d p = dir - n * dir.dotProduct(n);
  return p.length() < 1e-12 * std::max(1.0, dir.length()) ? AcGeVector3d() : p.normal();
}

AcDbDatabase* DatabaseOf(const AcDbEntity* e) {
  return e->database() ? e->database() : acdbHostApplicationServices()->workingDatabase();
}

// Groups the host does not keep: sizes measured when the text was
// written, and columns (which it does not model; their heights would
// share group 50 with the rotation).
bool Dropped(int code) {
  return (code >= 50 && code <= 58) || code == 75 || code == 76 || code == 78 || code == 79 || code == 48 ||
         code == 49;
}

// Unlinks and releases the nodes for which drop is true.
template <class Pred>
resbuf* Without(resbuf* chain, Pred drop) {
  resbuf** link = &chain;
  while (*link) {
    resbuf* rb = *link;
    if (drop(rb)) {
      *link = rb->rbnext;
      rb->rbnext = nullptr;
      acutRelRb(rb);
    } else {
      link = &rb->rbnext;
    }
  }
  return chain;
}

ACHAR* Copy(const std::wstring& s) {
  ACHAR* out = nullptr;
  acutNewString(s.c_str(), out);
  return out;
}

}  // namespace

AcDbMText::AcDbMText() : mDefinedHeight(0.0) {}
AcDbMText::~AcDbMText() { acutRelRb(mExtras); }

// ---------------------------------------------------------------- properties
Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& point) { KELHOST_SET(mLocation, point); }

Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
  if (!kelhost::db::Finite(normal)) return Acad::eInvalidInput;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  const double angle = rotation();
  mNormal = normal.normal();
  mDirection = DirectionAt(mNormal, angle);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
  if (!kelhost::db::Finite(direction)) return Acad::eInvalidInput;
  const AcGeVector3d d = InPlane(mNormal, direction);
  if (d.isZeroLength()) return Acad::eInvalidInput;
  KELHOST_SET(mDirection, d);
}

double AcDbMText::rotation() const { return kelhost::geom::OcsAngle(mNormal, mDirection); }
Acad::ErrorStatus AcDbMText::setRotation(double angle) {
  if (!kelhost::db::Finite(angle)) return Acad::eInvalidInput;
  if (!std::isfinite(angle)) return Acad::eInvalidInput;
  KELHOST_SET(mDirection, DirectionAt(mNormal, angle));
}

double AcDbMText::width() const { return OrZero(mWidth); }
Acad::ErrorStatus AcDbMText::setWidth(double width) {
  if (!kelhost::db::Finite(width)) return Acad::eInvalidInput;
  if (!(width >= 0)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mWidth = width;
  forgetMeasuredSize();
  return Acad::eOk;
}

double AcDbMText::height() const { return OrZero(mDefinedHeight); }
Acad::ErrorStatus AcDbMText::setHeight(double height) {
  if (!kelhost::db::Finite(height)) return Acad::eInvalidInput;
  if (!(height >= 0)) return Acad::eInvalidInput;
  KELHOST_SET(mDefinedHeight, height);
}

double AcDbMText::textHeight() const {
  if (mTextHeight > 0) return mTextHeight;
  AcDbDatabase* db = DatabaseOf(this);
  return db ? db->textsize() : 2.5;
}
Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
  if (!kelhost::db::Finite(height)) return Acad::eInvalidInput;
  if (!(height > 0)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mTextHeight = height;
  forgetMeasuredSize();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
  if (attachment < kTopLeft || attachment > kBottomRight) return Acad::eInvalidInput;
  KELHOST_SET(mAttachment, static_cast<short>(attachment));
}
Acad::ErrorStatus AcDbMText::setFlowDirection(FlowDirection direction) {
  if (direction < kLtoR || direction > kByStyle) return Acad::eInvalidInput;
  KELHOST_SET(mFlow, static_cast<short>(direction));
}
Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) {
  if (!kelhost::db::PeekAs<AcDbTextStyleTableRecord>(style)) return Acad::eInvalidInput;
  KELHOST_SET(mStyle, style);
}
Acad::ErrorStatus AcDbMText::setLineSpacingStyle(AcDb::LineSpacingStyle style) {
  if (style != AcDb::kAtLeast && style != AcDb::kExactly) return Acad::eInvalidInput;
  KELHOST_SET(mSpacingStyle, static_cast<short>(style));
}
Acad::ErrorStatus AcDbMText::setLineSpacingFactor(double factor) {
  if (!kelhost::db::Finite(factor)) return Acad::eInvalidInput;
  if (!(factor >= 0.25 && factor <= 4.0)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mSpacingFactor = factor;
  forgetMeasuredSize();
  return Acad::eOk;
}

ACHAR* AcDbMText::contents() const { return Copy(mContents); }
ACHAR* AcDbMText::text() const { return Copy(kelhost::db::MTextPlainText(mContents)); }

int AcDbMText::setContents(const ACHAR* contents) {
  if (!contents || !writable()) return 0;
  mContents = contents;
  forgetMeasuredSize();
  return static_cast<int>(mContents.size());
}

void AcDbMText::forgetMeasuredSize() {
  mExtras = Without(mExtras, [](const resbuf* rb) { return rb->restype == 42 || rb->restype == 43; });
}

// ---------------------------------------------------------------- DXF
void AcDbMText::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbEntity::dxfFields(f);
  AcDbDatabase* db = f.database();
  f.subclass(L"AcDbMText");
  f.point(10, mLocation, Presence::kRequired);
  if (!f.reading() && !(mTextHeight > 0)) mTextHeight = textHeight();
  f.real(40, mTextHeight, db ? db->textsize() : 2.5, Presence::kAlways);
  if (f.reading() && !(mTextHeight > 0)) f.fail(L"text height must be positive in group 40");
  OptionalReal(f, 41, mWidth);
  if (mWidth < 0) f.fail(L"negative reference width in group 41");
  OptionalReal(f, 46, mDefinedHeight);
  f.int16(71, mAttachment, kTopLeft, Presence::kAlways);
  if (mAttachment < kTopLeft || mAttachment > kBottomRight) f.fail(L"bad attachment point in group 71");
  f.int16(72, mFlow, kLtoR, Presence::kAlways);
  if (mFlow < kLtoR || mFlow > kByStyle) f.fail(L"bad drawing direction in group 72");

  // Contents longer than a chunk lead with 3 groups of 250 characters; the
  // rest (at most 250) goes in group 1.
  std::vector<std::wstring> chunks;
  std::wstring tail;
  if (!f.reading()) {
    size_t at = 0;
    for (; mContents.size() - at > kChunk; at += kChunk) chunks.push_back(mContents.substr(at, kChunk));
    tail = mContents.substr(at);
  }
  std::wstring joined;
  const size_t n = f.beginRepeat(3, chunks.size());
  for (size_t i = 0; i < n; ++i) {
    f.enterRecord(i);
    if (f.reading()) {
      std::wstring part;
      f.text(3, part, L"", Presence::kAlways);
      joined += part;
    } else {
      f.text(3, chunks[i], L"", Presence::kAlways);
    }
  }
  f.endRepeat();
  const wchar_t* const kNoTail = L"\uFFFF";  // left as is by an entmod list without group 1
  if (f.reading()) tail = kNoTail;
  f.text(1, tail, L"", Presence::kAlways);
  if (f.reading() && (tail != kNoTail || n > 0)) {
    mContents = joined + (tail == kNoTail ? L"" : tail);
  }

  if (!f.reading() && mStyle.isNull() && db) mStyle = db->textstyle();
  f.record(7, mStyle, db ? db->textStyleTableId() : AcDbObjectId::kNull, L"Standard", Presence::kAlways, false);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kAlways);
  if (f.reading()) {
    mNormal = mNormal.normal();
    // 11 wins over 50 when a list has both.
    AcGeVector3d dir(kAbsent, kAbsent, kAbsent);
    double angle = kAbsent;
    f.vector(11, dir, dir, Presence::kAlways);
    f.real(50, angle, kAbsent, Presence::kAlways);
    if (!std::isnan(dir.x)) {
      mDirection = InPlane(mNormal, dir);
      mAngleForm = false;
      if (mDirection.isZeroLength()) f.fail(L"the direction in group 11 lies along the normal");
    } else if (!std::isnan(angle)) {
      mDirection = DirectionAt(mNormal, angle);
      mAngleForm = true;
    } else if (!f.keepsAbsent()) {
      mDirection = kelhost::geom::OcsXAxis(mNormal);
      mAngleForm = false;
    } else if (InPlane(mNormal, mDirection).isZeroLength()) {
      mDirection = kelhost::geom::OcsXAxis(mNormal);  // a new normal across the old direction
    } else {
      mDirection = InPlane(mNormal, mDirection);
    }
  } else if (mAngleForm) {
    double angle = rotation();
    f.real(50, angle, 0.0, Presence::kAlways);
  } else {
    f.vector(11, mDirection, AcGeVector3d::kXAxis, Presence::kAlways);
  }
  f.int16(73, mSpacingStyle, AcDb::kAtLeast, Presence::kAlways);
  if (mSpacingStyle != AcDb::kAtLeast && mSpacingStyle != AcDb::kExactly) f.fail(L"bad line spacing style in group 73");
  f.real(44, mSpacingFactor, 1.0, Presence::kAlways);
  if (!(mSpacingFactor >= 0.25 && mSpacingFactor <= 4.0)) f.fail(L"line spacing factor out of 0.25..4 in group 44");

  if (!f.reading()) {
    f.chain(mExtras);
    return;
  }
  resbuf* rest = nullptr;
  f.chain(rest);
  // An embedded object (101) holds column data the host does not model.
  bool embedded = false;
  rest = Without(rest, [&embedded](const resbuf* rb) {
    embedded = embedded || rb->restype == 101;
    return embedded || Dropped(rb->restype);
  });
  if (rest || !f.keepsAbsent()) {
    acutRelRb(mExtras);
    mExtras = rest;
  }
}

// ---------------------------------------------------------------- geometry
namespace {

double StyleWidthFactor(const AcDbMText& m) {
  AcDbObjectId style = m.textStyle();
  if (style.isNull())
    if (AcDbDatabase* db = DatabaseOf(&m)) style = db->textstyle();
  auto* record = kelhost::db::PeekAs<AcDbTextStyleTableRecord>(style);
  return record && record->xScale() > 0 ? record->xScale() : 1.0;
}

kelhost::db::TextLayout LayOut(const AcDbMText& m) {
  ACHAR* plain = m.text();
  const std::wstring text = plain ? plain : L"";
  std::free(plain);
  return kelhost::db::LayOutText(text, m.textHeight(), StyleWidthFactor(m), m.lineSpacingFactor(), m.width());
}

// The text's box in its own axes: left and top edges from the location,
// as the attachment point puts them.
struct Box {
  double left, top, width, height;
};

Box BoxOf(const AcDbMText& m, const kelhost::db::TextLayout& layout) {
  const int a = m.attachment() - 1;
  const double column = (a % 3) * 0.5, row = (a / 3) * 0.5;
  return {-layout.width * column, layout.height * row, layout.width, layout.height};
}

}  // namespace

double AcDbMText::actualHeight() const { return LayOut(*this).height; }
double AcDbMText::actualWidth() const { return LayOut(*this).width; }

Acad::ErrorStatus AcDbMText::getBoundingPoints(AcGePoint3dArray& points) const {
  const Box b = BoxOf(*this, LayOut(*this));
  const AcGeVector3d x = mDirection, y = mNormal.crossProduct(mDirection);
  auto at = [&](double u, double v) { return mLocation + x * u + y * v; };
  points.append(at(b.left, b.top));
  points.append(at(b.left + b.width, b.top));
  points.append(at(b.left, b.top - b.height));
  points.append(at(b.left + b.width, b.top - b.height));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::getGeomExtents(AcDbExtents& extents) const {
  AcGePoint3dArray corners;
  getBoundingPoints(corners);
  AcDbExtents box;
  for (const AcGePoint3d& p : corners) box.addPoint(p);
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!m.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  const double s = m.scale();
  const AcGeVector3d normal = kelhost::geom::TransformNormal(m, mNormal);
  AcGeVector3d dir = InPlane(normal, m * mDirection);
  if (dir.isZeroLength()) return Acad::eInvalidInput;
  if (m.det() < 0) {
    // Readable: not running backwards, nor straight down.
    const double a = kelhost::geom::OcsAngle(normal, dir);
    const double c = std::cos(a), sn = std::sin(a);
    if (c < -1e-12 || (std::fabs(c) <= 1e-12 && sn < 0)) dir = -dir;
  }
  mLocation = m * mLocation;
  mNormal = normal;
  mDirection = dir;
  if (mTextHeight > 0) mTextHeight *= s;
  if (!std::isnan(mWidth)) mWidth *= s;
  if (!std::isnan(mDefinedHeight)) mDefinedHeight *= s;
  forgetMeasuredSize();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::explode(AcDbVoidPtrArray& entitySet) const {
  const kelhost::db::TextLayout layout = LayOut(*this);
  const Box b = BoxOf(*this, layout);
  const double height = textHeight(), pitch = kelhost::db::LinePitch(height, mSpacingFactor);
  const int column = (mAttachment - 1) % 3;
  const AcGeVector3d x = mDirection, y = mNormal.crossProduct(mDirection);
  for (size_t i = 0; i < layout.lines.size(); ++i) {
    if (layout.lines[i].find_first_not_of(L' ') == std::wstring::npos) continue;
    // Lines align in the box as the attachment's column says: on the
    // location's left, centre or right.
    const AcGePoint3d base = mLocation + y * (b.top - height - static_cast<double>(i) * pitch);
    auto* line = new AcDbText(base - x * (layout.widths[i] * column * 0.5), layout.lines[i].c_str(), mStyle, height);
    line->setPropertiesFrom(this);
    line->setNormal(mNormal);
    line->setRotation(rotation());
    line->setWidthFactor(StyleWidthFactor(*this));
    if (column > 0) {
      line->setHorizontalMode(column == 1 ? AcDb::kTextCenter : AcDb::kTextRight);
      line->setAlignmentPoint(base);
    }
    entitySet.append(line);
  }
  return Acad::eOk;
}
