// Picking an object at a point, as a click at a prompt does: the object
// nearest the point within the pick box, among the objects a selection
// may take (those of the current space on layers that are on and thawed).
#pragma once

#include <cstdint>
#include <vector>

#include "arx/dbextents.h"
#include "arx/dbid.h"
#include "arx/acge.h"

class AcDbEntity;

namespace kelhost::editor {

// Whether a selection may take the object: an entity of the current space
// of the working drawing, visible, on a layer that is on and thawed.
bool IsSelectable(AcDbObjectId id);
// A live entity of the current space (what a selection takes when it is
// named rather than found: a set, a name, the Previous set, a group).
bool InCurrentSpace(AcDbObjectId id);
// The objects a selection may take, newest first.
std::vector<AcDbObjectId> SelectableEntities();
// The newest of them (the "Last" selection), or null.
AcDbObjectId LastSelectable();

// The box a selection sees around an entity: its extents, or for a text
// whose glyphs the host does not measure, the point it stands at. False
// for an entity with neither.
bool SelectionBox(const AcDbEntity* entity, AcDbExtents& box);

// Distance in the XY plane from p to the entity: to a curve its nearest
// point, to anything else its selection box (0 inside).
double DistanceTo(const AcDbEntity* e, const AcGePoint3d& p);

// The pick box's half size in drawing units: PICKBOX pixels of the view,
// whose height of VIEWSIZE units fills SCREENSIZE's height in pixels.
double PickAperture();
// ucsPoint in the current UCS; false when nothing is near enough.
bool PickEntityAt(const double ucsPoint[3], std::int64_t name[2]);
AcDbObjectId PickIdAt(const double ucsPoint[3]);
// Every object within the pick box, nearest first.
std::vector<AcDbObjectId> PickAllAt(const double ucsPoint[3]);

}  // namespace kelhost::editor
