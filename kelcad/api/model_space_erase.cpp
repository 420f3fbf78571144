#include "kelcad/api/model_space_erase.h"

#include <cstdlib>

namespace KEL {

ModelSpaceWalk EraseModelSpaceEntities(AcDbDatabase* db, const std::function<bool(const wchar_t*)>& onLayer) {
  AcDbBlockTable* table = nullptr;
  if (db == nullptr || db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return ModelSpaceWalk::kNoBlockTable;
  AcDbBlockTableRecord* model = nullptr;
  const Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForRead);
  table->close();
  if (es != Acad::eOk) return ModelSpaceWalk::kNoModelSpace;
  AcDbBlockTableRecordIterator* it = nullptr;
  if (model->newIterator(it) != Acad::eOk || it == nullptr) {
    model->close();
    return ModelSpaceWalk::kNoIterator;
  }
  for (; !it->done(); it->step()) {
    AcDbObjectId id;
    if (it->getEntityId(id) != Acad::eOk) continue;
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    wchar_t* layer = entity->layer();
    // Only the entities that go are opened for write.
    if (layer != nullptr && onLayer(layer) && entity->upgradeOpen() == Acad::eOk) entity->erase(true);
    std::free(layer);
    entity->close();
  }
  delete it;
  model->close();
  return ModelSpaceWalk::kDone;
}

}  // namespace KEL
