// Polyline entities read into the decomposition's vertex list. Vertices
// are stored in the entity's own coordinate system (given by its normal)
// and carried to the current UCS, where the caller works.
#include "kelcad/geom/pline_readers.h"

#include <cwchar>

#include "kelcad/resbuf/rbchain.h"

namespace {

// An entity's list, released on every path.
class EntityList {
 public:
  explicit EntityList(const ads_name ename) : head_(acdbEntGet(ename)) {}
  ~EntityList() {
    if (head_ != nullptr) acutRelRb(head_);
  }
  EntityList(const EntityList&) = delete;
  EntityList& operator=(const EntityList&) = delete;

  resbuf* head() const { return head_; }
  const resbuf* Find(int code) const { return KEL::GetRbXDXF(head_, code); }
  bool IsA(const wchar_t* type) const {
    const resbuf* rb = Find(0);
    return rb != nullptr && rb->resval.rstring != nullptr && std::wcscmp(rb->resval.rstring, type) == 0;
  }
  // Flag 70 equal to 1 exactly; other bits (say, linetype generation)
  // make the polyline read as open.
  bool IsClosed() const {
    const resbuf* rb = Find(70);
    return rb != nullptr && rb->resval.rint == 1;
  }
  int Flag70() const {
    const resbuf* rb = Find(70);
    return rb != nullptr ? rb->resval.rint : 0;
  }

 private:
  resbuf* head_;
};

// Builds the vertex list; on failure what was appended is freed again.
class VertexAppender {
 public:
  explicit VertexAppender(const resbuf* normal) {
    from_.restype = RT3DPOINT;
    from_.resval.rpoint[2] = 1.0;  // no normal: the world's Z axis
    if (normal != nullptr)
      for (int k = 0; k < 3; ++k) from_.resval.rpoint[k] = normal->resval.rpoint[k];
    to_.restype = RTSHORT;
    to_.resval.rint = 1;  // the current UCS
  }

  // The point (x, y, z in the entity's system) carried to the UCS.
  bool Append(double x, double y, double z, double bulge) {
    const ads_point ecs = {x, y, z};
    ads_point ucs;
    if (acedTrans(ecs, &from_, &to_, 0, ucs) != RTNORM) return false;
    return AppendNode(ucs[0], ucs[1], ucs[2], bulge);
  }
  // The node that closes a closed polyline: the first vertex again.
  bool Close() {
    const PlineVertex* first = gl_vertex_list;
    return first != nullptr && AppendNode(first->x, first->y, first->z, kClosingBulge);
  }
  int Fail() {
    gl_vertex_list_free();
    return 0;
  }

 private:
  bool AppendNode(double x, double y, double z, double bulge) {
    auto* node = static_cast<PlineVertex*>(gl_node_alloc(sizeof(PlineVertex)));
    if (node == nullptr) return false;
    node->x = x, node->y = y, node->z = z, node->bulge = bulge;
    if (gl_node_insert(node, last_, kNodeAtEnd) != 1) {
      gl_node_free(node);
      return false;
    }
    last_ = node;
    return true;
  }

  resbuf from_{};
  resbuf to_{};
  void* last_ = &gl_vertex_list;  // appending after it spares walking the list
};

}  // namespace

int gl_lwpl_vertices(const ads_name ename) {
  gl_vertex_list_free();
  if (ename == nullptr) return 0;
  const EntityList list(ename);
  if (!list.IsA(L"LWPOLYLINE")) return 0;
  VertexAppender vertices(list.Find(210));
  for (const resbuf* rb = list.head(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype != 10) continue;
    // The vertex's groups follow it in the order 40, 41, 42.
    const resbuf* bulge = rb->rbnext;
    for (int i = 1; i < 3 && bulge != nullptr; ++i) bulge = bulge->rbnext;
    const double b = bulge != nullptr && bulge->restype == 42 ? bulge->resval.rreal : 0.0;
    if (!vertices.Append(rb->resval.rpoint[0], rb->resval.rpoint[1], 0.0, b)) return vertices.Fail();
  }
  if (list.IsClosed() && !vertices.Close()) return vertices.Fail();
  return 1;
}

int gl_pl_vertices(const ads_name ename) {
  gl_vertex_list_free();
  if (ename == nullptr) return 0;
  const EntityList polyline(ename);
  if (!polyline.IsA(L"POLYLINE")) return 0;
  VertexAppender vertices(polyline.Find(210));
  constexpr int kSplineFramePoint = 16;
  ads_name current, next;
  ads_name_set(ename, current);
  while (acdbEntNext(current, next) == RTNORM) {
    const EntityList vertex(next);
    if (vertex.IsA(L"SEQEND") || !vertex.IsA(L"VERTEX")) break;
    ads_name_set(next, current);
    if (vertex.Flag70() == kSplineFramePoint) continue;
    const resbuf* at = vertex.Find(10);
    if (at == nullptr) return vertices.Fail();
    const resbuf* bulge = vertex.Find(42);
    const double b = bulge != nullptr ? bulge->resval.rreal : 0.0;
    if (!vertices.Append(at->resval.rpoint[0], at->resval.rpoint[1], at->resval.rpoint[2], b))
      return vertices.Fail();
  }
  if (polyline.IsClosed() && !vertices.Close()) return vertices.Fail();
  return 1;
}
