// Extents of entities, of selection sets and of arrays of entities, in
// world coordinates, and a rectangle around an entity built on them.
#pragma once

#include "kelcad/platform.h"

// A rectangle on the world XY plane around an entity's extents.
struct bEntityRectStruct {
  AcGePoint3d lowerLeft;   // the extents' minimum, z included
  AcGePoint3d upperRight;  // the extents' maximum, z included
  AcGePoint3d centre;      // halfway between the two corners
  double width;            // upperRight.x - lowerLeft.x
  double height;           // upperRight.y - lowerLeft.y
};

namespace KEL {

// The extents of one entity: 1 when they were obtained, 0 otherwise. A
// block reference is measured by its best fit; when that fails it is
// exploded, its pieces are appended to model space (and stay there) and
// their extents are united. Every other entity gives its geometric extents.
int GetEntBound(ads_name ent, AcDbExtents& extents);
// The same for an object id; min and max are set only on success.
int GetEntBound(AcDbObjectId id, double min[3], double max[3]);

// The extents of every member that can be measured, united; members that
// cannot are passed over. When none can, min is (1e20, 1e20, 1e20) and
// max (-1e20, -1e20, -1e20), an empty box, and the result is still 1.
// 0 for an empty array.
int GetEntBound(AcArray<AcDbObjectId>& ids, AcGePoint3d& min, AcGePoint3d& max);
// 0 when the set is empty or its length cannot be read.
int GetEntBound(ads_name ss, double min[3], double max[3]);

// The entity's rectangle from its extents (GetEntBound); false, with rect
// untouched, when it cannot be measured or rect is null.
bool GetBEntityRect(AcDbObjectId id, bEntityRectStruct* rect);

}  // namespace KEL
