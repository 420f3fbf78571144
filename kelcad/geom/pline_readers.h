// Reading a polyline entity of the drawing into gl_vertex_list: its
// vertices in the current UCS, each with its bulge, and for a closed
// polyline one more node repeating the first vertex with kClosingBulge.
#pragma once

#include "kelcad/geom/pline_lists.h"
#include "kelcad/platform.h"

// A lightweight polyline ("LWPOLYLINE"). The vertex list is emptied
// first. 1 when read; 0 for another entity type, an invalid name or short
// memory (the list is then left empty). Closed means flag 70 equal to 1
// exactly: with any other flag bit set the polyline reads as open.
int gl_lwpl_vertices(const ads_name ename);
// The same for a heavy polyline ("POLYLINE" followed by its VERTEX
// entities up to the SEQEND); spline frame control points are skipped.
int gl_pl_vertices(const ads_name ename);
