// Extents of entities: the best fit of block references, falling back on
// their exploded pieces, and the geometric extents of everything else.
#include "kelcad/api/entity_bounds.h"

#include "kelcad/api/current_space.h"
#include "kelcad/api/undo_groups.h"

namespace KEL {

namespace {

// A reference whose pieces are references that fail again explodes again;
// a block that (wrongly) contains itself would never stop.
constexpr int kDeepestExplosion = 16;
int explosionDepth = 0;

// Appends the pieces to model space; a piece that cannot go in is deleted.
void AppendPieces(AcDbVoidPtrArray& pieces) {
  for (int i = 0; i < pieces.length(); ++i) {
    auto* piece = static_cast<AcDbEntity*>(pieces[i]);
    AcDbObjectId id;
    if (Append(piece, id) == Acad::eOk)
      piece->close();
    else
      delete piece;
  }
}

// Explodes the reference into model space and unites the extents of what
// follows the drawing's last entity of before: the pieces, which stay.
// 1 when at least one piece was measured.
int BoundThroughPieces(AcDbObjectId refId, AcDbExtents& extents) {
  if (explosionDepth >= kDeepestExplosion) return 0;
  ClearUNDO();
  ads_name last = {0, 0};
  const bool hadLast = acdbEntLast(last) == RTNORM;
  AcDbBlockReference* ref = nullptr;
  if (acdbOpenObject(ref, refId, AcDb::kForRead) != Acad::eOk) return 0;
  AcDbVoidPtrArray pieces;
  const Acad::ErrorStatus es = ref->explode(pieces);
  ref->close();
  if (es != Acad::eOk) return 0;
  AppendPieces(pieces);

  ++explosionDepth;
  AcDbExtents united;
  int measured = 0;
  ads_name piece = {0, 0};
  int rc = hadLast ? acdbEntNext(last, piece) : acdbEntNext(nullptr, piece);
  while (rc == RTNORM) {
    AcDbExtents part;
    if (GetEntBound(piece, part) == 1) {
      united.addExt(part);
      ++measured;
    }
    ads_name next = {0, 0};
    rc = acdbEntNext(piece, next);
    ads_name_set(next, piece);
  }
  --explosionDepth;
  if (measured == 0) return 0;
  extents = united;
  return 1;
}

}  // namespace

int GetEntBound(ads_name ent, AcDbExtents& extents) {
  AcDbObjectId id;
  if (ent == nullptr || acdbGetObjectId(id, ent) != Acad::eOk) return 0;
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return 0;
  Acad::ErrorStatus es;
  const bool isReference = AcDbBlockReference::cast(entity) != nullptr;
  if (isReference)
    es = AcDbBlockReference::cast(entity)->geomExtentsBestFit(extents, AcGeMatrix3d::kIdentity);
  else
    es = entity->getGeomExtents(extents);
  entity->close();
  if (es == Acad::eOk) return 1;
  return isReference ? BoundThroughPieces(id, extents) : 0;
}

int GetEntBound(AcDbObjectId id, double min[3], double max[3]) {
  ads_name ent = {0, 0};
  if (acdbGetAdsName(ent, id) != Acad::eOk) return 0;
  AcDbExtents extents;
  if (GetEntBound(ent, extents) != 1) return 0;
  for (int i = 0; i < 3; ++i) {
    min[i] = extents.minPoint()[i];
    max[i] = extents.maxPoint()[i];
  }
  return 1;
}

namespace {
// Adds the member's extents when it can be measured.
void AddMember(ads_name ent, AcDbExtents& united) {
  AcDbExtents part;
  if (GetEntBound(ent, part) == 1) united.addExt(part);
}
}  // namespace

int GetEntBound(AcArray<AcDbObjectId>& ids, AcGePoint3d& min, AcGePoint3d& max) {
  if (ids.isEmpty()) return 0;
  AcDbExtents united;
  for (int i = 0; i < ids.length(); ++i) {
    ads_name ent = {0, 0};
    if (acdbGetAdsName(ent, ids[i]) == Acad::eOk) AddMember(ent, united);
  }
  min = united.minPoint();
  max = united.maxPoint();
  return 1;
}

int GetEntBound(ads_name ss, double min[3], double max[3]) {
  Adesk::Int32 length = 0;
  if (ss == nullptr || acedSSLength(ss, &length) != RTNORM || length <= 0) return 0;
  AcDbExtents united;
  ads_name ent = {0, 0};
  for (Adesk::Int32 i = 0; i < length && acedSSName(ss, i, ent) == RTNORM; ++i) AddMember(ent, united);
  for (int i = 0; i < 3; ++i) {
    min[i] = united.minPoint()[i];
    max[i] = united.maxPoint()[i];
  }
  return 1;
}

bool GetBEntityRect(AcDbObjectId id, bEntityRectStruct* rect) {
  double min[3], max[3];
  if (rect == nullptr || GetEntBound(id, min, max) != 1) return false;
  rect->lowerLeft.set(min[0], min[1], min[2]);
  rect->upperRight.set(max[0], max[1], max[2]);
  rect->centre.set((min[0] + max[0]) / 2.0, (min[1] + max[1]) / 2.0, (min[2] + max[2]) / 2.0);
  rect->width = max[0] - min[0];
  rect->height = max[1] - min[1];
  return true;
}

}  // namespace KEL
