// The decomposition lists and their nodes. The node functions serve both
// node types, so they reach a node's link (its first field) and a list's
// head variable by copying the pointer's bytes rather than through a
// pointer of the wrong type.
#include "kelcad/geom/pline_lists.h"

#include <cstdlib>
#include <cstring>

PlineVertex* gl_vertex_list = nullptr;
PlineSegment* gl_segment_list = nullptr;

namespace {

void* LinkOf(const void* node) {
  void* next;
  std::memcpy(&next, node, sizeof next);
  return next;
}

void SetLink(void* node, void* next) { std::memcpy(node, &next, sizeof next); }

}  // namespace

void* gl_node_alloc(std::size_t size) {
  if (size < sizeof(void*)) return nullptr;
  return std::calloc(1, size);
}

int gl_node_insert(void* node, void* head, int mode) {
  if (node == nullptr || head == nullptr) return 0;
  if (mode == kNodeAtHead) {
    SetLink(node, LinkOf(head));
    SetLink(head, node);
    return 1;
  }
  if (mode != kNodeAtEnd) return 0;
  // The head variable and each node's first field are links alike.
  void* link = head;
  for (void* next = LinkOf(link); next != nullptr; next = LinkOf(link)) link = next;
  SetLink(link, node);
  return 1;
}

int gl_node_unlink(void* node, void* head) {
  if (node == nullptr || head == nullptr) return 0;
  for (void* link = head; LinkOf(link) != nullptr; link = LinkOf(link)) {
    if (LinkOf(link) == node) {
      SetLink(link, LinkOf(node));
      SetLink(node, nullptr);
      return 1;
    }
  }
  return 0;
}

int gl_node_free(void* node) {
  std::free(node);
  return 1;
}

void gl_vertex_list_free() {
  while (PlineVertex* v = gl_vertex_list) {
    gl_vertex_list = v->next;
    gl_node_free(v);
  }
}

void gl_segment_list_free() {
  while (PlineSegment* s = gl_segment_list) {
    gl_segment_list = s->next;
    gl_node_free(s);
  }
}
