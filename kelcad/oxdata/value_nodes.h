// One typed value in a chain of groups, addressed by group code and
// occurrence index: the addressing shared by xdata, entity lists and
// xrecords. The value's C++ type picks the node field that is written or
// read; a group code of another kind is refused.
#pragma once

#include <cstdint>

#include "kelcad/platform.h"
#include "kelcad/resbuf/rbchain.h"

namespace KEL {
namespace ValueNodes {

// The node kind (as the group-code table gives it) each value type uses.
constexpr int KindOf(const wchar_t*) { return RTSTR; }
constexpr int KindOf(const CString&) { return RTSTR; }
constexpr int KindOf(int) { return RTSHORT; }
constexpr int KindOf(long) { return RTLONG; }
constexpr int KindOf(double) { return RTREAL; }
constexpr int KindOf(const double*) { return RT3DPOINT; }
constexpr int KindOf(const std::int64_t*) { return RTENAME; }

// Whether nodes of this group code hold values of the type of value.
template <class T>
bool Fits(short code, const T& value) {
  return GetDXFCodeDataType(code) == KindOf(value);
}

// Stores value in the node's field; false when a string could not be
// copied (the node keeps its old value then).
bool Store(resbuf* node, const wchar_t* value);
bool Store(resbuf* node, int value);   // kept in 16 bits
bool Store(resbuf* node, long value);  // kept in 32 bits
bool Store(resbuf* node, double value);
bool Store(resbuf* node, const double* point);
bool Store(resbuf* node, const std::int64_t* name);

void Load(const resbuf* node, CString& value);
void Load(const resbuf* node, int& value);
void Load(const resbuf* node, long& value);
void Load(const resbuf* node, double& value);
void Load(const resbuf* node, double (&point)[3]);
void Load(const resbuf* node, std::int64_t (&name)[2]);

// The node of that code at that occurrence index (counted from 0 among
// the nodes of the code, in chain order). When the chain holds only k
// such nodes (k <= index), index - k + 1 new nodes of the code, each
// holding a zero value (an empty string for text), are appended at the
// end and the last is returned. Null when index is negative or memory
// ran out (nothing is appended then).
resbuf* FindOrAppend(resbuf*& head, short code, int index);

// The lenient read: index when the node at that occurrence exists (its
// value copied out); otherwise the count of such nodes less one with the
// last one's value copied out; -1, value untouched, when there is none.
template <class T>
int ReadAt(const resbuf* chain, short code, int index, T& value) {
  const resbuf* last = nullptr;
  int count = 0;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype != code) continue;
    if (count == index) {
      Load(rb, value);
      return index;
    }
    last = rb;
    ++count;
  }
  if (last == nullptr) return -1;
  Load(last, value);
  return count - 1;
}

}  // namespace ValueNodes
}  // namespace KEL
