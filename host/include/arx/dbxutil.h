// Points between the user coordinate system of the working database and
// the world.
#pragma once

#include "adsdef.h"

// p carried into q (q may be p): as a point, or with vec true as a
// displacement (the UCS origin does not count). false when there is no
// working database or p or q is null; q is then untouched.
bool acdbUcs2Wcs(ads_point p, ads_point q, bool vec);
bool acdbWcs2Ucs(ads_point p, ads_point q, bool vec);
