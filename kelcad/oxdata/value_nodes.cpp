// Typed values in chains of groups, found by code and occurrence.
#include "kelcad/oxdata/value_nodes.h"

#include <utility>

namespace KEL {
namespace ValueNodes {

// The copy is made in a node of its own, whose value then changes places
// with the old one: releasing that node releases the old string.
bool Store(resbuf* node, const wchar_t* value) {
  resbuf* holder = acutNewRb(node->restype);
  if (holder == nullptr) return false;
  if (acutNewString(value != nullptr ? value : L"", holder->resval.rstring) != RTNORM ||
      holder->resval.rstring == nullptr) {
    acutRelRb(holder);
    return false;
  }
  std::swap(node->resval, holder->resval);
  acutRelRb(holder);
  return true;
}

bool Store(resbuf* node, int value) {
  node->resval.rint = static_cast<short>(value);
  return true;
}

bool Store(resbuf* node, long value) {
  node->resval.rlong = static_cast<Adesk::Int32>(value);
  return true;
}

bool Store(resbuf* node, double value) {
  node->resval.rreal = value;
  return true;
}

bool Store(resbuf* node, const double* point) {
  for (int i = 0; i < 3; ++i) node->resval.rpoint[i] = point[i];
  return true;
}

bool Store(resbuf* node, const std::int64_t* name) {
  node->resval.rlname[0] = name[0];
  node->resval.rlname[1] = name[1];
  return true;
}

void Load(const resbuf* node, CString& value) { value = node->resval.rstring != nullptr ? node->resval.rstring : L""; }
void Load(const resbuf* node, int& value) { value = node->resval.rint; }
void Load(const resbuf* node, long& value) { value = node->resval.rlong; }
void Load(const resbuf* node, double& value) { value = node->resval.rreal; }

void Load(const resbuf* node, double (&point)[3]) {
  for (int i = 0; i < 3; ++i) point[i] = node->resval.rpoint[i];
}

void Load(const resbuf* node, std::int64_t (&name)[2]) {
  name[0] = node->resval.rlname[0];
  name[1] = node->resval.rlname[1];
}

resbuf* FindOrAppend(resbuf*& head, short code, int index) {
  if (index < 0) return nullptr;
  resbuf** tail = &head;
  int count = 0;
  for (resbuf* rb = head; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == code && count++ == index) return rb;
    tail = &rb->rbnext;
  }
  // Zero-valued nodes up to the index; text nodes get an empty string.
  const bool text = GetDXFCodeDataType(code) == RTSTR;
  resbuf* added = nullptr;
  resbuf** addedTail = &added;
  resbuf* last = nullptr;
  for (; count <= index; ++count) {
    last = acutNewRb(code);
    if (last == nullptr || (text && !Store(last, L""))) {
      acutRelRb(last);
      acutRelRb(added);
      return nullptr;
    }
    *addedTail = last;
    addedTail = &last->rbnext;
  }
  *tail = added;
  return last;
}

}  // namespace ValueNodes
}  // namespace KEL
