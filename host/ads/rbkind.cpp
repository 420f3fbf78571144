#include "ads/rbkind.h"

#include <cstdlib>
#include <cstring>

#include "arx/acutads.h"
#include "kelhost/resbuf_kinds.h"

namespace kelhost::rb {

bool OwnsString(int t) { return ResbufKind(t) == RbKind::kString; }

bool OwnsBinary(int t) { return ResbufKind(t) == RbKind::kBinary; }

resbuf* CopyNode(const resbuf* node) {
  if (!node) return nullptr;
  resbuf* copy = acutNewRb(node->restype);
  if (!copy) return nullptr;
  if (OwnsString(node->restype)) {
    copy->resval.rstring = nullptr;
    if (node->resval.rstring && acutNewString(node->resval.rstring, copy->resval.rstring) != RTNORM) {
      acutRelRb(copy);
      return nullptr;
    }
  } else if (OwnsBinary(node->restype)) {
    copy->resval.rbinary.clen = node->resval.rbinary.clen;
    copy->resval.rbinary.buf = nullptr;
    if (node->resval.rbinary.clen > 0 && node->resval.rbinary.buf) {
      copy->resval.rbinary.buf = static_cast<char*>(std::malloc(static_cast<size_t>(node->resval.rbinary.clen)));
      if (!copy->resval.rbinary.buf) {
        acutRelRb(copy);
        return nullptr;
      }
      std::memcpy(copy->resval.rbinary.buf, node->resval.rbinary.buf, static_cast<size_t>(node->resval.rbinary.clen));
    }
  } else {
    std::memcpy(&copy->resval, &node->resval, sizeof(node->resval));
  }
  copy->rbnext = nullptr;
  return copy;
}

resbuf* CopyChain(const resbuf* chain) {
  resbuf* head = nullptr;
  resbuf** tail = &head;
  for (const resbuf* rb = chain; rb; rb = rb->rbnext) {
    resbuf* node = CopyNode(rb);
    if (!node) {
      acutRelRb(head);
      return nullptr;
    }
    *tail = node;
    tail = &node->rbnext;
  }
  return head;
}

}  // namespace kelhost::rb
