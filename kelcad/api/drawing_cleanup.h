// Clean-ups of a whole drawing: the entities of a layer, empty groups.
#pragma once

#include "kelcad/platform.h"

namespace KEL {

// Erases every entity of model space of the current drawing whose layer
// is layer (without regard to case); entities that cannot be opened for
// write are skipped. False, with a message, when model space cannot be
// walked:
//   "\n取块表记录错误！"    the block table cannot be got
//   "\n取模型空间记录错误！"  model space cannot be got
//   "\n创建遍历器错误！"    the iterator cannot be made
bool RemoveAllEntitiesOnLayer(CString layer);

// Erases the groups of db (the working database when null) that hold no
// entity any more (every one erased or gone). 0 when the group dictionary
// cannot be opened, else 1.
int ClearInvalidGroup(AcDbDatabase* db = nullptr);

}  // namespace KEL
