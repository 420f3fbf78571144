// Copies of resbuf nodes and chains, made by the value kind of each node.
#include <cstdlib>
#include <cstring>

#include "kelcad/resbuf/rbchain.h"

namespace KEL {

namespace {

// Group codes 310-319 carry binary chunks on the platform, although their
// kind reads as an entity name; the copy must own its bytes, or releasing
// both nodes would free one buffer twice.
bool IsBinaryChunkCode(int code) { return code >= 310 && code <= 319; }

char* CopyBytes(const char* bytes, short count) {
  if (bytes == nullptr || count <= 0) return nullptr;
  char* copy = static_cast<char*>(std::malloc(static_cast<size_t>(count)));
  if (copy != nullptr) std::memcpy(copy, bytes, static_cast<size_t>(count));
  return copy;
}

// Fills copy from rb by rb's kind; false when the kind has no copy rule.
bool CopyValue(const resbuf* rb, resbuf* copy) {
  const int kind = GetDXFCodeDataType(rb->restype);
  switch (kind) {
    case RTSHORT:
      copy->resval.rint = rb->resval.rint;
      return true;
    case RTREAL:
      copy->resval.rreal = rb->resval.rreal;
      return true;
    case RTLONG:
      copy->resval.rlong = rb->resval.rlong;
      return true;
    case RTSTR:
    case -4:
      acutNewString(rb->resval.rstring, copy->resval.rstring);
      return true;
    case RT3DPOINT:
    case RTPOINT:
      copyAdsPt(copy->resval.rpoint, rb->resval.rpoint);
      return true;
    case RTENAME:
    case RTPICKS:
    case -2:
      if (IsBinaryChunkCode(rb->restype)) {
        copy->resval.rbinary.clen = rb->resval.rbinary.clen;
        copy->resval.rbinary.buf = CopyBytes(rb->resval.rbinary.buf, rb->resval.rbinary.clen);
      } else {
        copyEname(copy->resval.rlname, rb->resval.rlname);
      }
      return true;
    case -3:
      return true;  // the xdata sentinel carries no value
    case 1004:
      // The bytes are copied but clen keeps what acutNewRb gave the node:
      // long-standing behaviour that callers of this copy rely on.
      copy->resval.rbinary.buf = CopyBytes(rb->resval.rbinary.buf, rb->resval.rbinary.clen);
      return true;
    default:
      return false;
  }
}

}  // namespace

resbuf* duplicateResbufNode(const resbuf* rb) {
  if (rb == nullptr) return nullptr;
  resbuf* copy = acutNewRb(rb->restype);
  if (copy == nullptr) return nullptr;
  if (!CopyValue(rb, copy)) {
    acutRelRb(copy);
    return nullptr;
  }
  return copy;
}

resbuf* duplicateResbufChain(const resbuf* start, const resbuf* end) {
  if (start == nullptr || end == nullptr) return nullptr;
  const resbuf* stop = end->rbnext;
  resbuf* head = nullptr;
  resbuf* last = nullptr;
  for (const resbuf* rb = start; rb != nullptr && rb != stop; rb = rb->rbnext) {
    resbuf* copy = duplicateResbufNode(rb);
    if (copy == nullptr) continue;
    if (last == nullptr)
      head = copy;
    else
      last->rbnext = copy;
    last = copy;
  }
  return head;
}

resbuf* duplicateResbufChain(const resbuf* rb) {
  if (rb == nullptr) return nullptr;
  const resbuf* last = rb;
  while (last->rbnext != nullptr) last = last->rbnext;
  return duplicateResbufChain(rb, last);
}

}  // namespace KEL
