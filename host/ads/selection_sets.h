// The store of selection sets behind the acedSS* calls, and the two sets
// the editor keeps: the Previous selection and the pick-first set.
#pragma once

#include <set>
#include <vector>

#include "arx/acge.h"

#include "arx/adsdef.h"
#include "arx/dbid.h"

namespace kelhost::ads {

// A new set holding ids (in that order); its name goes to name.
void NewSelectionSet(std::vector<AcDbObjectId> ids, ads_name name);
// The members of a set, or null for a name that is no live set.
const std::vector<AcDbObjectId>* SelectionSetMembers(const ads_name name);

// How ssget chose a set's members (what ssnamex reports): method 0 none
// in particular ("X", a name, ssadd), 1 a pick at points[0], 2 a window
// or window polygon, 3 a crossing window or polygon, 4 a fence, through
// points. Members added afterwards were chosen in no particular way.
struct SelectionHow {
  int method = 0;
  std::vector<AcGePoint3d> points;
  std::set<AcDbObjectId> members;
};
void SetSelectionHow(const ads_name name, SelectionHow how);
// The member's method and points; method 0 when it has none.
SelectionHow SelectionHowOf(const ads_name name, AcDbObjectId member);

// The latest selection ("P"): its live members of the working drawing.
std::vector<AcDbObjectId> PreviousSelection();
void SetPreviousSelection(std::vector<AcDbObjectId> ids);

// The objects selected while no command runs ("I", acedSSGetFirst): its
// live members of the working drawing.
std::vector<AcDbObjectId> PickfirstSelection();
void SetPickfirstSelection(std::vector<AcDbObjectId> ids);

}  // namespace kelhost::ads
