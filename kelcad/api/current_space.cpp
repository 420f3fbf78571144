#include "kelcad/api/current_space.h"

#include "kelcad/api/current_drawing.h"

namespace KEL {

namespace {
// What Append answers when there is no drawing to append to.
const Acad::ErrorStatus kNoDrawing = static_cast<Acad::ErrorStatus>(364);
}  // namespace

Acad::ErrorStatus Append(AcDbEntity* ent, AcDbObjectId& outId) {
  AcDbDatabase* db = GetCurDWGPtr();
  if (db == nullptr) return kNoDrawing;
  AcDbBlockTable* table = nullptr;
  Acad::ErrorStatus es = db->getBlockTable(table, AcDb::kForRead);
  if (es != Acad::eOk) return es;
  AcDbBlockTableRecord* model = nullptr;
  es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite);
  table->close();
  if (es != Acad::eOk) return es;
  es = model->appendAcDbEntity(outId, ent);
  model->close();
  return es;
}

AcDbBlockTableRecord* openCurrentSpaceBlock(AcDb::OpenMode mode, AcDbDatabase* db) {
  if (db == nullptr) return nullptr;
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->currentSpaceId(), mode) != Acad::eOk) return nullptr;
  return space;
}

Acad::ErrorStatus addToCurrentSpace(AcDbEntity* ent, AcDbDatabase* db) {
  if (db == nullptr) db = acdbHostApplicationServices()->workingDatabase();
  AcDbBlockTableRecord* space = openCurrentSpaceBlock(AcDb::kForWrite, db);
  if (space == nullptr) return Acad::eInvalidInput;
  const Acad::ErrorStatus es = space->appendAcDbEntity(ent);
  if (es != Acad::eOk) acutPrintf(L"\nERROR: could not add entity to current space ");
  space->close();
  return es;
}

Acad::ErrorStatus addToCurrentSpaceAndClose(AcDbEntity* ent, AcDbDatabase* db) {
  const Acad::ErrorStatus es = addToCurrentSpace(ent, db);
  if (es == Acad::eOk)
    ent->close();
  else if (ent != nullptr && !ent->isDatabaseResident())  // another drawing's entity is not ours to delete
    delete ent;
  return es;
}

}  // namespace KEL
