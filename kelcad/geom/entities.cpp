// Reading LINE and ARC entities of the drawing into the kernel's records.
// The DXF list fetched is released on every path.
#include "kelcad/geom/entities.h"

#include <cstring>
#include <cwchar>

#include "kelcad/geom/plane.h"
#include "kelcad/geom/polygon_points.h"
#include "kelcad/resbuf/rbchain.h"

namespace {

// The entity's list, released when the reader is done with it.
class EntityList {
 public:
  explicit EntityList(const ads_name ename) : head_(acdbEntGet(ename)) {}
  ~EntityList() {
    if (head_ != nullptr) acutRelRb(head_);
  }
  EntityList(const EntityList&) = delete;
  EntityList& operator=(const EntityList&) = delete;

  resbuf* head() const { return head_; }
  // True when the list's type (group 0) is exactly type.
  bool IsA(const wchar_t* type) const {
    const resbuf* rb = KEL::GetRbXDXF(head_, 0);
    return rb != nullptr && rb->resval.rstring != nullptr && std::wcscmp(rb->resval.rstring, type) == 0;
  }

 private:
  resbuf* head_;
};

// The value union read as three doubles or as one, whatever the item's
// kind: the arc reader may land on an item of another kind.
void ValueAsPoint(const resbuf* rb, double out[3]) { std::memcpy(out, &rb->resval, 3 * sizeof(double)); }
double ValueAsReal(const resbuf* rb) {
  double value;
  std::memcpy(&value, &rb->resval, sizeof value);
  return value;
}

// Looks for each group after the one found before; once that was the
// last item, the search stays on it.
class ForwardSearch {
 public:
  explicit ForwardSearch(const resbuf* list) : from_(list) {}
  const resbuf* Find(int code) {
    if (found_ != nullptr && found_->rbnext == nullptr) return found_;
    for (const resbuf* rb = from_; rb != nullptr; rb = rb->rbnext) {
      if (rb->restype == code) {
        found_ = rb;
        from_ = rb->rbnext;
        return rb;
      }
    }
    return nullptr;
  }

 private:
  const resbuf* from_;
  const resbuf* found_ = nullptr;
};

}  // namespace

int gl_getline(const ads_name ename, linfo* out, double normal[3]) {
  if (ename == nullptr || out == nullptr || normal == nullptr) return 0;
  const EntityList list(ename);
  if (!list.IsA(L"LINE")) return 0;
  const resbuf* start = KEL::GetRbXDXF(list.head(), 10);
  if (start == nullptr || start->rbnext == nullptr || !KEL::Geom::HoldsPoint(start->rbnext)) return 0;
  const resbuf* extrusion = KEL::GetRbXDXF(list.head(), 210);
  if (extrusion != nullptr) ValueAsPoint(extrusion, normal);
  gl_line(out, start->resval.rpoint, start->rbnext->resval.rpoint);  // no length: nothing written
  return 0;
}

int acs_getarc(const ads_name ename, atype* arc, double normal[3]) {
  if (ename == nullptr || arc == nullptr || normal == nullptr) return 0;
  const EntityList list(ename);
  if (!list.IsA(L"ARC")) return 0;
  ForwardSearch search(list.head());
  if (const resbuf* rb = search.Find(10)) ValueAsPoint(rb, arc->center);
  if (const resbuf* rb = search.Find(40)) arc->radius = ValueAsReal(rb);
  if (const resbuf* rb = search.Find(50)) arc->start = ValueAsReal(rb);
  if (const resbuf* rb = search.Find(51)) arc->end = ValueAsReal(rb);
  if (const resbuf* rb = search.Find(210)) ValueAsPoint(rb, normal);
  return 1;
}
