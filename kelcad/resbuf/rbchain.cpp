// Walking, searching and splicing resbuf chains.
#include "kelcad/resbuf/rbchain.h"

#include <cstdint>
#include <cstring>

namespace KEL {

namespace {

// Walks count steps from rb; null when the chain ends first.
resbuf* Walk(resbuf* rb, unsigned count) {
  for (unsigned i = 0; i < count && rb != nullptr; ++i) rb = rb->rbnext;
  return rb;
}

// The index of the first node with that code counted in 16 bits, as the
// exported index is; false when there is none.
bool FindIndex16(const resbuf* rb, int code, std::uint16_t& index) {
  std::uint16_t i = 0;
  for (; rb != nullptr; rb = rb->rbnext, ++i) {
    if (rb->restype == code) {
      index = i;
      return true;
    }
  }
  return false;
}

// The first four bytes of the value union, whatever the node's kind.
std::int32_t ValueWord(const resbuf* rb) {
  std::int32_t word;
  std::memcpy(&word, &rb->resval, sizeof word);
  return word;
}

}  // namespace

resbuf* AppendRb(resbuf*& head, resbuf* tail) {
  if (head == nullptr) {
    head = tail;
    return tail;
  }
  tailOfResbufChain(head)->rbnext = tail;
  return head;
}

int GetRbLength(const resbuf* rb) {
  int n = 0;
  for (; rb != nullptr; rb = rb->rbnext) ++n;
  return n;
}

resbuf* GetRbNth(resbuf* rb, short n) {
  // A negative index read as an unsigned count is beyond any chain.
  if (n < 0) return nullptr;
  return Walk(rb, static_cast<unsigned>(n));
}

resbuf* GetRbXDXF(resbuf* rb, int code) {
  for (; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == code) return rb;
  return nullptr;
}

bool GetRbXDXF(resbuf* rb, int code, resbuf*& found) {
  found = GetRbXDXF(rb, code);
  return found != nullptr;
}

short GetRbXDXFIndex(const resbuf* rb, short code) {
  std::uint16_t index = 0;
  if (!FindIndex16(rb, code, index)) return RTERROR;
  return static_cast<short>(index);
}

int InsertRbAfterN(resbuf*& head, resbuf* ins, short n) {
  if (head == nullptr || n >= GetRbLength(head)) return RTERROR;
  resbuf* at = n <= 0 ? head : Walk(head, static_cast<unsigned>(n));
  resbuf* rest = at->rbnext;
  at->rbnext = ins;
  resbuf* last = ins != nullptr ? tailOfResbufChain(ins) : at;
  last->rbnext = rest;
  return RTNORM;
}

int ReplaceRbAfterN(resbuf* head, resbuf* repl, short n) {
  if (head == nullptr) return RTERROR;
  // Both counts are taken as unsigned, so n 0 (the head) and below run off
  // the chain: the head cannot be replaced through a pointer passed by value.
  resbuf* before = Walk(head, static_cast<unsigned>(n - 1));
  resbuf* target = Walk(head, static_cast<unsigned>(n));
  if (before == nullptr || target == nullptr) return RTERROR;
  before->rbnext = target->rbnext;
  target->rbnext = nullptr;
  acutRelRb(target);
  if (repl != nullptr) InsertRbAfterN(head, repl, static_cast<short>(n - 1));
  return RTNORM;
}

int ReplaceRbAfterXDXF(resbuf* head, resbuf* repl, short code) {
  if (head == nullptr) return RTERROR;
  std::uint16_t index = 0;
  if (!FindIndex16(head, code, index)) return RTERROR;
  // Mirrors the error value of GetRbXDXFIndex.
  if (index == static_cast<std::uint16_t>(RTERROR)) return RTERROR;
  return ReplaceRbAfterN(head, repl, static_cast<short>(index)) == RTNORM ? RTNORM : RTERROR;
}

bool ModifyRbIntNode(resbuf*& head, resbuf* pair) {
  if (pair == nullptr || pair->restype != RTSHORT) return false;
  if (head == nullptr) {
    head = pair;
    return true;
  }
  const std::int32_t key = ValueWord(pair);
  resbuf* found = head;
  while (found != nullptr && ValueWord(found) != key) found = found->rbnext;
  if (found == nullptr) {
    AppendRb(head, pair);
    return true;
  }
  resbuf* oldValue = found->rbnext;
  resbuf* rest = oldValue != nullptr ? oldValue->rbnext : nullptr;
  found->rbnext = pair->rbnext;
  AppendRb(head, rest);
  // The old value node and the new key node stay with the caller; detached
  // so that each can be released on its own.
  if (oldValue != nullptr) oldValue->rbnext = nullptr;
  pair->rbnext = nullptr;
  return true;
}

resbuf* tailOfResbufChain(resbuf* rb) {
  if (rb == nullptr) return nullptr;
  while (rb->rbnext != nullptr) rb = rb->rbnext;
  return rb;
}

resbuf* ptArrayToResbuf(const AcArray<AcGePoint3d>& points) {
  resbuf* head = nullptr;
  resbuf* last = nullptr;
  for (const AcGePoint3d& p : points) {
    resbuf* node = acutNewRb(RT3DPOINT);
    if (node == nullptr) {
      acutRelRb(head);
      return nullptr;
    }
    node->resval.rpoint[X] = p.x;
    node->resval.rpoint[Y] = p.y;
    node->resval.rpoint[Z] = p.z;
    if (last == nullptr)
      head = node;
    else
      last->rbnext = node;
    last = node;
  }
  return head;
}

void copyAdsPt(ads_point dst, const ads_point src) {
  dst[X] = src[X];
  dst[Y] = src[Y];
  dst[Z] = src[Z];
}

void copyEname(ads_name dst, const ads_name src) {
  dst[0] = src[0];
  dst[1] = src[1];
}

}  // namespace KEL
