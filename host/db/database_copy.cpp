// AcDbDatabase::insert and wblock: copies between drawings through the
// object copier (INSERT keeps the receiving drawing's records, kDrcIgnore;
// WBLOCK's new drawing takes the source's, kDrcReplace), with the
// insertion base (INSBASE) each form gives. No exception leaves them:
// running out of memory is eOutOfMemory, and the copier has taken back
// what it made by then.
#include <memory>
#include <vector>

#include "arx/acdbads.h"
#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/header_vars.h"
#include "db/object_copier.h"
#include "db/stub.h"

using kelhost::db::ObjectCopier;

namespace {

bool HoldsDrawing(const AcDbDatabase* db) {
  return db && !db->blockTableId().isNull() && !db->modelSpaceId().isNull();
}

// A database made without its drawing gets a new drawing's contents
// before anything is copied into it.
void MakeReady(AcDbDatabase* db) {
  if (!HoldsDrawing(db) && db->state().stubs.empty()) kelhost::db::BuildDefaultDrawing(db);
}

AcGePoint3d InsertionBase(const AcDbDatabase* db) {
  const kelhost::db::HeaderVarDef* def = kelhost::db::FindHeaderVarDef(L"INSBASE");
  const kelhost::db::HeaderValue v = kelhost::db::GetHeaderVar(db->state(), *def);
  return AcGePoint3d(v.point[0], v.point[1], v.point[2]);
}

void SetInsertionBase(AcDbDatabase* db, const AcGePoint3d& p) {
  const kelhost::db::HeaderVarDef* def = kelhost::db::FindHeaderVarDef(L"INSBASE");
  kelhost::db::HeaderValue v = kelhost::db::DefaultHeaderValue(*def);
  v.point[0] = p.x;
  v.point[1] = p.y;
  v.point[2] = p.z;
  kelhost::db::PutHeaderVar(db, *def, v);
}

// The live entities of a block, in order.
std::vector<AcDbObjectId> LiveEntities(AcDbObjectId blockId) {
  std::vector<AcDbObjectId> ids;
  if (auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(blockId))
    for (const AcDbObjectId& id : block->entityIds())
      if (!id.isErased()) ids.push_back(id);
  return ids;
}

// A copier between drawings with its own map of the operation.
struct Copy {
  Copy(AcDbDatabase* source, AcDbDatabase* target, AcDb::DuplicateRecordCloning drc, AcDb::DeepCloneType context)
      : copier(source, target, ObjectCopier::Mode::kWblock, drc, map) {
    ObjectCopier::start(map, source, target, context, drc);
  }
  // Translates what waited for the end and keeps the copies.
  Acad::ErrorStatus finish() {
    const Acad::ErrorStatus es = copier.translate();
    if (es == Acad::eOk) copier.commit();
    return es;
  }
  AcDbIdMapping map;
  ObjectCopier copier;
};

// A new drawing for wblock to fill.
std::unique_ptr<AcDbDatabase> NewDrawing() { return std::make_unique<AcDbDatabase>(true, true); }

// The header variables of the whole drawing go with it; the extents are
// the new drawing's own.
void CopyHeader(const AcDbDatabase& from, AcDbDatabase& to, ObjectCopier& copier) {
  const kelhost::db::DatabaseState& s = from.state();
  kelhost::db::DatabaseState& t = to.state();
  t.headerVars = s.headerVars;
  t.headerVars.erase(L"EXTMIN");
  t.headerVars.erase(L"EXTMAX");
  t.cecolor = s.cecolor;
  t.celtscale = s.celtscale;
  t.textsize = s.textsize;
  t.ltscale = s.ltscale;
  t.celweight = s.celweight;
  t.tilemode = s.tilemode;
  AcDbObjectId id;
  if (copier.copyRecord(s.clayer, id) == Acad::eOk) t.clayer = id;
  if (copier.copyRecord(s.celtype, id) == Acad::eOk) t.celtype = id;
  if (copier.copyRecord(s.textstyle, id) == Acad::eOk) t.textstyle = id;
  if (copier.copyRecord(s.dimstyle, id) == Acad::eOk) t.dimstyle = id;
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& blockId, const ACHAR* pBlockName, AcDbDatabase* pDb, bool) {
  blockId.setNull();
  try {
    if (!pBlockName || acdbSNValid(pBlockName, 0) != RTNORM || !HoldsDrawing(pDb) || pDb == this)
      return Acad::eInvalidInput;
    MakeReady(this);
    Copy copy(pDb, this, AcDb::kDrcIgnore, AcDb::kDcInsert);
    Acad::ErrorStatus es =
        copy.copier.copyAsBlock(LiveEntities(pDb->modelSpaceId()), pBlockName, InsertionBase(pDb), blockId);
    if (es == Acad::eOk) es = copy.finish();
    if (es != Acad::eOk) blockId.setNull();
    return es;
  } catch (...) {
    blockId.setNull();
    return Acad::eOutOfMemory;
  }
}

Acad::ErrorStatus AcDbDatabase::insert(const AcGeMatrix3d& xform, AcDbDatabase* pDb, bool) {
  try {
    if (!HoldsDrawing(pDb) || pDb == this) return Acad::eInvalidInput;
    MakeReady(this);
    Copy copy(pDb, this, AcDb::kDrcIgnore, AcDb::kDcInsert);
    Acad::ErrorStatus es = copy.copier.copyEntities(LiveEntities(pDb->modelSpaceId()), modelSpaceId(), xform);
    if (es == Acad::eOk) es = copy.finish();
    return es;
  } catch (...) {
    return Acad::eOutOfMemory;
  }
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& pOutputDb, const AcDbObjectIdArray& outObjIds,
                                       const AcGePoint3d& basePoint) {
  pOutputDb = nullptr;
  try {
    std::vector<AcDbObjectId> ids;
    AcDbObjectId space;
    for (const AcDbObjectId& id : outObjIds) {
      if (id.isNull() || !id.isValid() || id.database() != this) return Acad::eWrongDatabase;
      auto* entity = kelhost::db::PeekAs<AcDbEntity>(id);
      if (!entity) return Acad::eNotAnEntity;
      if (id.isErased()) return Acad::eWasErased;
      // The entities of one space: model space's, or paper space's.
      if (space.isNull()) space = entity->ownerId();
      if (entity->ownerId() != space || (space != modelSpaceId() && space != paperSpaceId())) return Acad::eInvalidInput;
      ids.push_back(id);
    }
    std::unique_ptr<AcDbDatabase> out = NewDrawing();
    Copy copy(this, out.get(), AcDb::kDrcReplace, AcDb::kDcWblock);
    Acad::ErrorStatus es = copy.copier.copyEntities(ids, out->modelSpaceId());
    if (es == Acad::eOk) es = copy.finish();
    if (es != Acad::eOk) return es;
    SetInsertionBase(out.get(), basePoint);
    pOutputDb = out.release();
    return Acad::eOk;
  } catch (...) {
    return Acad::eOutOfMemory;
  }
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& pOutputDb, AcDbObjectId blockId) {
  pOutputDb = nullptr;
  try {
    auto* block = kelhost::db::PeekAs<AcDbBlockTableRecord>(blockId);
    if (!block || blockId.database() != this || blockId.isErased() || block->isLayout()) return Acad::eInvalidInput;
    std::unique_ptr<AcDbDatabase> out = NewDrawing();
    Copy copy(this, out.get(), AcDb::kDrcReplace, AcDb::kDcWblock);
    Acad::ErrorStatus es = copy.copier.copyEntities(LiveEntities(blockId), out->modelSpaceId());
    if (es == Acad::eOk) es = copy.finish();
    if (es != Acad::eOk) return es;
    SetInsertionBase(out.get(), block->origin());
    pOutputDb = out.release();
    return Acad::eOk;
  } catch (...) {
    return Acad::eOutOfMemory;
  }
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& pOutputDb) {
  pOutputDb = nullptr;
  try {
    if (!HoldsDrawing(this)) return Acad::eNoDatabase;
    std::unique_ptr<AcDbDatabase> out = NewDrawing();
    Copy copy(this, out.get(), AcDb::kDrcReplace, AcDb::kDcWblock);
    Acad::ErrorStatus es = copy.copier.copyEntities(LiveEntities(modelSpaceId()), out->modelSpaceId());
    if (es == Acad::eOk) es = copy.copier.copyEntities(LiveEntities(paperSpaceId()), out->paperSpaceId());
    if (es != Acad::eOk) return es;
    CopyHeader(*this, *out, copy.copier);
    if ((es = copy.finish()) != Acad::eOk) return es;
    pOutputDb = out.release();
    return Acad::eOk;
  } catch (...) {
    return Acad::eOutOfMemory;
  }
}
