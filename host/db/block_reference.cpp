// Block references, attributes and attribute definitions.
#include <cmath>

#include "arx/dbblkref.h"
#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"
#include "db/curve_geometry.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "db/sequences.h"
#include "db/stub.h"
#include "dxf/group_filer.h"
#include "kelhost/text.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbAttributeDefinition, AcDbText, L"ATTDEF")
KELHOST_RX_DEFINE(AcDbAttribute, AcDbText, L"ATTRIB")
KELHOST_RX_DEFINE(AcDbBlockReference, AcDbEntity, L"INSERT")

namespace {
bool ValidTag(const ACHAR* tag) { return tag && *tag && !std::wcschr(tag, L' '); }

// A tag read from a list: present, without spaces, kept in upper case.
void TagField(kelhost::dxf::GroupFiler& f, std::wstring& tag) {
  f.text(2, tag, L"", Presence::kRequired);
  if (f.reading() && !f.keepsAbsent() && !ValidTag(tag.c_str())) f.fail(L"bad attribute tag in group 2");
  tag = kelhost::ToUpper(tag);
}
}  // namespace

// ---------------------------------------------------------------- text placement
Acad::ErrorStatus AcDbText::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  if (!m.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  const AcGeVector3d dir = AcGeMatrix3d::planeToWorld(mNormal) * AcGeVector3d(std::cos(mRotation), std::sin(mRotation), 0);
  const AcGeVector3d normal = kelhost::geom::TransformNormal(m, mNormal);
  mPosition = m * mPosition;
  mAlignment = m * mAlignment;
  mHeight *= m.scale();
  mNormal = normal;
  mRotation = kelhost::geom::OcsAngle(normal, m * dir);
  return Acad::eOk;
}

// ---------------------------------------------------------------- attribute definition
AcDbAttributeDefinition::AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                                                 const ACHAR* prompt, AcDbObjectId style)
    : AcDbText(position, text, style), mTag(kelhost::ToUpper(tag ? tag : L"")), mPrompt(prompt ? prompt : L"") {}

Acad::ErrorStatus AcDbAttributeDefinition::setTag(const ACHAR* tag) {
  if (!ValidTag(tag)) return Acad::eInvalidInput;
  KELHOST_SET(mTag, kelhost::ToUpper(tag));
}
Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const ACHAR* prompt) {
  if (!prompt) return Acad::eInvalidInput;
  KELHOST_SET(mPrompt, prompt);
}

void AcDbAttributeDefinition::dxfFields(kelhost::dxf::GroupFiler& f) {
  textFields(f);
  f.subclass(L"AcDbAttributeDefinition");
  f.text(3, mPrompt, L"", Presence::kAlways);
  TagField(f, mTag);
  f.int16(70, mFlags, 0, Presence::kAlways);
  f.int16(73, mFieldLength, 0, Presence::kUnlessDefault);
  verticalModeField(f, 74);
}

// ---------------------------------------------------------------- attribute
AcDbAttribute::AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag, AcDbObjectId style)
    : AcDbText(position, text, style), mTag(kelhost::ToUpper(tag ? tag : L"")) {}

Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) {
  if (!ValidTag(tag)) return Acad::eInvalidInput;
  KELHOST_SET(mTag, kelhost::ToUpper(tag));
}
Acad::ErrorStatus AcDbAttribute::setInvisible(bool on) {
  KELHOST_SET(mFlags, static_cast<short>(on ? (mFlags | 1) : (mFlags & ~1)));
}

Acad::ErrorStatus AcDbAttribute::setAttributeFromBlock(const AcDbAttributeDefinition* def, const AcGeMatrix3d& xform) {
  if (!def) return Acad::eNullObjectPointer;
  if (!writable()) return Acad::eNotOpenForWrite;
  setPropertiesFrom(def);
  setTextString(def->textStringConst());
  setTextStyle(def->textStyle());
  setHeight(def->height());
  setRotation(def->rotation());
  setWidthFactor(def->widthFactor());
  setOblique(def->oblique());
  setHorizontalMode(def->horizontalMode());
  setVerticalMode(def->verticalMode());
  setNormal(def->normal());
  setPosition(def->position());
  setAlignmentPoint(def->alignmentPoint());
  mTag = def->tagConst();
  mFlags = static_cast<short>((def->isInvisible() ? 1 : 0) | (def->isConstant() ? 2 : 0) |
                              (def->isVerifiable() ? 4 : 0) | (def->isPreset() ? 8 : 0));
  return transformBy(xform);
}

void AcDbAttribute::dxfFields(kelhost::dxf::GroupFiler& f) {
  textFields(f);
  f.subclass(L"AcDbAttribute");
  TagField(f, mTag);
  f.int16(70, mFlags, 0, Presence::kAlways);
  f.int16(73, mFieldLength, 0, Presence::kUnlessDefault);
  verticalModeField(f, 74);
}

// ---------------------------------------------------------------- block reference
Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId id) {
  if (!kelhost::db::PeekAs<AcDbBlockTableRecord>(id)) return Acad::eInvalidInput;
  KELHOST_SET(mBlock, id);
}
Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& p) { KELHOST_SET(mPosition, p); }
Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeVector3d& s) {
  if (!kelhost::db::Finite(s)) return Acad::eInvalidInput;
  if (s.x == 0 || s.y == 0 || s.z == 0) return Acad::eInvalidInput;
  KELHOST_SET(mScale, s);
}
Acad::ErrorStatus AcDbBlockReference::setRotation(double a) { KELHOST_SET(mRotation, a); }
Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& n) {
  if (!kelhost::db::Finite(n)) return Acad::eInvalidInput;
  if (n.isZeroLength()) return Acad::eInvalidInput;
  KELHOST_SET(mNormal, n.normal());
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
  AcGePoint3d origin;
  if (auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(mBlock)) origin = block->origin();
  AcGeMatrix3d scale;
  scale.entry[0][0] = mScale.x;
  scale.entry[1][1] = mScale.y;
  scale.entry[2][2] = mScale.z;
  return AcGeMatrix3d::translation(mPosition.asVector()) * AcGeMatrix3d::planeToWorld(mNormal) *
         AcGeMatrix3d::rotation(mRotation, AcGeVector3d::kZAxis) * scale *
         AcGeMatrix3d::translation(-origin.asVector());
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
  AcDbObjectId id;
  return appendAttribute(id, attribute);
}
Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
  return kelhost::db::AppendToSequence(this, mSequence, attribute, id);
}

namespace {
// A block that contains a reference to itself would be measured forever:
// nesting this deep is taken for that, and the whole measure fails.
class NestingGuard {
 public:
  NestingGuard() : mOk(++sDepth <= 64 && !sTripped) { sTripped = sTripped || !mOk; }
  ~NestingGuard() {
    if (--sDepth == 0) sTripped = false;
  }
  NestingGuard(const NestingGuard&) = delete;
  NestingGuard& operator=(const NestingGuard&) = delete;
  bool ok() const { return mOk && !sTripped; }
  static bool tripped() { return sTripped; }

 private:
  static thread_local int sDepth;
  static thread_local bool sTripped;
  bool mOk;
};
thread_local int NestingGuard::sDepth = 0;
thread_local bool NestingGuard::sTripped = false;

// The block's entities and the reference's attributes, not erased (until
// a measure fails).
template <class Fn>
void ForEachPart(const AcDbBlockReference& ref, const AcDbSubentSequence& attributes, Fn fn) {
  const AcGeMatrix3d xform = ref.blockTransform();
  if (auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(ref.blockTableRecord()))
    for (const AcDbObjectId& id : block->entityIds()) {
      if (NestingGuard::tripped()) return;
      if (!id.isErased())
        if (auto* e = kelhost::db::PeekAs<AcDbEntity>(id))
          if (!AcDbAttributeDefinition::cast(e)) fn(*e, xform);
    }
  for (AcDbEntity* e : kelhost::db::LiveSubentities(attributes)) fn(*e, AcGeMatrix3d::kIdentity);
}

// A reference's placement: what blockTransform() is built from.
struct Placement {
  AcGePoint3d position;
  AcGeVector3d normal, scale;
  double rotation = 0.0;
};

// The placement after m, or false when m bends the reference's axes so
// that no scale factors can say it. The Y and Z scale factors keep their
// signs; a mirroring turns the X scale factor round.
bool PlacementAfter(const AcDbBlockReference& ref, const AcGeMatrix3d& m, Placement& out) {
  const AcGeMatrix3d axes =
      AcGeMatrix3d::planeToWorld(ref.normal()) * AcGeMatrix3d::rotation(ref.rotation(), AcGeVector3d::kZAxis);
  const AcGeVector3d x = m * (axes * AcGeVector3d::kXAxis), y = m * (axes * AcGeVector3d::kYAxis),
                     z = m * (axes * AcGeVector3d::kZAxis);
  if (x.isZeroLength() || y.isZeroLength() || z.isZeroLength()) return false;
  const AcGeVector3d xu = x.normal(), yu = y.normal(), zu = z.normal();
  const double tol = 1e-9;
  if (std::fabs(xu.dotProduct(yu)) > tol || std::fabs(xu.dotProduct(zu)) > tol || std::fabs(yu.dotProduct(zu)) > tol)
    return false;
  const bool mirrored = xu.crossProduct(yu).dotProduct(zu) < 0;
  const AcGeVector3d s = ref.scaleFactors();
  out.position = m * ref.position();
  out.normal = zu;
  out.rotation = kelhost::geom::OcsAngle(zu, yu.crossProduct(zu));
  out.scale = AcGeVector3d((mirrored ? -s.x : s.x) * x.length(), s.y * y.length(), s.z * z.length());
  return true;
}
}  // namespace

Acad::ErrorStatus AcDbBlockReference::getGeomExtents(AcDbExtents& extents) const {
  NestingGuard guard;
  if (!guard.ok()) return Acad::eInvalidExtents;
  AcDbExtents box;
  ForEachPart(*this, mSequence, [&](const AcDbEntity& e, const AcGeMatrix3d& m) {
    AcDbExtents part;
    if (e.getGeomExtents(part) == Acad::eOk) {
      part.transformBy(m);
      box.addExt(part);
    }
  });
  if (box.isEmpty() || !guard.ok()) return Acad::eInvalidExtents;
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::geomExtentsBestFit(AcDbExtents& extents, const AcGeMatrix3d& parent) const {
  NestingGuard guard;
  if (!guard.ok()) return Acad::eInvalidExtents;
  AcDbExtents box;
  ForEachPart(*this, mSequence, [&](const AcDbEntity& e, const AcGeMatrix3d& m) {
    AcDbExtents part;
    kelhost::geom::Path path;
    if (auto* ref = AcDbBlockReference::cast(&e)) {
      if (ref->geomExtentsBestFit(part, parent * m) == Acad::eOk) box.addExt(part);
    } else if (auto* curve = AcDbCurve::cast(&e); curve && curve->buildPath(path) && !path.empty()) {
      path.transformed(parent * m).extents(part);
      box.addExt(part);
    } else if (e.getGeomExtents(part) == Acad::eOk) {
      part.transformBy(parent * m);
      box.addExt(part);
    }
  });
  if (box.isEmpty() || !guard.ok()) return Acad::eInvalidExtents;
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::transformBy(const AcGeMatrix3d& m) {
  if (!writable()) return Acad::eNotOpenForWrite;
  Placement placed;
  if (!PlacementAfter(*this, m, placed)) return Acad::eCannotScaleNonUniformly;
  kelhost::db::WritableSubentities<AcDbAttribute> attributes(mSequence);
  if (attributes.status != Acad::eOk) return attributes.status;
  // Texts take uniform scaling only: check before anything moves.
  if (!attributes.all().empty() && !m.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  for (AcDbAttribute* attribute : attributes.all()) attribute->transformBy(m);
  mPosition = placed.position;
  mNormal = placed.normal;
  mRotation = placed.rotation;
  mScale = placed.scale;
  return Acad::eOk;
}

void AcDbBlockReference::dxfFields(kelhost::dxf::GroupFiler& f) { referenceFields(f, L"AcDbBlockReference"); }

void AcDbBlockReference::referenceFields(kelhost::dxf::GroupFiler& f, const wchar_t* marker) {
  AcDbEntity::dxfFields(f);
  AcDbDatabase* db = f.database();
  short follows = mSequence.items.empty() && mSequence.pending.empty() ? 0 : 1;
  f.int16(66, follows, 0, Presence::kUnlessDefault);
  f.subclass(marker);
  f.record(2, mBlock, db ? db->blockTableId() : AcDbObjectId::kNull, L"", Presence::kRequired, false);
  f.point(10, mPosition, Presence::kRequired);
  f.real(41, mScale.x, 1.0, Presence::kUnlessDefault);
  f.real(42, mScale.y, 1.0, Presence::kUnlessDefault);
  f.real(43, mScale.z, 1.0, Presence::kUnlessDefault);
  if (mScale.x == 0 || mScale.y == 0 || mScale.z == 0) f.fail(L"a scale factor (41-43) is zero");
  f.real(50, mRotation, 0.0, Presence::kUnlessDefault);
  arrayFields(f);
  f.vector(210, mNormal, AcGeVector3d::kZAxis, Presence::kUnlessDefault);
}
