// Inside the module: erasing the entities of a drawing's model space by
// their layer, the one walk that both layer clean-ups use.
#pragma once

#include <functional>

#include "kelcad/platform.h"

namespace KEL {

enum class ModelSpaceWalk { kDone, kNoBlockTable, kNoModelSpace, kNoIterator };

// Erases every entity of model space of db whose layer name passes
// onLayer. Entities that cannot be opened for write are skipped.
ModelSpaceWalk EraseModelSpaceEntities(AcDbDatabase* db, const std::function<bool(const wchar_t*)>& onLayer);

}  // namespace KEL
