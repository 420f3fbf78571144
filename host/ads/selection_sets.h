// The store of selection sets behind the acedSS* calls, and the two sets
// the editor keeps: the Previous selection and the pick-first set.
#pragma once

#include <vector>

#include "arx/adsdef.h"
#include "arx/dbid.h"

namespace kelhost::ads {

// A new set holding ids (in that order); its name goes to name.
void NewSelectionSet(std::vector<AcDbObjectId> ids, ads_name name);
// The members of a set, or null for a name that is no live set.
const std::vector<AcDbObjectId>* SelectionSetMembers(const ads_name name);

// The latest selection ("P"): its live members of the working drawing.
std::vector<AcDbObjectId> PreviousSelection();
void SetPreviousSelection(std::vector<AcDbObjectId> ids);

// The objects selected while no command runs ("I", acedSSGetFirst): its
// live members of the working drawing.
std::vector<AcDbObjectId> PickfirstSelection();
void SetPickfirstSelection(std::vector<AcDbObjectId> ids);

}  // namespace kelhost::ads
