#include "kelcad/api/drawing_cleanup.h"

#include "kelcad/api/current_drawing.h"
#include "kelcad/api/model_space_erase.h"

namespace KEL {

bool RemoveAllEntitiesOnLayer(CString layer) {
  auto same = [&layer](const wchar_t* name) { return layer.CompareNoCase(name) == 0; };
  switch (EraseModelSpaceEntities(GetCurDWGPtr(), same)) {
    case ModelSpaceWalk::kDone: return true;
    case ModelSpaceWalk::kNoBlockTable: acutPrintf(L"\n取块表记录错误！"); break;
    case ModelSpaceWalk::kNoModelSpace: acutPrintf(L"\n取模型空间记录错误！"); break;
    case ModelSpaceWalk::kNoIterator: acutPrintf(L"\n创建遍历器错误！"); break;
  }
  return false;
}

namespace {

// A group none of whose entities is left in the drawing.
bool HoldsNothing(const AcDbGroup* group) {
  AcDbObjectIdArray ids;
  group->allEntityIds(ids);
  for (int i = 0; i < ids.length(); ++i)
    if (ids[i].isValid() && !ids[i].isErased()) return false;
  return true;
}

}  // namespace

int ClearInvalidGroup(AcDbDatabase* db) {
  if (db == nullptr) db = acdbHostApplicationServices()->workingDatabase();
  AcDbDictionary* groups = nullptr;
  if (db == nullptr || db->getGroupDictionary(groups, AcDb::kForRead) != Acad::eOk) return 0;
  AcDbDictionaryIterator* it = groups->newIterator();
  for (; it != nullptr && !it->done(); it->next()) {
    AcDbGroup* group = nullptr;
    if (acdbOpenObject(group, it->objectId(), AcDb::kForWrite) != Acad::eOk) continue;
    if (HoldsNothing(group)) group->erase(true);
    group->close();
  }
  delete it;
  groups->close();
  return 1;
}

}  // namespace KEL
