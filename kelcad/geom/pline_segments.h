// Tools of the polyline/line intersection: the segments of the decomposed
// polyline, the filter that keeps points on an arc segment, and the meeting
// point of two infinite lines.
#pragma once

#include "kelcad/geom/pline_lists.h"

// Empties gl_segment_list, then appends one segment per pair of consecutive
// vertices of gl_vertex_list (a vertex's bulge shapes the segment to the
// next one). 1; 0 when memory ran short (the segments made so far stay).
// An empty or one-vertex list gives 1 and no segments.
int gl_vertices_to_segs();

// Keeps those of the n points that lie on the arc of segment (as gl_ptarc
// decides), moved forward in their order; the count kept. n below 1 is
// returned as it is.
int gl_filter_ptarc(const PlineSegment* segment, double pts[][3], int n);

// 1 and the meeting point of the infinite lines through the point pairs of
// l1 and l2 (the platform's line intersection), else 0.
int gl_intll_pts(double res[3], const linfo* l1, const linfo* l2);
