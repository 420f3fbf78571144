// The store of selection sets behind the acedSS* calls.
#pragma once

#include <vector>

#include "arx/adsdef.h"
#include "arx/dbid.h"

namespace kelhost::ads {

// A new set holding ids (in that order); its name goes to name.
void NewSelectionSet(std::vector<AcDbObjectId> ids, ads_name name);
// The members of a set, or null for a name that is no live set.
const std::vector<AcDbObjectId>* SelectionSetMembers(const ads_name name);

}  // namespace kelhost::ads
