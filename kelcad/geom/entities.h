// Reading LINE and ARC entities of the drawing into the kernel's records.
#pragma once

#include "kelcad/geom/records.h"
#include "kelcad/platform.h"

// Fills pt1, pt2 and dir of out from a "LINE" entity (group 10, and the
// item after it, group 11), and copies its normal (210) to normal. Nothing
// is filled for another entity type or an invalid name, and the record is
// left alone for a line of no length. Always returns 0, success included:
// callers look at the record, never at the result.
int gl_getline(const ads_name ename, linfo* out, double normal[3]);

// Fills arc (centre 10, radius 40, start angle 50, end angle 51) and
// normal (210) from an "ARC" entity: 1; 0 for another type or an invalid
// name. Each group is looked for after the previous one found; once the
// previous one is the list's last item the search stays on it. With the
// platform's order (210 before 50 and 51) normal therefore receives the
// value bytes of the last item, the end angle in normal[0], not the
// extrusion direction: long-standing behaviour that callers rely on.
int acs_getarc(const ads_name ename, atype* arc, double normal[3]);

// Marks pt with a red POINT on layer "0" drawn in the marker style
// (PDMODE 36), highlighted; PDMODE is then set to 0, not to the value it
// had, as the family's tools have always left it. Always returns 1.
int gl_mark_point(const double pt[3]);
