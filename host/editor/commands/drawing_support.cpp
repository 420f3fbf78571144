#include "editor/commands/drawing_support.h"

#include "ads/entity_names.h"
#include "arx/acedads.h"
#include "arx/dbsymtb.h"

namespace kelhost::editor {

AcGePoint3d ToWorld(const double ucs[3]) {
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = 1;
  to.resval.rint = 0;
  ads_point wcs = {ucs[0], ucs[1], ucs[2]};
  if (acedTrans(ucs, &from, &to, 0, wcs) != RTNORM) return AcGePoint3d(ucs[0], ucs[1], ucs[2]);
  return AcGePoint3d(wcs[0], wcs[1], wcs[2]);
}

AcDbObjectId AppendToCurrentSpace(std::unique_ptr<AcDbEntity> entity) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db || !entity) return AcDbObjectId::kNull;
  entity->setDatabaseDefaults(db);
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->currentSpaceId(), AcDb::kForWrite) != Acad::eOk) return AcDbObjectId::kNull;
  AcDbObjectId id;
  const Acad::ErrorStatus es = space->appendAcDbEntity(id, entity.get());
  space->close();
  if (es != Acad::eOk) return AcDbObjectId::kNull;
  entity.release()->close();
  return id;
}

void EraseEntity(AcDbObjectId id) {
  AcDbEntity* e = nullptr;
  if (acdbOpenAcDbEntity(e, id, AcDb::kForWrite) != Acad::eOk) return;
  e->erase();
  e->close();
}

}  // namespace kelhost::editor
