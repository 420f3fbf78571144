// The module-wide vertex and segment lists of the polyline decomposition
// and the node functions that build them. Nodes are heap blocks linked
// through their first field; one decomposition is built and consumed at a
// time (the lists are not reentrant), and both lists are emptied before
// the next one starts.
#pragma once

#include <cstddef>

#include "kelcad/geom/records.h"

// One vertex: the platform's bulge to the next vertex (tangent of a quarter
// of the included angle, 0 for a straight segment), or kClosingBulge on the
// repeated first vertex that closes a closed polyline.
struct PlineVertex {
  PlineVertex* next;
  double x;
  double y;
  double z;
  double bulge;
};

// One segment between consecutive vertices.
struct PlineSegment {
  PlineSegment* next;
  int direction;  // 0 straight, 1 counter-clockwise arc, -1 clockwise arc
  linfo chord;    // pt1, pt2 and dir; the coefficients are not filled
  circ arc;       // centre (z = 0) and radius, for arcs only
};

static_assert(sizeof(PlineVertex) == 40, "a vertex node is 40 bytes");
static_assert(sizeof(PlineSegment) == 144, "a segment node is 144 bytes");

constexpr double kClosingBulge = 9999.0;

extern PlineVertex* gl_vertex_list;
extern PlineSegment* gl_segment_list;

// Insertion modes of gl_node_insert.
constexpr int kNodeAtEnd = 'E';   // 69
constexpr int kNodeAtHead = 'H';  // 72

// A zeroed (so unlinked) heap block of size bytes; null when the size
// cannot hold the link or memory is short.
void* gl_node_alloc(std::size_t size);
// Links node into the list whose head variable is at head (for example
// &gl_vertex_list): at the end for 'E', at the head for 'H'. 1 when done;
// 0, nothing linked, for any other mode or a null argument.
int gl_node_insert(void* node, void* head, int mode);
// Takes node out of the list (its link reset): 1; 0 when the list is empty
// or does not hold it.
int gl_node_unlink(void* node, void* head);
// Frees one node; 1.
int gl_node_free(void* node);

// Free every node of a list and leave it empty.
void gl_vertex_list_free();
void gl_segment_list_free();
