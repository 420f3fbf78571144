// Copying an entity through its own group description: the list it would
// give entget, read back into a fresh object of the same class.
#include "db/explode_copy.h"

#include <vector>

#include "ads/rbkind.h"
#include "arx/acutads.h"
#include "arx/dbblkref.h"
#include "db/sequences.h"
#include "dxf/access.h"
#include "dxf/codec.h"
#include "dxf/kept_object.h"
#include "dxf/list_filer.h"

namespace kelhost::db {
namespace {

// The entity's list with all its xdata (null when out of memory).
resbuf* ListOf(const AcDbEntity& entity) {
  static resbuf allApps = [] {
    resbuf rb{};
    rb.restype = RTSTR;
    rb.resval.rstring = const_cast<ACHAR*>(L"*");
    return rb;
  }();
  return dxf::ObjectToList(&entity, &allApps);
}

// A fresh object of entity's class: its DXF name and integer groups find
// most classes, as they do for entmake; the rest are named here.
std::unique_ptr<AcDbEntity> NewEntityLike(const AcDbEntity& entity, const resbuf* list) {
  std::unique_ptr<AcDbObject> made = dxf::NewObjectOfType(entity.isA()->dxfName(), [list](int code, long fallback) {
    for (const resbuf* rb = list; rb && rb->restype != -3; rb = rb->rbnext)
      if (rb->restype == code) return static_cast<long>(rb->resval.rint);
    return fallback;
  });
  if (!made || made->isA() != entity.isA()) {
    // An array of one image, say, whose groups call for a plain reference.
    made.reset();
    if (entity.isA() == AcDbMInsertBlock::desc()) made = std::make_unique<AcDbMInsertBlock>();
    if (entity.isA() == AcDb3dPolyline::desc()) made = std::make_unique<AcDb3dPolyline>();
    if (entity.isA() == AcDb3dPolylineVertex::desc()) made = std::make_unique<AcDb3dPolylineVertex>();
  }
  if (!made || made->isA() != entity.isA()) return nullptr;
  return std::unique_ptr<AcDbEntity>(AcDbEntity::cast(made.release()));
}

// The groups and xdata of an entity's list into copy.
Acad::ErrorStatus CopyGroups(const AcDbEntity& entity, const resbuf* list, AcDbEntity& copy) {
  // The object's own groups start at its first subclass marker; before it
  // come its name, handle, owner and extension dictionary.
  const resbuf* xdata = dxf::XDataSentinel(list);
  std::vector<const resbuf*> groups;
  bool header = true;
  for (const resbuf* rb = list; rb && rb != xdata; rb = rb->rbnext) {
    if (rb->restype == 100) header = false;
    if (!header) groups.push_back(rb);
  }
  dxf::ListReader reader(entity.database(), groups, false);
  dxf::Access::fields(&copy, reader);
  if (reader.failed() || !reader.pendingRecords.empty()) return Acad::eNotApplicable;
  if (xdata && xdata->rbnext && !(dxf::Access::xdata(&copy) = rb::CopyChain(xdata->rbnext))) return Acad::eOutOfMemory;
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus CopyEntity(const AcDbEntity& entity, std::unique_ptr<AcDbEntity>& copy) {
  copy.reset();
  std::unique_ptr<AcDbEntity> fresh;
  if (auto* kept = dxf::KeptEntity::cast(&entity)) {
    // Kept verbatim: its groups are its data.
    auto* same = new dxf::KeptEntity(kept->kept());
    fresh.reset(same);
    same->setPropertiesFrom(&entity);
    if (const resbuf* xdata = dxf::Access::xdata(&entity)) dxf::Access::xdata(same) = rb::CopyChain(xdata);
  } else {
    resbuf* list = ListOf(entity);
    if (!list) return Acad::eOutOfMemory;
    fresh = NewEntityLike(entity, list);
    Acad::ErrorStatus es = fresh ? CopyGroups(entity, list, *fresh) : Acad::eNotApplicable;
    acutRelRb(list);
    if (es != Acad::eOk) return es;
  }
  auto* source = const_cast<AcDbEntity*>(&entity);  // only read
  if (const AcDbSubentSequence* parts = SequenceOf(source)) {
    AcDbSubentSequence* own = SequenceOf(fresh.get());
    for (AcDbEntity* part : LiveSubentities(*parts)) {
      std::unique_ptr<AcDbEntity> partCopy;
      Acad::ErrorStatus es = CopyEntity(*part, partCopy);
      if (es != Acad::eOk) return es;
      AcDbObjectId none;
      es = AppendToSequence(fresh.get(), *own, partCopy.get(), none);
      if (es != Acad::eOk) return es;
      partCopy.release();  // the copy holds it now
    }
  }
  copy = std::move(fresh);
  return Acad::eOk;
}

Acad::ErrorStatus PlaceCopy(std::unique_ptr<AcDbEntity>& copy, const AcGeMatrix3d& xform) {
  if (auto* circle = AcDbCircle::cast(copy.get()); circle && !xform.isUniScaledOrtho()) {
    std::unique_ptr<AcDbEntity> ellipse;
    Acad::ErrorStatus es = EllipseOfCircle(*circle, xform, ellipse);
    if (es != Acad::eOk) return es;
    ellipse->setPropertiesFrom(circle);
    std::swap(dxf::Access::xdata(ellipse.get()), dxf::Access::xdata(circle));
    copy = std::move(ellipse);
    return Acad::eOk;
  }
  // What a file gave verbatim can be copied but not moved.
  if (dxf::KeptEntity::cast(copy.get())) return xform.isIdentity() ? Acad::eOk : Acad::eNotApplicable;
  return copy->transformBy(xform);
}

}  // namespace kelhost::db
