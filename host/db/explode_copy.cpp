// Copying an object through its own group description: the list it would
// give entget, read back into a fresh object of the same class (in its own
// database, or through a translator in another one).
#include "db/explode_copy.h"

#include <vector>

#include "ads/rbkind.h"
#include "arx/acutads.h"
#include "arx/dbblkref.h"
#include "db/copy_translator.h"
#include "db/sequences.h"
#include "dxf/access.h"
#include "dxf/codec.h"
#include "dxf/kept_object.h"
#include "dxf/list_filer.h"

namespace kelhost::db {
namespace {

// The object's list with all its xdata (null when out of memory).
resbuf* ListOf(const AcDbObject& object) {
  static resbuf allApps = [] {
    resbuf rb{};
    rb.restype = RTSTR;
    rb.resval.rstring = const_cast<ACHAR*>(L"*");
    return rb;
  }();
  return dxf::ObjectToList(&object, &allApps);
}

// A fresh object of the source's class: its DXF name and integer groups
// find most classes, as they do for entmake; the rest are named here.
std::unique_ptr<AcDbObject> NewObjectLike(const AcDbObject& source, const resbuf* list) {
  std::unique_ptr<AcDbObject> made = dxf::NewObjectOfType(source.isA()->dxfName(), [list](int code, long fallback) {
    for (const resbuf* rb = list; rb && rb->restype != -3; rb = rb->rbnext)
      if (rb->restype == code) return static_cast<long>(rb->resval.rint);
    return fallback;
  });
  if (!made || made->isA() != source.isA()) {
    // An array of one image, say, whose groups call for a plain reference.
    made.reset();
    if (source.isA() == AcDbMInsertBlock::desc()) made = std::make_unique<AcDbMInsertBlock>();
    if (source.isA() == AcDb3dPolyline::desc()) made = std::make_unique<AcDb3dPolyline>();
    if (source.isA() == AcDb3dPolylineVertex::desc()) made = std::make_unique<AcDb3dPolylineVertex>();
  }
  if (!made || made->isA() != source.isA()) return nullptr;
  return made;
}

// Reads a copy's groups in the target database: the records they name and
// the objects they point at become the translator's.
class TranslatingReader : public dxf::ListReader {
 public:
  TranslatingReader(CopyTranslator& translator, const std::vector<const resbuf*>& groups)
      : ListReader(translator.target(), groups, false), mTranslator(translator) {}
  AcDbObjectId findRecord(AcDbObjectId table, const wchar_t* name) override {
    return name ? mTranslator.record(table, name) : AcDbObjectId::kNull;
  }
  void id(int code, AcDbObjectId& v, dxf::Presence p) override {
    ListReader::id(code, v, p);
    if (!v.isNull()) v = mTranslator.reference(code, v);
  }
  // Free-form data (an xrecord's) refers to objects through its pointer
  // and ownership groups: those are translated as the others are.
  void chain(resbuf*& data) override {
    ListReader::chain(data);
    for (resbuf* rb = data; rb; rb = rb->rbnext) {
      if (!((rb->restype >= 330 && rb->restype <= 369) || (rb->restype >= 390 && rb->restype <= 399))) continue;
      AcDbObjectId v;
      v.setFromOldId(rb->resval.rlname[0]);
      if (v.isNull()) continue;
      v = mTranslator.reference(rb->restype, v);
      rb->resval.rlname[0] = v.asOldId();
      rb->resval.rlname[1] = 0;
    }
  }

 private:
  CopyTranslator& mTranslator;
};

// Every application of an xdata chain registered in the target.
bool ApplicationsRegistered(const resbuf* xdata, CopyTranslator& into) {
  for (const resbuf* rb = xdata; rb; rb = rb->rbnext)
    if (rb->restype == 1001 && (!rb->resval.rstring || !into.application(rb->resval.rstring))) return false;
  return true;
}

// The groups and xdata of an object's list into copy.
Acad::ErrorStatus CopyGroups(const AcDbObject& source, const resbuf* list, AcDbObject& copy, CopyTranslator* into) {
  // The object's own groups start at its first subclass marker; before it
  // come its name, handle, owner and extension dictionary.
  const resbuf* xdata = dxf::XDataSentinel(list);
  std::vector<const resbuf*> groups;
  bool header = true;
  for (const resbuf* rb = list; rb && rb != xdata; rb = rb->rbnext) {
    if (rb->restype == 100) header = false;
    if (!header) groups.push_back(rb);
  }
  std::unique_ptr<dxf::ListReader> reader;
  if (into) reader = std::make_unique<TranslatingReader>(*into, groups);
  else reader = std::make_unique<dxf::ListReader>(source.database(), groups, false);
  dxf::Access::fields(&copy, *reader);
  if (reader->failed() || !reader->pendingRecords.empty()) return Acad::eNotApplicable;
  acutRelRb(dxf::Access::xdata(&copy));
  dxf::Access::xdata(&copy) = nullptr;
  if (xdata && xdata->rbnext) {
    if (into && !ApplicationsRegistered(xdata->rbnext, *into)) return Acad::eRegappIdNotFound;
    if (!(dxf::Access::xdata(&copy) = rb::CopyChain(xdata->rbnext))) return Acad::eOutOfMemory;
  }
  return Acad::eOk;
}

// A copy of what a file kept verbatim: its groups are its data. In
// another drawing its layer and linetype are the translator's; references
// among its verbatim groups stay as the file gave them.
Acad::ErrorStatus CopyKept(const dxf::KeptEntity& kept, std::unique_ptr<AcDbEntity>& fresh, CopyTranslator* into) {
  auto* same = new dxf::KeptEntity(kept.kept());
  fresh.reset(same);
  same->setPropertiesFrom(&kept);
  if (const resbuf* xdata = dxf::Access::xdata(&kept)) {
    if (into && !ApplicationsRegistered(xdata, *into)) return Acad::eRegappIdNotFound;
    dxf::Access::xdata(same) = rb::CopyChain(xdata);
  }
  if (!into) return Acad::eOk;
  const AcDbObjectId layer = into->reference(8, kept.layerId());
  const AcDbObjectId linetype = into->reference(6, kept.linetypeId());
  if (layer.isNull() || same->setLayer(layer) != Acad::eOk) return Acad::eNotApplicable;
  if (!linetype.isNull()) same->setLinetype(linetype);
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus CopyObject(const AcDbObject& object, std::unique_ptr<AcDbObject>& copy, CopyTranslator* into) {
  copy.reset();
  resbuf* list = ListOf(object);
  if (!list) return Acad::eOutOfMemory;
  std::unique_ptr<AcDbObject> fresh = NewObjectLike(object, list);
  const Acad::ErrorStatus es = fresh ? CopyGroups(object, list, *fresh, into) : Acad::eNotApplicable;
  acutRelRb(list);
  if (es == Acad::eOk) copy = std::move(fresh);
  return es;
}

Acad::ErrorStatus CopyStateInto(const AcDbObject& source, AcDbObject& target, CopyTranslator* into) {
  if (source.isA() != target.isA()) return Acad::eWrongObjectType;
  if (!target.isWriteEnabled()) return Acad::eNotOpenForWrite;
  resbuf* list = ListOf(source);
  if (!list) return Acad::eOutOfMemory;
  const Acad::ErrorStatus es = CopyGroups(source, list, target, into);
  acutRelRb(list);
  return es;
}

Acad::ErrorStatus CopyEntity(const AcDbEntity& entity, std::unique_ptr<AcDbEntity>& copy, CopyTranslator* into) {
  copy.reset();
  std::unique_ptr<AcDbEntity> fresh;
  if (auto* kept = dxf::KeptEntity::cast(&entity)) {
    Acad::ErrorStatus es = CopyKept(*kept, fresh, into);
    if (es != Acad::eOk) return es;
  } else {
    std::unique_ptr<AcDbObject> made;
    Acad::ErrorStatus es = CopyObject(entity, made, into);
    if (es != Acad::eOk) return es;
    fresh.reset(AcDbEntity::cast(made.release()));
  }
  auto* source = const_cast<AcDbEntity*>(&entity);  // only read
  if (const AcDbSubentSequence* parts = SequenceOf(source)) {
    AcDbSubentSequence* own = SequenceOf(fresh.get());
    for (AcDbEntity* part : LiveSubentities(*parts)) {
      std::unique_ptr<AcDbEntity> partCopy;
      Acad::ErrorStatus es = CopyEntity(*part, partCopy, into);
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
